// halvane-crossversion: writes sample documents of every class in every form
// (XML text, binary block, compressed block, raw form on a pinned stream), or
// checks that documents written by another build (Qt 5 or Qt 6) read back
// equal and write again to the same text and bytes.
//
//   halvane-crossversion write DIR
//   halvane-crossversion check DIR
#include <halvane/halvane.h>

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtCore/QTimeZone>

#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

using namespace HALVANE;

namespace {

struct Sample {
    QString name;
    std::function<QByteArray(const QString &form)> write;                // this build's bytes of a form
    std::function<QString(const QString &form, const QByteArray &)> check; // empty when equal
};

QByteArray rawBytes(const std::function<void(QDataStream &)> &write)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    s.setVersion(QDataStream::Qt_5_12);
    write(s);
    return bytes;
}

template <class X>
Sample sample(const QString &name, const X &object)
{
    auto write = [object](const QString &form) {
        if (form == QLatin1String("xml"))
            return object.GetXmlString().toUtf8();
        if (form == QLatin1String("hvb"))
            return object.GetBinaryRepresentationAsQByteArray();
        if (form == QLatin1String("hvz"))
            return object.GetCompressedBinaryRepresentation();
        return rawBytes([&](QDataStream &s) { object.GetVersionSpecificBinaryWithoutValidation(s); });
    };
    auto check = [object, write](const QString &form, const QByteArray &bytes) -> QString {
        X back;
        back.SetValidate(object.GetValidate());
        try {
            if (form == QLatin1String("xml")) {
                back.SetXmlString(QString::fromUtf8(bytes));
            } else if (form == QLatin1String("hvb")) {
                back.SetBinaryRepresentation(bytes);
            } else if (form == QLatin1String("hvz")) {
                back.SetCompressedBinaryRepresentation(bytes);
            } else {
                QDataStream s(bytes);
                s.setVersion(QDataStream::Qt_5_12);
                back.SetVersionSpecificBinaryWithoutValidation(s);
                if (s.status() != QDataStream::Ok)
                    return QStringLiteral("the raw form did not read to its end");
            }
        } catch (const QuilletRootException &e) {
            return e.GetMessage();
        }
        // XML and the tagged form keep two decimals: compare their text.
        const bool exact = form == QLatin1String("raw");
        if (exact && !(back == object))
            return QStringLiteral("read back unequal");
        if (!exact && back.GetXmlString() != object.GetXmlString())
            return QStringLiteral("read back to another text");
        X again(back);
        again.SetValidate(object.GetValidate());
        QByteArray rewritten;
        if (form == QLatin1String("xml"))
            rewritten = again.GetXmlString().toUtf8();
        else if (form == QLatin1String("hvb"))
            rewritten = again.GetBinaryRepresentationAsQByteArray();
        else if (form == QLatin1String("hvz"))
            rewritten = qUncompress(again.GetCompressedBinaryRepresentation());
        else
            rewritten = rawBytes([&](QDataStream &s) { again.GetVersionSpecificBinaryWithoutValidation(s); });
        const QByteArray expected = form == QLatin1String("hvz") ? qUncompress(bytes) : bytes;
        if (rewritten != expected)
            return QStringLiteral("written again to other bytes");
        return QString();
    };
    return Sample{name, write, check};
}

