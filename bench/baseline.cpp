// Hand-written XML and QDataStream code for the benchmark's documents: one
// stream operator per value, writeTextElement per field, lengths patched by
// seeking back, names looked up in hashes.
#include "baseline.h"
#include "baseline_io.h"

#include <halvane/halvane.h>

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace baseline {

namespace {

using A = HALVANE::Administration;
using D = HALVANE::MeasurementData;
using M = HALVANE::ModeManager;

const Names &runningStates() { static const Names n(M::GetRunningStates()); return n; }
const Names &dualStates() { static const Names n(M::GetDualStates()); return n; }
const Names &searchScanModes() { static const Names n(Names::of(M::GetSearchScanModes())); return n; }
const Names &hardwareStatus() { static const Names n(A::GetHardwareStatuss()); return n; }
const Names &cws() { static const Names n(Names::of(A::GetCWs())); return n; }
const Names &driverTypes() { static const Names n(Names::of(A::GetDriverTypes())); return n; }
const Names &drvCommands() { static const Names n(A::GetDrvCommandss()); return n; }
const Names &rdsStates() { static const Names n(A::GetRDSStates()); return n; }
const Names &clearGroups() { static const Names n(A::GetClearGroups()); return n; }
const Names &ifPans() { static const Names n(Names::of(A::GetIFPans())); return n; }
const Names &dfs() { static const Names n(Names::of(A::GetDFs())); return n; }
const Names &generals() { static const Names n(Names::of(A::GetGenerals())); return n; }
const Names &massDataStreams() { static const Names n(Names::of(A::GetMassDataStreamss())); return n; }
const Names &speeds() { static const Names n(A::GetSpeeds()); return n; }
const Names &items() { static const Names n(Names::of(D::GetMeasurementItems())); return n; }
const Names &modes() { static const Names n(D::GetMeasurementModes()); return n; }
const Names &states() { static const Names n(D::GetMeasurementStates()); return n; }

// ---- XML

void writeMinMaxStep(QXmlStreamWriter &w, const MinMaxStep &m)
{
    w.writeStartElement(QStringLiteral("MinMaxStep"));
    w.writeTextElement(QStringLiteral("Min"), number(m.min));
    w.writeTextElement(QStringLiteral("Max"), number(m.max));
    w.writeTextElement(QStringLiteral("Step"), number(m.step));
    w.writeEndElement();
}

void writeSensorMetaData(QXmlStreamWriter &w, const SensorMetaData &s)
{
    w.writeStartElement(QStringLiteral("SensorMetaData"));
    w.writeTextElement(QStringLiteral("Group"), s.group);
    w.writeTextElement(QStringLiteral("Unit"), s.unit);
    writeMinMaxStep(w, s.minMaxStep);
    w.writeTextElement(QStringLiteral("ValueMin"), number(s.valueMin));
    w.writeTextElement(QStringLiteral("ValueMax"), number(s.valueMax));
    w.writeTextElement(QStringLiteral("ValueStep"), number(s.valueStep));
    w.writeTextElement(QStringLiteral("MeasurementInvalid"),
                       s.measurementInvalid ? QStringLiteral("true") : QStringLiteral("false"));
    w.writeTextElement(QStringLiteral("Overload"), QString::number(s.overload));
    w.writeEndElement();
}

void writeMeasurementData(QXmlStreamWriter &w, const MeasurementData &d)
{
    w.writeStartElement(QStringLiteral("MeasurementData"));
    w.writeTextElement(QStringLiteral("MeasurementItem"), items().name(d.measurementItem));
    w.writeTextElement(QStringLiteral("InternalKey"), QString::number(d.internalKey));
    w.writeTextElement(QStringLiteral("MeasurementMode"), modes().name(d.measurementMode));
    w.writeTextElement(QStringLiteral("MeasurementState"), states().name(d.measurementState));
    const MeasurementResult &r = d.measurementResult;
    w.writeStartElement(QStringLiteral("MeasurementResult"));
    w.writeAttribute(QStringLiteral("Unit"), r.unit);
    w.writeTextElement(QStringLiteral("TimeStamp"), dateText(r.timeStamp));
    w.writeTextElement(QStringLiteral("DoubleResult"), number(r.doubleResult));
    w.writeTextElement(QStringLiteral("StringResult"), r.stringResult);
    w.writeEndElement();
    w.writeEndElement();
}

bool isBool(const QString &text)
{
    const QString lower = text.toLower();
    return lower != QLatin1String("0") && lower != QLatin1String("false");
}

void readMinMaxStep(QXmlStreamReader &r, MinMaxStep &m)
{
    while (r.readNextStartElement()) {
        if (r.name() == QLatin1String("Min"))
            m.min = r.readElementText().toDouble();
        else if (r.name() == QLatin1String("Max"))
            m.max = r.readElementText().toDouble();
        else if (r.name() == QLatin1String("Step"))
            m.step = r.readElementText().toDouble();
        else
            r.skipCurrentElement();
    }
}

void readSensorMetaData(QXmlStreamReader &r, SensorMetaData &s)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("Group"))
            s.group = r.readElementText();
        else if (name == QLatin1String("Unit"))
            s.unit = r.readElementText();
        else if (name == QLatin1String("MinMaxStep"))
            readMinMaxStep(r, s.minMaxStep);
        else if (name == QLatin1String("ValueMin"))
            s.valueMin = r.readElementText().toDouble();
        else if (name == QLatin1String("ValueMax"))
            s.valueMax = r.readElementText().toDouble();
        else if (name == QLatin1String("ValueStep"))
            s.valueStep = r.readElementText().toDouble();
        else if (name == QLatin1String("MeasurementInvalid"))
            s.measurementInvalid = isBool(r.readElementText());
        else if (name == QLatin1String("Overload"))
            s.overload = r.readElementText().toInt();
        else
            r.skipCurrentElement();
    }
}

