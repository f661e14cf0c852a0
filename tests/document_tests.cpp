// The object base: date-time text, whole XML documents and files, binary
// blocks with their header, and the compressed variant.
#include "support.h"

#include "base/binaryheader.h"

#include "../bench/documents.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>
#include <QtCore/QtEndian>

using namespace HALVANE;
using test::expectThrow;
using test::fullModeManager;

namespace {

void expectSameDateTime(const QDateTime &back, const QDateTime &t)
{
    const std::string text = Converters::ToString(t).toStdString();
    ASSERT_EQ(back.isNull(), t.isNull()) << text;
    ASSERT_EQ(back.isValid(), t.isValid()) << text;
    ASSERT_TRUE(back == t) << text;
    ASSERT_EQ(back.timeSpec(), t.timeSpec()) << text;
    ASSERT_EQ(back.date(), t.date()) << text;
    ASSERT_EQ(back.time(), t.time()) << text;
    if (t.timeSpec() == Qt::OffsetFromUTC) {
        ASSERT_EQ(back.offsetFromUtc(), t.offsetFromUtc()) << text;
    }
    if (t.timeSpec() == Qt::TimeZone) {
        ASSERT_EQ(back.timeZone().id(), t.timeZone().id()) << text;
    }
    ASSERT_EQ(Converters::ToString(back).toStdString(), text);
}

} // namespace

TEST(DateTimeText, ExactTexts)
{
    const QDate day(2024, 2, 29);
    const QTime time(13, 5, 9, 7);
    EXPECT_EQ(Converters::ToString(QDateTime(day, time, Qt::UTC)), QStringLiteral("2024-02-29T13:05:09.007Z"));
    EXPECT_EQ(Converters::ToString(QDateTime(day, time, Qt::LocalTime)), QStringLiteral("2024-02-29T13:05:09.007"));
    EXPECT_EQ(Converters::ToString(QDateTime(day, time, Qt::OffsetFromUTC, -(5 * 3600 + 30 * 60))),
              QStringLiteral("2024-02-29T13:05:09.007-05:30"));
    EXPECT_EQ(Converters::ToString(QDateTime(day, time, Qt::OffsetFromUTC, 3600 + 7)),
              QStringLiteral("2024-02-29T13:05:09.007+01:00:07"));
    EXPECT_EQ(Converters::ToString(QDateTime(day, time, QTimeZone("Europe/Berlin"))),
              QStringLiteral("2024-02-29T13:05:09.007[Europe/Berlin]"));
    EXPECT_EQ(Converters::ToString(QDateTime(QDate(-4713, 1, 1), QTime(0, 0), Qt::UTC)),
              QStringLiteral("-4713-01-01T00:00:00.000Z"));
    EXPECT_EQ(Converters::ToString(QDateTime(QDate(275000, 12, 31), QTime(23, 59, 59, 999), Qt::UTC)),
              QStringLiteral("+275000-12-31T23:59:59.999Z"));
    EXPECT_EQ(Converters::ToString(QDateTime()), QStringLiteral(""));
    EXPECT_FALSE(Converters::ToString(QDateTime()).isNull());
    EXPECT_EQ(Converters::ToString(QDateTime(QDate(), QTime(1, 2), Qt::UTC)), QStringLiteral("T01:02:00.000Z"));

    for (const char *bad : {"x", "2024-02-30T00:00:00.000", "2024-02-29T24:00:00.000", "2024-02-29 13:05:09.007",
                            "2024-02-29T13:05:09.007Q", "2024-02-29T13:05:09.007+01", "2024-02-29T13:05:09.7",
                            "2024-02-29T13:05:09.007[Europe/Berlin", "+12-01-01T00:00:00.000"}) {
        EXPECT_TRUE(Converters::ToDateTime(QString::fromLatin1(bad)).isNull()) << bad;
    }
}

