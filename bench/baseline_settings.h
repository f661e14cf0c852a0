// The baseline's receiver settings document: eighteen plain structs, written
// and read by hand like the documents of baseline.h. Each struct's fields are
// listed once here (type, element name, member, tag; V a value, E an index
// into a name table, N a nested struct, L a list) and the lists are expanded
// into the members and into straight-line code: one writeTextElement, one
// stream operator and one case per field. ModulationSettings, with its
// attribute and its own record order, is written out by hand.
#ifndef HALVANE_BENCH_BASELINE_SETTINGS_H
#define HALVANE_BENCH_BASELINE_SETTINGS_H

#include <halvane/halvane.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QVector>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

#define BASELINE_RECORDER_SETTINGS(V, E, N, L) \
    E(RecordSource, recordSource, 0x81013EA6, recordSources) \
    E(RecordSourceSuperset, recordSourceSuperset, 0x41A76BDA, recordSourceSupersets) \
    E(RecordStorage, recordStorage, 0x8BFD6CB2, recordStorages) \
    E(RecordMode, recordMode, 0xC9BFEA5A, recordModes) \
    E(RecordMemSize, recordMemSize, 0x67E8192F, recordMemSizes) \
    E(RecordMemMode, recordMemMode, 0x48356A6B, recordMemModes) \
    V(bool, RecordState, recordState, 0x20BA99EC) \
    E(IQRecordState, iqRecordState, 0x47089243, iqRecordStates)

#define BASELINE_FFM_SETTINGS_DETAIL(V, E, N, L) \
    V(double, BFOFrequency, bfoFrequency, 0x6AA21622) \
    E(GainControlMode, gainControlMode, 0xACEE93FD, gainControlModes) \
    V(int, GainControlValue, gainControlValue, 0x88FAF374) \
    E(GainControlTime, gainControlTime, 0x4CA3971C, gainControlTimes) \
    E(Attenuation, attenuation, 0xEFD74C59, attenuations) \
    V(double, AttenuationValue, attenuationValue, 0x04605972) \
    V(double, AttenuationTime, attenuationTime, 0x0C5DDFF3) \
    E(AFCValue, afcValue, 0x69FAD61D, offOn) \
    E(SquelchState, squelchState, 0x25F773FF, offOn) \
    V(int, SquelchValue, squelchValue, 0x4EA5D1AD) \
    E(Preselection, preselection, 0x2DDD8D71, preselections) \
    E(LevelDetector, levelDetector, 0xA177A5A1, levelDetectors) \
    V(double, MeasurementTime, measurementTime, 0x4B9E29D8) \
    E(MeasurementMode, measurementMode, 0x07F21ECA, measurementModes) \
    V(bool, AutomaticMeasMode, automaticMeasMode, 0xCB966010) \
    V(double, IFPanSpan, ifPanSpan, 0x6B3F7D97) \
    E(IFPanType, ifPanType, 0x0FC1BCD5, ifPanTypes) \
    V(double, IFStep, ifStep, 0xE384AEC3) \
    E(IFStepAuto, ifStepAuto, 0xA678348A, offOn)

#define BASELINE_FFM_SETTINGS(V, E, N, L) \
    V(double, Frequency, frequency, 0x2CEE52B1) \
    E(AnalogDemod, analogDemod, 0xA40F4BEA, analogDemods) \
    V(double, IFBandwidth, ifBandwidth, 0x2D7A8C7B) \
    E(BandwidthMode, bandwidthMode, 0x2E267665, bandwidthModes) \
    N(FFMSettingsDetail, FFMSettingsDetail, ffmSettingsDetail, 0xAEEA411B)

#define BASELINE_AUDIO_SETTINGS(V, E, N, L) \
    E(AudioMode, audioMode, 0x8151C647, audioModes) \
    E(AudioFilter, audioFilter, 0xAB3F264A, audioFilters)

#define BASELINE_BANDWIDTH_SETTINGS(V, E, N, L) \
    E(BandwidthMethod, bandwidthMethod, 0x258E1FC8, bandwidthMethods) \
    V(float, XDBValue, xdbValue, 0x8C3A0BDB) \
    V(float, BetaValue, betaValue, 0x27CBB815) \
    V(double, MeasLower, measLower, 0xC74591C8) \
    V(double, MeasUpper, measUpper, 0x80AB5BA4)

#define BASELINE_SENSOR_SETTINGS(V, E, N, L) \
    V(double, Level, level, 0xCE3014F1) \
    V(double, Offset, offset, 0xEF2B095D) \
    V(double, Fieldstrength, fieldstrength, 0xCC026DF8) \
    N(BandwidthSettings, BandwidthSettings, bandwidthSettings, 0x03157D3C) \
    L(QVector<ModulationSettings>, ModulationSettings, modulationSettings, 0x40D37788)