void readMeasurementResult(QXmlStreamReader &r, MeasurementResult &m)
{
    m.unit = r.attributes().value(QLatin1String("Unit")).toString();
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("TimeStamp"))
            m.timeStamp = dateFromText(r.readElementText());
        else if (name == QLatin1String("DoubleResult"))
            m.doubleResult = r.readElementText().toDouble();
        else if (name == QLatin1String("StringResult"))
            m.stringResult = r.readElementText();
        else if (name == QLatin1String("Unit"))
            m.unit = r.readElementText();
        else
            r.skipCurrentElement();
    }
}

void readMeasurementData(QXmlStreamReader &r, MeasurementData &d)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("MeasurementItem"))
            d.measurementItem = items().find(r.readElementText());
        else if (name == QLatin1String("InternalKey"))
            d.internalKey = r.readElementText().toInt();
        else if (name == QLatin1String("MeasurementMode"))
            d.measurementMode = modes().find(r.readElementText());
        else if (name == QLatin1String("MeasurementState"))
            d.measurementState = states().find(r.readElementText());
        else if (name == QLatin1String("MeasurementResult"))
            readMeasurementResult(r, d.measurementResult);
        else
            r.skipCurrentElement();
    }
}

// ---- QDataStream helpers

void intRecord(QDataStream &s, quint32 tag, qint64 value)
{
    s << qint32(tag) << qint32(8) << value;
}

qint64 readInt(QDataStream &s)
{
    qint64 v;
    s >> v;
    return v;
}

void writeMinMaxStepTagged(QDataStream &s, const MinMaxStep &m)
{
    s << qint32(0xC693EC10);
    const qint64 length = openLength(s);
    numberRecord(s, 0x4ECB4E58, m.min);
    numberRecord(s, 0x6E8DD7F5, m.max);
    numberRecord(s, 0x0BB0BDA2, m.step);
    closeLength(s, length);
}

