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

enum class Kind { Bool, Int, Int64, Double, Float, String, DateTime, Enum, Nested, ObjectList, StringList, EnumList };

/*! "bool", "int", "int64", "double", "float", "string", "datetime", "enum",
    "nested", "list", "stringlist", "enumlist". */
HALVANE_EXPORT QString kindName(Kind kind);

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

struct HALVANE_EXPORT Class {
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

    const void *ops = nullptr;  // the frame's operations of the class
};

/*! Every registered class, ordered by name. */
HALVANE_EXPORT const QVector<const Class *> &classes();
HALVANE_EXPORT const Class *findClass(const QString &name);
HALVANE_EXPORT const Class *findClassById(quint32 id);
/*! The classes that have a field with this tag, and the field. */
HALVANE_EXPORT QVector<QPair<const Class *, const Field *>> findTag(quint32 tag);

/*! A fully populated, valid document of the class in its XML form, made
    from the tables: every field set, lists of two items. */
HALVANE_EXPORT QString exampleXml(const Class &c);

/*! The table of a class as text, one line per field: the form kept in the
    tests as the reference of every table. */
HALVANE_EXPORT QString describe(const Class &c);

} // namespace schema
} // namespace HALVANE

#endif
