// The baseline's capabilities document: seventeen plain structs, written and
// read by hand like the documents of baseline.h. With some hundred and thirty
// flags, each struct's fields are listed once here (element name, member,
// tag; F a flag, N a nested struct) and the lists are expanded into the
// members and into straight-line code: one writeTextElement, one stream
// operator and one case per field.
#ifndef HALVANE_BENCH_BASELINE_CAPABILITIES_H
#define HALVANE_BENCH_BASELINE_CAPABILITIES_H

#include <halvane/halvane.h>

#include <QtCore/QtGlobal>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

#define BASELINE_AUDIO_CAPABILITIES(F, N) \
    F(AudioFilterModes, audioFilterModes, 0x41777F17) \
    F(SynthesizerMode, synthesizerMode, 0x811DBEA2) \
    F(AudioStereoMode, audioStereoMode, 0x845716CE)

#define BASELINE_CONNECTOR_CAPABILITIES(F, N) \
    F(VUHF1Connector, vuhf1Connector, 0x687E8FCE) \
    F(VUHF2Connector, vuhf2Connector, 0x42D35C35) \
    F(VUHF3Connector, vuhf3Connector, 0xA190B763) \
    F(HF1Connector, hf1Connector, 0x837CB334) \
    F(HF2Connector, hf2Connector, 0x65562956) \
    F(HF3Connector, hf3Connector, 0x68C1A016)

#define BASELINE_STATUS_CAPABILITIES(F, N) \
    F(BuildInTest, buildInTest, 0x89EE9393) \
    F(OmniphaseCalibration, omniphaseCalibration, 0xA81BCA8F)

#define BASELINE_DFCABAPILITES(F, N) \
    F(DirectionFindingWideBand, directionFindingWideBand, 0xA88D652C) \
    F(InteralGPS, interalGPS, 0x0301F564) \
    F(LocationAndCompass, locationAndCompass, 0xA6445566) \
    F(DFAntenna, dfAntenna, 0x6193484E) \
    F(DFReference, dfReference, 0x4E40CC82) \
    F(DFBwDecoupleMode, dfBwDecoupleMode, 0x0DBE0089) \
    F(DFMSearch, dfmSearch, 0x493B3876) \
    F(DFEnabled, dfEnabled, 0xAFA4C763) \
    F(MemContDf, memContDf, 0xE75138D3) \
    F(DFScan, dfScan, 0xABD6E73C) \
    F(InvertedDFAntenna, invertedDFAntenna, 0x664EAD17)

#define BASELINE_HARDWARE_OPTIONS(F, N) \
    F(PanoramaScan, panoramaScan, 0xCA9E431D) \
    F(ITUMeasurement, ituMeasurement, 0xEB8949F7) \
    F(SelCall, selCall, 0x2B05ABA8) \
    F(DirectionFinding, directionFinding, 0xAB344772) \
    F(DFErrorCorrection, dfErrorCorrection, 0x42084F71) \
    F(DigitalDownConverter, digitalDownConverter, 0x0ED03AEE) \
    F(Wideband80Mhz, wideband80Mhz, 0x4458FC22) \
    F(HF, hf, 0x40D120C0) \
    F(SHF, shf, 0xC8CEFBA7) \
    F(SpectrumUnit, spectrumUnit, 0x8FFB345D) \
    F(GPS, gps, 0xEFFAA588) \
    F(RemoteControl, remoteControl, 0x6A850CD3) \
    F(InternalRecording, internalRecording, 0x895DEF59) \
    F(RecordingReplay, recordingReplay, 0xE0B4CA67) \
    F(AnalogScan, analogScan, 0xCCFED2FF) \
    F(Tuner0, tuner0, 0x4CDD8606) \
    F(Tuner1, tuner1, 0xA2597A8E) \
    F(Tuner2, tuner2, 0x07C8A0C8) \
    F(Tuner3, tuner3, 0x881F5A38) \
    F(Tuner0FrequencyExtension, tuner0FrequencyExtension, 0x2458CE7C) \
    F(DigitalScan, digitalScan, 0x0994E5BE) \
    F(BatteryPack, batteryPack, 0x25DCC80E) \
    F(ExpansionRAM, expansionRAM, 0x44C57493) \
    F(CoverageMeasurement, coverageMeasurement, 0x2F5BDF54) \
    F(FieldStrengthMeasurement, fieldStrengthMeasurement, 0xC8858CE7) \
    F(VeltraInterface, veltraInterface, 0x66716251) \
    F(IGT, igt, 0x8E43F9A9) \
    F(WidebandDF, widebandDF, 0x052312BF) \
    F(ExternalTriggeredMeasurement, externalTriggeredMeasurement, 0xEFA436EF) \
    F(SCUP, scup, 0xE90E5E10) \
    F(FieldExtension, fieldExtension, 0x0529B068) \
    F(FrequencyProcessingSHF, frequencyProcessingSHF, 0x2673F806) \
    F(MapDisplay, mapDisplay, 0x0C5D619A) \
    F(SerialInterface, serialInterface, 0x065813C0) \
    F(DetectorShortTimeSignal, detectorShortTimeSignal, 0xCA626CE9) \
    F(ZeroSpan, zeroSpan, 0x2B381EC9) \
    F(Option1, option1, 0xE019E64C) \
    F(Option2, option2, 0x89DAA2E0) \
    F(Option3, option3, 0x61601A2A) \
    F(SEHF, sehf, 0x6D5812C4) \
    F(IGT2, igt2, 0x60D641D1) \
    F(DCPowerSupply, dcPowerSupply, 0xCED2B975) \
    F(DDCSignalExtraction, ddcSignalExtraction, 0x4CACED80) \
    F(F1, f1, 0xC6C821AA) \
    F(HighResolutionPanorama, highResolutionPanorama, 0x6DECB1CD) \
    F(WidebandIF, widebandIF, 0xC1C7F73E) \
    F(Polychrome, polychrome, 0xAAB21D1E)