#define BASELINE_VIDEO_SETTINGS(V, E, N, L) \
    E(VDMode, vdMode, 0xC507BCA8, vdModes) \
    V(double, VDPanSpan, vdPanSpan, 0x4AB37C29) \
    E(VDDataFormat, vdDataFormat, 0xCD46BE24, vdDataFormats) \
    V(QString, VDDemodulation, vdDemodulation, 0x4ADB9AF5) \
    V(QString, VDSideband, vdSideband, 0xCB9F9056) \
    V(QString, VDScale, vdScale, 0xC779FFB4)

#define BASELINE_SCAN_SETTINGS(V, E, N, L) \
    V(double, SearchScanDwellTime, searchScanDwellTime, 0x6B6C34F2) \
    V(double, SearchHoldTime, searchHoldTime, 0xCECDE514) \
    E(SearchMode, searchMode, 0x6C0C4E72, scanModes) \
    V(double, MScanDwellTime, mScanDwellTime, 0x62D27B13) \
    V(double, MScanHoldTime, mScanHoldTime, 0xC4B54DF9) \
    E(MScanMode, mScanMode, 0x6074D1F0, scanModes) \
    V(bool, MScanSquelchMode, mScanSquelchMode, 0x826F40A4) \
    V(double, StartFrequency, startFrequency, 0xC83EDC48) \
    V(double, StopFrequency, stopFrequency, 0xC043211E) \
    V(double, StepFrequency, stepFrequency, 0x229FF27D)

#define BASELINE_DV_SETTINGS(V, E, N, L) \
    V(QString, DVMode, dvMode, 0x02E1784F) \
    V(QDateTime, DVTime, dvTime, 0xA2AB7BF5) \
    V(QString, DVTrace, dvTrace, 0x891C6CCE) \
    V(QString, DVTrigger, dvTrigger, 0x06D9D929) \
    V(QString, DVTriggerTrace, dvTriggerTrace, 0x8A2ABB78)

#define BASELINE_IQ_SETTINGS(V, E, N, L) \
    V(QDateTime, IQTime, iqTime, 0x87D426C8) \
    V(QString, IQMode, iqMode, 0x85B29230)

#define BASELINE_BEARING_CORRECTION_SETTINGS(V, E, N, L) \
    V(int, Identifier, identifier, 0xA5B6E66A) \
    V(double, FromHeight, fromHeight, 0x628DCB14) \
    V(double, ToHeight, toHeight, 0xA6A476D4)

#define BASELINE_DOWNCONVERTER(V, E, N, L) \
    V(double, StartFrequency, startFrequency, 0xC83EDC48) \
    V(double, StopFrequency, stopFrequency, 0xC043211E) \
    V(double, OscFrequency, oscFrequency, 0x4C81FF8E)

#define BASELINE_ANTENNA_SETTINGS(V, E, N, L) \
    V(QString, Antenna, antenna, 0xE015130A) \
    E(Polarisation, polarisation, 0x61E7919F, polarisations) \
    E(Mode, mode, 0x8DC1F911, antennaModes) \
    N(Downconverter, Downconverter, downconverter, 0x6F2C8251) \
    V(QString, DFReference, dfReference, 0x6DBCCB69)

#define BASELINE_DF_SETTINGS(V, E, N, L) \
    L(QVector<QString>, SignalPath, signalPath, 0x6B1E5AB2) \
    V(QString, CurrentSignalPath, currentSignalPath, 0x4B768A4F) \
    V(double, DFBandwidth, dfBandwidth, 0x4BEDDD5A) \
    V(double, DFMeasurementTime, dfMeasurementTime, 0xCD1B5736) \
    E(DFMode, dfMode, 0x218BD08F, dfModes) \
    V(double, DFStep, dfStep, 0xCA4DC094) \
    V(double, FreqSpan, freqSpan, 0x07ACBD4A)

#define BASELINE_COMPASS(V, E, N, L) \
    V(QString, Name, name, 0x8C9FBCA8) \
    V(double, Offset, offset, 0xEF2B095D) \
    V(QString, Type, type, 0x0846C2A1) \
    E(CompassSource, compassSource, 0x8A913480, sources)

#define BASELINE_GPSC_SETTINGS(V, E, N, L) \
    V(QString, GPSName, gpsName, 0xEFA5A454) \
    N(Compass, Compass, compass, 0x44698FBA) \
    V(bool, GPSCEnable, gpscEnable, 0x8DBFF1EC) \
    E(GPSSource, gpsSource, 0x43350649, sources)

