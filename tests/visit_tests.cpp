// The frame's walks over the two binary forms: every part in stream order
// with its byte offset, and the first fault with where it lies.
#include "support.h"

#include "frame/schema/visit.h"

using namespace HALVANE;

namespace {

// Writes every event as one short line.
class Recorder : public schema::RecordVisitor
{
public:
    QStringList events;

    void beginObject(const schema::Class *c, qint64 offset, qint64 length) override
    {
        events << QStringLiteral("object %1 @%2 %3").arg(c ? c->name : QStringLiteral("?")).arg(offset).arg(length);
    }
    void endObject() override { events << QStringLiteral("end object"); }
    void presence(const schema::Class &, const QByteArray &bits) override
    {
        events << QStringLiteral("presence %1").arg(QString::fromLatin1(bits.toHex()));
    }
    void beginField(const schema::Field *f, quint32 tag, qint64 offset, qint64 length) override
    {
        events << QStringLiteral("field %1 %2 @%3 %4")
                      .arg(f ? f->name : QStringLiteral("?"))
                      .arg(tag, 8, 16, QLatin1Char('0'))
                      .arg(offset)
                      .arg(length);
    }
    void list(qint32 count) override { events << QStringLiteral("list %1").arg(count); }
    void beginItem(int index, qint64 offset, qint64 length) override
    {
        events << QStringLiteral("item %1 @%2 %3").arg(index).arg(offset).arg(length);
    }
    void value(const schema::Value &v) override
    {
        switch (v.type) {
        case schema::Value::Bytes:
            events << QStringLiteral("bytes %1").arg(QString::fromLatin1(v.bytes.toHex()));
            break;
        case schema::Value::Bool:
            events << QStringLiteral("bool %1").arg(v.boolean);
            break;
        case schema::Value::Integer:
        case schema::Value::Index:
            events << QStringLiteral("int %1").arg(v.integer);
            break;
        case schema::Value::Real:
            events << QStringLiteral("real %1").arg(v.real);
            break;
        case schema::Value::Text:
            events << (v.text.isNull() ? QStringLiteral("null") : QStringLiteral("text ") + v.text);
            break;
        case schema::Value::DateTime:
            events << QStringLiteral("time ") + Converters::ToString(v.dateTime);
            break;
        }
    }
    void fault(qint64 offset, const QString &what) override { events << QStringLiteral("fault @%1 %2").arg(offset).arg(what); }
};

const schema::Class &classNamed(const char *name)
{
    return *schema::findClass(QString::fromLatin1(name));
}

QByteArray recordsOf(const QByteArray &tagged)
{
    return tagged.mid(4); // after the object length
}

} // namespace

TEST(Walk, TaggedPartsWithTheirOffsets)
{
    MeasurementList list;
    list.AppendMeasurementItem(0);
    list.SetRecordingState(1);
    Recorder r;
    ASSERT_TRUE(schema::walkTagged(&classNamed("MeasurementList"), recordsOf(test::tagged(list)), QDataStream::BigEndian, r));
    EXPECT_EQ(r.events.join(QLatin1Char('\n')).toStdString(),
              "field MeasurementItem af02c080 @0 20\n"
              "list 1\n"
              "item 0 @12 12\n"
              "text CW_Level\n"
              "field RecordingState eddcc926 @28 7\n"
              "text Off");

    // A nested object is walked by its own class; an unknown tag is handed over as bytes.
    SensorMetaData meta;
    meta.SetGroup(QStringLiteral("g"));
    meta.GetMinMaxStep().SetMin(1);
    QByteArray records = recordsOf(test::tagged(meta));
    records += QByteArray::fromHex("0000ABCD00000002BEEF");
    Recorder n;
    ASSERT_TRUE(schema::walkTagged(&classNamed("SensorMetaData"), records, QDataStream::BigEndian, n));
    EXPECT_EQ(n.events.join(QLatin1Char('\n')).toStdString(),
              "field Group 02786bc3 @0 5\n"
              "text g\n"
              "field Unit 88871b46 @13 4\n"
              "null\n"
              "field MinMaxStep c693ec10 @25 48\n"
              "object MinMaxStep @33 48\n"
              "field Min 4ecb4e58 @33 8\n"
              "text 1.00\n"
              "field Max 6e8dd7f5 @49 8\n"
              "text 0.00\n"
              "field Step 0bb0bda2 @65 8\n"
              "text 0.00\n"
              "end object\n"
              "field ValueMin 82ad481d @81 8\n"
              "text 0.00\n"
              "field ValueMax 8ddd066a @97 8\n"
              "text 0.00\n"
              "field ValueStep af1c7565 @113 8\n"
              "text 0.00\n"
              "field ? 0000abcd @129 2\n"
              "bytes beef");
}

