// MeasurementResultList: the results of one delivery.
#ifndef HALVANE_MEASUREMENTS_MEASUREMENTRESULTLIST_H
#define HALVANE_MEASUREMENTS_MEASUREMENTRESULTLIST_H

#include "measurementdata.h"

namespace HALVANE {

class MeasurementResultList : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(MeasurementResultList)

    HALVANE_OBJECT_LIST_FIELD(MeasurementData, MeasurementData)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(MeasurementResultList)

#endif
