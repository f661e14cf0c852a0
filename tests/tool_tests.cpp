// The halvane tool as people use it, run as a program: conversions of the
// bundled examples through every form and JSON, strict checking with its
// one-line messages, convert's refusal and --force, exit codes, checked
// writes, dumps, the schema against its reference text, the command line's
// conventions, diff, large examples, and the agreement of validate with
// xmllint on the exported XML Schema.
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

Result run(const QStringList &args, const QByteArray &input = QByteArray(), const QString &stdoutFile = QString())
{
    QProcess p;
    if (!stdoutFile.isEmpty())
        p.setStandardOutputFile(stdoutFile);
    p.start(QStringLiteral(HALVANE_TOOL), args);
    p.waitForStarted();
    if (!input.isEmpty())
        p.write(input);
    p.closeWriteChannel();
    p.waitForFinished(120000);
    return Result{p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
                  QString::fromUtf8(p.readAllStandardError())};
}

QString example(const QString &name)
{
    return QStringLiteral(HALVANE_SOURCE_DIR "/examples/") + name;
}

QStringList exampleNames()
{
    QStringList names;
    for (const QString &f : QDir(example(QString())).entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name))
        names.append(f.chopped(4));
    return names;
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

class Tool : public ::testing::Test
{
protected:
    QTemporaryDir dir;

    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = dir.filePath(name);
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return path;
    }
    // An example with the first text of one element replaced.
    QString edited(const QString &from, const QString &name, const QByteArray &element, const QByteArray &text)
    {
        QByteArray bytes = readAll(example(from));
        const int open = bytes.indexOf("<" + element + ">") + element.size() + 2;
        const int close = bytes.indexOf("</" + element + ">", open);
        return write(name, bytes.replace(open, close - open, text));
    }
};

} // namespace

TEST_F(Tool, ConvertsEveryExampleThroughAllFormsAndJson)
{
    const QStringList names = exampleNames();
    ASSERT_EQ(names.size(), 9);
    for (const QString &name : names) {
        const QString xml = example(name + QStringLiteral(".xml"));
        const QString hvb = dir.filePath(name + QStringLiteral(".hvb"));
        const QString hvr = dir.filePath(name + QStringLiteral(".hvr"));
        const QString back = dir.filePath(name + QStringLiteral(".xml"));
        const QString json = dir.filePath(name + QStringLiteral(".json"));
        const QString fromJson = dir.filePath(name + QStringLiteral(".json.xml"));
        ASSERT_EQ(run({QStringLiteral("convert"), xml, hvb}).code, 0) << name.toStdString();
        ASSERT_EQ(run({QStringLiteral("convert"), hvb, hvr}).code, 0);
        ASSERT_EQ(run({QStringLiteral("convert"), hvr, back}).code, 0);
        ASSERT_EQ(run({QStringLiteral("convert"), xml, json}).code, 0);
        ASSERT_EQ(run({QStringLiteral("convert"), json, fromJson}).code, 0);
        EXPECT_EQ(readAll(back), readAll(xml)) << name.toStdString();
        EXPECT_EQ(readAll(fromJson), readAll(xml)) << name.toStdString();
        // The committed binary forms are what the library writes today.
        EXPECT_EQ(readAll(hvb), readAll(example(name + QStringLiteral(".hvb"))));
        EXPECT_EQ(readAll(hvr), readAll(example(name + QStringLiteral(".hvr"))));
    }
    // Standard input and output, with the forms named.
    const Result piped = run({QStringLiteral("convert"), QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("--from"),
                              QStringLiteral("hvb"), QStringLiteral("--to"), QStringLiteral("xml")},
                             readAll(example(QStringLiteral("ModeManager.hvb"))));
    EXPECT_EQ(piped.code, 0);
    EXPECT_EQ(piped.out.toUtf8(), readAll(example(QStringLiteral("ModeManager.xml"))));
    const Result r = run({QStringLiteral("convert"), example(QStringLiteral("MeasurementList.xml")), QStringLiteral("-"), QStringLiteral("--to"), QStringLiteral("json")});
    EXPECT_EQ(r.out.toStdString(), "{\n"
                                   "    \"MeasurementList\": {\n"
                                   "        \"MeasurementItem\": [\n"
                                   "            \"CW_Level\",\n"
                                   "            \"CW_Offset\"\n"
                                   "        ],\n"
                                   "        \"RecordingState\": \"On\"\n"
                                   "    }\n"
                                   "}\n");
}

