// Raw binary form: presence bytes, then bare values in field order, with no
// tags, lengths or validation. Writer and reader must agree on the layout.
//
// The values are those of QDataStream's operators. Where the stream's version
// is one whose layout this file knows (5.2 to 5.15), an object is encoded into
// one buffer handed to the stream at once, and read straight from the memory
// of a QBuffer; any value this code does not handle itself (a date-time with
// an offset or a zone, an out-of-range date) goes through the stream's own
// operator on that memory. Other streams use the operators throughout.
#include "../frame.h"
#include "words.h"
#include "../schema/visit.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QVarLengthArray>
#include <QtCore/QLocale>
#include <QtCore/QTimeZone>

#include <algorithm>
#include <cstring>

namespace HALVANE {
namespace frame {

namespace {

int presenceBytes(const ClassDescriptor &desc)
{
    return (int(desc.fields.size()) + 7) / 8;
}

bool isList(Kind kind)
{
    return kind == Kind::ObjectList || kind == Kind::StringList || kind == Kind::EnumList;
}

bool knownLayout(const QDataStream &stream)
{
    return stream.version() >= QDataStream::Qt_5_2 && stream.version() <= QDataStream::Qt_5_15;
}

// Qt writes a date-time in a zone through the zone's own operator, which
// crashes on a zone that is not valid (one made from an unknown name). Such a
// value has no zone to write and is written as a null date-time.
QDateTime writable(const QDateTime &t)
{
    return t.timeSpec() == Qt::TimeZone && !t.timeZone().isValid() ? QDateTime() : t;
}

// Reads a date-time as Qt lays it out for versions 5.2 to 5.15, refusing
// what Qt's own operator would accept but not write again: a time spec byte
// out of range and a zone that is not valid make the stream corrupt and the
// value null.
// Offsets from UTC beyond this are no time of any place: refused as corrupt.
constexpr qint32 kMaxOffset = 24 * 3600;

template <class In>
QDateTime readDateTime(In &in)
{
    qint64 jd = 0;
    qint32 ms = 0;
    qint8 timeSpec = 0;
    in.value(jd);
    in.value(ms);
    in.value(timeSpec);
    if (!in.ok())
        return QDateTime();
    const QDate date = QDate::fromJulianDay(jd);
    const QTime time = quint32(ms) < 86400000u ? QTime::fromMSecsSinceStartOfDay(ms) : QTime();
    switch (timeSpec) {
    case Qt::LocalTime:
    case Qt::UTC:
        return QDateTime(date, time, Qt::TimeSpec(timeSpec));
    case Qt::OffsetFromUTC: {
        qint32 offset = 0;
        in.value(offset);
        if (in.ok() && offset >= -kMaxOffset && offset <= kMaxOffset)
            return QDateTime(date, time, Qt::OffsetFromUTC, offset);
        break;
    }
    case Qt::TimeZone: {
        QString id;
        in.value(id);
        QTimeZone zone;
        if (id == QLatin1String("OffsetFromUtc")) {
            qint32 offset = 0, country = 0;
            QString name, abbreviation, comment;
            in.value(offset);
            in.value(name);
            in.value(abbreviation);
            in.value(country);
            in.value(comment);
            if (offset >= -kMaxOffset && offset <= kMaxOffset)
                zone = QTimeZone(id.toUtf8(), offset, name, abbreviation, QLocale::Country(country), comment);
        } else if (!id.isEmpty()) {
            zone = QTimeZone(id.toUtf8());
        }
        if (in.ok() && zone.isValid())
            return QDateTime(date, time, zone);
        break;
    }
    default:
        break;
    }
    in.corrupt();
    return QDateTime();
}

void copySettings(const QDataStream &from, QDataStream &to)
{
    to.setVersion(from.version());
    to.setByteOrder(from.byteOrder());
    to.setFloatingPointPrecision(from.floatingPointPrecision());
}

// ---- Writers: the stream's operators, or a buffer in the stream's layout

class StreamOut
{
public:
    explicit StreamOut(QDataStream &stream) : m_stream(stream) {}
    void bytes(const char *data, int n) { m_stream.writeRawData(data, n); }
    template <class T>
    void value(const T &v) { m_stream << v; }
    void value(const QDateTime &t) { m_stream << writable(t); }

private:
    QDataStream &m_stream;
};

class MemoryOut
{
public:
    explicit MemoryOut(QDataStream &stream)
        : m_stream(stream), m_big(stream.byteOrder() == QDataStream::BigEndian),
          m_single(stream.floatingPointPrecision() == QDataStream::SinglePrecision)
    {
    }
    void bytes(const char *data, int n)
    {
        char *at = reserve(n);
        // Presence bytes, a few at a time: stored here rather than by a call.
        if (n <= 8) {
            for (int i = 0; i < n; ++i)
                at[i] = data[i];
            return;
        }
        std::memcpy(at, data, size_t(n));
    }
    void value(bool v) { *reserve(1) = char(v ? 1 : 0); }
    void value(qint8 v) { *reserve(1) = char(v); }
    void value(qint32 v) { integer(v); }
    void value(qint64 v) { integer(v); }
    void value(double v)
    {
        if (m_single)
            return value(float(v));
        quint64 bits;
        std::memcpy(&bits, &v, 8);
        integer(bits);
    }
    void value(float v)
    {
        if (!m_single)
            return value(double(v));
        quint32 bits;
        std::memcpy(&bits, &v, 4);
        integer(bits);
    }
    void value(const QString &s)
    {
        if (s.isNull())
            return integer(quint32(0xFFFFFFFF));
        integer(quint32(s.size()) * 2);
        char *at = reserve(int(s.size()) * 2);
        const ushort *units = s.utf16();
        for (int i = 0; i < int(s.size()); ++i, at += 2) {
            storeWord(at, units[i], m_big);
        }
    }
    void value(const QDateTime &t)
    {
        const Qt::TimeSpec zone = t.timeSpec();
        if (t.isValid() && (zone == Qt::UTC || zone == Qt::LocalTime)) {
            integer(qint64(t.date().toJulianDay()));
            integer(quint32(t.time().msecsSinceStartOfDay()));
            value(qint8(zone));
            return;
        }
        QByteArray other;
        QDataStream s(&other, QIODevice::WriteOnly);
        copySettings(m_stream, s);
        s << writable(t);
        bytes(other.constData(), int(other.size()));
    }
    /*! Hands what was encoded to the stream; the raw form has no lengths to patch. */
    void flush()
    {
        m_stream.writeRawData(m_buffer.constData(), m_size);
        m_size = 0;
    }

private:
    template <class T>
    void integer(T v)
    {
        char *at = reserve(int(sizeof(T)));
        storeWord(at, v, m_big);
    }
    char *reserve(int n)
    {
        if (m_size + n > m_buffer.size()) {
            if (m_size >= kFlushSize)
                flush();
            if (m_size + n > m_buffer.size())
                m_buffer.resize(qMax(128, qMax(m_size + n, m_buffer.size() * 2)));
        }
        char *at = m_buffer.data() + m_size;
        m_size += n;
        return at;
    }

