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
