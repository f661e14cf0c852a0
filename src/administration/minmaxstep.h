// MinMaxStep: a lower limit, an upper limit and a step.
#ifndef HALVANE_ADMINISTRATION_MINMAXSTEP_H
#define HALVANE_ADMINISTRATION_MINMAXSTEP_H

#include "../frame/dataclass.h"

namespace HALVANE {

class MinMaxStep : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(MinMaxStep)

    HALVANE_DOUBLE_FIELD(Min)
    HALVANE_DOUBLE_FIELD(Max)
    HALVANE_DOUBLE_FIELD(Step)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(MinMaxStep)

#endif