#define BASELINE_NETWORK_CAPABILITIES(F, N) \
    F(NTP, ntp, 0x4C6AA290) \
    F(StartOfReceiverClock, startOfReceiverClock, 0x4EAF4036) \
    F(ReceiverPing, receiverPing, 0x4833E0F9) \
    F(Locking, locking, 0x6960CACB)

#define BASELINE_MAIN_TOOLBAR_CAPABILITES(F, N) \
    F(EditMode, editMode, 0x85011969) \
    F(FFM, ffm, 0xE1F6ADCF) \
    F(WFFM, wffm, 0xE2041531) \
    F(FScan, fScan, 0x607BAF72) \
    F(FSearch, fSearch, 0xC1D123C5) \
    F(MScan, mScan, 0x065CFAF3) \
    F(MSearch, mSearch, 0x24A3A4D4) \
    F(PScan, pScan, 0x2A9EBCBD) \
    F(DFPan, dfPan, 0x004A5545) \
    F(DFScan, dfScan, 0xABD6E73C) \
    F(DFMScan, dfmScan, 0x8D87C76E) \
    F(Dual, dual, 0x84FF2787)

#define BASELINE_TOOLS_TOOLBAR_CAPABILITIES(F, N) \
    F(Logging, logging, 0x6874F4DB) \
    F(Suppress, suppress, 0xE297E49B) \
    F(ToReport, toReport, 0xC2882646) \
    F(Save, save, 0x23432568)

#define BASELINE_PIFPAN_TOOLBAR_CAPABILITIES(F, N) \
    F(PIFMode, pifMode, 0x815486ED)

#define BASELINE_FREQUENCY_STORE_CAPABILITES(F, N) \
    F(GlobalSuppress, globalSuppress, 0xADACC46B) \
    F(LocalSuppress, localSuppress, 0x4C3B1604) \
    F(Clipboard, clipboard, 0x8AFAC1A6) \
    F(Merge, merge, 0x6A58A824) \
    F(ImportFromDevice, importFromDevice, 0x83F73828) \
    F(ExportToDevice, exportToDevice, 0xAEF6F8AE) \
    F(FileImport, fileImport, 0xCD9076C6) \
    F(FileExport, fileExport, 0x8DE61BB4)

#define BASELINE_FILE_MENU_CAPABILITES(F, N) \
    F(ImportDeviceSettings, importDeviceSettings, 0xC8BADC48) \
    F(ExportDeviceSettings, exportDeviceSettings, 0x01E9EB25) \
    F(Cancel, cancel, 0x80E406BF) \
    F(ExitWithOstrom, exitWithOstrom, 0x423C814A)

#define BASELINE_FFMINPUT_TOOLBAR_CAPABILITIES(F, N) \
    F(MeasMode, measMode, 0x4A191839) \
    F(MeasurementTime, measurementTime, 0xE4A058F4) \
    F(PeakDetector, peakDetector, 0x0B2EF587) \
    F(ThresholdValue, thresholdValue, 0xCF67D889) \
    F(LevelBar, levelBar, 0xAC4FF91B) \
    F(BigLevelDisplay, bigLevelDisplay, 0x63153E6A) \
    F(AttenuationSettings, attenuationSettings, 0x086D814F) \
    F(AFC, afc, 0x2A13E57C)

