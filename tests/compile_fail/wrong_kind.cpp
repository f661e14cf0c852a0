// An accessor family on a row of another kind: a double accessor for an int row.
#include "administration/minmaxstep.h"
#include "frame/classimpl.h"

namespace HALVANE {
namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    doubleField("Min", 0x4ECB4E58, Required),
#ifdef HALVANE_BREAK
    intField("Max", 0x6E8DD7F5, Required),
#else
    doubleField("Max", 0x6E8DD7F5, Required),
#endif
    doubleField("Step", 0x0BB0BDA2, Required),
};
} // namespace
HALVANE_CLASS_DEFINITION(MinMaxStep, 0xC44D9F13, kFields, nullptr, nullptr)
HALVANE_DOUBLE_ACCESSORS(MinMaxStep, Max)
} // namespace HALVANE
