// XML form: exact text written, and how text is read back (unknown elements,
// bools, enumerated names, attributes, lists).
#include "holder.h"
#include "sample.h"
#include "support.h"

using namespace HALVANE;
using test::expectThrow;

TEST(Xml, ModeManagerText)
{
    ModeManager m;
    m.SetValidate(true);
    m.SetRunningState(ModeManager::NameToRunningState(QStringLiteral("On")));
    m.SetDualState(0);
    m.SetSearchScanMode(ModeManager::GuinameToSearchScanMode(QStringLiteral("RESTART")));
    EXPECT_EQ(test::xml(m).toStdString(),
              "<ModeManager><RunningState>On</RunningState><DualState>Off</DualState>"
              "<SearchScanMode>RestartScanMode</SearchScanMode></ModeManager>");

    // Validation off: required fields are written whatever they hold.
    ModeManager empty;
    EXPECT_EQ(test::xml(empty).toStdString(),
              "<ModeManager><RunningState></RunningState><DualState></DualState>"
              "<SearchScanMode></SearchScanMode></ModeManager>");
}

TEST(Xml, RequiredFieldsMissingRaiseCheckNotEmptyOutput)
{
    MeasurementList list;
    list.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { test::xml(list); },
                                     QStringLiteral("MeasurementList: Please set MeasurementItem properly."));
    list.SetValidate(false);
    EXPECT_EQ(test::xml(list).toStdString(), "<MeasurementList/>");
}

TEST(Xml, SampleWithEveryKind)
{
    Sample s;
    s.Setindex(4);
    s.SetStrict(false);
    s.SetCount(-1);
    s.SetBig(-9000000000LL);
    s.SetLevel(1.005);
    s.SetGain(2.5f);
    s.SetLabel(QStringLiteral("a<b"));
    s.SetMode(2);
    s.GetMinMaxStep().SetMin(0.125);
    s.AppendPath(QStringLiteral("p1"));
    s.AppendPath(QStringLiteral("p2"));
    s.AppendChoices(0);
    s.AppendChoices(2);
    RDSResult r;
    r.SetProgramName(QStringLiteral("N"));
    r.SetPICode(QStringLiteral("C"));
    s.AppendResults(r);
    EXPECT_EQ(test::xml(s).toStdString(),
              "<Sample index=\"4\"><Strict>false</Strict><Count>-1</Count><Big>-9000000000</Big>"
              "<Level>1.00</Level><Gain>2.50</Gain><Label>a&lt;b</Label><Mode>Auto</Mode>"
              "<MinMaxStep><Min>0.13</Min><Max>0.00</Max><Step>0.00</Step></MinMaxStep>"
              "<RDSResult><ProgramName>N</ProgramName><PICode>C</PICode></RDSResult>"
              "<Path>p1</Path><Path>p2</Path><Choices>Slow</Choices><Choices>Auto</Choices></Sample>");

    Sample back;
    test::readXml(back, test::xml(s));
    EXPECT_EQ(test::xml(back), test::xml(s));
    EXPECT_EQ(back.GetLevel(), 1.0); // two decimals: 1.005 does not come back
    EXPECT_EQ(back.GetMinMaxStep().GetMin(), 0.13);
    EXPECT_EQ(back.Getindex(), 4);
}

TEST(Xml, UnknownElementsAreSkippedWithTheirContents)
{
    ModeManager m;
    test::readXml(m, QStringLiteral("<ModeManager><Extra><RunningState>On</RunningState><x/></Extra>"
                                    "<RunningState>Off</RunningState><DualState>On</DualState></ModeManager>"));
    EXPECT_EQ(m.GetRunningState(), 0);
    EXPECT_EQ(m.GetDualState(), 1);
    EXPECT_FALSE(m.IsSearchScanModeSet());
}

TEST(Xml, UnknownEnumeratedText)
{
    ModeManager strict;
    strict.SetValidate(true);
    expectThrow<OutOfRangeException>(
        [&] { test::readXml(strict, QStringLiteral("<ModeManager><RunningState>on</RunningState></ModeManager>")); },
        QStringLiteral("enum is not valid (classname=ModeManager,membername=m_runningState)"));

    ModeManager lax;
    test::readXml(lax, QStringLiteral("<ModeManager><RunningState>on</RunningState></ModeManager>"));
    EXPECT_TRUE(lax.IsRunningStateSet());
    EXPECT_EQ(lax.GetRunningState(), -1);
    EXPECT_TRUE(test::xml(lax).startsWith(QStringLiteral("<ModeManager><RunningState></RunningState>")));
}

