// The benchmark's hand-written baseline writes exactly the library's text and
// bytes for the same documents, and reads the library's output back.
#include "support.h"

#include "../bench/baseline_antenna.h"
#include "../bench/baseline_capabilities.h"
#include "../bench/baseline_settings.h"
#include "../bench/documents.h"

#include <type_traits>

namespace {

template <class Plain>
QString baselineXml(const Plain &plain)
{
    return test::writtenXml([&](QXmlStreamWriter &w) { baseline::writeXml(w, plain); });
}

template <class Plain>
QByteArray baselineTagged(const Plain &plain)
{
    return test::written([&](QDataStream &s) { baseline::writeTagged(s, plain); });
}

template <class Plain>
QByteArray baselineRaw(const Plain &plain)
{
    return test::written([&](QDataStream &s) { baseline::writeRaw(s, plain); });
}

// The documents of the bench that the baseline compares (the others are only
// written and read).
template <class T, class = void>
struct Comparable : std::false_type {};
template <class T>
struct Comparable<T, std::void_t<decltype(std::declval<const T &>() == std::declval<const T &>())>> : std::true_type {};

template <class Plain>
void expectSamePlain(const Plain &read, const Plain &plain)
{
    if constexpr (Comparable<Plain>::value) {
        EXPECT_TRUE(read == plain);
    }
}

// The baseline writes the library's three forms of the same document; it
// reads each of them to the values it was built from, to the end of the
// bytes and to the same forms again; the library reads the baseline's forms
// to the document it was built as. XML and the tagged form keep two
// decimals: for values with more, say so in \a twoDecimals, and only the raw
// form must read back to equal values.
template <class Lib, class Plain>
void expectSameForms(const Lib &library, const Plain &plain, bool twoDecimals = true)
{
    const QString xml = test::xml(library);
    const QByteArray tagged = test::tagged(library);
    const QByteArray raw = test::raw(library);
    EXPECT_EQ(baselineXml(plain), xml);
    EXPECT_EQ(baselineTagged(plain), tagged);
    EXPECT_EQ(baselineRaw(plain), raw);

    Plain fromXml, fromTagged, fromRaw;
    QXmlStreamReader reader(xml);
    reader.readNextStartElement();
    baseline::readXml(reader, fromXml);
    if (twoDecimals)
        expectSamePlain(fromXml, plain);
    EXPECT_EQ(baselineXml(fromXml), xml);
    QDataStream in(tagged);
    qint32 length;
    in >> length;
    EXPECT_EQ(length, tagged.size() - 4);
    baseline::readTagged(in, length, fromTagged);
    if (twoDecimals)
        expectSamePlain(fromTagged, plain);
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(baselineTagged(fromTagged), tagged);
    QDataStream rawIn(raw);
    baseline::readRaw(rawIn, fromRaw);
    expectSamePlain(fromRaw, plain);
    EXPECT_TRUE(rawIn.atEnd());
    EXPECT_EQ(baselineRaw(fromRaw), raw);

    Lib libFromXml, libFromTagged, libFromRaw;
    libFromXml.SetValidate(true);
    libFromTagged.SetValidate(true);
    test::readXml(libFromXml, baselineXml(plain));
    test::readTagged(libFromTagged, baselineTagged(plain));
    if (twoDecimals) {
        EXPECT_TRUE(libFromXml == library);
        EXPECT_TRUE(libFromTagged == library);
    }
    test::readRaw(libFromRaw, baselineRaw(plain));
    EXPECT_TRUE(libFromRaw == library);
}

} // namespace

TEST(Baseline, WritesTheLibrarysTextAndBytes)
{
    expectSameForms(documents::modeManager(), documents::plainModeManager());
    expectSameForms(documents::administration(), documents::plainAdministration());
    expectSameForms(documents::results(300), documents::plainResults(300), false);
}

