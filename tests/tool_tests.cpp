// The halvane tool, run as a program: conversions of the bundled examples,
// dumps, the schema against its reference text, the exported XML Schema with
// xmllint, and bad input.
#include "support.h"

#include "../bench/documents.h"
#include "base/binaryheader.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>
#include <QtCore/QtEndian>

using namespace HALVANE;

namespace {

struct Result {
    int code;
    QString out;
    QString err;
};

Result run(const QStringList &args, const QByteArray &input = QByteArray())
{
    QProcess p;
    p.start(QStringLiteral(HALVANE_TOOL), args);
    p.waitForStarted();
    if (!input.isEmpty())
        p.write(input);
    p.closeWriteChannel();
    p.waitForFinished(60000);
    return Result{p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
                  QString::fromUtf8(p.readAllStandardError())};
}

QString examples()
{
    return QStringLiteral(HALVANE_SOURCE_DIR "/examples");
}

QStringList exampleNames()
{
    QStringList names;
    for (const QString &f : QDir(examples()).entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name))
        names.append(f.chopped(4));
    return names;
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

} // namespace

TEST(Tool, ConvertsEveryExampleThroughAllForms)
{
    QTemporaryDir dir;
    const QStringList names = exampleNames();
    ASSERT_EQ(names.size(), 9);
    for (const QString &name : names) {
        const QString xml = examples() + QLatin1Char('/') + name + QStringLiteral(".xml");
        const QString hvb = dir.filePath(name + QStringLiteral(".hvb"));
        const QString hvr = dir.filePath(name + QStringLiteral(".hvr"));
        const QString back = dir.filePath(name + QStringLiteral(".xml"));
        ASSERT_EQ(run({QStringLiteral("convert"), xml, hvb}).code, 0) << name.toStdString();
        ASSERT_EQ(run({QStringLiteral("convert"), hvb, hvr}).code, 0);
        ASSERT_EQ(run({QStringLiteral("convert"), hvr, back}).code, 0);
        EXPECT_EQ(readAll(back), readAll(xml)) << name.toStdString();
        // The committed binary forms are what the library writes today.
        EXPECT_EQ(readAll(hvb), readAll(examples() + QLatin1Char('/') + name + QStringLiteral(".hvb")));
        EXPECT_EQ(readAll(hvr), readAll(examples() + QLatin1Char('/') + name + QStringLiteral(".hvr")));
    }
    // Standard input and output, with the forms named.
    const Result piped = run({QStringLiteral("convert"), QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("--from"),
                              QStringLiteral("hvb"), QStringLiteral("--to"), QStringLiteral("xml")},
                             readAll(examples() + QStringLiteral("/ModeManager.hvb")));
    EXPECT_EQ(piped.code, 0);
    EXPECT_EQ(piped.out.toUtf8(), readAll(examples() + QStringLiteral("/ModeManager.xml")));
}

// The XML the tool writes is GetXmlString in UTF-8, to a file (written as it
// is made) as to standard output, also for a text that UTF-8 cannot hold: a
// lone surrogate, which only the raw form carries, becomes '?', where a
// writer on a device stops; the file, some hundred kilobytes written by
// then, is written once more.
TEST(Tool, XmlOutputIsTheLibrarysTextInUtf8)
{
    QTemporaryDir dir;
    MeasurementResultList list = documents::results(2000);
    list.GetMeasurementData().last().GetMeasurementResult().SetStringResult(
        QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b \U0001F600"));
    list.SetValidate(false);
    QByteArray raw("HVR1");
    raw.resize(8);
    qToBigEndian<quint32>(quint32(list.GetObjectType()), raw.data() + 4);
    {
        QBuffer buffer(&raw);
        buffer.open(QIODevice::WriteOnly | QIODevice::Append);
        QDataStream stream(&buffer);
        QUILLET::pinStream(stream);
        list.GetVersionSpecificBinaryWithoutValidation(stream);
    }
    const QString in = dir.filePath(QStringLiteral("lone.hvr")), out = dir.filePath(QStringLiteral("lone.xml"));
    QFile file(in);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(raw);
    file.close();
    const QByteArray expected = list.GetXmlString().toUtf8();
    ASSERT_TRUE(expected.contains("a?b \xF0\x9F\x98\x80"));
    ASSERT_GT(expected.size(), 100000);
    EXPECT_EQ(run({QStringLiteral("convert"), QStringLiteral("--force"), in, out}).code, 0);
    EXPECT_EQ(readAll(out), expected);
    const Result piped = run({QStringLiteral("convert"), QStringLiteral("--force"), in, QStringLiteral("-"), QStringLiteral("--to"),
                              QStringLiteral("xml")});
    EXPECT_EQ(piped.code, 0);
    EXPECT_EQ(piped.out.toUtf8(), expected);
}

TEST(Tool, ValidateReportsEachFile)
{
    QTemporaryDir dir;
    const QString bad = dir.filePath(QStringLiteral("bad.xml"));
    QFile f(bad);
    f.open(QIODevice::WriteOnly);
    f.write("<ModeManager><RunningState>On</RunningState><DualState>Off</DualState></ModeManager>");
    f.close();
    const QString good = examples() + QStringLiteral("/ModeManager.hvr");
    // With --lenient only the library's reading and Check; failures on standard error.
    const Result r = run({QStringLiteral("validate"), QStringLiteral("--lenient"), good, bad});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, good + QStringLiteral(": ok\n"));
    EXPECT_EQ(r.err, bad + QStringLiteral(": ModeManager: Please set SearchScanMode properly.\n"));
    EXPECT_EQ(run({QStringLiteral("validate"), good}).code, 0);
}

