// Exact text of date-times, written and parsed by hand (the routines of
// QDateTime are slow and do not round-trip every value):
//
//   [date]T[time][zone]
//   date  yyyy-MM-dd; years outside 0..9999 as -yyyy... or +yyyyy...;
//         empty when the date is invalid
//   time  HH:mm:ss.zzz; empty when the time is invalid
//   zone  nothing (local time), "Z" (UTC), +hh:mm or +hh:mm:ss (offset from
//         UTC), or [Zone/Id] (a time zone)
//
// A null date-time is the empty text; text that does not parse gives a null
// date-time.
#include "converters.h"

#include <QtCore/QTimeZone>

namespace {

char *putDigits(char *out, qint64 value, int width)
{
    char digits[24];
    int n = 0;
    do {
        digits[n++] = char('0' + value % 10);
        value /= 10;
    } while (value > 0);
    while (n < width)
        digits[n++] = '0';
    while (n > 0)
        *out++ = digits[--n];
    return out;
}

class Parser
{
public:
    Parser(const char *text, int size) : m_at(text), m_end(text + size) {}
    bool atEnd() const { return m_at == m_end; }
    bool peek(char c) const { return m_at < m_end && *m_at == c; }
    bool take(char c)
    {
        if (!peek(c))
            return false;
        ++m_at;
        return true;
    }
    /*! Exactly \a n digits, or at least \a n when \a more. */
    bool digits(int n, qint64 &value, bool more = false)
    {
        value = 0;
        int count = 0;
        while (m_at < m_end && *m_at >= '0' && *m_at <= '9' && (more || count < n)) {
            if (count >= 15)
                return false;
            value = value * 10 + (*m_at++ - '0');
            ++count;
        }
        return more ? count >= n : count == n;
    }
    const char *at() const { return m_at; }
    const char *end() const { return m_end; }
    void skipTo(const char *p) { m_at = p; }

private:
    const char *m_at;
    const char *m_end;
};

} // namespace

QString Converters::ToString(const QDateTime &value)
{
    if (value.isNull())
        return QString(QLatin1String(""));
    char buffer[128];
    char *out = buffer;
    const QDate date = value.date();
    const QTime time = value.time();
    if (date.isValid()) {
        int y, m, d;
        date.getDate(&y, &m, &d);
        if (y < 0) {
            *out++ = '-';
            out = putDigits(out, -qint64(y), 4);
        } else {
            if (y > 9999)
                *out++ = '+';
            out = putDigits(out, y, 4);
        }
        *out++ = '-';
        out = putDigits(out, m, 2);
        *out++ = '-';
        out = putDigits(out, d, 2);
    }
    *out++ = 'T';
    if (time.isValid()) {
        out = putDigits(out, time.hour(), 2);
        *out++ = ':';
        out = putDigits(out, time.minute(), 2);
        *out++ = ':';
        out = putDigits(out, time.second(), 2);
        *out++ = '.';
        out = putDigits(out, time.msec(), 3);
    }
    QString text = QString::fromLatin1(buffer, int(out - buffer));
    switch (value.timeSpec()) {
    case Qt::LocalTime:
        break;
    case Qt::UTC:
        text += QLatin1Char('Z');
        break;
    case Qt::OffsetFromUTC: {
        qint64 offset = value.offsetFromUtc();
        out = buffer;
        *out++ = offset < 0 ? '-' : '+';
        offset = offset < 0 ? -offset : offset;
        out = putDigits(out, offset / 3600, 2);
        *out++ = ':';
        out = putDigits(out, offset / 60 % 60, 2);
        if (offset % 60) {
            *out++ = ':';
            out = putDigits(out, offset % 60, 2);
        }
        text += QLatin1String(buffer, int(out - buffer));
        break;
    }
    case Qt::TimeZone:
        text += QLatin1Char('[') + QString::fromUtf8(value.timeZone().id()) + QLatin1Char(']');
        break;
    }
    return text;
}

QDateTime Converters::ToDateTime(const QString &text)
{
    return ToDateTime(QStringView(text));
}

QDateTime Converters::ToDateTime(QStringView text)
{
    // The text is ASCII but for unusual zone names: narrow it on the stack.
    char buffer[128];
    if (text.size() <= qsizetype(sizeof buffer)) {
        bool ascii = true;
        for (qsizetype i = 0; i < text.size() && ascii; ++i) {
            const char16_t c = text[i].unicode();
            ascii = c < 0x80;
            buffer[i] = char(c);
        }
        if (ascii)
            return ToDateTime(buffer, int(text.size()));
    }
    const QByteArray utf8 = text.toUtf8();
    return ToDateTime(utf8.constData(), int(utf8.size()));
}

QDateTime Converters::ToDateTime(const char *utf8, int size)
{
    if (size <= 0)
        return QDateTime();
    Parser p(utf8, size);
    QDate date;
    if (!p.peek('T')) {
        qint64 y, m, d;
        const bool negative = p.take('-');
        const bool wide = !negative && p.take('+');
        if (!p.digits(4, y, negative || wide) || !p.take('-') || !p.digits(2, m) || !p.take('-') || !p.digits(2, d))
            return QDateTime();
        if (y > 2000000000)
            return QDateTime();
        date = QDate(int(negative ? -y : y), int(m), int(d));
        if (!date.isValid())
            return QDateTime();
    }
    if (!p.take('T'))
        return QDateTime();
    QTime time;
    if (p.peek(':') || (!p.atEnd() && *p.at() >= '0' && *p.at() <= '9')) {
        qint64 h, mi, s, ms;
        if (!p.digits(2, h) || !p.take(':') || !p.digits(2, mi) || !p.take(':') || !p.digits(2, s) || !p.take('.')
            || !p.digits(3, ms))
            return QDateTime();
        time = QTime(int(h), int(mi), int(s), int(ms));
        if (!time.isValid())
            return QDateTime();
    }
    if (p.atEnd())
        return QDateTime(date, time, Qt::LocalTime);
    if (p.take('Z'))
        return p.atEnd() ? QDateTime(date, time, Qt::UTC) : QDateTime();
    if (p.peek('+') || p.peek('-')) {
        const int sign = p.take('-') ? -1 : (p.take('+'), 1);
        qint64 h, m, s = 0;
        if (!p.digits(2, h) || !p.take(':') || !p.digits(2, m))
            return QDateTime();
        if (p.take(':') && !p.digits(2, s))
            return QDateTime();
        if (!p.atEnd() || m > 59 || s > 59 || h * 3600 + m * 60 + s > 24 * 3600)
            return QDateTime();
        return QDateTime(date, time, Qt::OffsetFromUTC, sign * int(h * 3600 + m * 60 + s));
    }
    if (p.take('[')) {
        const char *start = p.at();
        const char *close = start;
        while (close < p.end() && *close != ']')
            ++close;
        if (close == p.end() || close + 1 != p.end())
            return QDateTime();
        const QTimeZone zone = close > start ? QTimeZone(QByteArray(start, int(close - start))) : QTimeZone();
        return QDateTime(date, time, zone);
    }
    return QDateTime();
}
