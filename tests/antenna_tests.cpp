// The antenna matrix: name tables, ranges and their messages, the field order
// departures of the indexed and named items, the pattern document's version
// in all three forms, and a whole station through every form.
#include "support.h"

#include <limits>

using namespace HALVANE;
using test::expectThrow;
using test::hex;
using test::Records;

namespace {

Curve point(double frequency, double attenuation, double width)
{
    Curve c;
    c.SetValidate(true);
    c.Setfrequency(frequency);
    c.Setattenuation(attenuation);
    c.Setwidth(width);
    return c;
}

AntennaPattern pattern(const QString &name, int points)
{
    AntennaPattern p;
    p.SetValidate(true);
    p.Setname(name);
    for (int i = 0; i < points; ++i)
        p.AppendCurve(point(100 + 25 * i, -1 - 0.5 * i, 60 - i));
    return p;
}

AntennaPatterns patterns(const QStringList &names)
{
    AntennaPatterns all;
    all.SetValidate(true);
    for (const QString &name : names)
        all.AppendAntennaPattern(pattern(name, 1));
    return all;
}

QStringList namesOf(const AntennaPatterns &all)
{
    QStringList names;
    for (AntennaPattern p : all.GetAntennaPattern())
        names.append(p.Getname());
    return names;
}

// Every value has two decimals or fewer, so that all three forms give it back exactly.
AntennaMatrixConfiguration station()
{
    AntennaMatrixConfiguration m;
    m.SetValidate(true);
    m.SetAntennaControlMode(1);
    m.SetAntennaPolarization(2);
    m.SetAntennaPreamplifierState(1);
    m.SetAntennaPathSelected(10);
    m.SetOutputAuxMode(1);
    m.SetOutputAuxWord(65535);
    m.SetTunerFrequencyLimitHF(30.5);
    m.SetTunerFrequencyLimitVUHF(3000.25);
    for (int i = 0; i < 2; ++i) {
        AntennaEntry e;
        e.SetValidate(true);
        e.Setindex(31 - i);
        AntennaDefinition &d = e.GetAntennaDefinition();
        d.SetFactorDataSet(QStringLiteral("factors-%1").arg(i));
        d.SetPolarMode(AntennaDefinition::PolarMode(4 - i));
        d.SetFrequencyStart(0.01);
        d.SetFrequencyStop(6000);
        d.SetUpperLimit_HF(30);
        d.SetUpperLimit_VUHF(3000);
        d.SetName(QStringLiteral("Dipole ") + QString::number(i));
        d.SetValid(i == 0);
        d.SetAntennaPattern(pattern(QStringLiteral("p%1").arg(i), 3));
        AntennaConfiguration &c = e.GetAntennaConfiguration();
        c.SetFrequencyStartUsed(1.5);
        c.SetFrequencyStopUsed(2999.99);
        c.SetInputRoute_HF(2);
        c.SetInputRoute_VUHF(4);
        c.SetInputRoute_SHF(1);
        c.SetInputRoute_SEHF(0);
        c.SetOutputAuxByte(255);
        c.SetOutputAuxMask(15);
        c.SetRxPath(i);
        m.GetAntennaEntries().AppendAntennaEntry(e);
    }
    AuxTiming t;
    t.Setindex(15);
    t.SetAuxSwitchingTime(0.1);
    t.SetAuxGuardTime(5);
    m.GetAuxTimings().AppendAuxTiming(t);
    AntennaRxPath r;
    r.Setindex(0);
    r.SetNAME(QStringLiteral("RX 1"));
    r.SetROTOR(QString::fromUtf8("Rotor \xC3\xA4"));
    m.GetAntennaRxPaths().AppendAntennaRxPath(r);
    return m;
}

} // namespace

TEST(Antenna, NameTablesAreSeparateAndExact)
{
    // A connector's name has its own index in each table that holds it.
    const QString x45 = QStringLiteral("U/SHF1 (X45)");
    EXPECT_EQ(AntennaConfiguration::NameToInputRoute_SHF(x45), 0);
    EXPECT_EQ(AntennaConfiguration::NameToInputRoute_VUHF(x45), 3);
    EXPECT_EQ(AntennaConfiguration::NameToInputRoute_HF(x45), -1);
    EXPECT_TRUE(AntennaConfiguration::InputRoute_SHFToName(2).isNull());

    // The rows are the reference tables'. Of the twin tables of polarisation
    // (their defaults differ: DataAndDefaults) the aggregate's starts at its
    // default, though unset.
    AntennaMatrixConfiguration m;
    EXPECT_EQ(m.GetAntennaPolarization(), 1);
    EXPECT_FALSE(m.IsAntennaPolarizationSet());

    // "Off"/"On" and "OFF"/"ON" are not each other's spelling.
    EXPECT_EQ(AntennaMatrixConfiguration::NameToAntennaControlMode(QStringLiteral("On")), 1);
    EXPECT_EQ(AntennaMatrixConfiguration::NameToAntennaControlMode(QStringLiteral("ON")), -1);
    EXPECT_EQ(AntennaMatrixConfiguration::NameToAntennaPreamplifierState(QStringLiteral("On")), -1);
    EXPECT_EQ(AntennaDefinition::NameToPolarMode(QStringLiteral("auto")), -1);
}