    static constexpr int kFlushSize = 1 << 16;
    QDataStream &m_stream;
    QByteArray m_buffer;
    int m_size = 0;
    bool m_big;
    bool m_single;
};

template <class Out>
void writeObject(const Obj &o, Out &out);

template <class Out>
void writeValue(const Field &f, void *at, Out &out)
{
    switch (f.kind) {
    case Kind::Bool:
        out.value(*static_cast<const bool *>(at));
        break;
    case Kind::Int:
        out.value(qint64(*static_cast<const qint32 *>(at)));
        break;
    case Kind::Int64:
        out.value(*static_cast<const qint64 *>(at));
        break;
    case Kind::Double:
        out.value(*static_cast<const double *>(at));
        break;
    case Kind::Float:
        out.value(*static_cast<const float *>(at));
        break;
    case Kind::String:
        out.value(*static_cast<const QString *>(at));
        break;
    case Kind::DateTime:
        out.value(*static_cast<const QDateTime *>(at));
        break;
    case Kind::Enum:
        out.value(*static_cast<const qint8 *>(at));
        break;
    case Kind::Nested:
        writeObject(objectAt(f.itemOps, at), out);
        break;
    case Kind::ObjectList:
    case Kind::StringList:
    case Kind::EnumList:
        break;
    }
}

template <class Out>
void writeList(const Field &f, void *list, bool set, Out &out)
{
    switch (traits(f.kind).items) {
    case Items::Objects: {
        const int n = f.itemOps->listSize(list);
        out.value(qint32(n));
        if (set || !f.required()) {
            for (int i = 0; i < n; ++i)
                writeObject(objectAt(f.itemOps, f.itemOps->listAt(list, i)), out);
        }
        break;
    }
    case Items::Strings: {
        const auto &items = *static_cast<const QVector<QString> *>(list);
        out.value(qint32(items.size()));
        for (const QString &item : items)
            out.value(item);
        break;
    }
    case Items::Enums: {
        const auto &items = *static_cast<const QVector<qint8> *>(list);
        out.value(qint32(items.size()));
        for (qint8 item : items)
            out.value(item);
        break;
    }
    case Items::None:
        break;
    }
}

template <class Out>
void writeObject(const Obj &o, Out &out)
{
    Payload *p = initData(o);
    const int n = presenceBytes(*o.desc);
    QVarLengthArray<char, 16> bytes(n);
    for (int i = 0; i < n; ++i)
        bytes[i] = char(p->words()[i / 4] >> (8 * (i % 4)));
    out.bytes(bytes.data(), n);
    if (o.desc->version)
        out.value(o.desc->currentVersion);
    for (const Field &f : o.desc->fields) {
        void *at = p->at(f);
        const bool set = p->bit(f.bit);
        if (isList(f.kind)) {
            if (f.required() || set)
                writeList(f, at, set, out);
        } else if (f.required() ? (set || (f.kind != Kind::Bool && f.kind != Kind::Nested)) : set) {
            writeValue(f, at, out);
        }
    }
}

// ---- Readers: the stream's operators, or the memory of a QBuffer

class StreamIn
{
public:
    explicit StreamIn(QDataStream &stream) : m_stream(stream) {}
    // What a device may still hold is not known: lists grow as items come.
    qint64 left() const { return 0; }
    bool ok() const { return m_stream.status() == QDataStream::Ok; }
    void corrupt() { m_stream.setStatus(QDataStream::ReadCorruptData); }
    void value(QDateTime &t)
    {
        if (knownLayout(m_stream)) {
            t = readDateTime(*this);
            return;
        }
        m_stream >> t;
        if (t.timeSpec() == Qt::TimeZone && !t.timeZone().isValid()) {
            t = QDateTime();
            corrupt();
        }
    }
    void bytes(char *data, int n)
    {
        if (m_stream.readRawData(data, n) != n)
            m_stream.setStatus(QDataStream::ReadPastEnd);
    }
    template <class T>
    void value(T &v) { m_stream >> v; }

private:
    QDataStream &m_stream;
};

class MemoryIn
{
public:
    MemoryIn(QDataStream &stream, const char *begin, const char *end)
        : m_stream(stream), m_at(begin), m_end(end), m_big(stream.byteOrder() == QDataStream::BigEndian),
          m_single(stream.floatingPointPrecision() == QDataStream::SinglePrecision)
    {
    }
    const char *at() const { return m_at; }
    qint64 left() const { return m_end - m_at; }
    bool ok() const { return m_stream.status() == QDataStream::Ok; }
    void corrupt() { m_stream.setStatus(QDataStream::ReadCorruptData); }
    void bytes(char *data, int n)
    {
        const int got = take(n);
        std::memcpy(data, m_at - got, size_t(got));
        if (got < n)
            std::memset(data + got, 0, size_t(n - got));
    }
    void value(bool &v)
    {
        qint8 byte;
        value(byte);
        v = byte != 0;
    }
    void value(qint8 &v) { v = take(1) == 1 ? qint8(m_at[-1]) : 0; }
    void value(qint32 &v) { v = integer<qint32>(); }
    void value(qint64 &v) { v = integer<qint64>(); }
    void value(double &v)
    {
        if (m_single) {
            float f;
            value(f);
            v = double(f);
            return;
        }
        const quint64 bits = integer<quint64>();
        std::memcpy(&v, &bits, 8);
    }
    void value(float &v)
    {
        if (!m_single) {
            double d;
            value(d);
            v = float(d);
            return;
        }
        const quint32 bits = integer<quint32>();
        std::memcpy(&v, &bits, 4);
    }
    void value(QString &s)
    {
        if (m_end - m_at < 4)
            return viaStream(s);
        const quint32 bytes = peek<quint32>();
        m_at += 4;
        // As QDataStream does it: null for 0xFFFFFFFF; an odd count is
        // corrupt; a count beyond the data reads the rest and is cut short.
        // Neither allocates what the count claims.
        if (bytes == 0xFFFFFFFF) {
            s = QString();
            return;
        }
        if (bytes & 1) {
            s = QString();
            m_stream.setStatus(QDataStream::ReadCorruptData);
            return;
        }
        if (qint64(bytes) > m_end - m_at) {
            s = QString();
            m_at = m_end;
            m_stream.setStatus(QDataStream::ReadPastEnd);
            return;
        }
        const int n = int(bytes / 2);
        s = bytes == 0 ? QString(QLatin1String("")) : QString(n, Qt::Uninitialized);
        QChar *out = s.data();
        for (int i = 0; i < n; ++i, m_at += 2)
            out[i] = QChar(loadWord<quint16>(m_at, m_big));
    }
    void value(QDateTime &t)
    {
        if (m_end - m_at >= 13) {
            const qint64 jd = loadWord<qint64>(m_at, m_big);
            const quint32 ms = loadWord<quint32>(m_at + 8, m_big);
            const qint8 zone = qint8(m_at[12]);
            const QDate date = QDate::fromJulianDay(jd);
            if ((zone == Qt::UTC || zone == Qt::LocalTime) && date.isValid() && ms < 86400000u) {
                m_at += 13;
                t = QDateTime(date, QTime::fromMSecsSinceStartOfDay(int(ms)), Qt::TimeSpec(zone));
                return;
            }
        }
        t = readDateTime(*this);
    }

private:
    // Takes up to n bytes; a short read sets the stream's status, as a
    // stream on the same bytes would.
    int take(int n)
    {
        const int got = int(qMin<qint64>(n, m_end - m_at));
        m_at += got;
        if (got < n)
            m_stream.setStatus(QDataStream::ReadPastEnd);
        return got;
    }
    template <class T>
    T peek() const
    {
        return loadWord<T>(m_at, m_big);
    }
    template <class T>
    T integer()
    {
        if (take(int(sizeof(T))) != int(sizeof(T)))
            return 0;
        return loadWord<T>(m_at - sizeof(T), m_big);
    }
    // The stream's own operator on the remaining memory.
    template <class T>
    void viaStream(T &v)
    {
        const QByteArray rest = QByteArray::fromRawData(m_at, int(m_end - m_at));
        QBuffer buffer;
        buffer.setData(rest);
        buffer.open(QIODevice::ReadOnly);
        QDataStream s(&buffer);
        copySettings(m_stream, s);
        s >> v;
        m_at += buffer.pos();
        if (s.status() != QDataStream::Ok && m_stream.status() == QDataStream::Ok)
            m_stream.setStatus(s.status());
    }

