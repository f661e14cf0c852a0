// Tagged binary form: records of field tag, length and value. An object is
// encoded into one buffer (lengths are stores into it) and handed to the
// stream at once. It is read record by record as the lengths say, from the
// bytes ahead of the stream's position where they lie in memory, and from the
// stream itself where they do not (see Source).
#include "../frame.h"
#include "words.h"
#include "../text/messages.h"
#include "../text/text.h"

#include "../../base/converters.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>

#include <cstring>
#include <limits>
#include <new>

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

// The stream as the reader sees it. The bytes ahead of the stream's position
// are decoded where they lie, in a window: the rest of a QBuffer's memory, or
// the object's bytes as read or peeked from another device. A read that the
// window cannot hold goes to the stream itself, once the device stands where
// the reader has got to, and gets what QDataStream's operators get there: as
// many bytes as there are, and the value 0 (or no bytes) when they run short.
// When the reader leaves, the device stands just after the last byte read.
class Source
{
public:
    Source(QDataStream &stream, int length);
    ~Source() { leaveWindow(); }
    Source(const Source &) = delete;
    Source &operator=(const Source &) = delete;

    /*! QDataStream::atEnd() at the reader's position. */
    bool atEnd() { return m_at < m_end ? false : streamAtEnd(); }
    quint8 u8() { return Q_LIKELY(m_at < m_end) ? quint8(*m_at++) : wordFromStream<quint8>(); }
    qint32 i32() { return word<qint32>(); }
    qint64 i64() { return word<qint64>(); }
    /*! A QByteArray's bytes, valid until the next read: none for a null one,
        and none for one that runs past the end of the stream. */
    void bytes(const char *&data, int &size)
    {
        if (!bytesInWindow(data, size))
            bytesFromStream(data, size);
    }
    /*! As bytes(), where the window holds them all; else false, and nothing read. */
    bool bytesInWindow(const char *&data, int &size)
    {
        if (Q_LIKELY(m_end - m_at >= 4)) {
            const quint32 n = loadWord<quint32>(m_at, m_big);
            if (n == 0xFFFFFFFFu) { // a null array
                m_at += 4;
                data = m_at;
                size = 0;
                return true;
            }
            if (Q_LIKELY(n <= quint64(m_end - m_at - 4))) {
                data = m_at + 4;
                size = int(n);
                m_at += 4 + qint64(n);
                return true;
            }
        }
        return false;
    }
    /*! A QString as the stream writes it: a byte count (0xFFFFFFFF for a
        null one), then UTF-16 units; false for an odd count. Units that run
        past the end of the stream give an empty string and a short read. */
    bool string(QString &s)
    {
        const quint32 n = quint32(i32());
        if (n == 0xFFFFFFFFu) {
            s = QString();
            return true;
        }
        if (n & 1)
            return false;
        const char *data;
        int size;
        if (Q_LIKELY(qint64(n) <= m_end - m_at)) {
            data = m_at;
            size = int(n);
            m_at += n;
        } else {
            leaveWindow();
            runFromStream(n, data, size);
        }
        s = QString(QLatin1String(""));
        if (size > 0) {
            s.resize(size / 2);
            QChar *out = s.data();
            for (int i = 0; i < size / 2; ++i)
                out[i] = QChar(loadWord<quint16>(data + 2 * i, m_big));
        }
        return true;
    }
    /*! Skips the value of an unknown record: nothing for a length below 1. */
    void skip(qint64 n)
    {
        if (n <= 0)
            return;
        if (Q_LIKELY(n <= m_end - m_at))
            m_at += n;
        else
            skipInStream(n);
    }
    /*! Bytes known to lie ahead; 0 once the reader is past its window. */
    qint64 windowLeft() const { return m_end - m_at; }
    /*! Number of reads so far that ran past the end of the stream. */
    int shortReads() const { return m_shortReads; }

private:
    enum class Return { None, Seek, Skip };

