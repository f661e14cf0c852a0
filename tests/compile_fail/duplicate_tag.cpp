// Two rows of one class with the same tag.
#include "administration/minmaxstep.h"
#include "frame/classimpl.h"

namespace HALVANE {
namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    doubleField("Min", 0x4ECB4E58, Required),
    doubleField("Max", 0x6E8DD7F5, Required),
#ifdef HALVANE_BREAK
    doubleField("Step", 0x4ECB4E58, Required),
#else
    doubleField("Step", 0x0BB0BDA2, Required),
#endif
};
} // namespace
HALVANE_CLASS_DEFINITION(MinMaxStep, 0xC44D9F13, kFields, nullptr, nullptr)
} // namespace HALVANE