void writeSensorMetaDataTagged(QDataStream &s, const SensorMetaData &m)
{
    s << qint32(0x07DACADD);
    const qint64 length = openLength(s);
    textRecord(s, 0x02786BC3, m.group);
    textRecord(s, 0x88871B46, m.unit);
    writeMinMaxStepTagged(s, m.minMaxStep);
    numberRecord(s, 0x82AD481D, m.valueMin);
    numberRecord(s, 0x8DDD066A, m.valueMax);
    numberRecord(s, 0xAF1C7565, m.valueStep);
    s << qint32(0x8CC0EF8B) << qint32(1) << m.measurementInvalid;
    intRecord(s, 0x0552B24C, m.overload);
    closeLength(s, length);
}

void readMinMaxStepTagged(QDataStream &s, qint32 length, MinMaxStep &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case 0x4ECB4E58: m.min = readNumber(s); return true;
        case 0x6E8DD7F5: m.max = readNumber(s); return true;
        case 0x0BB0BDA2: m.step = readNumber(s); return true;
        default: return false;
        }
    });
}

void readSensorMetaDataTagged(QDataStream &s, qint32 length, SensorMetaData &m)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case 0x02786BC3: m.group = readText(s); return true;
        case 0x88871B46: m.unit = readText(s); return true;
        case 0xC693EC10: readMinMaxStepTagged(s, recordLength, m.minMaxStep); return true;
        case 0x82AD481D: m.valueMin = readNumber(s); return true;
        case 0x8DDD066A: m.valueMax = readNumber(s); return true;
        case 0xAF1C7565: m.valueStep = readNumber(s); return true;
        case 0x8CC0EF8B: s >> m.measurementInvalid; return true;
        case 0x0552B24C: m.overload = int(readInt(s)); return true;
        default: return false;
        }
    });
}

void readMeasurementResultTagged(QDataStream &s, qint32 length, MeasurementResult &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case 0x88871B46: m.unit = readText(s); return true;
        case 0x48B92D4D: m.timeStamp = dateFromText(readText(s)); return true;
        case 0xC082A1C3: m.doubleResult = readNumber(s); return true;
        case 0xCFE03D2A: m.stringResult = readText(s); return true;
        default: return false;
        }
    });
}

void readMeasurementDataTagged(QDataStream &s, qint32 length, MeasurementData &d)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case 0xAF02C080: d.measurementItem = items().find(readText(s)); return true;
        case 0xACB208C7: d.internalKey = int(readInt(s)); return true;
        case 0x07F21ECA: d.measurementMode = modes().find(readText(s)); return true;
        case 0xC4DC1675: d.measurementState = states().find(readText(s)); return true;
        case 0xEE3E130B: readMeasurementResultTagged(s, recordLength, d.measurementResult); return true;
        default: return false;
        }
    });
}

void writeSensorMetaDataRaw(QDataStream &s, const SensorMetaData &m)
{
    s << quint8(0xFF) << m.group << m.unit << quint8(0x07) << m.minMaxStep.min << m.minMaxStep.max
      << m.minMaxStep.step << m.valueMin << m.valueMax << m.valueStep << m.measurementInvalid << qint64(m.overload);
}

void readSensorMetaDataRaw(QDataStream &s, SensorMetaData &m)
{
    quint8 bits, nestedBits;
    qint64 overload;
    s >> bits >> m.group >> m.unit >> nestedBits >> m.minMaxStep.min >> m.minMaxStep.max >> m.minMaxStep.step
        >> m.valueMin >> m.valueMax >> m.valueStep >> m.measurementInvalid >> overload;
    m.overload = int(overload);
}

} // namespace

