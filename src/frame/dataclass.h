// What every data class header needs: the object base, the exceptions, the
// Qt types of the accessors, and the private part that every class shares.
// The headers themselves are written from the class descriptions by
// tools/gen/halvane_gen.py.
#ifndef HALVANE_FRAME_DATACLASS_H
#define HALVANE_FRAME_DATACLASS_H

#include "../base/converters.h"
#include "../base/exceptions.h"
#include "../base/quilletobject.h"

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <memory>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace HALVANE {
namespace frame {
struct Payload;
struct ObjectOps;
template <class X> struct OpsImpl;
} // namespace frame
} // namespace HALVANE

/*! The private part of every data class X: its one data member, the payload
    pointer, and what the frame needs to reach it. The public members are
    declared in each class's own header. */
#define HALVANE_DATA_CLASS_PRIVATE(X)                                \
    void InitData() const;                                           \
    void ConstNoClearReset() const;                                  \
    friend const ::HALVANE::frame::ObjectOps &halvaneOps(const X *); \
    template <class> friend struct ::HALVANE::frame::OpsImpl;        \
    mutable ::HALVANE::frame::Payload *d = nullptr;

/*! After a class, in the global namespace: data objects may be moved in
    memory, so that containers of them grow without copying. */
#define HALVANE_DECLARE_TYPE(X) Q_DECLARE_TYPEINFO(HALVANE::X, Q_MOVABLE_TYPE);

#endif
