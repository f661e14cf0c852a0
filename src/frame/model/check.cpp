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

bool hasData(const Obj &o)
{
    if (!o.desc->hasRequired)
        return true;
    Payload *p = access(o);
    if (!p)
        return false;
    for (const Field &f : o.desc->fields) {
        if (!f.required())
            continue;
        void *at = p->at(f);
        switch (f.kind) {
        case Kind::String:
            if (static_cast<const QString *>(at)->isNull())
                return false;
            break;
        case Kind::Nested:
            if (!f.itemOps->base(at)->HasData())
                return false;
            break;
        case Kind::ObjectList:
        case Kind::StringList:
        case Kind::EnumList:
            if (listSize(f, at) == 0)
                return false;
            break;
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::DateTime:
        case Kind::Enum:
            if (!p->bit(f.bit))
                return false;
            break;
        }
    }
    return true;
}

bool anyData(const Obj &o)
{
    Payload *p = access(o);
    if (!p)
        return false;
    for (const Field &f : o.desc->fields) {
        void *at = p->at(f);
        switch (f.kind) {
        case Kind::String:
            if (!static_cast<const QString *>(at)->isNull())
                return true;
            break;
        case Kind::Nested:
            if (anyData(objectAt(f.itemOps, at)))
                return true;
            break;
        case Kind::ObjectList:
        case Kind::StringList:
        case Kind::EnumList:
            if (listSize(f, at) != 0)
                return true;
            break;
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::DateTime:
        case Kind::Enum:
            if (p->bit(f.bit))
                return true;
            break;
        }
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
