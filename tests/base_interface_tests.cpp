// The object base as a host application sees it: every operation called
// through an IQuilletObject reference, the exact signatures and the order of
// the virtual table, the exceptions, and documents with a DTD.
#include "support.h"

#include "base/binaryheader.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QtCore/QStringDecoder>
#else
#include <QtCore/QTextCodec>
#endif

#include <cmath>
#include <cstring>
#include <exception>
#include <limits>
#include <type_traits>
#include <vector>

using namespace HALVANE;
using QUILLET::IQuilletObject;
using test::expectThrow;
using test::fullModeManager;

namespace {

// ---- The exceptions derive from nothing but their own root.

static_assert(!std::is_base_of<std::exception, QuilletRootException>::value, "no std::exception");
static_assert(std::is_base_of<QuilletRootException, QuilletException>::value, "");
static_assert(std::is_base_of<QuilletException, OutOfRangeException>::value, "");
static_assert(std::is_base_of<QuilletException, BinaryParsingException>::value, "");
static_assert(std::is_base_of<QuilletException, IncompleteDefinitionException>::value, "");
static_assert(std::is_base_of<QuilletException, InvalidXmlException>::value, "");
static_assert(std::is_copy_constructible<InvalidXmlException>::value, "");
static_assert(std::is_constructible<QuilletRootException, const QString &>::value, "");

// ---- Every listed virtual operation with its exact signature, in the order
// of the virtual table. A static_cast to a member pointer type only compiles
// for an overload of exactly that type.

struct Probe : IQuilletObject {
    struct Entry {
        const char *name;
        std::ptrdiff_t words[2];
    };
    template <class M>
    static Entry entry(const char *name, M member)
    {
        static_assert(sizeof(M) == sizeof(Entry::words), "member pointers of two words");
        Entry e{name, {}};
        std::memcpy(e.words, &member, sizeof e.words);
        return e;
    }
#define OP(type, name) entry(#name " " #type, static_cast<type>(&Probe::name))
    static std::vector<Entry> table()
    {
        using Q = IQuilletObject;
        return {
            OP(bool (Q::*)() const, HasData),
            OP(void (Q::*)(), Reset),
            OP(void (Q::*)(bool) const, Check),
            OP(void (Q::*)() const, Check),
            OP(bool (Q::*)(float) const, IsValid),
            OP(bool (Q::*)(bool) const, IsValid),
            OP(bool (Q::*)(unsigned int) const, IsValid),
            OP(bool (Q::*)(qint64) const, IsValid),
            OP(bool (Q::*)(const QDateTime &) const, IsValid),
            OP(bool (Q::*)(const QString &) const, IsValid),
            OP(bool (Q::*)(double) const, IsValid),
            OP(bool (Q::*)(int) const, IsValid),
            OP(void (Q::*)(float &) const, SetInvalid),
            OP(void (Q::*)(unsigned int &) const, SetInvalid),
            OP(void (Q::*)(qint64 &) const, SetInvalid),
            OP(void (Q::*)(QString &) const, SetInvalid),
            OP(void (Q::*)(double &) const, SetInvalid),
            OP(void (Q::*)(int &) const, SetInvalid),
            OP(void (Q::*)(QXmlStreamWriter &) const, GetXml),
            OP(bool (Q::*)(QDataStream &, int, bool) const, GetBinary),
            OP(void (Q::*)(QDataStream &, int), SetBinary),
            OP(void (Q::*)(const QString &, bool), SetXmlString),
            OP(void (Q::*)(QByteArray &), SetBinaryRepresentation),
            OP(void (Q::*)(QDataStream &), SetBinaryRepresentation),
            OP(void (Q::*)(const IQuilletObject &), MergeQuilletObject),
            OP(QUILLET::ObjectTypes (Q::*)() const, GetObjectType),
            OP(const QString &(Q::*)() const, GetObjectName),
            OP(void (Q::*)(QXmlStreamReader &), ProcessXml),
            OP(QString (Q::*)() const, GetXmlString),
            OP(void (Q::*)(QDataStream &) const, GetBinaryRepresentation),
            OP(QByteArray (Q::*)() const, GetBinaryRepresentationAsQByteArray),
            OP(void (Q::*)(QDataStream &, int) const, GetCompressedBinaryRepresentation),
            OP(QByteArray (Q::*)(int) const, GetCompressedBinaryRepresentationAsQByteArray),
            OP(void (Q::*)(const QString &), LoadXml),
            OP(void (Q::*)(QFile *), LoadXml),
            OP(void (Q::*)(QFile *), LoadBinary),
            OP(void (Q::*)(const QString &) const, SaveXml),
            OP(void (Q::*)(bool) const, SetValidate),
            OP(bool (Q::*)() const, GetValidate),
            OP(void (Q::*)(std::shared_ptr<QUILLET::Logger>) const, SetLogger),
            OP(void (Q::*)() const, ResetLogger),
            OP(const QString &(Q::*)() const, GetVersion),
            OP(void (Q::*)(QUILLET::ObjectTypes), SetObjectType),
            OP(void (Q::*)(const QString &), SetObjectName),
            OP(void (Q::*)(QXmlStreamReader &), ProcessXmlStartElement),
        };
    }
#undef OP
};

// The one-argument forms beside them, and the rest of the table.
static_assert(std::is_same<decltype(std::declval<IQuilletObject &>().GetLogger()), std::shared_ptr<QUILLET::Logger>>::value, "");
static_assert(std::is_same<decltype(&IQuilletObject::GetLogger), std::shared_ptr<QUILLET::Logger> (IQuilletObject::*)() const>::value, "");
static_assert(std::has_virtual_destructor<IQuilletObject>::value, "");

// Calls a host makes resolve to one overload; a string literal does not turn
// into a bool.
template <class T, class = void>
struct Checkable : std::false_type {};
template <class T>
struct Checkable<T, std::void_t<decltype(std::declval<const IQuilletObject &>().IsValid(std::declval<T>()))>>
    : std::true_type {};
static_assert(!Checkable<const char *>::value, "");
static_assert(Checkable<qint8>::value && Checkable<quint32>::value && Checkable<QLatin1String>::value, "");
template <class T, class = void>
struct BlockReadable : std::false_type {};
template <class T>
struct BlockReadable<T, std::void_t<decltype(std::declval<IQuilletObject &>().SetBinaryRepresentation(std::declval<T>()))>>
    : std::true_type {};
static_assert(BlockReadable<QByteArray &>::value && BlockReadable<const QByteArray &>::value
                  && BlockReadable<QByteArray>::value && BlockReadable<QDataStream &>::value,
              "");
template <class T, class = void>
struct Loadable : std::false_type {};
template <class T>
struct Loadable<T, std::void_t<decltype(std::declval<IQuilletObject &>().LoadXml(std::declval<T>()),
                                        std::declval<IQuilletObject &>().LoadBinary(std::declval<T>()))>>
    : std::true_type {};
static_assert(Loadable<QString>::value && Loadable<QFile *>::value && Loadable<std::nullptr_t>::value, "");
static_assert(std::is_constructible<IQuilletObject *, ModeManager *>::value, "");

QString linearEntityDocument()
{
    // One entity of 4 000 characters, referenced 100 000 times: 400 million
    // characters if it were expanded.
    QString text = QStringLiteral("<?xml version=\"1.0\"?>\n<!DOCTYPE ModeManager [<!ENTITY e \"")
                   + QString(4000, QLatin1Char('x')) + QStringLiteral("\">]>\n<ModeManager><RunningState>");
    text.reserve(text.size() + 100000 * 3 + 64);
    for (int i = 0; i < 100000; ++i)
        text += QStringLiteral("&e;");
    return text + QStringLiteral("</RunningState></ModeManager>");
}

// Qt's reader expands these while it reads the declaration, before it
// reports it, and reads a declaration wherever it stands.
QString parameterEntityDeclaration()
{
    QString text = QStringLiteral("<!DOCTYPE ModeManager [<!ENTITY % a \"<!ENTITY b '") + QString(4000, QLatin1Char('x'))
                   + QStringLiteral("'>\">");
    for (int i = 0; i < 100000; ++i)
        text += QStringLiteral("%a;");
    return text + QStringLiteral("]>");
}

QString parameterEntityDocument()
{
    return QStringLiteral("<!-- parameter entities -->\r\n") + parameterEntityDeclaration() + QStringLiteral("<ModeManager/>");
}

bool knowsEncoding(const char *name)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QStringDecoder(name).isValid();
#else
    return QTextCodec::codecForName(name) != nullptr;
#endif
}

