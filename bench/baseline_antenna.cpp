// Hand-written XML and QDataStream code for the antenna matrix document: one
// writeTextElement and one stream operator per field, a chain of name tests
// and a switch over tags for reading, names of enumerated values looked up in
// hashes, lengths patched by seeking back. The three lists of the document and
// the pattern's curve share one piece of code per form.
#include "baseline_antenna.h"
#include "baseline_io.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace baseline {

namespace {

// ---- Name tables

const Names &offOn()
{
    static const Names n{"Off", "On"};
    return n;
}

const Names &upperOffOn()
{
    static const Names n{"OFF", "ON"};
    return n;
}

const Names &polarisations()
{
    static const Names n{"AUTO", "VERT", "HOR", "LEFT", "RIGH"};
    return n;
}

const Names &auxModes()
{
    static const Names n{"FREQ", "ANTC", "AUTO"};
    return n;
}

const Names &routesHF()
{
    static const Names n{"HF/V/UHF1 (X44)", "HF2 (X41)", "HF3 (X40)"};
    return n;
}

const Names &routesVUHF()
{
    static const Names n{"HF/V/UHF1 (X44)", "V/UHF2 (X43)", "V/UHF3 (X42)", "U/SHF1 (X45)", "U/SHF2 (X46)"};
    return n;
}

const Names &routesSHF()
{
    static const Names n{"U/SHF1 (X45)", "U/SHF2 (X46)"};
    return n;
}

const Names &routesSEHF()
{
    static const Names n{"S/EHF1 (X46 bridge)", "S/EHF2 (X48)", "S/EHF3 (X49)"};
    return n;
}

// ---- Tags

enum : quint32 {
    kIndex = 0x2128394B,
    // AntennaMatrixConfiguration
    kAntennaControlMode = 0x6CC4F44E,
    kAntennaPolarization = 0x658883B4,
    kAntennaPreamplifierState = 0x826B6F32,
    kAntennaPathSelected = 0xCCEF38BD,
    kOutputAuxMode = 0xE82BDF82,
    kOutputAuxWord = 0xC392DEFE,
    kTunerFrequencyLimitHF = 0x4092100F,
    kTunerFrequencyLimitVUHF = 0x8A4FBA1F,
    kAntennaEntries = 0x0DBA964C,
    kAuxTimings = 0x6B49FF0D,
    kAntennaRxPaths = 0xA77D88BB,
    // The lists' items
    kAntennaEntry = 0xA34A4594,
    kAuxTiming = 0x2A772D28,
    kAntennaRxPath = 0x261FCFB7,
    kCurve = 0xCE8FF818,
    // AntennaEntry
    kAntennaDefinition = 0x48C4CAE1,
    kAntennaConfiguration = 0x2B0B681D,
    // AntennaDefinition
    kFactorDataSet = 0x806DF473,
    kPolarMode = 0xAC5861E1,
    kFrequencyStart = 0xEAFE39B5,
    kFrequencyStop = 0x02B3D10D,
    kUpperLimitHF = 0x45D8E977,
    kUpperLimitVUHF = 0xE0C30A12,
    kName = 0x8C9FBCA8,
    kValid = 0x4E569108,
    kAntennaPattern = 0x47DEEEB2,
    // AntennaPattern and Curve
    kPatternName = 0xCB4CF645,
    kFrequency = 0xC6A99EB6,
    kAttenuation = 0x2D729A7E,
    kWidth = 0x6F6048D2,
    // AntennaConfiguration
    kFrequencyStartUsed = 0x67B7F771,
    kFrequencyStopUsed = 0xCF9CD6FC,
    kInputRouteHF = 0xA18E862F,
    kInputRouteVUHF = 0x60298C5A,
    kInputRouteSHF = 0xC951D3E7,
    kInputRouteSEHF = 0x6E3A2AE4,
    kOutputAuxByte = 0x220FEE5D,
    kOutputAuxMask = 0x281F2A51,
    kRxPath = 0xE4194E39,
    // AuxTiming and AntennaRxPath
    kAuxSwitchingTime = 0xA74E75F9,
    kAuxGuardTime = 0xA07D0B46,
    kRxName = 0x84177525,
    kRotor = 0xE887A1E4,
};

// ---- Values

QString boolText(bool v)
{
    return v ? QStringLiteral("true") : QStringLiteral("false");
}

// Integers of either width are eight bytes in both binary forms.
void intRecord(QDataStream &s, quint32 tag, qint64 v)
{
    s << qint32(tag) << qint32(8) << v;
}

qint64 readInt(QDataStream &s)
{
    qint64 v;
    s >> v;
    return v;
}

// ---- Each struct's code, declared here for the list code below

#define DECLARE_IO(Struct)                                                                                             \
    void xmlOut(QXmlStreamWriter &w, const Struct &m);                                                                 \
    void xmlIn(QXmlStreamReader &r, Struct &m);                                                                        \
    void taggedOut(QDataStream &s, const Struct &m);                                                                   \
    void taggedIn(QDataStream &s, qint32 length, Struct &m);                                                           \
    void rawOut(QDataStream &s, const Struct &m);                                                                      \
    void rawIn(QDataStream &s, Struct &m);                                                                             \
    bool same(const Struct &a, const Struct &b);

DECLARE_IO(Curve)
DECLARE_IO(AntennaPattern)
DECLARE_IO(AntennaDefinition)
DECLARE_IO(AntennaConfiguration)
DECLARE_IO(AntennaEntry)
DECLARE_IO(AuxTiming)
DECLARE_IO(AntennaRxPath)

#undef DECLARE_IO

// ---- Nested structs and lists. XML: an element per item. Tagged: a nested
// struct is its tag, length and records; a list one record with the count and
// each item after its length. Raw: the count, then the items.

template <class T>
void xmlItemsIn(QXmlStreamReader &r, QLatin1String element, QVector<T> &list)
{
    while (r.readNextStartElement()) {
        if (r.name() == element) {
            list.append(T());
            xmlIn(r, list.last());
        } else {
            r.skipCurrentElement();
        }
    }
}

template <class T>
void nestedRecord(QDataStream &s, quint32 tag, const T &m)
{
    s << qint32(tag);
    const qint64 length = openLength(s);
    taggedOut(s, m);
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
        taggedOut(s, item);
        closeLength(s, itemLength);
    }
    closeLength(s, length);
}

