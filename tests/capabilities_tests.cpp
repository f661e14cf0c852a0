// The seventeen classes of the capabilities document: which bits
// ResetToDefault turns on in each class, bools with and without a default,
// the Audio flag that starts true, presence bytes of the wide classes, exact
// forms of one object per class, and the document's members, whose content
// counts for AnyData whatever their bits say.
#include "support.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <memory>
#include <stdexcept>

using namespace HALVANE;
using test::expectThrow;

namespace {

using Object = std::unique_ptr<QUILLET::IQuilletObject>;

const schema::Class &classNamed(const char *name)
{
    const schema::Class *c = schema::findClass(QLatin1String(name));
    if (!c)
        throw std::runtime_error(std::string("no class ") + name);
    return *c;
}

QByteArray rawOf(const schema::Class &c, const QUILLET::IQuilletObject &o)
{
    return test::written([&](QDataStream &s) { c.writeRaw(o, s); });
}

// Bits named as "0-3,5-9"; an empty text names none.
QSet<int> bitsOf(const char *text)
{
    QSet<int> bits;
    for (const QString &part : QString::fromLatin1(text).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const int lo = part.section(QLatin1Char('-'), 0, 0).toInt();
        const int hi = part.contains(QLatin1Char('-')) ? part.section(QLatin1Char('-'), 1, 1).toInt() : lo;
        for (int b = lo; b <= hi; ++b)
            bits.insert(b);
    }
    return bits;
}

QByteArray presenceBytes(const QSet<int> &bits, int count)
{
    QByteArray bytes(count, '\0');
    for (int b : bits)
        bytes[b / 8] = char(quint8(bytes[b / 8]) | (1u << (b % 8)));
    return bytes;
}

struct AfterDefault {
    QByteArray fresh;   // raw form of a new object after ResetToDefault
    QByteArray filled;  // the same after a fully populated object's ResetToDefault
    QByteArray reset;   // raw form of a fully populated object after Reset
    bool anyData;
    bool hasData;
};

template <class X>
AfterDefault afterResetToDefault()
{
    const schema::Class &c = *schema::findClass(X::GetStaticObjectName());
    X fresh;
    fresh.ResetToDefault();
    X filled;
    test::readXml(filled, schema::exampleXml(c));
    filled.ResetToDefault();
    X reset;
    test::readXml(reset, schema::exampleXml(c));
    reset.Reset();
    return {test::raw(fresh), test::raw(filled), test::raw(reset), fresh.AnyData(), fresh.HasData()};
}

struct DefaultRow {
    const char *cls;
    AfterDefault (*run)();
    int presence;       // presence bytes of the raw form
    const char *bits;   // the bits ResetToDefault turns on
    const char *truth;  // of those, the fields whose default is true
    int required;       // bytes of required values written whatever the bits
    bool hasData;
};

const DefaultRow kDefaultRows[] = {
    {"Capabilities", &afterResetToDefault<Capabilities>, 4, "6-10,17-23,25,27-29,31", "", 0, true},
    {"HardwareOptions", &afterResetToDefault<HardwareOptions>, 6, "0-46", "", 0, true},
    {"MainToolbarCapabilites", &afterResetToDefault<MainToolbarCapabilites>, 2, "", "", 0, true},
    {"ToolsToolbarCapabilities", &afterResetToDefault<ToolsToolbarCapabilities>, 1, "", "", 0, true},
    {"PIFPanToolbarCapabilities", &afterResetToDefault<PIFPanToolbarCapabilities>, 1, "", "", 0, true},
    {"FrequencyStoreCapabilites", &afterResetToDefault<FrequencyStoreCapabilites>, 1, "", "", 0, true},
    {"FileMenuCapabilites", &afterResetToDefault<FileMenuCapabilites>, 1, "", "", 0, true},
    {"FFMInputToolbarCapabilities", &afterResetToDefault<FFMInputToolbarCapabilities>, 1, "0-7", "", 0, true},
    {"MasterRecordingCapabilities", &afterResetToDefault<MasterRecordingCapabilities>, 3, "0-14,16", "5", 0, true},
    {"CSVRecordCapabilities", &afterResetToDefault<CSVRecordCapabilities>, 1, "0-1", "", 0, true},
    {"DFCabapilites", &afterResetToDefault<DFCabapilites>, 2, "0-3,5-9", "", 0, true},
    {"NetworkCapabilities", &afterResetToDefault<NetworkCapabilities>, 1, "0-3", "", 0, true},
    {"StatusCapabilities", &afterResetToDefault<StatusCapabilities>, 1, "0-1", "", 0, true},
    {"AudioCapabilities", &afterResetToDefault<AudioCapabilities>, 1, "0-2", "", 0, true},
    {"ConnectorCapabilities", &afterResetToDefault<ConnectorCapabilities>, 1, "0-5", "", 0, true},
    // A default value of 0.0, but no bit: both doubles stay unset and are
    // written anyway, as required doubles are.
    {"ISBBandwidthSettings", &afterResetToDefault<ISBBandwidthSettings>, 1, "", "", 16, false},
    {"DateTimeCapability", &afterResetToDefault<DateTimeCapability>, 1, "0-7", "", 0, true},
};

} // namespace

