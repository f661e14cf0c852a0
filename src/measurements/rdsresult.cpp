// RDSResult's field table and accessors.
#include "rdsresult.h"

#include "../frame/classimpl.h"

namespace HALVANE {

namespace {
using namespace frame;
constexpr FieldDef kFields[] = {
    stringField("ProgramName", 0x014B11DC, Required),
    stringField("PICode", 0xA22F850E, Required),
};
} // namespace

HALVANE_CLASS_DEFINITION(RDSResult, 0x8B6638C4, kFields, nullptr, nullptr)

HALVANE_STRING_ACCESSORS(RDSResult, ProgramName)
HALVANE_STRING_ACCESSORS(RDSResult, PICode)

} // namespace HALVANE