void writeXml(QXmlStreamWriter &w, const ModeManager &m)
{
    w.writeStartElement(QStringLiteral("ModeManager"));
    w.writeTextElement(QStringLiteral("RunningState"), runningStates().name(m.runningState));
    w.writeTextElement(QStringLiteral("DualState"), dualStates().name(m.dualState));
    w.writeTextElement(QStringLiteral("SearchScanMode"), searchScanModes().name(m.searchScanMode));
    w.writeEndElement();
}

void writeXml(QXmlStreamWriter &w, const Administration &a)
{
    w.writeStartElement(QStringLiteral("Administration"));
    w.writeTextElement(QStringLiteral("HardwareStatus"), hardwareStatus().name(a.hardwareStatus));
    w.writeTextElement(QStringLiteral("CW"), cws().name(a.cw));
    writeSensorMetaData(w, a.sensorMetaData);
    w.writeTextElement(QStringLiteral("DriverType"), driverTypes().name(a.driverType));
    w.writeTextElement(QStringLiteral("DrvCommands"), drvCommands().name(a.drvCommands));
    w.writeTextElement(QStringLiteral("RDSState"), rdsStates().name(a.rdsState));
    w.writeTextElement(QStringLiteral("ClearGroup"), clearGroups().name(a.clearGroup));
    w.writeTextElement(QStringLiteral("IFPan"), ifPans().name(a.ifPan));
    w.writeTextElement(QStringLiteral("DF"), dfs().name(a.df));
    w.writeTextElement(QStringLiteral("General"), generals().name(a.general));
    w.writeTextElement(QStringLiteral("MassDataStreams"), massDataStreams().name(a.massDataStreams));
    w.writeTextElement(QStringLiteral("Speed"), speeds().name(a.speed));
    w.writeEndElement();
}

void writeXml(QXmlStreamWriter &w, const MeasurementResultList &l)
{
    w.writeStartElement(QStringLiteral("MeasurementResultList"));
    for (const MeasurementData &d : l.measurementData)
        writeMeasurementData(w, d);
    w.writeEndElement();
}

void readXml(QXmlStreamReader &r, ModeManager &m)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("RunningState"))
            m.runningState = runningStates().find(r.readElementText());
        else if (name == QLatin1String("DualState"))
            m.dualState = dualStates().find(r.readElementText());
        else if (name == QLatin1String("SearchScanMode"))
            m.searchScanMode = searchScanModes().find(r.readElementText());
        else
            r.skipCurrentElement();
    }
}

void readXml(QXmlStreamReader &r, Administration &a)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("SensorMetaData")) {
            readSensorMetaData(r, a.sensorMetaData);
            continue;
        }
        struct Field {
            const char *element;
            const Names &(*names)();
            qint8 Administration::*member;
        };
        static const Field fields[] = {
            {"HardwareStatus", hardwareStatus, &Administration::hardwareStatus},
            {"CW", cws, &Administration::cw},
            {"DriverType", driverTypes, &Administration::driverType},
            {"DrvCommands", drvCommands, &Administration::drvCommands},
            {"RDSState", rdsStates, &Administration::rdsState},
            {"ClearGroup", clearGroups, &Administration::clearGroup},
            {"IFPan", ifPans, &Administration::ifPan},
            {"DF", dfs, &Administration::df},
            {"General", generals, &Administration::general},
            {"MassDataStreams", massDataStreams, &Administration::massDataStreams},
            {"Speed", speeds, &Administration::speed},
        };
        bool known = false;
        for (const Field &f : fields) {
            if (name == QLatin1String(f.element)) {
                a.*f.member = f.names().find(r.readElementText());
                known = true;
                break;
            }
        }
        if (!known)
            r.skipCurrentElement();
    }
}

void readXml(QXmlStreamReader &r, MeasurementResultList &l)
{
    while (r.readNextStartElement()) {
        if (r.name() == QLatin1String("MeasurementData")) {
            MeasurementData d;
            readMeasurementData(r, d);
            l.measurementData.append(d);
        } else {
            r.skipCurrentElement();
        }
    }
}