TEST(Capabilities, ResetToDefaultTurnsOnTheBitsOfEachClass)
{
    QSet<QString> covered;
    for (const DefaultRow &row : kDefaultRows) {
        SCOPED_TRACE(row.cls);
        covered.insert(QLatin1String(row.cls));
        const AfterDefault after = row.run();
        const QSet<int> bits = bitsOf(row.bits);
        const QSet<int> truth = bitsOf(row.truth);
        // Presence bytes, then one bool per bit that is on, in bit order.
        QByteArray expected = presenceBytes(bits, row.presence);
        for (int b = 0; b < 8 * row.presence; ++b) {
            if (bits.contains(b))
                expected.append(truth.contains(b) ? '\1' : '\0');
        }
        expected.append(QByteArray(row.required, '\0'));
        EXPECT_EQ(test::hex(after.fresh), test::hex(expected));
        // On a populated object it resets first: members empty, values initial.
        EXPECT_EQ(test::hex(after.filled), test::hex(expected));
        // Reset clears every bit and puts back the initial values, also of required fields.
        EXPECT_EQ(test::hex(after.reset), test::hex(QByteArray(row.presence, '\0') + QByteArray(row.required, '\0')));
        EXPECT_EQ(after.anyData, !bits.isEmpty());
        EXPECT_EQ(after.hasData, row.hasData);
    }
    // Every class of the subsystem has its row.
    EXPECT_EQ(covered.size(), 17);
}

// Beyond Xml.BoolText: other digits, and blanks that are not trimmed.
TEST(Capabilities, BoolTextIsFalseOnlyForZeroAndFalseInAnyCase)
{
    const struct {
        const char *text;
        bool value;
    } rows[] = {{"False", false}, {"True", true}, {"2", true}, {" false", true}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        HardwareOptions h;
        h.SetValidate(true);
        test::readXml(h, QStringLiteral("<HardwareOptions><SEHF>%1</SEHF></HardwareOptions>").arg(QLatin1String(row.text)));
        EXPECT_TRUE(h.IsSEHFSet());
        EXPECT_EQ(h.GetSEHF(), row.value);
    }
}

