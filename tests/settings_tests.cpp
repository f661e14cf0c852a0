// The receiver settings: the eighteen classes of src/settings and their
// document ReceiverSettings. Name table rows, translation functions, exact
// text and bytes of representative objects, the text of every message kind,
// the departures (Prefix, float ranges, the string list) and round trips of
// every class through the three forms.
#include "support.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMap>
#include <QtCore/QTranslator>

#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>

using namespace HALVANE;
using test::expectThrow;

namespace {

template <class... T>
struct Types {
    template <class F>
    static void each(F &&f)
    {
        (f(T()), ...);
    }
};

using SettingsClasses =
    Types<ReceiverSettings, RecorderSettings, FFMSettings, FFMSettingsDetail, AudioSettings, SensorSettings,
          BandwidthSettings, ModulationSettings, VideoSettings, ScanSettings, DVSettings, IQSettings,
          BearingCorrectionSettings, AntennaSettings, Downconverter, DFSettings, GPSCSettings, Compass>;

const QDateTime kStamp(QDate(2026, 11, 24), QTime(8, 30, 15, 250), Qt::UTC);

using test::example;
using test::expectRoundTrip;

ModulationSettings modulation(qint8 method, double value)
{
    ModulationSettings m;
    m.SetValidate(true);
    m.SetModulationMethod(method);
    m.SetModulationValue(value);
    return m;
}

// The registry's example (every field of every member set, lists of two
// items) with what the example does not reach: an empty prefix, one with an
// umlaut and an unset one, empty texts, negative and reversed values. Every
// value has at most two decimals, so that every form gives it back exactly.
ReceiverSettings fullSettings()
{
    ReceiverSettings r = example<ReceiverSettings>();
    QVector<ModulationSettings> &items = r.GetSensorSettings().GetModulationSettings();
    items[0].SetPrefix(QString(QLatin1String("")));
    items[1].SetPrefix(QStringLiteral("Tx \u00fc"));
    items[1].SetModulationValue(75.5);
    r.GetSensorSettings().AppendModulationSettings(modulation(6, 1));
    r.GetFFMSettings().GetFFMSettingsDetail().SetBFOFrequency(-1000.5);
    r.GetVideoSettings().SetVDSideband(QString(QLatin1String("")));
    r.GetVideoSettings().SetVDScale(QStringLiteral("log <dB>"));
    r.GetScanSettings().SetSearchScanDwellTime(-1);
    r.GetScanSettings().SetStartFrequency(100e6);
    r.GetScanSettings().SetStopFrequency(80e6);
    r.GetDVSettings().SetDVTime(kStamp);
    r.GetIQSettings().SetIQTime(kStamp.addDays(-400));
    r.GetBearingCorrectionSettings().SetFromHeight(-12.5);
    r.GetDFSettings().AppendSignalPath(QStringLiteral("Pfad \u00e4"));
    r.GetDFSettings().AppendSignalPath(QString(QLatin1String("")));
    r.GetDFSettings().SetFreqSpan(-1);
    r.GetGPSCSettings().SetGPSSource(0);
    return r;
}

// A translator that shows what it was asked for.
class EchoTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char *disambiguation, int n) const override
    {
        return QStringLiteral("%1|%2|%3|%4")
            .arg(QString::fromUtf8(context), QString::fromUtf8(text),
                 disambiguation ? QString::fromUtf8(disambiguation) : QStringLiteral("-"))
            .arg(n);
    }
    bool isEmpty() const override { return false; }
};

template <class T, class = void>
struct HasTr : std::false_type {};
template <class T>
struct HasTr<T, std::void_t<decltype(T::tr("x")), decltype(T::trUtf8("x"))>> : std::true_type {};

} // namespace

// The accessors give the rows of the registry's tables, which
// Classes.TablesMatchTheirReferenceText holds to tests/golden/tables.txt.
TEST(Settings, NameTablesRowByRow)
{
    struct Case {
        const char *cls;
        const char *field;
        QStringList rows;
        QStringList gui;
    };
    // The accessor pair of field F of class C.
#define ROW(C, F) {#C, #F, C::Get##F##s(), C::GetGUI##F##s()}
    const Case cases[] = {
        ROW(FFMSettings, AnalogDemod), ROW(FFMSettings, BandwidthMode), ROW(FFMSettingsDetail, GainControlMode),
        ROW(FFMSettingsDetail, GainControlTime), ROW(FFMSettingsDetail, Attenuation), ROW(FFMSettingsDetail, AFCValue),
        ROW(FFMSettingsDetail, SquelchState), ROW(FFMSettingsDetail, Preselection), ROW(FFMSettingsDetail, LevelDetector),
        ROW(FFMSettingsDetail, MeasurementMode), ROW(FFMSettingsDetail, IFPanType), ROW(FFMSettingsDetail, IFStepAuto),
        ROW(RecorderSettings, RecordSource), ROW(RecorderSettings, RecordSourceSuperset), ROW(RecorderSettings, RecordStorage),
        ROW(RecorderSettings, RecordMode), ROW(RecorderSettings, RecordMemSize), ROW(RecorderSettings, RecordMemMode),
        ROW(RecorderSettings, IQRecordState), ROW(AudioSettings, AudioMode), ROW(AudioSettings, AudioFilter),
        ROW(BandwidthSettings, BandwidthMethod), ROW(ModulationSettings, ModulationMethod), ROW(VideoSettings, VDMode),
        ROW(VideoSettings, VDDataFormat), ROW(ScanSettings, SearchMode), ROW(ScanSettings, MScanMode),
        ROW(AntennaSettings, Polarisation), ROW(AntennaSettings, Mode), ROW(DFSettings, DFMode),
        ROW(GPSCSettings, GPSSource), ROW(Compass, CompassSource),
    };
#undef ROW
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.cls) + "." + c.field);
        const schema::Field *f = schema::findClass(QLatin1String(c.cls))->field(QLatin1String(c.field));
        ASSERT_NE(f, nullptr);
        QStringList names;
        for (const QStringList &row : f->table.rows)
            names.append(row.value(0));
        EXPECT_EQ(c.rows, names);
        // No translator is installed: the GUI texts are the names.
        EXPECT_EQ(c.gui, names);
    }
}