// The XML the tool writes is GetXmlString in UTF-8, to a file (written as it
// is made) as to standard output, also for a text that UTF-8 cannot hold: a
// lone surrogate, which only the raw form carries, becomes '?', where a
// writer on a device stops; the file, some hundred kilobytes written by
// then, is written once more.
TEST_F(Tool, XmlOutputIsTheLibrarysTextInUtf8)
{
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

TEST_F(Tool, ValidateReportsEachFile)
{
    const QString bad = write(QStringLiteral("bad.xml"), "<ModeManager><RunningState>On</RunningState><DualState>Off</DualState></ModeManager>");
    const QString good = example(QStringLiteral("ModeManager.hvr"));
    // With --lenient only the library's reading and Check; failures on standard error.
    const Result r = run({QStringLiteral("validate"), QStringLiteral("--lenient"), good, bad});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, good + QStringLiteral(": ok\n"));
    EXPECT_EQ(r.err, bad + QStringLiteral(": ModeManager: Please set SearchScanMode properly.\n"));
    EXPECT_EQ(run({QStringLiteral("validate"), good}).code, 0);
}

TEST_F(Tool, ValidateNamesEveryValueThatReadingChangesByLineAndColumn)
{
    struct Case {
        const char *from, *element, *text, *message;
        bool lenientOk; // what the library's plain reading says of it
    };
    const Case cases[] = {
        {"MeasurementResultList.xml", "InternalKey", "99999999999",
         "5:22: MeasurementData.InternalKey: '99999999999' is out of the range of an int, -2147483648 to 2147483647: it reads as 0",
         true},
        {"MeasurementResultList.xml", "InternalKey", "abc", "5:22: MeasurementData.InternalKey: 'abc' is not a whole number: it reads as 0", true},
        {"Administration.xml", "ValueMin", "abc", "13:19: SensorMetaData.ValueMin: 'abc' is not a number: it reads as 0.00", true},
        {"Administration.xml", "ValueMin", "1e999", "13:19: SensorMetaData.ValueMin: '1e999' is out of the range of a double: it reads as inf", true},
        {"Administration.xml", "ValueMin", "1.005",
         "13:19: SensorMetaData.ValueMin: '1.005' has more than the two decimals that the form keeps: it reads as 1.00", true},
        {"Administration.xml", "MeasurementInvalid", "banana",
         "16:29: SensorMetaData.MeasurementInvalid: 'banana' is not a bool, true or false: it reads as true", true},
        {"MeasurementResultList.xml", "TimeStamp", "garbage", "9:24: MeasurementResult.TimeStamp: 'garbage' is not a date-time: it reads as none", true},
        {"ModeManager.xml", "RunningState", "Maybe", "3:19: ModeManager.RunningState: 'Maybe' is not one of Off, On", false},
    };
    for (const Case &c : cases) {
        const QString file = edited(QString::fromLatin1(c.from), QStringLiteral("case.xml"), c.element, c.text);
        const Result r = run({QStringLiteral("validate"), file});
        EXPECT_EQ(r.code, 1) << c.text;
        EXPECT_EQ(r.out, QString());
        // One line per value; the example has the value once, or twice for items written alike.
        const QString line = file + QLatin1Char(':') + QString::fromLatin1(c.message) + QLatin1Char('\n');
        EXPECT_TRUE(r.err.startsWith(line)) << r.err.toStdString();
        const Result lenient = run({QStringLiteral("validate"), QStringLiteral("--lenient"), file});
        EXPECT_EQ(lenient.code, c.lenientOk ? 0 : 1) << c.text << lenient.err.toStdString();
    }
    // A syntax error comes before the field errors found ahead of it.
    const QString both = write(QStringLiteral("both.xml"), "<ModeManager>\n<RunningState>Maybe</RunningState>\n<DualState>On</Dual>");
    const Result r = run({QStringLiteral("validate"), both});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err.toStdString(), (both + QStringLiteral(":3:20: Opening and ending tag mismatch.\n") + both
                                    + QStringLiteral(":2:15: ModeManager.RunningState: 'Maybe' is not one of Off, On\n"))
                                       .toStdString());
    // Faults of a JSON document by their path.
    const QString bad = write(QStringLiteral("bad.json"),
                              R"({"MeasurementResultList": {"MeasurementData": [{"MeasurementItem": "CW_Level", "Colour": 1,
                                  "MeasurementResult": {"TimeStamp": "", "DoubleResult": 1.005}}]}})");
    const Result refused = run({QStringLiteral("validate"), bad});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err, bad + QStringLiteral(": MeasurementData[0].Colour: 'Colour' is not a field of MeasurementData\n") + bad
                               + QStringLiteral(": MeasurementData[0].MeasurementResult.DoubleResult: '1.005' has more than the two "
                                                "decimals that the form keeps: it reads as 1.00\n"));
}