    template <class T>
    T word()
    {
        if (Q_LIKELY(m_end - m_at >= qint64(sizeof(T)))) {
            const T v = loadWord<T>(m_at, m_big);
            m_at += sizeof(T);
            return v;
        }
        return wordFromStream<T>();
    }
    // The stream's side, out of the way of the window's.
    template <class T>
    Q_NEVER_INLINE T wordFromStream()
    {
        char raw[sizeof(T)];
        return readFromStream(raw, int(sizeof(T))) == int(sizeof(T)) ? loadWord<T>(raw, m_big) : T(0);
    }
    /*! Brings the device to where the reader has got to; the stream's side
        reads from there. */
    void leaveWindow()
    {
        if (m_return == Return::None)
            return;
        const qint64 taken = m_at - m_begin;
        if (m_return == Return::Seek)
            m_stream.device()->seek(m_origin + taken);
        else if (taken > 0)
            m_stream.device()->skip(taken);
        m_return = Return::None;
        m_begin = m_at = m_end = nullptr;
    }
    Q_NEVER_INLINE bool streamAtEnd();
    Q_NEVER_INLINE int readFromStream(char *to, int n);
    Q_NEVER_INLINE void bytesFromStream(const char *&data, int &size);
    void runFromStream(quint32 n, const char *&data, int &size);
    Q_NEVER_INLINE void skipInStream(qint64 n);

    QDataStream &m_stream;
    const char *m_begin = nullptr;
    const char *m_at = nullptr;
    const char *m_end = nullptr;
    Return m_return = Return::None; // how the device is brought to the reader
    qint64 m_origin = 0;            // device position of m_begin
    int m_shortReads = 0;
    bool m_big;
    QByteArray m_own; // the window, where it is not a QBuffer's; later a text read from the stream
};

Source::Source(QDataStream &stream, int length) : m_stream(stream), m_big(stream.byteOrder() == QDataStream::BigEndian)
{
    QIODevice *device = stream.device();
    // Without a window: no device, no bytes wanted, a text mode device (its
    // positions do not count the bytes read), and a transaction that has
    // failed already (the stream reads nothing more).
    if (!device || length < 1 || !device->isReadable() || device->isTextModeEnabled()
        || (stream.status() != QDataStream::Ok && device->isTransactionStarted()))
        return;
    if (QBuffer *buffer = qobject_cast<QBuffer *>(device)) {
        const QByteArray &data = buffer->data();
        m_origin = buffer->pos();
        if (m_origin >= data.size())
            return;
        m_begin = data.constData() + m_origin;
        m_end = data.constData() + data.size();
        m_return = Return::Seek;
    } else if (!device->isSequential()) {
        // Read in steps, so that a length word reserves no more memory than
        // the device delivers; what the reader leaves is sought back.
        m_origin = device->pos();
        constexpr qint64 kFirstStep = 1 << 16;
        qint64 want = length;
        const qint64 there = device->size() - m_origin;
        if (there > 0)
            want = qMin(want, there);
        qint64 have = 0;
        while (have < want) {
            const qint64 step = qMin(want - have, qMax(kFirstStep, have));
            m_own.resize(int(have + step));
            const qint64 got = device->read(m_own.data() + have, step);
            if (got > 0)
                have += got;
            if (got < step)
                break;
        }
        m_own.resize(int(have));
        m_begin = m_own.constData();
        m_end = m_begin + m_own.size();
        m_return = Return::Seek;
    } else {
        // A sequential device is peeked, as far as it has bytes at hand; what
        // the reader takes is read off when it leaves.
        const qint64 want = qMin<qint64>(length, device->bytesAvailable());
        if (want <= 0)
            return;
        m_own.resize(int(want));
        const qint64 got = device->peek(m_own.data(), want);
        m_own.resize(int(qMax<qint64>(got, 0)));
        m_begin = m_own.constData();
        m_end = m_begin + m_own.size();
        m_return = Return::Skip;
    }
    m_at = m_begin;
}

bool Source::streamAtEnd()
{
    leaveWindow();
    return m_stream.atEnd();
}

int Source::readFromStream(char *to, int n)
{
    leaveWindow();
    const qint64 got = m_stream.readRawData(to, n); // int before Qt 6.7
    if (got != n)
        ++m_shortReads;
    return int(got);
}

void Source::skipInStream(qint64 n)
{
    leaveWindow();
    if (m_stream.skipRawData(int(n)) != n)
        ++m_shortReads;
}

