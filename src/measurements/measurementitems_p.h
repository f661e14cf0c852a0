// Internal: the measurement item table behind HALVANE_MEASUREMENT_ITEM_TABLE.
#ifndef HALVANE_MEASUREMENTS_MEASUREMENTITEMS_P_H
#define HALVANE_MEASUREMENTS_MEASUREMENTITEMS_P_H

#include "measurementitem.h"

#include "../frame/classimpl.h"

namespace HALVANE {

const QList<structMEAMeasurementItem> &measurementItemRows();
extern const frame::NameTable kMeasurementItemTable;

} // namespace HALVANE

/*! Definitions of HALVANE_MEASUREMENT_ITEM_TABLE for class X. */
#define HALVANE_MEASUREMENT_ITEM_TABLE_ACCESSORS(X)                                      \
    HALVANE_ENUM_ROWS_ACCESSORS(X, MeasurementItem, structMEAMeasurementItem, measurementItemRows()) \
    HALVANE_ENUM_COLUMN_ACCESSORS(X, MeasurementItem, Selflag, 1)                        \
    HALVANE_ENUM_COLUMN_ACCESSORS(X, MeasurementItem, Itemname, 2)                       \
    HALVANE_ENUM_COLUMN_ACCESSORS(X, MeasurementItem, Guiname, 3)                        \
    HALVANE_ENUM_COLUMN_ACCESSORS(X, MeasurementItem, Unit, 4)                           \
    HALVANE_ENUM_COLUMN_ACCESSORS(X, MeasurementItem, Usedbyostrom, 5)                   \
    HALVANE_ENUM_COLUMN_ACCESSORS(X, MeasurementItem, Mode, 6)

#endif
