// Hand-written XML and QDataStream code for the receiver settings document:
// one writeTextElement and one stream operator per field, a chain of name
// tests and a switch over tags for reading, names of enumerated values looked
// up in hashes, lengths patched by seeking back. Overloads on the member's
// type pick the conversion, so the field lists expand into plain calls.
#include "baseline_settings.h"
#include "baseline_io.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace baseline {

namespace {

// ---- Name tables

#define NAMES(function, ...)                                                                                           \
    const Names &function()                                                                                            \
    {                                                                                                                  \
        static const Names n{__VA_ARGS__};                                                                             \
        return n;                                                                                                      \
    }

NAMES(recordSources, "IQ", "Audio", "VSP", "Traces", "Wide IQ", "CSV")
NAMES(recordSourceSupersets, "Level", "Offset", "Fieldstrength", "AM", "AM Pos", "AM Neg", "FM", "FM Pos", "FM Neg",
      "PM", "Bandwidth", "RDS", "IFPan", "Audio", "IQ", "Video", "VDPan", "TV", "SELCall")
NAMES(recordStorages, "Memory", "File (SD-Card)", "File (PC)", "Ostrom", "Device")
NAMES(recordModes, "Stop", "Record", "Pause", "Replay", "Delete")
NAMES(recordMemSizes, "8MB", "16MB", "32MB", "64MB")
NAMES(recordMemModes, "Cyclic", "Once")
NAMES(iqRecordStates, "ON", "OFF")
NAMES(gainControlModes, "AGC", "MGC")
NAMES(gainControlTimes, "Default", "Fast", "Slow")
NAMES(attenuations, "MANUAL", "AUTO", "NORMAL", "LOW NOISE", "LOW DESTORT")
NAMES(offOn, "OFF", "ON")
NAMES(preselections, "LOW NOISE", "NORMAL", "LOW DISTORT")
NAMES(levelDetectors, "AVG", "PEAK", "FAST", "RMS")
NAMES(measurementModes, "CONT", "PERIOD")
NAMES(ifPanTypes, "Average", "Clear Write", "Max Hold", "Min Hold")
NAMES(analogDemods, "AM", "FM", "CW", "PULSE", "LSB", "USB", "ISB", "TV", "PM", "IQ", "LOG", "A1", "A1A", "A3E", "B7B",
      "B8E", "F1B", "F1C", "F3C", "F3E", "F7B", "J3E", "J7B", "FSK", "AFSK", "FAX1", "FAX2", "WBP", "UNKNOWN")
NAMES(bandwidthModes, "Manual", "Coupled")
NAMES(audioModes, "None", "32 kHz / 16 bits / 2 channels", "32 kHz / 16 bits / 1 channel",
      "32 kHz / 8 bits / 2 channels", "32 kHz / 8 bits / 1 channel", "16 kHz / 16 bits / 2 channels",
      "16 kHz / 16 bits / 1 channel", "16 kHz / 8 bits / 2 channels", "16 kHz / 8 bits / 1 channel",
      "8 kHz / 16 bits / 2 channels", "8 kHz / 16 bits / 1 channel", "8 kHz /  8 bits / 2 channels",
      "8 kHz /  8 bits / 1 channel")
NAMES(audioFilters, "OFF", "NOTCH", "NR", "BP", "DEHigh", "DEEurope", "DEUsa", "DEPmr")
NAMES(bandwidthMethods, "OFF", "XDB", "BETA")
NAMES(modulationMethods, "AM", "AM Pos", "AM Neg", "FM", "FM Pos", "FM Neg", "PM")
NAMES(vdModes, "AM", "FM", "AMSQ", "FMSQ", "IQ", "IQSQ")
NAMES(vdDataFormats, "OFF", "SHORT", "LONG")
NAMES(scanModes, "IDLE", "CONT", "HOLD", "LEAVE", "RESTART", "RUN", "STOP", "SUPP")
NAMES(polarisations, "Vertical", "Horizontal", "Left", "Right")
NAMES(antennaModes, "active", "passive")
NAMES(dfModes, "Cont", "Norm", "Gate")
NAMES(sources, "NONE", "AUX1", "AUX2", "SCPI", "X1", "X2")

#undef NAMES

// ---- Value texts

// ---- QDataStream helpers

// ---- Values by type. XML: put writes an element, take reads one. Tagged:
// record writes a record, get reads its value. Raw: rawOut, rawIn.

void put(QXmlStreamWriter &w, const QString &element, const QString &v) { w.writeTextElement(element, v); }
void put(QXmlStreamWriter &w, const QString &element, double v) { w.writeTextElement(element, number(v)); }
void put(QXmlStreamWriter &w, const QString &element, float v) { w.writeTextElement(element, number(double(v))); }
void put(QXmlStreamWriter &w, const QString &element, int v) { w.writeTextElement(element, QString::number(v)); }
void put(QXmlStreamWriter &w, const QString &element, bool v)
{
    w.writeTextElement(element, v ? QStringLiteral("true") : QStringLiteral("false"));
}
void put(QXmlStreamWriter &w, const QString &element, const QDateTime &v) { w.writeTextElement(element, dateText(v)); }

void take(QXmlStreamReader &r, QString &v) { v = r.readElementText(); }
void take(QXmlStreamReader &r, double &v) { v = r.readElementText().toDouble(); }
void take(QXmlStreamReader &r, float &v) { v = r.readElementText().toFloat(); }
void take(QXmlStreamReader &r, int &v) { v = r.readElementText().toInt(); }
void take(QXmlStreamReader &r, bool &v) { v = boolFromText(r.readElementText()); }
void take(QXmlStreamReader &r, QDateTime &v) { v = dateFromText(r.readElementText()); }

void record(QDataStream &s, quint32 tag, const QString &v) { textRecord(s, tag, v); }
void record(QDataStream &s, quint32 tag, double v) { numberRecord(s, tag, v); }
void record(QDataStream &s, quint32 tag, float v) { numberRecord(s, tag, double(v)); }
void record(QDataStream &s, quint32 tag, int v) { s << qint32(tag) << qint32(8) << qint64(v); }
void record(QDataStream &s, quint32 tag, bool v) { s << qint32(tag) << qint32(1) << v; }
void record(QDataStream &s, quint32 tag, const QDateTime &v) { textRecord(s, tag, dateText(v)); }

void get(QDataStream &s, qint32, QString &v) { v = readText(s); }
void get(QDataStream &s, qint32, double &v)
{
    QByteArray bytes;
    s >> bytes;
    v = bytes.toDouble();
}
void get(QDataStream &s, qint32, float &v)
{
    QByteArray bytes;
    s >> bytes;
    v = bytes.toFloat();
}
void get(QDataStream &s, qint32, int &v)
{
    qint64 wide;
    s >> wide;
    v = int(wide);
}
void get(QDataStream &s, qint32, bool &v) { s >> v; }
void get(QDataStream &s, qint32, QDateTime &v) { v = dateFromText(readText(s)); }

void rawOut(QDataStream &s, const QString &v) { s << v; }
void rawOut(QDataStream &s, double v) { s << v; }
void rawOut(QDataStream &s, float v) { s << v; }
void rawOut(QDataStream &s, int v) { s << qint64(v); }
void rawOut(QDataStream &s, bool v) { s << v; }
void rawOut(QDataStream &s, const QDateTime &v) { s << v; }

void rawIn(QDataStream &s, QString &v) { s >> v; }
void rawIn(QDataStream &s, double &v) { s >> v; }
void rawIn(QDataStream &s, float &v) { s >> v; }
void rawIn(QDataStream &s, int &v)
{
    qint64 wide;
    s >> wide;
    v = int(wide);
}
void rawIn(QDataStream &s, bool &v) { s >> v; }
void rawIn(QDataStream &s, QDateTime &v) { s >> v; }

template <class T>
bool same(const T &a, const T &b)
{
    return a == b;
}

// The structs' own overloads, declared before the list templates use them.
#define DECLARE_STRUCT_IO(Struct)                                                                                      \
    void put(QXmlStreamWriter &w, const QString &element, const Struct &m);                                            \
    void take(QXmlStreamReader &r, Struct &m);                                                                         \
    void fields(QDataStream &s, const Struct &m);                                                                      \
    void get(QDataStream &s, qint32 length, Struct &m);                                                                \
    void rawOut(QDataStream &s, const Struct &m);                                                                      \
    void rawIn(QDataStream &s, Struct &m);                                                                             \
    bool same(const Struct &a, const Struct &b);

DECLARE_STRUCT_IO(ModulationSettings)
DECLARE_STRUCT_IO(RecorderSettings)
DECLARE_STRUCT_IO(FFMSettingsDetail)
DECLARE_STRUCT_IO(FFMSettings)
DECLARE_STRUCT_IO(AudioSettings)
DECLARE_STRUCT_IO(BandwidthSettings)
DECLARE_STRUCT_IO(SensorSettings)
DECLARE_STRUCT_IO(VideoSettings)
DECLARE_STRUCT_IO(ScanSettings)
DECLARE_STRUCT_IO(DVSettings)
DECLARE_STRUCT_IO(IQSettings)
DECLARE_STRUCT_IO(BearingCorrectionSettings)
DECLARE_STRUCT_IO(Downconverter)
DECLARE_STRUCT_IO(AntennaSettings)
DECLARE_STRUCT_IO(DFSettings)
DECLARE_STRUCT_IO(Compass)
DECLARE_STRUCT_IO(GPSCSettings)
DECLARE_STRUCT_IO(ReceiverSettings)

#undef DECLARE_STRUCT_IO

// A nested struct: its tag, its length and its records.
template <class T>
void record(QDataStream &s, quint32 tag, const T &m)
{
    s << qint32(tag);
    const qint64 length = openLength(s);
    fields(s, m);
    closeLength(s, length);
}

// ---- Lists: an element per item in XML; in the tagged form one record with
// the count and each item after its length; in the raw form the count and
// the items.

template <class T>
void takeItem(QXmlStreamReader &r, QVector<T> &list)
{
    T item;
    take(r, item);
    list.append(item);
}

void listRecord(QDataStream &s, quint32 tag, const QVector<QString> &list)
{
    s << qint32(tag);
    const qint64 length = openLength(s);
    s << qint32(list.size());
    for (const QString &item : list) {
        const qint64 itemLength = openLength(s);
        s << item.toUtf8();
        closeLength(s, itemLength);
    }
    closeLength(s, length);
}

template <class T>
void listRecord(QDataStream &s, quint32 tag, const QVector<T> &list)
{
    s << qint32(tag);
    const qint64 length = openLength(s);
    s << qint32(list.size());
    for (const T &item : list) {
        const qint64 itemLength = openLength(s);
        fields(s, item);
        closeLength(s, itemLength);
    }
    closeLength(s, length);
}

void getList(QDataStream &s, QVector<QString> &list)
{
    qint32 count;
    s >> count;
    for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
        qint32 itemLength;
        s >> itemLength;
        list.append(readText(s));
    }
}

