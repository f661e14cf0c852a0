// Field accessors: presence bits, getters, setters with their tests, appends.
#include "../frame.h"
#include "../text/messages.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QObject>

#include <cstring>

namespace HALVANE {
namespace frame {

namespace {

bool inRange(const Field &f, double value)
{
    return !(f.flags & HasRange) || (value >= f.lo && value <= f.hi);
}

// The setter's test of a single value (a list's setter tests nothing);
// throws only when the object validates.
void testValue(const Obj &o, const Field &f, const void *value)
{
    if (traits(f.kind).list || isValidValue(f, value))
        return;
    if (f.kind == Kind::Enum)
        messages::invalidEnum(o.desc->name, f.memberName);
    if (f.kind == Kind::String)
        messages::nullString(o.self->GetObjectName(), f.elementName);
    messages::outOfRange(f.memberName, f.lo, f.hi, o.self->GetObjectName());
}

} // namespace

bool isSet(const Obj &o, int field)
{
    const Payload *p = access(o);
    return p && p->bit(o.desc->fields[field].bit);
}

void resetField(const Obj &o, int field)
{
    Payload *p = access(o);
    if (!p)
        return;
    const Field &f = o.desc->fields[field];
    p->clearBit(f.bit);
    traits(f.kind).reset(f, p->at(f));
    if (traits(f.kind).child)
        markChildrenDirty(p, *o.desc);
}

void *valueOf(const Obj &o, int field)
{
    Payload *p = initData(o);
    const Field &f = o.desc->fields[field];
    // A const reference to a nested object still lets a caller change its
    // flag or logger, so the next prologue pushes them again.
    if (traits(f.kind).child)
        markChildrenDirty(p, *o.desc);
    return p->at(f);
}

void *mutableValueOf(const Obj &o, int field)
{
    Payload *p = initData(o);
    const Field &f = o.desc->fields[field];
    p->setBit(f.bit);
    if (traits(f.kind).child)
        markChildrenDirty(p, *o.desc);
    return p->at(f);
}

void setValue(const Obj &o, int field, const void *value)
{
    Payload *p = initData(o);
    const Field &f = o.desc->fields[field];
    if (o.self->GetValidate())
        testValue(o, f, value);
    traits(f.kind).assign(f, p->at(f), value);
    p->setBit(f.bit);
    if (traits(f.kind).child)
        markChildrenDirty(p, *o.desc);
}

void append(const Obj &o, int field, const void *item, bool movable)
{
    Payload *p = initData(o);
    const Field &f = o.desc->fields[field];
    void *list = p->at(f);
    if (o.self->GetValidate()) {
        bool good = true;
        if (f.kind == Kind::ObjectList)
            good = f.itemOps->base(const_cast<void *>(item))->HasData();
        else if (f.kind == Kind::StringList)
            good = o.self->IsValid(*static_cast<const QString *>(item));
        else
            good = isValidItem(f, item);
        if (!good)
            messages::appendRefused(o.self->GetObjectName(), QString::fromLatin1(f.name));
    }
    switch (traits(f.kind).items) {
    case Items::Objects: {
        if (movable)
            f.itemOps->listAppendMove(list, const_cast<void *>(item));
        else
            f.itemOps->listAppend(list, item);
        const int last = f.itemOps->listSize(list) - 1;
        childChanged(o, p, objectAt(f.itemOps, f.itemOps->listAt(list, last)));
        break;
    }
    case Items::Strings:
        static_cast<QVector<QString> *>(list)->append(*static_cast<const QString *>(item));
        break;
    case Items::Enums:
        static_cast<QVector<qint8> *>(list)->append(*static_cast<const qint8 *>(item));
        break;
    case Items::None:
        break;
    }
    p->setBit(f.bit);
}

bool isValidValue(const Field &f, const void *value)
{
    const KindTraits &t = traits(f.kind);
    if (t.number)
        return inRange(f, t.number(value));
    if (t.list)
        return isValidList(f, value);
    if (f.kind == Kind::Enum)
        return f.table->isValid(*static_cast<const qint8 *>(value));
    if (f.kind == Kind::String)
        return !static_cast<const QString *>(value)->isNull();
    return true; // bool, date-time, nested: no limits
}

bool isValidItem(const Field &f, const void *item)
{
    switch (f.kind) {
    case Kind::StringList:
        return !static_cast<const QString *>(item)->isNull();
    case Kind::EnumList:
        return f.table->isValid(*static_cast<const qint8 *>(item));
    case Kind::Bool:
    case Kind::Int:
    case Kind::Int64:
    case Kind::Double:
    case Kind::Float:
    case Kind::String:
    case Kind::DateTime:
    case Kind::Enum:
    case Kind::Nested:
    case Kind::ObjectList:
        return true; // data class items
    }
    return true; // not a kind
}

bool isValidList(const Field &f, const void *list)
{
    switch (f.kind) {
    case Kind::StringList:
        for (const QString &s : *static_cast<const QVector<QString> *>(list)) {
            if (s.isNull())
                return false;
        }
        return true;
    case Kind::EnumList:
        for (qint8 v : *static_cast<const QVector<qint8> *>(list)) {
            if (!f.table->isValid(v))
                return false;
        }
        return true;
    case Kind::Bool:
    case Kind::Int:
    case Kind::Int64:
    case Kind::Double:
    case Kind::Float:
    case Kind::String:
    case Kind::DateTime:
    case Kind::Enum:
    case Kind::Nested:
    case Kind::ObjectList:
        return true;
    }
    return true; // not a kind
}

int listSize(const Field &f, const void *list)
{
    return traits(f.kind).count(f, list);
}

QString enumAsString(const Obj &o, int field)
{
    const Field &f = o.desc->fields[field];
    return f.table->text(0, *static_cast<const qint8 *>(initData(o)->at(f)));
}

QStringList guiNames(const NameTable &table)
{
    QStringList names;
    names.reserve(table.size());
    for (const QString &name : table.names())
        names.append(QObject::tr(name.toUtf8().constData()));
    return names;
}

} // namespace frame
} // namespace HALVANE
