// Administration's name tables and accessors.
#include "administration.h"

#include "../frame/classimpl.h"

namespace HALVANE {

namespace {

const QStringList kHardwareStatuss = {
    QStringLiteral("UNKNOWN"),
    QStringLiteral("RUNNING"),
    QStringLiteral("ERROR"),
    QStringLiteral("OPENING"),
    QStringLiteral("CLOSED"),
    QStringLiteral("STOPPED"),
    QStringLiteral("INITMEMORY"),
};
const QList<Administration::structADMCW> kCWs = {
    {QStringLiteral("Level"), QStringLiteral("VOLT:AC"), QStringLiteral("Level")},
    {QStringLiteral("Offset"), QStringLiteral("FREQ:OFFS"), QStringLiteral("Offset")},
    {QStringLiteral("Field Strength"), QStringLiteral("FSTR"), QStringLiteral("Field Strength")},
    {QStringLiteral("AM"), QStringLiteral("AM"), QStringLiteral("AM")},
    {QStringLiteral("AM_POS"), QStringLiteral("AM:POS"), QStringLiteral("AM+")},
    {QStringLiteral("AM_NEG"), QStringLiteral("AM:NEG"), QStringLiteral("AM-")},
    {QStringLiteral("FM"), QStringLiteral("FM"), QStringLiteral("FM")},
    {QStringLiteral("FM_POS"), QStringLiteral("FM:POS"), QStringLiteral("FM+")},
    {QStringLiteral("FM_NEG"), QStringLiteral("FM:NEG"), QStringLiteral("FM-")},
    {QStringLiteral("PM"), QStringLiteral("PM"), QStringLiteral("PM")},
    {QStringLiteral("Bandwidth"), QStringLiteral("BAND"), QStringLiteral("Bandwidth")},
};
const QList<Administration::structADMDriverType> kDriverTypes = {
    {QStringLiteral("Unknown_Driver"), -1},
    {QStringLiteral("Alder7_Driver"), 60280},
    {QStringLiteral("Alder3_Driver"), 60260},
    {QStringLiteral("Alder4_Driver"), -1},
    {QStringLiteral("Cedar2_Driver"), 60360},
    {QStringLiteral("Cedar3_Driver"), -1},
    {QStringLiteral("Dogwood9_Driver"), -1},
    {QStringLiteral("Elm6x_Driver"), 60300},
    {QStringLiteral("Fir1_Driver"), 60400},
    {QStringLiteral("Fir5_Driver"), 60400},
    {QStringLiteral("Fir6_Driver"), 60380},
    {QStringLiteral("Fir2_Driver"), -1},
    {QStringLiteral("Ginkgo8_Driver"), -1},
    {QStringLiteral("Cedar4_Driver"), 60420},
    {QStringLiteral("Hazel1_Driver"), -1},
    {QStringLiteral("Hazel2_Driver"), -1},
    {QStringLiteral("Hazel3_Driver"), -1},
    {QStringLiteral("Juniper4_Driver"), 80240},
    {QStringLiteral("Fir3_Driver"), 60460},
    {QStringLiteral("Kauri3_Driver"), 60440},
    {QStringLiteral("Juniper7_Driver"), -1},
    {QStringLiteral("Alder7_Juniper9_Driver"), 80160},
    {QStringLiteral("Cedar2_Juniper9_Driver"), 80160},
    {QStringLiteral("Cedar3_Juniper9_Driver"), 80160},
    {QStringLiteral("Alder8_Driver"), 60480},
    {QStringLiteral("Alder9_Driver"), -1},
    {QStringLiteral("Juniper6_Driver"), 80300},
    {QStringLiteral("Juniper2_Driver"), 80280},
    {QStringLiteral("Juniper1M_Driver"), -1},
    {QStringLiteral("Larch_Driver"), -1},
    {QStringLiteral("Maple5_Driver"), -1},
    {QStringLiteral("Maple9V2_Driver"), -1},
    {QStringLiteral("Cedar5_Driver"), -1},
    {QStringLiteral("Juniper5_Driver"), -1},
};
const QStringList kDrvCommandss = {
    QStringLiteral("NOCOMMAND"),
    QStringLiteral("IDLE"),
    QStringLiteral("INIT"),
    QStringLiteral("FFM"),
    QStringLiteral("SCAN"),
    QStringLiteral("SEARCH"),
    QStringLiteral("MSCAN"),
    QStringLiteral("MSEARCH"),
    QStringLiteral("FASTSCAN"),
    QStringLiteral("TESTSHORT"),
    QStringLiteral("TESTLONG"),
    QStringLiteral("RESTART_SEARCH"),
    QStringLiteral("RESTART_MSEARCH"),
    QStringLiteral("RESET"),
    QStringLiteral("STOP"),
    QStringLiteral("TESTHISTORY"),
    QStringLiteral("DIAGNOSTICS"),
    QStringLiteral("COMPASSCALIBRATION"),
    QStringLiteral("DFPAN"),
    QStringLiteral("POLAR"),
    QStringLiteral("MDC"),
    QStringLiteral("DUAL"),
    QStringLiteral("JUNIPER_INIT"),
    QStringLiteral("JUNIPER_STOP"),
    QStringLiteral("JUNIPER_FFM"),
    QStringLiteral("JUNIPER_WFFM"),
    QStringLiteral("JUNIPER_SCAN"),
    QStringLiteral("JUNIPER_SEARCH"),
    QStringLiteral("JUNIPER_GSM"),
    QStringLiteral("JUNIPER_SCANLOC"),
    QStringLiteral("JUNIPER_GSMLOC"),
    QStringLiteral("JUNIPER_TETRA"),
    QStringLiteral("JUNIPER_BIT"),
    QStringLiteral("JUNIPER_CAL"),
    QStringLiteral("JUNIPER_RESET"),
    QStringLiteral("JUNIPER_CONNECT"),
    QStringLiteral("MCP_ID"),
    QStringLiteral("OSTROM_DF"),
    QStringLiteral("OSTROM_DFSCAN"),
};
const QStringList kRDSStates = {
    QStringLiteral("OFF"),
    QStringLiteral("ON"),
    QStringLiteral("DATA"),
};
const QStringList kClearGroups = {
    QStringLiteral("DONE"),
    QStringLiteral("CLEAR"),
};
const QList<Administration::structADMIFPan> kIFPans = {
    {QStringLiteral("ClearWrite"), QStringLiteral("OFF"), QStringLiteral("Clear Write")},
    {QStringLiteral("MinHold"), QStringLiteral("MIN"), QStringLiteral("Min Hold")},
    {QStringLiteral("MaxHold"), QStringLiteral("MAX"), QStringLiteral("Max Hold")},
    {QStringLiteral("Average"), QStringLiteral("SCAL"), QStringLiteral("Average")},
};
const QList<Administration::structADMDF> kDFs = {
    {QStringLiteral("DFLevel"), QStringLiteral("DFL"), QStringLiteral("DFLevel"), QStringLiteral("LEVELTHRESHOLD")},
    {QStringLiteral("Bearing"), QStringLiteral("AZIM"), QStringLiteral("Bearing"), QStringLiteral("BEARINGRESULT")},
    {QStringLiteral("Quality"), QStringLiteral("DFQ"), QStringLiteral("Quality"), QStringLiteral("QUALITYTHRESHOLD")},
    {QStringLiteral("Elevation"), QStringLiteral("ELEV"), QStringLiteral("Elevation"), QStringLiteral("ELEVATIONTHRESHOLD")},
    {QStringLiteral("DFFieldstrength"), QStringLiteral("DFFS"), QStringLiteral("DFFieldstrength"), QStringLiteral("DFFIELDSTRENGTH")},
    {QStringLiteral("DeltaDFLevel"), QStringLiteral("DFL"), QStringLiteral("DeltaDFLevel"), QStringLiteral("DeltaDFLevel")},
    {QStringLiteral("DeltaDFBearing"), QStringLiteral("AZIM"), QStringLiteral("DeltaDFBearing"), QStringLiteral("DeltaDFBearing")},
    {QStringLiteral("DeltaDFQuality"), QStringLiteral("DFQ"), QStringLiteral("DeltaDFQuality"), QStringLiteral("DeltaDFQuality")},
};
const QList<Administration::structADMGeneral> kGenerals = {
    {QStringLiteral("RDS"), QStringLiteral("RDS"), QStringLiteral("RDS")},
    {QStringLiteral("SELCAL"), QStringLiteral("SELCAL"), QStringLiteral("SelCal")},
};
const QList<Administration::structADMMassDataStreams> kMassDataStreamss = {
    {QStringLiteral("CW"), QStringLiteral("CW")},
    {QStringLiteral("Audio"), QStringLiteral("AUD")},
    {QStringLiteral("IFPan"), QStringLiteral("IFP")},
    {QStringLiteral("IF"), QStringLiteral("IF")},
    {QStringLiteral("AIF"), QStringLiteral("AIF")},
    {QStringLiteral("FScan"), QStringLiteral("FSCAN")},
    {QStringLiteral("MScan"), QStringLiteral("MSCAN")},
    {QStringLiteral("PScan"), QStringLiteral("PSCAN")},
    {QStringLiteral("PIFPan"), QStringLiteral("PIFP")},
    {QStringLiteral("VDPan"), QStringLiteral("VDP")},
    {QStringLiteral("Video"), QStringLiteral("VID")},
    {QStringLiteral("DF"), QStringLiteral("DFP")},
    {QStringLiteral("DFPan"), QStringLiteral("DFP")},
    {QStringLiteral("DFScan"), QStringLiteral("DFP")},
    {QStringLiteral("DFFLScan"), QStringLiteral("DFP")},
    {QStringLiteral("SELCall"), QStringLiteral("SELC")},
    {QStringLiteral("GPSC"), QStringLiteral("GPSC")},
};
const QStringList kSpeeds = {
    QStringLiteral("sub-light speed"),
    QStringLiteral("light speed"),
    QStringLiteral("ridiculous speed"),
    QStringLiteral("Ludicrous speed"),
};
const frame::NameTable kHardwareStatusTable(kHardwareStatuss);
const frame::NameTable kCWTable = frame::NameTable::fromRows(kCWs, HALVANE_COLUMN(Administration::structADMCW, Name), HALVANE_COLUMN(Administration::structADMCW, Selflag), HALVANE_COLUMN(Administration::structADMCW, Guiname));
const frame::NameTable kDriverTypeTable = frame::NameTable::fromRows(kDriverTypes, HALVANE_COLUMN(Administration::structADMDriverType, Name))
    .withHelpids(kDriverTypes, &Administration::structADMDriverType::Helpid);
const frame::NameTable kDrvCommandsTable(kDrvCommandss);
const frame::NameTable kRDSStateTable(kRDSStates);
const frame::NameTable kClearGroupTable(kClearGroups);
const frame::NameTable kIFPanTable = frame::NameTable::fromRows(kIFPans, HALVANE_COLUMN(Administration::structADMIFPan, Name), HALVANE_COLUMN(Administration::structADMIFPan, Selflag), HALVANE_COLUMN(Administration::structADMIFPan, Guiname));
const frame::NameTable kDFTable = frame::NameTable::fromRows(kDFs, HALVANE_COLUMN(Administration::structADMDF, Name), HALVANE_COLUMN(Administration::structADMDF, Selflag), HALVANE_COLUMN(Administration::structADMDF, Guiname), HALVANE_COLUMN(Administration::structADMDF, Itemname));
const frame::NameTable kGeneralTable = frame::NameTable::fromRows(kGenerals, HALVANE_COLUMN(Administration::structADMGeneral, Name), HALVANE_COLUMN(Administration::structADMGeneral, Selflag), HALVANE_COLUMN(Administration::structADMGeneral, Guiname));
const frame::NameTable kMassDataStreamsTable = frame::NameTable::fromRows(kMassDataStreamss, HALVANE_COLUMN(Administration::structADMMassDataStreams, Name), HALVANE_COLUMN(Administration::structADMMassDataStreams, Tag));
const frame::NameTable kSpeedTable(kSpeeds);

using namespace frame;
constexpr FieldDef kFields[] = {
    enumField("HardwareStatus", 0x4A9D9E6D, Required, &kHardwareStatusTable),
    enumField("CW", 0x09424B7A, Required, &kCWTable),
    nestedField("SensorMetaData", 0x07DACADD, Required, &opsOf<SensorMetaData>),
    enumField("DriverType", 0x847224C8, Required, &kDriverTypeTable),
    enumField("DrvCommands", 0xC62F03F7, Required, &kDrvCommandsTable),
    enumField("RDSState", 0x84B421D9, Required, &kRDSStateTable),
    enumField("ClearGroup", 0x0C5A9CDD, Required, &kClearGroupTable),
    enumField("IFPan", 0x820A8C66, Required, &kIFPanTable),
    enumField("DF", 0x2ECD1629, Required, &kDFTable),
    enumField("General", 0x67D29DAB, Required, &kGeneralTable),
    enumField("MassDataStreams", 0x22950530, Required, &kMassDataStreamsTable),
    enumField("Speed", 0x6C209A63, Required, &kSpeedTable),
};

} // namespace

HALVANE_CLASS_DEFINITION(Administration, 0x68FCE849, kFields, nullptr, nullptr)

HALVANE_ENUM_ACCESSORS(Administration, HardwareStatus)
HALVANE_ENUM_NAMES_ACCESSORS(Administration, HardwareStatus)
HALVANE_ENUM_ACCESSORS(Administration, CW)
HALVANE_ENUM_ROWS_ACCESSORS(Administration, CW, structADMCW, kCWs)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, CW, Selflag, 1)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, CW, Guiname, 2)
HALVANE_NESTED_ACCESSORS(Administration, SensorMetaData, SensorMetaData)
HALVANE_ENUM_ACCESSORS(Administration, DriverType)
HALVANE_ENUM_ROWS_ACCESSORS(Administration, DriverType, structADMDriverType, kDriverTypes)
HALVANE_ENUM_HELPID_ACCESSORS(Administration, DriverType)
HALVANE_ENUM_ACCESSORS(Administration, DrvCommands)
HALVANE_ENUM_NAMES_ACCESSORS(Administration, DrvCommands)
HALVANE_ENUM_ACCESSORS(Administration, RDSState)
HALVANE_ENUM_NAMES_ACCESSORS(Administration, RDSState)
HALVANE_ENUM_ACCESSORS(Administration, ClearGroup)
HALVANE_ENUM_NAMES_ACCESSORS(Administration, ClearGroup)
HALVANE_ENUM_ACCESSORS(Administration, IFPan)
HALVANE_ENUM_ROWS_ACCESSORS(Administration, IFPan, structADMIFPan, kIFPans)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, IFPan, Selflag, 1)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, IFPan, Guiname, 2)
HALVANE_ENUM_ACCESSORS(Administration, DF)
HALVANE_ENUM_ROWS_ACCESSORS(Administration, DF, structADMDF, kDFs)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, DF, Selflag, 1)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, DF, Guiname, 2)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, DF, Itemname, 3)
HALVANE_ENUM_ACCESSORS(Administration, General)
HALVANE_ENUM_ROWS_ACCESSORS(Administration, General, structADMGeneral, kGenerals)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, General, Selflag, 1)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, General, Guiname, 2)
HALVANE_ENUM_ACCESSORS(Administration, MassDataStreams)
HALVANE_ENUM_ROWS_ACCESSORS(Administration, MassDataStreams, structADMMassDataStreams, kMassDataStreamss)
HALVANE_ENUM_COLUMN_ACCESSORS(Administration, MassDataStreams, Tag, 1)
HALVANE_ENUM_ACCESSORS(Administration, Speed)
HALVANE_ENUM_NAMES_ACCESSORS(Administration, Speed)

} // namespace HALVANE