TEST(Antenna, RangesRefuseWithTheirExactTexts)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        const char *what;
        std::function<void()> set;
        QString message; // null: accepted
    };
    auto range = [](const char *member, const char *lo, const char *hi, const char *object) {
        return QStringLiteral("Parameters for %1 are not set within range (%2, %3) in '%4'.")
            .arg(QLatin1String(member), QLatin1String(lo), QLatin1String(hi), QLatin1String(object));
    };
    AntennaMatrixConfiguration m;
    AntennaEntry e;
    AntennaConfiguration c;
    AuxTiming t;
    AntennaRxPath r;
    AntennaPattern p;
    for (QUILLET::IQuilletObject *o : std::initializer_list<QUILLET::IQuilletObject *>{&m, &e, &c, &t, &r, &p})
        o->SetValidate(true);
    const Case cases[] = {
        {"word 65535", [&] { m.SetOutputAuxWord(65535); }, QString()},
        {"word 65536", [&] { m.SetOutputAuxWord(65536); }, range("m_outputAuxWord", "0", "65535", "AntennaMatrixConfiguration")},
        {"word -1", [&] { m.SetOutputAuxWord(-1); }, range("m_outputAuxWord", "0", "65535", "AntennaMatrixConfiguration")},
        {"path 10", [&] { m.SetAntennaPathSelected(10); }, QString()},
        {"path -1", [&] { m.SetAntennaPathSelected(-1); }, range("m_antennaPathSelected", "0", "10", "AntennaMatrixConfiguration")},
        {"path 11", [&] { m.SetAntennaPathSelected(11); }, range("m_antennaPathSelected", "0", "10", "AntennaMatrixConfiguration")},
        {"entry index 31", [&] { e.Setindex(31); }, QString()},
        {"entry index 32", [&] { e.Setindex(32); }, range("m_index", "0", "31", "AntennaEntry")},
        {"entry index -1", [&] { e.Setindex(-1); }, range("m_index", "0", "31", "AntennaEntry")},
        {"aux byte -1", [&] { c.SetOutputAuxByte(-1); }, range("m_outputAuxByte", "0", "255", "AntennaConfiguration")},
        {"aux mask 256", [&] { c.SetOutputAuxMask(256); }, range("m_outputAuxMask", "0", "255", "AntennaConfiguration")},
        {"rx path 10", [&] { c.SetRxPath(10); }, QString()},
        {"rx path 11", [&] { c.SetRxPath(11); }, range("m_rxPath", "0", "10", "AntennaConfiguration")},
        {"route SHF 2", [&] { c.SetInputRoute_SHF(2); },
         QStringLiteral("enum is not valid (classname=AntennaConfiguration,membername=m_inputRoute_SHF)")},
        {"route VUHF 4", [&] { c.SetInputRoute_VUHF(4); }, QString()},
        {"switching 0.1", [&] { t.SetAuxSwitchingTime(0.1); }, QString()},
        {"switching 0.1000001", [&] { t.SetAuxSwitchingTime(0.1000001); },
         range("m_auxSwitchingTime", "0", "0.1", "AuxTiming")},
        {"switching NaN", [&] { t.SetAuxSwitchingTime(nan); }, range("m_auxSwitchingTime", "0", "0.1", "AuxTiming")},
        {"guard 5", [&] { t.SetAuxGuardTime(5.0); }, QString()},
        {"guard -0.0", [&] { t.SetAuxGuardTime(-0.0); }, QString()},
        {"guard -0.01", [&] { t.SetAuxGuardTime(-0.01); }, range("m_auxGuardTime", "0", "5", "AuxTiming")},
        {"timing index 15", [&] { t.Setindex(15); }, QString()},
        {"timing index 16", [&] { t.Setindex(16); }, range("m_index", "0", "15", "AuxTiming")},
        {"rx index 10", [&] { r.Setindex(10); }, QString()},
        {"rx index 11", [&] { r.Setindex(11); }, range("m_index", "0", "10", "AntennaRxPath")},
        {"name null", [&] { p.Setname(QString()); }, QStringLiteral("AntennaPattern: Please set name properly (origin: Setter).")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        if (c.message.isNull())
            EXPECT_NO_THROW(c.set());
        else
            expectThrow<OutOfRangeException>(c.set, c.message);
    }
}

