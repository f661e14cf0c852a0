// The nine classes of administration and measurements: name table rows and
// converters, golden documents, and a round trip of every class through all
// three forms.
#include "support.h"

#include "frame/classimpl.h"

#include <QtCore/QFile>

using namespace HALVANE;

namespace {

using test::administration;
using test::measurement;

using test::expectRoundTrip;

} // namespace

TEST(Classes, AdministrationTablesAndConverters)
{
    EXPECT_EQ(Administration::NameToDriverType(QStringLiteral("Unknown_Driver")), 0);
    EXPECT_EQ(Administration::NameToSpeed(QStringLiteral("Ludicrous speed")), 3);
    EXPECT_EQ(Administration::NameToSpeed(QStringLiteral("ludicrous speed")), -1);
    EXPECT_EQ(Administration::SelflagToDF(QStringLiteral("DFL")), 0);
    EXPECT_EQ(Administration::ItemnameToDF(QStringLiteral("DeltaDFQuality")), 7);
    EXPECT_EQ(Administration::TagToMassDataStreams(QStringLiteral("DFP")), 11);
    EXPECT_EQ(Administration::MassDataStreamsToTag(1), QStringLiteral("AUD"));
    EXPECT_EQ(Administration::HelpidToDriverType(80160), 21);
    EXPECT_EQ(Administration::HelpidToDriverType(60400), 8);
    EXPECT_EQ(Administration::HelpidToDriverType(-1), 0);
    EXPECT_EQ(Administration::HelpidToDriverType(12345), -1);
    Administration a;
    EXPECT_EQ(a.DriverTypeToHelpid(-1), 0);
    EXPECT_EQ(a.DriverTypeToHelpid(0), -1);
    EXPECT_EQ(a.DriverTypeToHelpid(26), 80300);
    EXPECT_EQ(Administration::CWToGuiname(4), QStringLiteral("AM+"));
    EXPECT_EQ(Administration::GuinameToCW(QStringLiteral("FM-")), 8);
    EXPECT_EQ(Administration::CWToSelflag(2), QStringLiteral("FSTR"));
    EXPECT_TRUE(Administration::CWToName(11).isNull());
    EXPECT_TRUE(Administration::IFPanToGuiname(-1).isNull());
    EXPECT_EQ(Administration::GeneralToGuiname(1), QStringLiteral("SelCal"));

    const QStringList commands = Administration::GetGUIDrvCommandss();
    ASSERT_EQ(commands.size(), 39);
    EXPECT_EQ(commands.first(), QStringLiteral("NOCOMMAND"));
    EXPECT_EQ(commands.last(), QStringLiteral("OSTROM_DFSCAN"));
    EXPECT_EQ(Administration::GetHardwareStatuss().size(), 7);
    const auto drivers = Administration::GetDriverTypes();
    ASSERT_EQ(drivers.size(), 34);
    EXPECT_EQ(drivers[24].Name, QStringLiteral("Alder8_Driver"));
    EXPECT_EQ(drivers[24].Helpid, 60480);
    EXPECT_EQ(Administration::GetGUIHardwareStatuss().at(6), QStringLiteral("INITMEMORY"));
}

TEST(Classes, MeasurementItemTable)
{
    const auto rows = MeasurementList::GetMeasurementItems();
    ASSERT_EQ(rows.size(), 69);
    EXPECT_EQ(rows[68].Name, QStringLiteral("Compass_Offset"));
    EXPECT_EQ(MeasurementData::GetMeasurementItems().size(), 69);
    EXPECT_EQ(MeasurementList::NameToMeasurementItem(QStringLiteral("CW_Field Strength")), 2);
    EXPECT_EQ(MeasurementList::ItemnameToMeasurementItem(QStringLiteral("FScan_AM")), -1);
    EXPECT_EQ(MeasurementData::SelflagToMeasurementItem(QStringLiteral("VOLT:AC")), 0);
    EXPECT_EQ(MeasurementData::UnitToMeasurementItem(QStringLiteral("Hz")), 1);
    EXPECT_EQ(MeasurementData::UsedbyostromToMeasurementItem(QStringLiteral("true")), 0);
    EXPECT_EQ(MeasurementList::ModeToMeasurementItem(QStringLiteral("FScan")), 16);
    EXPECT_EQ(MeasurementData::MeasurementItemToGuiname(45), QStringLiteral("DF Bearing"));
    EXPECT_EQ(MeasurementList::MeasurementItemToUnit(31), QStringLiteral("%"));
    EXPECT_EQ(MeasurementList::MeasurementItemToUsedbyostrom(63), QStringLiteral("false"));
    EXPECT_EQ(MeasurementList::MeasurementItemToSelflag(16), MeasurementList::MeasurementItemToSelflag(28));
    EXPECT_TRUE(MeasurementList::MeasurementItemToMode(69).isNull());

    EXPECT_EQ(MeasurementList::GetRecordingStates(), (QStringList{QStringLiteral("On"), QStringLiteral("Off")}));
    EXPECT_EQ(MeasurementData::MeasurementStateToName(0), QStringLiteral("request to start measurement"));
    EXPECT_EQ(ModeManager::GetSearchScanModes()[7].Guiname, QStringLiteral("SUPP"));
}

