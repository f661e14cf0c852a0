// The baseline's antenna matrix document: eleven plain structs, written and
// read by hand like the documents of baseline.h. Enumerated values are
// indices into name tables, as in the library; indices, pattern names and
// curve points are attributes in XML.
#ifndef HALVANE_BENCH_BASELINE_ANTENNA_H
#define HALVANE_BENCH_BASELINE_ANTENNA_H

#include <QtCore/QString>
#include <QtCore/QVector>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace baseline {

// One point of a pattern.
struct Curve {
    double frequency = 0;
    double attenuation = 0;
    double width = 0;
};

struct AntennaPattern {
    QVector<Curve> curve;
    QString name;
};

struct AntennaDefinition {
    QString factorDataSet;
    qint8 polarMode = 0; // AUTO
    double frequencyStart = 0;
    double frequencyStop = 0;
    double upperLimitHF = 0;
    double upperLimitVUHF = 0;
    QString name;
    bool valid = false;
    AntennaPattern antennaPattern;
};

struct AntennaConfiguration {
    double frequencyStartUsed = 0;
    double frequencyStopUsed = 0;
    qint8 inputRouteHF = -1;
    qint8 inputRouteVUHF = -1;
    qint8 inputRouteSHF = -1;
    qint8 inputRouteSEHF = -1;
    int outputAuxByte = 0;
    int outputAuxMask = 0;
    int rxPath = 0;
};

struct AntennaEntry {
    AntennaDefinition antennaDefinition;
    AntennaConfiguration antennaConfiguration;
    int index = 0;
};

struct AntennaEntries {
    QVector<AntennaEntry> antennaEntry;
};

struct AuxTiming {
    double auxSwitchingTime = 0;
    double auxGuardTime = 0;
    int index = 0;
};

struct AuxTimings {
    QVector<AuxTiming> auxTiming;
};

struct AntennaRxPath {
    QString name;
    QString rotor;
    int index = 0;
};

struct AntennaRxPaths {
    QVector<AntennaRxPath> antennaRxPath;
};

struct AntennaMatrixConfiguration {
    qint8 antennaControlMode = -1;
    qint8 antennaPolarization = 1;      // VERT
    qint8 antennaPreamplifierState = 0; // OFF
    qint64 antennaPathSelected = 0;
    qint8 outputAuxMode = -1;
    int outputAuxWord = 0;
    double tunerFrequencyLimitHF = 0;
    double tunerFrequencyLimitVUHF = 0;
    AntennaEntries antennaEntries;
    AuxTimings auxTimings;
    AntennaRxPaths antennaRxPaths;
};

// Every field is written: the document is fully populated.
void writeXml(QXmlStreamWriter &w, const AntennaMatrixConfiguration &m);
// With the reader on the document's start element.
void readXml(QXmlStreamReader &r, AntennaMatrixConfiguration &m);
void writeTagged(QDataStream &s, const AntennaMatrixConfiguration &m);
// With the object length already read.
void readTagged(QDataStream &s, qint32 length, AntennaMatrixConfiguration &m);
void writeRaw(QDataStream &s, const AntennaMatrixConfiguration &m);
void readRaw(QDataStream &s, AntennaMatrixConfiguration &m);

bool operator==(const AntennaMatrixConfiguration &a, const AntennaMatrixConfiguration &b);

} // namespace baseline

#endif