TEST_F(Tool, BinaryFormsNameTheByteOffset)
{
    // An int record holding more than 32 bits, a double's text that is no number.
    QByteArray hvb = readAll(example(QStringLiteral("MeasurementResultList.hvb")));
    const int key = hvb.indexOf(QByteArray::fromHex("ACB208C700000008"));
    ASSERT_GT(key, 0);
    qToBigEndian<qint64>(99999999999LL, hvb.data() + key + 8);
    const int result = hvb.indexOf("12.50");
    hvb.replace(result, 5, "ab.cd");
    const QString file = write(QStringLiteral("bad.hvb"), hvb);
    Result r = run({QStringLiteral("validate"), file});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err.section(QLatin1Char('\n'), 0, 1),
              QStringLiteral("%1: at byte %2: MeasurementData.InternalKey: 99999999999 is out of the range of an int, "
                             "-2147483648 to 2147483647\n%1: at byte %3: MeasurementResult.DoubleResult: 'ab.cd' is not a number: it reads as 0.00")
                  .arg(file)
                  .arg(key)
                  .arg(result - 12));

    // A raw index beyond its table.
    QByteArray hvr = readAll(example(QStringLiteral("ModeManager.hvr")));
    hvr[9] = 7;
    const QString raw = write(QStringLiteral("bad.hvr"), hvr);
    r = run({QStringLiteral("validate"), raw});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, raw + QStringLiteral(": at byte 9: ModeManager.RunningState: 7 is not a row of its table of 2\n"));
}

TEST_F(Tool, ConvertRefusesWhatValidateRefusesUnlessForced)
{
    const QString in = edited(QStringLiteral("ModeManager.xml"), QStringLiteral("mode.xml"), "RunningState", "Maybe");
    const QString out = dir.filePath(QStringLiteral("out.xml"));
    const Result refused = run({QStringLiteral("convert"), in, out});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err, in + QStringLiteral(":3:19: ModeManager.RunningState: 'Maybe' is not one of Off, On\n"));
    EXPECT_FALSE(QFile::exists(out));
    // Forced, it writes what the library reads: the unknown name as an empty element.
    const Result forced = run({QStringLiteral("convert"), QStringLiteral("--force"), in, out});
    EXPECT_EQ(forced.code, 0) << forced.err.toStdString();
    EXPECT_TRUE(readAll(out).contains("<RunningState></RunningState>")) << readAll(out).toStdString();
    EXPECT_EQ(run({QStringLiteral("validate"), out}).code, 1);
}

// The tool finds a document's class with a reader of its own: a declaration
// whose entities would grow to hundreds of megabytes is refused before any
// reader sees it, in every command that reads XML.
TEST_F(Tool, DocumentTypeDeclarationsAreRefusedBeforeReading)
{
    QByteArray bomb = "<ModeManager/>\n<!-- <!DOCTYPE x> -->\n <!DOCTYPE ModeManager [<!ENTITY % a \"<!ENTITY b '"
                      + QByteArray(4000, 'x') + "'>\">";
    for (int i = 0; i < 100000; ++i)
        bomb += "%a;";
    const QString in = write(QStringLiteral("bomb.xml"), bomb + "]>");
    const QString out = dir.filePath(QStringLiteral("out.hvb"));
    const QString strict = in + QStringLiteral(":3:2: Document type declarations (DTDs) are not accepted.\n");
    const QString plain = in + QStringLiteral(": line 3, column 1: Document type declarations (DTDs) are not accepted.\n");
    for (const auto &c : {std::make_pair(QStringList{QStringLiteral("validate"), in}, strict),
                          std::make_pair(QStringList{QStringLiteral("validate"), QStringLiteral("--lenient"), in}, plain),
                          std::make_pair(QStringList{QStringLiteral("convert"), QStringLiteral("--force"), in, out}, plain)}) {
        const Result r = run(c.first);
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, c.second) << c.first.join(QLatin1Char(' ')).toStdString();
    }
    EXPECT_FALSE(QFile::exists(out));
}

