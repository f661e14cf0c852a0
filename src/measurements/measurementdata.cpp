// MeasurementData's tables and accessors.
#include "measurementdata.h"

#include "measurementitems_p.h"

namespace HALVANE {

namespace {

const QStringList kMeasurementModes = {
    QStringLiteral("CW_AMM"),
    QStringLiteral("CW_IMM"),
    QStringLiteral("CW_DMM"),
    QStringLiteral("General_AMM"),
    QStringLiteral("General_IMM"),
    QStringLiteral("General_DMM"),
    QStringLiteral("DF_AMM"),
    QStringLiteral("DF_IMM"),
    QStringLiteral("DF_DMM"),
};
const QStringList kMeasurementStates = {
    QStringLiteral("request to start measurement"),
    QStringLiteral("triggered"),
    QStringLiteral("result obtained"),
};
const frame::NameTable kMeasurementModeTable(kMeasurementModes);
const frame::NameTable kMeasurementStateTable(kMeasurementStates);

using namespace frame;
constexpr FieldDef kFields[] = {
    enumField("MeasurementItem", 0xAF02C080, Required, &kMeasurementItemTable),
    intField("InternalKey", 0xACB208C7, 0),
    enumField("MeasurementMode", 0x07F21ECA, 0, &kMeasurementModeTable),
    enumField("MeasurementState", 0xC4DC1675, 0, &kMeasurementStateTable),
    nestedField("MeasurementResult", 0xEE3E130B, Required, &opsOf<MeasurementResult>),
};

} // namespace

HALVANE_CLASS_DEFINITION(MeasurementData, 0x668D69C1, kFields, nullptr, nullptr)

HALVANE_ENUM_ACCESSORS(MeasurementData, MeasurementItem)
HALVANE_MEASUREMENT_ITEM_TABLE_ACCESSORS(MeasurementData)
HALVANE_INT_ACCESSORS(MeasurementData, InternalKey)
HALVANE_ENUM_ACCESSORS(MeasurementData, MeasurementMode)
HALVANE_ENUM_NAMES_ACCESSORS(MeasurementData, MeasurementMode)
HALVANE_ENUM_ACCESSORS(MeasurementData, MeasurementState)
HALVANE_ENUM_NAMES_ACCESSORS(MeasurementData, MeasurementState)
HALVANE_NESTED_ACCESSORS(MeasurementData, MeasurementResult, MeasurementResult)

} // namespace HALVANE