template <class T>
void readList(QDataStream &s, QVector<T> &list)
{
    qint32 count;
    s >> count;
    for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
        qint32 itemLength;
        s >> itemLength;
        list.append(T());
        taggedIn(s, itemLength, list.last());
    }
}

template <class T>
void rawList(QDataStream &s, const QVector<T> &list)
{
    s << qint32(list.size());
    for (const T &item : list)
        rawOut(s, item);
}

template <class T>
void rawListIn(QDataStream &s, QVector<T> &list)
{
    qint32 count;
    s >> count;
    for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
        list.append(T());
        rawIn(s, list.last());
    }
}

template <class T>
bool sameList(const QVector<T> &a, const QVector<T> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (!same(a[i], b[i]))
            return false;
    }
    return true;
}

// A struct that holds one list and nothing else: AntennaEntries, AuxTimings,
// AntennaRxPaths. Its presence byte has the list's bit only.
template <class T>
void xmlListOut(QXmlStreamWriter &w, const QString &element, const QString &itemElement, const QVector<T> &list)
{
    w.writeStartElement(element);
    for (const T &item : list) {
        w.writeStartElement(itemElement);
        xmlOut(w, item);
        w.writeEndElement();
    }
    w.writeEndElement();
}

template <class T>
void taggedListIn(QDataStream &s, qint32 length, quint32 tag, QVector<T> &list)
{
    readRecords(s, length, [&](quint32 recordTag, qint32) {
        if (recordTag != tag)
            return false;
        readList(s, list);
        return true;
    });
}

template <class T>
void rawListOut(QDataStream &s, const QVector<T> &list)
{
    s << quint8(0x01);
    rawList(s, list);
}

template <class T>
void rawListOnlyIn(QDataStream &s, QVector<T> &list)
{
    s.skipRawData(1);
    rawListIn(s, list);
}

// ---- Curve: three attributes and no content in XML

void xmlOut(QXmlStreamWriter &w, const Curve &m)
{
    w.writeAttribute(QStringLiteral("frequency"), number(m.frequency));
    w.writeAttribute(QStringLiteral("attenuation"), number(m.attenuation));
    w.writeAttribute(QStringLiteral("width"), number(m.width));
}

void xmlIn(QXmlStreamReader &r, Curve &m)
{
    const QXmlStreamAttributes attributes = r.attributes();
    m.frequency = attributes.value(QLatin1String("frequency")).toDouble();
    m.attenuation = attributes.value(QLatin1String("attenuation")).toDouble();
    m.width = attributes.value(QLatin1String("width")).toDouble();
    r.skipCurrentElement();
}