QByteArray utf16le(const QString &text)
{
    QByteArray bytes;
    for (QChar c : text)
        bytes.append(char(c.unicode() & 0xFF)).append(char(c.unicode() >> 8));
    return bytes;
}

const QString kNoDtd = QStringLiteral("Document type declarations (DTDs) are not accepted.");

} // namespace

TEST(BaseInterface, VirtualOperationsInTheirOrder)
{
#if (defined(__x86_64__) || defined(__i386__)) && !defined(_WIN32)
    // Itanium member pointers: a virtual function is 1 + its byte offset in
    // the vtable. The two destructor entries come first.
    const auto table = Probe::table();
    for (size_t i = 0; i < table.size(); ++i) {
        EXPECT_EQ(table[i].words[1], 0) << table[i].name;
        EXPECT_EQ(table[i].words[0], std::ptrdiff_t(1 + (2 + i) * sizeof(void *))) << table[i].name;
    }
#else
    GTEST_SKIP() << "vtable layout is only read on x86 with the Itanium ABI";
#endif
}

TEST(BaseInterface, LibraryErrorsPassStdExceptionHandlers)
{
    ModeManager m;
    IQuilletObject &object = m;
    bool seenAsStd = false;
    try {
        try {
            object.SetXmlString(QStringLiteral("<RDSResult/>"), true);
        } catch (const std::exception &) {
            seenAsStd = true;
        }
        ADD_FAILURE() << "no exception";
    } catch (const QuilletRootException &e) {
        EXPECT_EQ(e.GetMessage(), QStringLiteral("ModeManager: root element 'RDSResult' at line 1, column 12 is not 'ModeManager'"));
        const QuilletRootException copy = e;
        EXPECT_EQ(copy.GetMessage(), e.GetMessage());
    }
    EXPECT_FALSE(seenAsStd);
}