TEST(Tool, DumpShowsFieldsByNameAndWithoutSchema)
{
    const QString hvb = examples() + QStringLiteral("/Administration.hvb");
    const Result r = run({QStringLiteral("dump"), hvb});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    for (const schema::Class *c : {schema::findClass(QStringLiteral("Administration")),
                                   schema::findClass(QStringLiteral("SensorMetaData")),
                                   schema::findClass(QStringLiteral("MinMaxStep"))}) {
        for (const schema::Field &field : c->fields)
            EXPECT_TRUE(r.out.contains(field.name + QLatin1Char(' '))) << field.name.toStdString();
    }
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("Administration 0x68FCE849 length ")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("  Speed 0x6C209A63 length 19\n    \"sub-light speed\"")));

    const Result raw = run({QStringLiteral("dump"), QStringLiteral("--raw-tags"), hvb});
    ASSERT_EQ(raw.code, 0);
    EXPECT_TRUE(raw.out.contains(QStringLiteral("  0x07DACADD length ")));
    EXPECT_TRUE(raw.out.contains(QStringLiteral("0x6C209A63 length 19: \"sub-light speed\"")));
    EXPECT_FALSE(raw.out.contains(QStringLiteral("Speed ")));

    const Result rawForm = run({QStringLiteral("dump"), examples() + QStringLiteral("/MeasurementList.hvr")});
    EXPECT_EQ(rawForm.out.toStdString(), "MeasurementList presence 11 (bit 0 first)\n"
                                         "  MeasurementItem: 2 items\n"
                                         "    [0] 0 (CW_Level)\n"
                                         "    [1] 1 (CW_Offset)\n"
                                         "  RecordingState: 0 (On)\n");
}

TEST(Tool, SchemaMatchesItsReferenceText)
{
    QString all;
    const Result list = run({QStringLiteral("schema")});
    for (const QString &line : list.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        all += run({QStringLiteral("schema"), line.section(QLatin1Char(' '), 0, 0)}).out;
    // A change of any table shows here as a diff of tests/golden/tables.txt.
    EXPECT_EQ(all.toStdString(), readAll(QStringLiteral(HALVANE_SOURCE_DIR "/tests/golden/tables.txt")).toStdString());
}

TEST(Tool, ExportedXmlSchemaAcceptsWhatTheLibraryWrites)
{
    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty())
        GTEST_SKIP() << "xmllint is not installed";
    QTemporaryDir dir;
    const QString xsd = dir.filePath(QStringLiteral("halvane.xsd"));
    {
        QFile f(xsd);
        f.open(QIODevice::WriteOnly);
        f.write(run({QStringLiteral("schema"), QStringLiteral("--xsd")}).out.toUtf8());
    }
    QStringList files;
    for (const QString &name : exampleNames())
        files.append(examples() + QLatin1Char('/') + name + QStringLiteral(".xml"));
    // Documents written here, with date-times of every kind and unset optionals.
    HALVANE::MeasurementResultList list;
    list.SetValidate(true);
    const QDateTime stamps[] = {QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::UTC),
                                QDateTime(QDate(-12, 1, 2), QTime(3, 4), Qt::OffsetFromUTC, -3600 * 5 - 7),
                                QDateTime(QDate(2026, 7, 1), QTime(8, 0), QTimeZone("Europe/Berlin"))};
    for (const QDateTime &t : stamps) {
        HALVANE::MeasurementData d;
        d.SetMeasurementItem(44);
        d.GetMeasurementResult().SetTimeStamp(t);
        list.AppendMeasurementData(d);
    }
    HALVANE::MeasurementList items;
    items.SetValidate(true);
    items.AppendMeasurementItem(68);
    const QString written[] = {list.GetXmlString(), items.GetXmlString()};
    for (const QString &text : written) {
        const QString path = dir.filePath(QStringLiteral("written%1.xml").arg(files.size()));
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(text.toUtf8());
        files.append(path);
    }
    for (const QString &file : files) {
        QProcess p;
        p.start(xmllint, {QStringLiteral("--noout"), QStringLiteral("--schema"), xsd, file});
        p.waitForFinished(60000);
        EXPECT_EQ(p.exitCode(), 0) << file.toStdString() << p.readAllStandardError().toStdString();
    }
    // A misspelled element is refused.
    const QString misspelled = dir.filePath(QStringLiteral("misspelled.xml"));
    {
        QFile f(misspelled);
        f.open(QIODevice::WriteOnly);
        f.write(readAll(examples() + QStringLiteral("/ModeManager.xml")).replace("DualState", "DualStat"));
    }
    QProcess p;
    p.start(xmllint, {QStringLiteral("--noout"), QStringLiteral("--schema"), xsd, misspelled});
    p.waitForFinished(60000);
    EXPECT_NE(p.exitCode(), 0);
}

