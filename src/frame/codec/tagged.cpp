// Tagged binary form: records of field tag, length and value. An object is
// encoded into one buffer (lengths are stores into it) and handed to the
// stream at once; it is read with one read of its length and decoded from
// memory, every length checked against the bytes that remain.
#include "../frame.h"
#include "words.h"
#include "../text/messages.h"
#include "../text/text.h"

#include "../../base/converters.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>

#include <cstring>

namespace HALVANE {
namespace frame {

namespace {

class Sink
{
public:
    explicit Sink(QDataStream::ByteOrder order) : m_big(order == QDataStream::BigEndian) {}

    void u8(quint8 v) { *reserve(1) = char(v); }
    void i32(qint32 v) { word(v); }
    void i64(qint64 v) { word(v); }
    /*! A QByteArray as the stream writes it: length word (0xFFFFFFFF when null), bytes. */
    void bytes(const QByteArray &b)
    {
        if (b.isNull()) {
            i32(-1);
            return;
        }
        i32(qint32(b.size()));
        std::memcpy(reserve(int(b.size())), b.constData(), size_t(b.size()));
    }
    /*! A QString as the stream writes it: byte count (0xFFFFFFFF when null), UTF-16 units. */
    void string(const QString &s)
    {
        if (s.isNull()) {
            i32(-1);
            return;
        }
        i32(qint32(s.size() * 2));
        char *at = reserve(int(s.size()) * 2);
        for (const QChar c : s) {
            storeWord(at, quint16(c.unicode()), m_big);
            at += 2;
        }
    }
    /*! Starts a counted part: a length word to be filled in by close(). */
    int open()
    {
        i32(0);
        return m_size;
    }
    void close(int start)
    {
        const qint32 n = qint32(m_size - start);
        char *at = m_buffer.data() + start - 4;
        storeWord(at, n, m_big);
    }
    const char *data() const { return m_buffer.constData(); }
    int size() const { return m_size; }

private:
    template <class T>
    void word(T v)
    {
        char *at = reserve(int(sizeof(T)));
        storeWord(at, v, m_big);
    }
    char *reserve(int n)
    {
        if (m_size + n > m_buffer.size())
            m_buffer.resize(qMax(256, qMax(m_size + n, m_buffer.size() * 2)));
        char *at = m_buffer.data() + m_size;
        m_size += n;
        return at;
    }

    QByteArray m_buffer;
    int m_size = 0;
    bool m_big;
};

class Source
{
public:
    Source(const char *begin, const char *end, QDataStream::ByteOrder order)
        : m_at(begin), m_end(end), m_big(order == QDataStream::BigEndian)
    {
    }
    qint64 left() const { return m_end - m_at; }
    bool atEnd() const { return m_at >= m_end; }
    bool u8(quint8 &v)
    {
        if (left() < 1)
            return false;
        v = quint8(*m_at++);
        return true;
    }
    bool i32(qint32 &v) { return word(v); }
    bool i64(qint64 &v) { return word(v); }
    /*! A QByteArray's bytes in place; false when its length runs past the end. */
    bool bytes(const char *&data, int &size)
    {
        qint32 n;
        if (!i32(n))
            return false;
        if (n == -1) { // a null array
            data = m_at;
            size = 0;
            return true;
        }
        if (n < 0 || n > left())
            return false;
        data = m_at;
        size = n;
        m_at += n;
        return true;
    }
    /*! A QString as the stream writes it; false when its byte count is odd or runs past the end. */
    bool string(QString &s)
    {
        qint32 n;
        if (!i32(n))
            return false;
        if (n == -1) {
            s = QString();
            return true;
        }
        if (n < 0 || (n & 1) || n > left())
            return false;
        if (n == 0) {
            s = QString(QLatin1String(""));
            return true;
        }
        s = QString(n / 2, Qt::Uninitialized);
        QChar *out = s.data();
        for (int i = 0; i < n / 2; ++i, m_at += 2)
            out[i] = QChar(loadWord<quint16>(m_at, m_big));
        return true;
    }
    void skip(qint64 n)
    {
        if (n > 0)
            m_at += qMin(n, left());
    }

private:
    template <class T>
    bool word(T &v)
    {
        if (left() < qint64(sizeof(T)))
            return false;
        v = loadWord<T>(m_at, m_big);
        m_at += sizeof(T);
        return true;
    }