TEST(BaseInterface, IdentityFlagLoggerThroughTheBase)
{
    Administration admin;
    IQuilletObject &object = admin;
    EXPECT_EQ(object.GetObjectName(), QStringLiteral("Administration"));
    EXPECT_EQ(quint32(object.GetObjectType()), quint32(Administration::GetId()));
    object.SetObjectType(QUILLET::ObjectTypes(7)); // a data class keeps its id
    EXPECT_EQ(quint32(object.GetObjectType()), quint32(Administration::GetId()));
    EXPECT_EQ(object.GetVersion(), QStringLiteral("1"));

    // The flag and the logger go down into nested objects, and ResetLogger
    // takes the logger from them too.
    admin.GetSensorMetaData();
    object.SetValidate(true);
    EXPECT_TRUE(object.GetValidate());
    EXPECT_TRUE(admin.GetSensorMetaData().GetValidate());
    auto log = std::make_shared<QUILLET::Logger>();
    object.SetLogger(log);
    EXPECT_EQ(admin.GetSensorMetaData().GetLogger(), log);
    object.ResetLogger();
    EXPECT_EQ(object.GetLogger(), nullptr);
    EXPECT_EQ(admin.GetSensorMetaData().GetLogger(), nullptr);

    // The name a subclass gives is the prefix of messages.
    struct Renamed : ModeManager {
        explicit Renamed(const QString &name) { SetObjectName(name); }
    } renamed(QStringLiteral("Front"));
    IQuilletObject &named = renamed;
    EXPECT_EQ(named.GetObjectName(), QStringLiteral("Front"));
    expectThrow<OutOfRangeException>([&] { named.Check(); }, QStringLiteral("Front: Please set RunningState properly."));
}