// The names themselves are the reference tables'; here a name that two
// tables hold at different rows, names one letter or one blank apart, and
// ends of the tables.
TEST(Settings, ConvertersFindExactNamesOnly)
{
    EXPECT_EQ(FFMSettingsDetail::NameToAttenuation(QStringLiteral("LOW NOISE")), 3);
    EXPECT_EQ(FFMSettingsDetail::NameToPreselection(QStringLiteral("LOW NOISE")), 0);
    EXPECT_EQ(FFMSettingsDetail::NameToAttenuation(QStringLiteral("LOW DISTORT")), -1);
    EXPECT_EQ(FFMSettingsDetail::NameToPreselection(QStringLiteral("LOW DESTORT")), -1);
    EXPECT_EQ(AudioSettings::NameToAudioMode(QStringLiteral("8 kHz /  8 bits / 1 channel")), 12);
    EXPECT_EQ(AudioSettings::NameToAudioMode(QStringLiteral("8 kHz / 8 bits / 1 channel")), -1);
    EXPECT_EQ(RecorderSettings::NameToRecordSource(QStringLiteral("IQ")), 0);
    EXPECT_EQ(RecorderSettings::NameToRecordSourceSuperset(QStringLiteral("IQ")), 14);
    EXPECT_EQ(RecorderSettings::NameToRecordSourceSuperset(QStringLiteral("VSP")), -1);
    EXPECT_EQ(AntennaSettings::NameToPolarisation(QStringLiteral("vertical")), -1);
    EXPECT_EQ(AntennaSettings::NameToMode(QStringLiteral("passive")), 1);
    EXPECT_TRUE(FFMSettings::AnalogDemodToName(29).isNull());
    EXPECT_TRUE(DFSettings::DFModeToName(-1).isNull());

    FFMSettingsDetail d;
    d.SetAttenuation(4);
    EXPECT_EQ(d.GetAttenuationAsString(), QStringLiteral("LOW DESTORT"));
}

TEST(Settings, TranslationFunctionsUseTheClassContext)
{
    static_assert(!HasTr<ReceiverSettings>::value && !HasTr<SensorSettings>::value && !HasTr<DVSettings>::value
                      && !HasTr<IQSettings>::value && !HasTr<Downconverter>::value
                      && !HasTr<BearingCorrectionSettings>::value,
                  "these classes have no tr");
    int argc = 1;
    char name[] = "settings_tests";
    char *argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    EchoTranslator translator;
    app.installTranslator(&translator);
    int translated = 0;
    SettingsClasses::each([&](auto object) {
        using T = decltype(object);
        if constexpr (HasTr<T>::value) {
            const QString context = QStringLiteral("HALVANE::") + T::GetStaticObjectName();
            EXPECT_EQ(T::tr("Text", "which", 3), context + QStringLiteral("|Text|which|3"));
            EXPECT_EQ(T::trUtf8("Grüße"), context + QStringLiteral("|Grüße|-|-1"));
            ++translated;
        }
    });
    EXPECT_EQ(translated, 12);
    // The GUI lists go through QObject::tr: the context is QObject's.
    EXPECT_EQ(FFMSettingsDetail::GetGUIAttenuations().at(4), QStringLiteral("QObject|LOW DESTORT|-|-1"));
    EXPECT_EQ(FFMSettingsDetail::GetAttenuations().at(4), QStringLiteral("LOW DESTORT"));
    EXPECT_EQ(Compass::GetGUICompassSources().at(0), QStringLiteral("QObject|NONE|-|-1"));
    app.removeTranslator(&translator);
}

TEST(Settings, FreshObjects)
{
    // Classes whose HasData holds without a payload: all but the six with
    // required fields.
    const QStringList incomplete = {QStringLiteral("BandwidthSettings"), QStringLiteral("ModulationSettings"),
                                    QStringLiteral("DVSettings"), QStringLiteral("AntennaSettings"),
                                    QStringLiteral("Downconverter"), QStringLiteral("BearingCorrectionSettings")};
    SettingsClasses::each([&](auto object) {
        using T = decltype(object);
        const QString name = T::GetStaticObjectName();
        SCOPED_TRACE(name.toStdString());
        EXPECT_FALSE(object.AnyData());
        EXPECT_EQ(object.HasData(), !incomplete.contains(name));
        EXPECT_FALSE(object.IsInitialized());
    });

    // A fresh ModulationSettings has data as soon as its payload exists: its
    // Prefix starts as "Sensor".
    ModulationSettings m;
    EXPECT_FALSE(m.AnyData());
    EXPECT_EQ(m.GetPrefix(), QStringLiteral("Sensor"));
    EXPECT_FALSE(m.IsPrefixSet());
    EXPECT_TRUE(m.AnyData());
}