TEST(Antenna, CheckNamesTheFirstFaultAndItsObject)
{
    struct Case {
        const char *what;
        std::function<void()> check;
        QString message;
    };
    AntennaEntry noIndex;
    AntennaPattern empty;
    AntennaDefinition withEmptyPattern;
    withEmptyPattern.GetAntennaPattern();
    AntennaMatrixConfiguration badItem;
    AuxTiming t;
    t.Setindex(16); // validation is off: stored
    badItem.GetAuxTimings().AppendAuxTiming(t);
    AntennaMatrixConfiguration badWord;
    badWord.SetOutputAuxWord(70000);
    AntennaRxPath nullName;
    nullName.Setindex(1);
    nullName.SetNAME(QString());
    const Case cases[] = {
        {"entry without index", [&] { noIndex.Check(); }, QStringLiteral("AntennaEntry: Please set index properly.")},
        {"pattern without points", [&] { empty.Check(); }, QStringLiteral("AntennaPattern: Please set Curve properly.")},
        {"definition with an empty pattern", [&] { withEmptyPattern.Check(); },
         QStringLiteral("AntennaPattern: Please set Curve properly.")},
        {"aggregate with a bad timing", [&] { badItem.Check(); }, QStringLiteral("AuxTiming: Please set index properly.")},
        {"aggregate word", [&] { badWord.Check(); }, QStringLiteral("AntennaMatrixConfiguration: Please set OutputAuxWord properly.")},
        {"rx path null name", [&] { nullName.Check(); }, QStringLiteral("AntennaRxPath: Please set NAME properly.")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        expectThrow<OutOfRangeException>(c.check, c.message);
    }
    // What passes: nothing set anywhere, and a path with only its index.
    EXPECT_NO_THROW(AntennaMatrixConfiguration().Check());
    EXPECT_NO_THROW(AntennaDefinition().Check());
    AntennaRxPath onlyIndex;
    test::readXml(onlyIndex, QStringLiteral("<AntennaRxPath index=\"4\"/>"));
    EXPECT_FALSE(onlyIndex.IsNAMESet());
    EXPECT_NO_THROW(onlyIndex.Check());
}

TEST(Antenna, AppendRefusesItemsWithoutData)
{
    // The message is the frame's; an entry without its index, a pattern
    // without its name, a point with one of three attributes.
    AntennaEntries entries;
    AntennaPatterns all;
    AntennaPattern one;
    for (QUILLET::IQuilletObject *o : std::initializer_list<QUILLET::IQuilletObject *>{&entries, &all, &one})
        o->SetValidate(true);
    AntennaPattern unnamed;
    unnamed.AppendCurve(point(1, 2, 3));
    Curve half;
    half.Setfrequency(1);
    expectThrow<IncompleteDefinitionException>([&] { entries.AppendAntennaEntry(AntennaEntry()); },
        QStringLiteral("AntennaEntries: Tried to append not completely defined or invalid item AntennaEntry."));
    expectThrow<IncompleteDefinitionException>([&] { all.AppendAntennaPattern(unnamed); },
        QStringLiteral("AntennaPatterns: Tried to append not completely defined or invalid item AntennaPattern."));
    expectThrow<IncompleteDefinitionException>([&] { one.AppendCurve(half); },
        QStringLiteral("AntennaPattern: Tried to append not completely defined or invalid item Curve."));

    // Indices order nothing: repeats stay, in the order of appending.
    AntennaEntry a, b;
    a.Setindex(3);
    a.GetAntennaDefinition().SetName(QStringLiteral("a"));
    b.Setindex(3);
    b.GetAntennaDefinition().SetName(QStringLiteral("b"));
    entries.AppendAntennaEntry(a);
    entries.AppendAntennaEntry(b);
    ASSERT_EQ(entries.GetAntennaEntry().size(), 2);
    EXPECT_EQ(entries.GetAntennaEntry()[1].GetAntennaDefinition().GetName(), QStringLiteral("b"));

    // Reading XML: a point without width is refused with validation on, kept without.
    const QString xml = QStringLiteral("<AntennaPattern name=\"p\"><Curve frequency=\"1\" attenuation=\"2\"/></AntennaPattern>");
    AntennaPattern strict;
    strict.SetValidate(true);
    expectThrow<IncompleteDefinitionException>(
        [&] { test::readXml(strict, xml); },
        QStringLiteral("AntennaPattern: Tried to append not completely defined or invalid item Curve."));
    AntennaPattern lax;
    test::readXml(lax, xml);
    ASSERT_EQ(lax.GetCurve().size(), 1);
    EXPECT_FALSE(lax.GetCurve()[0].HasData());
    EXPECT_TRUE(lax.GetCurve()[0].IsattenuationSet());
}

TEST(Antenna, DataAndDefaults)
{
    // The aggregate: data in its lists, not the bits of its nested objects.
    AntennaMatrixConfiguration m;
    EXPECT_FALSE(m.HasData());
    m.SetValidate(true);
    EXPECT_EQ(test::xml(m), QStringLiteral("<AntennaMatrixConfiguration/>"));
    EXPECT_TRUE(m.HasData());
    m.GetAntennaEntries();
    m.GetAuxTimings();
    m.GetAntennaRxPaths();
    EXPECT_FALSE(m.AnyData());
    EXPECT_EQ(test::xml(m), QStringLiteral("<AntennaMatrixConfiguration><AntennaEntries/><AuxTimings/><AntennaRxPaths/>"
                                           "</AntennaMatrixConfiguration>"));
    m.ResetToDefault();
    EXPECT_EQ(test::xml(m), QStringLiteral("<AntennaMatrixConfiguration><AntennaPolarization>VERT</AntennaPolarization>"
                                           "<AntennaPreamplifierState>OFF</AntennaPreamplifierState>"
                                           "</AntennaMatrixConfiguration>"));

    AntennaDefinition d;
    EXPECT_TRUE(d.HasData());
    EXPECT_FALSE(d.AnyData());
    d.ResetToDefault();
    EXPECT_TRUE(d.AnyData());
    EXPECT_EQ(d.GetPolarModeAsString(), QStringLiteral("AUTO"));
    EXPECT_FALSE(d.IsValidSet());

    // The classes whose reset sets nothing.
    AntennaEntry e;
    e.ResetToDefault();
    AuxTiming t;
    t.ResetToDefault();
    AntennaPattern p;
    p.ResetToDefault();
    EXPECT_FALSE(e.AnyData() || t.AnyData() || p.AnyData());
    EXPECT_FALSE(e.HasData());

    // Versions: the class's, and none read yet.
    AntennaPatterns all;
    EXPECT_EQ(all.GetVersion(), QStringLiteral("1"));
    EXPECT_TRUE(all.GetInitialVersionLoaded().isNull());
    all.Reset();
    EXPECT_EQ(all.GetVersion(), QStringLiteral("1"));
    EXPECT_FALSE(all.HasData());
}

TEST(Antenna, XmlTextOfEveryClass)
{
    AntennaMatrixConfiguration m = station();
    m.GetAntennaEntries().GetAntennaEntry().resize(1);
    m.GetAntennaEntries().GetAntennaEntry()[0].GetAntennaDefinition().GetAntennaPattern().GetCurve().resize(1);
    EXPECT_EQ(test::xml(m).toStdString(),
              "<AntennaMatrixConfiguration>"
              "<AntennaControlMode>On</AntennaControlMode><AntennaPolarization>HOR</AntennaPolarization>"
              "<AntennaPreamplifierState>ON</AntennaPreamplifierState><AntennaPathSelected>10</AntennaPathSelected>"
              "<OutputAuxMode>ANTC</OutputAuxMode><OutputAuxWord>65535</OutputAuxWord>"
              "<TunerFrequencyLimitHF>30.50</TunerFrequencyLimitHF><TunerFrequencyLimitVUHF>3000.25</TunerFrequencyLimitVUHF>"
              "<AntennaEntries><AntennaEntry index=\"31\">"
              "<AntennaDefinition><FactorDataSet>factors-0</FactorDataSet><PolarMode>RIGH</PolarMode>"
              "<FrequencyStart>0.01</FrequencyStart><FrequencyStop>6000.00</FrequencyStop>"
              "<UpperLimit_HF>30.00</UpperLimit_HF><UpperLimit_VUHF>3000.00</UpperLimit_VUHF>"
              "<Name>Dipole 0</Name><Valid>true</Valid>"
              "<AntennaPattern name=\"p0\"><Curve frequency=\"100.00\" attenuation=\"-1.00\" width=\"60.00\"/></AntennaPattern>"
              "</AntennaDefinition>"
              "<AntennaConfiguration><FrequencyStartUsed>1.50</FrequencyStartUsed><FrequencyStopUsed>2999.99</FrequencyStopUsed>"
              "<InputRoute_HF>HF3 (X40)</InputRoute_HF><InputRoute_VUHF>U/SHF2 (X46)</InputRoute_VUHF>"
              "<InputRoute_SHF>U/SHF2 (X46)</InputRoute_SHF><InputRoute_SEHF>S/EHF1 (X46 bridge)</InputRoute_SEHF>"
              "<OutputAuxByte>255</OutputAuxByte><OutputAuxMask>15</OutputAuxMask><RxPath>0</RxPath></AntennaConfiguration>"
              "</AntennaEntry></AntennaEntries>"
              "<AuxTimings><AuxTiming index=\"15\"><AuxSwitchingTime>0.10</AuxSwitchingTime><AuxGuardTime>5.00</AuxGuardTime>"
              "</AuxTiming></AuxTimings>"
              "<AntennaRxPaths><AntennaRxPath index=\"0\"><NAME>RX 1</NAME><ROTOR>Rotor \xC3\xA4</ROTOR></AntennaRxPath>"
              "</AntennaRxPaths></AntennaMatrixConfiguration>");

    // Required attributes are written whatever their bits: a null name as an empty attribute.
    AntennaPattern unnamed;
    unnamed.AppendCurve(Curve());
    EXPECT_EQ(test::xml(unnamed),
              QStringLiteral("<AntennaPattern name=\"\"><Curve frequency=\"0.00\" attenuation=\"0.00\" width=\"0.00\"/></AntennaPattern>"));
    EXPECT_EQ(test::xml(patterns({QStringLiteral("H")})),
              QStringLiteral("<AntennaPatterns Version=\"1\"><AntennaPattern name=\"H\">"
                             "<Curve frequency=\"100.00\" attenuation=\"-1.00\" width=\"60.00\"/></AntennaPattern></AntennaPatterns>"));
    // Writing an item without data fails while validating.
    AntennaPatterns holder;
    holder.AppendAntennaPattern(AntennaPattern());
    holder.GetAntennaPattern().append(pattern(QStringLiteral("x"), 1));
    holder.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { test::xml(holder); },
                                     QStringLiteral("AntennaPattern: Please set Curve properly."));
}