void writeTagged(QDataStream &s, const ModeManager &m)
{
    const qint64 length = openLength(s);
    textRecord(s, 0xA2170003, runningStates().name(m.runningState));
    textRecord(s, 0xE15535C6, dualStates().name(m.dualState));
    textRecord(s, 0xA98C8F75, searchScanModes().name(m.searchScanMode));
    closeLength(s, length);
}

void writeTagged(QDataStream &s, const Administration &a)
{
    const qint64 length = openLength(s);
    textRecord(s, 0x4A9D9E6D, hardwareStatus().name(a.hardwareStatus));
    textRecord(s, 0x09424B7A, cws().name(a.cw));
    writeSensorMetaDataTagged(s, a.sensorMetaData);
    textRecord(s, 0x847224C8, driverTypes().name(a.driverType));
    textRecord(s, 0xC62F03F7, drvCommands().name(a.drvCommands));
    textRecord(s, 0x84B421D9, rdsStates().name(a.rdsState));
    textRecord(s, 0x0C5A9CDD, clearGroups().name(a.clearGroup));
    textRecord(s, 0x820A8C66, ifPans().name(a.ifPan));
    textRecord(s, 0x2ECD1629, dfs().name(a.df));
    textRecord(s, 0x67D29DAB, generals().name(a.general));
    textRecord(s, 0x22950530, massDataStreams().name(a.massDataStreams));
    textRecord(s, 0x6C209A63, speeds().name(a.speed));
    closeLength(s, length);
}

void writeTagged(QDataStream &s, const MeasurementResultList &l)
{
    const qint64 length = openLength(s);
    s << qint32(0xCCA6575E);
    const qint64 list = openLength(s);
    s << qint32(l.measurementData.size());
    for (const MeasurementData &d : l.measurementData) {
        const qint64 item = openLength(s);
        textRecord(s, 0xAF02C080, items().name(d.measurementItem));
        intRecord(s, 0xACB208C7, d.internalKey);
        textRecord(s, 0x07F21ECA, modes().name(d.measurementMode));
        textRecord(s, 0xC4DC1675, states().name(d.measurementState));
        const MeasurementResult &r = d.measurementResult;
        s << qint32(0xEE3E130B);
        const qint64 result = openLength(s);
        textRecord(s, 0x88871B46, r.unit);
        textRecord(s, 0x48B92D4D, dateText(r.timeStamp));
        numberRecord(s, 0xC082A1C3, r.doubleResult);
        textRecord(s, 0xCFE03D2A, r.stringResult);
        closeLength(s, result);
        closeLength(s, item);
    }
    closeLength(s, list);
    closeLength(s, length);
}

void readTagged(QDataStream &s, qint32 length, ModeManager &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case 0xA2170003: m.runningState = runningStates().find(readText(s)); return true;
        case 0xE15535C6: m.dualState = dualStates().find(readText(s)); return true;
        case 0xA98C8F75: m.searchScanMode = searchScanModes().find(readText(s)); return true;
        default: return false;
        }
    });
}

void readTagged(QDataStream &s, qint32 length, Administration &a)
{
    readRecords(s, length, [&](quint32 tag, qint32 recordLength) {
        switch (tag) {
        case 0x4A9D9E6D: a.hardwareStatus = hardwareStatus().find(readText(s)); return true;
        case 0x09424B7A: a.cw = cws().find(readText(s)); return true;
        case 0x07DACADD: readSensorMetaDataTagged(s, recordLength, a.sensorMetaData); return true;
        case 0x847224C8: a.driverType = driverTypes().find(readText(s)); return true;
        case 0xC62F03F7: a.drvCommands = drvCommands().find(readText(s)); return true;
        case 0x84B421D9: a.rdsState = rdsStates().find(readText(s)); return true;
        case 0x0C5A9CDD: a.clearGroup = clearGroups().find(readText(s)); return true;
        case 0x820A8C66: a.ifPan = ifPans().find(readText(s)); return true;
        case 0x2ECD1629: a.df = dfs().find(readText(s)); return true;
        case 0x67D29DAB: a.general = generals().find(readText(s)); return true;
        case 0x22950530: a.massDataStreams = massDataStreams().find(readText(s)); return true;
        case 0x6C209A63: a.speed = speeds().find(readText(s)); return true;
        default: return false;
        }
    });
}