// A plain UTF-8 file is read from the disk in pieces, a file with a byte
// order mark and standard input whole: the places are the same, also of
// text whose first characters are written out only far behind it, and of an
// element after more text than the strict check holds.
TEST_F(Tool, FilesReadInPiecesAndWholeGiveTheSamePlaces)
{
    QByteArray doc = "<?xml version=\"1.0\"?>\n<ModeManager>\n    <RunningState>Maybe</RunningState>\n<!-- ";
    for (int i = 0; i < 20000; ++i)
        doc += "filler\n";
    doc += "-->\n    a&#38;b &amp; c d e f g h\n<!-- ";
    for (int i = 0; i < 200000; ++i)
        doc += "filler\n";
    doc += "-->\n    <Nope>x</Nope>\n    <DualState>Off</DualState>\n    <SearchScanMode>IdleScanMode</SearchScanMode>\n"
           "</ModeManager>\n<!-- a&b & c d e f g h -->\n";
    const QString faults = QStringLiteral(":3:19: ModeManager.RunningState: 'Maybe' is not one of Off, On\n"
                                          "%1:220011:6: ModeManager: text outside of any field is not read\n"
                                          "%1:220007:5: ModeManager: 'Nope' is not an element of ModeManager; reading skips it\n");
    const QString plain = write(QStringLiteral("plain.xml"), doc);
    const QString marked = write(QStringLiteral("marked.xml"), "\xEF\xBB\xBF" + doc);
    for (const QString &file : {plain, marked}) {
        const Result r = run({QStringLiteral("validate"), file});
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, file + faults.arg(file)) << file.toStdString();
    }
    const Result piped = run({QStringLiteral("validate"), QStringLiteral("-")}, doc);
    EXPECT_EQ(piped.err, QStringLiteral("-") + faults.arg(QStringLiteral("-")));
}

TEST_F(Tool, WritesAreCheckedAndErrorsGoToStandardError)
{
    const QString xml = example(QStringLiteral("ModeManager.xml"));
    Result r = run({QStringLiteral("convert"), xml, QStringLiteral("/dev/full"), QStringLiteral("--to=hvb")});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, QString());
    EXPECT_EQ(r.err, QStringLiteral("/dev/full: cannot write: No space left on device\n"));
    r = run({QStringLiteral("schema"), QStringLiteral("--xsd")}, QByteArray(), QStringLiteral("/dev/full"));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err.toStdString(), "halvane: standard output: No space left on device\n");
    r = run({QStringLiteral("validate"), xml}, QByteArray(), QStringLiteral("/dev/full"));
    EXPECT_EQ(r.code, 1);
}

