// The row of the measurement item table, and the converters of its columns
// that MeasurementList and MeasurementData both have.
#ifndef HALVANE_MEASUREMENTS_MEASUREMENTITEM_H
#define HALVANE_MEASUREMENTS_MEASUREMENTITEM_H

#include "../frame/dataclass.h"

namespace HALVANE {

struct structMEAMeasurementItem {
    QString Name;
    QString Selflag;
    QString Itemname;
    QString Guiname;
    QString Unit;         // "None" where the quantity has no unit
    QString Usedbyostrom; // "true" or "false"
    QString Mode;
};

} // namespace HALVANE

/*! The table and column converters of a field MeasurementItem. */
#define HALVANE_MEASUREMENT_ITEM_TABLE                                  \
    typedef ::HALVANE::structMEAMeasurementItem structMEAMeasurementItem; \
    HALVANE_ENUM_ROWS(MeasurementItem, structMEAMeasurementItem)        \
    HALVANE_ENUM_COLUMN(MeasurementItem, Selflag)                       \
    HALVANE_ENUM_COLUMN(MeasurementItem, Itemname)                      \
    HALVANE_ENUM_COLUMN(MeasurementItem, Guiname)                       \
    HALVANE_ENUM_COLUMN(MeasurementItem, Unit)                          \
    HALVANE_ENUM_COLUMN(MeasurementItem, Usedbyostrom)                  \
    HALVANE_ENUM_COLUMN(MeasurementItem, Mode)

#endif
