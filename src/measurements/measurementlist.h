// MeasurementList: which measurement items a receiver is to deliver or
// record, and whether recording is on.
#ifndef HALVANE_MEASUREMENTS_MEASUREMENTLIST_H
#define HALVANE_MEASUREMENTS_MEASUREMENTLIST_H

#include "measurementitem.h"

namespace HALVANE {

class MeasurementList : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(MeasurementList)

    HALVANE_ENUM_LIST_FIELD(MeasurementItem)
    HALVANE_MEASUREMENT_ITEM_TABLE

    HALVANE_ENUM_FIELD(RecordingState)
    HALVANE_ENUM_NAMES(RecordingState)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(MeasurementList)

#endif