TEST(Settings, ResetToDefaultTurnsOnOnlyUsableDefaults)
{
    // The raw form's presence bytes after ResetToDefault, per class, on an
    // untouched object and on a filled one.
    const QMap<QString, QByteArray> expected = {
        {QStringLiteral("ModulationSettings"), QByteArray("\x04", 1)},
        {QStringLiteral("GPSCSettings"), QByteArray("\x04", 1)},
    };
    SettingsClasses::each([&](auto object) {
        using T = decltype(object);
        const QString name = T::GetStaticObjectName();
        SCOPED_TRACE(name.toStdString());
        const QByteArray bits =
            expected.value(name, QByteArray(int(schema::findClass(name)->fields.size() + 7) / 8, '\0'));
        for (T o : {T(), example<T>()}) {
            o.SetValidate(false);
            o.ResetToDefault();
            EXPECT_TRUE(o.IsInitialized());
            EXPECT_EQ(test::hex(test::raw(o).left(bits.size())), test::hex(bits));
        }
    });
    ModulationSettings m = modulation(1, 2);
    m.SetPrefix(QStringLiteral("x"));
    m.ResetToDefault();
    EXPECT_EQ(m.GetPrefix(), QStringLiteral("Sensor"));

    GPSCSettings g;
    g.ResetToDefault();
    EXPECT_TRUE(g.AnyData());
    EXPECT_EQ(test::xml(g), QStringLiteral("<GPSCSettings><GPSCEnable>false</GPSCEnable></GPSCSettings>"));
}

TEST(Settings, ExactTextAndBytes)
{
    struct Case {
        const char *what;
        QString xml;
        std::string tagged;
        std::string raw;
        QString expectedXml;
        std::string expectedTagged;
        std::string expectedRaw;
    };
    auto forms = [](const char *what, const auto &object, const QString &xml, const std::string &tagged,
                    const std::string &raw) {
        return Case{what, test::xml(object), test::hex(test::tagged(object)), test::hex(test::raw(object)),
                    xml, tagged, raw};
    };
    ModulationSettings m = modulation(3, 2.5);
    m.SetPrefix(QStringLiteral("ab"));

    BandwidthSettings unset; // required enum unset, validation off

    DFSettings df;
    df.AppendSignalPath(QStringLiteral("ab"));
    df.AppendSignalPath(QString(QLatin1String("")));

    FFMSettingsDetail detail;
    detail.SetGainControlValue(-5);
    detail.SetAutomaticMeasMode(true);

    FFMSettings ffm;
    ffm.SetFrequency(97.123456);
    ffm.SetAnalogDemod(28);

    ReceiverSettings touched;
    touched.GetFFMSettings();

    SensorSettings sensor;
    sensor.SetLevel(1);
    sensor.GetBandwidthSettings().SetBandwidthMethod(0);
    sensor.GetBandwidthSettings().SetXDBValue(3);
    sensor.GetBandwidthSettings().SetBetaValue(0.1f);
    sensor.AppendModulationSettings(modulation(0, 30));

    GPSCSettings gpsc;
    gpsc.GetCompass();
    gpsc.SetGPSSource(0);

    const Case cases[] = {
        forms("ModulationSettings: Prefix an attribute, first in the tagged form, last in the raw form", m,
              QStringLiteral("<ModulationSettings Prefix=\"ab\"><ModulationMethod>FM</ModulationMethod>"
                             "<ModulationValue>2.50</ModulationValue></ModulationSettings>"),
              "00 00 00 2C "
              "62 74 A6 BA 00 00 00 06 00 00 00 02 61 62 "
              "44 66 27 5A 00 00 00 06 00 00 00 02 46 4D "
              "EF DD 6E E9 00 00 00 08 00 00 00 04 32 2E 35 30",
              "07 03 40 04 00 00 00 00 00 00 00 00 00 04 00 61 00 62"),
        forms("BandwidthSettings: required fields unset, validation off", unset,
              QStringLiteral("<BandwidthSettings><BandwidthMethod></BandwidthMethod><XDBValue>0.00</XDBValue>"
                             "<BetaValue>0.00</BetaValue></BandwidthSettings>"),
              "00 00 00 2C "
              "25 8E 1F C8 00 00 00 04 FF FF FF FF "
              "8C 3A 0B DB 00 00 00 08 00 00 00 04 30 2E 30 30 "
              "27 CB B8 15 00 00 00 08 00 00 00 04 30 2E 30 30",
              "00 FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"),
        forms("DFSettings: a list of strings, each item in its own length", df,
              QStringLiteral("<DFSettings><SignalPath>ab</SignalPath><SignalPath></SignalPath></DFSettings>"),
              "00 00 00 1E 6B 1E 5A B2 00 00 00 16 00 00 00 02 "
              "00 00 00 06 00 00 00 02 61 62 "
              "00 00 00 04 00 00 00 00",
              "01 00 00 00 02 00 00 00 04 00 61 00 62 00 00 00 00"),
        forms("FFMSettingsDetail: an int as 64 bits, a bool as a byte", detail,
              QStringLiteral("<FFMSettingsDetail><GainControlValue>-5</GainControlValue>"
                             "<AutomaticMeasMode>true</AutomaticMeasMode></FFMSettingsDetail>"),
              "00 00 00 19 "
              "88 FA F3 74 00 00 00 08 FF FF FF FF FF FF FF FB "
              "CB 96 60 10 00 00 00 01 01",
              "04 40 00 FF FF FF FF FF FF FF FB 01"),
        forms("FFMSettings: two decimals in the text forms, all bits in the raw form", ffm,
              QStringLiteral("<FFMSettings><Frequency>97.12</Frequency><AnalogDemod>UNKNOWN</AnalogDemod>"
                             "</FFMSettings>"),
              "00 00 00 24 "
              "2C EE 52 B1 00 00 00 09 00 00 00 05 39 37 2E 31 32 "
              "A4 0F 4B EA 00 00 00 0B 00 00 00 07 55 4E 4B 4E 4F 57 4E",
              "03 40 58 47 E6 B3 FE 9F AE 1C"),
        forms("ReceiverSettings: a member touched through its mutable getter", touched,
              QStringLiteral("<ReceiverSettings><FFMSettings/></ReceiverSettings>"),
              "00 00 00 08 06 49 3F 83 00 00 00 00", "02 00 00"),
        forms("ReceiverSettings: fresh", ReceiverSettings(), QStringLiteral("<ReceiverSettings/>"), "00 00 00 00",
              "00 00"),
        forms("SensorSettings: nested object and list items", sensor,
              QStringLiteral("<SensorSettings><Level>1.00</Level><BandwidthSettings>"
                             "<BandwidthMethod>OFF</BandwidthMethod><XDBValue>3.00</XDBValue>"
                             "<BetaValue>0.10</BetaValue></BandwidthSettings><ModulationSettings>"
                             "<ModulationMethod>AM</ModulationMethod><ModulationValue>30.00</ModulationValue>"
                             "</ModulationSettings></SensorSettings>"),
              "00 00 00 76 "
              "CE 30 14 F1 00 00 00 08 00 00 00 04 31 2E 30 30 "
              "03 15 7D 3C 00 00 00 2F "
              "25 8E 1F C8 00 00 00 07 00 00 00 03 4F 46 46 "
              "8C 3A 0B DB 00 00 00 08 00 00 00 04 33 2E 30 30 "
              "27 CB B8 15 00 00 00 08 00 00 00 04 30 2E 31 30 "
              "40 D3 77 88 00 00 00 27 00 00 00 01 00 00 00 1F "
              "44 66 27 5A 00 00 00 06 00 00 00 02 41 4D "
              "EF DD 6E E9 00 00 00 09 00 00 00 05 33 30 2E 30 30",
              "19 3F F0 00 00 00 00 00 00 "
              "07 00 40 08 00 00 00 00 00 00 3F B9 99 99 A0 00 00 00 "
              "00 00 00 01 03 00 40 3E 00 00 00 00 00 00"),
        forms("GPSCSettings: an empty compass, a source of row 0", gpsc,
              QStringLiteral("<GPSCSettings><Compass/><GPSSource>NONE</GPSSource></GPSCSettings>"),
              "00 00 00 18 44 69 8F BA 00 00 00 00 43 35 06 49 00 00 00 08 00 00 00 04 4E 4F 4E 45",
              "0A 00 00"),
    };
    for (const Case &c : cases) {
        EXPECT_EQ(c.xml.toStdString(), c.expectedXml.toStdString()) << c.what;
        EXPECT_EQ(c.tagged, c.expectedTagged) << c.what;
        EXPECT_EQ(c.raw, c.expectedRaw) << c.what;
    }
}

