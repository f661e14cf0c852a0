// Text form of date-times, as stored in XML and in the tagged binary form.
#ifndef HALVANE_BASE_CONVERTERS_H
#define HALVANE_BASE_CONVERTERS_H

#include <halvane/export.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringView>

/*! Date-times as text: the form of date-time fields in XML and in the tagged form.
    \ingroup base */
class HALVANE_EXPORT Converters
{
public:
    /*! Exact text of \a value; ToDateTime(ToString(t)) == t for every valid,
        invalid and null date-time, with its milliseconds and time spec. */
    static QString ToString(const QDateTime &value);
    /// The date-time that ToString wrote as \a text; a null date-time for text it cannot read.
    static QDateTime ToDateTime(const QString &text);
    /// The same on a view of the text.
    static QDateTime ToDateTime(QStringView text);
    /*! The same on UTF-8 bytes, without a QString in between. */
    static QDateTime ToDateTime(const char *utf8, int size);
};

#endif