TEST(Walk, TaggedFaultsNameTheirByte)
{
    const schema::Class &list = classNamed("MeasurementList");
    struct Case {
        const char *hex;
        const char *fault;
    } cases[] = {
        // A record header cut short after the first record.
        {"EDDCC926 00000007 00000003 4F6666 EDDC", "fault @15 a record header is cut short"},
        // A record longer than its object.
        {"EDDCC926 00000009 00000003 4F6666", "fault @4 a record of 9 bytes runs past the end of its object"},
        // A count that the list's bytes cannot hold: every item takes four bytes at least.
        {"AF02C080 00000008 7FFFFFFF 00000000", "fault @8 a count of 2147483647 items does not fit the 4 bytes of the list"},
        // An item whose length word disagrees with its text.
        {"AF02C080 0000000D 00000001 00000006 00000001 41", "fault @12 item 0 says 6 bytes and holds 5"},
        // A text longer than its record.
        {"EDDCC926 00000007 00000009 4F6666", "fault @8 a text of 9 bytes runs past the end of its record"},
    };
    for (const Case &c : cases) {
        Recorder r;
        EXPECT_FALSE(schema::walkTagged(&list, QByteArray::fromHex(QByteArray(c.hex).replace(' ', "")), QDataStream::BigEndian, r));
        EXPECT_EQ(r.events.last().toStdString(), c.fault) << c.hex;
    }
}

TEST(Walk, RawPartsAndFaults)
{
    MeasurementList list;
    list.AppendMeasurementItem(1);
    list.SetRecordingState(0);
    Recorder r;
    qint64 end = 0;
    const QByteArray raw = test::raw(list);
    ASSERT_TRUE(schema::walkRaw(classNamed("MeasurementList"), raw, QDataStream::Qt_5_12, QDataStream::BigEndian, r, &end));
    EXPECT_EQ(end, raw.size());
    EXPECT_EQ(r.events.join(QLatin1Char('\n')).toStdString(),
              "object MeasurementList @0 -1\n"
              "presence 03\n"
              "field MeasurementItem af02c080 @1 -1\n"
              "list 1\n"
              "item 0 @5 -1\n"
              "int 1\n"
              "field RecordingState eddcc926 @6 -1\n"
              "int 0\n"
              "end object");

    // A count beyond the bytes is refused before any item is read, and a
    // string cut short is reported where it begins.
    Recorder count;
    EXPECT_FALSE(schema::walkRaw(classNamed("MeasurementList"), QByteArray::fromHex("03871234560100"),
                                 QDataStream::Qt_5_12, QDataStream::BigEndian, count));
    EXPECT_EQ(count.events.last().toStdString(), "fault @5 a count of -2028850090 items does not fit the 2 bytes that remain");
    Recorder cut;
    EXPECT_FALSE(schema::walkRaw(classNamed("RDSResult"), QByteArray::fromHex("03000000080041"), QDataStream::Qt_5_12,
                                 QDataStream::BigEndian, cut));
    EXPECT_EQ(cut.events.last().toStdString(), "fault @7 the value of ProgramName is cut short or corrupt");
}