void taggedOut(QDataStream &s, const Curve &m)
{
    numberRecord(s, kFrequency, m.frequency);
    numberRecord(s, kAttenuation, m.attenuation);
    numberRecord(s, kWidth, m.width);
}

void taggedIn(QDataStream &s, qint32 length, Curve &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case kFrequency: m.frequency = readNumber(s); return true;
        case kAttenuation: m.attenuation = readNumber(s); return true;
        case kWidth: m.width = readNumber(s); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const Curve &m)
{
    s << quint8(0x07) << m.frequency << m.attenuation << m.width;
}

void rawIn(QDataStream &s, Curve &m)
{
    quint8 bits;
    s >> bits >> m.frequency >> m.attenuation >> m.width;
}

bool same(const Curve &a, const Curve &b)
{
    return a.frequency == b.frequency && a.attenuation == b.attenuation && a.width == b.width;
}

// ---- AntennaPattern: the name is an attribute, the first record and the
// last raw value

void xmlOut(QXmlStreamWriter &w, const AntennaPattern &m)
{
    w.writeAttribute(QStringLiteral("name"), m.name);
    for (const Curve &point : m.curve) {
        w.writeEmptyElement(QStringLiteral("Curve"));
        xmlOut(w, point);
    }
}

void xmlIn(QXmlStreamReader &r, AntennaPattern &m)
{
    m.name = r.attributes().value(QLatin1String("name")).toString();
    xmlItemsIn(r, QLatin1String("Curve"), m.curve);
}

void taggedOut(QDataStream &s, const AntennaPattern &m)
{
    textRecord(s, kPatternName, m.name);
    listRecord(s, kCurve, m.curve);
}

void taggedIn(QDataStream &s, qint32 length, AntennaPattern &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case kPatternName: m.name = readText(s); return true;
        case kCurve: readList(s, m.curve); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AntennaPattern &m)
{
    s << quint8(0x03);
    rawList(s, m.curve);
    s << m.name;
}

void rawIn(QDataStream &s, AntennaPattern &m)
{
    s.skipRawData(1);
    rawListIn(s, m.curve);
    s >> m.name;
}

bool same(const AntennaPattern &a, const AntennaPattern &b)
{
    return a.name == b.name && sameList(a.curve, b.curve);
}

// ---- AntennaDefinition

void xmlOut(QXmlStreamWriter &w, const AntennaDefinition &m)
{
    w.writeTextElement(QStringLiteral("FactorDataSet"), m.factorDataSet);
    w.writeTextElement(QStringLiteral("PolarMode"), polarisations().name(m.polarMode));
    w.writeTextElement(QStringLiteral("FrequencyStart"), number(m.frequencyStart));
    w.writeTextElement(QStringLiteral("FrequencyStop"), number(m.frequencyStop));
    w.writeTextElement(QStringLiteral("UpperLimit_HF"), number(m.upperLimitHF));
    w.writeTextElement(QStringLiteral("UpperLimit_VUHF"), number(m.upperLimitVUHF));
    w.writeTextElement(QStringLiteral("Name"), m.name);
    w.writeTextElement(QStringLiteral("Valid"), boolText(m.valid));
    w.writeStartElement(QStringLiteral("AntennaPattern"));
    xmlOut(w, m.antennaPattern);
    w.writeEndElement();
}

void xmlIn(QXmlStreamReader &r, AntennaDefinition &m)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("FactorDataSet"))
            m.factorDataSet = r.readElementText();
        else if (name == QLatin1String("PolarMode"))
            m.polarMode = polarisations().find(r.readElementText());
        else if (name == QLatin1String("FrequencyStart"))
            m.frequencyStart = r.readElementText().toDouble();
        else if (name == QLatin1String("FrequencyStop"))
            m.frequencyStop = r.readElementText().toDouble();
        else if (name == QLatin1String("UpperLimit_HF"))
            m.upperLimitHF = r.readElementText().toDouble();
        else if (name == QLatin1String("UpperLimit_VUHF"))
            m.upperLimitVUHF = r.readElementText().toDouble();
        else if (name == QLatin1String("Name"))
            m.name = r.readElementText();
        else if (name == QLatin1String("Valid"))
            m.valid = boolFromText(r.readElementText());
        else if (name == QLatin1String("AntennaPattern"))
            xmlIn(r, m.antennaPattern);
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const AntennaDefinition &m)
{
    textRecord(s, kFactorDataSet, m.factorDataSet);
    textRecord(s, kPolarMode, polarisations().name(m.polarMode));
    numberRecord(s, kFrequencyStart, m.frequencyStart);
    numberRecord(s, kFrequencyStop, m.frequencyStop);
    numberRecord(s, kUpperLimitHF, m.upperLimitHF);
    numberRecord(s, kUpperLimitVUHF, m.upperLimitVUHF);
    textRecord(s, kName, m.name);
    s << qint32(kValid) << qint32(1) << m.valid;
    nestedRecord(s, kAntennaPattern, m.antennaPattern);
}