TEST(Settings, DVSettingsWritesAllFiveFields)
{
    DVSettings dv;
    EXPECT_FALSE(dv.HasData());
    EXPECT_EQ(test::xml(dv), QStringLiteral("<DVSettings><DVMode></DVMode><DVTime></DVTime><DVTrace></DVTrace>"
                                            "<DVTrigger></DVTrigger><DVTriggerTrace></DVTriggerTrace></DVSettings>"));
    EXPECT_EQ(test::hex(test::tagged(dv)), "00 00 00 3C "
                                           "02 E1 78 4F 00 00 00 04 FF FF FF FF "
                                           "A2 AB 7B F5 00 00 00 04 00 00 00 00 "
                                           "89 1C 6C CE 00 00 00 04 FF FF FF FF "
                                           "06 D9 D9 29 00 00 00 04 FF FF FF FF "
                                           "8A 2A BB 78 00 00 00 04 FF FF FF FF");
    dv.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { test::xml(dv); }, QStringLiteral("DVSettings: Please set DVMode properly."));
    expectThrow<OutOfRangeException>([&] { test::tagged(dv); }, QStringLiteral("DVSettings: Please set DVMode properly."));

    // A null date-time sets the field and passes.
    dv.SetDVMode(QString(QLatin1String("")));
    dv.SetDVTime(QDateTime());
    dv.SetDVTrace(QStringLiteral("t"));
    dv.SetDVTrigger(QStringLiteral("g"));
    dv.SetDVTriggerTrace(QStringLiteral("gt"));
    EXPECT_TRUE(dv.HasData());
    dv.Check();

    // The raw form reads the five values whatever the presence byte says;
    // HasData asks for the date-time's bit, Check for every bit.
    QByteArray raw = test::raw(dv);
    raw[0] = 0;
    DVSettings back;
    back.SetValidate(true);
    test::readRaw(back, raw);
    EXPECT_EQ(back.GetDVTriggerTrace(), QStringLiteral("gt"));
    EXPECT_FALSE(back.HasData());
    EXPECT_TRUE(back.AnyData());
    expectThrow<OutOfRangeException>([&] { back.Check(); }, QStringLiteral("DVSettings: Please set DVMode properly."));
}

