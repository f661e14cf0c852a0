// The field tables that drive the frame: one FieldDef per field, one
// ClassDescriptor per data class, and the payload they describe. Every
// algorithm of the frame walks these rows; a class contributes nothing else.
#ifndef HALVANE_FRAME_DESCRIPTOR_H
#define HALVANE_FRAME_DESCRIPTOR_H

#include "../text/nametable.h"

#include "../../base/quilletobject.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <cstddef>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace HALVANE {
namespace frame {

enum class Kind : quint8 {
    Bool,
    Int,
    Int64,
    Double,
    Float,
    String,
    DateTime,
    Enum,
    Nested,
    ObjectList,
    StringList,
    EnumList,
};

enum FieldFlag : quint8 {
    Required = 0x01,
    Attribute = 0x02,   // written as an XML attribute of the object's element
    ElementToo = 0x04,  // an attribute also accepted as a child element
    HasDefault = 0x08,  // the initial value counts as a default (ResetToDefault, empty bool)
    HasRange = 0x10,    // numeric limits lo..hi, both included
    EmptyElementDefault = 0x80, // an empty child element gives the default, not the empty text
};

struct ClassDescriptor;
struct Payload;

/*! Type-erased operations on one data class X and on QVector<X>; made by
    opsFor<X>() in the class's own source file. Constant-initialised. */
struct ObjectOps {
    const ClassDescriptor *desc;
    void (*construct)(void *at);
    void (*copy)(void *at, const void *from);
    void (*destroy)(void *at);
    void (*assign)(void *to, const void *from);
    QUILLET::IQuilletObject *(*base)(void *object);
    Payload **(*payload)(void *object);
    // QVector<X>
    void (*listConstruct)(void *at);
    void (*listCopy)(void *at, const void *from);
    void (*listDestroy)(void *at);
    void (*listAssign)(void *to, const void *from);
    int (*listSize)(const void *list);
    void *(*listAt)(void *list, int i);            // detaches the vector
    const void *(*listAtConst)(const void *list, int i);
    void (*listAppend)(void *list, const void *item);
    void (*listAppendMove)(void *list, void *item);
    void (*listClear)(void *list);
    void (*listReserve)(void *list, int size);
    // The class as a whole, for the registry.
    QUILLET::IQuilletObject *(*create)();
    void (*rawWrite)(const QUILLET::IQuilletObject *object, QDataStream &stream);
    void (*rawRead)(QUILLET::IQuilletObject *object, QDataStream &stream);
};

/*! Registers a class with the schema registry; made once per class. */
struct Registrar {
    explicit Registrar(const ObjectOps *ops);
};

using OpsFn = const ObjectOps &(*)();

/*! One row of a class's field table, as the class writes it (see fields below). */
struct FieldDef {
    const char *name;    // field name: accessors, m_name in messages
    const char *element; // element or attribute name; nested: the class's object name
    quint32 tag;
    Kind kind;
    quint8 flags;
    double lo;           // limits when HasRange
    double hi;
    qint64 initInt;      // initial value of bool, int, int64 and enum fields
    double initReal;     // initial value of double and float fields
    const char *initText;// initial value of string fields; nullptr: null string
    const NameTable *table; // Enum, EnumList
    OpsFn ops;           // Nested, ObjectList: the item class
    const void *itemType;// Nested, ObjectList: ItemTypeTag<item class>, for the compiler's checks

