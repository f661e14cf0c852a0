// Read-only introspection of the data classes: each class's name, id and
// fields in bit order, with kinds, element names, tags, limits, defaults and
// name tables; and a registry that finds a class by name, id or field tag and
// makes an empty object of it. Every class registers itself.
#ifndef HALVANE_FRAME_SCHEMA_H
#define HALVANE_FRAME_SCHEMA_H

#include "../../base/quilletobject.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <memory>

class QDataStream;

namespace HALVANE {
namespace schema {

enum class Kind { Bool, Int, Int64, Double, Float, String, DateTime, Enum, Nested, ObjectList, StringList, EnumList };

/*! "bool", "int", "int64", "double", "float", "string", "datetime", "enum",
    "nested", "list", "stringlist", "enumlist". */
QString kindName(Kind kind);

struct Table {
    QStringList columns;        // column names, Name first; "Helpid" last where present
    QVector<QStringList> rows;  // row i is the value i
};

struct Field {
    int bit = 0;                // also the field's place in the field order
    QString name;               // as in the accessors (GetFoo, SetFoo)
    QString element;            // XML element or attribute name
    quint32 tag = 0;
    Kind kind = Kind::Int;
    bool required = false;
    bool attribute = false;     // written as an XML attribute
    bool elementToo = false;    // an attribute also read as a child element
    bool hasRange = false;
    double lo = 0, hi = 0;
    bool hasDefault = false;
    QString initial;            // text form of the initial value; null for none
    QString itemClass;          // class of a nested object or of list items
    Table table;                // enumerated fields and lists of them
};

struct Class {
    QString name;
    quint32 id = 0;
    bool document = false;      // held by no other class: a document of its own
    QVector<Field> fields;      // in bit order
    QVector<int> taggedOrder;   // field indices in the order of the tagged form
    // A versioned document: the version it writes (null for the other
    // classes), and its version as a field outside the field order (bit -1):
    // a string named and written as its attribute, with the tag of its
    // record, which holds a QString as the stream writes it.
    QString version;
    Field versionField;

    const Field *field(const QString &name) const;
    const Field *fieldByTag(quint32 tag) const;
    const Field *fieldByElement(const QString &element) const;
    std::unique_ptr<QUILLET::IQuilletObject> create() const;
    void writeRaw(const QUILLET::IQuilletObject &object, QDataStream &stream) const;
    void readRaw(QUILLET::IQuilletObject &object, QDataStream &stream) const;
    /*! As the class's copy constructor: the copy shares the payload until one
        side changes. Null when \a object is not of this class. */
    std::unique_ptr<QUILLET::IQuilletObject> copy(const QUILLET::IQuilletObject &object) const;
    /*! As the class's operator==; false when either is not of this class. */
    bool equal(const QUILLET::IQuilletObject &a, const QUILLET::IQuilletObject &b) const;
    /*! What reading makes of \a text in field \a f of this class (an item,
        for a list of strings or enumerated values), told as the text that
        writing gives back: a text that comes back different is one that
        reading changes or loses. Numbers go through the library's
        conversions and come back in its text form (a number that is no
        number as 0), a bool as "true" or "false" (an empty one as its
        default, or "false"), a date-time through Converters, a string as it
        is. An enumerated text that names no row comes back null. */
    QString readBack(const Field &f, const QString &text) const;

    const void *ops = nullptr;  // the frame's operations of the class
};

/*! Every registered class, ordered by name. */
const QVector<const Class *> &classes();
const Class *findClass(const QString &name);
const Class *findClassById(quint32 id);
/*! The classes that have a field with this tag, and the field. */
QVector<QPair<const Class *, const Field *>> findTag(quint32 tag);

/*! A fully populated, valid document of the class in its XML form, made
    from the tables: every field set, lists of two items. */
QString exampleXml(const Class &c);
/*! The same with \a count items in each list of the document and of its
    nested objects (lists inside list items keep two), for large documents. */
QString exampleXml(const Class &c, int count);

/*! A field that a document must give for its object to pass Check: a
    required scalar or list, or a required nested object whose class has
    such a field (Check looks into a required nested object even when it was
    never read). */
bool mustBeGiven(const Field &f);

/*! An XML Schema (XSD 1.0) of the XML form of every class, each class also
    as a global element. Numbers and bools are restricted to the texts that
    reading keeps as they are, enumerated values to their table's names,
    limits to the field's range. The children of a class stand in any order,
    as the reader takes them; required ones are required. XSD 1.0 cannot say
    "any order" of a list beside two or more other children: such a class
    takes its children in any order and number. */
QString xmlSchema();

/*! The table of a class as text, one line per field: the form kept in the
    tests as the reference of every table. */
QString describe(const Class &c);

} // namespace schema
} // namespace HALVANE

#endif