TEST(DateTimeText, RoundTripsEveryKindOfValue)
{
    QRandomGenerator random(20261124);
    const QByteArray zones[] = {"Europe/Berlin", "America/New_York", "Asia/Kolkata", "Australia/Lord_Howe", "UTC"};
    int checkedAgainstQt = 0;
    for (int i = 0; i < 200000; ++i) {
        const qint64 first = QDate(1, 1, 1).toJulianDay();
        const qint64 jd = first + qint64(random.bounded(quint32(QDate(9999, 12, 31).toJulianDay() - first)));
        const QDate date = QDate::fromJulianDay(jd);
        const QTime time = QTime::fromMSecsSinceStartOfDay(int(random.bounded(86400000)));
        QDateTime t;
        switch (i % 4) {
        case 0:
            t = QDateTime(date, time, Qt::UTC);
            break;
        case 1:
            t = QDateTime(date, time, Qt::LocalTime);
            break;
        case 2:
            t = QDateTime(date, time, Qt::OffsetFromUTC, (int(random.bounded(-14 * 60, 14 * 60 + 1))) * 60);
            break;
        default:
            // Zone look-ups are slow: fewer of them.
            if (i % 40 == 3)
                t = QDateTime(date, time, QTimeZone(zones[random.bounded(5)]));
            else
                t = QDateTime(date, time, Qt::UTC).addMSecs(random.bounded(1000));
            break;
        }
        const QString text = Converters::ToString(t);
        expectSameDateTime(Converters::ToDateTime(text), t);
        const QByteArray utf8 = text.toUtf8();
        ASSERT_TRUE(Converters::ToDateTime(utf8.constData(), utf8.size()) == t);
        // Where the text is one of Qt's own ISO forms, it is Qt's text.
        if (t.timeSpec() != Qt::TimeZone && date.year() >= 1000) {
            ASSERT_EQ(text, t.toString(Qt::ISODateWithMs));
            ++checkedAgainstQt;
        }
    }
    EXPECT_GT(checkedAgainstQt, 100000);

    const QDateTime edges[] = {
        QDateTime(),
        QDateTime(QDate(), QTime(23, 59, 59, 999), Qt::LocalTime),
        QDateTime(QDate(), QTime(0, 0), Qt::UTC),
        QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC),
        QDateTime(QDate(-1, 12, 31), QTime(12, 0), Qt::OffsetFromUTC, -3600),
        QDateTime(QDate(10000, 1, 1), QTime(0, 0, 0, 1), Qt::LocalTime),
        QDateTime(QDate(2024, 3, 31), QTime(2, 30), QTimeZone("Europe/Berlin")),
        QDateTime(QDate(2024, 10, 27), QTime(2, 30), QTimeZone("Europe/Berlin")),
        QDateTime(QDate(2024, 3, 31), QTime(2, 30), Qt::LocalTime),
        QDateTime(QDate(2024, 1, 1), QTime(0, 0), QTimeZone()),
        QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::OffsetFromUTC, 0),
    };
    for (const QDateTime &t : edges)
        expectSameDateTime(Converters::ToDateTime(Converters::ToString(t)), t);
}

TEST(Documents, XmlStringAndErrors)
{
    const ModeManager m = fullModeManager();
    EXPECT_EQ(m.GetXmlString().toStdString(), "<?xml version=\"1.0\"?>\n"
                                             "<ModeManager>\n"
                                             "    <RunningState>On</RunningState>\n"
                                             "    <DualState>On</DualState>\n"
                                             "    <SearchScanMode>LeaveScanMode</SearchScanMode>\n"
                                             "</ModeManager>\n");
    ModeManager back;
    back.SetXmlString(m.GetXmlString());
    EXPECT_TRUE(back == m);

    ModeManager target;
    expectThrow<InvalidXmlException>(
        [&] { target.SetXmlString(QStringLiteral("<ModeManager>\n<RunningState>On</DualState></ModeManager>")); },
        QStringLiteral("ModeManager: XML error at line 2, column 28: Opening and ending tag mismatch."));
    expectThrow<InvalidXmlException>([&] { target.SetXmlString(QString()); },
                                     QStringLiteral("ModeManager: XML error at line 1, column 0: Premature end of document."));
    expectThrow<InvalidXmlException>(
        [&] { target.SetXmlString(QStringLiteral("<ModeManager/><ModeManager/>")); },
        QStringLiteral("ModeManager: XML error at line 1, column 28: Extra content at end of document."));
}

TEST(Documents, Files)
{
    QTemporaryDir dir;
    const QString binaryFile = dir.filePath(QStringLiteral("mode.hvb"));
    const ModeManager m = fullModeManager();
    m.SaveBinary(binaryFile);
    ModeManager a;
    a.LoadBinary(binaryFile);
    EXPECT_TRUE(a == m);
    const QString missing = dir.filePath(QStringLiteral("missing.xml"));
    try {
        a.LoadXml(missing);
        ADD_FAILURE();
    } catch (const QuilletException &e) {
        EXPECT_TRUE(e.GetMessage().startsWith(QStringLiteral("ModeManager: cannot read file '%1': ").arg(missing)));
    }
}