    QDataStream &m_stream;
    const char *m_at;
    const char *m_end;
    bool m_big;
    bool m_single;
};

template <class In>
void readObject(const Obj &o, In &in);

// Reads a value straight into the payload, without setter or test.
template <class In>
void readValue(const Field &f, void *at, In &in)
{
    switch (f.kind) {
    case Kind::Bool:
        in.value(*static_cast<bool *>(at));
        break;
    case Kind::Int: {
        qint64 wide = 0;
        in.value(wide);
        *static_cast<qint32 *>(at) = qint32(quint32(quint64(wide)));
        break;
    }
    case Kind::Int64:
        in.value(*static_cast<qint64 *>(at));
        break;
    case Kind::Double:
        in.value(*static_cast<double *>(at));
        break;
    case Kind::Float:
        in.value(*static_cast<float *>(at));
        break;
    case Kind::String:
        in.value(*static_cast<QString *>(at));
        break;
    case Kind::DateTime:
        in.value(*static_cast<QDateTime *>(at));
        break;
    case Kind::Enum:
        in.value(*static_cast<qint8 *>(at));
        break;
    case Kind::Nested:
        readObject(objectAt(f.itemOps, at), in);
        break;
    case Kind::ObjectList:
    case Kind::StringList:
    case Kind::EnumList:
        break;
    }
}

// List items go through a new item and the append, which tests them.
template <class In>
void readList(const Obj &o, int index, In &in)
{
    const Field &f = o.desc->fields[index];
    qint32 count = 0;
    in.value(count);
    // Room for the items that the bytes in memory can hold, at four bytes
    // an item at the least; the count itself is not trusted.
    if (f.kind == Kind::ObjectList && count > 0 && in.left() > 0) {
        void *list = initData(o)->at(f);
        f.itemOps->listReserve(list, f.itemOps->listSize(list) + int(qMin<qint64>(count, in.left() / 4)));
    }
    // Each item takes at least one byte: stop as soon as the input runs dry
    // instead of trusting the count.
    for (qint32 i = 0; i < count && in.ok(); ++i) {
        switch (f.kind) {
        case Kind::ObjectList: {
            TempItem item(f.itemOps);
            readObject(item.obj(), in);
            if (!in.ok())
                return;
            append(o, index, item.get(), true);
            break;
        }
        case Kind::StringList: {
            QString item;
            in.value(item);
            if (!in.ok())
                return;
            append(o, index, &item);
            break;
        }
        case Kind::EnumList: {
            qint8 item = 0;
            in.value(item);
            if (!in.ok())
                return;
            append(o, index, &item);
            break;
        }
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::String:
        case Kind::DateTime:
        case Kind::Enum:
        case Kind::Nested:
            return;
        }
    }
}

template <class In>
void readObject(const Obj &o, In &in)
{
    Payload *p = initData(o);
    const int n = presenceBytes(*o.desc);
    QVarLengthArray<char, 16> bytes(n);
    std::fill(bytes.begin(), bytes.end(), char(0));
    in.bytes(bytes.data(), n);
    for (int w = 0; w < o.desc->wordCount; ++w) {
        quint32 word = 0;
        for (int i = 0; i < 4 && 4 * w + i < n; ++i)
            word |= quint32(quint8(bytes[4 * w + i])) << (8 * i);
        p->words()[w] = word;
    }
    // Bits beyond the field count are not part of the object.
    const int count = int(o.desc->fields.size());
    if (count % 32)
        p->words()[count / 32] &= (1u << (count % 32)) - 1;
    // An older document drops the bits just read; its items set them again.
    if (o.desc->version) {
        QString version;
        in.value(version);
        versionRead(o, version);
        p = access(o);
    }
    for (const Field &f : o.desc->fields) {
        if (!f.required() && !p->bit(f.bit))
            continue;
        if (isList(f.kind)) {
            readList(o, f.bit, in);
            p = access(o);
            continue;
        }
        readValue(f, p->at(f), in);
        if (f.kind == Kind::Nested)
            childChanged(o, p, objectAt(f.itemOps, p->at(f)));
    }
}

} // namespace

void writeRaw(const Obj &o, QDataStream &stream)
{
    if (knownLayout(stream)) {
        MemoryOut out(stream);
        writeObject(o, out);
        out.flush();
        return;
    }
    StreamOut out(stream);
    writeObject(o, out);
}

void readRaw(const Obj &o, QDataStream &stream)
{
    QBuffer *buffer = qobject_cast<QBuffer *>(stream.device());
    if (knownLayout(stream) && buffer && buffer->isReadable() && !buffer->isTextModeEnabled()) {
        const QByteArray &data = buffer->data();
        const qint64 start = buffer->pos();
        MemoryIn in(stream, data.constData() + start, data.constData() + data.size());
        readObject(o, in);
        buffer->seek(in.at() - data.constData());
        return;
    }
    StreamIn in(stream);
    readObject(o, in);
}

// ---- The walk over the raw form, for tools: the same reader, into a visitor.

namespace {

class RawWalk
{
public:
    RawWalk(MemoryIn &in, const char *begin, schema::RecordVisitor &visitor) : m_in(in), m_begin(begin), m_v(visitor) {}

