// A nested accessor whose row names another class.
#include "administration/sensormetadata.h"
#include "measurements/rdsresult.h"
#include "frame/classimpl.h"

namespace HALVANE {
namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
#ifdef HALVANE_BREAK
    nestedField<RDSResult>("MinMaxStep", 0xC693EC10, Required),
#else
    nestedField<MinMaxStep>("MinMaxStep", 0xC693EC10, Required),
#endif
};
} // namespace
HALVANE_CLASS_DEFINITION(SensorMetaData, 0xE8DEFD19, kFields, nullptr, nullptr)
HALVANE_NESTED_ACCESSORS(SensorMetaData, MinMaxStep, MinMaxStep)
} // namespace HALVANE