namespace {

// What reading a block did: the exception's kind and text, and the object as
// it was left, in its binary form with validation off.
std::string outcome(MeasurementResultList &object, const std::function<void()> &read)
{
    std::string result = "read";
    try {
        read();
    } catch (const BinaryParsingException &e) {
        result = "BinaryParsingException: " + e.GetMessage().toStdString();
    } catch (const QuilletException &e) {
        result = "QuilletException: " + e.GetMessage().toStdString();
    }
    object.SetValidate(false);
    const QByteArray left = object.GetBinaryRepresentationAsQByteArray();
    return result + " | " + std::to_string(left.size()) + " bytes, hash " + std::to_string(qHash(left));
}

void writeBytes(const QString &name, const QByteArray &bytes)
{
    QSaveFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    ASSERT_TRUE(file.commit());
}

} // namespace

// LoadBinary reads a file through a window of 1 MiB and the stream beyond it,
// SetBinaryRepresentation a block in memory: both must leave the same object
// and throw the same exception with the same text for every block, also where
// a fault lies beyond the window; an open file is read from its position and
// left open at its end, a closed one closed again, whatever the outcome.
TEST(Documents, LoadBinaryReadsAFileAsTheBlockInMemory)
{
    QTemporaryDir dir;
    const QByteArray small = test::example<MeasurementResultList>().GetBinaryRepresentationAsQByteArray();
    const QByteArray large = documents::results(12000).GetBinaryRepresentationAsQByteArray();
    ASSERT_GT(large.size(), 2 << 20); // well past the window
    QByteArray longObject = small;
    qToBigEndian<qint32>(0x7FFFFFFF, longObject.data() + 8);
    // A list that claims two thousand million items, of which a few follow.
    const int count = int(large.indexOf(QByteArray::fromHex("00002EE0"), 12)); // 12000, the list's count
    ASSERT_GT(count, 12);
    const QByteArray manyItems = large.left(count) + QByteArray::fromHex("7FFFFFFF") + large.mid(count + 4, 400);
    const struct {
        const char *name;
        QByteArray bytes;
    } inputs[] = {
        {"small", small},
        {"large", large},
        {"empty", QByteArray()},
        {"header cut", small.left(6)},
        {"header only", small.left(12)},
        {"small cut", small.left(small.size() - 1)},
        {"large cut in the window", large.left(1 << 19)},
        {"large cut beyond the window", large.left(large.size() - 1000)},
        {"large cut by a byte", large.left(large.size() - 1)},
        {"trailing bytes", small + "xy"},
        {"trailing bytes beyond the window", large + QByteArray(70000, 'z')},
        {"another class", fullModeManager().GetBinaryRepresentationAsQByteArray()},
        {"bad magic", QByteArray("HVB2") + small.mid(4)},
        {"object longer than the file", longObject},
        {"list count beyond the bytes", manyItems},
    };
    const QString name = dir.filePath(QStringLiteral("in.hvb"));
    const QString prefixed = dir.filePath(QStringLiteral("prefixed.hvb"));
    for (const auto &input : inputs) {
        SCOPED_TRACE(input.name);
        writeBytes(name, input.bytes);
        writeBytes(prefixed, "lead:" + input.bytes);
        MeasurementResultList inMemory, byName, closed, open;
        const std::string expected = outcome(inMemory, [&] { inMemory.SetBinaryRepresentation(input.bytes); });
        EXPECT_EQ(outcome(byName, [&] { byName.LoadBinary(name); }), expected);
        QFile closedFile(name);
        EXPECT_EQ(outcome(closed, [&] { static_cast<QUILLET::IQuilletObject &>(closed).LoadBinary(&closedFile); }), expected);
        EXPECT_FALSE(closedFile.isOpen());
        QFile openFile(prefixed);
        ASSERT_TRUE(openFile.open(QIODevice::ReadOnly));
        ASSERT_TRUE(openFile.seek(5));
        EXPECT_EQ(outcome(open, [&] { static_cast<QUILLET::IQuilletObject &>(open).LoadBinary(&openFile); }), expected);
        EXPECT_TRUE(openFile.isOpen());
        EXPECT_TRUE(openFile.atEnd());
    }
    const QString missing = dir.filePath(QStringLiteral("missing.hvb"));
    expectThrow<QuilletException>([&] { MeasurementResultList().LoadBinary(missing); },
                                  QStringLiteral("MeasurementResultList: cannot read file '%1': No such file or directory").arg(missing));
}