// A class known only through the registry, with its example document: every
// field set. Read back, it is compared through its XML text and its raw bytes.
Sample registrySample(const schema::Class &c)
{
    const schema::Class *cls = &c;
    auto make = [cls]() {
        std::shared_ptr<QUILLET::IQuilletObject> object(cls->create());
        object->SetValidate(true);
        return object;
    };
    std::shared_ptr<QUILLET::IQuilletObject> object = make();
    object->SetXmlString(schema::exampleXml(c));
    auto raw = [cls](const QUILLET::IQuilletObject &o) { return rawBytes([&](QDataStream &s) { cls->writeRaw(o, s); }); };
    auto formOf = [raw](const QUILLET::IQuilletObject &o, const QString &form) {
        if (form == QLatin1String("xml"))
            return o.GetXmlString().toUtf8();
        if (form == QLatin1String("hvb"))
            return o.GetBinaryRepresentationAsQByteArray();
        if (form == QLatin1String("hvz"))
            return qUncompress(o.GetCompressedBinaryRepresentation());
        return raw(o);
    };
    auto write = [object, formOf](const QString &form) {
        return form == QLatin1String("hvz") ? object->GetCompressedBinaryRepresentation() : formOf(*object, form);
    };
    auto check = [cls, object, make, raw, formOf](const QString &form, const QByteArray &bytes) -> QString {
        std::shared_ptr<QUILLET::IQuilletObject> back = make();
        try {
            if (form == QLatin1String("xml")) {
                back->SetXmlString(QString::fromUtf8(bytes));
            } else if (form == QLatin1String("hvb")) {
                back->SetBinaryRepresentation(bytes);
            } else if (form == QLatin1String("hvz")) {
                back->SetCompressedBinaryRepresentation(bytes);
            } else {
                QDataStream s(bytes);
                s.setVersion(QDataStream::Qt_5_12);
                cls->readRaw(*back, s);
                if (s.status() != QDataStream::Ok)
                    return QStringLiteral("the raw form did not read to its end");
            }
        } catch (const QuilletRootException &e) {
            return e.GetMessage();
        }
        if (back->GetXmlString() != object->GetXmlString())
            return QStringLiteral("read back to another text");
        if (raw(*back) != raw(*object))
            return QStringLiteral("read back to other raw bytes");
        if (formOf(*back, form) != (form == QLatin1String("hvz") ? qUncompress(bytes) : bytes))
            return QStringLiteral("written again to other bytes");
        return QString();
    };
    return Sample{c.name, write, check};
}

MeasurementResult result(const QDateTime &stamp, double value)
{
    MeasurementResult r;
    r.SetTimeStamp(stamp);
    r.SetDoubleResult(value);
    r.SetStringResult(QStringLiteral("Wert ü %1").arg(value));
    r.SetUnit(QStringLiteral("dBµV"));
    return r;
}

// The antenna matrix: a station with one antenna, a timing and a path, and a
// pattern document; every class of the subsystem is a sample of its own.
std::vector<Sample> antennaSamples()
{
    AntennaPattern pattern;
    pattern.SetValidate(true);
    pattern.Setname(QStringLiteral("Horn ✓"));
    for (int i = 0; i < 5; ++i) {
        Curve c;
        c.Setfrequency(1000.0 / 3 * (i + 1));
        c.Setattenuation(-0.125 * i);
        c.Setwidth(45.5 - i);
        pattern.AppendCurve(c);
    }
    AntennaPatterns patterns;
    patterns.SetValidate(true);
    patterns.AppendAntennaPattern(pattern);

    AntennaMatrixConfiguration station;
    station.SetValidate(true);
    station.ResetToDefault();
    station.SetAntennaControlMode(1);
    station.SetAntennaPathSelected(10);
    station.SetOutputAuxMode(2);
    station.SetOutputAuxWord(65535);
    station.SetTunerFrequencyLimitHF(30.000001);
    station.SetTunerFrequencyLimitVUHF(3000);
    AntennaEntry entry;
    entry.Setindex(31);
    AntennaDefinition &d = entry.GetAntennaDefinition();
    d.SetFactorDataSet(QStringLiteral("Faktoren ü"));
    d.SetPolarMode(4);
    d.SetFrequencyStart(0.009);
    d.SetFrequencyStop(8000.5);
    d.SetUpperLimit_HF(30);
    d.SetUpperLimit_VUHF(3000);
    d.SetName(QStringLiteral("Horn"));
    d.SetValid(false);
    d.SetAntennaPattern(pattern);
    AntennaConfiguration &c = entry.GetAntennaConfiguration();
    c.SetFrequencyStartUsed(1.005);
    c.SetFrequencyStopUsed(2);
    c.SetInputRoute_HF(2);
    c.SetInputRoute_VUHF(4);
    c.SetInputRoute_SHF(1);
    c.SetInputRoute_SEHF(2);
    c.SetOutputAuxByte(255);
    c.SetOutputAuxMask(0);
    c.SetRxPath(10);
    station.GetAntennaEntries().AppendAntennaEntry(entry);
    AuxTiming timing;
    timing.Setindex(15);
    timing.SetAuxSwitchingTime(0.005);
    timing.SetAuxGuardTime(4.999);
    station.GetAuxTimings().AppendAuxTiming(timing);
    AntennaRxPath path;
    path.Setindex(10);
    path.SetNAME(QStringLiteral(""));
    path.SetROTOR(QStringLiteral("Rotor ä"));
    station.GetAntennaRxPaths().AppendAntennaRxPath(path);

    return {sample(QStringLiteral("AntennaMatrixConfiguration"), station),
            sample(QStringLiteral("AntennaEntries"), station.GetAntennaEntries()),
            sample(QStringLiteral("AntennaEntry"), entry),
            sample(QStringLiteral("AntennaDefinition"), entry.GetAntennaDefinition()),
            sample(QStringLiteral("AntennaConfiguration"), entry.GetAntennaConfiguration()),
            sample(QStringLiteral("AuxTimings"), station.GetAuxTimings()),
            sample(QStringLiteral("AuxTiming"), timing),
            sample(QStringLiteral("AntennaRxPaths"), station.GetAntennaRxPaths()),
            sample(QStringLiteral("AntennaRxPath"), path),
            sample(QStringLiteral("AntennaPatterns"), patterns),
            sample(QStringLiteral("AntennaPattern"), pattern),
            sample(QStringLiteral("Curve"), pattern.GetCurve().at(4))};
}

