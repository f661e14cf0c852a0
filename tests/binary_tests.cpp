// Tagged and raw binary forms: exact bytes, length errors, unknown records,
// and input whose lengths and counts cannot be trusted.
#include "holder.h"
#include "sample.h"
#include "support.h"

using namespace HALVANE;
using test::expectThrow;
using test::hex;
using test::lengthError;
using test::Records;

namespace {

ModeManager onOffIdle()
{
    ModeManager m;
    m.SetValidate(true);
    m.SetRunningState(1);
    m.SetDualState(0);
    m.SetSearchScanMode(0);
    return m;
}

} // namespace

TEST(Tagged, ModeManagerBytes)
{
    EXPECT_EQ(hex(test::tagged(onOffIdle(), 0x11223344, true)),
              "11 22 33 44 00 00 00 35 "
              "A2 17 00 03 00 00 00 06 00 00 00 02 4F 6E "
              "E1 55 35 C6 00 00 00 07 00 00 00 03 4F 66 66 "
              "A9 8C 8F 75 00 00 00 10 00 00 00 0C 49 64 6C 65 53 63 61 6E 4D 6F 64 65");
    EXPECT_EQ(hex(test::raw(onOffIdle())), "07 01 00 00");

    // Validation on, Check passes but there is no data: nothing is written.
    Holder holder;
    MeasurementList good;
    MeasurementResultList empty;
    good.AppendMeasurementItem(0);
    empty.SetMeasurementData({});
    holder.SetList(empty);
    holder.SetItems({good});
    holder.SetValidate(true);
    EXPECT_EQ(test::tagged(holder, 5, true), QByteArray("(nothing)"));
}

TEST(Tagged, HonoursTheStreamsByteOrder)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    MinMaxStep m;
    m.SetMin(1);
    m.SetMax(2);
    m.SetStep(3);
    EXPECT_TRUE(m.GetBinary(out, 7, true));
    EXPECT_EQ(hex(bytes.left(20)), "07 00 00 00 30 00 00 00 58 4E CB 4E 08 00 00 00 04 00 00 00");
    MinMaxStep back;
    QDataStream in(bytes);
    in.setByteOrder(QDataStream::LittleEndian);
    qint32 tag, length;
    in >> tag >> length;
    back.SetBinary(in, length);
    EXPECT_TRUE(back == m);
}

TEST(Tagged, UnsetRequiredValuesWithValidationOff)
{
    // A null name: length word 0xFFFFFFFF, record length 4; the raw form has 0xFF.
    ModeManager m;
    EXPECT_EQ(hex(test::tagged(m)), "00 00 00 24 A2 17 00 03 00 00 00 04 FF FF FF FF "
                                    "E1 55 35 C6 00 00 00 04 FF FF FF FF A9 8C 8F 75 00 00 00 04 FF FF FF FF");
    EXPECT_EQ(hex(test::raw(m)), "00 FF FF FF");

    // An int of -1 takes eight bytes in both forms; its record length is 8.
    SensorMetaData s;
    s.SetOverload(-1);
    EXPECT_NE(test::tagged(s).indexOf(QByteArray::fromHex("0552B24C00000008FFFFFFFFFFFFFFFF")), -1);
    EXPECT_TRUE(test::raw(s).endsWith(QByteArray::fromHex("FFFFFFFFFFFFFFFF")));
    s.ResetOverload();
    EXPECT_EQ(test::tagged(s).indexOf(QByteArray::fromHex("0552B24C")), -1);
}

TEST(Tagged, ListsAndOptionalFields)
{
    // A required list with no items: a record holding the count 0.
    MeasurementResultList list;
    EXPECT_EQ(hex(test::tagged(list)), "00 00 00 0C CC A6 57 5E 00 00 00 04 00 00 00 00");
    // Only optional fields, none set: object length 0, and an optional list writes no record.
    Sample s;
    EXPECT_EQ(hex(test::tagged(s)), "00 00 00 00");
    // Items of lists of texts carry a length of their own.
    s.AppendChoices(2);
    s.AppendPath(QStringLiteral("ab"));
    EXPECT_EQ(hex(test::tagged(s)), "00 00 00 2E "
                                    "00 00 01 0D 00 00 00 0E 00 00 00 01 00 00 00 06 00 00 00 02 61 62 "
                                    "00 00 01 0E 00 00 00 10 00 00 00 01 00 00 00 08 00 00 00 04 41 75 74 6F");
}

TEST(Tagged, NumbersAsTextWithTwoDecimals)
{
    MinMaxStep m;
    m.SetMin(0.125);
    m.SetMax(-0.001);
    m.SetStep(1e6);
    MinMaxStep viaTagged, viaRaw;
    test::readTagged(viaTagged, test::tagged(m));
    test::readRaw(viaRaw, test::raw(m));
    EXPECT_EQ(viaTagged.GetMin(), 0.13);
    EXPECT_EQ(viaTagged.GetStep(), 1e6);
    EXPECT_NE(test::tagged(m).indexOf(QByteArray("\x00\x00\x00\x05-0.00", 9)), -1);
    EXPECT_EQ(viaRaw.GetMin(), 0.125);
    EXPECT_TRUE(viaRaw == m);

    Sample s;
    s.SetGain(2.675f); // widened to double before formatting
    s.SetBig(Q_INT64_C(-9223372036854775807) - 1);
    Sample back;
    test::readTagged(back, test::tagged(s));
    EXPECT_EQ(back.GetGain(), 2.67f);
    EXPECT_EQ(back.GetBig(), s.GetBig());
}