TEST_F(Tool, BadInputIsOneLineAndNoOutput)
{
    const QString out = dir.filePath(QStringLiteral("out.xml"));
    struct Case {
        QString input;
        int code;
        QString message; // the start of the one line on standard error
    };
    const QByteArray hvb = readAll(example(QStringLiteral("Administration.hvb")));
    const Case cases[] = {
        {dir.filePath(QStringLiteral("missing.xml")), 1, dir.filePath(QStringLiteral("missing.xml")) + QStringLiteral(": cannot read: ")},
        {write(QStringLiteral("broken.xml"), "<ModeManager>\n<RunningState>On</Running>"), 1,
         QStringLiteral("broken.xml:2:26: Opening and ending tag mismatch.")},
        {write(QStringLiteral("stranger.xml"), "<Stranger/>"), 1, QStringLiteral("line 1, column 11: 'Stranger' is not a class of this library")},
        {write(QStringLiteral("cut.hvb"), hvb.left(hvb.size() - 10)), 1,
         QStringLiteral("Administration::SetBinary(...): Length error occurred during processing of binary representation")},
        {write(QStringLiteral("other.hvb"), QByteArray("HVB1\x12\x34\x56\x78\0\0\0\0", 12)), 1, QStringLiteral("no class has the id 0x12345678")},
        {write(QStringLiteral("noise.hvr"), "HVR1"), 1, QStringLiteral("not a raw document")},
        {write(QStringLiteral("cut.hvr"), readAll(example(QStringLiteral("RDSResult.hvr"))).left(12)), 1,
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
    EXPECT_EQ(run({QStringLiteral("schema"), QStringLiteral("Nothing")}).code, 2);
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(Tool, DumpShowsFieldsOffsetsAndWhatWasRead)
{
    const QString hvb = example(QStringLiteral("Administration.hvb"));
    Result r = run({QStringLiteral("dump"), hvb});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    for (const schema::Class *c : {schema::findClass(QStringLiteral("Administration")),
                                   schema::findClass(QStringLiteral("SensorMetaData")),
                                   schema::findClass(QStringLiteral("MinMaxStep"))}) {
        for (const schema::Field &field : c->fields)
            EXPECT_TRUE(r.out.contains(field.name + QLatin1Char(' '))) << field.name.toStdString();
    }
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("Administration 0x68FCE849 length ")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("  Speed 0x6C209A63 length 19\n    \"sub-light speed\"")));

    r = run({QStringLiteral("dump"), QStringLiteral("--raw-tags"), hvb});
    ASSERT_EQ(r.code, 0);
    EXPECT_TRUE(r.out.contains(QStringLiteral("  0x07DACADD length ")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("0x6C209A63 length 19: \"sub-light speed\"")));
    EXPECT_FALSE(r.out.contains(QStringLiteral("Speed ")));

    r = run({QStringLiteral("dump"), example(QStringLiteral("MeasurementList.hvr"))});
    EXPECT_EQ(r.out.toStdString(), "MeasurementList presence 11 (bit 0 first)\n"
                                   "  MeasurementItem: 2 items\n"
                                   "    [0] 0 (CW_Level)\n"
                                   "    [1] 1 (CW_Offset)\n"
                                   "  RecordingState: 0 (On)\n");
    r = run({QStringLiteral("dump"), QStringLiteral("--offsets"), example(QStringLiteral("MeasurementList.hvb"))});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out.toStdString(), "       4  MeasurementList 0x2F94692C length 59\n"
                                   "      12    MeasurementItem 0xAF02C080 length 37\n"
                                   "      20      2 items\n"
                                   "      24      [0] \"CW_Level\"\n"
                                   "      40      [1] \"CW_Offset\"\n"
                                   "      57    RecordingState 0xEDDCC926 length 6\n"
                                   "      65      \"On\"\n");
    r = run({QStringLiteral("dump"), QStringLiteral("--raw-tags"), example(QStringLiteral("MeasurementList.hvb"))});
    EXPECT_EQ(r.out.toStdString(), "0x2F94692C length 59 {\n"
                                   "  0xAF02C080 length 37: 2 items\n"
                                   "    [0] length 12: \"CW_Level\"\n"
                                   "    [1] length 13: \"CW_Offset\"\n"
                                   "  0xEDDCC926 length 6: \"On\"\n"
                                   "}\n");

    // Bad files: no header, cut, a corrupt count; what was read stays on standard output.
    for (const QString &name : {QStringLiteral("ModeManager.hvr"), QStringLiteral("ModeManager.xml")}) {
        r = run({QStringLiteral("dump"), QStringLiteral("--raw-tags"), example(name)});
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, example(name) + QStringLiteral(": not a binary document (no HVB1 header)\n"));
    }
    QByteArray cut = readAll(example(QStringLiteral("MeasurementList.hvb")));
    cut.chop(3);
    r = run({QStringLiteral("dump"), write(QStringLiteral("cut.hvb"), cut)});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.endsWith(QStringLiteral(": the object length 59 runs past the end of the file\n"))) << r.err.toStdString();
    QByteArray raw = readAll(example(QStringLiteral("MeasurementList.hvr")));
    raw.replace(9, 4, QByteArray::fromHex("87123456")); // the list count
    const QString corrupt = write(QStringLiteral("corrupt.hvr"), raw);
    r = run({QStringLiteral("dump"), corrupt});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out.toStdString(), "MeasurementList presence 11 (bit 0 first)\n");
    EXPECT_EQ(r.err.toStdString(),
              (corrupt + QStringLiteral(": at byte 13: a count of -2028850090 items does not fit the 3 bytes that remain\n")).toStdString());
}