TEST(Tool, BadInputIsOneLineAndNoOutput)
{
    QTemporaryDir dir;
    auto write = [&](const QString &name, const QByteArray &bytes) {
        const QString path = dir.filePath(name);
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return path;
    };
    const QString out = dir.filePath(QStringLiteral("out.xml"));
    struct Case {
        QString input;
        int code;
        QString message; // the start of the one line on standard error
    };
    const QByteArray hvb = readAll(examples() + QStringLiteral("/Administration.hvb"));
    const Case cases[] = {
        {dir.filePath(QStringLiteral("missing.xml")), 1, dir.filePath(QStringLiteral("missing.xml")) + QStringLiteral(": cannot read: ")},
        {write(QStringLiteral("broken.xml"), "<ModeManager>\n<RunningState>On</Running>"), 1,
         QStringLiteral("broken.xml:2:26: Opening and ending tag mismatch.")},
        {write(QStringLiteral("stranger.xml"), "<Stranger/>"), 1, QStringLiteral("line 1, column 11: 'Stranger' is not a class of this library")},
        {write(QStringLiteral("cut.hvb"), hvb.left(hvb.size() - 10)), 1,
         QStringLiteral("Administration::SetBinary(...): Length error occurred during processing of binary representation")},
        {write(QStringLiteral("other.hvb"), QByteArray("HVB1\x12\x34\x56\x78\0\0\0\0", 12)), 1, QStringLiteral("no class has the id 0x12345678")},
        {write(QStringLiteral("noise.hvr"), "HVR1"), 1, QStringLiteral("not a raw document")},
        {write(QStringLiteral("cut.hvr"), readAll(examples() + QStringLiteral("/RDSResult.hvr")).left(12)), 1,
         QStringLiteral("the raw form is truncated or corrupt")},
    };
    for (const Case &c : cases) {
        const Result r = run({QStringLiteral("convert"), c.input, out});
        EXPECT_EQ(r.code, c.code) << c.input.toStdString();
        EXPECT_EQ(r.err.count(QLatin1Char('\n')), 1) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(c.message)) << r.err.toStdString();
        EXPECT_FALSE(QFile::exists(out));
    }
    const Result option = run({QStringLiteral("convert"), QStringLiteral("--frobnicate"), QStringLiteral("a.xml"), out});
    EXPECT_EQ(option.code, 2);
    EXPECT_TRUE(option.err.startsWith(QStringLiteral("halvane: unknown option '--frobnicate' (halvane --help shows the usage)\n"
                                                     "usage: halvane convert IN OUT ")))
        << option.err.toStdString();
    EXPECT_EQ(run({QStringLiteral("convert"), QStringLiteral("a.txt"), out}).code, 2);
    EXPECT_EQ(run({QStringLiteral("transmogrify")}).code, 2);
    EXPECT_EQ(run({QStringLiteral("schema"), QStringLiteral("Nothing")}).code, 2);
    EXPECT_FALSE(QFile::exists(out));
}

TEST(Tool, DumpOfACorruptFileShowsWhatWasReadAndFails)
{
    QTemporaryDir dir;
    QByteArray raw = readAll(examples() + QStringLiteral("/MeasurementList.hvr"));
    raw.replace(9, 4, QByteArray::fromHex("87123456")); // the list count
    const QString file = dir.filePath(QStringLiteral("corrupt.hvr"));
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(raw);
    out.close();
    const Result r = run({QStringLiteral("dump"), file});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out.toStdString(), "MeasurementList presence 11 (bit 0 first)\n");
    EXPECT_EQ(r.err.toStdString(),
              (file + QStringLiteral(": at byte 13: a count of -2028850090 items does not fit the 3 bytes that remain\n")).toStdString());
}
