// The texts of every failure the frame reports, in one place. The frame fills
// in names and limits; classes never build these texts themselves.
#ifndef HALVANE_FRAME_MESSAGES_H
#define HALVANE_FRAME_MESSAGES_H

#include <QtCore/QString>

namespace HALVANE {
namespace frame {
namespace messages {

// Each throws the exception of its situation.
[[noreturn]] void checkFailed(const QString &objectName, const QString &element);
[[noreturn]] void nullString(const QString &objectName, const QString &element);
[[noreturn]] void invalidEnum(const QString &className, const QString &member);
[[noreturn]] void outOfRange(const QString &member, double lo, double hi, const QString &objectName);
[[noreturn]] void appendRefused(const QString &objectName, const QString &field);
[[noreturn]] void incomplete(const QString &nested, const QString &objectName);
[[noreturn]] void emptyBool(const QString &element, const QString &objectName);
[[noreturn]] void lengthError(const QString &objectName);
[[noreturn]] void unknownTag(const QString &element, const QString &objectName);

/*! A limit as text: plain decimal notation without trailing zeros ("-1", "0.1"). */
QString plainNumber(double value);

} // namespace messages
} // namespace frame
} // namespace HALVANE

#endif
