// Tagged input that the stream cuts short, or whose records run past their
// object, read from a QBuffer, a file and two kinds of pipe. Each device must
// give the same result: the records read so far stay, the error names the
// object whose length did not add up, and the stream stands just after the
// last byte that the records took, so that the next reader gets the rest.
#include "support.h"

#include <QtCore/QTemporaryFile>

#include <cstring>
#include <memory>

using namespace HALVANE;
using test::Records;

namespace {

// A one-way device, as a pipe or a socket is: no position, nothing to seek.
// An announcing pipe tells how many bytes it holds; a quiet one tells only
// whether it holds any, so that a reader takes its bytes read by read.
class Pipe : public QIODevice
{
public:
    Pipe(const QByteArray &bytes, bool announce) : m_bytes(bytes), m_announce(announce)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override
    {
        const qint64 left = m_bytes.size() - m_at;
        return QIODevice::bytesAvailable() + (m_announce ? left : qMin<qint64>(left, 1));
    }
    /*! The largest number of bytes asked of the device at once. */
    qint64 largestRequest() const { return m_largest; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        m_largest = qMax(m_largest, maxSize);
        const qint64 n = qMin(maxSize, qint64(m_bytes.size()) - m_at);
        if (n > 0)
            std::memcpy(data, m_bytes.constData() + m_at, size_t(n));
        m_at += n;
        return n;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_at = 0;
    qint64 m_largest = 0;
    bool m_announce;
};

enum class Via { Buffer, File, AnnouncingPipe, QuietPipe };
constexpr Via kVias[] = {Via::Buffer, Via::File, Via::AnnouncingPipe, Via::QuietPipe};

const char *nameOf(Via via)
{
    static const char *const names[] = {"QBuffer", "file", "announcing pipe", "quiet pipe"};
    return names[int(via)];
}

/*! What a read did to the stream, and how it ended. */
struct Outcome {
    QString error;          // exception class and message; empty when none
    qint64 taken = 0;       // bytes of the stream consumed, the length word included
    QDataStream::Status status = QDataStream::Ok;
};

/*! A device holding \a bytes, positioned at their start. */
std::unique_ptr<QIODevice> deviceFor(Via via, const QByteArray &bytes)
{
    switch (via) {
    case Via::Buffer: {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(bytes);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    case Via::File: {
        auto file = std::make_unique<QTemporaryFile>();
        EXPECT_TRUE(file->open());
        file->write(bytes);
        file->seek(0);
        return file;
    }
    case Via::AnnouncingPipe:
    case Via::QuietPipe:
        break;
    }
    return std::make_unique<Pipe>(bytes, via == Via::AnnouncingPipe);
}

/*! Reads \a object with SetBinary from a stream that holds the object length
    \a length, then \a records, and checks where the stream was left: the
    device's position, and the bytes that the next reader gets. */
template <class T>
Outcome readVia(Via via, T &object, qint32 length, const QByteArray &records, qint64 *largestRequest = nullptr)
{
    const QByteArray bytes = Records().i32(length).bytes(records).data();
    const std::unique_ptr<QIODevice> device = deviceFor(via, bytes);
    QDataStream in(device.get());
    qint32 read = 0;
    in >> read;
    Outcome out;
    try {
        object.SetBinary(in, read);
    } catch (const BinaryParsingException &e) {
        out.error = QStringLiteral("BinaryParsingException: ") + e.GetMessage();
    } catch (const OutOfRangeException &e) {
        out.error = QStringLiteral("OutOfRangeException: ") + e.GetMessage();
    } catch (const QuilletException &e) {
        out.error = QStringLiteral("QuilletException: ") + e.GetMessage();
    }
    out.status = in.status();
    if (largestRequest)
        *largestRequest = device->isSequential() ? static_cast<Pipe *>(device.get())->largestRequest() : 0;
    const qint64 position = device->pos();
    const QByteArray rest = device->readAll();
    out.taken = bytes.size() - rest.size();
    if (!device->isSequential()) {
        EXPECT_EQ(position, out.taken);
    }
    // The rest is the stream's own tail: nothing peeked was lost or repeated.
    EXPECT_EQ(test::hex(rest), test::hex(bytes.mid(int(out.taken))));
    return out;
}

QString lengthError(const char *objectName)
{
    return QStringLiteral("BinaryParsingException: ") + test::lengthError(QString::fromLatin1(objectName));
}

/*! Reads the same input on every device into a fresh T made by \a make and
    expects \a expected of each; \a check looks at the object. */
template <class T>
void expectOnEveryDevice(qint32 length, const QByteArray &records, const Outcome &expected,
                         const std::function<void(T &)> &check, const std::function<T()> &make = [] { return T(); })
{
    for (Via via : kVias) {
        SCOPED_TRACE(nameOf(via));
        T object = make();
        const Outcome out = readVia(via, object, length, records);
        EXPECT_EQ(out.error.toStdString(), expected.error.toStdString());
        EXPECT_EQ(out.taken, expected.taken);
        EXPECT_EQ(out.status, expected.status);
        check(object);
    }
}

using test::administration;

MeasurementData measurement(int key)
{
    return test::measurement(key, key / 4.0);
}

// Field tags of the records made by hand below.
constexpr quint32 kHardwareStatus = 0x4A9D9E6D;
constexpr quint32 kCW = 0x09424B7A;
constexpr quint32 kSensorMetaData = 0x07DACADD;
constexpr quint32 kGroup = 0x02786BC3;
constexpr quint32 kUnit = 0x88871B46;
constexpr quint32 kMinMaxStep = 0xC693EC10;
constexpr quint32 kMin = 0x4ECB4E58;
constexpr quint32 kMax = 0x6E8DD7F5;
constexpr quint32 kMeasurementInvalid = 0x8CC0EF8B;
constexpr quint32 kOverload = 0x0552B24C;
constexpr quint32 kMeasurementData = 0xCCA6575E;
constexpr quint32 kInternalKey = 0xACB208C7;
constexpr quint32 kRunningState = 0xA2170003;
constexpr quint32 kDualState = 0xE15535C6;
constexpr quint32 kSearchScanMode = 0xA98C8F75;

} // namespace

TEST(CutStream, WholeObjectsLeaveTheRestToTheNextReader)
{
    const QByteArray form = test::tagged(administration());
    const qint32 length = qint32(form.size() - 4);
    const QByteArray next = Records().textRecord(kRunningState, "On").data();
    expectOnEveryDevice<Administration>(length, form.mid(4) + next, {QString(), form.size(), QDataStream::Ok},
                                        [](Administration &a) { EXPECT_TRUE(a == administration()); });

    MeasurementResultList list;
    for (int key = 1; key <= 3; ++key)
        list.AppendMeasurementData(measurement(key));
    const QByteArray listForm = test::tagged(list);
    expectOnEveryDevice<MeasurementResultList>(qint32(listForm.size() - 4), listForm.mid(4) + next,
                                               {QString(), listForm.size(), QDataStream::Ok},
                                               [&](MeasurementResultList &back) { EXPECT_TRUE(back == list); });
}

TEST(CutStream, StreamEndingInsideTheObject)
{
    const QByteArray form = test::tagged(administration());
    const qint32 length = qint32(form.size() - 4);

    // The stream ends between two records: the complete ones stay, the loop
    // stops at the end, and no read ran past it.
    const QByteArray twoRecords = Records()
                                      .textRecord(kHardwareStatus, Administration::HardwareStatusToName(6).toUtf8())
                                      .textRecord(kCW, Administration::CWToName(10).toUtf8())
                                      .data();
    expectOnEveryDevice<Administration>(length, twoRecords,
                                        {lengthError("Administration"), 4 + twoRecords.size(), QDataStream::Ok},
                                        [](Administration &a) {
                                            EXPECT_EQ(a.GetHardwareStatus(), 6);
                                            EXPECT_EQ(a.GetCW(), 10);
                                            EXPECT_TRUE(a.IsHardwareStatusSet());
                                            EXPECT_TRUE(a.IsCWSet());
                                            EXPECT_FALSE(a.IsSensorMetaDataSet());
                                            EXPECT_FALSE(a.IsDriverTypeSet());
                                        });

    // It ends inside the nested object: the nested object reports, and the
    // owner does not count it as set, though it keeps what it read.
    const QByteArray intoNested = Records()
                                      .textRecord(kHardwareStatus, Administration::HardwareStatusToName(2).toUtf8())
                                      .i32(qint32(kSensorMetaData))
                                      .i32(200)
                                      .textRecord(kGroup, "Level")
                                      .data();
    expectOnEveryDevice<Administration>(length, intoNested,
                                        {lengthError("SensorMetaData"), 4 + intoNested.size(), QDataStream::Ok},
                                        [](Administration &a) {
                                            EXPECT_EQ(a.GetHardwareStatus(), 2);
                                            EXPECT_FALSE(a.IsSensorMetaDataSet());
                                            EXPECT_TRUE(a.GetSensorMetaData().IsGroupSet());
                                            EXPECT_EQ(a.GetSensorMetaData().GetGroup(), QStringLiteral("Level"));
                                            EXPECT_FALSE(a.GetSensorMetaData().IsUnitSet());
                                        });

    // Every cut of a real form: all devices agree with the quiet pipe, which
    // can only be read record by record, and each cut is a length error.
    const QString objects[] = {lengthError("Administration"), lengthError("SensorMetaData"), lengthError("MinMaxStep")};
    for (int cut = 0; cut < form.size() - 4; ++cut) {
        SCOPED_TRACE(cut);
        Administration reference;
        const Outcome expected = readVia(Via::QuietPipe, reference, length, form.mid(4, cut));
        EXPECT_TRUE(std::find(std::begin(objects), std::end(objects), expected.error) != std::end(objects))
            << expected.error.toStdString();
        EXPECT_EQ(expected.taken, 4 + cut);
        for (Via via : {Via::Buffer, Via::File, Via::AnnouncingPipe}) {
            SCOPED_TRACE(nameOf(via));
            Administration a;
            const Outcome out = readVia(via, a, length, form.mid(4, cut));
            EXPECT_EQ(out.error, expected.error);
            EXPECT_EQ(out.taken, expected.taken);
            EXPECT_EQ(out.status, expected.status);
            EXPECT_EQ(test::xml(a), test::xml(reference));
            EXPECT_EQ(test::hex(test::raw(a)), test::hex(test::raw(reference)));
        }
    }
}

TEST(CutStream, RecordsRunningPastTheirObject)
{
    // The object's length ends inside the second record: that record is read
    // from the stream all the same, and the third is left for the next reader.
    const QByteArray three = Records()
                                 .textRecord(kRunningState, "On")
                                 .textRecord(kDualState, ModeManager::DualStateToName(1).toUtf8())
                                 .textRecord(kSearchScanMode, ModeManager::SearchScanModeToName(0).toUtf8())
                                 .data();
    const int first = 8 + 4 + 2;
    const int second = 8 + 4 + ModeManager::DualStateToName(1).toUtf8().size();
    expectOnEveryDevice<ModeManager>(first + 4, three,
                                     {lengthError("ModeManager"), 4 + first + second, QDataStream::Ok},
                                     [](ModeManager &m) {
                                         EXPECT_EQ(m.GetRunningState(), 1);
                                         EXPECT_EQ(m.GetDualState(), 1);
                                         EXPECT_TRUE(m.IsDualStateSet());
                                         EXPECT_FALSE(m.IsSearchScanModeSet());
                                     });

    // A value that takes fewer bytes than its record claims: the lengths add
    // up, the reader takes only the value, and the rest of the record lies
    // before the next reader. No device may have taken more.
    const QByteArray longBool = Records().i32(qint32(kMeasurementInvalid)).i32(9).byte(1).bytes("ABCDEFGH").data();
    expectOnEveryDevice<SensorMetaData>(17, longBool, {QString(), 4 + 8 + 1, QDataStream::Ok}, [](SensorMetaData &s) {
        EXPECT_TRUE(s.IsMeasurementInvalidSet());
        EXPECT_TRUE(s.GetMeasurementInvalid());
    });

    // A nested object whose record runs past its own length reports by its
    // own name; its owners keep what they read before and leave it unset.
    const QByteArray nested = Records()
                                  .textRecord(kHardwareStatus, Administration::HardwareStatusToName(3).toUtf8())
                                  .i32(qint32(kSensorMetaData))
                                  .i32(60)
                                  .textRecord(kGroup, "grp")
                                  .i32(qint32(kMinMaxStep))
                                  .i32(12)
                                  .textRecord(kMin, "1.50")
                                  .textRecord(kMax, "2.50")
                                  .textRecord(kUnit, "dB")
                                  .data();
    const int throughMin =
        8 + 4 + Administration::HardwareStatusToName(3).toUtf8().size() + 8 + (8 + 4 + 3) + 8 + (8 + 4 + 4);
    expectOnEveryDevice<Administration>(nested.size(), nested,
                                        {lengthError("MinMaxStep"), 4 + throughMin, QDataStream::Ok},
                                        [](Administration &a) {
                                            EXPECT_EQ(a.GetHardwareStatus(), 3);
                                            EXPECT_FALSE(a.IsSensorMetaDataSet());
                                            SensorMetaData &s = a.GetSensorMetaData();
                                            EXPECT_EQ(s.GetGroup(), QStringLiteral("grp"));
                                            EXPECT_FALSE(s.IsMinMaxStepSet());
                                            EXPECT_TRUE(s.GetMinMaxStep().IsMinSet());
                                            EXPECT_EQ(s.GetMinMaxStep().GetMin(), 1.5);
                                            EXPECT_FALSE(s.GetMinMaxStep().IsMaxSet());
                                            EXPECT_FALSE(s.IsUnitSet());
                                        });
}

TEST(CutStream, ListItems)
{
    const QByteArray one = test::tagged(measurement(1));
    const QByteArray two = test::tagged(measurement(2));

    // The second item's record runs past the item's length: the first item
    // stays, the second is not appended, and the item reports.
    const QByteArray keyRecord = Records().record(kInternalKey, [](Records &r) { r.i64(7); }).data();
    const QByteArray overrun = Records()
                                   .i32(qint32(kMeasurementData))
                                   .i32(1000)
                                   .i32(2)
                                   .bytes(one)
                                   .i32(10)
                                   .bytes(keyRecord)
                                   .bytes(two)
                                   .data();
    expectOnEveryDevice<MeasurementResultList>(
        overrun.size(), overrun,
        {lengthError("MeasurementData"), 4 + 8 + 4 + one.size() + 4 + keyRecord.size(), QDataStream::Ok},
        [](MeasurementResultList &l) {
            ASSERT_EQ(l.GetMeasurementData().size(), 1);
            EXPECT_TRUE(l.GetMeasurementData()[0] == measurement(1));
        });

    // The count promises three items and the stream ends after two: the
    // third one's length word runs short, and the list's owner reports.
    const QByteArray shortList = Records().i32(qint32(kMeasurementData)).i32(1000).i32(3).bytes(one).bytes(two).data();
    expectOnEveryDevice<MeasurementResultList>(
        shortList.size() + 100, shortList,
        {lengthError("MeasurementResultList"), 4 + shortList.size(), QDataStream::ReadPastEnd},
        [](MeasurementResultList &l) {
            ASSERT_EQ(l.GetMeasurementData().size(), 2);
            EXPECT_TRUE(l.GetMeasurementData()[1] == measurement(2));
        });
}

TEST(CutStream, ValuesCutByTheEndOfTheStream)
{
    // A text whose length word promises 40 bytes, where 5 remain: QDataStream
    // takes the 5 and gives an empty array, which the setter stores. The
    // lengths add up, yet the read past the end is the object's length error.
    const QByteArray cutText = Records().i32(qint32(kGroup)).i32(4 + 40).i32(40).bytes("Level").data();
    expectOnEveryDevice<SensorMetaData>(8 + 44, cutText,
                                        {lengthError("SensorMetaData"), 4 + cutText.size(), QDataStream::ReadPastEnd},
                                        [](SensorMetaData &s) {
                                            EXPECT_TRUE(s.IsGroupSet());
                                            EXPECT_EQ(s.GetGroup(), QStringLiteral(""));
                                            EXPECT_FALSE(s.GetGroup().isNull());
                                        });

    // An integer cut after three of its eight bytes reads as 0, and a record
    // cut inside its length word has length 0 and a value read as 0.
    const QByteArray cutInt =
        Records().textRecord(kUnit, "dB").i32(qint32(kOverload)).i32(8).bytes("\x01\x02\x03").data();
    expectOnEveryDevice<SensorMetaData>(100, cutInt,
                                        {lengthError("SensorMetaData"), 4 + cutInt.size(), QDataStream::ReadPastEnd},
                                        [](SensorMetaData &s) {
                                            EXPECT_EQ(s.GetUnit(), QStringLiteral("dB"));
                                            EXPECT_TRUE(s.IsOverloadSet());
                                            EXPECT_EQ(s.GetOverload(), 0);
                                        });
    const QByteArray cutHeader = Records().i32(qint32(kMeasurementInvalid)).bytes(QByteArray(2, '\0')).data();
    expectOnEveryDevice<SensorMetaData>(9, cutHeader, {lengthError("SensorMetaData"), 4 + 6, QDataStream::ReadPastEnd},
                                        [](SensorMetaData &s) {
                                            EXPECT_TRUE(s.IsMeasurementInvalidSet());
                                            EXPECT_FALSE(s.GetMeasurementInvalid());
                                        });

    // With validation on the setter sees the empty name first, and refuses it.
    const QByteArray cutName = Records()
                                   .textRecord(kCW, Administration::CWToName(4).toUtf8())
                                   .i32(qint32(kHardwareStatus))
                                   .i32(14)
                                   .i32(10)
                                   .bytes("Ready")
                                   .data();
    expectOnEveryDevice<Administration>(
        100, cutName,
        {QStringLiteral("OutOfRangeException: "
                        "enum is not valid (classname=Administration,membername=m_hardwareStatus)"),
         4 + cutName.size(), QDataStream::ReadPastEnd},
        [](Administration &a) {
            EXPECT_EQ(a.GetCW(), 4);
            EXPECT_FALSE(a.IsHardwareStatusSet());
        },
        [] {
            Administration a;
            a.SetValidate(true);
            return a;
        });

    // An unknown record is skipped as far as the stream goes.
    const QByteArray unknown =
        Records().textRecord(kRunningState, "On").i32(0x0BADF00D).i32(100).bytes("0123456789").data();
    expectOnEveryDevice<ModeManager>(8 + 4 + 2 + 108, unknown,
                                     {lengthError("ModeManager"), 4 + unknown.size(), QDataStream::ReadPastEnd},
                                     [](ModeManager &m) { EXPECT_EQ(m.GetRunningState(), 1); });
}

TEST(CutStream, MemoryFollowsTheBytesThatArrive)
{
    // Lengths and counts that claim far more than a pipe holds: the reader
    // asks the device for no more than a page at a time.
    struct Case {
        const char *what;
        qint32 length;
        QByteArray records;
        QString error;
    };
    const Case cases[] = {
        {"object length", 0x7FFFFFF0, Records().textRecord(kRunningState, "On").data(), lengthError("ModeManager")},
        {"text length", 100, Records().i32(qint32(kRunningState)).i32(14).i32(0x7FFFFFFE).bytes("Standby").data(),
         lengthError("ModeManager")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        for (Via via : {Via::AnnouncingPipe, Via::QuietPipe}) {
            SCOPED_TRACE(nameOf(via));
            ModeManager m;
            qint64 largest = 0;
            const Outcome out = readVia(via, m, c.length, c.records, &largest);
            EXPECT_EQ(out.error, c.error);
            EXPECT_LE(largest, 4096);
        }
    }
    MeasurementResultList list;
    for (Via via : kVias) {
        SCOPED_TRACE(nameOf(via));
        qint64 largest = 0;
        const QByteArray hugeCount = Records().i32(qint32(kMeasurementData)).i32(4).i32(0x7FFFFFFF).data();
        const Outcome out = readVia(via, list, 12, hugeCount, &largest);
        EXPECT_EQ(out.error, lengthError("MeasurementResultList"));
        EXPECT_EQ(list.GetMeasurementData().size(), 0);
        EXPECT_LE(largest, 4096);
    }
}
