// The walk over the tagged form; the raw form's walk lives beside its reader.
#include "visit.h"

#include "../codec/words.h"

namespace HALVANE {
namespace schema {

RecordVisitor::~RecordVisitor() = default;
void RecordVisitor::beginObject(const Class *, qint64, qint64) {}
void RecordVisitor::endObject() {}
void RecordVisitor::presence(const Class &, const QByteArray &) {}
void RecordVisitor::beginField(const Field *, quint32, qint64, qint64) {}
void RecordVisitor::endField() {}
void RecordVisitor::list(qint32) {}
void RecordVisitor::beginItem(int, qint64, qint64) {}
void RecordVisitor::endItem() {}
void RecordVisitor::value(const Value &) {}
void RecordVisitor::fault(qint64, const QString &) {}

namespace {

class TaggedWalk
{
public:
    TaggedWalk(const QByteArray &bytes, QDataStream::ByteOrder order, RecordVisitor &visitor)
        : m_data(bytes.constData()), m_big(order == QDataStream::BigEndian), m_v(visitor)
    {
    }

    // The records between offsets begin and end.
    bool records(const Class *c, qint64 begin, qint64 end)
    {
        qint64 at = begin;
        while (at < end) {
            if (end - at < 8)
                return fault(at, QStringLiteral("a record header is cut short"));
            const quint32 tag = frame::loadWord<quint32>(m_data + at, m_big);
            const qint32 length = frame::loadWord<qint32>(m_data + at + 4, m_big);
            if (length < 0 || length > end - at - 8)
                return fault(at + 4, QStringLiteral("a record of %1 bytes runs past the end of its object").arg(length));
            const Field *f = c ? c->fieldByTag(tag) : nullptr;
            m_v.beginField(f, tag, at, length);
            if (!(f ? fieldValue(*f, at + 8, at + 8 + length) : bytes(at + 8, at + 8 + length)))
                return false;
            m_v.endField();
            at += 8 + length;
        }
        return true;
    }

private:
    bool fieldValue(const Field &f, qint64 begin, qint64 end)
    {
        const qint64 size = end - begin;
        switch (f.kind) {
        case Kind::Bool:
            if (size != 1)
                return bytes(begin, end);
            return value(Value::Bool, [&](Value &v) { v.boolean = m_data[begin] != 0; });
        case Kind::Int:
        case Kind::Int64:
            if (size != 8)
                return bytes(begin, end);
            return value(Value::Integer, [&](Value &v) { v.integer = frame::loadWord<qint64>(m_data + begin, m_big); });
        case Kind::Double:
        case Kind::Float:
        case Kind::String:
        case Kind::DateTime:
        case Kind::Enum: {
            qint64 at = begin;
            if (!text(at, end))
                return false;
            return at == end ? true : fault(at, QStringLiteral("%1 bytes follow the value").arg(end - at));
        }
        case Kind::Nested: {
            const Class *item = findClass(f.itemClass);
            m_v.beginObject(item, begin, size);
            if (!records(item, begin, end))
                return false;
            m_v.endObject();
            return true;
        }
        case Kind::ObjectList:
        case Kind::StringList:
        case Kind::EnumList:
            return list(f, begin, end);
        }
        return bytes(begin, end);
    }

    bool list(const Field &f, qint64 begin, qint64 end)
    {
        if (end - begin < 4)
            return fault(begin, QStringLiteral("a list count is cut short"));
        const qint32 count = frame::loadWord<qint32>(m_data + begin, m_big);
        // Every item takes at least its four-byte length word.
        if (count < 0 || count > (end - begin - 4) / 4)
            return fault(begin, QStringLiteral("a count of %1 items does not fit the %2 bytes of the list")
                                    .arg(count)
                                    .arg(end - begin - 4));
        m_v.list(count);
        qint64 at = begin + 4;
        const Class *item = f.kind == Kind::ObjectList ? findClass(f.itemClass) : nullptr;
        for (qint32 i = 0; i < count; ++i) {
            if (end - at < 4)
                return fault(at, QStringLiteral("item %1 is cut short").arg(i));
            const qint32 length = frame::loadWord<qint32>(m_data + at, m_big);
            m_v.beginItem(i, at, length);
            at += 4;
            if (f.kind == Kind::ObjectList) {
                if (length < 0 || length > end - at)
                    return fault(at - 4, QStringLiteral("item %1 of %2 bytes runs past the end of its list").arg(i).arg(length));
                m_v.beginObject(item, at, length);
                if (!records(item, at, at + length))
                    return false;
                m_v.endObject();
                at += length;
            } else {
                const qint64 start = at;
                if (!text(at, end))
                    return false;
                if (at - start != length)
                    return fault(start - 4, QStringLiteral("item %1 says %2 bytes and holds %3").arg(i).arg(length).arg(at - start));
            }
            m_v.endItem();
        }
        return at == end ? true : fault(at, QStringLiteral("%1 bytes follow the last item").arg(end - at));
    }

    // A QByteArray as the stream writes it: a length word, 0xFFFFFFFF for a null one, then UTF-8.
    bool text(qint64 &at, qint64 end)
    {
        if (end - at < 4)
            return fault(at, QStringLiteral("a text length is cut short"));
        const qint32 n = frame::loadWord<qint32>(m_data + at, m_big);
        if (n == -1) {
            at += 4;
            return value(Value::Text, [](Value &) {});
        }
        if (n < 0 || n > end - at - 4)
            return fault(at, QStringLiteral("a text of %1 bytes runs past the end of its record").arg(n));
        const char *utf8 = m_data + at + 4;
        at += 4 + n;
        return value(Value::Text, [&](Value &v) { v.text = QString::fromUtf8(utf8, n); });
    }

    bool bytes(qint64 begin, qint64 end)
    {
        return value(Value::Bytes, [&](Value &v) { v.bytes = QByteArray(m_data + begin, int(end - begin)); });
    }

    template <class Fill>
    bool value(Value::Type type, Fill fill)
    {
        Value v;
        v.type = type;
        fill(v);
        m_v.value(v);
        return true;
    }

    bool fault(qint64 at, const QString &what)
    {
        m_v.fault(at, what);
        return false;
    }

    const char *m_data;
    bool m_big;
    RecordVisitor &m_v;
};

} // namespace

bool walkTagged(const Class *c, const QByteArray &records, QDataStream::ByteOrder order, RecordVisitor &visitor)
{
    TaggedWalk walk(records, order, visitor);
    return walk.records(c, 0, records.size());
}

} // namespace schema
} // namespace HALVANE
