// ModeManager's tables and accessors.
#include "modemanager.h"

#include "classimpl.h"

namespace HALVANE {

namespace {

using Row = ModeManager::structMODSearchScanMode;

const QStringList kRunningStates = {QStringLiteral("Off"), QStringLiteral("On")};
const QStringList kDualStates = {QStringLiteral("Off"), QStringLiteral("On")};
const QList<Row> kSearchScanModes = {
    {QStringLiteral("IdleScanMode"), QStringLiteral("IDLE")},
    {QStringLiteral("ContScanMode"), QStringLiteral("CONT")},
    {QStringLiteral("HoldScanMode"), QStringLiteral("HOLD")},
    {QStringLiteral("LeaveScanMode"), QStringLiteral("LEAVE")},
    {QStringLiteral("RestartScanMode"), QStringLiteral("RESTART")},
    {QStringLiteral("RunScanMode"), QStringLiteral("RUN")},
    {QStringLiteral("StopScanMode"), QStringLiteral("STOP")},
    {QStringLiteral("SuppScanMode"), QStringLiteral("SUPP")},
};

const frame::NameTable kRunningStateTable(kRunningStates);
const frame::NameTable kDualStateTable(kDualStates);
const frame::NameTable kSearchScanModeTable =
    frame::NameTable::fromRows(kSearchScanModes, HALVANE_COLUMN(Row, Name), HALVANE_COLUMN(Row, Guiname));

using namespace frame;
constexpr FieldDef kFields[] = {
    enumField("RunningState", 0xA2170003, Required, &kRunningStateTable),
    enumField("DualState", 0xE15535C6, Required, &kDualStateTable),
    enumField("SearchScanMode", 0xA98C8F75, Required, &kSearchScanModeTable),
};

} // namespace

HALVANE_CLASS_DEFINITION(ModeManager, 0xC37A4ADF, kFields, nullptr, nullptr)

HALVANE_ENUM_ACCESSORS(ModeManager, RunningState)
HALVANE_ENUM_NAMES_ACCESSORS(ModeManager, RunningState)
HALVANE_ENUM_ACCESSORS(ModeManager, DualState)
HALVANE_ENUM_NAMES_ACCESSORS(ModeManager, DualState)
HALVANE_ENUM_ACCESSORS(ModeManager, SearchScanMode)
HALVANE_ENUM_ROWS_ACCESSORS(ModeManager, SearchScanMode, structMODSearchScanMode, kSearchScanModes)
HALVANE_ENUM_COLUMN_ACCESSORS(ModeManager, SearchScanMode, Guiname, 1)

} // namespace HALVANE
