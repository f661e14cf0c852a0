// Values of the benchmark's documents.
#include "documents.h"

namespace documents {

namespace {

const QDateTime kStart(QDate(2026, 11, 24), QTime(6, 0), Qt::UTC);

struct Values {
    qint8 item, mode, state;
    int key;
    QDateTime stamp;
    double value;
    QString text;
    QString unit;
};

Values valuesOf(int i)
{
    const qint8 item = qint8(i % 69);
    return Values{item,
                  qint8(i % 9),
                  qint8(i % 3),
                  100000 + i,
                  kStart.addMSecs(qint64(i) * 125),
                  -120.0 + (i % 10000) * 0.37,
                  QStringLiteral("result %1").arg(i % 1000),
                  HALVANE::MeasurementData::MeasurementItemToUnit(item)};
}

} // namespace

HALVANE::ModeManager modeManager()
{
    HALVANE::ModeManager m;
    m.SetValidate(true);
    m.SetRunningState(1);
    m.SetDualState(0);
    m.SetSearchScanMode(4);
    return m;
}

baseline::ModeManager plainModeManager()
{
    return baseline::ModeManager{1, 0, 4};
}

HALVANE::Administration administration()
{
    HALVANE::Administration a;
    a.SetValidate(true);
    a.SetHardwareStatus(1);
    a.SetCW(4);
    HALVANE::SensorMetaData &s = a.GetSensorMetaData();
    s.SetGroup(QStringLiteral("Level"));
    s.SetUnit(QStringLiteral("dBuV"));
    s.GetMinMaxStep().SetMin(-30);
    s.GetMinMaxStep().SetMax(130);
    s.GetMinMaxStep().SetStep(0.5);
    s.SetValueMin(-20);
    s.SetValueMax(120);
    s.SetValueStep(1);
    s.SetMeasurementInvalid(false);
    s.SetOverload(3);
    a.SetDriverType(24);
    a.SetDrvCommands(3);
    a.SetRDSState(2);
    a.SetClearGroup(0);
    a.SetIFPan(2);
    a.SetDF(1);
    a.SetGeneral(0);
    a.SetMassDataStreams(2);
    a.SetSpeed(3);
    return a;
}

baseline::Administration plainAdministration()
{
    baseline::Administration a;
    a.hardwareStatus = 1;
    a.cw = 4;
    a.sensorMetaData = baseline::SensorMetaData{QStringLiteral("Level"), QStringLiteral("dBuV"), {-30, 130, 0.5}, -20,
                                                120, 1, false, 3};
    a.driverType = 24;
    a.drvCommands = 3;
    a.rdsState = 2;
    a.clearGroup = 0;
    a.ifPan = 2;
    a.df = 1;
    a.general = 0;
    a.massDataStreams = 2;
    a.speed = 3;
    return a;
}

HALVANE::MeasurementData measurement(int i)
{
    const Values v = valuesOf(i);
    HALVANE::MeasurementData d;
    d.SetValidate(true);
    d.SetMeasurementItem(v.item);
    d.SetInternalKey(v.key);
    d.SetMeasurementMode(v.mode);
    d.SetMeasurementState(v.state);
    HALVANE::MeasurementResult &r = d.GetMeasurementResult();
    r.SetTimeStamp(v.stamp);
    r.SetDoubleResult(v.value);
    r.SetStringResult(v.text);
    r.SetUnit(v.unit);
    return d;
}

HALVANE::MeasurementResultList results(int count)
{
    HALVANE::MeasurementResultList list;
    list.SetValidate(true);
    list.GetMeasurementData().reserve(count);
    for (int i = 0; i < count; ++i)
        list.AppendMeasurementData(measurement(i));
    return list;
}

baseline::MeasurementResultList plainResults(int count)
{
    baseline::MeasurementResultList list;
    list.measurementData.reserve(count);
    for (int i = 0; i < count; ++i) {
        const Values v = valuesOf(i);
        list.measurementData.append(
            baseline::MeasurementData{v.item, v.key, v.mode, v.state, {v.stamp, v.value, v.text, v.unit}});
    }
    return list;
}

} // namespace documents

// ---- The antenna matrix. Numbers are hundredths, so that their two-decimal
// text reads back to the same double in every form.

