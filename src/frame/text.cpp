// Text form of values: two decimals for every double and float, plain
// decimal integers, table names for enumerated values.
#include "text.h"

#include "frame.h"
#include "messages.h"

#include "../base/converters.h"

namespace HALVANE {
namespace frame {

QString valueText(const Field &f, const void *value)
{
    switch (f.kind) {
    case Kind::Bool:
        return *static_cast<const bool *>(value) ? QStringLiteral("true") : QStringLiteral("false");
    case Kind::Int:
        return QString::number(*static_cast<const qint32 *>(value));
    case Kind::Int64:
        return QString::number(*static_cast<const qint64 *>(value));
    case Kind::Double:
        return QString::number(*static_cast<const double *>(value), 'f', 2);
    case Kind::Float:
        return QString::number(double(*static_cast<const float *>(value)), 'f', 2);
    case Kind::String:
    case Kind::StringList:
        return *static_cast<const QString *>(value);
    case Kind::DateTime:
        return Converters::ToString(*static_cast<const QDateTime *>(value));
    case Kind::Enum:
    case Kind::EnumList:
        return f.table->text(0, *static_cast<const qint8 *>(value));
    case Kind::Nested:
    case Kind::ObjectList:
        break;
    }
    return QString();
}

QByteArray valueUtf8(const Field &f, const void *value)
{
    switch (f.kind) {
    case Kind::Double:
        return QByteArray::number(*static_cast<const double *>(value), 'f', 2);
    case Kind::Float:
        return QByteArray::number(double(*static_cast<const float *>(value)), 'f', 2);
    default:
        return valueText(f, value).toUtf8();
    }
}

void numberFromText(const Field &f, const QString &text, ScalarValue &out)
{
    switch (f.kind) {
    case Kind::Int:
        out.i = text.toInt(nullptr, 10);
        break;
    case Kind::Int64:
        out.l = text.toLongLong(nullptr, 10);
        break;
    case Kind::Double:
        out.d = text.toDouble();
        break;
    case Kind::Float:
        out.f = text.toFloat();
        break;
    case Kind::Enum:
    case Kind::EnumList:
        out.e = f.table->find(0, text);
        break;
    default:
        out.l = 0;
        break;
    }
}

void setFromText(const Obj &o, int field, const QString &text)
{
    const Field &f = o.desc->fields[field];
    switch (f.kind) {
    case Kind::Bool: {
        const QString lower = text.toLower();
        bool value = false;
        if (lower.isEmpty()) {
            if (f.flags & HasDefault)
                value = f.initInt != 0;
            else if (o.self->GetValidate())
                messages::emptyBool(f.elementName, o.self->GetObjectName());
        } else {
            value = lower != QLatin1String("0") && lower != QLatin1String("false");
        }
        setValue(o, field, &value);
        break;
    }
    case Kind::String:
        setValue(o, field, &text);
        break;
    case Kind::StringList:
        append(o, field, &text);
        break;
    case Kind::DateTime: {
        const QDateTime value = Converters::ToDateTime(text);
        setValue(o, field, &value);
        break;
    }
    case Kind::Int:
    case Kind::Int64:
    case Kind::Double:
    case Kind::Float:
    case Kind::Enum: {
        ScalarValue value;
        numberFromText(f, text, value);
        setValue(o, field, &value);
        break;
    }
    case Kind::EnumList: {
        ScalarValue value;
        numberFromText(f, text, value);
        append(o, field, &value.e);
        break;
    }
    case Kind::Nested:
    case Kind::ObjectList:
        break;
    }
}

} // namespace frame
} // namespace HALVANE