template <class T>
void getList(QDataStream &s, QVector<T> &list)
{
    qint32 count;
    s >> count;
    for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
        qint32 itemLength;
        s >> itemLength;
        T item;
        get(s, itemLength, item);
        list.append(item);
    }
}

template <class T>
void rawOut(QDataStream &s, const QVector<T> &list)
{
    s << qint32(list.size());
    for (const T &item : list)
        rawOut(s, item);
}

template <class T>
void rawIn(QDataStream &s, QVector<T> &list)
{
    qint32 count;
    s >> count;
    for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
        T item;
        rawIn(s, item);
        list.append(item);
    }
}

template <class T>
bool same(const QVector<T> &a, const QVector<T> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (!same(a[i], b[i]))
            return false;
    }
    return true;
}

// ---- ModulationSettings, by hand

const quint32 kModulationMethod = 0x4466275A;
const quint32 kModulationValue = 0xEFDD6EE9;
const quint32 kPrefix = 0x6274A6BA;

void put(QXmlStreamWriter &w, const QString &element, const ModulationSettings &m)
{
    w.writeStartElement(element);
    w.writeAttribute(QStringLiteral("Prefix"), m.prefix);
    w.writeTextElement(QStringLiteral("ModulationMethod"), modulationMethods().name(m.modulationMethod));
    w.writeTextElement(QStringLiteral("ModulationValue"), number(m.modulationValue));
    w.writeEndElement();
}