namespace documents {

namespace {

double hundredths(int n)
{
    return n / 100.0;
}

} // namespace

baseline::AntennaMatrixConfiguration plainAntennaMatrixConfiguration()
{
    const char *const names[] = {"HF loop", "HF monopole", "V/UHF dipole array", "V/UHF log-periodic",
                                 "U/SHF horn", "S/EHF horn"};
    const char *const rotors[] = {"Rotor north", "Rotor mast", "Rotor roof", "Rotor van"};
    baseline::AntennaMatrixConfiguration m;
    m.antennaControlMode = 1;       // On
    m.antennaPolarization = 2;      // HOR
    m.antennaPreamplifierState = 1; // ON
    m.antennaPathSelected = 3;
    m.outputAuxMode = 1; // ANTC
    m.outputAuxWord = 4660;
    m.tunerFrequencyLimitHF = 30;
    m.tunerFrequencyLimitVUHF = 3000.5;
    for (int i = 0; i < 6; ++i) {
        baseline::AntennaEntry e;
        e.index = 2 * i + 1;
        baseline::AntennaDefinition &d = e.antennaDefinition;
        const QString name = QString::fromLatin1(names[i]);
        d.factorDataSet = QStringLiteral("ANT-%1.fac").arg(2207 + 17 * i);
        d.polarMode = qint8(i % 5);
        d.frequencyStart = hundredths(50 + 2000 * i * i);
        d.frequencyStop = hundredths(3000 + 300000 * i * i);
        d.upperLimitHF = 30;
        d.upperLimitVUHF = hundredths(300000 + 25 * i);
        d.name = name;
        d.valid = i != 4;
        d.antennaPattern.name = name + QStringLiteral(", pattern %1").arg(i);
        for (int p = 0; p < 24 + 4 * i; ++p) {
            d.antennaPattern.curve.append(baseline::Curve{hundredths(50 + 2000 * i * i + 1237 * p * (i + 1)),
                                                          hundredths(((p * 37 + i * 11) % 900) - 150),
                                                          hundredths(6000 + ((p * 531 + i * 97) % 30000))});
        }
        baseline::AntennaConfiguration &c = e.antennaConfiguration;
        c.frequencyStartUsed = hundredths(75 + 2000 * i * i);
        c.frequencyStopUsed = hundredths(2900 + 300000 * i * i);
        c.inputRouteHF = qint8(i % 3);
        c.inputRouteVUHF = qint8(i % 5);
        c.inputRouteSHF = qint8(i % 2);
        c.inputRouteSEHF = qint8((i + 1) % 3);
        c.outputAuxByte = 1 << i;
        c.outputAuxMask = 255 - i;
        c.rxPath = i % 4;
        m.antennaEntries.antennaEntry.append(e);
    }
    for (int i = 0; i < 8; ++i)
        m.auxTimings.auxTiming.append(baseline::AuxTiming{hundredths(i + 2), hundredths(25 * i + 50), 15 - i});
    for (int i = 0; i < 4; ++i) {
        m.antennaRxPaths.antennaRxPath.append(
            baseline::AntennaRxPath{QStringLiteral("Rx path %1").arg(i + 1), QString::fromLatin1(rotors[i]), i});
    }
    return m;
}

// Library side: each field through its setter, nested objects through their
// reference, list items appended one by one.
HALVANE::AntennaMatrixConfiguration antennaMatrixConfiguration()
{
    const baseline::AntennaMatrixConfiguration v = plainAntennaMatrixConfiguration();
    HALVANE::AntennaMatrixConfiguration m;
    m.SetValidate(true);
    m.SetAntennaControlMode(v.antennaControlMode);
    m.SetAntennaPolarization(v.antennaPolarization);
    m.SetAntennaPreamplifierState(v.antennaPreamplifierState);
    m.SetAntennaPathSelected(v.antennaPathSelected);
    m.SetOutputAuxMode(v.outputAuxMode);
    m.SetOutputAuxWord(v.outputAuxWord);
    m.SetTunerFrequencyLimitHF(v.tunerFrequencyLimitHF);
    m.SetTunerFrequencyLimitVUHF(v.tunerFrequencyLimitVUHF);
    for (const baseline::AntennaEntry &ve : v.antennaEntries.antennaEntry) {
        HALVANE::AntennaEntry e;
        HALVANE::AntennaDefinition &d = e.GetAntennaDefinition();
        const baseline::AntennaDefinition &vd = ve.antennaDefinition;
        d.SetFactorDataSet(vd.factorDataSet);
        d.SetPolarMode(vd.polarMode);
        d.SetFrequencyStart(vd.frequencyStart);
        d.SetFrequencyStop(vd.frequencyStop);
        d.SetUpperLimit_HF(vd.upperLimitHF);
        d.SetUpperLimit_VUHF(vd.upperLimitVUHF);
        d.SetName(vd.name);
        d.SetValid(vd.valid);
        HALVANE::AntennaPattern &pattern = d.GetAntennaPattern();
        for (const baseline::Curve &vc : vd.antennaPattern.curve) {
            HALVANE::Curve point;
            point.Setfrequency(vc.frequency);
            point.Setattenuation(vc.attenuation);
            point.Setwidth(vc.width);
            pattern.AppendCurve(point);
        }
        pattern.Setname(vd.antennaPattern.name);
        HALVANE::AntennaConfiguration &c = e.GetAntennaConfiguration();
        const baseline::AntennaConfiguration &vc = ve.antennaConfiguration;
        c.SetFrequencyStartUsed(vc.frequencyStartUsed);
        c.SetFrequencyStopUsed(vc.frequencyStopUsed);
        c.SetInputRoute_HF(vc.inputRouteHF);
        c.SetInputRoute_VUHF(vc.inputRouteVUHF);
        c.SetInputRoute_SHF(vc.inputRouteSHF);
        c.SetInputRoute_SEHF(vc.inputRouteSEHF);
        c.SetOutputAuxByte(vc.outputAuxByte);
        c.SetOutputAuxMask(vc.outputAuxMask);
        c.SetRxPath(vc.rxPath);
        e.Setindex(ve.index);
        m.GetAntennaEntries().AppendAntennaEntry(e);
    }
    for (const baseline::AuxTiming &vt : v.auxTimings.auxTiming) {
        HALVANE::AuxTiming t;
        t.SetAuxSwitchingTime(vt.auxSwitchingTime);
        t.SetAuxGuardTime(vt.auxGuardTime);
        t.Setindex(vt.index);
        m.GetAuxTimings().AppendAuxTiming(t);
    }
    for (const baseline::AntennaRxPath &vp : v.antennaRxPaths.antennaRxPath) {
        HALVANE::AntennaRxPath p;
        p.SetNAME(vp.name);
        p.SetROTOR(vp.rotor);
        p.Setindex(vp.index);
        m.GetAntennaRxPaths().AppendAntennaRxPath(p);
    }
    return m;
}

} // namespace documents