namespace {

// One object of each class, as XML, with its tagged form (object length
// first) and its raw form. Values true and false at bits in later bytes.
struct FormRow {
    const char *cls;
    const char *xml;
    const char *tagged;
    const char *raw;
};

const FormRow kFormRows[] = {
    {"AudioCapabilities",
     "<AudioCapabilities><SynthesizerMode>true</SynthesizerMode><AudioStereoMode>false</AudioStereoMode></AudioCapabilities>",
     "00 00 00 12 81 1D BE A2 00 00 00 01 01 84 57 16 CE 00 00 00 01 00", "06 01 00"},
    {"ConnectorCapabilities",
     "<ConnectorCapabilities><VUHF1Connector>false</VUHF1Connector><HF3Connector>true</HF3Connector></ConnectorCapabilities>",
     "00 00 00 12 68 7E 8F CE 00 00 00 01 00 68 C1 A0 16 00 00 00 01 01", "21 00 01"},
    {"StatusCapabilities", "<StatusCapabilities><OmniphaseCalibration>true</OmniphaseCalibration></StatusCapabilities>",
     "00 00 00 09 A8 1B CA 8F 00 00 00 01 01", "02 01"},
    {"DFCabapilites",
     "<DFCabapilites><DFReference>true</DFReference><DFScan>true</DFScan><InvertedDFAntenna>false</InvertedDFAntenna></DFCabapilites>",
     "00 00 00 1B 4E 40 CC 82 00 00 00 01 01 AB D6 E7 3C 00 00 00 01 01 66 4E AD 17 00 00 00 01 00", "10 06 01 01 00"},
    {"HardwareOptions",
     "<HardwareOptions><PanoramaScan>true</PanoramaScan><ZeroSpan>false</ZeroSpan><Polychrome>true</Polychrome></HardwareOptions>",
     "00 00 00 1B CA 9E 43 1D 00 00 00 01 01 2B 38 1E C9 00 00 00 01 00 AA B2 1D 1E 00 00 00 01 01",
     "01 00 00 00 08 40 01 00 01"},
    {"NetworkCapabilities", "<NetworkCapabilities><NTP>true</NTP><Locking>true</Locking></NetworkCapabilities>",
     "00 00 00 12 4C 6A A2 90 00 00 00 01 01 69 60 CA CB 00 00 00 01 01", "09 01 01"},
    {"MainToolbarCapabilites", "<MainToolbarCapabilites><EditMode>false</EditMode><Dual>true</Dual></MainToolbarCapabilites>",
     "00 00 00 12 85 01 19 69 00 00 00 01 00 84 FF 27 87 00 00 00 01 01", "01 08 00 01"},
    {"ToolsToolbarCapabilities", "<ToolsToolbarCapabilities><Save>true</Save></ToolsToolbarCapabilities>",
     "00 00 00 09 23 43 25 68 00 00 00 01 01", "08 01"},
    {"PIFPanToolbarCapabilities", "<PIFPanToolbarCapabilities><PIFMode>false</PIFMode></PIFPanToolbarCapabilities>",
     "00 00 00 09 81 54 86 ED 00 00 00 01 00", "01 00"},
    {"FrequencyStoreCapabilites",
     "<FrequencyStoreCapabilites><Clipboard>true</Clipboard><FileExport>false</FileExport></FrequencyStoreCapabilites>",
     "00 00 00 12 8A FA C1 A6 00 00 00 01 01 8D E6 1B B4 00 00 00 01 00", "84 01 00"},
    {"FileMenuCapabilites", "<FileMenuCapabilites><ExitWithOstrom>true</ExitWithOstrom></FileMenuCapabilites>",
     "00 00 00 09 42 3C 81 4A 00 00 00 01 01", "08 01"},
    {"FFMInputToolbarCapabilities",
     "<FFMInputToolbarCapabilities><MeasMode>true</MeasMode><AFC>false</AFC></FFMInputToolbarCapabilities>",
     "00 00 00 12 4A 19 18 39 00 00 00 01 01 2A 13 E5 7C 00 00 00 01 00", "81 01 00"},
    {"CSVRecordCapabilities", "<CSVRecordCapabilities><SoftwareRecording>true</SoftwareRecording></CSVRecordCapabilities>",
     "00 00 00 09 86 F9 F4 E3 00 00 00 01 01", "02 01"},
    {"MasterRecordingCapabilities",
     "<MasterRecordingCapabilities><Audio>false</Audio><CSVRecordCapabilities><DeviceRecording>true</DeviceRecording>"
     "</CSVRecordCapabilities><JumboFrameCapability>true</JumboFrameCapability></MasterRecordingCapabilities>",
     "00 00 00 23 24 AC B8 E3 00 00 00 01 00 62 9D 74 19 00 00 00 09 CB BF C4 70 00 00 00 01 01 "
     "CE 13 21 17 00 00 00 01 01",
     "20 80 01 00 01 01 01"},
    {"ISBBandwidthSettings",
     "<ISBBandwidthSettings><MinBandwidth>0.25</MinBandwidth><MaxBandwidth>12500.00</MaxBandwidth></ISBBandwidthSettings>",
     "00 00 00 24 C3 2E B7 5A 00 00 00 08 00 00 00 04 30 2E 32 35 A7 23 FF DA 00 00 00 0C 00 00 00 08 "
     "31 32 35 30 30 2E 30 30",
     "03 3F D0 00 00 00 00 00 00 40 C8 6A 00 00 00 00 00"},
    {"DateTimeCapability",
     "<DateTimeCapability><UserInputSupport>true</UserInputSupport><ReceiverClockOriginSupport>false"
     "</ReceiverClockOriginSupport><ClockLastSetSupport>true</ClockLastSetSupport><TimeZoneSupport>false"
     "</TimeZoneSupport><GPSSetTimeSupport>true</GPSSetTimeSupport><NTSSetTimeSupport>false</NTSSetTimeSupport>"
     "<GPSTimeOffsetSupport>true</GPSTimeOffsetSupport><ClockStartSupport>false</ClockStartSupport></DateTimeCapability>",
     "00 00 00 48 CC D6 89 51 00 00 00 01 01 CE DA 50 30 00 00 00 01 00 E7 B8 EB EA 00 00 00 01 01 "
     "0E B0 9C 01 00 00 00 01 00 48 60 CD 4A 00 00 00 01 01 AF ED 4F 46 00 00 00 01 00 "
     "CB 98 B4 8D 00 00 00 01 01 27 68 E5 8C 00 00 00 01 00",
     "FF 01 00 01 00 01 00 01 00"},
    // IQRecording twice, with one tag, in two blocks: false in the document,
    // true in its recording capabilities.
    {"Capabilities",
     "<Capabilities><HardwareOptions><Polychrome>true</Polychrome></HardwareOptions><IQRecording>false</IQRecording>"
     "<MasterRecordingCapabilities><IQRecording>true</IQRecording></MasterRecordingCapabilities><ISBBandwidthSettings>"
     "<MinBandwidth>1.50</MinBandwidth><MaxBandwidth>2.50</MaxBandwidth></ISBBandwidthSettings>"
     "<SystemAntennaConnectedCommand>true</SystemAntennaConnectedCommand></Capabilities>",
     "00 00 00 5C 27 01 36 1B 00 00 00 09 AA B2 1D 1E 00 00 00 01 01 82 7B EB 36 00 00 00 01 00 "
     "21 EC 4A FB 00 00 00 09 82 7B EB 36 00 00 00 01 01 C4 62 47 B5 00 00 00 20 C3 2E B7 5A 00 00 00 08 "
     "00 00 00 04 31 2E 35 30 A7 23 FF DA 00 00 00 08 00 00 00 04 32 2E 35 30 CB D5 C4 9C 00 00 00 01 01",
     "10 02 00 85 00 00 00 00 00 40 01 00 01 00 00 01 03 3F F8 00 00 00 00 00 00 40 04 00 00 00 00 00 00 01"},
};

} // namespace