// The prefix comes as an attribute or as a child element; an empty child
// element stands for "Sensor".
void take(QXmlStreamReader &r, ModulationSettings &m)
{
    const QXmlStreamAttributes attributes = r.attributes();
    if (attributes.hasAttribute(QLatin1String("Prefix")))
        m.prefix = attributes.value(QLatin1String("Prefix")).toString();
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("ModulationMethod")) {
            m.modulationMethod = modulationMethods().find(r.readElementText());
        } else if (name == QLatin1String("ModulationValue")) {
            m.modulationValue = r.readElementText().toDouble();
        } else if (name == QLatin1String("Prefix")) {
            m.prefix = r.readElementText();
            if (m.prefix.isEmpty())
                m.prefix = QStringLiteral("Sensor");
        } else {
            r.skipCurrentElement();
        }
    }
}

void fields(QDataStream &s, const ModulationSettings &m)
{
    textRecord(s, kPrefix, m.prefix);
    textRecord(s, kModulationMethod, modulationMethods().name(m.modulationMethod));
    numberRecord(s, kModulationValue, m.modulationValue);
}

void get(QDataStream &s, qint32 length, ModulationSettings &m)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case kPrefix: get(s, recordLength, m.prefix); return true;
        case kModulationMethod: m.modulationMethod = modulationMethods().find(readText(s)); return true;
        case kModulationValue: get(s, recordLength, m.modulationValue); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const ModulationSettings &m)
{
    s << quint8(0x07) << m.modulationMethod << m.modulationValue << m.prefix;
}