void taggedIn(QDataStream &s, qint32 length, AntennaDefinition &m)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case kFactorDataSet: m.factorDataSet = readText(s); return true;
        case kPolarMode: m.polarMode = polarisations().find(readText(s)); return true;
        case kFrequencyStart: m.frequencyStart = readNumber(s); return true;
        case kFrequencyStop: m.frequencyStop = readNumber(s); return true;
        case kUpperLimitHF: m.upperLimitHF = readNumber(s); return true;
        case kUpperLimitVUHF: m.upperLimitVUHF = readNumber(s); return true;
        case kName: m.name = readText(s); return true;
        case kValid: s >> m.valid; return true;
        case kAntennaPattern: taggedIn(s, recordLength, m.antennaPattern); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AntennaDefinition &m)
{
    s << quint8(0xFF) << quint8(0x01) << m.factorDataSet << m.polarMode << m.frequencyStart << m.frequencyStop
      << m.upperLimitHF << m.upperLimitVUHF << m.name << m.valid;
    rawOut(s, m.antennaPattern);
}

void rawIn(QDataStream &s, AntennaDefinition &m)
{
    s.skipRawData(2);
    s >> m.factorDataSet >> m.polarMode >> m.frequencyStart >> m.frequencyStop >> m.upperLimitHF >> m.upperLimitVUHF
        >> m.name >> m.valid;
    rawIn(s, m.antennaPattern);
}

bool same(const AntennaDefinition &a, const AntennaDefinition &b)
{
    return a.factorDataSet == b.factorDataSet && a.polarMode == b.polarMode && a.frequencyStart == b.frequencyStart
           && a.frequencyStop == b.frequencyStop && a.upperLimitHF == b.upperLimitHF
           && a.upperLimitVUHF == b.upperLimitVUHF && a.name == b.name && a.valid == b.valid
           && same(a.antennaPattern, b.antennaPattern);
}

// ---- AntennaConfiguration

void xmlOut(QXmlStreamWriter &w, const AntennaConfiguration &m)
{
    w.writeTextElement(QStringLiteral("FrequencyStartUsed"), number(m.frequencyStartUsed));
    w.writeTextElement(QStringLiteral("FrequencyStopUsed"), number(m.frequencyStopUsed));
    w.writeTextElement(QStringLiteral("InputRoute_HF"), routesHF().name(m.inputRouteHF));
    w.writeTextElement(QStringLiteral("InputRoute_VUHF"), routesVUHF().name(m.inputRouteVUHF));
    w.writeTextElement(QStringLiteral("InputRoute_SHF"), routesSHF().name(m.inputRouteSHF));
    w.writeTextElement(QStringLiteral("InputRoute_SEHF"), routesSEHF().name(m.inputRouteSEHF));
    w.writeTextElement(QStringLiteral("OutputAuxByte"), QString::number(m.outputAuxByte));
    w.writeTextElement(QStringLiteral("OutputAuxMask"), QString::number(m.outputAuxMask));
    w.writeTextElement(QStringLiteral("RxPath"), QString::number(m.rxPath));
}

void xmlIn(QXmlStreamReader &r, AntennaConfiguration &m)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("FrequencyStartUsed"))
            m.frequencyStartUsed = r.readElementText().toDouble();
        else if (name == QLatin1String("FrequencyStopUsed"))
            m.frequencyStopUsed = r.readElementText().toDouble();
        else if (name == QLatin1String("InputRoute_HF"))
            m.inputRouteHF = routesHF().find(r.readElementText());
        else if (name == QLatin1String("InputRoute_VUHF"))
            m.inputRouteVUHF = routesVUHF().find(r.readElementText());
        else if (name == QLatin1String("InputRoute_SHF"))
            m.inputRouteSHF = routesSHF().find(r.readElementText());
        else if (name == QLatin1String("InputRoute_SEHF"))
            m.inputRouteSEHF = routesSEHF().find(r.readElementText());
        else if (name == QLatin1String("OutputAuxByte"))
            m.outputAuxByte = r.readElementText().toInt();
        else if (name == QLatin1String("OutputAuxMask"))
            m.outputAuxMask = r.readElementText().toInt();
        else if (name == QLatin1String("RxPath"))
            m.rxPath = r.readElementText().toInt();
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const AntennaConfiguration &m)
{
    numberRecord(s, kFrequencyStartUsed, m.frequencyStartUsed);
    numberRecord(s, kFrequencyStopUsed, m.frequencyStopUsed);
    textRecord(s, kInputRouteHF, routesHF().name(m.inputRouteHF));
    textRecord(s, kInputRouteVUHF, routesVUHF().name(m.inputRouteVUHF));
    textRecord(s, kInputRouteSHF, routesSHF().name(m.inputRouteSHF));
    textRecord(s, kInputRouteSEHF, routesSEHF().name(m.inputRouteSEHF));
    intRecord(s, kOutputAuxByte, m.outputAuxByte);
    intRecord(s, kOutputAuxMask, m.outputAuxMask);
    intRecord(s, kRxPath, m.rxPath);
}