// Bools, enumerated and empty texts, and attributes that are also elements
// read as Xml.* has them for every class; here the index of an item with
// nested objects, and a route name that only another table knows.
TEST(Antenna, XmlReadingOfAnEntry)
{
    AntennaEntry e;
    test::readXml(e, QStringLiteral("<AntennaEntry index=\"2\"><index>7</index><AntennaConfiguration>"
                                    "<InputRoute_HF>U/SHF1 (X45)</InputRoute_HF><InputRoute_SHF>U/SHF1 (X45)</InputRoute_SHF>"
                                    "</AntennaConfiguration></AntennaEntry>"));
    EXPECT_EQ(e.Getindex(), 7);
    EXPECT_TRUE(e.IsAntennaConfigurationSet());
    EXPECT_FALSE(e.IsAntennaDefinitionSet());
    EXPECT_EQ(e.GetAntennaConfiguration().GetInputRoute_HF(), -1);
    EXPECT_EQ(e.GetAntennaConfiguration().GetInputRoute_SHF(), 0);
}

TEST(Antenna, TaggedAndRawBytesWithTheirOrderDepartures)
{
    AuxTiming t;
    t.Setindex(3);
    t.SetAuxSwitchingTime(0.05);
    t.SetAuxGuardTime(1.5);
    // Tagged: the index first; raw: the index last.
    EXPECT_EQ(hex(test::tagged(t)), "00 00 00 30 "
                                    "21 28 39 4B 00 00 00 08 00 00 00 00 00 00 00 03 "
                                    "A7 4E 75 F9 00 00 00 08 00 00 00 04 30 2E 30 35 "
                                    "A0 7D 0B 46 00 00 00 08 00 00 00 04 31 2E 35 30");
    EXPECT_EQ(hex(test::raw(t)), "07 3F A9 99 99 99 99 99 9A 3F F8 00 00 00 00 00 00 00 00 00 00 00 00 00 03");

    AntennaRxPath r;
    r.Setindex(2);
    r.SetROTOR(QStringLiteral("R"));
    EXPECT_EQ(hex(test::tagged(r)), "00 00 00 1D 21 28 39 4B 00 00 00 08 00 00 00 00 00 00 00 02 "
                                    "E8 87 A1 E4 00 00 00 05 00 00 00 01 52");
    EXPECT_EQ(hex(test::raw(r)), "06 00 00 00 02 00 52 00 00 00 00 00 00 00 02");

    // A point: three attributes, three text records, three doubles at full precision.
    const Curve c = point(100, -3.5, 45.125);
    EXPECT_EQ(hex(test::tagged(c)), "00 00 00 34 "
                                    "C6 A9 9E B6 00 00 00 0A 00 00 00 06 31 30 30 2E 30 30 "
                                    "2D 72 9A 7E 00 00 00 09 00 00 00 05 2D 33 2E 35 30 "
                                    "6F 60 48 D2 00 00 00 09 00 00 00 05 34 35 2E 31 33");
    EXPECT_EQ(hex(test::raw(c)), "07 40 59 00 00 00 00 00 00 C0 0C 00 00 00 00 00 00 40 46 90 00 00 00 00 00");

    // The document: the version record (a QString) first; each pattern's name
    // before its points in the tagged form, after them in the raw form.
    AntennaPatterns all;
    AntennaPattern h;
    h.Setname(QStringLiteral("H"));
    h.AppendCurve(c);
    all.AppendAntennaPattern(h);
    EXPECT_EQ(hex(test::tagged(all)), "00 00 00 6F "
                                      "CC FE DF A1 00 00 00 06 00 00 00 02 00 31 "
                                      "47 DE EE B2 00 00 00 59 00 00 00 01 00 00 00 51 "
                                      "CB 4C F6 45 00 00 00 05 00 00 00 01 48 "
                                      "CE 8F F8 18 00 00 00 3C 00 00 00 01 00 00 00 34 "
                                      "C6 A9 9E B6 00 00 00 0A 00 00 00 06 31 30 30 2E 30 30 "
                                      "2D 72 9A 7E 00 00 00 09 00 00 00 05 2D 33 2E 35 30 "
                                      "6F 60 48 D2 00 00 00 09 00 00 00 05 34 35 2E 31 33");
    EXPECT_EQ(hex(test::raw(all)), "01 00 00 00 02 00 31 00 00 00 01 "
                                   "03 00 00 00 01 "
                                   "07 40 59 00 00 00 00 00 00 C0 0C 00 00 00 00 00 00 40 46 90 00 00 00 00 00 "
                                   "00 00 00 02 00 48");

    // Empty optional lists write no record; the empty document writes its version and a count of 0.
    EXPECT_EQ(hex(test::tagged(AntennaEntries())), "00 00 00 00");
    EXPECT_EQ(hex(test::raw(AntennaEntries())), "00");
    EXPECT_EQ(hex(test::tagged(AntennaPatterns())), "00 00 00 1A CC FE DF A1 00 00 00 06 00 00 00 02 00 31 "
                                                   "47 DE EE B2 00 00 00 04 00 00 00 00");
    EXPECT_EQ(hex(test::raw(AntennaPatterns())), "00 00 00 00 02 00 31 00 00 00 00");

    // The aggregate: two presence bytes, scalars only when set, nested objects with their tags.
    AntennaMatrixConfiguration m;
    m.SetOutputAuxWord(258);
    m.GetAuxTimings();
    EXPECT_EQ(hex(test::tagged(m)), "00 00 00 18 C3 92 DE FE 00 00 00 08 00 00 00 00 00 00 01 02 "
                                    "6B 49 FF 0D 00 00 00 00");
    EXPECT_EQ(hex(test::raw(m)), "20 02 00 00 00 00 00 00 01 02 00");
}

