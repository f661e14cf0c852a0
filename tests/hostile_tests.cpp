// Input made to hurt: raw lengths and counts that lie, date-times Qt cannot
// write back, deep XML. Each ends in the library's exception or a clean
// refusal, quickly and within bounded memory (the tagged form's lies are in
// binary_tests and cutstream_tests, documents with a DTD in
// base_interface_tests). Findings of the fuzz targets are kept here by name.
#include "support.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QTemporaryFile>
#include <QtCore/QTimeZone>
#include <QtCore/QtEndian>

using namespace HALVANE;

namespace {

// Reads \a bytes in the raw form and writes the object in all three forms.
template <class T>
QDataStream::Status readRawThenWriteAll(const QByteArray &bytes, T &object)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_12);
    object.SetVersionSpecificBinaryWithoutValidation(in);
    test::xml(object);
    test::tagged(object);
    test::raw(object);
    return in.status();
}

QByteArray rawResult(qint8 timeSpec, const QByteArray &zoneTail)
{
    // One presence byte (time stamp only), then the date-time as Qt 5 lays it
    // out: Julian day, milliseconds, time spec and what that time spec needs.
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    s.setVersion(QDataStream::Qt_5_12);
    s << quint8(0x01) << qint64(2461000) << quint32(3600000) << timeSpec;
    s.writeRawData(zoneTail.constData(), int(zoneTail.size()));
    return bytes;
}

} // namespace

TEST(Hostile, RawDateTimesThatQtCannotWriteBack)
{
    // A zone name Qt does not know, and time spec bytes out of range: Qt
    // would accept them and then crash writing the value. They are refused
    // as corrupt data and leave a null date-time, which every form writes.
    const auto zoneName = [](const QString &name) {
        return test::written([&](QDataStream &s) {
            s.setVersion(QDataStream::Qt_5_12);
            s << name;
        });
    };
    const QByteArray zone = zoneName(QStringLiteral("Nowhere/Atlantis"));
    MeasurementResult unknownZone;
    EXPECT_EQ(readRawThenWriteAll(rawResult(Qt::TimeZone, zone), unknownZone), QDataStream::ReadCorruptData);
    EXPECT_TRUE(unknownZone.GetTimeStamp().isNull());
    for (qint8 timeSpec : {qint8(4), qint8(-1), qint8(127)}) {
        MeasurementResult r;
        EXPECT_EQ(readRawThenWriteAll(rawResult(timeSpec, QByteArray()), r), QDataStream::ReadCorruptData) << int(timeSpec);
        EXPECT_TRUE(r.GetTimeStamp().isNull()) << int(timeSpec);
    }
    // An offset of INT_MIN seconds (once undefined behaviour in the reader).
    MeasurementResult farOff;
    EXPECT_EQ(readRawThenWriteAll(rawResult(Qt::OffsetFromUTC, QByteArray::fromHex("80000000")), farOff),
              QDataStream::ReadCorruptData);
    EXPECT_TRUE(farOff.GetTimeStamp().isNull());

    // A known zone and an offset read as Qt writes them.
    const QByteArray berlin = zoneName(QStringLiteral("Europe/Berlin"));
    MeasurementResult inZone;
    EXPECT_EQ(readRawThenWriteAll(rawResult(Qt::TimeZone, berlin), inZone), QDataStream::Ok);
    EXPECT_EQ(inZone.GetTimeStamp().timeZone().id(), QByteArray("Europe/Berlin"));
    EXPECT_EQ(test::written([&](QDataStream &s) {
                  s.setVersion(QDataStream::Qt_5_12);
                  inZone.GetVersionSpecificBinaryWithoutValidation(s);
              }),
              rawResult(Qt::TimeZone, berlin));

    // The same through a device that is not a QBuffer.
    const QByteArray bytes = rawResult(Qt::TimeZone, zone);
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(bytes);
    file.seek(0);
    QDataStream in(&file);
    in.setVersion(QDataStream::Qt_5_12);
    MeasurementResult viaFile;
    viaFile.SetVersionSpecificBinaryWithoutValidation(in);
    EXPECT_FALSE(test::raw(viaFile).isEmpty());

    // A date-time made with a zone that is not valid is written as a null one.
    MeasurementResult made;
    made.SetTimeStamp(QDateTime(QDate(2026, 1, 1), QTime(1, 2), QTimeZone()));
    MeasurementResult back;
    test::readRaw(back, test::raw(made));
    EXPECT_TRUE(back.GetTimeStamp().isNull() || !back.GetTimeStamp().isValid());
    EXPECT_TRUE(back.IsTimeStampSet());
}

TEST(Hostile, CountsAndLengthsInTheRawForm)
{
    // Counts of 0x7FFFFFFF and below zero: nothing is read beyond the bytes,
    // of a list of values and of a list of objects.
    for (qint32 count : {0x7FFFFFFF, -1, qint32(0x80000000)}) {
        const QByteArray bytes = test::written([&](QDataStream &s) { s << quint8(1) << count; });
        MeasurementList list;
        long long before = test::allocations();
        readRawThenWriteAll(bytes, list);
        EXPECT_LT(test::allocations() - before, 50);
        EXPECT_EQ(list.GetMeasurementItem().size(), 0);
        MeasurementResultList results;
        QDataStream::Status status = QDataStream::Ok;
        before = test::allocations();
        const long long largest = test::largestAllocation([&] { status = readRawThenWriteAll(bytes + '\0', results); });
        EXPECT_LT(test::allocations() - before, 50);
        EXPECT_LT(largest, 4096); // no room made for what the count claims
        EXPECT_EQ(results.GetMeasurementData().size(), 0);
        if (count > 0) { // a negative count reads as no items
            EXPECT_NE(status, QDataStream::Ok);
        }
    }
    // String length words that claim more than there is.
    for (quint32 word : {0x7FFFFFFEu, 0xFFFFFFFEu, 0x80000000u}) {
        QByteArray bytes;
        QDataStream s(&bytes, QIODevice::WriteOnly);
        s << quint8(3) << word << quint32(0);
        RDSResult r;
        const QDataStream::Status status = readRawThenWriteAll(bytes, r);
        EXPECT_NE(status, QDataStream::Ok) << word;
        EXPECT_TRUE(r.GetProgramName().isEmpty());
    }
}