TEST(Capabilities, EachClassWritesExactFormsAndReadsThemBack)
{
    for (const FormRow &row : kFormRows) {
        SCOPED_TRACE(row.cls);
        const schema::Class &c = classNamed(row.cls);
        const QString xml = QString::fromUtf8(row.xml);
        Object o = c.create();
        o->SetValidate(true);
        test::readXml(*o, xml);
        EXPECT_EQ(test::xml(*o), xml);
        EXPECT_EQ(test::hex(test::tagged(*o)), row.tagged);
        EXPECT_EQ(test::hex(rawOf(c, *o)), row.raw);

        Object fromTagged = c.create();
        fromTagged->SetValidate(true);
        test::readTagged(*fromTagged, test::tagged(*o));
        EXPECT_EQ(test::xml(*fromTagged), xml);

        Object fromRaw = c.create();
        QDataStream in(rawOf(c, *o));
        c.readRaw(*fromRaw, in);
        EXPECT_EQ(in.status(), QDataStream::Ok);
        EXPECT_TRUE(in.atEnd());
        EXPECT_EQ(test::xml(*fromRaw), xml);
    }
}

TEST(Capabilities, AudioStartsTrueAndResetsToTrue)
{
    MasterRecordingCapabilities fresh;
    EXPECT_TRUE(fresh.GetAudio());
    EXPECT_FALSE(fresh.IsAudioSet());
    EXPECT_FALSE(fresh.AnyData());
    EXPECT_EQ(test::xml(fresh), QStringLiteral("<MasterRecordingCapabilities/>"));

    // Same value, but one bit on: unequal.
    MasterRecordingCapabilities set;
    set.SetAudio(true);
    EXPECT_FALSE(fresh == set);

    set.SetAudio(false);
    set.ResetAudio();
    EXPECT_TRUE(set.GetAudio());
    EXPECT_FALSE(set.IsAudioSet());
    set.SetAudio(false);
    set.Reset();
    EXPECT_TRUE(set.GetAudio());

    // A document without the element leaves the value true; "0" makes it false.
    MasterRecordingCapabilities read;
    test::readXml(read, QStringLiteral("<MasterRecordingCapabilities><TV>true</TV></MasterRecordingCapabilities>"));
    EXPECT_TRUE(read.GetAudio());
    EXPECT_FALSE(read.IsAudioSet());
    test::readXml(read, QStringLiteral("<MasterRecordingCapabilities><Audio>0</Audio></MasterRecordingCapabilities>"));
    EXPECT_FALSE(read.GetAudio());
    EXPECT_TRUE(read.IsAudioSet());
    // An empty element gives the default, true, even while validating.
    read.SetValidate(true);
    test::readXml(read, QStringLiteral("<MasterRecordingCapabilities><Audio/></MasterRecordingCapabilities>"));
    EXPECT_TRUE(read.GetAudio());
}

