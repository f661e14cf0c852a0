// RDSResult: station name and programme identification code from a radio
// data system decoder.
#ifndef HALVANE_MEASUREMENTS_RDSRESULT_H
#define HALVANE_MEASUREMENTS_RDSRESULT_H

#include "../frame/dataclass.h"

namespace HALVANE {

class RDSResult : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(RDSResult)

    HALVANE_STRING_FIELD(ProgramName)
    HALVANE_STRING_FIELD(PICode)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(RDSResult)

#endif
