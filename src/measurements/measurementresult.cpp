// MeasurementResult's field table and accessors. Unit is an attribute in XML,
// and so comes first in the tagged form too.
#include "measurementresult.h"

#include "../frame/classimpl.h"

namespace HALVANE {

namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    dateTimeField("TimeStamp", 0x48B92D4D, Required),
    doubleField("DoubleResult", 0xC082A1C3, 0),
    stringField("StringResult", 0xCFE03D2A, 0),
    stringField("Unit", 0x88871B46, Attribute | ElementToo),
};
constexpr quint8 kTaggedOrder[] = {3, 0, 1, 2};
} // namespace

HALVANE_CLASS_DEFINITION(MeasurementResult, 0x8ADE035B, kFields, nullptr, kTaggedOrder)

HALVANE_DATETIME_ACCESSORS(MeasurementResult, TimeStamp)
HALVANE_DOUBLE_ACCESSORS(MeasurementResult, DoubleResult)
HALVANE_STRING_ACCESSORS(MeasurementResult, StringResult)
HALVANE_STRING_ACCESSORS(MeasurementResult, Unit)

} // namespace HALVANE
