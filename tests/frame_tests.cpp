// The frame's shared behaviour: payload lifecycle, presence bits, setters and
// their messages, Check, HasData/AnyData, comparison, copying and the push of
// the validation flag and logger into nested objects and list items.
#include "sample.h"
#include "support.h"

#include "frame/schema/schema.h"
#include "frame/text/text.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <cmath>
#include <cstring>
#include <utility>
#include <limits>
#include <vector>

using namespace HALVANE;
using test::expectThrow;
using test::fullModeManager;

namespace {

class CountingLogger : public QUILLET::Logger
{
};

} // namespace

TEST(Frame, UntouchedObjectsAllocateNothingAndStayUntouched)
{
    const long long before = test::allocations();
    {
        Administration a;
        Administration b(a);
        Administration c;
        c = a;
        EXPECT_TRUE(a == b);
        EXPECT_FALSE(a != c);
        EXPECT_FALSE(a.HasData());
        EXPECT_FALSE(a.AnyData());
        EXPECT_FALSE(a.IsCWSet());
        a.ResetCW();
        a.Reset();
        a.SetValidate(true);
        a.SetLogger(nullptr);
        EXPECT_FALSE(a.IsInitialized());
        EXPECT_FALSE(b.IsInitialized());
        EXPECT_FALSE(c.IsInitialized());
    }
    EXPECT_EQ(test::allocations(), before);
}

TEST(Frame, GetterInitialisesWithoutSettingTheBit)
{
    ModeManager m;
    EXPECT_EQ(m.GetRunningState(), ModeManager::RunningState(-1));
    EXPECT_TRUE(m.IsInitialized());
    EXPECT_FALSE(m.IsRunningStateSet());
    EXPECT_FALSE(m.AnyData());

    SensorMetaData s;
    EXPECT_TRUE(s.GetGroup().isNull());
    s.GetMinMaxStep(); // the mutable reference counts as setting the field
    EXPECT_TRUE(s.IsMinMaxStepSet());
    EXPECT_FALSE(s.GetMinMaxStep().HasData());
}

TEST(Frame, SetterMessagesAndValuesLeftAlone)
{
    ModeManager m;
    m.SetValidate(true);
    m.SetRunningState(1);
    expectThrow<OutOfRangeException>([&] { m.SetRunningState(2); },
                                     QStringLiteral("enum is not valid (classname=ModeManager,membername=m_runningState)"));
    EXPECT_EQ(m.GetRunningState(), 1);
    expectThrow<OutOfRangeException>([&] { m.SetSearchScanMode(-1); },
                                     QStringLiteral("enum is not valid (classname=ModeManager,membername=m_searchScanMode)"));
    EXPECT_FALSE(m.IsSearchScanModeSet());

    Administration a;
    a.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { a.SetRDSState(3); },
                                     QStringLiteral("enum is not valid (classname=Administration,membername=m_rDSState)"));

    RDSResult r;
    r.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { r.SetPICode(QString()); },
                                     QStringLiteral("RDSResult: Please set PICode properly (origin: Setter)."));
    EXPECT_FALSE(r.IsPICodeSet());
    r.SetPICode(QLatin1String("")); // empty is not null
    EXPECT_TRUE(r.IsPICodeSet());

    Sample s;
    s.SetValidate(true);
    expectThrow<OutOfRangeException>([&] { s.SetCount(11); },
                                     QStringLiteral("Parameters for m_count are not set within range (-1, 10) in 'Sample'."));
    expectThrow<OutOfRangeException>([&] { s.SetLevel(0.05); },
                                     QStringLiteral("Parameters for m_level are not set within range (0.1, 100) in 'Sample'."));
    s.SetCount(-1);
    s.SetCount(10);
    s.SetLevel(100);
    EXPECT_EQ(s.GetCount(), 10);
    EXPECT_TRUE(s.IsValidCount(-1));
    EXPECT_FALSE(s.IsValidCount(-2));
}

TEST(Frame, ValidationOffStoresAnythingAndCheckReportsIt)
{
    ModeManager m;
    m.SetRunningState(7);
    m.SetDualState(1);
    m.SetSearchScanMode(-1);
    EXPECT_TRUE(m.IsRunningStateSet());
    EXPECT_EQ(m.GetRunningState(), 7);
    EXPECT_TRUE(m.HasData());
    expectThrow<OutOfRangeException>([&] { m.Check(); },
                                     QStringLiteral("ModeManager: Please set RunningState properly."));
    m.SetRunningState(0);
    expectThrow<OutOfRangeException>([&] { m.Check(); },
                                     QStringLiteral("ModeManager: Please set SearchScanMode properly."));
}

