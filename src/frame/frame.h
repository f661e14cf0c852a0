// The frame's algorithms, written once for all data classes and driven by
// their ClassDescriptor. The data classes' members forward here (classimpl.h).
#ifndef HALVANE_FRAME_FRAME_H
#define HALVANE_FRAME_FRAME_H

#include "model/descriptor.h"
#include "model/kinds.h"

#include <memory>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace HALVANE {
namespace frame {

// Payload lifetime (payload.cpp).
void retain(Payload *p);
void release(const ClassDescriptor &desc, Payload *&p);
void assign(const ClassDescriptor &desc, Payload *&to, Payload *from);
/*! The object's payload, detached from any other holder; null if it has none. */
Payload *access(const Obj &o);
/*! As access(), creating the payload first when there is none. */
Payload *initData(const Obj &o);
void constNoClearReset(const Obj &o);
void reset(const Obj &o);
void resetToDefault(const Obj &o);

// Flag and logger of nested objects and list items (payload.cpp).
void setValidate(const Obj &o, bool validate);
void setLogger(const Obj &o, const std::shared_ptr<QUILLET::Logger> &logger);
void prologue(const Obj &o);
/*! Something below the object may now carry another flag or logger. */
void markChildrenDirty(Payload *p, const ClassDescriptor &desc);
/*! A nested object or list item of \a owner was replaced or read: keeps the
    owner's push state only if the child already carries the owner's flag. */
void childChanged(const Obj &owner, Payload *p, const Obj &child);

// Fields (fields.cpp).
bool isSet(const Obj &o, int field);
void resetField(const Obj &o, int field);
/*! The value of \a field, creating the payload when there is none. */
void *valueOf(const Obj &o, int field);
/*! As valueOf(), and turns the field's bit on (a mutable reference handed out). */
void *mutableValueOf(const Obj &o, int field);
/*! The setter: tests \a value when validation is on, stores it, turns the bit on. */
void setValue(const Obj &o, int field, const void *value);
/*! AppendFoo: tests the item when validation is on and appends it; a
    \a movable item (a reader's own, or a caller's temporary) is moved in. */
void append(const Obj &o, int field, const void *item, bool movable = false);
bool isValidValue(const Field &f, const void *value);
bool isValidItem(const Field &f, const void *item);
bool isValidList(const Field &f, const void *list);
/*! Number of items of a list field's value. */
int listSize(const Field &f, const void *list);
QString enumAsString(const Obj &o, int field);
QStringList guiNames(const NameTable &table);

// Validation and comparison (check.cpp).
void check(const Obj &o, bool recursive);
bool hasData(const Obj &o);
bool anyData(const Obj &o);
bool equals(const Obj &a, const Obj &b);

// XML form (xml.cpp).
void getXml(const Obj &o, QXmlStreamWriter &writer);
void processXml(const Obj &o, QXmlStreamReader &reader);
void processXmlStartElement(const Obj &o, QXmlStreamReader &reader);

// Tagged binary form (tagged.cpp).
bool getBinary(const Obj &o, QDataStream &stream, int tag, bool writeTag);
void setBinary(const Obj &o, QDataStream &stream, int length);

// Raw binary form (raw.cpp).
void writeRaw(const Obj &o, QDataStream &stream);
void readRaw(const Obj &o, QDataStream &stream);

// Versioned documents (version.cpp).
/*! The version the class writes. */
const QString &currentVersion(const Obj &o);
/*! The version of the document last read: null until one was read. */
const QString &loadedVersion(const Obj &o);
/*! A document's version has been read (an empty string when it had none):
    kept as the version last read; an older version than the class's empties
    the object, whose reading then goes on into an empty list. */
void versionRead(const Obj &o, const QString &version);
/*! The version attribute of the element the reader stands on, read as
    versionRead says; an absent attribute is an empty version. */
void readXmlVersion(const Obj &o, const QXmlStreamReader &reader);
/*! The XML reading of a versioned object after its attributes: its children,
    also those of unknown elements read into (see unknownVersionedElement). */
void readVersionedChildren(const Obj &o, QXmlStreamReader &reader);
/*! An element that no field of a versioned class knows: skipped in an older
    document, refused while validating, else read into: the reader stays on
    its start element and its children are offered to the object in turn. */
void unknownVersionedElement(const Obj &o, QXmlStreamReader &reader);

/*! The handle of a nested object or list item held at \a at. */
inline Obj objectAt(const ObjectOps *ops, void *at)
{
    return Obj{ops->desc, ops->payload(at), ops->base(at)};
}

/*! A list item made by a reader, destroyed when the reader leaves. */
class TempItem
{
public:
    explicit TempItem(const ObjectOps *ops) : m_ops(ops) { ops->construct(m_storage); }
    ~TempItem() { m_ops->destroy(m_storage); }
    TempItem(const TempItem &) = delete;
    TempItem &operator=(const TempItem &) = delete;
    void *get() { return m_storage; }
    QUILLET::IQuilletObject *object() { return m_ops->base(m_storage); }
    Obj obj() { return objectAt(m_ops, m_storage); }

private:
    const ObjectOps *m_ops;
    alignas(QUILLET::IQuilletObject) char m_storage[kObjectSize];
};

} // namespace frame
} // namespace HALVANE

#endif