// As QDataStream reads a QByteArray: the length word, then the bytes in steps
// until they are all there or the stream runs out; then it holds none.
void Source::bytesFromStream(const char *&data, int &size)
{
    const quint32 n = quint32(i32());
    leaveWindow(); // the window's memory may now hold the text
    runFromStream(n, data, size);
}

// The n bytes of a text after its length word, from the stream itself.
void Source::runFromStream(quint32 n, const char *&data, int &size)
{
    size = 0;
    if (n != 0xFFFFFFFFu) {
        constexpr qint64 kFirstStep = 1 << 12;
        constexpr qint64 kMaxSize = std::numeric_limits<int>::max() - 64;
        qint64 have = 0;
        while (have < qint64(n)) {
            const qint64 step = qMin(qint64(n) - have, qMax(kFirstStep, have));
            if (have + step > kMaxSize)
                throw std::bad_alloc(); // as a QByteArray that cannot grow
            m_own.resize(int(have + step));
            if (readFromStream(m_own.data() + have, int(step)) != step)
                break;
            have += step;
        }
        if (have == qint64(n))
            size = int(n);
    }
    data = m_own.constData();
}

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
    switch (traits(f.kind).items) {
    case Items::Objects: {
        const int n = f.itemOps->listSize(list);
        sink.i32(n);
        if (set || !f.required()) {
            for (int i = 0; i < n; ++i)
                encodeObject(objectAt(f.itemOps, f.itemOps->listAt(list, i)), sink, 0, false, checked && set);
        }
        break;
    }
    case Items::Strings: {
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
    case Items::Enums: {
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
    case Items::None:
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

Q_NEVER_INLINE void decodeTextFromStream(const Obj &o, int index, Source &src)
{
    const char *data;
    int size;
    src.bytes(data, size);
    setFromUtf8(o, index, data, size);
}

// One text value of a record or list item, converted as the XML reader does.
void decodeText(const Obj &o, int index, Source &src)
{
    const char *data;
    int size;
    if (Q_LIKELY(src.bytesInWindow(data, size)))
        setFromUtf8(o, index, data, size);
    else
        decodeTextFromStream(o, index, src);
}

void decodeList(const Obj &o, int index, Source &src)
{
    const Field &f = o.desc->fields[index];
    const qint32 count = src.i32();
    // Every item takes at least its 4-byte length word: reserve no more than
    // the bytes known to lie ahead can hold.
    const int room = count > 0 ? int(qMin<qint64>(count, src.windowLeft() / 4)) : 0;
    Payload *p = initData(o);
    void *list = p->at(f);
    if (f.kind == Kind::ObjectList)
        f.itemOps->listReserve(list, f.itemOps->listSize(list) + room);
    else if (f.kind == Kind::StringList)
        static_cast<QVector<QString> *>(list)->reserve(static_cast<QVector<QString> *>(list)->size() + room);
    for (qint32 i = 0; i < count; ++i) {
        // Past the end of the stream every further item would be the same
        // empty one: the count is not followed there, it is a length error.
        const int shortReads = src.shortReads();
        const qint32 itemLength = src.i32();
        if (src.shortReads() != shortReads)
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

// SetBinary of one object, record by record; the top object has had its
// prologue. Each record is taken for the length it states, whatever its value
// reads: the value of a record that claims more than its object holds is read
// on from the stream, and its object's length error follows. A value that runs
// past the end of the stream reads as QDataStream gives it (0, or an empty
// text) and goes to the setter; that, too, ends in the object's length error,
// also where the lengths happen to add up.
void decodeObject(const Obj &o, Source &src, qint64 length, bool top)
{
    if (!top)
        prologue(o);
    initData(o);
    const int shortReads = src.shortReads();
    qint64 remaining = length;
    if (length >= 1) {
        while (remaining > 0 && !src.atEnd()) {
            const qint32 tag = src.i32();
            const qint32 recordLength = src.i32();
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
                const bool value = src.u8() != 0;
                setValue(o, index, &value);
                break;
            }
            case Kind::Int:
            case Kind::Int64: {
                const qint64 wide = src.i64();
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
    if (remaining != 0 || src.shortReads() != shortReads)
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
    Source src(stream, length);
    decodeObject(o, src, length, true);
}

} // namespace frame
} // namespace HALVANE
