// MinMaxStep's field table and accessors.
#include "minmaxstep.h"

#include "../frame/classimpl.h"

namespace HALVANE {

namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    doubleField("Min", 0x4ECB4E58, Required),
    doubleField("Max", 0x6E8DD7F5, Required),
    doubleField("Step", 0x0BB0BDA2, Required),
};
} // namespace

HALVANE_CLASS_DEFINITION(MinMaxStep, 0xC44D9F13, kFields, nullptr, nullptr)

HALVANE_DOUBLE_ACCESSORS(MinMaxStep, Min)
HALVANE_DOUBLE_ACCESSORS(MinMaxStep, Max)
HALVANE_DOUBLE_ACCESSORS(MinMaxStep, Step)

} // namespace HALVANE