TEST(Frame, CheckWalksNestedObjectsAndListsInFieldOrder)
{
    SensorMetaData s;
    s.SetGroup(QStringLiteral("g"));
    s.SetUnit(QStringLiteral("u"));
    // A required nested object is checked whatever its bit says.
    expectThrow<OutOfRangeException>([&] { s.Check(); }, QStringLiteral("MinMaxStep: Please set Min properly."));
    s.GetMinMaxStep().SetMin(1);
    s.GetMinMaxStep().SetMax(2);
    expectThrow<OutOfRangeException>([&] { s.Check(); }, QStringLiteral("MinMaxStep: Please set Step properly."));
    s.GetMinMaxStep().SetStep(3);
    expectThrow<OutOfRangeException>([&] { s.Check(); }, QStringLiteral("SensorMetaData: Please set ValueMin properly."));

    MeasurementResultList list;
    expectThrow<OutOfRangeException>([&] { list.Check(); },
                                     QStringLiteral("MeasurementResultList: Please set MeasurementData properly."));
    MeasurementData item;
    list.AppendMeasurementData(item); // validation off: appended although incomplete
    expectThrow<OutOfRangeException>([&] { list.Check(); },
                                     QStringLiteral("MeasurementData: Please set MeasurementItem properly."));

    MeasurementList items;
    items.AppendMeasurementItem(69);
    expectThrow<OutOfRangeException>([&] { items.Check(); },
                                     QStringLiteral("MeasurementList: Please set MeasurementItem properly."));
}