TEST(Capabilities, HardwareOptionsUseSixPresenceBytes)
{
    HardwareOptions only;
    only.SetPolychrome(true);
    EXPECT_EQ(test::hex(test::raw(only)), "00 00 00 00 00 40 01");

    // The 48th bit of the six bytes belongs to no field: it is dropped and no
    // value is read for it.
    QByteArray all = QByteArray::fromHex("FFFFFFFFFFFF") + QByteArray(47, '\1');
    HardwareOptions read;
    test::readRaw(read, all + QByteArray::fromHex("AB"));
    EXPECT_TRUE(read.GetPolychrome());
    EXPECT_TRUE(read.GetPanoramaScan());
    EXPECT_EQ(test::hex(test::raw(read)), test::hex(QByteArray::fromHex("FFFFFFFFFF7F") + QByteArray(47, '\1')));

    // The raw reader replaces the bits; fields whose bit is now off keep their values.
    HardwareOptions kept;
    kept.SetTuner0(true);
    test::readRaw(kept, test::raw(only));
    EXPECT_FALSE(kept.IsTuner0Set());
    EXPECT_TRUE(kept.GetTuner0());
    EXPECT_TRUE(kept.IsPolychromeSet());
}

TEST(Capabilities, DocumentAlwaysHasDataAndAsksEveryMemberForAny)
{
    Capabilities fresh;
    EXPECT_TRUE(fresh.HasData());

    // A member's bit without data counts for nothing, but the member is written.
    Capabilities touched;
    touched.GetHardwareOptions();
    EXPECT_TRUE(touched.IsHardwareOptionsSet());
    EXPECT_FALSE(touched.AnyData());
    EXPECT_EQ(test::xml(touched), QStringLiteral("<Capabilities><HardwareOptions/></Capabilities>"));

    // ResetFoo replaces the member: its content is gone, not hidden.
    Capabilities replaced;
    replaced.GetDFCabapilites().SetDFEnabled(true);
    EXPECT_TRUE(replaced.AnyData());
    replaced.ResetDFCabapilites();
    EXPECT_FALSE(replaced.AnyData());
    EXPECT_FALSE(replaced.GetDFCabapilites().IsDFEnabledSet());
}