TEST(Xml, BoolText)
{
    struct Case {
        const char *text;
        bool value;
    };
    for (const Case &c : {Case{"FALSE", false}, Case{"False", false}, Case{"0", false}, Case{"false", false},
                          Case{"yes", true}, Case{"no", true}, Case{"1", true}, Case{"off", true}}) {
        Sample s;
        test::readXml(s, QStringLiteral("<Sample><Strict>%1</Strict></Sample>").arg(QLatin1String(c.text)));
        EXPECT_EQ(s.GetStrict(), c.value) << c.text;
        EXPECT_TRUE(s.IsStrictSet());
    }

    Sample strict;
    strict.SetValidate(true);
    expectThrow<InvalidXmlException>(
        [&] { test::readXml(strict, QStringLiteral("<Sample><Strict/></Sample>")); },
        QStringLiteral("Please set a value or a default for the boolean 'Strict' in 'Sample'."));
    test::readXml(strict, QStringLiteral("<Sample><Enabled></Enabled></Sample>"));
    EXPECT_TRUE(strict.GetEnabled()); // the default

    Sample lax;
    lax.SetEnabled(false);
    test::readXml(lax, QStringLiteral("<Sample><Strict/><Count>abc</Count></Sample>"));
    EXPECT_TRUE(lax.IsStrictSet());
    EXPECT_FALSE(lax.GetStrict());
    EXPECT_TRUE(lax.IsCountSet()); // text that is no number gives 0
    EXPECT_EQ(lax.GetCount(), 0);
}

TEST(Xml, AttributesAndTheirElements)
{
    MeasurementResult r;
    test::readXml(r, QStringLiteral("<MeasurementResult Unit=\"Hz\"><TimeStamp></TimeStamp>"
                                    "<Unit>kHz</Unit></MeasurementResult>"));
    EXPECT_EQ(r.GetUnit(), QStringLiteral("kHz")); // the later one read wins

    MeasurementResult written;
    written.SetTimeStamp(QDateTime());
    written.SetUnit(QStringLiteral("dB"));
    written.SetDoubleResult(12.345);
    EXPECT_EQ(test::xml(written).toStdString(),
              "<MeasurementResult Unit=\"dB\"><TimeStamp></TimeStamp><DoubleResult>12.35</DoubleResult>"
              "</MeasurementResult>");
}

TEST(Xml, EmptyStringElementIsEmptyNotNull)
{
    SensorMetaData s;
    test::readXml(s, QStringLiteral("<SensorMetaData><Group/></SensorMetaData>"));
    EXPECT_FALSE(s.GetGroup().isNull());
    EXPECT_TRUE(s.GetGroup().isEmpty());
    EXPECT_TRUE(s.AnyData());
}

// Lists read onto what is there are BaseInterface.XmlStringResetsFirstOnRequest's.
TEST(Xml, IncompleteItemsThrow)
{
    // An item whose Check fails is reported by that Check.
    MeasurementResultList results;
    MeasurementData data;
    data.SetMeasurementItem(0);
    results.AppendMeasurementData(data);
    results.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { test::xml(results); },
                                     QStringLiteral("MeasurementResult: Please set TimeStamp properly."));
}

TEST(Xml, NestedObjectsWithoutDataAreReported)
{
    // A list set to no items passes Check but has no data; as a list item it
    // is reported, as a required nested object it leaves its owner without data.
    MeasurementList empty;
    empty.SetMeasurementItem({});
    MeasurementList good;
    good.AppendMeasurementItem(1);
    MeasurementResultList noResults;
    noResults.SetMeasurementData({});
    MeasurementData item;
    item.SetMeasurementItem(1);
    item.GetMeasurementResult().SetTimeStamp(QDateTime());
    MeasurementResultList results;
    results.AppendMeasurementData(item);
    Holder holder;
    holder.SetValidate(true);
    holder.SetItems({good});
    holder.SetList(noResults);
    // The owner has no data either: nothing is written.
    EXPECT_EQ(test::xml(holder), QString());
    holder.SetList(results);
    holder.SetItems({good, empty});
    expectThrow<IncompleteDefinitionException>([&] { test::xml(holder); },
                                               QStringLiteral("Parameters for MeasurementList are not set properly in 'Holder'."));
    holder.SetItems({good});
    EXPECT_EQ(test::xml(holder).toStdString(),
              "<Holder><MeasurementResultList><MeasurementData><MeasurementItem>CW_Offset</MeasurementItem>"
              "<MeasurementResult><TimeStamp></TimeStamp></MeasurementResult></MeasurementData></MeasurementResultList>"
              "<MeasurementList><MeasurementItem>CW_Offset</MeasurementItem></MeasurementList></Holder>");
}
