// Text form of values: two decimals for every double and float, plain
// decimal integers, table names for enumerated values.
#include "text.h"

#include "../frame.h"
#include "messages.h"

#include "../../base/converters.h"

#include <charconv>
#include <cstring>

namespace HALVANE {
namespace frame {

namespace {

// Room for the longest text fixedTwo writes: a sign, 17 digits, the point
// and two decimals.
constexpr int kFixedTwoSize = 24;

// Writes a value with two decimals, the text Qt's 'f' format with precision
// 2 gives, for the values whose hundredfold has at most 63 bits; returns the
// length, or 0 where Qt is left to write it (values that big, infinities and
// NaN, and negative values that round to zero, whose sign is Qt's to give).
// The value is m * 2^e exactly, so its hundredfold rounded is
// (100 m) >> -e, plus one when the bits shifted out are half or more of a
// unit (Qt rounds a tie away from zero).
int fixedTwo(double v, char *out)
{
    quint64 bits;
    std::memcpy(&bits, &v, sizeof bits);
    const bool negative = bits >> 63;
    const int biased = int((bits >> 52) & 0x7FF);
    if (biased == 0x7FF)
        return 0;
    quint64 mantissa = bits & ((quint64(1) << 52) - 1);
    int e = -1074;
    if (biased != 0) {
        mantissa |= quint64(1) << 52;
        e = biased - 1075;
    }
    quint64 hundredths = 0;
    if (e >= 0) {
        if (e > 3)
            return 0;
        hundredths = (mantissa * 100) << e;
    } else if (e > -64) {
        const int k = -e;
        const quint64 n = mantissa * 100; // below 2^60
        hundredths = n >> k;
        if (((n >> (k - 1)) & 1) != 0)
            ++hundredths;
    } // else below 2^-74: zero to two decimals
    if (negative && hundredths == 0)
        return 0;
    char digits[20];
    int count = 0;
    quint64 rest = hundredths;
    do {
        digits[count++] = char('0' + rest % 10);
        rest /= 10;
    } while (rest != 0 || count < 3);
    int length = 0;
    if (negative)
        out[length++] = '-';
    while (count > 2)
        out[length++] = digits[--count];
    out[length++] = '.';
    out[length++] = digits[1];
    out[length++] = digits[0];
    return length;
}

// A plain decimal number: optional minus, digits, optional point and digits.
// Its value is the same from any exact conversion, so it needs no QString.
bool parsePlainDecimal(const char *text, int size, double &value)
{
    if (size <= 0 || size > 40)
        return false;
    int i = text[0] == '-' ? 1 : 0;
    const int digitsStart = i;
    while (i < size && text[i] >= '0' && text[i] <= '9')
        ++i;
    if (i == digitsStart)
        return false;
    if (i < size && text[i] == '.') {
        const int fraction = ++i;
        while (i < size && text[i] >= '0' && text[i] <= '9')
            ++i;
        if (i == fraction)
            return false;
    }
    if (i != size)
        return false;
    const auto result = std::from_chars(text, text + size, value);
    return result.ec == std::errc() && result.ptr == text + size;
}

// The value of a plain decimal number in UTF-16, as parsePlainDecimal reads
// it; false for any other text.
bool parsePlainDecimal(QStringView text, double &value)
{
    char ascii[40];
    if (text.size() > qsizetype(sizeof ascii))
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c > 0x7F)
            return false;
        ascii[i] = char(c);
    }
    return parsePlainDecimal(ascii, int(text.size()), value);
}

QString twoDecimals(double v)
{
    char text[kFixedTwoSize];
    const int length = fixedTwo(v, text);
    return length ? QString::fromLatin1(text, length) : QString::number(v, 'f', 2);
}

QByteArray twoDecimalsUtf8(double v)
{
    char text[kFixedTwoSize];
    const int length = fixedTwo(v, text);
    return length ? QByteArray(text, length) : QByteArray::number(v, 'f', 2);
}

} // namespace

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
        return twoDecimals(*static_cast<const double *>(value));
    case Kind::Float:
        return twoDecimals(double(*static_cast<const float *>(value)));
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
        return twoDecimalsUtf8(*static_cast<const double *>(value));
    case Kind::Float:
        return twoDecimalsUtf8(double(*static_cast<const float *>(value)));
    case Kind::Bool:
    case Kind::Int:
    case Kind::Int64:
    case Kind::String:
    case Kind::DateTime:
    case Kind::Enum:
    case Kind::Nested:
    case Kind::ObjectList:
    case Kind::StringList:
    case Kind::EnumList:
        return valueText(f, value).toUtf8();
    }
    return QByteArray(); // not a kind
}