TEST(Capabilities, RawReadThatTurnsAMemberBitOffKeepsTheMember)
{
    Capabilities c;
    c.GetHardwareOptions().SetGPS(true);
    c.SetRadioDataSystem(true);
    Capabilities other;
    other.SetRadioDataSystem(true);

    test::readRaw(c, test::raw(other));
    EXPECT_FALSE(c.IsHardwareOptionsSet());
    const Capabilities &view = c;
    EXPECT_TRUE(view.GetHardwareOptions().GetGPS());
    // The member's content counts for AnyData, but not for the writers or ==.
    EXPECT_TRUE(c.AnyData());
    EXPECT_EQ(test::xml(c), QStringLiteral("<Capabilities><RadioDataSystem>true</RadioDataSystem></Capabilities>"));
    EXPECT_EQ(test::raw(c), test::raw(other));
    EXPECT_TRUE(c == other);
    EXPECT_TRUE(view.GetHardwareOptions().GetGPS()); // the comparison left it alone

    // With no bit on at all, the member alone still makes AnyData true.
    Capabilities none;
    none.GetNetworkCapabilities().SetNTP(false);
    test::readRaw(none, QByteArray::fromHex("00000000"));
    EXPECT_FALSE(none.IsNetworkCapabilitiesSet());
    EXPECT_TRUE(none.AnyData());
    EXPECT_TRUE(none == Capabilities());
}

TEST(Capabilities, CheckAsksOnlyTheMembersWhoseBitIsOn)
{
    Capabilities c;
    c.Check(); // every member is unset, the empty ones too
    c.SetISBBandwidthSettings(ISBBandwidthSettings());
    EXPECT_TRUE(c.IsISBBandwidthSettingsSet());
    // Check does not look at the flag; GetXml runs it only with the flag on.
    expectThrow<OutOfRangeException>([&] { c.Check(); }, QStringLiteral("ISBBandwidthSettings: Please set MinBandwidth properly."));
    EXPECT_EQ(test::xml(c), QStringLiteral("<Capabilities><ISBBandwidthSettings><MinBandwidth>0.00</MinBandwidth>"
                                           "<MaxBandwidth>0.00</MaxBandwidth></ISBBandwidthSettings></Capabilities>"));
    c.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { test::xml(c); },
                                     QStringLiteral("ISBBandwidthSettings: Please set MinBandwidth properly."));
    expectThrow<OutOfRangeException>([&] { test::tagged(c); },
                                     QStringLiteral("ISBBandwidthSettings: Please set MinBandwidth properly."));
    c.ResetISBBandwidthSettings();
    c.Check();

    DateTimeCapability clock;
    clock.ResetToDefault();
    clock.ResetNTSSetTimeSupport();
    c.SetDateTimeCapability(clock);
    expectThrow<OutOfRangeException>([&] { c.Check(true); },
                                     QStringLiteral("DateTimeCapability: Please set NTSSetTimeSupport properly."));
    c.GetDateTimeCapability().SetNTSSetTimeSupport(true);
    EXPECT_EQ(test::xml(c).count(QStringLiteral("Support>")), 16);
}