TEST_F(Tool, SchemaMatchesItsReferenceText)
{
    QString all;
    const Result list = run({QStringLiteral("schema")});
    for (const QString &line : list.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        all += run({QStringLiteral("schema"), line.section(QLatin1Char(' '), 0, 0)}).out;
    // A change of any table shows here as a diff of tests/golden/tables.txt.
    EXPECT_EQ(all.toStdString(), readAll(QStringLiteral(HALVANE_SOURCE_DIR "/tests/golden/tables.txt")).toStdString());
}

TEST_F(Tool, CommandLineConventions)
{
    // Usage errors: the message, then the usage, on standard error only.
    for (const QStringList &args : {QStringList{}, QStringList{QStringLiteral("frob")},
                                    QStringList{QStringLiteral("diff"), QStringLiteral("a.xml")},
                                    QStringList{QStringLiteral("example"), QStringLiteral("ModeManager"), QStringLiteral("--count=x")}}) {
        const Result r = run(args);
        EXPECT_EQ(r.code, 2) << args.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(r.out, QString());
        EXPECT_TRUE(r.err.contains(QStringLiteral("usage: halvane "))) << r.err.toStdString();
    }
    const Result help = run({QStringLiteral("help"), QStringLiteral("convert")});
    EXPECT_EQ(help.code, 0);
    EXPECT_TRUE(help.out.startsWith(QStringLiteral("usage: halvane convert IN OUT [--from FORMAT] [--to FORMAT] [--force]\n")));
    EXPECT_EQ(run({QStringLiteral("convert"), QStringLiteral("--help")}).out, help.out);
    EXPECT_TRUE(run({QStringLiteral("--help")}).out.contains(QStringLiteral("Exit codes: 0 ")));
    EXPECT_TRUE(run({QStringLiteral("--version")}).out.startsWith(QStringLiteral("halvane 0.1.0 (Qt ")));

    // Standard input in every form, known by its first bytes; "--" before a name that looks like an option.
    const QByteArray xml = readAll(example(QStringLiteral("RDSResult.xml")));
    const QString json = dir.filePath(QStringLiteral("-r.json"));
    ASSERT_EQ(run({QStringLiteral("convert"), QStringLiteral("--"), example(QStringLiteral("RDSResult.xml")), json}).code, 0);
    for (const QByteArray &input : {xml, readAll(example(QStringLiteral("RDSResult.hvb"))), readAll(example(QStringLiteral("RDSResult.hvr"))), readAll(json)}) {
        const Result r = run({QStringLiteral("convert"), QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("--to=xml")}, input);
        EXPECT_EQ(r.code, 0) << r.err.toStdString();
        EXPECT_EQ(r.out.toUtf8(), xml);
    }
    const Result unknown = run({QStringLiteral("validate"), QStringLiteral("-")}, "garbage");
    EXPECT_EQ(unknown.code, 2);
}

TEST_F(Tool, DiffNamesTheFieldsThatDiffer)
{
    const QString changed = edited(QStringLiteral("MeasurementList.xml"), QStringLiteral("changed.xml"), "RecordingState", "Off");
    Result r = run({QStringLiteral("diff"), example(QStringLiteral("MeasurementList.hvb")), changed});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, QStringLiteral("RecordingState: On \u2192 Off\n"));
    QByteArray fewer = readAll(example(QStringLiteral("MeasurementResultList.xml")));
    fewer.replace(fewer.indexOf("12.50"), 5, "12.75");
    r = run({QStringLiteral("diff"), example(QStringLiteral("MeasurementResultList.hvr")), write(QStringLiteral("m.xml"), fewer)});
    EXPECT_EQ(r.out, QStringLiteral("MeasurementData[0].MeasurementResult.DoubleResult: 12.50 \u2192 12.75\n"));
    EXPECT_EQ(run({QStringLiteral("diff"), example(QStringLiteral("RDSResult.hvb")), example(QStringLiteral("RDSResult.hvr"))}).code, 0);
    r = run({QStringLiteral("diff"), example(QStringLiteral("RDSResult.xml")), example(QStringLiteral("ModeManager.xml"))});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, QStringLiteral("RDSResult \u2192 ModeManager\n"));
    EXPECT_EQ(run({QStringLiteral("diff"), example(QStringLiteral("RDSResult.xml")), dir.filePath(QStringLiteral("none.xml"))}).code, 2);
}

