// A data class made only for the tests, with a field of every kind the frame
// supports, including those that no class of the library uses yet.
#ifndef HALVANE_TESTS_SAMPLE_H
#define HALVANE_TESTS_SAMPLE_H

#include <halvane/halvane.h>

namespace HALVANE {

class Sample : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(Sample)

    HALVANE_INT_FIELD(index)              // attribute, also read as an element
    HALVANE_BOOL_FIELD(Enabled)           // default true
    HALVANE_BOOL_FIELD(Strict)            // no default
    HALVANE_INT_FIELD(Count)              // range -1..10
    HALVANE_INT64_FIELD(Big)
    HALVANE_DOUBLE_FIELD(Level)           // range 0.1..100
    HALVANE_FLOAT_FIELD(Gain)
    HALVANE_STRING_FIELD(Label)           // default "none"
    HALVANE_DATETIME_FIELD(When)
    HALVANE_ENUM_FIELD(Mode)              // default row 1
    HALVANE_ENUM_NAMES(Mode)
    HALVANE_NESTED_FIELD(MinMaxStep, MinMaxStep)
    HALVANE_OBJECT_LIST_FIELD(RDSResult, Results)
    HALVANE_STRING_LIST_FIELD(Path)
    HALVANE_ENUM_LIST_FIELD(Choices)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(Sample)

#endif