TEST(Baseline, WritesAndReadsTheLibrarysCapabilities)
{
    const HALVANE::Capabilities library = documents::capabilities();
    const baseline::Capabilities plain = documents::plainCapabilities();
    expectSameForms(library, plain);

    // Every member is set, flags both true and false.
    const QByteArray raw = test::raw(library);
    EXPECT_EQ(test::hex(raw.left(8)), "FF FF FF FF 07 01 01 00");
    const QString text = test::xml(library);
    EXPECT_TRUE(text.contains(QLatin1String("<HardwareOptions><PanoramaScan>true</PanoramaScan>")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("<MinBandwidth>1.25</MinBandwidth><MaxBandwidth>12.50</MaxBandwidth>")));
    EXPECT_TRUE(text.endsWith(QLatin1String("<SystemAntennaConnectedCommand>false</SystemAntennaConnectedCommand>"
                                            "</Capabilities>")))
        << text.toStdString();

    // The comparison the bench times looks into the nested structs.
    baseline::Capabilities changed = plain;
    changed.masterRecordingCapabilities.csvRecordCapabilities.softwareRecording =
        !changed.masterRecordingCapabilities.csvRecordCapabilities.softwareRecording;
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.isbBandwidthSettings.maxBandwidth = 12.25;
    EXPECT_FALSE(changed == plain);
}

TEST(Baseline, WritesAndReadsTheLibrarysReceiverSettings)
{
    const HALVANE::ReceiverSettings library = documents::receiverSettings();
    const baseline::ReceiverSettings plain = documents::plainReceiverSettings();
    expectSameForms(library, plain);

    // All twelve objects and every field below them are there. Raw: the
    // document's two presence bytes, then RecorderSettings' byte and its
    // six indices, flag and last index, then FFMSettings' byte.
    const QByteArray raw = test::raw(library);
    EXPECT_EQ(test::hex(raw.left(12)), "FF 0F FF 01 0C 02 01 03 00 01 01 1F");
    const QString text = test::xml(library);
    for (const char *part :
         {"<ReceiverSettings><RecorderSettings><RecordSource>Audio</RecordSource>",
          "<Attenuation>LOW DESTORT</Attenuation>", "<AutomaticMeasMode>false</AutomaticMeasMode>",
          "<AudioMode>8 kHz /  8 bits / 2 channels</AudioMode>", "<XDBValue>26.50</XDBValue><BetaValue>99.75</BetaValue>",
          "<ModulationSettings Prefix=\"Peak\"><ModulationMethod>AM Neg</ModulationMethod>"
          "<ModulationValue>1030.50</ModulationValue></ModulationSettings>",
          "<DVTime>2026-11-24T06:30:15.250Z</DVTime>", "<GainControlValue>42</GainControlValue>",
          "<SignalPath>VUHF 1</SignalPath><SignalPath>VUHF 2</SignalPath><SignalPath>HF 1</SignalPath>"
          "<SignalPath>SHF</SignalPath><CurrentSignalPath>",
          "<OscFrequency>8000000000.50</OscFrequency>"}) {
        EXPECT_TRUE(text.contains(QLatin1String(part))) << part;
    }
    EXPECT_EQ(text.count(QLatin1String("<ModulationSettings ")), 4);
    EXPECT_TRUE(text.endsWith(QLatin1String("<GPSSource>SCPI</GPSSource></GPSCSettings></ReceiverSettings>")))
        << text.toStdString();

    // Tagged: a string list item is its length, then the text with its own
    // length; a modulation entry starts with its prefix record.
    const QByteArray tagged = test::tagged(library);
    const int paths = tagged.indexOf(QByteArray::fromHex("6B1E5AB2"));
    ASSERT_GE(paths, 0);
    EXPECT_EQ(test::hex(tagged.mid(paths, 26)),
              test::hex(QByteArray::fromHex("6B1E5AB2 00000037 00000004 0000000A 00000006") + "VUHF 1"));
    const int list = tagged.indexOf(QByteArray::fromHex("40D37788"));
    ASSERT_GE(list, 0);
    EXPECT_EQ(test::hex(tagged.mid(list + 8, 4)), "00 00 00 04");
    EXPECT_EQ(tagged.mid(list + 16, 18), QByteArray::fromHex("6274A6BA 0000000A 00000006") + "Sensor");

    // The baseline reads a prefix given as an element, an empty one as "Sensor".
    baseline::ReceiverSettings prefixes;
    QXmlStreamReader elements(QStringLiteral(
        "<ReceiverSettings><SensorSettings><ModulationSettings><Prefix>Max</Prefix></ModulationSettings>"
        "<ModulationSettings><Prefix/></ModulationSettings></SensorSettings></ReceiverSettings>"));
    elements.readNextStartElement();
    baseline::readXml(elements, prefixes);
    ASSERT_EQ(prefixes.sensorSettings.modulationSettings.size(), 2);
    EXPECT_EQ(prefixes.sensorSettings.modulationSettings[0].prefix, QStringLiteral("Max"));
    EXPECT_EQ(prefixes.sensorSettings.modulationSettings[1].prefix, QStringLiteral("Sensor"));

    // The comparison the bench times looks into nested structs and list items.
    baseline::ReceiverSettings changed = plain;
    changed.sensorSettings.modulationSettings[3].prefix = QStringLiteral("Max");
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.gpscSettings.compass.offset = 2.25;
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.dfSettings.signalPath.removeLast();
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.sensorSettings.bandwidthSettings.betaValue = 99.5f;
    EXPECT_FALSE(changed == plain);
}

