// The benchmark's hand-written baseline writes exactly the library's text and
// bytes for the same documents, and reads the library's output back.
#include "support.h"

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