TEST_F(Tool, ExamplesOfManyItems)
{
    const QString big = dir.filePath(QStringLiteral("big.hvb"));
    ASSERT_EQ(run({QStringLiteral("example"), QStringLiteral("MeasurementResultList"), big, QStringLiteral("--count"), QStringLiteral("300")}).code, 0);
    EXPECT_EQ(run({QStringLiteral("validate"), big}).code, 0);
    const Result xml = run({QStringLiteral("convert"), big, QStringLiteral("-"), QStringLiteral("--to=xml")});
    EXPECT_EQ(xml.out.count(QStringLiteral("<MeasurementData>")), 300);
    // Lists inside items keep two.
    const Result matrix = run({QStringLiteral("example"), QStringLiteral("AntennaPatterns"), QStringLiteral("--count=5")});
    EXPECT_EQ(matrix.out.count(QStringLiteral("<AntennaPattern ")), 5);
    EXPECT_EQ(matrix.out.count(QStringLiteral("<Curve ")), 10);
}

// The exported XML Schema and validate agree: both take the examples, the
// "fine-" documents of tests/broken and documents with date-times of every
// kind and unset optionals; both refuse the rest of tests/broken.
TEST_F(Tool, ValidateAgreesWithXmllintOnTheExportedSchema)
{
    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty())
        GTEST_SKIP() << "xmllint is not installed";
    const QString xsd = write(QStringLiteral("halvane.xsd"), run({QStringLiteral("schema"), QStringLiteral("--xsd")}).out.toUtf8());
    QStringList files;
    const QDir broken(QStringLiteral(HALVANE_SOURCE_DIR "/tests/broken"));
    for (const QString &name : broken.entryList({QStringLiteral("*.xml")}, QDir::Files))
        files.append(broken.filePath(name));
    ASSERT_GE(files.size(), 20);
    for (const QString &name : exampleNames())
        files.append(example(name + QStringLiteral(".xml")));
    MeasurementResultList list;
    list.SetValidate(true);
    const QDateTime stamps[] = {QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::UTC),
                                QDateTime(QDate(-12, 1, 2), QTime(3, 4), Qt::OffsetFromUTC, -3600 * 5 - 7),
                                QDateTime(QDate(2026, 7, 1), QTime(8, 0), QTimeZone("Europe/Berlin"))};
    for (const QDateTime &t : stamps) {
        MeasurementData d;
        d.SetMeasurementItem(44);
        d.GetMeasurementResult().SetTimeStamp(t);
        list.AppendMeasurementData(d);
    }
    MeasurementList items;
    items.SetValidate(true);
    items.AppendMeasurementItem(68);
    files.append(write(QStringLiteral("written-list.xml"), list.GetXmlString().toUtf8()));
    files.append(write(QStringLiteral("written-items.xml"), items.GetXmlString().toUtf8()));
    for (const QString &file : files) {
        QProcess p;
        p.start(xmllint, {QStringLiteral("--noout"), QStringLiteral("--schema"), xsd, file});
        p.waitForFinished(60000);
        const Result v = run({QStringLiteral("validate"), file});
        const bool good = !file.contains(QStringLiteral("/broken/")) || QFileInfo(file).fileName().startsWith(QStringLiteral("fine-"));
        EXPECT_EQ(p.exitCode() == 0, good) << file.toStdString() << p.readAllStandardError().toStdString();
        EXPECT_EQ(v.code == 0, good) << file.toStdString() << v.err.toStdString();
        for (const QString &line : v.err.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            EXPECT_TRUE(line.startsWith(file + QLatin1Char(':'))) << line.toStdString();
    }
}