void taggedIn(QDataStream &s, qint32 length, AntennaConfiguration &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case kFrequencyStartUsed: m.frequencyStartUsed = readNumber(s); return true;
        case kFrequencyStopUsed: m.frequencyStopUsed = readNumber(s); return true;
        case kInputRouteHF: m.inputRouteHF = routesHF().find(readText(s)); return true;
        case kInputRouteVUHF: m.inputRouteVUHF = routesVUHF().find(readText(s)); return true;
        case kInputRouteSHF: m.inputRouteSHF = routesSHF().find(readText(s)); return true;
        case kInputRouteSEHF: m.inputRouteSEHF = routesSEHF().find(readText(s)); return true;
        case kOutputAuxByte: m.outputAuxByte = int(readInt(s)); return true;
        case kOutputAuxMask: m.outputAuxMask = int(readInt(s)); return true;
        case kRxPath: m.rxPath = int(readInt(s)); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AntennaConfiguration &m)
{
    s << quint8(0xFF) << quint8(0x01) << m.frequencyStartUsed << m.frequencyStopUsed << m.inputRouteHF
      << m.inputRouteVUHF << m.inputRouteSHF << m.inputRouteSEHF << qint64(m.outputAuxByte) << qint64(m.outputAuxMask)
      << qint64(m.rxPath);
}

void rawIn(QDataStream &s, AntennaConfiguration &m)
{
    s.skipRawData(2);
    s >> m.frequencyStartUsed >> m.frequencyStopUsed >> m.inputRouteHF >> m.inputRouteVUHF >> m.inputRouteSHF
        >> m.inputRouteSEHF;
    m.outputAuxByte = int(readInt(s));
    m.outputAuxMask = int(readInt(s));
    m.rxPath = int(readInt(s));
}

bool same(const AntennaConfiguration &a, const AntennaConfiguration &b)
{
    return a.frequencyStartUsed == b.frequencyStartUsed && a.frequencyStopUsed == b.frequencyStopUsed
           && a.inputRouteHF == b.inputRouteHF && a.inputRouteVUHF == b.inputRouteVUHF
           && a.inputRouteSHF == b.inputRouteSHF && a.inputRouteSEHF == b.inputRouteSEHF
           && a.outputAuxByte == b.outputAuxByte && a.outputAuxMask == b.outputAuxMask && a.rxPath == b.rxPath;
}

// ---- AntennaEntry: the index is an attribute, the first record and the last
// raw value

void xmlOut(QXmlStreamWriter &w, const AntennaEntry &m)
{
    w.writeAttribute(QStringLiteral("index"), QString::number(m.index));
    w.writeStartElement(QStringLiteral("AntennaDefinition"));
    xmlOut(w, m.antennaDefinition);
    w.writeEndElement();
    w.writeStartElement(QStringLiteral("AntennaConfiguration"));
    xmlOut(w, m.antennaConfiguration);
    w.writeEndElement();
}

void xmlIn(QXmlStreamReader &r, AntennaEntry &m)
{
    m.index = r.attributes().value(QLatin1String("index")).toInt();
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("AntennaDefinition"))
            xmlIn(r, m.antennaDefinition);
        else if (name == QLatin1String("AntennaConfiguration"))
            xmlIn(r, m.antennaConfiguration);
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const AntennaEntry &m)
{
    intRecord(s, kIndex, m.index);
    nestedRecord(s, kAntennaDefinition, m.antennaDefinition);
    nestedRecord(s, kAntennaConfiguration, m.antennaConfiguration);
}