TEST(Capabilities, ISBBandwidthSettingsDemandsBothAndWritesThemAlways)
{
    ISBBandwidthSettings fresh;
    EXPECT_FALSE(fresh.HasData());
    EXPECT_FALSE(fresh.AnyData());
    const QString min = QStringLiteral("ISBBandwidthSettings: Please set MinBandwidth properly.");
    const QString max = QStringLiteral("ISBBandwidthSettings: Please set MaxBandwidth properly.");
    expectThrow<OutOfRangeException>([&] { fresh.Check(); }, min);

    ISBBandwidthSettings onlyMax;
    onlyMax.SetMaxBandwidth(1);
    expectThrow<OutOfRangeException>([&] { onlyMax.Check(); }, min);
    ISBBandwidthSettings onlyMin;
    onlyMin.SetMinBandwidth(1);
    expectThrow<OutOfRangeException>([&] { onlyMin.Check(); }, max);
    EXPECT_TRUE(onlyMin.AnyData());

    // No relation between the two is enforced.
    ISBBandwidthSettings inverted;
    inverted.SetValidate(true);
    inverted.SetMinBandwidth(12500.0);
    inverted.SetMaxBandwidth(1.2345);
    inverted.Check();
    EXPECT_EQ(test::xml(inverted), QStringLiteral("<ISBBandwidthSettings><MinBandwidth>12500.00</MinBandwidth>"
                                                  "<MaxBandwidth>1.23</MaxBandwidth></ISBBandwidthSettings>"));

    // The raw form holds both values whatever the bits; the bits come back as they were.
    ISBBandwidthSettings half;
    half.SetMinBandwidth(0.125);
    EXPECT_EQ(test::hex(test::raw(half)), "01 3F C0 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
    ISBBandwidthSettings back;
    back.SetMaxBandwidth(9);
    test::readRaw(back, test::raw(half));
    EXPECT_FALSE(back.IsMaxBandwidthSet());
    EXPECT_EQ(back.GetMaxBandwidth(), 0.0);
    EXPECT_EQ(back.GetMinBandwidth(), 0.125);
}

TEST(Capabilities, DateTimeCapabilityWritersTestEachBitAndTheRawReaderReadsEight)
{
    const schema::Class &c = classNamed("DateTimeCapability");
    ASSERT_EQ(c.fields.size(), 8);
    // With one field left out, Check names it; the writers leave it out.
    for (const schema::Field &missing : c.fields) {
        SCOPED_TRACE(missing.name.toStdString());
        QString xml = QStringLiteral("<DateTimeCapability>");
        for (const schema::Field &f : c.fields) {
            if (&f != &missing)
                xml += QStringLiteral("<%1>true</%1>").arg(f.element);
        }
        xml += QStringLiteral("</DateTimeCapability>");
        DateTimeCapability d;
        test::readXml(d, xml);
        expectThrow<OutOfRangeException>([&] { d.Check(); },
                                         QStringLiteral("DateTimeCapability: Please set %1 properly.").arg(missing.name));
        EXPECT_EQ(test::xml(d), xml);
        EXPECT_EQ(test::tagged(d).size(), 4 + 7 * 9);
        EXPECT_EQ(test::raw(d).size(), 1 + 7);
        d.SetValidate(true);
        expectThrow<OutOfRangeException>([&] { test::xml(d); },
                                         QStringLiteral("DateTimeCapability: Please set %1 properly.").arg(missing.name));
    }

    DateTimeCapability defaults;
    defaults.ResetToDefault();
    EXPECT_TRUE(defaults.HasData());
    defaults.Check();

    // The reader reads eight bools whatever the presence byte says.
    DateTimeCapability read;
    QDataStream in(QByteArray::fromHex("01") + QByteArray(8, '\1'));
    read.SetVersionSpecificBinaryWithoutValidation(in);
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(in.status(), QDataStream::Ok);
    EXPECT_TRUE(read.IsUserInputSupportSet());
    EXPECT_FALSE(read.IsClockStartSupportSet());
    EXPECT_TRUE(read.GetClockStartSupport());
    // So the block of a partly set object is short for its own reader.
    DateTimeCapability partial;
    partial.SetGPSSetTimeSupport(true);
    DateTimeCapability cut;
    QDataStream cutStream(test::raw(partial));
    cut.SetVersionSpecificBinaryWithoutValidation(cutStream);
    EXPECT_EQ(cutStream.status(), QDataStream::ReadPastEnd);
}

TEST(Capabilities, TagsSharedByEqualNamesAndNoOthers)
{
    QStringList subsystem;
    for (const DefaultRow &row : kDefaultRows)
        subsystem.append(QLatin1String(row.cls));
    QHash<quint32, QStringList> owners;
    for (const QString &name : subsystem) {
        for (const schema::Field &f : classNamed(name.toLatin1().constData()).fields)
            owners[f.tag].append(name + QLatin1Char('.') + f.name);
    }
    QStringList twice;
    for (auto it = owners.constBegin(); it != owners.constEnd(); ++it) {
        QStringList names = it.value();
        names.sort();
        if (names.size() > 1)
            twice.append(names.join(QLatin1Char('+')));
    }
    twice.sort();
    EXPECT_EQ(twice.join(QLatin1Char(' ')).toStdString(),
              "Capabilities.IQRecording+MasterRecordingCapabilities.IQRecording "
              "DFCabapilites.DFScan+MainToolbarCapabilites.DFScan");

    // Each block reads its own DFScan: a document with both set differently.
    Capabilities doc;
    doc.GetDFCabapilites().SetDFScan(true);
    doc.GetMainToolbarCapabilites().SetDFScan(false);
    Capabilities back;
    test::readTagged(back, test::tagged(doc));
    EXPECT_TRUE(back.GetDFCabapilites().GetDFScan());
    EXPECT_FALSE(back.GetMainToolbarCapabilites().GetDFScan());
    EXPECT_TRUE(back.GetMainToolbarCapabilites().IsDFScanSet());
    EXPECT_FALSE(back.IsIQRecordingSet());
}

namespace {

// Every member and every field set, with both values of the bools and
// bandwidths that two decimals hold exactly.
Capabilities everything()
{
    Capabilities c;
    c.SetValidate(true);
    test::readXml(c, schema::exampleXml(*schema::findClass(QStringLiteral("Capabilities"))));
    c.SetWideIFSpectrum(false);
    c.SetPulseAnalysisCapa(false);
    c.GetHardwareOptions().SetIGT2(false);
    c.GetDFCabapilites().SetInvertedDFAntenna(false);
    c.GetMasterRecordingCapabilities().SetAudio(false);
    c.GetMasterRecordingCapabilities().GetCSVRecordCapabilities().SetSoftwareRecording(false);
    c.GetFFMInputToolbarCapabilities().SetAFC(false);
    c.GetDateTimeCapability().SetNTSSetTimeSupport(false);
    c.GetISBBandwidthSettings().SetMinBandwidth(2400.25);
    c.GetISBBandwidthSettings().SetMaxBandwidth(96000.5);
    return c;
}

} // namespace

TEST(Capabilities, FullyPopulatedDocumentRoundTripsThroughAllForms)
{
    const Capabilities original = everything();
    test::expectRoundTrip(original);
    // One value changed deep inside makes the documents differ.
    Capabilities changed = original;
    changed.GetMasterRecordingCapabilities().GetCSVRecordCapabilities().SetSoftwareRecording(true);
    EXPECT_FALSE(changed == original);
}
