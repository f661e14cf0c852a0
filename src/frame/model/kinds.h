// What the frame knows about each kind of field, in one table: the shape of
// its slot in a payload, how a value comes into being, is copied, assigned,
// put back to its initial value and destroyed, and how the forms treat it.
// A new kind is a new row here; the switches that do different work per kind
// (tests, text, the codecs) list every kind without a default, so that the
// compiler names each one a new kind must touch.
#ifndef HALVANE_FRAME_MODEL_KINDS_H
#define HALVANE_FRAME_MODEL_KINDS_H

#include "descriptor.h"

namespace HALVANE {
namespace frame {

/*! What the items of a list are; None for the kinds that are no list. */
enum class Items : quint8 { None, Objects, Strings, Enums };

struct KindTraits {
    const char *name;   // as the schema names it: "bool", "int", "list", ...
    quint8 size;        // bytes of the value's slot in a payload
    quint8 align;
    quint8 plainWidth;  // copied as it lies (bools, enums, numbers); 0 for kinds with constructors
    bool list;          // a QVector of items
    Items items;
    bool child;         // objects below the owner: nested objects, lists of them
    bool text;          // the tagged form writes the value (or each item) as text
    /*! Writes the field's initial value into raw storage. */
    void (*construct)(const Field &f, void *at);
    void (*copy)(const Field &f, void *at, const void *from);
    void (*destroy)(const Field &f, void *at);
    /*! The setter's store: the value replaces what the slot holds. */
    void (*assign)(const Field &f, void *at, const void *value);
    /*! Back to the initial value in place: a nested object without a payload, an empty list. */
    void (*reset)(const Field &f, void *at);
    /*! Number of items of a list; 0 for the other kinds. */
    int (*count)(const Field &f, const void *at);
    /*! Two values are the same: numbers by ==, so that a NaN differs from
        itself; nested objects and list items by their class's ==. */
    bool (*same)(const Field &f, const void *a, const void *b);
    /*! A number's value as a double, for its range; null for other kinds. */
    double (*number)(const void *at);
};

constexpr int kKindCount = int(Kind::EnumList) + 1;
extern const KindTraits kKindTraits[kKindCount];

inline const KindTraits &traits(Kind kind)
{
    return kKindTraits[int(kind)];
}

} // namespace frame
} // namespace HALVANE

#endif