std::vector<Sample> samples()
{
    const QDateTime utc(QDate(2026, 11, 24), QTime(12, 34, 56, 789), Qt::UTC);
    const QDateTime offset(QDate(2026, 11, 24), QTime(12, 34, 56, 789), Qt::OffsetFromUTC, 5 * 3600 + 1800);
    const QDateTime zone(QDate(2026, 7, 1), QTime(8, 0), QTimeZone("Europe/Berlin"));
    const QDateTime local(QDate(1999, 12, 31), QTime(23, 59, 59, 999), Qt::LocalTime);

    ModeManager mode;
    mode.SetValidate(true);
    mode.SetRunningState(1);
    mode.SetDualState(0);
    mode.SetSearchScanMode(7);

    Administration admin;
    admin.SetValidate(true);
    admin.SetHardwareStatus(1);
    admin.SetCW(10);
    admin.SetDriverType(33);
    admin.SetDrvCommands(38);
    admin.SetRDSState(2);
    admin.SetClearGroup(1);
    admin.SetIFPan(3);
    admin.SetDF(7);
    admin.SetGeneral(1);
    admin.SetMassDataStreams(16);
    admin.SetSpeed(3);
    SensorMetaData &meta = admin.GetSensorMetaData();
    meta.SetGroup(QStringLiteral("Pegel"));
    meta.SetUnit(QStringLiteral("dBµV"));
    meta.GetMinMaxStep().SetMin(-0.125);
    meta.GetMinMaxStep().SetMax(1e9 + 0.5);
    meta.GetMinMaxStep().SetStep(1.0 / 3);
    meta.SetValueMin(-1);
    meta.SetValueMax(2.5);
    meta.SetValueStep(0.01);
    meta.SetMeasurementInvalid(true);
    meta.SetOverload(-7);

    MeasurementList items;
    items.SetValidate(true);
    for (int i = 0; i < 69; i += 7)
        items.AppendMeasurementItem(MeasurementList::MeasurementItem(i));
    items.SetRecordingState(1);

    MeasurementResultList results;
    results.SetValidate(true);
    const QDateTime stamps[] = {utc, offset, zone, local};
    for (int i = 0; i < 4; ++i) {
        MeasurementData d;
        d.SetValidate(true);
        d.SetMeasurementItem(MeasurementData::MeasurementItem(i * 17));
        d.SetInternalKey(-1 - i);
        d.SetMeasurementMode(MeasurementData::MeasurementMode(i));
        d.SetMeasurementState(MeasurementData::MeasurementState(i % 3));
        d.SetMeasurementResult(result(stamps[i], 12.345 * i));
        results.AppendMeasurementData(d);
    }

    RDSResult rds;
    rds.SetValidate(true);
    rds.SetProgramName(QStringLiteral("Radio ✓"));
    rds.SetPICode(QStringLiteral("D3C2"));

    // Every settings class, filled from the registry's example, with
    // date-times of other kinds and a prefix of each sort.
    ReceiverSettings settings;
    settings.SetValidate(true);
    settings.SetXmlString(schema::exampleXml(*schema::findClass(QStringLiteral("ReceiverSettings"))));
    settings.GetDVSettings().SetDVTime(offset);
    settings.GetIQSettings().SetIQTime(zone);
    QVector<ModulationSettings> &modulations = settings.GetSensorSettings().GetModulationSettings();
    modulations[0].SetPrefix(QString(QLatin1String("")));
    modulations[1].ResetPrefix();
    settings.GetDFSettings().AppendSignalPath(QStringLiteral("Pfad ü"));

    std::vector<Sample> all = {sample(QStringLiteral("ModeManager"), mode),
                               sample(QStringLiteral("Administration"), admin),
                               sample(QStringLiteral("SensorMetaData"), admin.GetSensorMetaData()),
                               sample(QStringLiteral("MinMaxStep"), admin.GetSensorMetaData().GetMinMaxStep()),
                               sample(QStringLiteral("MeasurementList"), items),
                               sample(QStringLiteral("MeasurementResultList"), results),
                               sample(QStringLiteral("MeasurementData"), results.GetMeasurementData().at(2)),
                               sample(QStringLiteral("MeasurementResult"), results.GetMeasurementData().at(1).GetMeasurementResult()),
                               sample(QStringLiteral("RDSResult"), rds),
                               sample(QStringLiteral("ReceiverSettings"), settings)};
    for (Sample &s : antennaSamples())
        all.push_back(std::move(s));
    return all;
}

