// Read-only introspection of the data classes: each class's name, id and
// fields in bit order, with kinds, element names, tags, limits, defaults and
// name tables; and a registry that finds a class by name, id or field tag and
// makes an empty object of it. Every class registers itself.
#ifndef HALVANE_FRAME_SCHEMA_H
#define HALVANE_FRAME_SCHEMA_H

#include "../../base/quilletobject.h"

#include <halvane/export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <memory>

class QDataStream;

namespace HALVANE {
namespace schema {

/*! The kind of a field: its value type, and for a list the kind of its items.
    \ingroup registry */
enum class Kind {
    Bool,       ///< bool
    Int,        ///< int, 64 bits wide in both binary forms
    Int64,      ///< 64-bit int
    Double,     ///< double
    Float,      ///< float
    String,     ///< QString
    DateTime,   ///< QDateTime
    Enum,       ///< a row index into the field's name table
    Nested,     ///< an object of another class
    ObjectList, ///< a list of objects of another class
    StringList, ///< a list of strings
    EnumList,   ///< a list of row indices into the field's name table
};

/*! "bool", "int", "int64", "double", "float", "string", "datetime", "enum",
    "nested", "list", "stringlist", "enumlist".
    \ingroup registry */
HALVANE_EXPORT QString kindName(Kind kind);

/*! The name table of an enumerated field, or of a list of enumerated items.
    \ingroup registry */
struct Table {
    QStringList columns;        ///< column names, Name first; "Helpid" last where present
    QVector<QStringList> rows;  ///< row i is the value i
};

/*! One field of a class, as its description gives it.
    \ingroup registry */
struct Field {
    int bit = 0;                ///< also the field's place in the field order
    QString name;               ///< as in the accessors (GetFoo, SetFoo)
    QString element;            ///< XML element or attribute name
    quint32 tag = 0;            ///< the tag of its record in the tagged form
    Kind kind = Kind::Int;      ///< the kind of the value
    bool required = false;      ///< demanded by HasData and Check
    bool attribute = false;     ///< written as an XML attribute
    bool elementToo = false;    ///< an attribute also read as a child element
    bool hasRange = false;      ///< the field has a range, lo to hi, both included
    double lo = 0;              ///< the lowest value in range
    double hi = 0;              ///< the highest value in range
    bool hasDefault = false;    ///< the initial value is a default, which ResetToDefault sets
    QString initial;            ///< text form of the initial value; null for none
    QString itemClass;          ///< class of a nested object or of list items
    Table table;                ///< enumerated fields and lists of them
};

/*! A data class: its name, id and fields, and what a tool does with an
    object of it without knowing its C++ type.
    \ingroup registry */
struct HALVANE_EXPORT Class {
    QString name;               ///< the class name, also its XML element name
    quint32 id = 0;             ///< the class id
    bool document = false;      ///< held by no other class: a document of its own
    QVector<Field> fields;      ///< in bit order
    QVector<int> taggedOrder;   ///< field indices in the order of the tagged form
    /// A versioned document: the version it writes; null for the other classes.
    QString version;
    /// A versioned document's version as a field outside the field order (bit
    /// -1): a string named and written as its attribute, with the tag of its
    /// record, which holds a QString as the stream writes it.
    Field versionField;

    /// The field of that name; null when there is none.
    const Field *field(const QString &name) const;
    /// The field with that tag; null when there is none.
    const Field *fieldByTag(quint32 tag) const;
    /// The field with that element or attribute name; null when there is none.
    const Field *fieldByElement(const QString &element) const;
    /// A new, untouched object of the class.
    std::unique_ptr<QUILLET::IQuilletObject> create() const;
    /// Writes the raw form of \a object, which must be of this class.
    void writeRaw(const QUILLET::IQuilletObject &object, QDataStream &stream) const;
    /// Reads the raw form into \a object, which must be of this class.
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

    const void *ops = nullptr;  ///< the frame's operations of the class
};

/*! Every registered class, ordered by name.
    \ingroup registry */
HALVANE_EXPORT const QVector<const Class *> &classes();
/*! The class of that name; null when there is none.
    \ingroup registry */
HALVANE_EXPORT const Class *findClass(const QString &name);
/*! The class with that class id; null when there is none.
    \ingroup registry */
HALVANE_EXPORT const Class *findClassById(quint32 id);
/*! The classes that have a field with this tag, and the field.
    \ingroup registry */
HALVANE_EXPORT QVector<QPair<const Class *, const Field *>> findTag(quint32 tag);

/*! A fully populated, valid document of the class in its XML form, made
    from the tables: every field set, lists of two items.
    \ingroup registry */
HALVANE_EXPORT QString exampleXml(const Class &c);
/*! The same with \a count items in each list of the document and of its
    nested objects (lists inside list items keep two), for large documents.
    \ingroup registry */
HALVANE_EXPORT QString exampleXml(const Class &c, int count);

/*! A field that a document must give for its object to pass Check: a
    required scalar or list, or a required nested object whose class has
    such a field (Check looks into a required nested object even when it was
    never read).
    \ingroup registry */
HALVANE_EXPORT bool mustBeGiven(const Field &f);

/*! An XML Schema (XSD 1.0) of the XML form of every class, each class also
    as a global element. Numbers and bools are restricted to the texts that
    reading keeps as they are, enumerated values to their table's names,
    limits to the field's range. The children of a class stand in any order,
    as the reader takes them; required ones are required. XSD 1.0 cannot say
    "any order" of a list beside two or more other children: such a class
    takes its children in any order and number.
    \ingroup registry */
HALVANE_EXPORT QString xmlSchema();

/*! The table of a class as text, one line per field: the form kept in the
    tests as the reference of every table.
    \ingroup registry */
HALVANE_EXPORT QString describe(const Class &c);

} // namespace schema
} // namespace HALVANE

#endif
