// ModeManager: the running state of a receiver's mode, its dual state and the
// mode of the search scan.
#ifndef HALVANE_FRAME_MODEMANAGER_H
#define HALVANE_FRAME_MODEMANAGER_H

#include "dataclass.h"

namespace HALVANE {

class ModeManager : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(ModeManager)

    struct structMODSearchScanMode {
        QString Name;
        QString Guiname;
    };

    HALVANE_ENUM_FIELD(RunningState)
    HALVANE_ENUM_NAMES(RunningState)

    HALVANE_ENUM_FIELD(DualState)
    HALVANE_ENUM_NAMES(DualState)

    HALVANE_ENUM_FIELD(SearchScanMode)
    HALVANE_ENUM_ROWS(SearchScanMode, structMODSearchScanMode)
    HALVANE_ENUM_COLUMN(SearchScanMode, Guiname)
};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(ModeManager)

#endif