TEST(Hostile, DeepXml)
{
    // 100 000 levels of unknown elements inside a known object.
    const int depth = 100000;
    QString deep = QStringLiteral("<ModeManager><RunningState>On</RunningState>");
    deep.reserve(depth * 8 + 100);
    for (int i = 0; i < depth; ++i)
        deep += QStringLiteral("<x>");
    for (int i = 0; i < depth; ++i)
        deep += QStringLiteral("</x>");
    deep += QStringLiteral("<DualState>Off</DualState></ModeManager>");
    ModeManager m;
    m.SetXmlString(deep);
    EXPECT_EQ(m.GetRunningState(), 1);
    EXPECT_EQ(m.GetDualState(), 0);
}

namespace {

QString statusName(QDataStream::Status status)
{
    switch (status) {
    case QDataStream::Ok:
        return QStringLiteral("Ok");
    case QDataStream::ReadPastEnd:
        return QStringLiteral("ReadPastEnd");
    case QDataStream::ReadCorruptData:
        return QStringLiteral("ReadCorruptData");
    default:
        return QString::number(int(status));
    }
}

// The version of the streams the fuzz targets read from: Qt 5's default.
constexpr int kFuzzStreamVersion = QDataStream::Qt_5_15;

// How a saved fuzz input reads: the class its first four bytes name, then
// the stream's status (raw form) or the refusal's message, or "read".
QString replay(const QString &form, const QByteArray &input)
{
    if (input.size() < 4)
        return QStringLiteral("(no class id)");
    const schema::Class *c = schema::findClassById(qFromBigEndian<quint32>(input.constData()));
    if (!c)
        return QStringLiteral("(unknown class id)");
    const QByteArray document = input.mid(4);
    auto object = c->create();
    QString outcome = QStringLiteral("read");
    try {
        if (form == QLatin1String("xml")) {
            object->SetXmlString(QString::fromUtf8(document));
        } else if (form == QLatin1String("raw")) {
            object->SetValidate(false);
            QDataStream s(document);
            s.setVersion(kFuzzStreamVersion);
            c->readRaw(*object, s);
            outcome = QStringLiteral("status ") + statusName(s.status());
        } else if (!document.isEmpty() && (document[0] & 1)) {
            if (document[0] & 2)
                object->SetCompressedBinaryRepresentation(document.mid(1));
            else
                object->SetBinaryRepresentation(document.mid(1));
        } else {
            QDataStream s(document.mid(1));
            s.setVersion(kFuzzStreamVersion);
            qint32 length = 0;
            s >> length;
            object->SetBinary(s, length);
        }
    } catch (const QuilletRootException &e) {
        outcome = e.GetMessage();
    }
    // Whatever was read can be written in every form.
    try {
        test::xml(*object);
        test::tagged(*object);
        test::written([&](QDataStream &s) { c->writeRaw(*object, s); });
    } catch (const QuilletRootException &) {
    }
    return c->name + QStringLiteral(": ") + outcome;
}

} // namespace

TEST(Hostile, SavedFuzzFindingsReplay)
{
    // Every input the fuzz targets once failed on, with what it does now:
    // read in its form, then written in all three. Each names its class by
    // id, so that classes added later do not make it read another class.
    const QMap<QString, QString> expected = {
        // Read a date-time offset of INT_MIN seconds, once negated.
        {QStringLiteral("raw/offset-of-int-min"), QStringLiteral("MeasurementResultList: status ReadCorruptData")},
        // A zone Qt does not know, once written back by Qt and crashed.
        {QStringLiteral("raw/zone-name-not-known"), QStringLiteral("MeasurementResultList: status ReadCorruptData")},
        // A compressed block of 1 573 bytes claiming 1.5 MB, within the limit.
        {QStringLiteral("tagged/compressed-claim-within-limit"), QStringLiteral("ModeManager: ModeManager: compressed block is corrupt")},
    };
    const QDir findings(QStringLiteral(HALVANE_SOURCE_DIR "/fuzz/findings"));
    int replayed = 0;
    for (const QString &form : {QStringLiteral("xml"), QStringLiteral("tagged"), QStringLiteral("raw")}) {
        const QDir dir(findings.filePath(form));
        for (const QString &name : dir.entryList(QDir::Files)) {
            QFile f(dir.filePath(name));
            ASSERT_TRUE(f.open(QIODevice::ReadOnly));
            const QString key = form + QLatin1Char('/') + name;
            EXPECT_EQ(replay(form, f.readAll()).toStdString(),
                      expected.value(key, QStringLiteral("(no outcome kept)")).toStdString())
                << key.toStdString();
            ++replayed;
        }
    }
    EXPECT_EQ(replayed, expected.size());
}