void numberFromText(const Field &f, QStringView text, ScalarValue &out)
{
    switch (f.kind) {
    case Kind::Int:
        out.i = text.toInt(nullptr, 10);
        break;
    case Kind::Int64:
        out.l = text.toLongLong(nullptr, 10);
        break;
    case Kind::Double:
        if (!parsePlainDecimal(text, out.d))
            out.d = text.toDouble();
        break;
    case Kind::Float:
        out.f = text.toFloat();
        break;
    case Kind::Enum:
    case Kind::EnumList:
        out.e = f.table->find(0, text);
        break;
    case Kind::Bool:
    case Kind::String:
    case Kind::DateTime:
    case Kind::Nested:
    case Kind::ObjectList:
    case Kind::StringList:
        out.l = 0;
        break;
    }
}

namespace {

// True when the text, lower-cased character by character, is \a lower.
bool equalsLowered(QStringView text, QLatin1String lower)
{
    if (text.size() != lower.size())
        return false;
    for (int i = 0; i < int(text.size()); ++i) {
        if (text[i].toLower() != QLatin1Char(lower[i]))
            return false;
    }
    return true;
}

} // namespace

void setFromText(const Obj &o, int field, QStringView text)
{
    const Field &f = o.desc->fields[field];
    switch (f.kind) {
    case Kind::Bool: {
        bool value = false;
        if (text.isEmpty()) {
            if (f.flags & HasDefault)
                value = f.initInt != 0;
            else if (o.self->GetValidate())
                messages::emptyBool(f.elementName, o.self->GetObjectName());
        } else {
            value = !equalsLowered(text, QLatin1String("0")) && !equalsLowered(text, QLatin1String("false"));
        }
        setValue(o, field, &value);
        break;
    }
    case Kind::String: {
        // An empty text is an empty string, never a null one.
        const QString value = text.isEmpty() ? QString(QLatin1String("")) : text.toString();
        setValue(o, field, &value);
        break;
    }
    case Kind::StringList: {
        const QString value = text.isEmpty() ? QString(QLatin1String("")) : text.toString();
        append(o, field, &value);
        break;
    }
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

namespace HALVANE {
namespace frame {

void setFromUtf8(const Obj &o, int field, const char *utf8, int size)
{
    const Field &f = o.desc->fields[field];
    ScalarValue value;
    switch (f.kind) {
    case Kind::Enum:
    case Kind::EnumList:
        value.e = f.table->findUtf8(utf8, size);
        if (f.kind == Kind::Enum)
            setValue(o, field, &value);
        else
            append(o, field, &value.e);
        return;
    case Kind::DateTime: {
        const QDateTime dateTime = Converters::ToDateTime(utf8, size);
        setValue(o, field, &dateTime);
        return;
    }
    case Kind::Double:
        // Floats keep the text path: their range checks belong to the conversion.
        if (parsePlainDecimal(utf8, size, value.d)) {
            setValue(o, field, &value);
            return;
        }
        break;
    case Kind::Bool:
    case Kind::Int:
    case Kind::Int64:
    case Kind::Float:
    case Kind::String:
    case Kind::Nested:
    case Kind::ObjectList:
    case Kind::StringList:
        break;
    }
    // The decoded text, read as the XML reader reads it.
    const QString text = QString::fromUtf8(utf8, size);
    if (f.kind == Kind::String || f.kind == Kind::StringList) {
        // A null array decodes to an empty, non-null string.
        if (f.kind == Kind::String)
            setValue(o, field, &text);
        else
            append(o, field, &text);
        return;
    }
    setFromText(o, field, text);
}

} // namespace frame
} // namespace HALVANE