TEST(Tagged, MeasurementResultWritesItsAttributeFirst)
{
    MeasurementResult r;
    r.SetTimeStamp(QDateTime());
    r.SetUnit(QStringLiteral("Hz"));
    const QByteArray bytes = test::tagged(r);
    EXPECT_EQ(hex(bytes.mid(4, 4)), "88 87 1B 46");
    EXPECT_EQ(hex(bytes.mid(4 + 8 + 6, 4)), "48 B9 2D 4D");
}

TEST(Tagged, LengthsThatDoNotAddUp)
{
    ModeManager m;
    {
        QDataStream in(QByteArray("abc"));
        m.SetBinary(in, 0); // reads nothing
        EXPECT_FALSE(m.AnyData());
    }
    {
        QDataStream in(QByteArray("abc"));
        expectThrow<BinaryParsingException>([&] { m.SetBinary(in, -1); }, lengthError("ModeManager"));
    }
    // A text whose length word runs past the end.
    for (quint32 word : {0x7FFFFFFEu, 0xFFFFFFFEu, 0x80000000u}) {
        ModeManager target;
        expectThrow<BinaryParsingException>(
            [&] {
                test::readTagged(target, Records().record(0xA2170003, [&](Records &r) { r.i32(qint32(word)); }).object());
            },
            lengthError("ModeManager"));
    }
}

TEST(Tagged, UnknownRecordsAreSkipped)
{
    // Inside a nested object too: its own length keeps the owner in step.
    const QByteArray bytes = Records()
                                 .textRecord(0x02786BC3, "grp")
                                 .record(0xC693EC10,
                                         [](Records &r) {
                                             r.textRecord(0x0BADF00D, "ignored").textRecord(0x4ECB4E58, "1.50");
                                         })
                                 .record(0x12345678, [](Records &r) { r.i64(42); })
                                 .textRecord(0x88871B46, "dB")
                                 .object();
    SensorMetaData s;
    test::readTagged(s, bytes);
    EXPECT_EQ(s.GetGroup(), QStringLiteral("grp"));
    EXPECT_EQ(s.GetUnit(), QStringLiteral("dB"));
    EXPECT_TRUE(s.IsMinMaxStepSet());
    EXPECT_EQ(s.GetMinMaxStep().GetMin(), 1.5);
    EXPECT_FALSE(s.GetMinMaxStep().IsMaxSet());
}

TEST(Tagged, HostileCountsAllocateNothingLarge)
{
    // Alone, and before the length word of a first item.
    for (qint32 count : {0x7FFFFFFF, -1, -0x7FFFFFFF, qint32(0x80000000)}) {
        for (bool item : {false, true}) {
            MeasurementResultList list;
            const QByteArray bytes = Records()
                                         .record(0xCCA6575E, [&](Records &r) {
                                             r.i32(count);
                                             if (item)
                                                 r.i32(4);
                                         })
                                         .object();
            const long long before = test::allocations();
            const long long largest = test::largestAllocation([&] {
                try {
                    test::readTagged(list, bytes);
                } catch (const BinaryParsingException &) {
                }
            });
            EXPECT_LT(test::allocations() - before, 50);
            EXPECT_LT(largest, 4096); // no room made for what the count claims
            EXPECT_EQ(list.GetMeasurementData().size(), 0);
        }
    }
    MeasurementList items;
    expectThrow<BinaryParsingException>(
        [&] { test::readTagged(items, Records().record(0xAF02C080, [](Records &r) { r.i32(0x7FFFFFFF); }).object()); },
        lengthError("MeasurementList"));
    // A huge object length on a short stream reserves only what arrives.
    QDataStream in(QByteArray(16, '\0'));
    const long long before = test::allocations();
    expectThrow<BinaryParsingException>([&] { items.SetBinary(in, 0x7FFFFFF0); }, lengthError("MeasurementList"));
    EXPECT_LT(test::allocations() - before, 50);
}

TEST(Raw, LayoutFollowsFieldOrderAndPresence)
{
    SensorMetaData s;
    s.SetGroup(QStringLiteral("G"));
    s.SetUnit(QString());
    s.SetOverload(2);
    // Presence bits 0, 1 and 7; MinMaxStep and MeasurementInvalid are left out
    // while their bits are off.
    EXPECT_EQ(hex(test::raw(s)), "83 00 00 00 02 00 47 FF FF FF FF "
                                 "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                                 "00 00 00 00 00 00 00 02");
    MeasurementList list;
    list.AppendMeasurementItem(68);
    list.SetRecordingState(1);
    EXPECT_EQ(hex(test::raw(list)), "03 00 00 00 01 44 01");
}

TEST(Raw, HighPresenceBitsAreNotKept)
{
    // Bits beyond the field count.
    ModeManager m;
    test::readRaw(m, QByteArray::fromHex("FF010101"));
    EXPECT_EQ(hex(test::raw(m)), "07 01 01 01");
}