TEST(Settings, EveryMessageKind)
{
    struct Case {
        const char *kind;
        std::function<void()> body;
        QString message;
    };
    auto validating = [](auto object) {
        object.SetValidate(true);
        return object;
    };
    // The message texts, word for word.
    auto badEnum = [](const char *cls, const char *member) {
        return QStringLiteral("enum is not valid (classname=%1,membername=%2)").arg(QLatin1String(cls), QLatin1String(member));
    };
    auto nullText = [](const char *cls, const char *field) {
        return QStringLiteral("%1: Please set %2 properly (origin: Setter).").arg(QLatin1String(cls), QLatin1String(field));
    };
    auto outOf = [](const char *member, const char *lo, const char *hi, const char *cls) {
        return QStringLiteral("Parameters for %1 are not set within range (%2, %3) in '%4'.")
            .arg(QLatin1String(member), QLatin1String(lo), QLatin1String(hi), QLatin1String(cls));
    };
    auto unset = [](const char *cls, const char *field) {
        return QStringLiteral("%1: Please set %2 properly.").arg(QLatin1String(cls), QLatin1String(field));
    };
    const QString null;
    const Case cases[] = {
        // Enumerated setters: class and member, no object name. The tables'
        // sizes are the registry's; one past each end, and a member name
        // that starts with an abbreviation.
        {"range", [&] { validating(FFMSettingsDetail()).SetAFCValue(2); }, badEnum("FFMSettingsDetail", "m_aFCValue")},
        {"range", [&] { validating(FFMSettingsDetail()).SetIFPanType(-1); }, badEnum("FFMSettingsDetail", "m_iFPanType")},
        {"range", [&] { validating(FFMSettings()).SetAnalogDemod(29); }, badEnum("FFMSettings", "m_analogDemod")},
        // Null strings: object name in front.
        {"range", [&] { validating(DVSettings()).SetDVTriggerTrace(null); }, nullText("DVSettings", "DVTriggerTrace")},
        {"range", [&] { validating(ModulationSettings()).SetPrefix(null); }, nullText("ModulationSettings", "Prefix")},
        // Ranges: the limits in plain form, the object name last.
        {"range", [&] { validating(BandwidthSettings()).SetXDBValue(40.01f); }, outOf("m_xDBValue", "0", "40", "BandwidthSettings")},
        {"range", [&] { validating(BandwidthSettings()).SetBetaValue(0.0f); }, outOf("m_betaValue", "0.1", "100", "BandwidthSettings")},
        {"range", [&] { validating(ScanSettings()).SetSearchScanDwellTime(10.01); },
         outOf("m_searchScanDwellTime", "-1", "10", "ScanSettings")},
        {"range", [&] { validating(ScanSettings()).SetSearchHoldTime(-1.01); }, outOf("m_searchHoldTime", "-1", "10", "ScanSettings")},
        {"range", [&] { validating(ScanSettings()).SetMScanDwellTime(std::nan("")); }, outOf("m_mScanDwellTime", "-1", "10", "ScanSettings")},
        {"range", [&] { validating(ScanSettings()).SetMScanHoldTime(11); }, outOf("m_mScanHoldTime", "-1", "10", "ScanSettings")},
        // Check.
        {"range", [&] { validating(AntennaSettings()).Check(); }, unset("AntennaSettings", "Antenna")},
        {"range",
         [&] {
             BandwidthSettings b;
             b.SetBandwidthMethod(0); // OFF still needs both parameters
             b.Check();
         },
         unset("BandwidthSettings", "XDBValue")},
        {"range",
         [&] {
             AntennaSettings a;
             a.SetAntenna(QStringLiteral("a"));
             a.GetDownconverter().SetStartFrequency(1);
             a.GetDownconverter().SetStopFrequency(2);
             a.Check();
         },
         unset("Downconverter", "OscFrequency")},
        {"range", [&] { BearingCorrectionSettings().Check(); }, unset("BearingCorrectionSettings", "FromHeight")},
        {"range", [&] { DFSettings d; d.SetSignalPath({QStringLiteral("a"), QString()}); d.Check(); }, unset("DFSettings", "SignalPath")},
        {"range", [&] { GPSCSettings g; g.GetCompass().SetName(QString()); g.Check(); }, unset("Compass", "Name")},
        {"range", [&] { SensorSettings s; s.GetBandwidthSettings(); s.Check(); }, unset("BandwidthSettings", "BandwidthMethod")},
        {"range",
         [&] {
             SensorSettings s;
             s.SetModulationSettings({modulation(0, 1), ModulationSettings()});
             s.Check();
         },
         unset("ModulationSettings", "ModulationMethod")},
        // Appending to the list of strings (the list of objects: ModulationListTravelsBySize...).
        {"incomplete", [&] { validating(DFSettings()).AppendSignalPath(null); },
         QStringLiteral("DFSettings: Tried to append not completely defined or invalid item SignalPath.")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.message.toStdString());
        try {
            c.body();
            ADD_FAILURE() << "no exception";
        } catch (const QuilletRootException &e) {
            EXPECT_EQ(e.GetMessage().toStdString(), c.message.toStdString());
            const std::string kind = dynamic_cast<const OutOfRangeException *>(&e)            ? "range"
                                     : dynamic_cast<const IncompleteDefinitionException *>(&e) ? "incomplete"
                                                                                               : "other";
            EXPECT_EQ(kind, c.kind);
        }
    }
}

