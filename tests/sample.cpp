// The test class's field table: optional fields of every kind, defaults and ranges.
#include "sample.h"

#include "frame/classimpl.h"

namespace HALVANE {

namespace {

const QStringList kModeNames = {QStringLiteral("Slow"), QStringLiteral("Fast"), QStringLiteral("Auto")};
const frame::NameTable kModeTable(kModeNames);

using namespace frame;
constexpr FieldDef kFields[] = {
    intField("index", 0x00000101, Attribute | ElementToo),
    boolField("Enabled", 0x00000102, 0, true).withDefault(),
    boolField("Strict", 0x00000103, 0),
    intField("Count", 0x00000104, 0).withRange(-1, 10),
    int64Field("Big", 0x00000105, 0),
    doubleField("Level", 0x00000106, 0, 1.0).withRange(0.1, 100).withDefault(),
    floatField("Gain", 0x00000107, 0),
    stringField("Label", 0x00000108, 0, "none").withDefault(),
    dateTimeField("When", 0x00000109, 0),
    enumField("Mode", 0x0000010A, 0, &kModeTable, 1).withDefault(),
    nestedField("MinMaxStep", 0xC693EC10, 0, &opsOf<MinMaxStep>),
    objectListField("Results", 0x0000010C, 0, &opsOf<RDSResult>).withElement("RDSResult"),
    stringListField("Path", 0x0000010D, 0),
    enumListField("Choices", 0x0000010E, 0, &kModeTable),
};

// A rule across two fields, which no row can say: a count of 10 needs a level.
void countNeedsLevel(const QUILLET::IQuilletObject &self, bool)
{
    const Sample &s = static_cast<const Sample &>(self);
    if (s.GetCount() == 10 && !s.IsLevelSet())
        throw OutOfRangeException(QStringLiteral("Sample: a count of 10 needs a level."));
}

const Hooks kHooks = {&countNeedsLevel};

} // namespace

HALVANE_CLASS_DEFINITION(Sample, 0x5A3B1E00, kFields, &kHooks, nullptr)

HALVANE_INT_ACCESSORS(Sample, index)
HALVANE_BOOL_ACCESSORS(Sample, Enabled)
HALVANE_BOOL_ACCESSORS(Sample, Strict)
HALVANE_INT_ACCESSORS(Sample, Count)
HALVANE_INT64_ACCESSORS(Sample, Big)
HALVANE_DOUBLE_ACCESSORS(Sample, Level)
HALVANE_FLOAT_ACCESSORS(Sample, Gain)
HALVANE_STRING_ACCESSORS(Sample, Label)
HALVANE_DATETIME_ACCESSORS(Sample, When)
HALVANE_ENUM_ACCESSORS(Sample, Mode)
HALVANE_ENUM_NAMES_ACCESSORS(Sample, Mode)
HALVANE_NESTED_ACCESSORS(Sample, MinMaxStep, MinMaxStep)
HALVANE_OBJECT_LIST_ACCESSORS(Sample, RDSResult, Results)
HALVANE_STRING_LIST_ACCESSORS(Sample, Path)
HALVANE_ENUM_LIST_ACCESSORS(Sample, Choices)

} // namespace HALVANE