void taggedIn(QDataStream &s, qint32 length, AntennaEntry &m)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case kIndex: m.index = int(readInt(s)); return true;
        case kAntennaDefinition: taggedIn(s, recordLength, m.antennaDefinition); return true;
        case kAntennaConfiguration: taggedIn(s, recordLength, m.antennaConfiguration); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AntennaEntry &m)
{
    s << quint8(0x07);
    rawOut(s, m.antennaDefinition);
    rawOut(s, m.antennaConfiguration);
    s << qint64(m.index);
}

void rawIn(QDataStream &s, AntennaEntry &m)
{
    s.skipRawData(1);
    rawIn(s, m.antennaDefinition);
    rawIn(s, m.antennaConfiguration);
    m.index = int(readInt(s));
}

bool same(const AntennaEntry &a, const AntennaEntry &b)
{
    return a.index == b.index && same(a.antennaDefinition, b.antennaDefinition)
           && same(a.antennaConfiguration, b.antennaConfiguration);
}

// ---- AuxTiming: the index as in AntennaEntry

void xmlOut(QXmlStreamWriter &w, const AuxTiming &m)
{
    w.writeAttribute(QStringLiteral("index"), QString::number(m.index));
    w.writeTextElement(QStringLiteral("AuxSwitchingTime"), number(m.auxSwitchingTime));
    w.writeTextElement(QStringLiteral("AuxGuardTime"), number(m.auxGuardTime));
}

void xmlIn(QXmlStreamReader &r, AuxTiming &m)
{
    m.index = r.attributes().value(QLatin1String("index")).toInt();
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("AuxSwitchingTime"))
            m.auxSwitchingTime = r.readElementText().toDouble();
        else if (name == QLatin1String("AuxGuardTime"))
            m.auxGuardTime = r.readElementText().toDouble();
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const AuxTiming &m)
{
    intRecord(s, kIndex, m.index);
    numberRecord(s, kAuxSwitchingTime, m.auxSwitchingTime);
    numberRecord(s, kAuxGuardTime, m.auxGuardTime);
}

void taggedIn(QDataStream &s, qint32 length, AuxTiming &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case kIndex: m.index = int(readInt(s)); return true;
        case kAuxSwitchingTime: m.auxSwitchingTime = readNumber(s); return true;
        case kAuxGuardTime: m.auxGuardTime = readNumber(s); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AuxTiming &m)
{
    s << quint8(0x07) << m.auxSwitchingTime << m.auxGuardTime << qint64(m.index);
}

void rawIn(QDataStream &s, AuxTiming &m)
{
    s.skipRawData(1);
    s >> m.auxSwitchingTime >> m.auxGuardTime;
    m.index = int(readInt(s));
}

bool same(const AuxTiming &a, const AuxTiming &b)
{
    return a.index == b.index && a.auxSwitchingTime == b.auxSwitchingTime && a.auxGuardTime == b.auxGuardTime;
}

// ---- AntennaRxPath: the index as in AntennaEntry

void xmlOut(QXmlStreamWriter &w, const AntennaRxPath &m)
{
    w.writeAttribute(QStringLiteral("index"), QString::number(m.index));
    w.writeTextElement(QStringLiteral("NAME"), m.name);
    w.writeTextElement(QStringLiteral("ROTOR"), m.rotor);
}

void xmlIn(QXmlStreamReader &r, AntennaRxPath &m)
{
    m.index = r.attributes().value(QLatin1String("index")).toInt();
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("NAME"))
            m.name = r.readElementText();
        else if (name == QLatin1String("ROTOR"))
            m.rotor = r.readElementText();
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const AntennaRxPath &m)
{
    intRecord(s, kIndex, m.index);
    textRecord(s, kRxName, m.name);
    textRecord(s, kRotor, m.rotor);
}

void taggedIn(QDataStream &s, qint32 length, AntennaRxPath &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case kIndex: m.index = int(readInt(s)); return true;
        case kRxName: m.name = readText(s); return true;
        case kRotor: m.rotor = readText(s); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AntennaRxPath &m)
{
    s << quint8(0x07) << m.name << m.rotor << qint64(m.index);
}

void rawIn(QDataStream &s, AntennaRxPath &m)
{
    s.skipRawData(1);
    s >> m.name >> m.rotor;
    m.index = int(readInt(s));
}

bool same(const AntennaRxPath &a, const AntennaRxPath &b)
{
    return a.index == b.index && a.name == b.name && a.rotor == b.rotor;
}

// ---- AntennaMatrixConfiguration