TEST(BaseInterface, DataOperationsThroughTheBase)
{
    ModeManager m;
    IQuilletObject &object = m;
    EXPECT_FALSE(object.HasData());
    expectThrow<OutOfRangeException>([&] { object.Check(true); }, QStringLiteral("ModeManager: Please set RunningState properly."));
    m = fullModeManager();
    EXPECT_TRUE(object.HasData());
    object.Check();

    // One object's forms, driven through the base.
    QString text;
    QXmlStreamWriter writer(&text);
    object.GetXml(writer);
    EXPECT_EQ(text, QStringLiteral("<ModeManager><RunningState>On</RunningState><DualState>On</DualState>"
                                   "<SearchScanMode>LeaveScanMode</SearchScanMode></ModeManager>"));
    ModeManager fromXml;
    QXmlStreamReader reader(text);
    reader.readNextStartElement();
    static_cast<IQuilletObject &>(fromXml).ProcessXml(reader);
    EXPECT_TRUE(reader.isEndElement());
    EXPECT_TRUE(fromXml == m);
    const QByteArray tagged = test::tagged(object, int(ModeManager::GetId()), true);
    EXPECT_EQ(tagged, m.GetBinaryRepresentationAsQByteArray().mid(4));
    ModeManager fromTagged;
    test::readTagged(static_cast<IQuilletObject &>(fromTagged), tagged.mid(4));
    EXPECT_TRUE(fromTagged == m);

    // Merging is left to the classes: nothing changes.
    ModeManager other;
    other.SetRunningState(0);
    object.MergeQuilletObject(other);
    EXPECT_TRUE(m == fullModeManager());

    object.Reset();
    EXPECT_FALSE(object.HasData());
}

TEST(BaseInterface, ValidityOfPlainValues)
{
    ModeManager m;
    const IQuilletObject &object = m;
    float f = 1.5f;
    double d = -2.0;
    int i = 0;
    unsigned int u = 0;
    qint64 l = 0;
    QString s = QStringLiteral("");
    EXPECT_TRUE(object.IsValid(f) && object.IsValid(d) && object.IsValid(i) && object.IsValid(u) && object.IsValid(l)
                && object.IsValid(s));
    EXPECT_TRUE(object.IsValid(std::numeric_limits<double>::infinity()));
    EXPECT_TRUE(object.IsValid(std::numeric_limits<int>::max()));
    EXPECT_TRUE(object.IsValid(true));
    EXPECT_TRUE(object.IsValid(qint8(-1))); // an enumerated value reads as an int
    EXPECT_FALSE(object.IsValid(-std::numeric_limits<float>::quiet_NaN()));
    EXPECT_FALSE(object.IsValid(QString()));
    EXPECT_FALSE(object.IsValid(QDateTime()));
    EXPECT_FALSE(object.IsValid(QDateTime(QDate(2024, 2, 30), QTime(0, 0), Qt::UTC)));
    EXPECT_TRUE(object.IsValid(QDateTime(QDate(2024, 2, 29), QTime(0, 0), Qt::UTC)));

    object.SetInvalid(f);
    object.SetInvalid(d);
    object.SetInvalid(i);
    object.SetInvalid(u);
    object.SetInvalid(l);
    object.SetInvalid(s);
    EXPECT_TRUE(std::isnan(f));
    EXPECT_TRUE(std::isnan(d));
    EXPECT_EQ(i, std::numeric_limits<int>::min());
    EXPECT_EQ(u, std::numeric_limits<unsigned int>::max());
    EXPECT_EQ(l, std::numeric_limits<qint64>::min());
    EXPECT_TRUE(s.isNull());
    EXPECT_FALSE(object.IsValid(f) || object.IsValid(d) || object.IsValid(i) || object.IsValid(u) || object.IsValid(l)
                 || object.IsValid(s));
}

