// Walks over the bytes of the two binary forms by the field tables, for tools
// that show or check a document without building its objects: every object,
// record, list item and value is handed to a visitor with its byte offset.
// The walks trust no length or count they have not checked against the bytes
// that remain, and end at the first fault with RecordVisitor::fault.
#ifndef HALVANE_FRAME_SCHEMA_VISIT_H
#define HALVANE_FRAME_SCHEMA_VISIT_H

#include "schema.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QString>

namespace HALVANE {
namespace schema {

/*! One decoded value.
    \ingroup registry */
struct Value {
    /// What the value holds, and so which member has it.
    enum Type {
        Bytes,    ///< bytes that are not what the field's kind needs, or any value of an unknown record
        Bool,     ///< boolean
        Integer,  ///< int and 64-bit int
        Real,     ///< double, float (raw form)
        Text,     ///< string, and the text of double, float, date-time and enumerated values (tagged form)
        DateTime, ///< raw form
        Index,    ///< enumerated value or item (raw form)
    };
    Type type = Bytes;  ///< which member holds the value
    QByteArray bytes;   ///< the bytes of a value of type Bytes
    bool boolean = false; ///< a Bool
    qint64 integer = 0; ///< an Integer, or an Index
    double real = 0;    ///< a Real
    QString text;       ///< null for a null string
    QDateTime dateTime; ///< a DateTime
};

/*! Receives the parts of a form in stream order; offsets count from the
    first byte handed to the walk. The default members do nothing.
    \ingroup registry */
class HALVANE_EXPORT RecordVisitor
{
public:
    /// A visitor is the caller's; the walk keeps nothing of it.
    virtual ~RecordVisitor();
    /*! An object of class \a c (null: no schema); \a length is its object
        length in the tagged form and -1 in the raw form. */
    virtual void beginObject(const Class *c, qint64 offset, qint64 length);
    /// The end of the object last begun.
    virtual void endObject();
    /*! The presence bytes of an object in the raw form. */
    virtual void presence(const Class &c, const QByteArray &bits);
    /*! A record of the tagged form (\a f null for a tag the class does not
        know) or a value of the raw form (\a length -1). */
    virtual void beginField(const Field *f, quint32 tag, qint64 offset, qint64 length);
    /// The end of the record or value last begun.
    virtual void endField();
    /// The item count of a list, before its items.
    virtual void list(qint32 count);
    /*! A list item; \a length is its length word in the tagged form, -1 in the raw form. */
    virtual void beginItem(int index, qint64 offset, qint64 length);
    /// The end of the list item last begun.
    virtual void endItem();
    /// A decoded value of the record or item that stands open.
    virtual void value(const Value &v);
    /*! The bytes do not hold what a length or count promised; the walk ends. */
    virtual void fault(qint64 offset, const QString &what);
};

/*! The field records of one object of class \a c in the tagged form (what
    follows its object length), by \a order; with \a c null every record is
    handed over as Bytes. Returns false after a fault.
    \ingroup registry */
HALVANE_EXPORT bool walkTagged(const Class *c, const QByteArray &records, QDataStream::ByteOrder order, RecordVisitor &visitor);

/*! One object of class \a c in the raw form, as a stream of \a version (the
    layout of Qt 5.2 to 5.15) and \a order reads it. Returns false after a fault; \a end is the offset after the
    object.
    \ingroup registry */
HALVANE_EXPORT bool walkRaw(const Class &c, const QByteArray &bytes, int version, QDataStream::ByteOrder order,
             RecordVisitor &visitor, qint64 *end = nullptr);

} // namespace schema
} // namespace HALVANE

#endif
