// What every hand-written baseline needs once: numbers and date-times as
// the library's text, and the tagged form's length words and records.
#ifndef HALVANE_BENCH_BASELINE_IO_H
#define HALVANE_BENCH_BASELINE_IO_H

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <initializer_list>

namespace baseline {

// A name table as a hand-written program keeps it: names by index, and a
// hash from name to index (the first row of a name that stands twice).
struct Names {
    QStringList names;
    QHash<QString, int> index;
    explicit Names(const QStringList &list) : names(list)
    {
        for (int i = list.size() - 1; i >= 0; --i)
            index.insert(list[i], i);
    }
    Names(std::initializer_list<const char *> list) : Names(fromUtf8(list)) {}
    // The names of a library table's rows.
    template <class Rows>
    static QStringList of(const Rows &rows)
    {
        QStringList list;
        for (const auto &row : rows)
            list.append(row.Name);
        return list;
    }
    static QStringList fromUtf8(std::initializer_list<const char *> list)
    {
        QStringList names;
        for (const char *name : list)
            names.append(QString::fromUtf8(name));
        return names;
    }
    const QString &name(qint8 v) const { return names.at(v); }
    qint8 find(const QString &text) const { return qint8(index.value(text, -1)); }
};

inline QString number(double v)
{
    return QString::number(v, 'f', 2);
}

inline QString dateText(const QDateTime &t)
{
    return t.toString(Qt::ISODateWithMs);
}

inline QDateTime dateFromText(const QString &text)
{
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

// "0" and "false" in any case are false, any other text true.
inline bool boolFromText(const QString &text)
{
    return text != QLatin1String("0") && text.compare(QLatin1String("false"), Qt::CaseInsensitive) != 0;
}

// Opens a length word to be patched when the counted part is done.
inline qint64 openLength(QDataStream &s)
{
    s << qint32(0);
    return s.device()->pos();
}

inline void closeLength(QDataStream &s, qint64 start)
{
    const qint64 end = s.device()->pos();
    s.device()->seek(start - 4);
    s << qint32(end - start);
    s.device()->seek(end);
}

inline void textRecord(QDataStream &s, quint32 tag, const QString &text)
{
    s << qint32(tag);
    const qint64 length = openLength(s);
    s << text.toUtf8();
    closeLength(s, length);
}

inline void numberRecord(QDataStream &s, quint32 tag, double value)
{
    s << qint32(tag);
    const qint64 length = openLength(s);
    s << QByteArray::number(value, 'f', 2);
    closeLength(s, length);
}

inline QString readText(QDataStream &s)
{
    QByteArray bytes;
    s >> bytes;
    return QString::fromUtf8(bytes);
}

inline double readNumber(QDataStream &s)
{
    QByteArray bytes;
    s >> bytes;
    return bytes.toDouble();
}

// Reads the records of an object of \a length bytes, handing each to \a field.
template <class Field>
inline void readRecords(QDataStream &s, qint32 length, Field field)
{
    qint64 remaining = length;
    while (remaining > 0 && !s.atEnd()) {
        qint32 tag, recordLength;
        s >> tag >> recordLength;
        remaining -= 8 + qint64(recordLength);
        if (!field(quint32(tag), recordLength))
            s.skipRawData(recordLength);
    }
}

} // namespace baseline

#endif
