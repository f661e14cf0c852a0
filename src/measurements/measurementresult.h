// MeasurementResult: one result with its time stamp, as a number, as text or
// both, with a unit.
#ifndef HALVANE_MEASUREMENTS_MEASUREMENTRESULT_H
#define HALVANE_MEASUREMENTS_MEASUREMENTRESULT_H

#include "../frame/dataclass.h"

namespace HALVANE {

class MeasurementResult : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(MeasurementResult)

    HALVANE_DATETIME_FIELD(TimeStamp)
    HALVANE_DOUBLE_FIELD(DoubleResult)
    HALVANE_STRING_FIELD(StringResult)
    HALVANE_STRING_FIELD(Unit) // an XML attribute
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(MeasurementResult)

#endif