TEST(Antenna, RawReaderExpectsRequiredNestedObjects)
{
    // An entry's two nested objects are read whatever its presence byte says.
    AntennaEntry e;
    test::readRaw(e, QByteArray::fromHex("04" "0000" "0000" "0000000000000009"));
    EXPECT_EQ(e.Getindex(), 9);
    EXPECT_TRUE(e.IsindexSet());
    EXPECT_FALSE(e.IsAntennaDefinitionSet());
    // The aggregate reads all three lists likewise.
    AntennaMatrixConfiguration m;
    QDataStream in(QByteArray::fromHex("0000" "00" "00" "01 00000001 02 00000004 00410042 0000000000000000"));
    m.SetVersionSpecificBinaryWithoutValidation(in);
    EXPECT_EQ(in.status(), QDataStream::Ok);
    EXPECT_TRUE(in.atEnd());
    ASSERT_EQ(m.GetAntennaRxPaths().GetAntennaRxPath().size(), 1);
    EXPECT_EQ(m.GetAntennaRxPaths().GetAntennaRxPath()[0].GetROTOR(), QStringLiteral("AB"));
}

TEST(Antenna, VersionRuleInEveryForm)
{
    // Read into an object that holds the pattern "old"; the document holds "new".
    struct Case {
        const char *version; // null: no version at all
        QString loaded;
        bool keeps;
    };
    const Case cases[] = {
        {nullptr, QStringLiteral(""), false},
        {"1", QStringLiteral("1"), true},
        {"2", QStringLiteral("2"), true},
        {"1.0", QStringLiteral("1.0"), true},
        {"0.5", QStringLiteral("0.5"), false},
        {"abc", QStringLiteral("abc"), false},
        {"", QStringLiteral(""), false},
    };
    const AntennaPattern fresh = pattern(QStringLiteral("new"), 1);
    for (const Case &c : cases) {
        SCOPED_TRACE(c.version ? c.version : "(none)");
        const QStringList expected = c.keeps ? QStringList{QStringLiteral("old"), QStringLiteral("new")}
                                             : QStringList{QStringLiteral("new")};
        const QString version = QString::fromLatin1(c.version);

        AntennaPatterns fromXml = patterns({QStringLiteral("old")});
        const QString attribute = c.version ? QStringLiteral(" Version=\"%1\"").arg(version) : QString();
        test::readXml(fromXml, QStringLiteral("<AntennaPatterns%1>").arg(attribute) + test::xml(fresh)
                                   + QStringLiteral("</AntennaPatterns>"));
        EXPECT_EQ(namesOf(fromXml), expected);
        EXPECT_EQ(fromXml.GetInitialVersionLoaded(), c.loaded);
        EXPECT_FALSE(fromXml.GetInitialVersionLoaded().isNull());

        // Tagged: a stream without the version record changes nothing.
        Records records;
        if (c.version)
            records.record(0xCCFEDFA1, [&](Records &r) {
                r.i32(qint32(version.size()) * 2);
                for (const QChar ch : version)
                    r.bytes(QByteArray(1, '\0') + char(ch.unicode()));
            });
        records.record(0x47DEEEB2, [&](Records &r) {
            r.i32(1).bytes(test::tagged(fresh));
        });
        AntennaPatterns fromTagged = patterns({QStringLiteral("old")});
        test::readTagged(fromTagged, records.object());
        EXPECT_EQ(namesOf(fromTagged), c.version ? expected : (QStringList{QStringLiteral("old"), QStringLiteral("new")}));
        EXPECT_EQ(fromTagged.GetInitialVersionLoaded().isNull(), !c.version);

        // Raw: the version stands between the presence byte and the count.
        QByteArray raw;
        {
            QDataStream out(&raw, QIODevice::WriteOnly);
            out.writeRawData("\x01", 1);
            out << (c.version ? version : QString(QLatin1String(""))) << qint32(1);
            fresh.GetVersionSpecificBinaryWithoutValidation(out);
        }
        AntennaPatterns fromRaw = patterns({QStringLiteral("old")});
        test::readRaw(fromRaw, raw);
        EXPECT_EQ(namesOf(fromRaw), expected);
        EXPECT_TRUE(fromRaw.IsAntennaPatternSet());
    }

    // A version record whose text is no QString, or runs past the stream, is a length error.
    const QString lengthError =
        QStringLiteral("AntennaPatterns::SetBinary(...): Length error occurred during processing of binary representation");
    for (const QByteArray &value : {QByteArray::fromHex("00000003 003100"), QByteArray::fromHex("00000010 0031")}) {
        Records bad;
        bad.record(0xCCFEDFA1, [&](Records &r) { r.bytes(value); });
        AntennaPatterns cut;
        expectThrow<BinaryParsingException>([&] { test::readTagged(cut, bad.object()); }, lengthError);
    }

    // An older raw document without items loses the bit just read.
    AntennaPatterns emptied = patterns({QStringLiteral("old")});
    test::readRaw(emptied, QByteArray::fromHex("01" "00000000" "00000000"));
    EXPECT_FALSE(emptied.IsAntennaPatternSet());
    EXPECT_FALSE(emptied.AnyData());

    // The version read takes no part in equality.
    AntennaPatterns a = patterns({QStringLiteral("x")}), b = patterns({QStringLiteral("x")});
    test::readXml(a, QStringLiteral("<AntennaPatterns Version=\"7\"/>"));
    EXPECT_TRUE(a == b);
    // The round trip keeps the version and the patterns.
    AntennaPatterns back;
    test::readTagged(back, test::tagged(b));
    EXPECT_EQ(back.GetInitialVersionLoaded(), QStringLiteral("1"));
    EXPECT_TRUE(back == b);
}

