// The benchmark's hand-written baseline writes exactly the library's text and
// bytes for the same documents, and reads the library's output back.
#include "support.h"

#include "../bench/baseline_capabilities.h"
#include "../bench/documents.h"

namespace {

template <class Lib, class Plain>
void expectSameForms(const Lib &library, const Plain &plain)
{
    QString baselineXml;
    {
        QXmlStreamWriter w(&baselineXml);
        baseline::writeXml(w, plain);
    }
    EXPECT_EQ(baselineXml, test::xml(library));
    EXPECT_EQ(test::written([&](QDataStream &s) { baseline::writeTagged(s, plain); }), test::tagged(library));
    EXPECT_EQ(test::written([&](QDataStream &s) { baseline::writeRaw(s, plain); }), test::raw(library));

    // The baseline reads the library's forms back to what it writes itself.
    Plain fromXml, fromTagged, fromRaw;
    QXmlStreamReader reader(test::xml(library));
    reader.readNextStartElement();
    baseline::readXml(reader, fromXml);
    QString again;
    {
        QXmlStreamWriter w(&again);
        baseline::writeXml(w, fromXml);
    }
    EXPECT_EQ(again, baselineXml);
    const QByteArray tagged = test::tagged(library);
    QDataStream in(tagged);
    qint32 length;
    in >> length;
    baseline::readTagged(in, length, fromTagged);
    EXPECT_EQ(test::written([&](QDataStream &s) { baseline::writeTagged(s, fromTagged); }), tagged);
    const QByteArray raw = test::raw(library);
    QDataStream rawIn(raw);
    baseline::readRaw(rawIn, fromRaw);
    EXPECT_EQ(test::written([&](QDataStream &s) { baseline::writeRaw(s, fromRaw); }), raw);
}

} // namespace

TEST(Baseline, WritesTheLibrarysTextAndBytes)
{
    expectSameForms(documents::modeManager(), documents::plainModeManager());
    expectSameForms(documents::administration(), documents::plainAdministration());
    expectSameForms(documents::results(300), documents::plainResults(300));
    EXPECT_TRUE(documents::plainResults(50) == documents::plainResults(50));
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

    // The baseline reads each of the library's forms to the values it was built from.
    baseline::Capabilities fromXml, fromTagged, fromRaw;
    QXmlStreamReader reader(text);
    reader.readNextStartElement();
    baseline::readXml(reader, fromXml);
    EXPECT_TRUE(fromXml == plain);
    const QByteArray tagged = test::tagged(library);
    QDataStream in(tagged);
    qint32 length;
    in >> length;
    baseline::readTagged(in, length, fromTagged);
    EXPECT_TRUE(fromTagged == plain);
    QDataStream rawIn(raw);
    baseline::readRaw(rawIn, fromRaw);
    EXPECT_TRUE(fromRaw == plain);
    EXPECT_TRUE(rawIn.atEnd());

    // And the library reads the baseline's forms to the document it was built as.
    HALVANE::Capabilities libraryFromXml, libraryFromTagged, libraryFromRaw;
    libraryFromXml.SetValidate(true);
    QString baselineText;
    {
        QXmlStreamWriter w(&baselineText);
        baseline::writeXml(w, plain);
    }
    test::readXml(libraryFromXml, baselineText);
    EXPECT_TRUE(libraryFromXml == library);
    test::readTagged(libraryFromTagged, test::written([&](QDataStream &s) { baseline::writeTagged(s, plain); }));
    EXPECT_TRUE(libraryFromTagged == library);
    test::readRaw(libraryFromRaw, test::written([&](QDataStream &s) { baseline::writeRaw(s, plain); }));
    EXPECT_TRUE(libraryFromRaw == library);

    // The comparison the bench times looks into the nested structs.
    baseline::Capabilities changed = plain;
    changed.masterRecordingCapabilities.csvRecordCapabilities.softwareRecording =
        !changed.masterRecordingCapabilities.csvRecordCapabilities.softwareRecording;
    EXPECT_FALSE(changed == plain);
    changed = plain;
    changed.isbBandwidthSettings.maxBandwidth = 12.25;
    EXPECT_FALSE(changed == plain);
}
