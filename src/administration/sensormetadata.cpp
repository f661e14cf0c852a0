// SensorMetaData's field table and accessors.
#include "sensormetadata.h"

#include "../frame/classimpl.h"

namespace HALVANE {

namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    stringField("Group", 0x02786BC3, Required),
    stringField("Unit", 0x88871B46, Required),
    nestedField("MinMaxStep", 0xC693EC10, Required, &opsOf<MinMaxStep>),
    doubleField("ValueMin", 0x82AD481D, Required),
    doubleField("ValueMax", 0x8DDD066A, Required),
    doubleField("ValueStep", 0xAF1C7565, Required),
    boolField("MeasurementInvalid", 0x8CC0EF8B, Required),
    intField("Overload", 0x0552B24C, 0),
};
} // namespace

HALVANE_CLASS_DEFINITION(SensorMetaData, 0xE8DEFD19, kFields, nullptr, nullptr)

HALVANE_STRING_ACCESSORS(SensorMetaData, Group)
HALVANE_STRING_ACCESSORS(SensorMetaData, Unit)
HALVANE_NESTED_ACCESSORS(SensorMetaData, MinMaxStep, MinMaxStep)
HALVANE_DOUBLE_ACCESSORS(SensorMetaData, ValueMin)
HALVANE_DOUBLE_ACCESSORS(SensorMetaData, ValueMax)
HALVANE_DOUBLE_ACCESSORS(SensorMetaData, ValueStep)
HALVANE_BOOL_ACCESSORS(SensorMetaData, MeasurementInvalid)
HALVANE_INT_ACCESSORS(SensorMetaData, Overload)

} // namespace HALVANE
