// The test class Holder's field table.
#include "holder.h"

#include "frame/classimpl.h"

namespace HALVANE {

namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    nestedField("List", 0x00000201, Required, &opsOf<MeasurementList>).withElement("MeasurementList"),
    objectListField("Items", 0x00000202, Required, &opsOf<MeasurementList>).withElement("MeasurementList"),
};
} // namespace

HALVANE_CLASS_DEFINITION(Holder, 0x5A3B1E01, kFields, nullptr, nullptr)

HALVANE_NESTED_ACCESSORS(Holder, MeasurementList, List)
HALVANE_OBJECT_LIST_ACCESSORS(Holder, MeasurementList, Items)

} // namespace HALVANE