TEST(Classes, AdministrationDocument)
{
    const Administration a = administration();
    EXPECT_EQ(test::xml(a).toStdString(),
              "<Administration><HardwareStatus>INITMEMORY</HardwareStatus><CW>Bandwidth</CW>"
              "<SensorMetaData><Group>Level</Group><Unit>dBµV</Unit>"
              "<MinMaxStep><Min>-10.00</Min><Max>10.50</Max><Step>0.25</Step></MinMaxStep>"
              "<ValueMin>1.00</ValueMin><ValueMax>2.00</ValueMax><ValueStep>3.00</ValueStep>"
              "<MeasurementInvalid>true</MeasurementInvalid><Overload>0</Overload></SensorMetaData>"
              "<DriverType>Juniper5_Driver</DriverType><DrvCommands>OSTROM_DFSCAN</DrvCommands>"
              "<RDSState>DATA</RDSState><ClearGroup>CLEAR</ClearGroup><IFPan>Average</IFPan>"
              "<DF>DeltaDFQuality</DF><General>SELCAL</General><MassDataStreams>GPSC</MassDataStreams>"
              "<Speed>Ludicrous speed</Speed></Administration>");
    EXPECT_EQ(test::raw(a).left(4).toHex().toStdString(), "ff0f060a");
    expectRoundTrip(a);
}

TEST(Classes, SensorMetaDataBytes)
{
    SensorMetaData s;
    s.SetGroup(QStringLiteral("g"));
    s.SetUnit(QStringLiteral(""));
    s.GetMinMaxStep().SetMin(1);
    s.SetMeasurementInvalid(false);
    EXPECT_EQ(test::hex(test::tagged(s)),
              "00 00 00 8A "
              "02 78 6B C3 00 00 00 05 00 00 00 01 67 "
              "88 87 1B 46 00 00 00 04 00 00 00 00 "
              "C6 93 EC 10 00 00 00 30 "
              "4E CB 4E 58 00 00 00 08 00 00 00 04 31 2E 30 30 "
              "6E 8D D7 F5 00 00 00 08 00 00 00 04 30 2E 30 30 "
              "0B B0 BD A2 00 00 00 08 00 00 00 04 30 2E 30 30 "
              "82 AD 48 1D 00 00 00 08 00 00 00 04 30 2E 30 30 "
              "8D DD 06 6A 00 00 00 08 00 00 00 04 30 2E 30 30 "
              "AF 1C 75 65 00 00 00 08 00 00 00 04 30 2E 30 30 "
              "8C C0 EF 8B 00 00 00 01 00");
}

TEST(Classes, MeasurementResultListDocument)
{
    MeasurementResultList list;
    list.SetValidate(true);
    list.AppendMeasurementData(measurement(0, 12.345));
    list.AppendMeasurementData(measurement(68, -0.5));
    const QString text = test::xml(list);
    EXPECT_TRUE(text.startsWith(QStringLiteral(
        "<MeasurementResultList><MeasurementData><MeasurementItem>CW_Level</MeasurementItem>"
        "<InternalKey>-7</InternalKey><MeasurementMode>DF_DMM</MeasurementMode>"
        "<MeasurementState>triggered</MeasurementState><MeasurementResult Unit=\"dBuV\"><TimeStamp>")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("<DoubleResult>12.35</DoubleResult><StringResult>text</StringResult>")));
    expectRoundTrip(list, false);
}

// Every name table, field tag and class id of the registry against its
// reference text: a change of any of them shows as a diff of the file. The
// classes of the tests hold some documents, which are then no documents of
// their own: that mark is Tool.SchemaMatchesItsReferenceText's to check.
TEST(Classes, TablesMatchTheirReferenceText)
{
    QString all;
    for (const schema::Class *c : schema::classes()) {
        if (c->name != QLatin1String("Sample") && c->name != QLatin1String("Holder"))
            all += schema::describe(*c);
    }
    QFile golden(QStringLiteral(HALVANE_SOURCE_DIR "/tests/golden/tables.txt"));
    ASSERT_TRUE(golden.open(QIODevice::ReadOnly));
    const QString expected = QString::fromUtf8(golden.readAll());
    EXPECT_EQ(all.remove(QStringLiteral(" document")).toStdString(),
              QString(expected).remove(QStringLiteral(" document")).toStdString());
}

// Values beyond the registry's examples, which Sweep takes through the forms.
TEST(Classes, RoundTripsOfChosenValues)
{
    MinMaxStep mms;
    mms.SetMin(-1e9);
    mms.SetMax(1e9);
    mms.SetStep(0.5);
    expectRoundTrip(mms);

    MeasurementList items;
    for (int i = 0; i < 69; ++i)
        items.AppendMeasurementItem(MeasurementList::MeasurementItem(i));
    items.SetRecordingState(0);
    expectRoundTrip(items);

    expectRoundTrip(measurement(30, 99.99));

    RDSResult rds;
    rds.SetProgramName(QStringLiteral("Ünïcødé ✓"));
    rds.SetPICode(QStringLiteral("D3C2"));
    expectRoundTrip(rds);
}