// The samples above, and every other class of the registry by its example.
std::vector<Sample> allSamples()
{
    std::vector<Sample> all = samples();
    QSet<QString> named;
    for (const Sample &s : all)
        named.insert(s.name);
    for (const schema::Class *c : schema::classes()) {
        if (!named.contains(c->name))
            all.push_back(registrySample(*c));
    }
    return all;
}

const char *const kForms[] = {"xml", "hvb", "hvz", "raw"};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3 || (qstrcmp(argv[1], "write") != 0 && qstrcmp(argv[1], "check") != 0)) {
        std::fprintf(stderr, "usage: halvane-crossversion write|check DIR\n");
        return 2;
    }
    const bool write = qstrcmp(argv[1], "write") == 0;
    const QDir dir(QString::fromLocal8Bit(argv[2]));
    if (write && !QDir().mkpath(dir.path())) {
        std::fprintf(stderr, "halvane-crossversion: cannot make %s\n", argv[2]);
        return 1;
    }
    int failures = 0;
    int checked = 0;
    for (const Sample &s : allSamples()) {
        for (const char *form : kForms) {
            const QString file = dir.filePath(s.name + QLatin1Char('.') + QLatin1String(form));
            QFile f(file);
            if (write) {
                if (!f.open(QIODevice::WriteOnly) || f.write(s.write(QLatin1String(form))) < 0) {
                    std::fprintf(stderr, "%s: cannot write\n", qPrintable(file));
                    ++failures;
                }
                continue;
            }
            ++checked;
            const QString problem = f.open(QIODevice::ReadOnly) ? s.check(QLatin1String(form), f.readAll())
                                                                : QStringLiteral("missing");
            if (!problem.isEmpty()) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(file), qPrintable(problem));
                ++failures;
            }
        }
    }
    if (!write)
        std::printf("%d passed, %d failed\n", checked - failures, failures);
    return failures ? 1 : 0;
}