void xmlOut(QXmlStreamWriter &w, const AntennaMatrixConfiguration &m)
{
    w.writeStartElement(QStringLiteral("AntennaMatrixConfiguration"));
    w.writeTextElement(QStringLiteral("AntennaControlMode"), offOn().name(m.antennaControlMode));
    w.writeTextElement(QStringLiteral("AntennaPolarization"), polarisations().name(m.antennaPolarization));
    w.writeTextElement(QStringLiteral("AntennaPreamplifierState"), upperOffOn().name(m.antennaPreamplifierState));
    w.writeTextElement(QStringLiteral("AntennaPathSelected"), QString::number(m.antennaPathSelected));
    w.writeTextElement(QStringLiteral("OutputAuxMode"), auxModes().name(m.outputAuxMode));
    w.writeTextElement(QStringLiteral("OutputAuxWord"), QString::number(m.outputAuxWord));
    w.writeTextElement(QStringLiteral("TunerFrequencyLimitHF"), number(m.tunerFrequencyLimitHF));
    w.writeTextElement(QStringLiteral("TunerFrequencyLimitVUHF"), number(m.tunerFrequencyLimitVUHF));
    xmlListOut(w, QStringLiteral("AntennaEntries"), QStringLiteral("AntennaEntry"), m.antennaEntries.antennaEntry);
    xmlListOut(w, QStringLiteral("AuxTimings"), QStringLiteral("AuxTiming"), m.auxTimings.auxTiming);
    xmlListOut(w, QStringLiteral("AntennaRxPaths"), QStringLiteral("AntennaRxPath"), m.antennaRxPaths.antennaRxPath);
    w.writeEndElement();
}

void xmlIn(QXmlStreamReader &r, AntennaMatrixConfiguration &m)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("AntennaControlMode"))
            m.antennaControlMode = offOn().find(r.readElementText());
        else if (name == QLatin1String("AntennaPolarization"))
            m.antennaPolarization = polarisations().find(r.readElementText());
        else if (name == QLatin1String("AntennaPreamplifierState"))
            m.antennaPreamplifierState = upperOffOn().find(r.readElementText());
        else if (name == QLatin1String("AntennaPathSelected"))
            m.antennaPathSelected = r.readElementText().toLongLong();
        else if (name == QLatin1String("OutputAuxMode"))
            m.outputAuxMode = auxModes().find(r.readElementText());
        else if (name == QLatin1String("OutputAuxWord"))
            m.outputAuxWord = r.readElementText().toInt();
        else if (name == QLatin1String("TunerFrequencyLimitHF"))
            m.tunerFrequencyLimitHF = r.readElementText().toDouble();
        else if (name == QLatin1String("TunerFrequencyLimitVUHF"))
            m.tunerFrequencyLimitVUHF = r.readElementText().toDouble();
        else if (name == QLatin1String("AntennaEntries"))
            xmlItemsIn(r, QLatin1String("AntennaEntry"), m.antennaEntries.antennaEntry);
        else if (name == QLatin1String("AuxTimings"))
            xmlItemsIn(r, QLatin1String("AuxTiming"), m.auxTimings.auxTiming);
        else if (name == QLatin1String("AntennaRxPaths"))
            xmlItemsIn(r, QLatin1String("AntennaRxPath"), m.antennaRxPaths.antennaRxPath);
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const AntennaMatrixConfiguration &m)
{
    textRecord(s, kAntennaControlMode, offOn().name(m.antennaControlMode));
    textRecord(s, kAntennaPolarization, polarisations().name(m.antennaPolarization));
    textRecord(s, kAntennaPreamplifierState, upperOffOn().name(m.antennaPreamplifierState));
    intRecord(s, kAntennaPathSelected, m.antennaPathSelected);
    textRecord(s, kOutputAuxMode, auxModes().name(m.outputAuxMode));
    intRecord(s, kOutputAuxWord, m.outputAuxWord);
    numberRecord(s, kTunerFrequencyLimitHF, m.tunerFrequencyLimitHF);
    numberRecord(s, kTunerFrequencyLimitVUHF, m.tunerFrequencyLimitVUHF);
    // Each of the three holders is a record of one list record.
    const auto holder = [&s](quint32 tag, quint32 listTag, const auto &list) {
        s << qint32(tag);
        const qint64 length = openLength(s);
        listRecord(s, listTag, list);
        closeLength(s, length);
    };
    holder(kAntennaEntries, kAntennaEntry, m.antennaEntries.antennaEntry);
    holder(kAuxTimings, kAuxTiming, m.auxTimings.auxTiming);
    holder(kAntennaRxPaths, kAntennaRxPath, m.antennaRxPaths.antennaRxPath);
}