    const char *m_at;
    const char *m_end;
    bool m_big;
};

bool encodeObject(const Obj &o, Sink &sink, int tag, bool writeTag, bool checked);

void encodeValue(const Field &f, const void *at, Sink &sink)
{
    switch (f.kind) {
    case Kind::Bool:
        sink.u8(*static_cast<const bool *>(at) ? 1 : 0);
        break;
    case Kind::Int:
        sink.i64(*static_cast<const qint32 *>(at));
        break;
    case Kind::Int64:
        sink.i64(*static_cast<const qint64 *>(at));
        break;
    case Kind::Double:
    case Kind::Float:
    case Kind::String:
    case Kind::DateTime:
    case Kind::Enum:
    case Kind::StringList:
    case Kind::EnumList:
        sink.bytes(valueUtf8(f, at));
        break;
    case Kind::Nested:
    case Kind::ObjectList:
        break;
    }
}

void encodeList(const Field &f, void *list, bool set, bool checked, Sink &sink)
{
    sink.i32(f.tag);
    const int length = sink.open();
    switch (f.kind) {
    case Kind::ObjectList: {
        const int n = f.itemOps->listSize(list);
        sink.i32(n);
        if (set || !f.required()) {
            for (int i = 0; i < n; ++i)
                encodeObject(objectAt(f.itemOps, f.itemOps->listAt(list, i)), sink, 0, false, checked && set);
        }
        break;
    }
    case Kind::StringList: {
        const auto &items = *static_cast<const QVector<QString> *>(list);
        sink.i32(qint32(items.size()));
        if (set || !f.required()) {
            for (const QString &item : items) {
                const int itemLength = sink.open();
                encodeValue(f, &item, sink);
                sink.close(itemLength);
            }
        }
        break;
    }
    case Kind::EnumList: {
        const auto &items = *static_cast<const QVector<qint8> *>(list);
        sink.i32(qint32(items.size()));
        if (set || !f.required()) {
            for (qint8 item : items) {
                const int itemLength = sink.open();
                encodeValue(f, &item, sink);
                sink.close(itemLength);
            }
        }
        break;
    }
    default:
        break;
    }
    sink.close(length);
}

// GetBinary of one object into the sink. \a checked: the owner's Check has
// already run over this object, so its prologue and Check are not repeated.
bool encodeObject(const Obj &o, Sink &sink, int tag, bool writeTag, bool checked)
{
    const bool validate = o.self->GetValidate();
    if (!checked) {
        prologue(o);
        if (validate)
            o.self->Check();
    }
    if (validate && !o.self->HasData())
        return false;
    Payload *p = initData(o);
    if (writeTag)
        sink.i32(tag);
    const int objectLength = sink.open();
    if (o.desc->version) {
        sink.i32(qint32(o.desc->version->tag));
        const int length = sink.open();
        sink.string(o.desc->currentVersion);
        sink.close(length);
    }
    for (quint16 index : o.desc->taggedOrder) {
        const Field &f = o.desc->fields[index];
        void *at = p->at(f);
        const bool set = p->bit(f.bit);
        switch (f.kind) {
        case Kind::Nested:
            if (set)
                encodeObject(objectAt(f.itemOps, at), sink, int(f.tag), true, validate);
            break;
        case Kind::ObjectList:
        case Kind::StringList:
        case Kind::EnumList:
            if (f.required() || listSize(f, at) > 0)
                encodeList(f, at, set, validate, sink);
            break;
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::String:
        case Kind::DateTime:
        case Kind::Enum:
            if ((f.required() && f.kind != Kind::Bool) || set) {
                sink.i32(qint32(f.tag));
                const int length = sink.open();
                encodeValue(f, at, sink);
                sink.close(length);
            }
            break;
        }
    }
    sink.close(objectLength);
    return true;
}

void decodeObject(const Obj &o, Source &src, qint64 length, bool top);

// One text value of a record or list item, converted as the XML reader does.
void decodeText(const Obj &o, int index, Source &src)
{
    const char *data;
    int size;
    if (!src.bytes(data, size))
        messages::lengthError(o.self->GetObjectName());
    setFromUtf8(o, index, data, size);
}

void decodeList(const Obj &o, int index, Source &src)
{
    const Field &f = o.desc->fields[index];
    qint32 count;
    if (!src.i32(count))
        messages::lengthError(o.self->GetObjectName());
    // Every item takes at least its 4-byte length word: reserve no more than
    // the remaining bytes can hold.
    const int room = count > 0 ? int(qMin<qint64>(count, src.left() / 4)) : 0;
    Payload *p = initData(o);
    void *list = p->at(f);
    if (f.kind == Kind::ObjectList)
        f.itemOps->listReserve(list, f.itemOps->listSize(list) + room);
    else if (f.kind == Kind::StringList)
        static_cast<QVector<QString> *>(list)->reserve(static_cast<QVector<QString> *>(list)->size() + room);
    for (qint32 i = 0; i < count; ++i) {
        qint32 itemLength;
        if (!src.i32(itemLength))
            messages::lengthError(o.self->GetObjectName());
        if (f.kind == Kind::ObjectList) {
            TempItem item(f.itemOps);
            item.object()->SetValidate(o.self->GetValidate());
            item.object()->SetLogger(o.self->GetLogger());
            decodeObject(item.obj(), src, itemLength, false);
            append(o, index, item.get(), true);
        } else {
            decodeText(o, index, src);
        }
    }
}

// SetBinary of one object from memory; the top object has had its prologue.
void decodeObject(const Obj &o, Source &src, qint64 length, bool top)
{
    if (!top)
        prologue(o);
    initData(o);
    qint64 remaining = length;
    if (length >= 1) {
        while (remaining > 0 && !src.atEnd()) {
            qint32 tag;
            qint32 recordLength;
            if (!src.i32(tag) || !src.i32(recordLength))
                messages::lengthError(o.self->GetObjectName());
            remaining -= 8 + qint64(recordLength);
            const int index = o.desc->findTag(quint32(tag));
            if (index < 0) {
                if (o.desc->version && quint32(tag) == o.desc->version->tag) {
                    QString version;
                    if (!src.string(version))
                        messages::lengthError(o.self->GetObjectName());
                    versionRead(o, version);
                } else {
                    src.skip(recordLength);
                }
                continue;
            }
            const Field &f = o.desc->fields[index];
            switch (f.kind) {
            case Kind::Bool: {
                quint8 byte;
                if (!src.u8(byte))
                    messages::lengthError(o.self->GetObjectName());
                const bool value = byte != 0;
                setValue(o, index, &value);
                break;
            }
            case Kind::Int:
            case Kind::Int64: {
                qint64 wide;
                if (!src.i64(wide))
                    messages::lengthError(o.self->GetObjectName());
                ScalarValue value;
                if (f.kind == Kind::Int)
                    value.i = qint32(quint32(quint64(wide)));
                else
                    value.l = wide;
                setValue(o, index, &value);
                break;
            }
            case Kind::Double:
            case Kind::Float:
            case Kind::String:
            case Kind::DateTime:
            case Kind::Enum:
                decodeText(o, index, src);
                break;
            case Kind::Nested: {
                Payload *p = initData(o);
                const Obj child = objectAt(f.itemOps, p->at(f));
                decodeObject(child, src, recordLength, false);
                p = initData(o);
                p->setBit(f.bit);
                childChanged(o, p, child);
                break;
            }
            case Kind::ObjectList:
            case Kind::StringList:
            case Kind::EnumList:
                decodeList(o, index, src);
                break;
            }
        }
    }
    if (remaining != 0)
        messages::lengthError(o.self->GetObjectName());
}

} // namespace

bool getBinary(const Obj &o, QDataStream &stream, int tag, bool writeTag)
{
    Sink sink(stream.byteOrder());
    if (!encodeObject(o, sink, tag, writeTag, false))
        return false;
    stream.writeRawData(sink.data(), sink.size());
    return true;
}

void setBinary(const Obj &o, QDataStream &stream, int length)
{
    prologue(o);
    initData(o);
    // A QBuffer's memory is decoded where it lies.
    QBuffer *device = qobject_cast<QBuffer *>(stream.device());
    if (device && device->isReadable() && !device->isTextModeEnabled()) {
        const QByteArray &data = device->data();
        const qint64 start = device->pos();
        const qint64 available = qMax<qint64>(0, data.size() - start);
        const qint64 take = qMin<qint64>(qMax(length, 0), available);
        if (take < length)
            stream.setStatus(QDataStream::ReadPastEnd);
        device->seek(start + take);
        Source src(data.constData() + start, data.constData() + start + take, stream.byteOrder());
        decodeObject(o, src, length, true);
        return;
    }
    // Other devices are read in bounded steps: a length word never reserves
    // more memory than the stream actually delivers.
    QByteArray buffer;
    if (length > 0) {
        constexpr int kStep = 1 << 20;
        int have = 0;
        while (have < length) {
            const int want = qMin(length - have, kStep);
            if (buffer.capacity() < have + want)
                buffer.reserve(qMin(length, qMax(have + want, 2 * buffer.capacity())));
            buffer.resize(have + want);
            const int got = stream.readRawData(buffer.data() + have, want);
            if (got <= 0)
                break;
            have += got;
            if (got < want)
                break;
        }
        buffer.resize(have);
        if (have < length)
            stream.setStatus(QDataStream::ReadPastEnd);
    }
    Source src(buffer.constData(), buffer.constData() + buffer.size(), stream.byteOrder());
    decodeObject(o, src, length, true);
}

} // namespace frame
} // namespace HALVANE
