// Text form of date-times, as stored in XML and in the tagged binary form.
#ifndef HALVANE_BASE_CONVERTERS_H
#define HALVANE_BASE_CONVERTERS_H

#include <halvane/export.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringView>

class HALVANE_EXPORT Converters
{
public:
    /*! Exact text of \a value; ToDateTime(ToString(t)) == t for every valid,
        invalid and null date-time, with its milliseconds and time spec. */
    static QString ToString(const QDateTime &value);
    static QDateTime ToDateTime(const QString &text);
    static QDateTime ToDateTime(QStringView text);
    /*! The same on UTF-8 bytes, without a QString in between. */
    static QDateTime ToDateTime(const char *utf8, int size);
};

#endif
