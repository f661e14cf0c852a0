// MeasurementData: a result for one measurement item, with its mode and state.
#ifndef HALVANE_MEASUREMENTS_MEASUREMENTDATA_H
#define HALVANE_MEASUREMENTS_MEASUREMENTDATA_H

#include "measurementitem.h"
#include "measurementresult.h"

namespace HALVANE {

class MeasurementData : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(MeasurementData)

    HALVANE_ENUM_FIELD(MeasurementItem)
    HALVANE_MEASUREMENT_ITEM_TABLE

    HALVANE_INT_FIELD(InternalKey)

    HALVANE_ENUM_FIELD(MeasurementMode)
    HALVANE_ENUM_NAMES(MeasurementMode)

    HALVANE_ENUM_FIELD(MeasurementState)
    HALVANE_ENUM_NAMES(MeasurementState)

    HALVANE_NESTED_FIELD(MeasurementResult, MeasurementResult)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(MeasurementData)

#endif