TEST(Antenna, UnknownElementsOfThePatternDocument)
{
    const QString body = QStringLiteral("<AntennaPattern name=\"a\"><Curve frequency=\"1\" attenuation=\"1\" width=\"1\"/>"
                                        "</AntennaPattern>"
                                        "<Wrapper><Deeper><Deepest/></Deeper>"
                                        "<AntennaPattern name=\"b\"><Curve frequency=\"2\" attenuation=\"2\" width=\"2\"/>"
                                        "</AntennaPattern></Wrapper>"
                                        "<AntennaPattern name=\"c\"><Curve frequency=\"3\" attenuation=\"3\" width=\"3\"/>"
                                        "</AntennaPattern>");
    struct Case {
        const char *version;
        bool validate;
        QStringList names; // read before the document ends or the exception comes
        bool throws;
    };
    const Case cases[] = {
        // Older documents skip the wrapper with all it holds, validating or not.
        {nullptr, true, {QStringLiteral("a"), QStringLiteral("c")}, false},
        {"0", false, {QStringLiteral("a"), QStringLiteral("c")}, false},
        // This version and newer ones refuse it while validating...
        {"1", true, {QStringLiteral("a")}, true},
        {"2", true, {QStringLiteral("a")}, true},
        // ...and read into it otherwise: its known children count, and reading
        // goes on after its end.
        {"1", false, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}, false},
        {"2", false, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.version ? c.version : "(none)") + (c.validate ? " strict" : " lax"));
        const QString attribute = c.version ? QStringLiteral(" Version=\"%1\"").arg(QLatin1String(c.version)) : QString();
        QXmlStreamReader reader(QStringLiteral("<AntennaPatterns%1>").arg(attribute) + body
                                + QStringLiteral("</AntennaPatterns>"));
        reader.readNextStartElement();
        AntennaPatterns all;
        all.SetValidate(c.validate);
        if (c.throws) {
            expectThrow<InvalidXmlException>([&] { all.ProcessXml(reader); },
                                             QStringLiteral("Unknown Tag 'Wrapper' in 'AntennaPatterns'."));
        } else {
            all.ProcessXml(reader);
            EXPECT_TRUE(reader.isEndElement());
            EXPECT_EQ(reader.name().toString(), QStringLiteral("AntennaPatterns"));
            EXPECT_FALSE(reader.hasError());
        }
        EXPECT_EQ(namesOf(all), c.names);
    }
}

TEST(Antenna, WholeStationThroughEveryForm)
{
    const AntennaMatrixConfiguration original = station();
    test::expectRoundTrip(original);
}

#ifdef HALVANE_TOOL

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

namespace {

struct ToolRun {
    int code;
    QByteArray out;
    QString err;
};

ToolRun tool(const QStringList &args)
{
    QProcess p;
    // Drawing loads Qt's offscreen platform plugin, which keeps a few objects
    // to the end of the process; the leak checker of a sanitizer build would
    // report them as the tool's. The library's own objects are checked by
    // every other test.
    if (args.value(0) == QLatin1String("plot")) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        const QString asan = env.value(QStringLiteral("ASAN_OPTIONS"));
        env.insert(QStringLiteral("ASAN_OPTIONS"), asan + (asan.isEmpty() ? "" : ":") + QStringLiteral("detect_leaks=0"));
        p.setProcessEnvironment(env);
    }
    p.start(QStringLiteral(HALVANE_TOOL), args);
    p.waitForFinished(60000);
    return ToolRun{p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
               QString::fromUtf8(p.readAllStandardError())};
}

QString example(const char *name)
{
    return QStringLiteral(HALVANE_SOURCE_DIR "/examples/") + QLatin1String(name);
}

} // namespace

TEST(AntennaTool, DumpShowsTheVersion)
{
    const ToolRun tagged = tool({QStringLiteral("dump"), example("AntennaPatterns.hvb")});
    ASSERT_EQ(tagged.code, 0) << tagged.err.toStdString();
    EXPECT_TRUE(tagged.out.startsWith("AntennaPatterns 0xAE3C1F2C length 6297\n"
                                      "  Version 0xCCFEDFA1 length 6\n"
                                      "    \"1\"\n"
                                      "  AntennaPattern 0x47DEEEB2 length "));
    const ToolRun raw = tool({QStringLiteral("dump"), example("AntennaPatterns.hvr")});
    EXPECT_TRUE(raw.out.startsWith("AntennaPatterns presence 1 (bit 0 first)\n"
                                   "  Version: \"1\"\n"
                                   "  AntennaPattern: 4 items\n"));
}

