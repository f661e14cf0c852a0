// A tagged order that leaves a field out.
#include "administration/minmaxstep.h"
#include "frame/classimpl.h"

namespace HALVANE {
namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    doubleField("Min", 0x4ECB4E58, Required),
    doubleField("Max", 0x6E8DD7F5, Required),
    doubleField("Step", 0x0BB0BDA2, Required),
};
#ifdef HALVANE_BREAK
constexpr quint16 kTaggedOrder[] = {2, 0};
#else
constexpr quint16 kTaggedOrder[] = {2, 0, 1};
#endif
} // namespace
HALVANE_CLASS_DEFINITION(MinMaxStep, 0xC44D9F13, kFields, nullptr, kTaggedOrder)
} // namespace HALVANE