#define BASELINE_CSVRECORD_CAPABILITIES(F, N) \
    F(DeviceRecording, deviceRecording, 0xCBBFC470) \
    F(SoftwareRecording, softwareRecording, 0x86F9F4E3)

#define BASELINE_MASTER_RECORDING_CAPABILITIES(F, N) \
    F(IQRecording, iqRecording, 0x827BEB36) \
    F(ScanRecording, scanRecording, 0x4CEC020C) \
    F(RDS, rds, 0xADE35889) \
    F(SelCal, selCal, 0x60C552A8) \
    F(DigitalVideo, digitalVideo, 0x086F333C) \
    F(Audio, audio, 0x24ACB8E3) \
    F(SelectedMeasurements, selectedMeasurements, 0x84F7854D) \
    F(IFPan, ifPan, 0x262E0984) \
    F(PIFPan, pifPan, 0x0AC97B74) \
    F(VDPan, vdPan, 0xC43C3CDC) \
    F(TV, tv, 0xECE85CDA) \
    F(AllAudioAvailable, allAudioAvailable, 0x0005D222) \
    F(SDCardAvailable, sdCardAvailable, 0x8174E478) \
    F(SorrelAvailable, sorrelAvailable, 0x024FAFA0) \
    F(VSPAvailable, vspAvailable, 0x801B0DC1) \
    N(CSVRecordCapabilities, csvRecordCapabilities, 0x629D7419) \
    F(JumboFrameCapability, jumboFrameCapability, 0xCE132117)

#define BASELINE_DATE_TIME_CAPABILITY(F, N) \
    F(UserInputSupport, userInputSupport, 0xCCD68951) \
    F(ReceiverClockOriginSupport, receiverClockOriginSupport, 0xCEDA5030) \
    F(ClockLastSetSupport, clockLastSetSupport, 0xE7B8EBEA) \
    F(TimeZoneSupport, timeZoneSupport, 0x0EB09C01) \
    F(GPSSetTimeSupport, gpsSetTimeSupport, 0x4860CD4A) \
    F(NTSSetTimeSupport, ntsSetTimeSupport, 0xAFED4F46) \
    F(GPSTimeOffsetSupport, gpsTimeOffsetSupport, 0xCB98B48D) \
    F(ClockStartSupport, clockStartSupport, 0x2768E58C)

#define BASELINE_CAPABILITIES(F, N) \
    N(AudioCapabilities, audioCapabilities, 0x0DE1652A) \
    N(ConnectorCapabilities, connectorCapabilities, 0xE8BE4C47) \
    N(StatusCapabilities, statusCapabilities, 0xC25B40C0) \
    N(DFCabapilites, dfCabapilites, 0x6165AF27) \
    N(HardwareOptions, hardwareOptions, 0x2701361B) \
    N(NetworkCapabilities, networkCapabilities, 0x02BFCF41) \
    F(RadioDataSystem, radioDataSystem, 0xAA2B6991) \
    F(WideIFSpectrum, wideIFSpectrum, 0x0A03E9CE) \
    F(HFTunerLimit, hfTunerLimit, 0xAB390EA2) \
    F(IQRecording, iqRecording, 0x827BEB36) \
    F(VideoSpectrum, videoSpectrum, 0xAC49BF40) \
    N(MainToolbarCapabilites, mainToolbarCapabilites, 0x4214CF89) \
    N(ToolsToolbarCapabilities, toolsToolbarCapabilities, 0x48306C10) \
    N(PIFPanToolbarCapabilities, pifPanToolbarCapabilities, 0x413DBDF9) \
    N(FrequencyStoreCapabilites, frequencyStoreCapabilites, 0x8F36B73C) \
    N(FileMenuCapabilites, fileMenuCapabilites, 0xC6B8CAD7) \
    N(FFMInputToolbarCapabilities, ffmInputToolbarCapabilities, 0xCC71A4E4) \
    F(MapViewEnabled, mapViewEnabled, 0x28D0F404) \
    F(IFStep, ifStep, 0x01E2AEC5) \
    F(IFStepUpdate, ifStepUpdate, 0x49472543) \
    F(IFStepAuto, ifStepAuto, 0x8ECA53B1) \
    F(MagneticDeclinationOnly, magneticDeclinationOnly, 0x46E2A2B4) \
    F(RecordingEnabled, recordingEnabled, 0xA7C11DA9) \
    F(DemodulationFrequency, demodulationFrequency, 0x2B02315C) \
    N(MasterRecordingCapabilities, masterRecordingCapabilities, 0x21EC4AFB) \
    F(PulseAnalysisCapa, pulseAnalysisCapa, 0xC726EA1C) \
    N(ISBBandwidthSettings, isbBandwidthSettings, 0xC46247B5) \
    F(CompassCalibrationEnabled, compassCalibrationEnabled, 0x045E6970) \
    F(ICMConnected, icmConnected, 0x6971AF4A) \
    F(DownConverterCapability, downConverterCapability, 0x0546050D) \
    N(DateTimeCapability, dateTimeCapability, 0x836E2144) \
    F(SystemAntennaConnectedCommand, systemAntennaConnectedCommand, 0xCBD5C49C)

