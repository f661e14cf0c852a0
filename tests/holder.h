// A test class with a required nested object and a required list of objects
// whose items can pass Check without having data.
#ifndef HALVANE_TESTS_HOLDER_H
#define HALVANE_TESTS_HOLDER_H

#include <halvane/halvane.h>

namespace HALVANE {

class Holder : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(Holder)

    HALVANE_NESTED_FIELD(MeasurementList, List)
    HALVANE_OBJECT_LIST_FIELD(MeasurementList, Items)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(Holder)

#endif
