// SensorMetaData: description of one measured quantity of a sensor, its
// group, unit, limits and step.
#ifndef HALVANE_ADMINISTRATION_SENSORMETADATA_H
#define HALVANE_ADMINISTRATION_SENSORMETADATA_H

#include "minmaxstep.h"

namespace HALVANE {

class SensorMetaData : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(SensorMetaData)

    HALVANE_STRING_FIELD(Group)
    HALVANE_STRING_FIELD(Unit)
    HALVANE_NESTED_FIELD(MinMaxStep, MinMaxStep)
    HALVANE_DOUBLE_FIELD(ValueMin)
    HALVANE_DOUBLE_FIELD(ValueMax)
    HALVANE_DOUBLE_FIELD(ValueStep)
    HALVANE_BOOL_FIELD(MeasurementInvalid)
    HALVANE_INT_FIELD(Overload)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(SensorMetaData)

#endif