// An empty bool element: the field's default where it has one, else refused
// while validating and false otherwise; the same rule for the settings and
// the capabilities.
TEST(Settings, EmptyBoolElementsWithAndWithoutDefaults)
{
    struct Case {
        const char *cls;
        const char *element;
        bool validate;
        const char *outcome; // "throws", or the value read, with the bit on
    };
    const Case cases[] = {
        {"RecorderSettings", "RecordState", true, "throws"},    {"RecorderSettings", "RecordState", false, "false"},
        {"FFMSettingsDetail", "AutomaticMeasMode", true, "throws"},
        {"ScanSettings", "MScanSquelchMode", false, "false"},   {"GPSCSettings", "GPSCEnable", true, "false"},
        {"GPSCSettings", "GPSCEnable", false, "false"},          {"DFCabapilites", "DFReference", true, "throws"},
        {"DFCabapilites", "DFReference", false, "false"},       {"DFCabapilites", "DFEnabled", true, "false"},
        {"ToolsToolbarCapabilities", "Logging", true, "throws"}, {"MasterRecordingCapabilities", "Audio", false, "true"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.element) + (c.validate ? " validating" : ""));
        const QString cls = QLatin1String(c.cls), element = QLatin1String(c.element);
        std::unique_ptr<QUILLET::IQuilletObject> object = schema::findClass(cls)->create();
        object->SetValidate(c.validate);
        const QString doc = QStringLiteral("<%1><%2/></%1>").arg(cls, element);
        QString written = QStringLiteral("<%1/>").arg(cls); // the field left unset
        if (std::string(c.outcome) == "throws") {
            expectThrow<InvalidXmlException>(
                [&] { test::readXml(*object, doc); },
                QStringLiteral("Please set a value or a default for the boolean '%1' in '%2'.").arg(element, cls));
        } else {
            test::readXml(*object, doc);
            written = QStringLiteral("<%1><%2>%3</%2></%1>").arg(cls, element, QLatin1String(c.outcome));
        }
        object->SetValidate(false);
        EXPECT_EQ(test::xml(*object), written);
    }
}

TEST(Settings, PrefixIsAnAttributeOrAnElement)
{
    struct Case {
        const char *document;
        bool set;
        QString prefix;
    };
    const Case cases[] = {
        {"<ModulationSettings><ModulationMethod>AM</ModulationMethod></ModulationSettings>", false,
         QStringLiteral("Sensor")},
        {"<ModulationSettings Prefix=\"Rx\"/>", true, QStringLiteral("Rx")},
        {"<ModulationSettings Prefix=\"\"/>", true, QString(QLatin1String(""))},
        {"<ModulationSettings><Prefix>Rx</Prefix></ModulationSettings>", true, QStringLiteral("Rx")},
        {"<ModulationSettings><Prefix/></ModulationSettings>", true, QStringLiteral("Sensor")},
        {"<ModulationSettings><Prefix></Prefix></ModulationSettings>", true, QStringLiteral("Sensor")},
        // The attribute is read first, the child element afterwards.
        {"<ModulationSettings Prefix=\"a\"><Prefix>b</Prefix></ModulationSettings>", true, QStringLiteral("b")},
    };
    for (const Case &c : cases) {
        for (bool validate : {false, true}) {
            ModulationSettings m;
            m.SetValidate(validate);
            test::readXml(m, QString::fromLatin1(c.document));
            EXPECT_EQ(m.IsPrefixSet(), c.set) << c.document;
            EXPECT_EQ(m.GetPrefix(), c.prefix) << c.document;
            EXPECT_FALSE(m.GetPrefix().isNull()) << c.document;
        }
    }

    // An empty prefix survives all three forms; an unset one is not written.
    ModulationSettings empty = modulation(6, -1);
    empty.SetPrefix(QString(QLatin1String("")));
    EXPECT_EQ(test::xml(empty), QStringLiteral("<ModulationSettings Prefix=\"\"><ModulationMethod>PM</ModulationMethod>"
                                               "<ModulationValue>-1.00</ModulationValue></ModulationSettings>"));
    EXPECT_EQ(test::hex(test::tagged(empty).mid(4, 12)), "62 74 A6 BA 00 00 00 04 00 00 00 00");
    expectRoundTrip(empty);
    ModulationSettings fromTagged;
    test::readTagged(fromTagged, test::tagged(empty));
    EXPECT_FALSE(fromTagged.GetPrefix().isNull());
    EXPECT_TRUE(fromTagged.GetPrefix().isEmpty());

    ModulationSettings unset = modulation(6, -1);
    EXPECT_FALSE(test::xml(unset).contains(QStringLiteral("Prefix")));
    EXPECT_EQ(test::hex(test::tagged(unset).left(8)), "00 00 00 1F 44 66 27 5A");
    EXPECT_EQ(test::raw(unset).size(), 1 + 1 + 8);
    ModulationSettings back;
    test::readRaw(back, test::raw(unset));
    EXPECT_EQ(back.GetPrefix(), QStringLiteral("Sensor"));
    EXPECT_TRUE(back == unset);

    // A null prefix stored with validation off is written as a null text,
    // which reads back as the empty string.
    ModulationSettings nullPrefix = modulation(0, 0);
    nullPrefix.SetValidate(false);
    nullPrefix.SetPrefix(QString());
    EXPECT_TRUE(nullPrefix.IsPrefixSet());
    EXPECT_TRUE(nullPrefix.GetPrefix().isNull());
    ModulationSettings onlyNull;
    onlyNull.SetPrefix(QString());
    EXPECT_FALSE(onlyNull.AnyData()); // the value decides, not the bit
    expectThrow<OutOfRangeException>([&] { nullPrefix.Check(); },
                                     QStringLiteral("ModulationSettings: Please set Prefix properly."));
    nullPrefix.ResetPrefix();
    EXPECT_EQ(nullPrefix.GetPrefix(), QStringLiteral("Sensor"));
    EXPECT_FALSE(nullPrefix.IsPrefixSet());
}

