// Hand-written XML and QDataStream code for the capabilities document: one
// writeTextElement and one stream operator per field, a chain of name tests
// and a switch over tags for reading, lengths patched by seeking back.
#include "baseline_capabilities.h"
#include "baseline_io.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QString>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace baseline {

namespace {

QString boolText(bool v)
{
    return v ? QStringLiteral("true") : QStringLiteral("false");
}

// ---- ISBBandwidthSettings: two numbers, as text in XML and tagged records

void xmlOut(QXmlStreamWriter &w, const ISBBandwidthSettings &m)
{
    w.writeStartElement(QStringLiteral("ISBBandwidthSettings"));
    w.writeTextElement(QStringLiteral("MinBandwidth"), number(m.minBandwidth));
    w.writeTextElement(QStringLiteral("MaxBandwidth"), number(m.maxBandwidth));
    w.writeEndElement();
}

void xmlIn(QXmlStreamReader &r, ISBBandwidthSettings &m)
{
    while (r.readNextStartElement()) {
        const auto name = r.name();
        if (name == QLatin1String("MinBandwidth"))
            m.minBandwidth = r.readElementText().toDouble();
        else if (name == QLatin1String("MaxBandwidth"))
            m.maxBandwidth = r.readElementText().toDouble();
        else
            r.skipCurrentElement();
    }
}

void taggedOut(QDataStream &s, const ISBBandwidthSettings &m)
{
    numberRecord(s, 0xC32EB75A, m.minBandwidth);
    numberRecord(s, 0xA723FFDA, m.maxBandwidth);
}

void taggedIn(QDataStream &s, qint32 length, ISBBandwidthSettings &m)
{
    readRecords(s, length, [&](quint32 tag, qint32) {
        switch (tag) {
        case 0xC32EB75A: m.minBandwidth = readNumber(s); return true;
        case 0xA723FFDA: m.maxBandwidth = readNumber(s); return true;
        default: return false;
        }
    });
}

void rawOut(QDataStream &s, const ISBBandwidthSettings &m)
{
    s << quint8(0x03) << m.minBandwidth << m.maxBandwidth;
}

void rawIn(QDataStream &s, ISBBandwidthSettings &m)
{
    quint8 bits;
    s >> bits >> m.minBandwidth >> m.maxBandwidth;
}

bool same(const ISBBandwidthSettings &a, const ISBBandwidthSettings &b)
{
    return a.minBandwidth == b.minBandwidth && a.maxBandwidth == b.maxBandwidth;
}

// ---- The structs of flags, from their field lists

#define XML_OUT_FLAG(element, member, tag) w.writeTextElement(QStringLiteral(#element), boolText(m.member));
#define XML_OUT_NESTED(element, member, tag) xmlOut(w, m.member);
#define XML_IN_FLAG(element, member, tag)                                                                              \
    if (name == QLatin1String(#element)) {                                                                             \
        m.member = boolFromText(r.readElementText());                                                                  \
        continue;                                                                                                      \
    }
#define XML_IN_NESTED(element, member, tag)                                                                            \
    if (name == QLatin1String(#element)) {                                                                             \
        xmlIn(r, m.member);                                                                                            \
        continue;                                                                                                      \
    }
#define TAGGED_OUT_FLAG(element, member, tag) s << qint32(tag) << qint32(1) << m.member;
#define TAGGED_OUT_NESTED(element, member, tag)                                                                        \
    {                                                                                                                  \
        s << qint32(tag);                                                                                              \
        const qint64 at = openLength(s);                                                                               \
        taggedOut(s, m.member);                                                                                        \
        closeLength(s, at);                                                                                            \
    }
#define TAGGED_IN_FLAG(element, member, tag)                                                                           \
    case tag: s >> m.member; return true;
#define TAGGED_IN_NESTED(element, member, tag)                                                                         \
    case tag: taggedIn(s, recordLength, m.member); return true;
#define RAW_FLAG(element, member, tag) s << m.member;
#define RAW_NESTED(element, member, tag) rawOut(s, m.member);
#define RAW_IN_FLAG(element, member, tag) s >> m.member;
#define RAW_IN_NESTED(element, member, tag) rawIn(s, m.member);
#define COUNT_FIELD(element, member, tag) +1
#define SAME_FLAG(element, member, tag) &&a.member == b.member
#define SAME_NESTED(element, member, tag) &&same(a.member, b.member)

// Writes and reads one struct. Every field is written, so the presence bytes
// of the raw form are all on; the reader skips them.
#define FLAG_STRUCT_IO(Struct, LIST)                                                                                   \
    void xmlOut(QXmlStreamWriter &w, const Struct &m)                                                                  \
    {                                                                                                                  \
        w.writeStartElement(QStringLiteral(#Struct));                                                                  \
        LIST(XML_OUT_FLAG, XML_OUT_NESTED)                                                                             \
        w.writeEndElement();                                                                                           \
    }                                                                                                                  \
    void xmlIn(QXmlStreamReader &r, Struct &m)                                                                         \
    {                                                                                                                  \
        while (r.readNextStartElement()) {                                                                             \
            const auto name = r.name();                                                                                \
            LIST(XML_IN_FLAG, XML_IN_NESTED)                                                                           \
            r.skipCurrentElement();                                                                                    \
        }                                                                                                              \
    }                                                                                                                  \
    void taggedOut(QDataStream &s, const Struct &m) { LIST(TAGGED_OUT_FLAG, TAGGED_OUT_NESTED) }                       \
    void taggedIn(QDataStream &s, qint32 length, Struct &m)                                                            \
    {                                                                                                                  \
        readRecords(s, length, [&](quint32 tag, qint32 recordLength) {                                                 \
            (void)recordLength;                                                                                        \
            switch (tag) {                                                                                             \
                LIST(TAGGED_IN_FLAG, TAGGED_IN_NESTED)                                                                 \
            default: return false;                                                                                     \
            }                                                                                                          \
        });                                                                                                            \
    }                                                                                                                  \
    constexpr int Struct##Fields = 0 LIST(COUNT_FIELD, COUNT_FIELD);                                                   \
    void rawOut(QDataStream &s, const Struct &m)                                                                       \
    {                                                                                                                  \
        for (int i = 0; i < Struct##Fields / 8; ++i)                                                                   \
            s << quint8(0xFF);                                                                                         \
        if (Struct##Fields % 8)                                                                                        \
            s << quint8((1 << (Struct##Fields % 8)) - 1);                                                              \
        LIST(RAW_FLAG, RAW_NESTED)                                                                                     \
    }                                                                                                                  \
    void rawIn(QDataStream &s, Struct &m)                                                                              \
    {                                                                                                                  \
        s.skipRawData((Struct##Fields + 7) / 8);                                                                       \
        LIST(RAW_IN_FLAG, RAW_IN_NESTED)                                                                               \
    }                                                                                                                  \
    bool same(const Struct &a, const Struct &b) { return true LIST(SAME_FLAG, SAME_NESTED); }

FLAG_STRUCT_IO(AudioCapabilities, BASELINE_AUDIO_CAPABILITIES)
FLAG_STRUCT_IO(ConnectorCapabilities, BASELINE_CONNECTOR_CAPABILITIES)
FLAG_STRUCT_IO(StatusCapabilities, BASELINE_STATUS_CAPABILITIES)
FLAG_STRUCT_IO(DFCabapilites, BASELINE_DFCABAPILITES)
FLAG_STRUCT_IO(HardwareOptions, BASELINE_HARDWARE_OPTIONS)
FLAG_STRUCT_IO(NetworkCapabilities, BASELINE_NETWORK_CAPABILITIES)
FLAG_STRUCT_IO(MainToolbarCapabilites, BASELINE_MAIN_TOOLBAR_CAPABILITES)
FLAG_STRUCT_IO(ToolsToolbarCapabilities, BASELINE_TOOLS_TOOLBAR_CAPABILITIES)
FLAG_STRUCT_IO(PIFPanToolbarCapabilities, BASELINE_PIFPAN_TOOLBAR_CAPABILITIES)
FLAG_STRUCT_IO(FrequencyStoreCapabilites, BASELINE_FREQUENCY_STORE_CAPABILITES)
FLAG_STRUCT_IO(FileMenuCapabilites, BASELINE_FILE_MENU_CAPABILITES)
FLAG_STRUCT_IO(FFMInputToolbarCapabilities, BASELINE_FFMINPUT_TOOLBAR_CAPABILITIES)
FLAG_STRUCT_IO(CSVRecordCapabilities, BASELINE_CSVRECORD_CAPABILITIES)
FLAG_STRUCT_IO(MasterRecordingCapabilities, BASELINE_MASTER_RECORDING_CAPABILITIES)
FLAG_STRUCT_IO(DateTimeCapability, BASELINE_DATE_TIME_CAPABILITY)
FLAG_STRUCT_IO(Capabilities, BASELINE_CAPABILITIES)

} // namespace

void writeXml(QXmlStreamWriter &w, const Capabilities &c)
{
    xmlOut(w, c);
}

void readXml(QXmlStreamReader &r, Capabilities &c)
{
    xmlIn(r, c);
}

void writeTagged(QDataStream &s, const Capabilities &c)
{
    const qint64 length = openLength(s);
    taggedOut(s, c);
    closeLength(s, length);
}

void readTagged(QDataStream &s, qint32 length, Capabilities &c)
{
    taggedIn(s, length, c);
}

void writeRaw(QDataStream &s, const Capabilities &c)
{
    rawOut(s, c);
}

void readRaw(QDataStream &s, Capabilities &c)
{
    rawIn(s, c);
}

bool operator==(const Capabilities &a, const Capabilities &b)
{
    return same(a, b);
}

} // namespace baseline

// ---- The document's values, set through the library's setters and into the
// baseline's members in the same order

namespace documents {

namespace {

// Two flags of three true, counted through the whole document.
struct Flags {
    int next = 0;
    bool operator()() { return next++ % 3 != 2; }
};

const double kMinBandwidth = 1.25;
const double kMaxBandwidth = 12.5;

void fill(HALVANE::ISBBandwidthSettings &o, Flags &)
{
    o.SetMinBandwidth(kMinBandwidth);
    o.SetMaxBandwidth(kMaxBandwidth);
}

void fill(baseline::ISBBandwidthSettings &m, Flags &)
{
    m.minBandwidth = kMinBandwidth;
    m.maxBandwidth = kMaxBandwidth;
}

#define SET_FLAG(element, member, tag) o.Set##element(flags());
#define SET_NESTED(element, member, tag) fill(o.Get##element(), flags);
#define ASSIGN_FLAG(element, member, tag) m.member = flags();
#define ASSIGN_NESTED(element, member, tag) fill(m.member, flags);
#define FILL(name, LIST)                                                                                               \
    void fill(HALVANE::name &o, Flags &flags) { LIST(SET_FLAG, SET_NESTED) }                                           \
    void fill(baseline::name &m, Flags &flags) { LIST(ASSIGN_FLAG, ASSIGN_NESTED) }

FILL(AudioCapabilities, BASELINE_AUDIO_CAPABILITIES)
FILL(ConnectorCapabilities, BASELINE_CONNECTOR_CAPABILITIES)
FILL(StatusCapabilities, BASELINE_STATUS_CAPABILITIES)
FILL(DFCabapilites, BASELINE_DFCABAPILITES)
FILL(HardwareOptions, BASELINE_HARDWARE_OPTIONS)
FILL(NetworkCapabilities, BASELINE_NETWORK_CAPABILITIES)
FILL(MainToolbarCapabilites, BASELINE_MAIN_TOOLBAR_CAPABILITES)
FILL(ToolsToolbarCapabilities, BASELINE_TOOLS_TOOLBAR_CAPABILITIES)
FILL(PIFPanToolbarCapabilities, BASELINE_PIFPAN_TOOLBAR_CAPABILITIES)
FILL(FrequencyStoreCapabilites, BASELINE_FREQUENCY_STORE_CAPABILITES)
FILL(FileMenuCapabilites, BASELINE_FILE_MENU_CAPABILITES)
FILL(FFMInputToolbarCapabilities, BASELINE_FFMINPUT_TOOLBAR_CAPABILITIES)
FILL(CSVRecordCapabilities, BASELINE_CSVRECORD_CAPABILITIES)
FILL(MasterRecordingCapabilities, BASELINE_MASTER_RECORDING_CAPABILITIES)
FILL(DateTimeCapability, BASELINE_DATE_TIME_CAPABILITY)
FILL(Capabilities, BASELINE_CAPABILITIES)

} // namespace

HALVANE::Capabilities capabilities()
{
    HALVANE::Capabilities c;
    c.SetValidate(true);
    Flags flags;
    fill(c, flags);
    return c;
}

baseline::Capabilities plainCapabilities()
{
    baseline::Capabilities c;
    Flags flags;
    fill(c, flags);
    return c;
}

} // namespace documents
