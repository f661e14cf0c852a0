// Validation (Check, HasData, AnyData) and comparison, field by field.
#include "../frame.h"
#include "../text/messages.h"

namespace HALVANE {
namespace frame {

namespace {

bool isList(Kind kind)
{
    return kind == Kind::ObjectList || kind == Kind::StringList || kind == Kind::EnumList;
}

} // namespace

void check(const Obj &o, bool recursive)
{
    prologue(o);
    Payload *p = initData(o);
    for (const Field &f : o.desc->fields) {
        void *at = p->at(f);
        const bool set = p->bit(f.bit);
        switch (f.kind) {
        case Kind::Nested:
            if (f.required() || set)
                f.itemOps->base(at)->Check(recursive);
            break;
        case Kind::ObjectList:
        case Kind::StringList:
        case Kind::EnumList:
            if (f.required() && !set)
                messages::checkFailed(o.self->GetObjectName(), f.elementName);
            if (!set)
                break;
            if (f.kind == Kind::ObjectList) {
                const int n = f.itemOps->listSize(at);
                for (int i = 0; i < n; ++i)
                    f.itemOps->base(f.itemOps->listAt(at, i))->Check(recursive);
            } else if (!isValidList(f, at)) {
                messages::checkFailed(o.self->GetObjectName(), f.elementName);
            }
            break;
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::String:
        case Kind::DateTime:
        case Kind::Enum:
            if ((f.required() && !set) || (set && !isValidValue(f, at)))
                messages::checkFailed(o.self->GetObjectName(), f.elementName);
            break;
        }
    }
    if (o.desc->hooks && o.desc->hooks->checkExtra)
        o.desc->hooks->checkExtra(*o.self, recursive);
}

namespace {

// Whether a field holds data: a string by its value, a nested object by
// \a nested (its HasData or AnyData), a list by its items, the rest by its bit.
template <class Nested>
bool holds(Payload *p, const Field &f, Nested nested)
{
    void *at = p->at(f);
    if (traits(f.kind).list)
        return listSize(f, at) != 0;
    if (f.kind == Kind::String)
        return !static_cast<const QString *>(at)->isNull();
    if (f.kind == Kind::Nested)
        return nested(objectAt(f.itemOps, at));
    return p->bit(f.bit);
}

} // namespace

bool hasData(const Obj &o)
{
    if (!o.desc->hasRequired)
        return true;
    Payload *p = access(o);
    if (!p)
        return false;
    for (const Field &f : o.desc->fields) {
        if (f.required() && !holds(p, f, [](const Obj &child) { return child.self->HasData(); }))
            return false;
    }
    return true;
}

bool anyData(const Obj &o)
{
    Payload *p = access(o);
    if (!p)
        return false;
    for (const Field &f : o.desc->fields) {
        if (holds(p, f, [](const Obj &child) { return anyData(child); }))
            return true;
    }
    return false;
}

namespace {

bool sameValue(const Field &f, const void *a, const void *b)
{
    return traits(f.kind).same(f, a, b);
}

// Lists: the left side counts whatever its bit, the right side only when its
// bit is on; a missing list (no payload) is empty.
bool sameList(const Field &f, const void *a, const void *b)
{
    if (a && b)
        return traits(f.kind).same(f, a, b);
    return (a ? listSize(f, a) : 0) == (b ? listSize(f, b) : 0);
}

} // namespace

bool equals(const Obj &a, const Obj &b)
{
    Payload *pa = access(a);
    Payload *pb = access(b);
    if (!pa && !pb)
        return true;
    for (const Field &f : a.desc->fields) {
        const bool setA = pa && pa->bit(f.bit);
        const bool setB = pb && pb->bit(f.bit);
        if (isList(f.kind)) {
            if (!sameList(f, pa ? pa->at(f) : nullptr, setB ? pb->at(f) : nullptr))
                return false;
            continue;
        }
        if (setA != setB)
            return false;
        if (setA && !sameValue(f, pa->at(f), pb->at(f)))
            return false;
    }
    return true;
}

} // namespace frame
} // namespace HALVANE
