// The benchmark's baseline: the same documents as plain structs, written and
// read by hand with QXmlStreamWriter/QXmlStreamReader and QDataStream, the way
// a careful developer would without the library. A test proves that it writes
// exactly the library's text and bytes, so the two are compared like for like.
#ifndef HALVANE_BENCH_BASELINE_H
#define HALVANE_BENCH_BASELINE_H

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QVector>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace baseline {

struct ModeManager {
    qint8 runningState = -1;
    qint8 dualState = -1;
    qint8 searchScanMode = -1;
};

struct MinMaxStep {
    double min = 0;
    double max = 0;
    double step = 0;
};

struct SensorMetaData {
    QString group;
    QString unit;
    MinMaxStep minMaxStep;
    double valueMin = 0;
    double valueMax = 0;
    double valueStep = 0;
    bool measurementInvalid = false;
    int overload = 0;
};

struct Administration {
    qint8 hardwareStatus = -1;
    qint8 cw = -1;
    SensorMetaData sensorMetaData;
    qint8 driverType = -1;
    qint8 drvCommands = -1;
    qint8 rdsState = -1;
    qint8 clearGroup = -1;
    qint8 ifPan = -1;
    qint8 df = -1;
    qint8 general = -1;
    qint8 massDataStreams = -1;
    qint8 speed = -1;
};

struct MeasurementResult {
    QDateTime timeStamp;
    double doubleResult = 0;
    QString stringResult;
    QString unit;
};

struct MeasurementData {
    qint8 measurementItem = -1;
    int internalKey = 0;
    qint8 measurementMode = -1;
    qint8 measurementState = -1;
    MeasurementResult measurementResult;
};

struct MeasurementResultList {
    QVector<MeasurementData> measurementData;
};

// Every field of these documents is set: the hand-written code writes them all.
void writeXml(QXmlStreamWriter &w, const ModeManager &m);
void writeXml(QXmlStreamWriter &w, const Administration &a);
void writeXml(QXmlStreamWriter &w, const MeasurementResultList &l);
// With the reader on the document's start element.
void readXml(QXmlStreamReader &r, ModeManager &m);
void readXml(QXmlStreamReader &r, Administration &a);
void readXml(QXmlStreamReader &r, MeasurementResultList &l);

// Tagged form: object length, then records; lengths patched by seeking back.
void writeTagged(QDataStream &s, const ModeManager &m);
void writeTagged(QDataStream &s, const Administration &a);
void writeTagged(QDataStream &s, const MeasurementResultList &l);
// With the object length already read.
void readTagged(QDataStream &s, qint32 length, ModeManager &m);
void readTagged(QDataStream &s, qint32 length, Administration &a);
void readTagged(QDataStream &s, qint32 length, MeasurementResultList &l);

void writeRaw(QDataStream &s, const ModeManager &m);
void writeRaw(QDataStream &s, const Administration &a);
void writeRaw(QDataStream &s, const MeasurementResultList &l);
void readRaw(QDataStream &s, ModeManager &m);
void readRaw(QDataStream &s, Administration &a);
void readRaw(QDataStream &s, MeasurementResultList &l);

bool operator==(const MeasurementResultList &a, const MeasurementResultList &b);

} // namespace baseline

#endif