void taggedIn(QDataStream &s, qint32 length, AntennaMatrixConfiguration &m)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case kAntennaControlMode: m.antennaControlMode = offOn().find(readText(s)); return true;
        case kAntennaPolarization: m.antennaPolarization = polarisations().find(readText(s)); return true;
        case kAntennaPreamplifierState: m.antennaPreamplifierState = upperOffOn().find(readText(s)); return true;
        case kAntennaPathSelected: m.antennaPathSelected = readInt(s); return true;
        case kOutputAuxMode: m.outputAuxMode = auxModes().find(readText(s)); return true;
        case kOutputAuxWord: m.outputAuxWord = int(readInt(s)); return true;
        case kTunerFrequencyLimitHF: m.tunerFrequencyLimitHF = readNumber(s); return true;
        case kTunerFrequencyLimitVUHF: m.tunerFrequencyLimitVUHF = readNumber(s); return true;
        case kAntennaEntries:
            taggedListIn(s, recordLength, kAntennaEntry, m.antennaEntries.antennaEntry);
            return true;
        case kAuxTimings: taggedListIn(s, recordLength, kAuxTiming, m.auxTimings.auxTiming); return true;
        case kAntennaRxPaths:
            taggedListIn(s, recordLength, kAntennaRxPath, m.antennaRxPaths.antennaRxPath);
            return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const AntennaMatrixConfiguration &m)
{
    s << quint8(0xFF) << quint8(0x07) << m.antennaControlMode << m.antennaPolarization << m.antennaPreamplifierState
      << m.antennaPathSelected << m.outputAuxMode << qint64(m.outputAuxWord) << m.tunerFrequencyLimitHF
      << m.tunerFrequencyLimitVUHF;
    rawListOut(s, m.antennaEntries.antennaEntry);
    rawListOut(s, m.auxTimings.auxTiming);
    rawListOut(s, m.antennaRxPaths.antennaRxPath);
}

void rawIn(QDataStream &s, AntennaMatrixConfiguration &m)
{
    s.skipRawData(2);
    s >> m.antennaControlMode >> m.antennaPolarization >> m.antennaPreamplifierState >> m.antennaPathSelected
        >> m.outputAuxMode;
    m.outputAuxWord = int(readInt(s));
    s >> m.tunerFrequencyLimitHF >> m.tunerFrequencyLimitVUHF;
    rawListOnlyIn(s, m.antennaEntries.antennaEntry);
    rawListOnlyIn(s, m.auxTimings.auxTiming);
    rawListOnlyIn(s, m.antennaRxPaths.antennaRxPath);
}

} // namespace

void writeXml(QXmlStreamWriter &w, const AntennaMatrixConfiguration &m)
{
    xmlOut(w, m);
}

void readXml(QXmlStreamReader &r, AntennaMatrixConfiguration &m)
{
    xmlIn(r, m);
}

void writeTagged(QDataStream &s, const AntennaMatrixConfiguration &m)
{
    const qint64 length = openLength(s);
    taggedOut(s, m);
    closeLength(s, length);
}

void readTagged(QDataStream &s, qint32 length, AntennaMatrixConfiguration &m)
{
    taggedIn(s, length, m);
}

void writeRaw(QDataStream &s, const AntennaMatrixConfiguration &m)
{
    rawOut(s, m);
}

void readRaw(QDataStream &s, AntennaMatrixConfiguration &m)
{
    rawIn(s, m);
}

bool operator==(const AntennaMatrixConfiguration &a, const AntennaMatrixConfiguration &b)
{
    return a.antennaControlMode == b.antennaControlMode && a.antennaPolarization == b.antennaPolarization
           && a.antennaPreamplifierState == b.antennaPreamplifierState
           && a.antennaPathSelected == b.antennaPathSelected && a.outputAuxMode == b.outputAuxMode
           && a.outputAuxWord == b.outputAuxWord && a.tunerFrequencyLimitHF == b.tunerFrequencyLimitHF
           && a.tunerFrequencyLimitVUHF == b.tunerFrequencyLimitVUHF
           && sameList(a.antennaEntries.antennaEntry, b.antennaEntries.antennaEntry)
           && sameList(a.auxTimings.auxTiming, b.auxTimings.auxTiming)
           && sameList(a.antennaRxPaths.antennaRxPath, b.antennaRxPaths.antennaRxPath);
}

} // namespace baseline