void rawIn(QDataStream &s, ModulationSettings &m)
{
    quint8 bits;
    s >> bits >> m.modulationMethod >> m.modulationValue >> m.prefix;
}

bool same(const ModulationSettings &a, const ModulationSettings &b)
{
    return a.modulationMethod == b.modulationMethod && a.modulationValue == b.modulationValue && a.prefix == b.prefix;
}

// ---- The other structs, from their field lists

#define XML_PUT(type, element, member, tag) put(w, QStringLiteral(#element), m.member);
#define XML_PUT_ENUM(element, member, tag, table) w.writeTextElement(QStringLiteral(#element), table().name(m.member));
#define XML_PUT_LIST(type, element, member, tag)                                                                       \
    for (const auto &item : m.member)                                                                                  \
        put(w, QStringLiteral(#element), item);
#define XML_TAKE(type, element, member, tag)                                                                           \
    if (name == QLatin1String(#element)) {                                                                             \
        take(r, m.member);                                                                                             \
        continue;                                                                                                      \
    }
#define XML_TAKE_ENUM(element, member, tag, table)                                                                     \
    if (name == QLatin1String(#element)) {                                                                             \
        m.member = table().find(r.readElementText());                                                                  \
        continue;                                                                                                      \
    }
#define XML_TAKE_LIST(type, element, member, tag)                                                                      \
    if (name == QLatin1String(#element)) {                                                                             \
        takeItem(r, m.member);                                                                                         \
        continue;                                                                                                      \
    }
#define TAGGED_PUT(type, element, member, tag) record(s, tag, m.member);
#define TAGGED_PUT_ENUM(element, member, tag, table) textRecord(s, tag, table().name(m.member));
#define TAGGED_PUT_LIST(type, element, member, tag) listRecord(s, tag, m.member);
#define TAGGED_GET(type, element, member, tag)                                                                         \
    case tag: get(s, recordLength, m.member); return true;
#define TAGGED_GET_ENUM(element, member, tag, table)                                                                   \
    case tag: m.member = table().find(readText(s)); return true;
#define TAGGED_GET_LIST(type, element, member, tag)                                                                    \
    case tag: getList(s, m.member); return true;
#define RAW_PUT(type, element, member, tag) rawOut(s, m.member);
#define RAW_PUT_ENUM(element, member, tag, table) s << m.member;
#define RAW_GET(type, element, member, tag) rawIn(s, m.member);
#define RAW_GET_ENUM(element, member, tag, table) s >> m.member;
#define COUNT_FIELD(...) +1
#define SAME(type, element, member, tag) &&same(a.member, b.member)
#define SAME_ENUM(element, member, tag, table) &&a.member == b.member

// Writes and reads one struct. Every field is written, so the presence bytes
// of the raw form are all on; the reader skips them.
#define STRUCT_IO(Struct, LIST)                                                                                        \
    void put(QXmlStreamWriter &w, const QString &element, const Struct &m)                                             \
    {                                                                                                                  \
        w.writeStartElement(element);                                                                                  \
        LIST(XML_PUT, XML_PUT_ENUM, XML_PUT, XML_PUT_LIST)                                                             \
        w.writeEndElement();                                                                                           \
    }                                                                                                                  \
    void take(QXmlStreamReader &r, Struct &m)                                                                          \
    {                                                                                                                  \
        while (r.readNextStartElement()) {                                                                             \
            const auto name = r.name();                                                                                \
            LIST(XML_TAKE, XML_TAKE_ENUM, XML_TAKE, XML_TAKE_LIST)                                                     \
            r.skipCurrentElement();                                                                                    \
        }                                                                                                              \
    }                                                                                                                  \
    void fields(QDataStream &s, const Struct &m) { LIST(TAGGED_PUT, TAGGED_PUT_ENUM, TAGGED_PUT, TAGGED_PUT_LIST) }   \
    void get(QDataStream &s, qint32 length, Struct &m)                                                                 \
    {                                                                                                                  \
        readRecords(s, length, [&](quint32 tag, qint32 recordLength) {                                                 \
            (void)recordLength;                                                                                        \
            switch (tag) {                                                                                             \
                LIST(TAGGED_GET, TAGGED_GET_ENUM, TAGGED_GET, TAGGED_GET_LIST)                                         \
            default: return false;                                                                                     \
            }                                                                                                          \
        });                                                                                                            \
    }                                                                                                                  \
    constexpr int Struct##Fields = 0 LIST(COUNT_FIELD, COUNT_FIELD, COUNT_FIELD, COUNT_FIELD);                         \
    void rawOut(QDataStream &s, const Struct &m)                                                                       \
    {                                                                                                                  \
        for (int i = 0; i < Struct##Fields / 8; ++i)                                                                   \
            s << quint8(0xFF);                                                                                         \
        if (Struct##Fields % 8)                                                                                        \
            s << quint8((1 << (Struct##Fields % 8)) - 1);                                                              \
        LIST(RAW_PUT, RAW_PUT_ENUM, RAW_PUT, RAW_PUT)                                                                  \
    }                                                                                                                  \
    void rawIn(QDataStream &s, Struct &m)                                                                              \
    {                                                                                                                  \
        s.skipRawData((Struct##Fields + 7) / 8);                                                                       \
        LIST(RAW_GET, RAW_GET_ENUM, RAW_GET, RAW_GET)                                                                  \
    }                                                                                                                  \
    bool same(const Struct &a, const Struct &b) { return true LIST(SAME, SAME_ENUM, SAME, SAME); }

STRUCT_IO(RecorderSettings, BASELINE_RECORDER_SETTINGS)
STRUCT_IO(FFMSettingsDetail, BASELINE_FFM_SETTINGS_DETAIL)
STRUCT_IO(FFMSettings, BASELINE_FFM_SETTINGS)
STRUCT_IO(AudioSettings, BASELINE_AUDIO_SETTINGS)
STRUCT_IO(BandwidthSettings, BASELINE_BANDWIDTH_SETTINGS)
STRUCT_IO(SensorSettings, BASELINE_SENSOR_SETTINGS)
STRUCT_IO(VideoSettings, BASELINE_VIDEO_SETTINGS)
STRUCT_IO(ScanSettings, BASELINE_SCAN_SETTINGS)
STRUCT_IO(DVSettings, BASELINE_DV_SETTINGS)
STRUCT_IO(IQSettings, BASELINE_IQ_SETTINGS)
STRUCT_IO(BearingCorrectionSettings, BASELINE_BEARING_CORRECTION_SETTINGS)
STRUCT_IO(Downconverter, BASELINE_DOWNCONVERTER)
STRUCT_IO(AntennaSettings, BASELINE_ANTENNA_SETTINGS)
STRUCT_IO(DFSettings, BASELINE_DF_SETTINGS)
STRUCT_IO(Compass, BASELINE_COMPASS)
STRUCT_IO(GPSCSettings, BASELINE_GPSC_SETTINGS)
STRUCT_IO(ReceiverSettings, BASELINE_RECEIVER_SETTINGS)

} // namespace

void writeXml(QXmlStreamWriter &w, const ReceiverSettings &s)
{
    put(w, QStringLiteral("ReceiverSettings"), s);
}

void readXml(QXmlStreamReader &r, ReceiverSettings &s)
{
    take(r, s);
}

void writeTagged(QDataStream &s, const ReceiverSettings &r)
{
    const qint64 length = openLength(s);
    fields(s, r);
    closeLength(s, length);
}

void readTagged(QDataStream &s, qint32 length, ReceiverSettings &r)
{
    get(s, length, r);
}

void writeRaw(QDataStream &s, const ReceiverSettings &r)
{
    rawOut(s, r);
}

void readRaw(QDataStream &s, ReceiverSettings &r)
{
    rawIn(s, r);
}

bool operator==(const ReceiverSettings &a, const ReceiverSettings &b)
{
    return same(a, b);
}

} // namespace baseline

// ---- The document's values: written once into a baseline struct, then set
// through the library's setters and assigned to the baseline's members from
// there, in the same order

namespace documents {

namespace {

baseline::ReceiverSettings makeValues()
{
    using namespace baseline;
    ReceiverSettings v;

    RecorderSettings &recorder = v.recorderSettings;
    recorder.recordSource = 1;          // Audio
    recorder.recordSourceSuperset = 12; // IFPan
    recorder.recordStorage = 2;         // File (PC)
    recorder.recordMode = 1;            // Record
    recorder.recordMemSize = 3;
    recorder.recordMemMode = 0;
    recorder.recordState = true;
    recorder.iqRecordState = 1; // OFF

    FFMSettings &ffm = v.ffmSettings;
    ffm.frequency = 145500000.25;
    ffm.analogDemod = 1; // FM
    ffm.ifBandwidth = 12500;
    ffm.bandwidthMode = 1;
    FFMSettingsDetail &detail = ffm.ffmSettingsDetail;
    detail.bfoFrequency = 1000.5;
    detail.gainControlMode = 1;
    detail.gainControlValue = 42;
    detail.gainControlTime = 2;
    detail.attenuation = 4; // LOW DESTORT
    detail.attenuationValue = 10;
    detail.attenuationTime = 0.25;
    detail.afcValue = 1;
    detail.squelchState = 1;
    detail.squelchValue = -20;
    detail.preselection = 2;
    detail.levelDetector = 3;
    detail.measurementTime = 0.5;
    detail.measurementMode = 1;
    detail.automaticMeasMode = false;
    detail.ifPanSpan = 1000000;
    detail.ifPanType = 1; // Clear Write
    detail.ifStep = 6.25;
    detail.ifStepAuto = 0;

    v.audioSettings.audioMode = 11; // the 8 kHz row with two blanks
    v.audioSettings.audioFilter = 2;

    SensorSettings &sensor = v.sensorSettings;
    sensor.level = 47.5;
    sensor.offset = -3.25;
    sensor.fieldstrength = 61.75;
    sensor.bandwidthSettings.bandwidthMethod = 2;
    sensor.bandwidthSettings.xdbValue = 26.5f;
    sensor.bandwidthSettings.betaValue = 99.75f;
    sensor.bandwidthSettings.measLower = 145493750.5;
    sensor.bandwidthSettings.measUpper = 145506250.75;
    const char *const prefixes[] = {"Sensor", "Peak", "Average", "Min"};
    for (int i = 0; i < 4; ++i) {
        ModulationSettings m;
        m.modulationMethod = qint8(i * 2);
        m.modulationValue = 30.5 + 1000 * i;
        m.prefix = QString::fromLatin1(prefixes[i]);
        sensor.modulationSettings.append(m);
    }

    VideoSettings &video = v.videoSettings;
    video.vdMode = 4; // IQ
    video.vdPanSpan = 2000000;
    video.vdDataFormat = 2;
    video.vdDemodulation = QStringLiteral("FM");
    video.vdSideband = QStringLiteral("Upper");
    video.vdScale = QStringLiteral("Linear");

    ScanSettings &scan = v.scanSettings;
    scan.searchScanDwellTime = 0.5;
    scan.searchHoldTime = 2.5;
    scan.searchMode = 5; // RUN
    scan.mScanDwellTime = 1.25;
    scan.mScanHoldTime = -1;
    scan.mScanMode = 1;
    scan.mScanSquelchMode = true;
    scan.startFrequency = 87500000;
    scan.stopFrequency = 108000000;
    scan.stepFrequency = 100000;

    DVSettings &dv = v.dvSettings;
    dv.dvMode = QStringLiteral("Live");
    dv.dvTime = QDateTime(QDate(2026, 11, 24), QTime(6, 30, 15, 250), Qt::UTC);
    dv.dvTrace = QStringLiteral("Trace 1");
    dv.dvTrigger = QStringLiteral("Level");
    dv.dvTriggerTrace = QStringLiteral("Trace 2");

    v.iqSettings.iqTime = QDateTime(QDate(2026, 11, 24), QTime(7, 45, 0, 500), Qt::UTC);
    v.iqSettings.iqMode = QStringLiteral("IQ 16 bit");

    v.bearingCorrectionSettings.identifier = 7;
    v.bearingCorrectionSettings.fromHeight = 10.5;
    v.bearingCorrectionSettings.toHeight = 250;

    AntennaSettings &antenna = v.antennaSettings;
    antenna.antenna = QStringLiteral("HE 600");
    antenna.polarisation = 1;
    antenna.mode = 0;
    antenna.downconverter.startFrequency = 2000000000;
    antenna.downconverter.stopFrequency = 6000000000;
    antenna.downconverter.oscFrequency = 8000000000.5;
    antenna.dfReference = QStringLiteral("North");

    DFSettings &df = v.dfSettings;
    df.signalPath = {QStringLiteral("VUHF 1"), QStringLiteral("VUHF 2"), QStringLiteral("HF 1"), QStringLiteral("SHF")};
    df.currentSignalPath = QStringLiteral("VUHF 2");
    df.dfBandwidth = 12500;
    df.dfMeasurementTime = 0.75;
    df.dfMode = 2;
    df.dfStep = 25;
    df.freqSpan = 1000000;

    GPSCSettings &gpsc = v.gpscSettings;
    gpsc.gpsName = QStringLiteral("GPS 1");
    gpsc.compass.name = QStringLiteral("Compass 1");
    gpsc.compass.offset = 2.5;
    gpsc.compass.type = QStringLiteral("GH150");
    gpsc.compass.compassSource = 1;
    gpsc.gpscEnable = true;
    gpsc.gpsSource = 3;
    return v;
}

const baseline::ReceiverSettings &values()
{
    static const baseline::ReceiverSettings v = makeValues();
    return v;
}

// Library side: each field through its setter, nested objects through their
// reference, list items appended one by one.
HALVANE::ModulationSettings libraryItem(const baseline::ModulationSettings &v)
{
    HALVANE::ModulationSettings o;
    o.SetModulationMethod(v.modulationMethod);
    o.SetModulationValue(v.modulationValue);
    o.SetPrefix(v.prefix);
    return o;
}

const QString &libraryItem(const QString &v)
{
    return v;
}

#define SET_VALUE(type, element, member, tag) o.Set##element(v.member);
#define SET_ENUM(element, member, tag, table) o.Set##element(v.member);
#define SET_NESTED(type, element, member, tag) fill(o.Get##element(), v.member);
#define SET_LIST(type, element, member, tag)                                                                           \
    for (const auto &item : v.member)                                                                                  \
        o.Append##element(libraryItem(item));
#define ASSIGN_VALUE(type, element, member, tag) m.member = v.member;
#define ASSIGN_ENUM(element, member, tag, table) m.member = v.member;
#define ASSIGN_NESTED(type, element, member, tag) fill(m.member, v.member);
#define FILL(name, LIST)                                                                                               \
    void fill(HALVANE::name &o, const baseline::name &v) { LIST(SET_VALUE, SET_ENUM, SET_NESTED, SET_LIST) }          \
    void fill(baseline::name &m, const baseline::name &v) { LIST(ASSIGN_VALUE, ASSIGN_ENUM, ASSIGN_NESTED, ASSIGN_VALUE) }

FILL(RecorderSettings, BASELINE_RECORDER_SETTINGS)
FILL(FFMSettingsDetail, BASELINE_FFM_SETTINGS_DETAIL)
FILL(FFMSettings, BASELINE_FFM_SETTINGS)
FILL(AudioSettings, BASELINE_AUDIO_SETTINGS)
FILL(BandwidthSettings, BASELINE_BANDWIDTH_SETTINGS)
FILL(SensorSettings, BASELINE_SENSOR_SETTINGS)
FILL(VideoSettings, BASELINE_VIDEO_SETTINGS)
FILL(ScanSettings, BASELINE_SCAN_SETTINGS)
FILL(DVSettings, BASELINE_DV_SETTINGS)
FILL(IQSettings, BASELINE_IQ_SETTINGS)
FILL(BearingCorrectionSettings, BASELINE_BEARING_CORRECTION_SETTINGS)
FILL(Downconverter, BASELINE_DOWNCONVERTER)
FILL(AntennaSettings, BASELINE_ANTENNA_SETTINGS)
FILL(DFSettings, BASELINE_DF_SETTINGS)
FILL(Compass, BASELINE_COMPASS)
FILL(GPSCSettings, BASELINE_GPSC_SETTINGS)
FILL(ReceiverSettings, BASELINE_RECEIVER_SETTINGS)

} // namespace

HALVANE::ReceiverSettings receiverSettings()
{
    HALVANE::ReceiverSettings r;
    r.SetValidate(true);
    fill(r, values());
    return r;
}

baseline::ReceiverSettings plainReceiverSettings()
{
    baseline::ReceiverSettings r;
    fill(r, values());
    return r;
}

} // namespace documents