namespace baseline {

#define BASELINE_FLAG_MEMBER(element, member, tag) bool member = false;
#define BASELINE_NESTED_MEMBER(element, member, tag) element member;
#define BASELINE_FLAG_STRUCT(name, LIST)                                                                              \
    struct name {                                                                                                      \
        LIST(BASELINE_FLAG_MEMBER, BASELINE_NESTED_MEMBER)                                                             \
    };

BASELINE_FLAG_STRUCT(AudioCapabilities, BASELINE_AUDIO_CAPABILITIES)
BASELINE_FLAG_STRUCT(ConnectorCapabilities, BASELINE_CONNECTOR_CAPABILITIES)
BASELINE_FLAG_STRUCT(StatusCapabilities, BASELINE_STATUS_CAPABILITIES)
BASELINE_FLAG_STRUCT(DFCabapilites, BASELINE_DFCABAPILITES)
BASELINE_FLAG_STRUCT(HardwareOptions, BASELINE_HARDWARE_OPTIONS)
BASELINE_FLAG_STRUCT(NetworkCapabilities, BASELINE_NETWORK_CAPABILITIES)
BASELINE_FLAG_STRUCT(MainToolbarCapabilites, BASELINE_MAIN_TOOLBAR_CAPABILITES)
BASELINE_FLAG_STRUCT(ToolsToolbarCapabilities, BASELINE_TOOLS_TOOLBAR_CAPABILITIES)
BASELINE_FLAG_STRUCT(PIFPanToolbarCapabilities, BASELINE_PIFPAN_TOOLBAR_CAPABILITIES)
BASELINE_FLAG_STRUCT(FrequencyStoreCapabilites, BASELINE_FREQUENCY_STORE_CAPABILITES)
BASELINE_FLAG_STRUCT(FileMenuCapabilites, BASELINE_FILE_MENU_CAPABILITES)
BASELINE_FLAG_STRUCT(FFMInputToolbarCapabilities, BASELINE_FFMINPUT_TOOLBAR_CAPABILITIES)
BASELINE_FLAG_STRUCT(CSVRecordCapabilities, BASELINE_CSVRECORD_CAPABILITIES)
BASELINE_FLAG_STRUCT(MasterRecordingCapabilities, BASELINE_MASTER_RECORDING_CAPABILITIES)
BASELINE_FLAG_STRUCT(DateTimeCapability, BASELINE_DATE_TIME_CAPABILITY)

struct ISBBandwidthSettings {
    double minBandwidth = 0;
    double maxBandwidth = 0;
};

BASELINE_FLAG_STRUCT(Capabilities, BASELINE_CAPABILITIES)

#undef BASELINE_FLAG_STRUCT
#undef BASELINE_NESTED_MEMBER
#undef BASELINE_FLAG_MEMBER

// Every field is written: the document is fully populated.
void writeXml(QXmlStreamWriter &w, const Capabilities &c);
// With the reader on the document's start element.
void readXml(QXmlStreamReader &r, Capabilities &c);
void writeTagged(QDataStream &s, const Capabilities &c);
// With the object length already read.
void readTagged(QDataStream &s, qint32 length, Capabilities &c);
void writeRaw(QDataStream &s, const Capabilities &c);
void readRaw(QDataStream &s, Capabilities &c);

bool operator==(const Capabilities &a, const Capabilities &b);

} // namespace baseline

namespace documents {

// The benchmark's Capabilities document, every member set, flags true and
// false in turn, as a library object and as the baseline's struct.
HALVANE::Capabilities capabilities();
baseline::Capabilities plainCapabilities();

} // namespace documents

#endif