TEST(Frame, HasDataTestsStringsNestedAndListsByContent)
{
    RDSResult r;
    EXPECT_FALSE(r.HasData());
    r.SetProgramName(QStringLiteral("P"));
    EXPECT_TRUE(r.AnyData());
    EXPECT_FALSE(r.HasData());
    r.SetPICode(QStringLiteral("D3C2"));
    EXPECT_TRUE(r.HasData());

    MeasurementData d;
    d.SetMeasurementItem(0);
    EXPECT_FALSE(d.HasData()); // the nested result has no time stamp
    d.GetMeasurementResult().SetTimeStamp(QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
    EXPECT_TRUE(d.HasData());

    MeasurementData onlyNested;
    onlyNested.GetMeasurementResult().SetDoubleResult(1);
    EXPECT_TRUE(onlyNested.AnyData());
    EXPECT_FALSE(onlyNested.IsMeasurementItemSet());
}

TEST(Frame, AppendRefusesIncompleteItemsWithValidationOn)
{
    MeasurementResultList list;
    list.SetValidate(true);
    MeasurementData incomplete;
    expectThrow<IncompleteDefinitionException>(
        [&] { list.AppendMeasurementData(incomplete); },
        QStringLiteral("MeasurementResultList: Tried to append not completely defined or invalid item MeasurementData."));
    EXPECT_EQ(std::as_const(list).GetMeasurementData().size(), 0);
    EXPECT_FALSE(list.IsMeasurementDataSet());

    MeasurementList items;
    items.SetValidate(true);
    items.AppendMeasurementItem(68);
    expectThrow<IncompleteDefinitionException>(
        [&] { items.AppendMeasurementItem(69); },
        QStringLiteral("MeasurementList: Tried to append not completely defined or invalid item MeasurementItem."));
    EXPECT_EQ(std::as_const(items).GetMeasurementItem(), QVector<MeasurementList::MeasurementItem>{68});

    Sample s;
    s.SetValidate(true);
    expectThrow<IncompleteDefinitionException>(
        [&] { s.AppendPath(QString()); },
        QStringLiteral("Sample: Tried to append not completely defined or invalid item Path."));
    s.SetPath({QString()}); // replacing the list tests nothing
    EXPECT_TRUE(s.IsPathSet());
}

TEST(Frame, ComparisonIgnoresUnsetValuesButNotTolerance)
{
    MinMaxStep a, b;
    a.SetMin(1.0);
    b.SetMin(1.0000000001);
    EXPECT_TRUE(a != b);
    b.SetMin(1.0);
    EXPECT_TRUE(a == b);

    // Values whose bits are off in both take no part.
    a.SetMax(5);
    b.SetMax(6);
    a.ResetMax();
    b.ResetMax();
    EXPECT_TRUE(a == b);
    a.SetStep(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(a == a);

    // Untouched equals created-and-reset; the flag and logger take no part.
    ModeManager m1, m2;
    m2.SetRunningState(1);
    m2.Reset();
    m2.SetValidate(true);
    EXPECT_TRUE(m1 == m2);
    EXPECT_TRUE(m2 == m1);

    // Lists: the left side whatever its bit, the right side only when set.
    MeasurementList l1, l2;
    l1.AppendMeasurementItem(3);
    l2.AppendMeasurementItem(3);
    EXPECT_TRUE(l1 == l2);
    l2.ResetMeasurementItem();
    EXPECT_FALSE(l1 == l2);
}

TEST(Frame, CopiesTakeTheFlagAssignmentsDoNot)
{
    ModeManager source = fullModeManager();
    ModeManager copy(source);
    EXPECT_TRUE(copy.GetValidate());
    ModeManager assigned;
    assigned = source;
    EXPECT_FALSE(assigned.GetValidate());
    EXPECT_TRUE(assigned == source);
    // That copies are values, each side detaching on its first change, is
    // for Frame.PayloadIsCopiedOnFirstAccessAfterAssignment, Sweep and Threads.

    // Assigning an untouched object leaves the left side without a payload.
    assigned = ModeManager();
    EXPECT_FALSE(assigned.IsInitialized());
}

TEST(Frame, ResetAndResetToDefault)
{
    ModeManager m = fullModeManager();
    m.Reset();
    EXPECT_TRUE(m.IsInitialized());
    EXPECT_FALSE(m.AnyData());
    EXPECT_EQ(m.GetRunningState(), -1);
    m.ResetToDefault(); // no field of ModeManager has a default
    EXPECT_FALSE(m.AnyData());

    Sample s;
    s.SetCount(3);
    s.ResetToDefault();
    EXPECT_FALSE(s.IsCountSet());
    EXPECT_EQ(s.GetCount(), 0);
    EXPECT_TRUE(s.IsEnabledSet());
    EXPECT_TRUE(s.GetEnabled());
    EXPECT_TRUE(s.IsLevelSet());
    EXPECT_EQ(s.GetLevel(), 1.0);
    EXPECT_TRUE(s.IsLabelSet());
    EXPECT_EQ(s.GetLabel(), QStringLiteral("none"));
    EXPECT_TRUE(s.IsModeSet());
    EXPECT_EQ(s.GetModeAsString(), QStringLiteral("Fast"));
    EXPECT_FALSE(s.IsStrictSet());
}

TEST(Frame, FlagAndLoggerReachNestedObjectsAndItems)
{
    auto logger = std::make_shared<CountingLogger>();
    MeasurementResultList list;
    MeasurementData item;
    item.SetMeasurementItem(0);
    item.GetMeasurementResult().SetTimeStamp(QDateTime::fromMSecsSinceEpoch(1000, Qt::UTC));
    list.AppendMeasurementData(item);
    list.AppendMeasurementData(item);

    list.SetValidate(true);
    list.SetLogger(logger);
    for (const MeasurementData &d : list.GetMeasurementData()) {
        EXPECT_TRUE(d.GetValidate());
        EXPECT_EQ(d.GetLogger(), logger);
        EXPECT_TRUE(d.GetMeasurementResult().GetValidate());
        EXPECT_EQ(d.GetMeasurementResult().GetLogger(), logger);
    }

    // A nested flag changed behind the owner's back is pushed again by the
    // owner's next chief operation.
    list.SetLogger(nullptr);
    list.GetMeasurementData()[1].GetMeasurementResult().SetValidate(false);
    test::xml(list);
    EXPECT_TRUE(list.GetMeasurementData()[1].GetMeasurementResult().GetValidate());
    EXPECT_EQ(list.GetMeasurementData()[0].GetLogger(), nullptr);

    const MeasurementResultList &constList = list;
    constList.GetMeasurementData()[0].SetValidate(false);
    list.Check();
    EXPECT_TRUE(list.GetMeasurementData()[0].GetValidate());

    // An item appended with another flag is pushed too.
    MeasurementData plain(item);
    list.SetValidate(true);
    list.AppendMeasurementData(plain);
    test::tagged(list);
    EXPECT_TRUE(list.GetMeasurementData()[2].GetValidate());

    // The flag and logger given before the first value are in the nested
    // object as soon as a setter has made the payload.
    for (bool validate : {false, true}) {
        for (bool withLogger : {false, true}) {
            MeasurementData d;
            d.SetValidate(validate);
            if (withLogger)
                d.SetLogger(logger);
            d.SetInternalKey(1);
            const MeasurementData &c = d;
            EXPECT_EQ(c.GetMeasurementResult().GetValidate(), validate);
            EXPECT_EQ(c.GetMeasurementResult().GetLogger(), withLogger ? logger : nullptr);
        }
    }
}

TEST(Frame, PayloadIsCopiedOnFirstAccessAfterAssignment)
{
    Sample a;
    a.SetPath({QStringLiteral("x")});
    a.GetResults().append(RDSResult());
    Sample b;
    b = a;
    b.AppendPath(QStringLiteral("y"));
    b.GetResults()[0].SetPICode(QStringLiteral("pi"));
    EXPECT_EQ(a.GetPath().size(), 1);
    EXPECT_TRUE(a.GetResults()[0].GetPICode().isNull());
    EXPECT_EQ(b.GetPath().size(), 2);
    EXPECT_EQ(b.GetResults()[0].GetPICode(), QStringLiteral("pi"));
}

TEST(Frame, HooksAddRulesAfterTheFieldRules)
{
    Sample s;
    s.SetCount(10);
    test::expectThrow<OutOfRangeException>([&] { s.Check(); }, QStringLiteral("Sample: a count of 10 needs a level."));
    s.SetLevel(50);
    s.Check();
    s.SetCount(11); // the field rule comes first
    test::expectThrow<OutOfRangeException>([&] { s.Check(); }, QStringLiteral("Sample: Please set Count properly."));
}

TEST(Frame, AnElementNameCarriesOneTagInEveryClass)
{
    // What the compiler cannot see across classes: a tag belongs to an element
    // name, so two classes that both have "Unit" give it the same tag. The
    // capability classes name the features of the settings by the same
    // element names, as flags with tags of their own ("IFPan" is an
    // enumerated field of Administration and a bool of
    // MasterRecordingCapabilities): a tag belongs to a name and a kind.
    QHash<QPair<QString, int>, QPair<quint32, QString>> seen;
    int shared = 0;
    for (const schema::Class *c : schema::classes()) {
        for (const schema::Field &f : c->fields) {
            const QPair<QString, int> key(f.element, int(f.kind));
            const auto it = seen.constFind(key);
            if (it == seen.constEnd()) {
                seen.insert(key, qMakePair(f.tag, c->name));
                continue;
            }
            ++shared;
            EXPECT_EQ(it->first, f.tag) << qPrintable(f.element) << " in " << qPrintable(c->name) << " and "
                                        << qPrintable(it->second);
        }
    }
    EXPECT_GE(shared, 14); // "Unit", "index", "MinMaxStep", "MeasurementItem" and more
}

// Numbers are written with two decimals and read back by code of the frame's
// own; the text and the values must be Qt's to the last character and bit,
// for ties, ulps around each hundredth, tiny, huge, negative and
// non-finite values and arbitrary bit patterns.
TEST(Frame, NumberTextIsQtsToTheLastCharacter)
{
    frame::Field f{};
    static_cast<frame::FieldDef &>(f) = frame::doubleField("Value", 1, 0);
    std::vector<double> values = {0.0, -0.0, 0.005, -0.005, 0.015, 0.125, -0.125, 0.375, 2.675, 1e-300, -1e-300,
                                  4.9e-324, -4.9e-324, 72057594037927936.0, 72057594037927940.0, 9.2e18, -9.2e18,
                                  1e300, std::numeric_limits<double>::infinity(),
                                  -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
    for (int i = -2000; i <= 2000; ++i) {
        const double hundredth = i / 100.0;
        const double tie = i / 8.0 + 1.0 / 200.0; // halfway between hundredths where that is exact
        values.insert(values.end(), {hundredth, std::nextafter(hundredth, 1e9), std::nextafter(hundredth, -1e9),
                                     i / 8.0, tie, i * 1e-4, std::ldexp(double(i), 40), std::ldexp(1.0, i / 4)});
    }
    quint64 state = 0x9E3779B97F4A7C15ull;
    auto next = [&state] {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return state;
    };
    for (int i = 0; i < 30000; ++i) {
        if (i % 8 == 0) {
            double bitPattern;
            const quint64 bits = next();
            std::memcpy(&bitPattern, &bits, sizeof bitPattern);
            values.push_back(bitPattern);
        }
        // Decimal-looking values of every magnitude the fast path covers.
        values.push_back(double(qint64(next() % 2000000001) - 1000000000) / std::pow(10.0, double(next() % 8)));
        values.push_back(std::ldexp(double(next() >> 11), int(next() % 120) - 100));
    }
    for (double v : values) {
        ASSERT_EQ(frame::valueText(f, &v), QString::number(v, 'f', 2)) << std::hexfloat << v;
        ASSERT_EQ(frame::valueUtf8(f, &v), QByteArray::number(v, 'f', 2)) << std::hexfloat << v;
        const float single = float(v);
        frame::Field g{};
        static_cast<frame::FieldDef &>(g) = frame::floatField("Value", 1, 0);
        ASSERT_EQ(frame::valueText(g, &single), QString::number(double(single), 'f', 2)) << std::hexfloat << v;
        // Reading: the written text and a longer one come back as Qt reads them.
        for (const QString &text : {QString::number(v, 'f', 2), QString::number(v, 'g', 17)}) {
            frame::ScalarValue read;
            frame::numberFromText(f, text, read);
            const double qt = text.toDouble();
            ASSERT_EQ(std::memcmp(&read.d, &qt, sizeof qt), 0) << qPrintable(text);
        }
    }
}