#define BASELINE_RECEIVER_SETTINGS(V, E, N, L) \
    N(RecorderSettings, RecorderSettings, recorderSettings, 0x0B957B0B) \
    N(FFMSettings, FFMSettings, ffmSettings, 0x06493F83) \
    N(AudioSettings, AudioSettings, audioSettings, 0xA0ED1886) \
    N(SensorSettings, SensorSettings, sensorSettings, 0x0480BAF4) \
    N(VideoSettings, VideoSettings, videoSettings, 0x4F723535) \
    N(ScanSettings, ScanSettings, scanSettings, 0xA025F55F) \
    N(DVSettings, DVSettings, dvSettings, 0x41C085EE) \
    N(IQSettings, IQSettings, iqSettings, 0x47A69E22) \
    N(BearingCorrectionSettings, BearingCorrectionSettings, bearingCorrectionSettings, 0x4B21C354) \
    N(AntennaSettings, AntennaSettings, antennaSettings, 0xCE1C1070) \
    N(DFSettings, DFSettings, dfSettings, 0xE871907E) \
    N(GPSCSettings, GPSCSettings, gpscSettings, 0x02E8AE24)

namespace baseline {

#define BASELINE_VALUE_MEMBER(type, element, member, tag) type member{};
#define BASELINE_ENUM_MEMBER(element, member, tag, table) qint8 member = -1;
#define BASELINE_SETTINGS_STRUCT(name, LIST)                                                                          \
    struct name {                                                                                                      \
        LIST(BASELINE_VALUE_MEMBER, BASELINE_ENUM_MEMBER, BASELINE_VALUE_MEMBER, BASELINE_VALUE_MEMBER)                \
    };

// One modulation entry: in XML its prefix is an attribute, in the tagged form
// the first record, in the raw form the last value.
struct ModulationSettings {
    qint8 modulationMethod = -1;
    double modulationValue = 0;
    QString prefix;
};

BASELINE_SETTINGS_STRUCT(RecorderSettings, BASELINE_RECORDER_SETTINGS)
BASELINE_SETTINGS_STRUCT(FFMSettingsDetail, BASELINE_FFM_SETTINGS_DETAIL)
BASELINE_SETTINGS_STRUCT(FFMSettings, BASELINE_FFM_SETTINGS)
BASELINE_SETTINGS_STRUCT(AudioSettings, BASELINE_AUDIO_SETTINGS)
BASELINE_SETTINGS_STRUCT(BandwidthSettings, BASELINE_BANDWIDTH_SETTINGS)
BASELINE_SETTINGS_STRUCT(SensorSettings, BASELINE_SENSOR_SETTINGS)
BASELINE_SETTINGS_STRUCT(VideoSettings, BASELINE_VIDEO_SETTINGS)
BASELINE_SETTINGS_STRUCT(ScanSettings, BASELINE_SCAN_SETTINGS)
BASELINE_SETTINGS_STRUCT(DVSettings, BASELINE_DV_SETTINGS)
BASELINE_SETTINGS_STRUCT(IQSettings, BASELINE_IQ_SETTINGS)
BASELINE_SETTINGS_STRUCT(BearingCorrectionSettings, BASELINE_BEARING_CORRECTION_SETTINGS)
BASELINE_SETTINGS_STRUCT(Downconverter, BASELINE_DOWNCONVERTER)
BASELINE_SETTINGS_STRUCT(AntennaSettings, BASELINE_ANTENNA_SETTINGS)
BASELINE_SETTINGS_STRUCT(DFSettings, BASELINE_DF_SETTINGS)
BASELINE_SETTINGS_STRUCT(Compass, BASELINE_COMPASS)
BASELINE_SETTINGS_STRUCT(GPSCSettings, BASELINE_GPSC_SETTINGS)
BASELINE_SETTINGS_STRUCT(ReceiverSettings, BASELINE_RECEIVER_SETTINGS)

#undef BASELINE_SETTINGS_STRUCT
#undef BASELINE_ENUM_MEMBER
#undef BASELINE_VALUE_MEMBER

// Every field is written: the document is fully populated.
void writeXml(QXmlStreamWriter &w, const ReceiverSettings &s);
// With the reader on the document's start element.
void readXml(QXmlStreamReader &r, ReceiverSettings &s);
void writeTagged(QDataStream &s, const ReceiverSettings &r);
// With the object length already read.
void readTagged(QDataStream &s, qint32 length, ReceiverSettings &r);
void writeRaw(QDataStream &s, const ReceiverSettings &r);
void readRaw(QDataStream &s, ReceiverSettings &r);

bool operator==(const ReceiverSettings &a, const ReceiverSettings &b);

} // namespace baseline

namespace documents {

// The benchmark's ReceiverSettings document: all twelve settings objects and
// every field below them set, four modulation entries and four signal paths;
// as a library object and as the baseline's struct, from the same values.
HALVANE::ReceiverSettings receiverSettings();
baseline::ReceiverSettings plainReceiverSettings();

} // namespace documents

#endif
