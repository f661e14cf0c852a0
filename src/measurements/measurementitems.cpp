// The measurement item table: one row per quantity the system can measure,
// shared by MeasurementList and MeasurementData.
#include "measurementitems_p.h"

namespace HALVANE {

namespace {

const QList<structMEAMeasurementItem> kRows = {
    {QStringLiteral("CW_Level"), QStringLiteral("VOLT:AC"), QStringLiteral("LEVEL"), QStringLiteral("CW_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_Offset"), QStringLiteral("FREQ:OFFS"), QStringLiteral("OFFSET"), QStringLiteral("CW_Offset"), QStringLiteral("Hz"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_Field Strength"), QStringLiteral("FSTR"), QStringLiteral("FSTRENGTH"), QStringLiteral("CW_Field Strength"), QStringLiteral("dBuVm"), QStringLiteral("false"), QStringLiteral("CW")},
    {QStringLiteral("CW_AM"), QStringLiteral("AM"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_AM"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_AM_POS"), QStringLiteral("AM:POS"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_AM_POS"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_AM_NEG"), QStringLiteral("AM:NEG"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_AM_NEG"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_FM"), QStringLiteral("FM"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_FM"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_FM_POS"), QStringLiteral("FM:POS"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_FM_POS"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_FM_NEG"), QStringLiteral("FM:NEG"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_FM_NEG"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_PM"), QStringLiteral("PM"), QStringLiteral("MEASUREMENT_MOD_METHOD"), QStringLiteral("CW_PM"), QStringLiteral("rad"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("CW_Bandwidth"), QStringLiteral("BAND"), QStringLiteral("BANDWIDTH"), QStringLiteral("CW_Bandwidth"), QStringLiteral("Hz"), QStringLiteral("true"), QStringLiteral("CW")},
    {QStringLiteral("RDS"), QStringLiteral("RDS"), QStringLiteral("RDS"), QStringLiteral("RDS"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("RDS")},
    {QStringLiteral("SelCal"), QStringLiteral("SELCAL"), QStringLiteral("SELCAL"), QStringLiteral("SelCal"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("SelCall")},
    {QStringLiteral("Audio"), QStringLiteral("Audio"), QStringLiteral("AUDIO"), QStringLiteral("Audio"), QStringLiteral("dB"), QStringLiteral("true"), QStringLiteral("Audio")},
    {QStringLiteral("IFPan_Level"), QStringLiteral("IFPan_Level"), QStringLiteral("IFPan;Level"), QStringLiteral("IFPan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("IFPan")},
    {QStringLiteral("IFData"), QStringLiteral("IFData"), QStringLiteral("IFData"), QStringLiteral("IFData"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("IF")},
    {QStringLiteral("FScan_Level"), QStringLiteral("VOLT:AC"), QStringLiteral("FScan_Level"), QStringLiteral("FScan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_Offset"), QStringLiteral("FREQ:OFFS"), QStringLiteral("FScan_Offset"), QStringLiteral("FScan_Offset"), QStringLiteral("Hz"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_Field Strength"), QStringLiteral("FSTR"), QStringLiteral("FScan_Field Strength"), QStringLiteral("FScan_Field Strength"), QStringLiteral("dBuVm"), QStringLiteral("false"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_AM"), QStringLiteral("AM"), QStringLiteral("FMScan_AM"), QStringLiteral("FScan_AM"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_AM_POS"), QStringLiteral("AM:POS"), QStringLiteral("FScan_AM_POS"), QStringLiteral("FScan_AM_POS"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_AM_NEG"), QStringLiteral("AM:NEG"), QStringLiteral("FScan_AM_NEG"), QStringLiteral("FScan_AM_NEG"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_FM"), QStringLiteral("FM"), QStringLiteral("FScan_FM"), QStringLiteral("FScan_FM"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_FM_POS"), QStringLiteral("FM:POS"), QStringLiteral("FScan_FM_POS"), QStringLiteral("FScan_FM_POS"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_FM_NEG"), QStringLiteral("FM:NEG"), QStringLiteral("FScan_FM_NEG"), QStringLiteral("FScan_FM_NEG"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_PM"), QStringLiteral("PM"), QStringLiteral("FScan_PM"), QStringLiteral("FScan_PM"), QStringLiteral("rad"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_Bandwidth"), QStringLiteral("BAND"), QStringLiteral("FScan_Bandwidth"), QStringLiteral("FScan_Bandwidth"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("FScan_Frequency"), QStringLiteral("FSCAN_FREQ"), QStringLiteral("FScan_Frequency"), QStringLiteral("FScan_Frequency"), QStringLiteral("Hz"), QStringLiteral("true"), QStringLiteral("FScan")},
    {QStringLiteral("MScan_Level"), QStringLiteral("VOLT:AC"), QStringLiteral("MScan_Level"), QStringLiteral("MScan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_Offset"), QStringLiteral("FREQ:OFFS"), QStringLiteral("MScan_Offset"), QStringLiteral("MScan_Offset"), QStringLiteral("Hz"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_Field Strength"), QStringLiteral("FSTR"), QStringLiteral("MScan_Field Strength"), QStringLiteral("MScan_Field Strength"), QStringLiteral("dBuVm"), QStringLiteral("false"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_AM"), QStringLiteral("AM"), QStringLiteral("MScan_AM"), QStringLiteral("MScan_AM"), QStringLiteral("%"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_AM_POS"), QStringLiteral("AM:POS"), QStringLiteral("MScan_AM_POS"), QStringLiteral("MScan_AM_POS"), QStringLiteral("%"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_AM_NEG"), QStringLiteral("AM:NEG"), QStringLiteral("MScan_AM_NEG"), QStringLiteral("MScan_AM_NEG"), QStringLiteral("%"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_FM"), QStringLiteral("FM"), QStringLiteral("MScan_FM"), QStringLiteral("MScan_FM"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_FM_POS"), QStringLiteral("FM:POS"), QStringLiteral("MScan_FM_POS"), QStringLiteral("MScan_FM_POS"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_FM_NEG"), QStringLiteral("FM:NEG"), QStringLiteral("MScan_FM_NEG"), QStringLiteral("MScan_FM_NEG"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_PM"), QStringLiteral("PM"), QStringLiteral("MScan_PM"), QStringLiteral("MScan_PM"), QStringLiteral("rad"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_Bandwidth"), QStringLiteral("BAND"), QStringLiteral("MScan_Bandwidth"), QStringLiteral("MScan_Bandwidth"), QStringLiteral("kHz"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("MScan_Frequency"), QStringLiteral("MSCAN_FREQ"), QStringLiteral("MScan_Frequency"), QStringLiteral("MScan_Frequency"), QStringLiteral("Hz"), QStringLiteral("true"), QStringLiteral("MScan")},
    {QStringLiteral("PScan_Level"), QStringLiteral("VOLT:AC"), QStringLiteral("PScan_Level"), QStringLiteral("PScan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("PScan")},
    {QStringLiteral("PIFPAN"), QStringLiteral("PIFPAN"), QStringLiteral("PIFPAN"), QStringLiteral("PIFPAN"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("PIFPAN")},
    {QStringLiteral("VDPan_Level"), QStringLiteral("VOLT:AC"), QStringLiteral("VDPan_Level"), QStringLiteral("VDPan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("VDPan")},
    {QStringLiteral("Video"), QStringLiteral("Video"), QStringLiteral("Video"), QStringLiteral("Video"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("Video")},
    {QStringLiteral("DF_Level"), QStringLiteral("DFLevel"), QStringLiteral("DF_Level"), QStringLiteral("DF Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("DF")},
    {QStringLiteral("DF_Azimuth"), QStringLiteral("AZIMuth"), QStringLiteral("DF_Azimuth"), QStringLiteral("DF Bearing"), QStringLiteral("deg"), QStringLiteral("true"), QStringLiteral("DF")},
    {QStringLiteral("DF_Quality"), QStringLiteral("DFQuality"), QStringLiteral("DF_Quality"), QStringLiteral("DF Quality"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("DF")},
    {QStringLiteral("DFScan_Level"), QStringLiteral("DFLevel"), QStringLiteral("DFScan_Level"), QStringLiteral("DFScan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("DFScan")},
    {QStringLiteral("DFScan_Azimuth"), QStringLiteral("AZIMuth"), QStringLiteral("DFScan_Azimuth"), QStringLiteral("DFScan_Bearing"), QStringLiteral("deg"), QStringLiteral("true"), QStringLiteral("DFScan")},
    {QStringLiteral("DFScan_Quality"), QStringLiteral("DFQuality"), QStringLiteral("DFScan_Quality"), QStringLiteral("DFScan_Quality"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("DFScan")},
    {QStringLiteral("DFScan_Field Strength"), QStringLiteral("DFFStrength"), QStringLiteral("DFScan_Field Strength"), QStringLiteral("DFScan_Field Strength"), QStringLiteral("dBuVm"), QStringLiteral("false"), QStringLiteral("DFScan")},
    {QStringLiteral("DFScan_Channel"), QStringLiteral("DFScan_Channel"), QStringLiteral("DFScan_Channel"), QStringLiteral("DFScan_Channel"), QStringLiteral("None"), QStringLiteral("false"), QStringLiteral("DFScan")},
    {QStringLiteral("DFScan_Frequency"), QStringLiteral("DFScan_Frequency"), QStringLiteral("DFScan_Frequency"), QStringLiteral("DFScan_Frequency"), QStringLiteral("Hz"), QStringLiteral("false"), QStringLiteral("DFScan")},
    {QStringLiteral("DFPan_Level"), QStringLiteral("DFLevel"), QStringLiteral("DFPan_Level"), QStringLiteral("DFPan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("DFPan")},
    {QStringLiteral("DFPan_Azimuth"), QStringLiteral("AZIMuth"), QStringLiteral("DFPan_Azimuth"), QStringLiteral("DFPan_Bearing"), QStringLiteral("deg"), QStringLiteral("true"), QStringLiteral("DFPan")},
    {QStringLiteral("DFPan_Quality"), QStringLiteral("DFQuality"), QStringLiteral("DFPan_Quality"), QStringLiteral("DFPan_Quality"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("DFPan")},
    {QStringLiteral("DFPan_Field Strength"), QStringLiteral("DFFStrength"), QStringLiteral("DFPan_Field Strength"), QStringLiteral("DFPan_Field Strength"), QStringLiteral("dBuVm"), QStringLiteral("false"), QStringLiteral("DFPan")},
    {QStringLiteral("DFPan_LevelCont"), QStringLiteral("DFPan_LevelCont"), QStringLiteral("DFPan_LevelCont"), QStringLiteral("DFPan_LevelCont"), QStringLiteral("None"), QStringLiteral("false"), QStringLiteral("DFPan")},
    {QStringLiteral("DFPan_Elevation"), QStringLiteral("DFPan_Elevation"), QStringLiteral("DFPan_Elevation"), QStringLiteral("DFPan_Elevation"), QStringLiteral("None"), QStringLiteral("false"), QStringLiteral("DFPan")},
    {QStringLiteral("DFPan_ChanStatus"), QStringLiteral("DFPan_ChanStatus"), QStringLiteral("DFPan_ChanStatus"), QStringLiteral("DFPan_ChanStatus"), QStringLiteral("None"), QStringLiteral("false"), QStringLiteral("DFPan")},
    {QStringLiteral("DFFLScan_Level"), QStringLiteral("DFLevel"), QStringLiteral("DFFLScan_Level"), QStringLiteral("DFFLScan_Level"), QStringLiteral("dBuV"), QStringLiteral("true"), QStringLiteral("DFFLScan")},
    {QStringLiteral("DFFLScan_Azimuth"), QStringLiteral("AZIMuth"), QStringLiteral("DFFLScan_Azimuth"), QStringLiteral("DFFLScan_Bearing"), QStringLiteral("deg"), QStringLiteral("true"), QStringLiteral("DFFLScan")},
    {QStringLiteral("DFFLScan_Quality"), QStringLiteral("DFQuality"), QStringLiteral("DFFLScan_Quality"), QStringLiteral("DFFLScan_Quality"), QStringLiteral("percent"), QStringLiteral("true"), QStringLiteral("DFFLScan")},
    {QStringLiteral("DFFLScan_Field Strength"), QStringLiteral("DFFStrength"), QStringLiteral("DFFLScan_Field Strength"), QStringLiteral("DFFLScan_Field Strength"), QStringLiteral("dBuVm"), QStringLiteral("false"), QStringLiteral("DFFLScan")},
    {QStringLiteral("DFFLScan_Channel"), QStringLiteral("DFFLScan_Channel"), QStringLiteral("DFFLScan_Channel"), QStringLiteral("DFFLScan_Channel"), QStringLiteral("None"), QStringLiteral("false"), QStringLiteral("DFFLScan")},
    {QStringLiteral("DFFLScan_Frequency"), QStringLiteral("DFFLScan_Frequency"), QStringLiteral("DFFLScan_Frequency"), QStringLiteral("DFFLScan_Frequency"), QStringLiteral("Hz"), QStringLiteral("false"), QStringLiteral("DFFLScan")},
    {QStringLiteral("GPS_Name"), QStringLiteral("GPS_Name"), QStringLiteral("GPS_Name"), QStringLiteral("GPS_Name"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("GPSC")},
    {QStringLiteral("Compass_Name"), QStringLiteral("Compass_Name"), QStringLiteral("Compass_Name"), QStringLiteral("Compass_Name"), QStringLiteral("None"), QStringLiteral("true"), QStringLiteral("GPSC")},
    {QStringLiteral("Compass_Offset"), QStringLiteral("Compass_Offset"), QStringLiteral("Compass_Offset"), QStringLiteral("Compass_Offset"), QStringLiteral("deg"), QStringLiteral("true"), QStringLiteral("GPSC")},
};

} // namespace

const QList<structMEAMeasurementItem> &measurementItemRows()
{
    return kRows;
}

const frame::NameTable kMeasurementItemTable = frame::NameTable::fromRows(
    kRows, HALVANE_COLUMN(structMEAMeasurementItem, Name), HALVANE_COLUMN(structMEAMeasurementItem, Selflag), HALVANE_COLUMN(structMEAMeasurementItem, Itemname),
    HALVANE_COLUMN(structMEAMeasurementItem, Guiname), HALVANE_COLUMN(structMEAMeasurementItem, Unit), HALVANE_COLUMN(structMEAMeasurementItem, Usedbyostrom),
    HALVANE_COLUMN(structMEAMeasurementItem, Mode));

} // namespace HALVANE