    bool object(const schema::Class &c)
    {
        const ClassDescriptor &desc = *static_cast<const ObjectOps *>(c.ops)->desc;
        m_v.beginObject(&c, offset(), -1);
        const int n = presenceBytes(desc);
        QByteArray bits(n, '\0');
        m_in.bytes(bits.data(), n);
        if (!m_in.ok())
            return fault(QStringLiteral("the presence bytes are cut short"));
        m_v.presence(c, bits);
        if (!c.version.isNull()) {
            m_v.beginField(&c.versionField, c.versionField.tag, offset(), -1);
            schema::Value v;
            v.type = schema::Value::Text;
            m_in.value(v.text);
            if (!m_in.ok())
                return fault(QStringLiteral("the version is cut short or corrupt"));
            m_v.value(v);
            m_v.endField();
        }
        for (const schema::Field &f : c.fields) {
            const bool set = (quint8(bits[f.bit / 8]) >> (f.bit % 8)) & 1;
            if (!f.required && !set)
                continue;
            m_v.beginField(&f, f.tag, offset(), -1);
            if (!field(f))
                return false;
            m_v.endField();
        }
        m_v.endObject();
        return true;
    }

private:
    bool field(const schema::Field &f)
    {
        schema::Value v;
        switch (f.kind) {
        case schema::Kind::Bool:
            v.type = schema::Value::Bool;
            m_in.value(v.boolean);
            break;
        case schema::Kind::Int:
        case schema::Kind::Int64:
            v.type = schema::Value::Integer;
            m_in.value(v.integer);
            break;
        case schema::Kind::Double:
            v.type = schema::Value::Real;
            m_in.value(v.real);
            break;
        case schema::Kind::Float: {
            float real = 0;
            v.type = schema::Value::Real;
            m_in.value(real);
            v.real = double(real);
            break;
        }
        case schema::Kind::String:
            v.type = schema::Value::Text;
            m_in.value(v.text);
            break;
        case schema::Kind::DateTime:
            v.type = schema::Value::DateTime;
            m_in.value(v.dateTime);
            break;
        case schema::Kind::Enum: {
            qint8 index = 0;
            v.type = schema::Value::Index;
            m_in.value(index);
            v.integer = index;
            break;
        }
        case schema::Kind::Nested:
            return object(*schema::findClass(f.itemClass));
        case schema::Kind::ObjectList:
        case schema::Kind::StringList:
        case schema::Kind::EnumList:
            return list(f);
        }
        if (!m_in.ok())
            return fault(QStringLiteral("the value of %1 is cut short or corrupt").arg(f.name));
        m_v.value(v);
        return true;
    }