#ifdef HALVANE_TOOL_PLOT

namespace {

// The rows of a plot's CSV, each split at its commas (names here have none).
QVector<QStringList> rows(const QByteArray &csv)
{
    QVector<QStringList> out;
    for (const QString &line : QString::fromUtf8(csv).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        out.append(line.split(QLatin1Char(',')));
    return out;
}

// Well-formed XML by xmllint, where it is installed.
void expectWellFormed(const QString &path)
{
    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty())
        return;
    QProcess lint;
    lint.start(xmllint, {QStringLiteral("--noout"), path});
    lint.waitForFinished(60000);
    EXPECT_EQ(lint.exitCode(), 0) << path.toStdString() << lint.readAllStandardError().toStdString();
}

ToolRun plot(const QStringList &args)
{
    return tool(QStringList{QStringLiteral("plot")} + args);
}

QString writeFile(QTemporaryDir &dir, const QString &name, const QByteArray &bytes)
{
    const QString path = dir.filePath(name);
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(bytes);
    return path;
}

} // namespace

TEST(AntennaTool, PlotPointsAreTheDocumentsSortedByFrequency)
{
    QTemporaryDir dir;
    // Every example plots as well-formed SVG, in each of its forms.
    for (const char *name : {"AntennaPatterns.xml", "AntennaMatrixConfiguration.hvb", "AntennaMatrixConfiguration.hvr"}) {
        const QString svg = dir.filePath(QStringLiteral("plot.svg"));
        const ToolRun r = plot({example(name), svg});
        ASSERT_EQ(r.code, 0) << name << r.err.toStdString();
        EXPECT_EQ(r.err, QString());
        expectWellFormed(svg);
    }
    const ToolRun png = plot({example("AntennaPatterns.xml"), QStringLiteral("--to"), QStringLiteral("png")});
    EXPECT_TRUE(png.out.startsWith("\x89PNG\r\n\x1A\n"));

    // The CSV holds each point of the document once, sorted by frequency
    // within its pattern, with numbers that read back to the stored values.
    const ToolRun csv = plot({example("AntennaPatterns.xml"), QStringLiteral("--csv")});
    ASSERT_EQ(csv.code, 0);
    EXPECT_TRUE(csv.out.startsWith("kind,series,frequency,attenuation,width\n"
                                   "point,\"HF loop, horizontal\",0.5,7.44,342.87\n"));
    AntennaPatterns document;
    document.LoadXml(example("AntennaPatterns.xml"));
    QVector<QPair<QString, Curve>> expected;
    for (AntennaPattern p : document.GetAntennaPattern()) {
        QVector<Curve> curves = p.GetCurve();
        std::stable_sort(curves.begin(), curves.end(),
                         [](const Curve &a, const Curve &b) { return a.Getfrequency() < b.Getfrequency(); });
        for (const Curve &c : curves)
            expected.append(qMakePair(p.Getname(), c));
    }
    QVector<QStringList> got = rows(csv.out).mid(1);
    ASSERT_EQ(got.size(), 110);
    ASSERT_EQ(expected.size(), 110);
    for (int i = 0; i < got.size(); ++i) {
        QStringList row = got[i];
        if (row.size() == 6) // the one name with a comma, quoted
            row = QStringList{row[0], QString(row[1] + QLatin1Char(',') + row[2]).remove(QLatin1Char('"')), row[3], row[4],
                              row[5]};
        ASSERT_EQ(row.size(), 5) << i;
        EXPECT_EQ(row[0], QStringLiteral("point"));
        EXPECT_EQ(row[1], expected[i].first) << i;
        EXPECT_EQ(row[2].toDouble(), expected[i].second.Getfrequency()) << i;
        EXPECT_EQ(row[3].toDouble(), expected[i].second.Getattenuation()) << i;
        EXPECT_EQ(row[4].toDouble(), expected[i].second.Getwidth()) << i;
    }

    // One antenna: its pattern, then its band and limits.
    const ToolRun entry = plot({example("AntennaMatrixConfiguration.xml"), QStringLiteral("--entry"),
                            QStringLiteral("5"), QStringLiteral("--csv")});
    ASSERT_EQ(entry.code, 0) << entry.err.toStdString();
    const QVector<QStringList> entryRows = rows(entry.out);
    ASSERT_EQ(entryRows.size(), 1 + 10 + 4);
    EXPECT_EQ(entryRows[1].mid(0, 3), (QStringList{QStringLiteral("point"), QStringLiteral("S/EHF horn"), QStringLiteral("6000")}));
    EXPECT_TRUE(entry.out.endsWith("band,FrequencyStart,6000,,\nband,FrequencyStop,40000,,\n"
                                   "limit,UpperLimit_HF,30,,\nlimit,UpperLimit_VUHF,3000,,\n"));
    // Without --entry: every antenna's pattern, named by the entry's index.
    const ToolRun all = plot({example("AntennaMatrixConfiguration.xml"), QStringLiteral("--csv")});
    EXPECT_TRUE(all.out.contains("\npoint,5: S/EHF horn,36198.98,4.57,16.63\n"));
}