TEST(Settings, FloatRangesAreComparedAsDouble)
{
    const float nearestToTenth = 0.1f;
    ASSERT_GT(double(nearestToTenth), 0.1);
    struct Case {
        float value;
        bool xdb;
        bool beta;
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Case cases[] = {
        {0.0f, true, false},  {40.0f, true, true},   {40.01f, false, true},     {nearestToTenth, true, true},
        {0.0999f, true, false}, {100.0f, false, true}, {100.01f, false, false}, {-0.0f, true, false},
        {nan, false, false},
    };
    for (const Case &c : cases) {
        BandwidthSettings b;
        EXPECT_EQ(b.IsValidXDBValue(c.value), c.xdb) << c.value;
        EXPECT_EQ(b.IsValidBetaValue(c.value), c.beta) << c.value;
        b.SetValidate(true);
        b.SetBandwidthMethod(1);
        bool threw = false;
        try {
            b.SetXDBValue(c.value);
        } catch (const OutOfRangeException &) {
            threw = true;
        }
        EXPECT_EQ(threw, !c.xdb) << c.value;
        // The setter and IsValid share the test; Check makes it again on the stored value.
        b.SetValidate(false);
        b.SetXDBValue(1);
        b.SetBetaValue(c.value);
        if (c.beta) {
            b.Check();
        } else {
            expectThrow<OutOfRangeException>([&] { b.Check(); },
                                             QStringLiteral("BandwidthSettings: Please set BetaValue properly."));
        }
    }
    // The text of a float has two decimals and reads back through toFloat.
    BandwidthSettings b;
    b.SetBandwidthMethod(2);
    b.SetXDBValue(3.14159f);
    b.SetBetaValue(nearestToTenth);
    BandwidthSettings back;
    back.SetValidate(true);
    test::readXml(back, test::xml(b));
    EXPECT_EQ(back.GetXDBValue(), 3.14f);
    EXPECT_EQ(back.GetBetaValue(), nearestToTenth);
    test::readRaw(back, test::raw(b));
    EXPECT_EQ(back.GetXDBValue(), 3.14159f);
}

TEST(Settings, ScanTimesShareOneRange)
{
    ScanSettings s;
    s.SetValidate(true);
    for (double ok : {-1.0, 0.0, 10.0}) {
        s.SetSearchScanDwellTime(ok);
        s.SetSearchHoldTime(ok);
        s.SetMScanDwellTime(ok);
        s.SetMScanHoldTime(ok);
    }
    s.SetStartFrequency(2e9);
    s.SetStopFrequency(1e9); // start above stop passes
    s.Check();
    EXPECT_THROW(s.SetSearchHoldTime(10.01), OutOfRangeException);

    // The raw form stores without a test; Check reports it afterwards.
    ScanSettings held;
    held.SetValidate(false);
    held.SetMScanHoldTime(20);
    ScanSettings fromRaw;
    fromRaw.SetValidate(true);
    test::readRaw(fromRaw, test::raw(held));
    EXPECT_EQ(fromRaw.GetMScanHoldTime(), 20.0);
    expectThrow<OutOfRangeException>([&] { fromRaw.Check(); },
                                     QStringLiteral("ScanSettings: Please set MScanHoldTime properly."));
    // The tagged form goes through the setter.
    ScanSettings fromTagged;
    fromTagged.SetValidate(true);
    EXPECT_THROW(test::readTagged(fromTagged, test::tagged(held)), OutOfRangeException);
}

TEST(Settings, SignalPathIsAListOfStrings)
{
    DFSettings d;
    d.SetValidate(true);
    EXPECT_EQ(test::xml(d), QStringLiteral("<DFSettings/>"));

    // The mutable getter sets the bit: the raw form carries a count of 0,
    // XML and the tagged form nothing.
    d.GetSignalPath();
    EXPECT_TRUE(d.IsSignalPathSet());
    EXPECT_EQ(test::hex(test::raw(d)), "01 00 00 00 00");
    EXPECT_EQ(test::hex(test::tagged(d)), "00 00 00 00");
    d.ResetSignalPath();
    EXPECT_FALSE(d.IsSignalPathSet());
    EXPECT_EQ(test::hex(test::raw(d)), "00");

    // Repeats are kept; the current path need not be in the list.
    d.AppendSignalPath(QStringLiteral("RX ✓"));
    d.AppendSignalPath(QStringLiteral("RX ✓"));
    EXPECT_THROW(d.AppendSignalPath(QString()), IncompleteDefinitionException);
    EXPECT_EQ(d.GetSignalPath().size(), 2);
    d.SetCurrentSignalPath(QStringLiteral("elsewhere"));
    d.Check();

    // Reading appends to what the list holds; an empty element appends "".
    DFSettings twice;
    const QString doc = QStringLiteral("<DFSettings><SignalPath>a</SignalPath><SignalPath/><CurrentSignalPath/></DFSettings>");
    test::readXml(twice, doc);
    test::readXml(twice, doc);
    ASSERT_EQ(twice.GetSignalPath().size(), 4);
    EXPECT_FALSE(twice.GetSignalPath().at(1).isNull());
    EXPECT_TRUE(twice.GetSignalPath().at(1).isEmpty());
    EXPECT_FALSE(twice.GetCurrentSignalPath().isNull());
    twice.Check();
}

TEST(Settings, ModulationListTravelsBySizeInTextAndTaggedForms)
{
    SensorSettings s;
    s.SetValidate(true);
    s.SetModulationSettings({});
    EXPECT_TRUE(s.IsModulationSettingsSet());
    EXPECT_FALSE(s.AnyData());
    EXPECT_EQ(test::hex(test::raw(s)), "10 00 00 00 00");
    EXPECT_EQ(test::xml(s), QStringLiteral("<SensorSettings/>"));
    EXPECT_EQ(test::hex(test::tagged(s)), "00 00 00 00");
    SensorSettings fromXml, fromTagged, fromRaw;
    test::readXml(fromXml, test::xml(s));
    test::readTagged(fromTagged, test::tagged(s));
    test::readRaw(fromRaw, test::raw(s));
    EXPECT_FALSE(fromXml.IsModulationSettingsSet());
    EXPECT_FALSE(fromTagged.IsModulationSettingsSet());
    EXPECT_TRUE(fromRaw.IsModulationSettingsSet());

    // Incomplete items are taken by the setter, refused by readers that
    // validate, after the item has been read.
    // (The tagged form writes an incomplete item's unset method as a null
    // name, which a validating setter refuses first; an item without records
    // is made by hand.)
    s.SetValidate(false);
    s.SetModulationSettings({modulation(1, 1), ModulationSettings()});
    test::Records records;
    records.record(0x40D37788, [](test::Records &v) {
        v.i32(2).bytes(test::tagged(modulation(1, 1))).i32(0);
    });
    const QByteArray tagged = records.object();
    const QByteArray raw = test::raw(s);
    for (int form = 0; form < 2; ++form) {
        SensorSettings reader;
        reader.SetValidate(true);
        expectThrow<IncompleteDefinitionException>(
            [&] { form ? test::readRaw(reader, raw) : test::readTagged(reader, tagged); },
            QStringLiteral("SensorSettings: Tried to append not completely defined or invalid item ModulationSettings."));
        EXPECT_EQ(reader.GetModulationSettings().size(), 1) << form;
        SensorSettings lenient;
        form ? test::readRaw(lenient, raw) : test::readTagged(lenient, tagged);
        EXPECT_EQ(lenient.GetModulationSettings().size(), 2) << form;
    }
    // Each item reads with the flag of its owner.
    SensorSettings owner;
    owner.SetValidate(true);
    expectThrow<OutOfRangeException>(
        [&] {
            test::readXml(owner, QStringLiteral("<SensorSettings><ModulationSettings><ModulationMethod>XM</ModulationMethod>"
                                                "</ModulationSettings></SensorSettings>"));
        },
        QStringLiteral("enum is not valid (classname=ModulationSettings,membername=m_modulationMethod)"));
}

TEST(Settings, MembersTravelOnlyWhenTheirBitIsOn)
{
    ReceiverSettings r;
    r.SetValidate(true);
    DVSettings incomplete;
    incomplete.SetDVMode(QStringLiteral("m"));
    r.SetDVSettings(incomplete);
    EXPECT_TRUE(r.HasData());
    EXPECT_TRUE(r.AnyData());
    expectThrow<OutOfRangeException>([&] { r.Check(); }, QStringLiteral("DVSettings: Please set DVTime properly."));

    // With its bit off the same member is passed over everywhere.
    r.ResetDVSettings();
    r.GetDVSettings().SetDVMode(QStringLiteral("m"));
    r.ResetDVSettings();
    r.Check();
    EXPECT_EQ(test::xml(r), QStringLiteral("<ReceiverSettings/>"));

    // Members are read by name in any order; an unknown element holding a
    // known one is skipped with it.
    const ReceiverSettings full = fullSettings();
    QString xml = test::xml(full);
    const int audio = xml.indexOf(QStringLiteral("<AudioSettings>"));
    const int audioEnd = xml.indexOf(QStringLiteral("</AudioSettings>")) + 16;
    const QString audioText = xml.mid(audio, audioEnd - audio);
    xml.remove(audio, audioEnd - audio)
        .replace(QStringLiteral("</ReceiverSettings>"),
                 QStringLiteral("<Stranger><AudioSettings/></Stranger>") + audioText + QStringLiteral("</ReceiverSettings>"));
    ReceiverSettings moved;
    moved.SetValidate(true);
    test::readXml(moved, xml);
    EXPECT_TRUE(moved == full);
}

TEST(Settings, AntennaAndPositionDepartures)
{
    AntennaSettings a;
    a.SetValidate(true);
    EXPECT_FALSE(a.HasData());
    a.SetAntenna(QString(QLatin1String("")));
    EXPECT_TRUE(a.HasData());
    a.Check();
    EXPECT_EQ(test::xml(a), QStringLiteral("<AntennaSettings><Antenna></Antenna></AntennaSettings>"));

    BearingCorrectionSettings b;
    b.SetFromHeight(1);
    b.SetToHeight(2);
    EXPECT_TRUE(b.HasData());
    b.Check();
    EXPECT_EQ(test::hex(test::raw(b)), "06 3F F0 00 00 00 00 00 00 40 00 00 00 00 00 00 00");

    // An empty Compass inside a GPSCSettings passes Check (its forms: ExactTextAndBytes).
    GPSCSettings g;
    g.SetValidate(true);
    g.GetCompass();
    g.Check();
}

// The round trip of each class's example is Sweep's; here the example sets
// every field, and the document of every departure goes through every form.
TEST(Settings, EveryClassRoundTrips)
{
    SettingsClasses::each([](auto object) {
        using T = decltype(object);
        const QByteArray raw = test::raw(example<T>());
        const int fields = int(schema::findClass(T::GetStaticObjectName())->fields.size());
        for (int bit = 0; bit < fields; ++bit)
            EXPECT_TRUE(raw.at(bit / 8) & (1 << (bit % 8))) << T::GetStaticObjectName().toStdString() << " bit " << bit;
    });
    const ReceiverSettings full = fullSettings();
    full.Check(true);
    expectRoundTrip(full);
}