TEST(BaseInterface, XmlStringResetsFirstOnRequest)
{
    MeasurementList list;
    list.AppendMeasurementItem(3);
    list.AppendMeasurementItem(13);
    const QString text = list.GetXmlString();
    MeasurementList target;
    IQuilletObject &object = target;
    object.SetXmlString(text, false);
    object.SetXmlString(text, false); // read onto what is there: appended
    EXPECT_EQ(target.GetMeasurementItem(), (QVector<MeasurementList::MeasurementItem>{3, 13, 3, 13}));
    object.SetXmlString(text);
    EXPECT_EQ(target.GetMeasurementItem().size(), 6);
    target.SetRecordingState(1);
    object.SetXmlString(text, true);
    EXPECT_TRUE(target == list);
    EXPECT_FALSE(target.IsRecordingStateSet());

    // Refused before the root element: nothing reset.
    target.SetRecordingState(1);
    expectThrow<InvalidXmlException>([&] { object.SetXmlString(QStringLiteral("<ModeManager/>"), true); },
                                     QStringLiteral("MeasurementList: root element 'ModeManager' at line 1, column 14 is not 'MeasurementList'"));
    EXPECT_TRUE(target.IsRecordingStateSet());
    EXPECT_EQ(target.GetMeasurementItem().size(), 2);
}

TEST(BaseInterface, BinaryBlocksThroughTheBase)
{
    const ModeManager m = fullModeManager();
    const IQuilletObject &source = m;
    const QByteArray block = source.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(test::hex(block.left(12)), "48 56 42 31 C3 7A 4A DF 00 00 00 35");
    QByteArray viaStream;
    {
        QDataStream out(&viaStream, QIODevice::WriteOnly);
        QUILLET::pinStream(out);
        source.GetBinaryRepresentation(out);
        source.GetBinaryRepresentation(out);
    }
    EXPECT_EQ(viaStream, block + block);

    // A stream gives one block and keeps the rest; an array must be one block
    // and is left as it was.
    ModeManager back;
    IQuilletObject &target = back;
    QDataStream in(viaStream);
    QUILLET::pinStream(in);
    target.SetBinaryRepresentation(in);
    EXPECT_TRUE(back == m);
    EXPECT_EQ(in.device()->pos(), block.size());
    QByteArray twice = viaStream;
    expectThrow<BinaryParsingException>([&] { target.SetBinaryRepresentation(twice); },
                                        QStringLiteral("ModeManager: %1 trailing bytes after the object").arg(block.size()));
    EXPECT_EQ(twice, viaStream);
    QByteArray once = block;
    back.Reset();
    target.SetBinaryRepresentation(once);
    EXPECT_TRUE(back == m);
    EXPECT_EQ(once, block);

    // Compressed at a level: 0 stores (4 bytes of size, 2 of zlib header, 5
    // of block header, the block, 4 of checksum); levels beyond -1..9 are -1.
    const QByteArray stored = source.GetCompressedBinaryRepresentationAsQByteArray(0);
    EXPECT_EQ(stored.size(), block.size() + 15);
    EXPECT_EQ(stored.mid(11, block.size()), block);
    EXPECT_EQ(source.GetCompressedBinaryRepresentationAsQByteArray(-1), qCompress(block));
    EXPECT_EQ(source.GetCompressedBinaryRepresentationAsQByteArray(42), qCompress(block));
    EXPECT_EQ(source.GetCompressedBinaryRepresentationAsQByteArray(9), qCompress(block, 9));
    EXPECT_EQ(m.GetCompressedBinaryRepresentation(), qCompress(block));
    QByteArray streamed;
    {
        QDataStream out(&streamed, QIODevice::WriteOnly);
        source.GetCompressedBinaryRepresentation(out, 0);
    }
    QDataStream compressedIn(streamed);
    QByteArray fromStream;
    compressedIn >> fromStream;
    EXPECT_TRUE(compressedIn.atEnd());
    EXPECT_EQ(fromStream, stored);
    ModeManager unpacked;
    unpacked.SetCompressedBinaryRepresentation(fromStream);
    EXPECT_TRUE(unpacked == m);
}