TEST(Baseline, WritesAndReadsTheLibrarysAntennaMatrix)
{
    const HALVANE::AntennaMatrixConfiguration library = documents::antennaMatrixConfiguration();
    const baseline::AntennaMatrixConfiguration plain = documents::plainAntennaMatrixConfiguration();
    expectSameForms(library, plain);

    // Every class and field is there. Raw: the document's two presence bytes,
    // its three indices and the selected path as eight bytes; an entry ends
    // with its index, a pattern with its name.
    const QByteArray raw = test::raw(library);
    EXPECT_EQ(test::hex(raw.left(13)), "FF 07 01 02 01 00 00 00 00 00 00 00 03");
    const QString text = test::xml(library);
    for (const char *part :
         {"<AntennaMatrixConfiguration><AntennaControlMode>On</AntennaControlMode>",
          "<AntennaEntries><AntennaEntry index=\"1\"><AntennaDefinition><FactorDataSet>ANT-2207.fac</FactorDataSet>"
          "<PolarMode>AUTO</PolarMode>",
          "<Valid>true</Valid><AntennaPattern name=\"HF loop, pattern 0\">"
          "<Curve frequency=\"0.50\" attenuation=\"-1.50\" width=\"60.00\"/>",
          "<InputRoute_SEHF>S/EHF2 (X48)</InputRoute_SEHF><OutputAuxByte>1</OutputAuxByte>",
          "<Valid>false</Valid>", "<UpperLimit_VUHF>3001.25</UpperLimit_VUHF>",
          "</AntennaEntries><AuxTimings><AuxTiming index=\"15\"><AuxSwitchingTime>0.02</AuxSwitchingTime>"
          "<AuxGuardTime>0.50</AuxGuardTime></AuxTiming>",
          "<AntennaRxPaths><AntennaRxPath index=\"0\"><NAME>Rx path 1</NAME><ROTOR>Rotor north</ROTOR>"}) {
        EXPECT_TRUE(text.contains(QLatin1String(part))) << part;
    }
    EXPECT_EQ(text.count(QLatin1String("<Curve ")), 24 + 28 + 32 + 36 + 40 + 44);
    EXPECT_TRUE(text.endsWith(QLatin1String("</AntennaRxPath></AntennaRxPaths></AntennaMatrixConfiguration>")));

    // Tagged: the entries' holder is one list record with the count of six;
    // an entry and a timing start with their index, a pattern with its name.
    const QByteArray tagged = test::tagged(library);
    const int entries = tagged.indexOf(QByteArray::fromHex("0DBA964C"));
    ASSERT_GE(entries, 0);
    EXPECT_EQ(test::hex(tagged.mid(entries + 8, 4)), "A3 4A 45 94");
    EXPECT_EQ(test::hex(tagged.mid(entries + 16, 4)), "00 00 00 06");
    EXPECT_EQ(test::hex(tagged.mid(entries + 24, 16)), "21 28 39 4B 00 00 00 08 00 00 00 00 00 00 00 01");
    const int pattern = tagged.indexOf(QByteArray::fromHex("47DEEEB2"));
    ASSERT_GE(pattern, 0);
    EXPECT_EQ(tagged.mid(pattern + 8, 30), QByteArray::fromHex("CB4CF645 00000016 00000012") + "HF loop, pattern 0");

    // The comparison the bench times looks into every list and nested struct.
    baseline::AntennaMatrixConfiguration changed = plain;
    changed.antennaEntries.antennaEntry[5].antennaDefinition.antennaPattern.curve[43].width = 1;
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.antennaEntries.antennaEntry[2].antennaConfiguration.inputRouteSEHF = 2;
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.auxTimings.auxTiming[7].index = 0;
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.antennaRxPaths.antennaRxPath[3].rotor.clear();
    EXPECT_FALSE(changed == plain);
}