// The file is not read into memory whole: no block that malloc hands out
// while a document of several megabytes is read comes near the file's size.
// Its items carry texts of 1 500 characters, so that the vector of the items
// (32 bytes an item) stays small beside them; what is left is the reader's
// window of a little over 1 MiB (2 MiB where Qt 6 peeks it into QIODevice's
// buffer).
TEST(Documents, LoadBinaryHoldsNoCopyOfTheFile)
{
    QTemporaryDir dir;
    const QString name = dir.filePath(QStringLiteral("results.hvb"));
    MeasurementResultList original = documents::results(16000);
    int i = 0;
    for (MeasurementData &d : original.GetMeasurementData())
        d.GetMeasurementResult().SetStringResult(QString(1500, QLatin1Char('x')) + QString::number(i++));
    const QByteArray block = original.GetBinaryRepresentationAsQByteArray();
    writeBytes(name, block);
    const qint64 size = block.size();
    ASSERT_GT(size, 24 << 20);
    MeasurementResultList back;
    const long long largest = test::largestAllocation([&] { back.LoadBinary(name); });
    EXPECT_EQ(back.GetBinaryRepresentationAsQByteArray(), block);
    if (largest < 0)
        GTEST_SKIP() << "malloc belongs to the sanitizer in this build";
    EXPECT_LT(largest, size / 8) << "file of " << size << " bytes";
    // The watch itself sees a copy of the file where there is one.
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_GE(test::largestAllocation([&] { back.SetBinaryRepresentation(file.readAll()); }), size);
}

TEST(Documents, BinaryRepresentationHeader)
{
    const ModeManager m = fullModeManager();
    const QByteArray block = m.GetBinaryRepresentationAsQByteArray();
    ModeManager back;

    RDSResult other;
    expectThrow<BinaryParsingException>([&] { other.SetBinaryRepresentation(block); },
                                        QStringLiteral("RDSResult: binary representation holds class 0xC37A4ADF, not RDSResult (0x8B6638C4)"));
    expectThrow<BinaryParsingException>([&] { back.SetBinaryRepresentation(QByteArray("HVB2")); },
                                        QStringLiteral("ModeManager: not a binary representation (bad header)"));
    expectThrow<BinaryParsingException>([&] { back.SetBinaryRepresentation(block.left(6)); },
                                        QStringLiteral("ModeManager: binary representation is truncated"));
    expectThrow<BinaryParsingException>(
        [&] { back.SetBinaryRepresentation(block.left(block.size() - 1)); },
        QStringLiteral("ModeManager::SetBinary(...): Length error occurred during processing of binary representation"));
}

TEST(Documents, CompressedBlocks)
{
    ModeManager back;
    // A size claim in hex, then 20 bytes.
    const auto refused = [&](const char *claim, const char *message) {
        expectThrow<BinaryParsingException>(
            [&] { back.SetCompressedBinaryRepresentation(QByteArray::fromHex(claim) + QByteArray(20, 'x')); },
            QStringLiteral("ModeManager: ") + QLatin1String(message));
    };
    // Claims far beyond what 20 bytes can hold are refused before Qt allocates.
    const long long before = test::allocations();
    refused("80000000", "compressed block claims 2147483648 bytes, more than the limit of 24832");
    refused("3FFFFFFF", "compressed block claims 1073741823 bytes, more than the limit of 24832");
    EXPECT_LT(test::allocations() - before, 100);
    // The limit itself is a claim zlib could keep (1032 bytes per byte, plus
    // 64): it reaches the decompressor, one byte more does not.
    refused("00006100", "compressed block is corrupt");
    refused("00006101", "compressed block claims 24833 bytes, more than the limit of 24832");
    refused("00000010", "compressed block is corrupt");
    expectThrow<BinaryParsingException>([&] { back.SetCompressedBinaryRepresentation(QByteArray("ab")); },
                                        QStringLiteral("ModeManager: compressed block is truncated"));
}

TEST(Documents, LoggerIsHeldWithoutCostWhenAbsent)
{
    class Log : public QUILLET::Logger
    {
    };
    ModeManager m;
    const long long before = test::allocations();
    m.SetLogger(nullptr);
    m.SetLogger(m.GetLogger());
    EXPECT_EQ(test::allocations(), before);
    auto log = std::make_shared<Log>();
    m.SetLogger(log);
    ModeManager copy(m);
    EXPECT_EQ(copy.GetLogger(), nullptr); // a copy does not take the logger
    m.ResetLogger();
    EXPECT_FALSE(m.HasLogger());
}