TEST(BaseInterface, FilesThroughTheBase)
{
    QTemporaryDir dir;
    const ModeManager m = fullModeManager();
    const IQuilletObject &source = m;
    const QString xmlName = dir.filePath(QStringLiteral("mode.xml"));
    source.SaveXml(xmlName);
    ModeManager a;
    IQuilletObject &target = a;
    target.LoadXml(xmlName);
    EXPECT_TRUE(a == m);

    // A closed file is opened and closed again.
    QFile closed(xmlName);
    ModeManager b;
    static_cast<IQuilletObject &>(b).LoadXml(&closed);
    EXPECT_TRUE(b == m);
    EXPECT_FALSE(closed.isOpen());
    // LoadBinary on open and closed files, read or refused, is
    // Documents.LoadBinaryReadsAFileAsTheBlockInMemory's.

    expectThrow<QuilletException>([&] { target.LoadXml(static_cast<QFile *>(nullptr)); },
                                  QStringLiteral("ModeManager: no file to read"));
    expectThrow<QuilletException>([&] { target.LoadBinary(nullptr); }, QStringLiteral("ModeManager: no file to read"));
    QFile writeOnly(dir.filePath(QStringLiteral("out.xml")));
    ASSERT_TRUE(writeOnly.open(QIODevice::WriteOnly));
    expectThrow<QuilletException>([&] { target.LoadXml(&writeOnly); },
                                  QStringLiteral("ModeManager: cannot read file '%1': it is not open for reading")
                                      .arg(writeOnly.fileName()));
}

TEST(BaseInterface, DocumentTypeDeclarationsAreRefused)
{
    ModeManager m = fullModeManager();
    IQuilletObject &object = m;
    const QString linear = linearEntityDocument();
    const QString parameters = parameterEntityDocument();
    const QString inside = QStringLiteral("<ModeManager>\n<RunningState>On</RunningState>") + parameterEntityDeclaration()
                           + QStringLiteral("</ModeManager>");
    const QString after = QStringLiteral("<ModeManager/>\n\n") + parameterEntityDeclaration();
    const auto refused = [&](const QString &text, int line, int column, bool resetFirst = false) {
        expectThrow<InvalidXmlException>(
            [&] { object.SetXmlString(text, resetFirst); },
            QStringLiteral("ModeManager: XML error at line %1, column %2: ").arg(line).arg(column) + kNoDtd);
    };
    const long long before = test::allocations();
    refused(linear, 2, 0);
    refused(parameters, 2, 0, true);
    refused(inside, 2, 31, true);
    refused(after, 3, 0, true);
    // A few for each message, none for a reader's expansions.
    EXPECT_LT(test::allocations() - before, 100);
    EXPECT_TRUE(m == fullModeManager());

    refused(QStringLiteral("<!DOCTYPE ModeManager><ModeManager/>"), 1, 0);
    refused(QString(QChar(0xFEFF)) + QStringLiteral("<?xml version=\"1.0\"?><!DOCTYPE ModeManager><ModeManager/>"), 1, 21);
    refused(QStringLiteral("<?xml version=\"1.0\"?>\r\n<?pi x?>\r<!-- a\n b -->\t <!DOCTYPE ModeManager SYSTEM \"x.dtd\">"
                           "<ModeManager/>"),
            4, 8);
    refused(QStringLiteral("<ModeManager><!-- --><?pi?><![CDATA[]]><!DOCTYPE ModeManager></ModeManager>"), 1, 39);
    // In comments, processing instructions and CDATA sections it is text.
    object.SetXmlString(QStringLiteral("<!-- <!DOCTYPE x> --><?pi <!DOCTYPE y>?><ModeManager><![CDATA[<!DOCTYPE z>]]>"
                                       "<DualState>Off</DualState></ModeManager>"));
    EXPECT_EQ(m.GetDualState(), 0);
    // A construct left open is the reader's to report.
    expectThrow<InvalidXmlException>([&] { object.SetXmlString(QStringLiteral("<ModeManager><!-- <!DOCTYPE x>")); },
                                     QStringLiteral("ModeManager: XML error at line 1, column 30: Premature end of document."));
}