void readTagged(QDataStream &s, qint32 length, MeasurementResultList &l)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        if (tag != 0xCCA6575E)
            return false;
        qint32 count;
        s >> count;
        for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
            qint32 itemLength;
            s >> itemLength;
            MeasurementData d;
            readMeasurementDataTagged(s, itemLength, d);
            l.measurementData.append(d);
        }
        return true;
    });
}

void writeRaw(QDataStream &s, const ModeManager &m)
{
    s << quint8(0x07) << m.runningState << m.dualState << m.searchScanMode;
}

void writeRaw(QDataStream &s, const Administration &a)
{
    s << quint8(0xFF) << quint8(0x0F) << a.hardwareStatus << a.cw;
    writeSensorMetaDataRaw(s, a.sensorMetaData);
    s << a.driverType << a.drvCommands << a.rdsState << a.clearGroup << a.ifPan << a.df << a.general
      << a.massDataStreams << a.speed;
}

void writeRaw(QDataStream &s, const MeasurementResultList &l)
{
    s << quint8(0x01) << qint32(l.measurementData.size());
    for (const MeasurementData &d : l.measurementData) {
        const MeasurementResult &r = d.measurementResult;
        s << quint8(0x1F) << d.measurementItem << qint64(d.internalKey) << d.measurementMode << d.measurementState
          << quint8(0x0F) << r.timeStamp << r.doubleResult << r.stringResult << r.unit;
    }
}

void readRaw(QDataStream &s, ModeManager &m)
{
    quint8 bits;
    s >> bits >> m.runningState >> m.dualState >> m.searchScanMode;
}

void readRaw(QDataStream &s, Administration &a)
{
    quint8 bits[2];
    s >> bits[0] >> bits[1] >> a.hardwareStatus >> a.cw;
    readSensorMetaDataRaw(s, a.sensorMetaData);
    s >> a.driverType >> a.drvCommands >> a.rdsState >> a.clearGroup >> a.ifPan >> a.df >> a.general
        >> a.massDataStreams >> a.speed;
}

void readRaw(QDataStream &s, MeasurementResultList &l)
{
    quint8 bits;
    qint32 count;
    s >> bits >> count;
    for (qint32 i = 0; i < count && s.status() == QDataStream::Ok; ++i) {
        MeasurementData d;
        MeasurementResult &r = d.measurementResult;
        qint64 key;
        quint8 itemBits, resultBits;
        s >> itemBits >> d.measurementItem >> key >> d.measurementMode >> d.measurementState >> resultBits
            >> r.timeStamp >> r.doubleResult >> r.stringResult >> r.unit;
        d.internalKey = int(key);
        l.measurementData.append(d);
    }
}

bool operator==(const MeasurementResultList &a, const MeasurementResultList &b)
{
    if (a.measurementData.size() != b.measurementData.size())
        return false;
    for (int i = 0; i < a.measurementData.size(); ++i) {
        const MeasurementData &x = a.measurementData[i];
        const MeasurementData &y = b.measurementData[i];
        if (x.measurementItem != y.measurementItem || x.internalKey != y.internalKey
            || x.measurementMode != y.measurementMode || x.measurementState != y.measurementState
            || x.measurementResult.timeStamp != y.measurementResult.timeStamp
            || x.measurementResult.doubleResult != y.measurementResult.doubleResult
            || x.measurementResult.stringResult != y.measurementResult.stringResult
            || x.measurementResult.unit != y.measurementResult.unit)
            return false;
    }
    return true;
}

} // namespace baseline