    bool list(const schema::Field &f)
    {
        qint32 count = 0;
        m_in.value(count);
        if (!m_in.ok())
            return fault(QStringLiteral("the count of %1 is cut short").arg(f.name));
        // Every item takes at least one byte.
        if (count < 0 || count > m_in.left())
            return fault(QStringLiteral("a count of %1 items does not fit the %2 bytes that remain").arg(count).arg(m_in.left()));
        m_v.list(count);
        const schema::Class *item = f.kind == schema::Kind::ObjectList ? schema::findClass(f.itemClass) : nullptr;
        for (qint32 i = 0; i < count; ++i) {
            m_v.beginItem(i, offset(), -1);
            schema::Value v;
            if (item) {
                if (!object(*item))
                    return false;
            } else if (f.kind == schema::Kind::StringList) {
                v.type = schema::Value::Text;
                m_in.value(v.text);
            } else {
                qint8 index = 0;
                v.type = schema::Value::Index;
                m_in.value(index);
                v.integer = index;
            }
            if (!item) {
                if (!m_in.ok())
                    return fault(QStringLiteral("item %1 of %2 is cut short or corrupt").arg(i).arg(f.name));
                m_v.value(v);
            }
            m_v.endItem();
        }
        return true;
    }

    qint64 offset() const { return m_in.at() - m_begin; }
    bool fault(const QString &what)
    {
        m_v.fault(offset(), what);
        return false;
    }

    MemoryIn &m_in;
    const char *m_begin;
    schema::RecordVisitor &m_v;
};

} // namespace

} // namespace frame

bool schema::walkRaw(const Class &c, const QByteArray &bytes, int version, QDataStream::ByteOrder order,
                     RecordVisitor &visitor, qint64 *end)
{
    QByteArray none;
    QDataStream status(&none, QIODevice::ReadOnly);
    status.setVersion(version);
    status.setByteOrder(order);
    if (!frame::knownLayout(status)) {
        visitor.fault(0, QStringLiteral("the walk reads the layout of stream versions 5.2 to 5.15"));
        return false;
    }
    frame::MemoryIn in(status, bytes.constData(), bytes.constData() + bytes.size());
    frame::RawWalk walk(in, bytes.constData(), visitor);
    const bool ok = walk.object(c);
    if (end)
        *end = in.at() - bytes.constData();
    return ok;
}

} // namespace HALVANE
