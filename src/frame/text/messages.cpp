// Message catalogue of the frame.
#include "messages.h"

#include "../../base/exceptions.h"

namespace HALVANE {
namespace frame {
namespace messages {

void checkFailed(const QString &objectName, const QString &element)
{
    throw OutOfRangeException(objectName + QStringLiteral(": Please set %1 properly.").arg(element));
}

void nullString(const QString &objectName, const QString &element)
{
    throw OutOfRangeException(objectName
                              + QStringLiteral(": Please set %1 properly (origin: Setter).").arg(element));
}

void invalidEnum(const QString &className, const QString &member)
{
    throw OutOfRangeException(
        QStringLiteral("enum is not valid (classname=%1,membername=%2)").arg(className, member));
}

void outOfRange(const QString &member, double lo, double hi, const QString &objectName)
{
    throw OutOfRangeException(QStringLiteral("Parameters for %1 are not set within range (%2, %3) in '%4'.")
                                  .arg(member, plainNumber(lo), plainNumber(hi), objectName));
}

void appendRefused(const QString &objectName, const QString &field)
{
    throw IncompleteDefinitionException(
        objectName + QStringLiteral(": Tried to append not completely defined or invalid item %1.").arg(field));
}

void incomplete(const QString &nested, const QString &objectName)
{
    throw IncompleteDefinitionException(
        QStringLiteral("Parameters for %1 are not set properly in '%2'.").arg(nested, objectName));
}

void emptyBool(const QString &element, const QString &objectName)
{
    throw InvalidXmlException(
        QStringLiteral("Please set a value or a default for the boolean '%1' in '%2'.").arg(element, objectName));
}

void lengthError(const QString &objectName)
{
    throw BinaryParsingException(
        objectName
        + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation"));
}

void unknownTag(const QString &element, const QString &objectName)
{
    throw InvalidXmlException(QStringLiteral("Unknown Tag '%1' in '%2'.").arg(element, objectName));
}

QString plainNumber(double value)
{
    QString text = QString::number(value, 'f', 10);
    if (text.contains(QLatin1Char('.'))) {
        int end = int(text.size());
        while (text.at(end - 1) == QLatin1Char('0'))
            --end;
        if (text.at(end - 1) == QLatin1Char('.'))
            --end;
        text.truncate(end);
    }
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}

} // namespace messages
} // namespace frame
} // namespace HALVANE
