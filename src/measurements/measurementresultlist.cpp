// MeasurementResultList's field table and accessors.
#include "measurementresultlist.h"

#include "../frame/classimpl.h"

namespace HALVANE {

namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    objectListField("MeasurementData", 0xCCA6575E, Required, &opsOf<MeasurementData>),
};
} // namespace

HALVANE_CLASS_DEFINITION(MeasurementResultList, 0x8A479DE2, kFields, nullptr, nullptr)

HALVANE_OBJECT_LIST_ACCESSORS(MeasurementResultList, MeasurementData, MeasurementData)

} // namespace HALVANE