TEST(BaseInterface, DocumentTypeDeclarationsAreRefusedInFiles)
{
    QTemporaryDir dir;
    ModeManager m;
    IQuilletObject &object = m;
    const auto refused = [&](const QByteArray &bytes, const QString &where) {
        QFile file(dir.filePath(QStringLiteral("doc.xml")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        expectThrow<InvalidXmlException>([&] { object.LoadXml(&file); },
                                         QStringLiteral("ModeManager: XML error at ") + where + QStringLiteral(": ") + kNoDtd);
        expectThrow<InvalidXmlException>([&] { object.LoadXml(file.fileName()); },
                                         QStringLiteral("ModeManager: XML error at ") + where + QStringLiteral(": ") + kNoDtd);
    };
    refused(linearEntityDocument().toUtf8(), QStringLiteral("line 2, column 0"));
    refused(parameterEntityDocument().toUtf8(), QStringLiteral("line 2, column 0"));
    // Columns count characters, not bytes.
    refused(QByteArray("\xEF\xBB\xBF<!-- \xC3\xA4\xF0\x9F\x98\x80 --><!DOCTYPE ModeManager><ModeManager/>"),
            QStringLiteral("line 1, column 12"));
    // Other code units: UTF-16 by its byte order mark or its first bytes.
    const QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n <!DOCTYPE ModeManager><ModeManager/>");
    const QByteArray le = utf16le(text);
    refused(le, QStringLiteral("line 2, column 1"));
    refused(QByteArray("\xFF\xFE") + le, QStringLiteral("line 2, column 1"));
    // After a declaration of an encoding, the rest is read in it: here '<' is "+ADw-".
    if (knowsEncoding("UTF-7")) {
        refused(QByteArray("<?xml version=\"1.0\" encoding=\"UTF-7\"?>+ADw-!DOCTYPE ModeManager+AD4-+ADw-ModeManager/+AD4-"),
                QStringLiteral("line 1, column 38"));
    }
    QFile file(dir.filePath(QStringLiteral("latin1.xml")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<!-- \xE4 --><ModeManager><DualState>On</DualState></ModeManager>");
    file.close();
    object.LoadXml(&file);
    EXPECT_EQ(m.GetDualState(), 1);
}

// Files are scanned in pieces of 64 KiB: a declaration, or a construct that
// hides one, may stand across a piece's end. Whatever the file, LoadXml must
// say what SetXmlString says of its text.
TEST(BaseInterface, FilesAreScannedInPiecesAsTextIsWhole)
{
    QTemporaryDir dir;
    const int piece = 1 << 16;
    const QString root = QStringLiteral("<ModeManager><DualState>On</DualState></ModeManager>");
    const auto padded = [](int size) { return QString(size, QLatin1Char(' ')); };
    QVector<QString> texts;
    for (int shift = -10; shift <= 2; ++shift) {
        const int pad = piece + shift;
        texts << padded(pad) + QStringLiteral("<!DOCTYPE ModeManager>") + root;                // straddles
        texts << padded(pad) + QStringLiteral("<!-- <!DOCTYPE x> -->") + root;                  // hidden in a comment
        texts << padded(pad) + QStringLiteral("<![CDATA[x]]><!DOCTYPE ModeManager>") + root;    // wrong place, refused
        texts << QStringLiteral("<!--") + padded(pad) + QStringLiteral("-- -->\n<!DOCTYPE a>") + root;
        texts << QStringLiteral("<!--") + padded(pad) + QStringLiteral("-->") + root + QStringLiteral("<!DOCTYPE a>");
        texts << QStringLiteral("<?pi ") + padded(pad) + QStringLiteral("? ?>") + root;
        texts << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + padded(pad) + QStringLiteral("<") + root;
    }
    texts << QStringLiteral("<!-- never closed <!DOCTYPE x>") + padded(2 * piece);
    texts << QStringLiteral("\r\n\r<x/>\n<!DOCTYPE ModeManager>");
    for (const QString &text : texts) {
        SCOPED_TRACE(text.trimmed().left(60).toStdString());
        ModeManager fromText, fromFile;
        QString expected = QStringLiteral("no exception");
        try {
            fromText.SetXmlString(text);
        } catch (const QuilletRootException &e) {
            expected = e.GetMessage();
        }
        QFile file(dir.filePath(QStringLiteral("doc.xml")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QByteArray("\xEF\xBB\xBF") + text.toUtf8());
        file.close();
        QString got = QStringLiteral("no exception");
        try {
            fromFile.LoadXml(&file);
        } catch (const QuilletRootException &e) {
            got = e.GetMessage();
        }
        EXPECT_EQ(got, expected);
        EXPECT_FALSE(file.isOpen());
        EXPECT_TRUE(fromFile == fromText);
    }
}