    constexpr FieldDef withElement(const char *name_) const
    {
        FieldDef f = *this;
        f.element = name_;
        return f;
    }
    constexpr FieldDef withRange(double lo_, double hi_) const
    {
        FieldDef f = *this;
        f.flags = quint8(f.flags | HasRange);
        f.lo = lo_;
        f.hi = hi_;
        return f;
    }
    constexpr FieldDef withDefault() const
    {
        FieldDef f = *this;
        f.flags = quint8(f.flags | HasDefault);
        return f;
    }
};

constexpr FieldDef makeField(const char *name, quint32 tag, Kind kind, quint8 flags)
{
    return FieldDef{name, name, tag, kind, flags, 0.0, 0.0, 0, 0.0, nullptr, nullptr, nullptr, nullptr};
}

/*! One object per class, whose address names the class in constant
    expressions (the addresses of functions do not, in every build). */
template <class T>
struct ItemTypeTag {
    static constexpr char tag = 0;
};
constexpr FieldDef boolField(const char *name, quint32 tag, quint8 flags, bool init = false)
{
    FieldDef f = makeField(name, tag, Kind::Bool, flags);
    f.initInt = init;
    return f;
}
constexpr FieldDef intField(const char *name, quint32 tag, quint8 flags, qint64 init = 0)
{
    FieldDef f = makeField(name, tag, Kind::Int, flags);
    f.initInt = init;
    return f;
}
constexpr FieldDef int64Field(const char *name, quint32 tag, quint8 flags, qint64 init = 0)
{
    FieldDef f = makeField(name, tag, Kind::Int64, flags);
    f.initInt = init;
    return f;
}
constexpr FieldDef doubleField(const char *name, quint32 tag, quint8 flags, double init = 0.0)
{
    FieldDef f = makeField(name, tag, Kind::Double, flags);
    f.initReal = init;
    return f;
}
constexpr FieldDef floatField(const char *name, quint32 tag, quint8 flags, double init = 0.0)
{
    FieldDef f = makeField(name, tag, Kind::Float, flags);
    f.initReal = init;
    return f;
}
constexpr FieldDef stringField(const char *name, quint32 tag, quint8 flags, const char *init = nullptr)
{
    FieldDef f = makeField(name, tag, Kind::String, flags);
    f.initText = init;
    return f;
}
constexpr FieldDef dateTimeField(const char *name, quint32 tag, quint8 flags)
{
    return makeField(name, tag, Kind::DateTime, flags);
}
constexpr FieldDef enumField(const char *name, quint32 tag, quint8 flags, const NameTable *table,
                             qint64 init = -1)
{
    FieldDef f = makeField(name, tag, Kind::Enum, flags);
    f.table = table;
    f.initInt = init;
    return f;
}
/*! Rows of nested fields and lists of objects of class T; the class's
    operations come from opsOf<T>, declared where the class is defined. */
template <class T>
const ObjectOps &opsOf();

template <class T>
constexpr FieldDef nestedField(const char *name, quint32 tag, quint8 flags)
{
    FieldDef f = makeField(name, tag, Kind::Nested, flags);
    f.ops = &opsOf<T>;
    f.itemType = &ItemTypeTag<T>::tag;
    return f;
}
template <class T>
constexpr FieldDef objectListField(const char *name, quint32 tag, quint8 flags)
{
    FieldDef f = makeField(name, tag, Kind::ObjectList, flags);
    f.ops = &opsOf<T>;
    f.itemType = &ItemTypeTag<T>::tag;
    return f;
}
constexpr FieldDef stringListField(const char *name, quint32 tag, quint8 flags)
{
    return makeField(name, tag, Kind::StringList, flags);
}
constexpr FieldDef enumListField(const char *name, quint32 tag, quint8 flags, const NameTable *table)
{
    FieldDef f = makeField(name, tag, Kind::EnumList, flags);
    f.table = table;
    f.initInt = -1;
    return f;
}

constexpr bool sameText(const char *a, const char *b)
{
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

/*! The row of the field called \a name; used in constant expressions, where
    a name that is not in the table does not compile. */
template <int N>
constexpr int fieldIndex(const FieldDef (&fields)[N], const char *name)
{
    for (int i = 0; i < N; ++i) {
        if (sameText(fields[i].name, name))
            return i;
    }
    throw "no field of that name in the table";
}

// Checks of a whole table, for static_assert in the class definition.

template <int N>
constexpr bool uniqueTags(const FieldDef (&fields)[N])
{
    for (int i = 0; i < N; ++i)
        for (int j = i + 1; j < N; ++j)
            if (fields[i].tag == fields[j].tag)
                return false;
    return true;
}

template <int N>
constexpr bool uniqueElements(const FieldDef (&fields)[N])
{
    for (int i = 0; i < N; ++i)
        for (int j = i + 1; j < N; ++j)
            if (sameText(fields[i].element, fields[j].element))
                return false;
    return true;
}

template <int N>
constexpr bool uniqueNames(const FieldDef (&fields)[N])
{
    for (int i = 0; i < N; ++i)
        for (int j = i + 1; j < N; ++j)
            if (sameText(fields[i].name, fields[j].name))
                return false;
    return true;
}

/*! No field of the table has the tag (a version's record). */
template <int N>
constexpr bool tagOfNoField(quint32 tag, const FieldDef (&fields)[N])
{
    for (int i = 0; i < N; ++i)
        if (fields[i].tag == tag)
            return false;
    return true;
}

/*! No tagged order of its own: the field order. */
template <int N>
constexpr bool isOrderOf(std::nullptr_t, const FieldDef (&)[N])
{
    return true;
}

/*! A tagged order names every field exactly once. */
template <int M, int N>
constexpr bool isOrderOf(const quint16 (&order)[M], const FieldDef (&)[N])
{
    if (M != N)
        return false;
    for (int i = 0; i < N; ++i) {
        int seen = 0;
        for (int j = 0; j < M; ++j)
            seen += order[j] == i ? 1 : 0;
        if (seen != 1)
            return false;
    }
    return true;
}

constexpr const quint16 *orderPointer(std::nullptr_t) { return nullptr; }
template <int M>
constexpr const quint16 *orderPointer(const quint16 (&order)[M]) { return order; }

/*! Departures of a class from the frame's algorithms. Null pointers are the
    frame's own behaviour; most classes have no hooks at all. */
struct Hooks {
    // Tests beyond the field rules, run after them by Check.
    void (*checkExtra)(const QUILLET::IQuilletObject &self, bool recursive);
};

/*! The version of a versioned document class, as its description gives it:
    the attribute of its element, the tag of its record in the tagged form,
    and the version this class writes. The raw form carries it behind the
    presence bytes. A document read in an older version empties the object
    first (see version.cpp). */
struct VersionDef {
    const char *attribute;
    quint32 tag;
    const char *current;
};

/*! A field row with what the frame derives from it once. */
struct Field : FieldDef {
    const ObjectOps *itemOps; // Nested, ObjectList
    QString elementName;
    QString initString;
    QString memberName;  // "m_" + name with a lower-case first letter
    quint16 offset;      // of the value inside the payload
    quint16 bit;
    bool tested;         // the setter tests a value: enumerated, string, a number with a range
    bool required() const { return flags & Required; }
    bool attribute() const { return flags & Attribute; }
};

struct ClassDescriptor {
    ClassDescriptor(const char *name, quint32 id, const FieldDef *fields, int count,
                    const Hooks *hooks = nullptr, const quint16 *taggedOrder = nullptr,
                    const VersionDef *version = nullptr);
    ClassDescriptor(const ClassDescriptor &) = delete;
    ClassDescriptor &operator=(const ClassDescriptor &) = delete;

    QString name;
    quint32 id;
    QVector<Field> fields;
    QVector<quint16> taggedOrder; // field indices in the order of the tagged form
    const Hooks *hooks;
    StringIndex elements;        // element name -> field index (children only)
    quint16 payloadSize;
    quint16 stateOffset;         // push state byte, classes with nested objects or lists
    quint16 wordCount;           // presence words: one bit per field
    bool hasChildren;            // nested or object list fields
    bool hasRequired;
    // A versioned class's version; null for the others. The payload then
    // holds the version last read, a string without a presence bit.
    const VersionDef *version;
    QString versionAttribute;
    QString currentVersion;
    quint16 loadedVersionOffset;

    int findTag(quint32 tag) const;

private:
    QVector<quint32> m_tags;     // sorted
    QVector<quint16> m_tagFields;
};

/*! The payload: reference count and presence bits, then the values at the
    offsets of their fields. Laid out by ClassDescriptor. */
struct Payload {
    QAtomicInt ref;
    // Followed by wordCount words of presence bits, then the values.
    char *data() { return reinterpret_cast<char *>(this); }
    const char *data() const { return reinterpret_cast<const char *>(this); }
    quint32 *words() { return reinterpret_cast<quint32 *>(data() + kWordsOffset); }
    const quint32 *words() const { return reinterpret_cast<const quint32 *>(data() + kWordsOffset); }
    bool bit(int n) const { return words()[n >> 5] & (1u << (n & 31)); }
    void setBit(int n) { words()[n >> 5] |= 1u << (n & 31); }
    void clearBit(int n) { words()[n >> 5] &= ~(1u << (n & 31)); }
    void *at(const Field &f) { return data() + f.offset; }
    template <class T>
    T &value(const Field &f) { return *reinterpret_cast<T *>(data() + f.offset); }
    quint8 &state(const ClassDescriptor &desc);
    QString &loadedVersion(const ClassDescriptor &desc);

    static constexpr int kWordsOffset = sizeof(QAtomicInt);
};

/*! Every data class is the object base plus one payload pointer. */
constexpr int kObjectSize = int(sizeof(QUILLET::IQuilletObject) + sizeof(void *));

/*! The frame's handle on one object: its table, its payload pointer and the
    object itself for the virtual operations. */
struct Obj {
    const ClassDescriptor *desc;
    Payload **d;
    const QUILLET::IQuilletObject *self;
};

inline quint8 &Payload::state(const ClassDescriptor &desc)
{
    return *reinterpret_cast<quint8 *>(data() + desc.stateOffset);
}

inline QString &Payload::loadedVersion(const ClassDescriptor &desc)
{
    return *reinterpret_cast<QString *>(data() + desc.loadedVersionOffset);
}

} // namespace frame
} // namespace HALVANE

#endif
