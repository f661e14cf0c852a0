// MeasurementList's field table and accessors.
#include "measurementlist.h"

#include "measurementitems_p.h"

namespace HALVANE {

namespace {

// Note the order: here "On" is row 0.
const QStringList kRecordingStates = {QStringLiteral("On"), QStringLiteral("Off")};
const frame::NameTable kRecordingStateTable(kRecordingStates);

using namespace frame;
constexpr FieldDef kFields[] = {
    enumListField("MeasurementItem", 0xAF02C080, Required, &kMeasurementItemTable),
    enumField("RecordingState", 0xEDDCC926, 0, &kRecordingStateTable),
};

} // namespace

HALVANE_CLASS_DEFINITION(MeasurementList, 0x2F94692C, kFields, nullptr, nullptr)

HALVANE_ENUM_LIST_ACCESSORS(MeasurementList, MeasurementItem)
HALVANE_MEASUREMENT_ITEM_TABLE_ACCESSORS(MeasurementList)
HALVANE_ENUM_ACCESSORS(MeasurementList, RecordingState)
HALVANE_ENUM_NAMES_ACCESSORS(MeasurementList, RecordingState)

} // namespace HALVANE