TEST(AntennaTool, PlotOfAwkwardPatterns)
{
    QTemporaryDir dir;
    const QString file = writeFile(
        dir, QStringLiteral("awkward.xml"),
        "<AntennaPatterns Version=\"1\">"
        "<AntennaPattern name=\"empty\"/>"
        "<AntennaPattern name=\"single\"><Curve frequency=\"5\" attenuation=\"-1.5\" width=\"30\"/></AntennaPattern>"
        "<AntennaPattern name=\"messy\">"
        "<Curve frequency=\"300\" attenuation=\"3\" width=\"1\"/>"
        "<Curve frequency=\"100\" attenuation=\"1\" width=\"2\"/>"
        "<Curve frequency=\"nan\" attenuation=\"9\" width=\"9\"/>"
        "<Curve frequency=\"200\" attenuation=\"2\" width=\"inf\"/>"
        "<Curve frequency=\"100\" attenuation=\"1.5\" width=\"4\"/>"
        "</AntennaPattern></AntennaPatterns>");
    const ToolRun csv = plot({file, QStringLiteral("--csv")});
    EXPECT_EQ(csv.code, 0);
    EXPECT_EQ(csv.out.toStdString(), "kind,series,frequency,attenuation,width\n"
                                     "point,single,5,-1.5,30\n"
                                     "point,messy,100,1,2\n"
                                     "point,messy,100,1.5,4\n"
                                     "point,messy,300,3,1\n");
    EXPECT_EQ(csv.err, file + QStringLiteral(": warning: pattern 'empty' has no point to draw\n") + file
                           + QStringLiteral(": warning: pattern 'messy', point 3: a value is not a finite number; skipped\n")
                           + file
                           + QStringLiteral(": warning: pattern 'messy', point 4: a value is not a finite number; skipped\n")
                           + file
                           + QStringLiteral(": warning: pattern 'messy': 1 point(s) at a frequency already taken; "
                                            "drawn in document order\n"));
    const QString svg = dir.filePath(QStringLiteral("awkward.svg"));
    EXPECT_EQ(plot({file, svg}).code, 0);
    expectWellFormed(svg);

    // An antenna without a pattern: its marks alone, under a title that needs escaping in SVG.
    const QString bare = writeFile(dir, QStringLiteral("bare.xml"),
                                   "<AntennaMatrixConfiguration><AntennaEntries><AntennaEntry index=\"3\"><AntennaDefinition>"
                                   "<FrequencyStart>2.5</FrequencyStart><UpperLimit_VUHF>3000</UpperLimit_VUHF>"
                                   "<Name>Horn &lt;&amp;&gt; \"x\"</Name></AntennaDefinition></AntennaEntry></AntennaEntries>"
                                   "</AntennaMatrixConfiguration>");
    const ToolRun marks = plot({bare, QStringLiteral("--entry"), QStringLiteral("3"), QStringLiteral("--csv")});
    EXPECT_EQ(marks.code, 0);
    EXPECT_EQ(marks.out.toStdString(), "kind,series,frequency,attenuation,width\n"
                                       "band,FrequencyStart,2.5,,\n"
                                       "limit,UpperLimit_VUHF,3000,,\n");
    EXPECT_EQ(marks.err, bare + QStringLiteral(": warning: antenna 3 has no pattern; its band and limits are drawn alone\n"));
    const QString bareSvg = dir.filePath(QStringLiteral("bare.svg"));
    EXPECT_EQ(plot({bare, bareSvg, QStringLiteral("--entry"), QStringLiteral("3")}).code, 0);
    expectWellFormed(bareSvg);

    // Values at the ends of the doubles still give a picture.
    const QString extreme = writeFile(dir, QStringLiteral("extreme.xml"),
                                      "<AntennaPatterns Version=\"1\"><AntennaPattern name=\"far\">"
                                      "<Curve frequency=\"1.7e308\" attenuation=\"-1.7e308\" width=\"4.9e-324\"/>"
                                      "<Curve frequency=\"-1.7e308\" attenuation=\"1.7e308\" width=\"4.9e-324\"/>"
                                      "</AntennaPattern><AntennaPattern name=\"tiny\">"
                                      "<Curve frequency=\"4.9e-324\" attenuation=\"0\" width=\"0\"/>"
                                      "<Curve frequency=\"1e300\" attenuation=\"0\" width=\"0\"/>"
                                      "</AntennaPattern></AntennaPatterns>");
    for (const char *to : {"svg", "png"}) {
        const ToolRun r = plot({extreme, QStringLiteral("--to"), QLatin1String(to)});
        EXPECT_EQ(r.code, 0) << to;
        EXPECT_EQ(r.err, QString()) << to;
        EXPECT_FALSE(r.out.isEmpty()) << to;
    }

    // What cannot be plotted: one line, the exit code, and no output file.
    struct Case {
        QStringList args;
        int code;
        QString err;
    };
    const QString out = dir.filePath(QStringLiteral("out.svg"));
    const QString station = example("AntennaMatrixConfiguration.xml");
    const QString nothing = writeFile(dir, QStringLiteral("nothing.xml"), "<AntennaPatterns Version=\"1\"/>");
    const Case cases[] = {
        {{example("ModeManager.xml"), out}, 1,
         example("ModeManager.xml")
             + QStringLiteral(": plot draws AntennaPatterns and AntennaMatrixConfiguration documents, not ModeManager\n")},
        {{station, out, QStringLiteral("--entry"), QStringLiteral("4")}, 1,
         station + QStringLiteral(": no antenna entry has the index 4\n")},
        {{nothing, out}, 1, nothing + QStringLiteral(": no pattern to plot\n")},
        {{file, out, QStringLiteral("--entry"), QStringLiteral("1")}, 2,
         QStringLiteral("halvane: --entry chooses an antenna of an AntennaMatrixConfiguration (halvane --help shows the usage)\n")},
        {{file, dir.filePath(QStringLiteral("out.txt"))}, 2,
         QStringLiteral("halvane: %1: unknown plot format 'txt' (svg, png or csv) (halvane --help shows the usage)\n")
             .arg(dir.filePath(QStringLiteral("out.txt")))},
        {{station, out, QStringLiteral("--entry"), QStringLiteral("two")}, 2,
         QStringLiteral("halvane: --entry takes the index of an antenna entry, not 'two' (halvane --help shows the usage)\n")},
    };
    for (const Case &c : cases) {
        const ToolRun r = plot(c.args);
        EXPECT_EQ(r.code, c.code) << c.err.toStdString();
        EXPECT_EQ(r.err, c.err);
        EXPECT_FALSE(QFile::exists(out));
    }
}

#endif // HALVANE_TOOL_PLOT
#endif // HALVANE_TOOL
