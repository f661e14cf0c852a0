// The table of kind traits: one row per kind of field.
#include "kinds.h"

#include "../frame.h"

#include <QtCore/QDateTime>

#include <cstring>
#include <new>
#include <type_traits>

namespace HALVANE {
namespace frame {

namespace {

// Values that are copied as they lie: bool, the numbers, the enum index.
template <class T>
struct Plain {
    static void construct(const Field &f, void *at);
    static void copy(const Field &, void *at, const void *from) { std::memcpy(at, from, sizeof(T)); }
    static void destroy(const Field &, void *) {}
    static void assign(const Field &, void *at, const void *value) { std::memcpy(at, value, sizeof(T)); }
    static void reset(const Field &f, void *at) { construct(f, at); }
    static int count(const Field &, const void *) { return 0; }
    static bool same(const Field &, const void *a, const void *b) { return *static_cast<const T *>(a) == *static_cast<const T *>(b); }
    static double number(const void *at) { return double(*static_cast<const T *>(at)); }
};
template <> void Plain<bool>::construct(const Field &f, void *at) { new (at) bool(f.initInt != 0); }
template <> void Plain<qint32>::construct(const Field &f, void *at) { new (at) qint32(qint32(f.initInt)); }
template <> void Plain<qint64>::construct(const Field &f, void *at) { new (at) qint64(f.initInt); }
template <> void Plain<double>::construct(const Field &f, void *at) { new (at) double(f.initReal); }
template <> void Plain<float>::construct(const Field &f, void *at) { new (at) float(float(f.initReal)); }
template <> void Plain<qint8>::construct(const Field &f, void *at) { new (at) qint8(qint8(f.initInt)); }

// Qt values with constructors: strings, date-times and vectors of strings or enum indices.
template <class T>
struct Value {
    static void construct(const Field &f, void *at);
    static void copy(const Field &, void *at, const void *from) { new (at) T(*static_cast<const T *>(from)); }
    static void destroy(const Field &, void *at) { static_cast<T *>(at)->~T(); }
    static void assign(const Field &, void *at, const void *value) { *static_cast<T *>(at) = *static_cast<const T *>(value); }
    static void reset(const Field &f, void *at);
    static int count(const Field &, const void *at);
    static bool same(const Field &, const void *a, const void *b) { return *static_cast<const T *>(a) == *static_cast<const T *>(b); }
};
template <> void Value<QString>::construct(const Field &f, void *at) { new (at) QString(f.initString); }
template <> void Value<QString>::reset(const Field &f, void *at) { *static_cast<QString *>(at) = f.initString; }
template <> int Value<QString>::count(const Field &, const void *) { return 0; }
template <> void Value<QDateTime>::construct(const Field &, void *at) { new (at) QDateTime(); }
template <> void Value<QDateTime>::reset(const Field &, void *at) { *static_cast<QDateTime *>(at) = QDateTime(); }
template <> int Value<QDateTime>::count(const Field &, const void *) { return 0; }
template <class T>
void Value<T>::construct(const Field &, void *at) { new (at) T(); }
template <class T>
void Value<T>::reset(const Field &, void *at) { static_cast<T *>(at)->clear(); }
template <class T>
int Value<T>::count(const Field &, const void *at) { return int(static_cast<const T *>(at)->size()); }

// Data class objects, through the item class's operations.
struct Nested {
    static void construct(const Field &f, void *at) { f.itemOps->construct(at); }
    static void copy(const Field &f, void *at, const void *from) { f.itemOps->copy(at, from); }
    static void destroy(const Field &f, void *at) { f.itemOps->destroy(at); }
    static void assign(const Field &f, void *at, const void *value) { f.itemOps->assign(at, value); }
    // Assigning a fresh object leaves the nested one without a payload and
    // with its own flag and logger.
    static void reset(const Field &f, void *at)
    {
        alignas(QUILLET::IQuilletObject) char fresh[kObjectSize];
        f.itemOps->construct(fresh);
        f.itemOps->assign(at, fresh);
        f.itemOps->destroy(fresh);
    }
    static int count(const Field &, const void *) { return 0; }
    static bool same(const Field &f, const void *a, const void *b)
    {
        return equals(objectAt(f.itemOps, const_cast<void *>(a)), objectAt(f.itemOps, const_cast<void *>(b)));
    }
};

struct ObjectList {
    static void construct(const Field &f, void *at) { f.itemOps->listConstruct(at); }
    static void copy(const Field &f, void *at, const void *from) { f.itemOps->listCopy(at, from); }
    static void destroy(const Field &f, void *at) { f.itemOps->listDestroy(at); }
    static void assign(const Field &f, void *at, const void *value) { f.itemOps->listAssign(at, value); }
    static void reset(const Field &f, void *at) { f.itemOps->listClear(at); }
    static int count(const Field &f, const void *at) { return f.itemOps->listSize(at); }
    // Items by the item class's ==; the lengths first.
    static bool same(const Field &f, const void *a, const void *b)
    {
        const int n = f.itemOps->listSize(a);
        if (n != f.itemOps->listSize(b))
            return false;
        for (int i = 0; i < n; ++i) {
            if (!Nested::same(f, f.itemOps->listAtConst(a, i), f.itemOps->listAtConst(b, i)))
                return false;
        }
        return true;
    }
};

template <class Ops, class T>
constexpr KindTraits row(const char *name, Items items, bool text, double (*number)(const void *) = nullptr)
{
    return KindTraits{name, quint8(sizeof(T)), quint8(alignof(T)),
                      quint8(std::is_trivially_copyable<T>::value ? sizeof(T) : 0), items != Items::None, items,
                      false, text,
                      &Ops::construct, &Ops::copy, &Ops::destroy, &Ops::assign, &Ops::reset, &Ops::count,
                      &Ops::same, number};
}

// The slot of a nested object: the object base plus one payload pointer.
struct ObjectSlot {
    alignas(QUILLET::IQuilletObject) char bytes[kObjectSize];
};

} // namespace

constexpr KindTraits kKindTraits[kKindCount] = {
    // In the order of Kind.
    row<Plain<bool>, bool>("bool", Items::None, false),
    row<Plain<qint32>, qint32>("int", Items::None, false, &Plain<qint32>::number),
    row<Plain<qint64>, qint64>("int64", Items::None, false, &Plain<qint64>::number),
    row<Plain<double>, double>("double", Items::None, true, &Plain<double>::number),
    row<Plain<float>, float>("float", Items::None, true, &Plain<float>::number),
    row<Value<QString>, QString>("string", Items::None, true),
    row<Value<QDateTime>, QDateTime>("datetime", Items::None, true),
    row<Plain<qint8>, qint8>("enum", Items::None, true),
    KindTraits{"nested", quint8(sizeof(ObjectSlot)), quint8(alignof(ObjectSlot)), 0, false, Items::None, true, false,
               &Nested::construct, &Nested::copy, &Nested::destroy, &Nested::assign, &Nested::reset, &Nested::count,
               &Nested::same, nullptr},
    KindTraits{"list", quint8(sizeof(QVector<QString>)), quint8(alignof(QVector<QString>)), 0, true, Items::Objects, true, false,
               &ObjectList::construct, &ObjectList::copy, &ObjectList::destroy, &ObjectList::assign,
               &ObjectList::reset, &ObjectList::count, &ObjectList::same, nullptr},
    row<Value<QVector<QString>>, QVector<QString>>("stringlist", Items::Strings, true),
    row<Value<QVector<qint8>>, QVector<qint8>>("enumlist", Items::Enums, true),
};

// The rows stand in the order of Kind.
static_assert(sameText(kKindTraits[int(Kind::Bool)].name, "bool") && sameText(kKindTraits[int(Kind::Int)].name, "int")
                  && sameText(kKindTraits[int(Kind::Int64)].name, "int64")
                  && sameText(kKindTraits[int(Kind::Double)].name, "double")
                  && sameText(kKindTraits[int(Kind::Float)].name, "float")
                  && sameText(kKindTraits[int(Kind::String)].name, "string")
                  && sameText(kKindTraits[int(Kind::DateTime)].name, "datetime")
                  && sameText(kKindTraits[int(Kind::Enum)].name, "enum")
                  && sameText(kKindTraits[int(Kind::Nested)].name, "nested")
                  && sameText(kKindTraits[int(Kind::ObjectList)].name, "list")
                  && sameText(kKindTraits[int(Kind::StringList)].name, "stringlist")
                  && sameText(kKindTraits[int(Kind::EnumList)].name, "enumlist"),
              "one row of kind traits per kind, in the order of Kind");

} // namespace frame
} // namespace HALVANE
