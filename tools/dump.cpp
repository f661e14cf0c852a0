// halvane dump: an annotated tree of a binary document, by the field tables
// or, with --raw-tags, by the bytes alone. The frame's walks check every
// length and count against the bytes; the first fault ends the dump.
#include "dump.h"

#include "document.h"

#include <halvane/base/binaryheader.h>
#include <halvane/base/converters.h>
#include <halvane/frame/schema/visit.h>

#include <QtCore/QtEndian>

using namespace HALVANE;

namespace tool {

QString tagText(quint32 tag)
{
    return QStringLiteral("0x%1").arg(tag, 8, 16, QLatin1Char('0')).toUpper().replace(QLatin1String("0X"), QLatin1String("0x"));
}

namespace {

constexpr char kRawMagic[4] = {'H', 'V', 'R', '1'};

const schema::Class *classOfId(const QString &file, quint32 id)
{
    const schema::Class *c = schema::findClassById(id);
    if (!c)
        throw DocumentError(QStringLiteral("%1: no class has the id 0x%2").arg(file).arg(id, 8, 16, QLatin1Char('0')));
    return c;
}

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

// Lines of the dump, from the frame's walk over a binary form.
class Dumper : public schema::RecordVisitor
{
public:
    Dumper(bool raw, int depth, qint64 base, bool offsets) : m_raw(raw), m_depth(depth), m_base(base), m_offsets(offsets) {}
    QString out;
    QString faultText;

    // A line of the tree; with offsets it begins with the file offset of
    // the first byte it shows.
    void line(int depth, const QString &text)
    {
        if (m_offsets)
            out += QString::number(m_at + m_base).rightJustified(8) + QStringLiteral("  ");
        out += QString(depth * 2, QLatin1Char(' ')) + text + QLatin1Char('\n');
    }

    // In the raw form an object's presence line takes a level of its own; in
    // the tagged form the records stand below their field's line.
    void beginObject(const schema::Class *, qint64 offset, qint64) override
    {
        m_at = offset;
        m_depth += m_raw ? 1 : 0;
    }
    void endObject() override { m_depth -= m_raw ? 1 : 0; }
    void presence(const schema::Class &c, const QByteArray &bits) override
    {
        QString shown;
        for (const schema::Field &f : c.fields)
            shown += (quint8(bits[f.bit / 8]) >> (f.bit % 8)) & 1 ? QLatin1Char('1') : QLatin1Char('0');
        // The raw form's object line stands where its owner's field or item put it.
        line(m_depth - 1, QStringLiteral("%1 presence %2 (bit 0 first)").arg(c.name, shown));
    }
    void beginField(const schema::Field *f, quint32 tag, qint64 offset, qint64 length) override
    {
        m_at = offset;
        m_fields.append(f);
        m_items.append(-1);
        m_field = f;
        m_item = -1;
        m_tag = tag;
        m_length = length;
        if (m_raw) {
            m_pending = f->name + QStringLiteral(": ");
            if (f->kind == schema::Kind::Nested) {
                line(m_depth, m_pending);
                m_pending.clear();
            }
        } else if (f) {
            line(m_depth, QStringLiteral("%1 %2 length %3").arg(f->name, tagText(tag)).arg(length));
        }
        ++m_depth;
    }
    void endField() override
    {
        --m_depth;
        m_fields.removeLast();
        m_items.removeLast();
        m_field = m_fields.isEmpty() ? nullptr : m_fields.last();
        m_item = m_items.isEmpty() ? -1 : m_items.last();
    }
    void list(qint32 count) override
    {
        m_at += m_raw ? 0 : 8;
        if (m_raw) {
            line(m_depth - 1, m_pending + QStringLiteral("%1 items").arg(count));
            m_pending.clear();
        } else {
            line(m_depth, QStringLiteral("%1 items").arg(count));
        }
    }
    void beginItem(int index, qint64 offset, qint64 length) override
    {
        m_at = offset;
        m_item = index;
        m_items.last() = index;
        if (m_field->kind == schema::Kind::ObjectList) {
            if (m_raw)
                line(m_depth, QStringLiteral("[%1]").arg(index));
            else
                line(m_depth, QStringLiteral("[%1] %2, length %3").arg(index).arg(m_field->itemClass).arg(length));
            ++m_depth;
        }
    }
    void endItem() override
    {
        if (m_field->kind == schema::Kind::ObjectList)
            --m_depth;
        m_item = -1;
        m_items.last() = -1;
    }
    void value(const schema::Value &v) override
    {
        // A record's value follows its tag and length.
        if (!m_raw && m_item < 0)
            m_at += 8;
        const QString text = valueText(v);
        if (m_item >= 0)
            line(m_depth, QStringLiteral("[%1] %2").arg(m_item).arg(text));
        else if (m_raw)
            line(m_depth - 1, m_pending + text);
        else if (m_field)
            line(m_depth, text);
        else
            line(m_depth - 1, QStringLiteral("? %1 length %2: %3").arg(tagText(m_tag)).arg(m_length).arg(text));
        m_pending.clear();
    }
    void fault(qint64 offset, const QString &what) override
    {
        faultText = QStringLiteral("at byte %1: %2").arg(offset + m_base).arg(what);
    }
    qint64 m_at = 0;

private:
    QString valueText(const schema::Value &v) const
    {
        switch (v.type) {
        case schema::Value::Bytes:
            return hex(v.bytes);
        case schema::Value::Bool:
            return v.boolean ? QStringLiteral("true") : QStringLiteral("false");
        case schema::Value::Integer:
            return QString::number(v.integer);
        case schema::Value::Real:
            return m_field->kind == schema::Kind::Float ? QString::number(v.real, 'g', 9) : QString::number(v.real, 'g', 17);
        case schema::Value::Text:
            return v.text.isNull() ? QStringLiteral("(null)") : QLatin1Char('"') + v.text + QLatin1Char('"');
        case schema::Value::DateTime:
            return Converters::ToString(v.dateTime);
        case schema::Value::Index:
            if (v.integer >= 0 && v.integer < m_field->table.rows.size())
                return QStringLiteral("%1 (%2)").arg(v.integer).arg(m_field->table.rows[int(v.integer)].value(0));
            return QStringLiteral("%1 (invalid)").arg(v.integer);
        }
        return QString();
    }

    bool m_raw;
    int m_depth;
    qint64 m_base;
    bool m_offsets;
    // The field and list item being read, innermost last.
    QVector<const schema::Field *> m_fields;
    QVector<int> m_items;
    const schema::Field *m_field = nullptr;
    quint32 m_tag = 0;
    qint64 m_length = 0;
    int m_item = -1;
    QString m_pending;
};

// Without a schema: a record's value is shown as records, a number, a bool or
// a text where its bytes fit one of them exactly.
class RawTags : public schema::RecordVisitor
{
public:
    RawTags(qint64 base, bool offsets) : m_base(base), m_offsets(offsets) {}
    QString out;
    QString faultText;
    int depth = 0;

    void beginField(const schema::Field *, quint32 tag, qint64 offset, qint64 length) override
    {
        m_at = offset;
        m_head = QStringLiteral("%1 length %2").arg(tagText(tag)).arg(length);
    }
    void value(const schema::Value &v) override
    {
        const QByteArray &value = v.bytes;
        const qint32 n = value.size() >= 4 ? qFromBigEndian<qint32>(value.constData()) : -2;
        if (value.size() >= 8 && quint32(n) > 0xFFFF && records(m_head + QStringLiteral(" {"), value, m_at + 8)) {
        } else if (isText(value)) {
            line(m_head + QStringLiteral(": ") + text(value));
        } else if (list(value)) {
        } else if (value.size() >= 8 && records(m_head + QStringLiteral(" {"), value, m_at + 8)) {
        } else if (value.size() == 8) {
            line(m_head + QStringLiteral(": %1").arg(qFromBigEndian<qint64>(value.constData())));
        } else if (value.size() == 1) {
            line(m_head + QStringLiteral(": %1").arg(int(quint8(value[0]))));
        } else {
            line(m_head + QStringLiteral(": ") + hex(value));
        }
    }
    void fault(qint64 offset, const QString &what) override
    {
        faultText = QStringLiteral("at byte %1: %2").arg(offset + m_base).arg(what);
    }

private:
    void line(const QString &text)
    {
        if (m_offsets)
            out += QString::number(m_at + m_base).rightJustified(8) + QStringLiteral("  ");
        out += QString(depth * 2, QLatin1Char(' ')) + text + QLatin1Char('\n');
    }

    static bool isText(const QByteArray &value)
    {
        const qint32 n = value.size() >= 4 ? qFromBigEndian<qint32>(value.constData()) : -2;
        return (n == -1 && value.size() == 4) || (n >= 0 && n + 4 == value.size());
    }
    static QString text(const QByteArray &value)
    {
        if (qFromBigEndian<qint32>(value.constData()) == -1)
            return QStringLiteral("(null)");
        return QLatin1Char('"') + QString::fromUtf8(value.mid(4)) + QLatin1Char('"');
    }

    // Bytes that are field records in their own right, shown in braces;
    // false, showing nothing, when they are not. \a at is their offset.
    bool records(const QString &head, const QByteArray &value, qint64 at)
    {
        RawTags inner(m_base + at, m_offsets);
        inner.depth = depth + 1;
        if (!schema::walkTagged(nullptr, value, QDataStream::BigEndian, inner))
            return false;
        line(head);
        out += inner.out;
        line(QStringLiteral("}"));
        return true;
    }

    // A list: a count of at least one, then as many items, each a length
    // word and that many bytes, ending where the value ends.
    bool list(const QByteArray &value)
    {
        if (value.size() < 8)
            return false;
        const qint32 count = qFromBigEndian<qint32>(value.constData());
        if (count < 1 || count > (value.size() - 4) / 4)
            return false;
        QVector<qint64> starts;
        qint64 at = 4;
        for (qint32 i = 0; i < count; ++i) {
            if (value.size() - at < 4)
                return false;
            const qint32 length = qFromBigEndian<qint32>(value.constData() + at);
            if (length < 0 || length > value.size() - at - 4)
                return false;
            starts.append(at);
            at += 4 + length;
        }
        if (at != value.size())
            return false;
        const qint64 record = m_at;
        line(m_head + QStringLiteral(": %1 items").arg(count));
        ++depth;
        for (int i = 0; i < starts.size(); ++i) {
            const qint32 length = qFromBigEndian<qint32>(value.constData() + starts[i]);
            const QByteArray item = value.mid(int(starts[i] + 4), length);
            m_at = record + 8 + starts[i];
            const QString head = QStringLiteral("[%1] length %2").arg(i).arg(length);
            if (isText(item))
                line(head + QStringLiteral(": ") + text(item));
            else if (!records(head + QStringLiteral(" {"), item, m_at + 4))
                line(head + QStringLiteral(": ") + hex(item));
        }
        --depth;
        m_at = record;
        return true;
    }

    qint64 m_base;
    bool m_offsets;
    qint64 m_at = 0;
    QString m_head;
};

// The dump's text; a fault of the walk ends it with a DocumentError after
// what was read before it has been printed.
} // namespace

QString dump(const QString &file, const QByteArray &bytes, const QString &format, bool rawTags, bool offsets)
{
    auto finish = [&](const QString &out, const QString &fault) {
        if (!fault.isEmpty()) {
            printOut(out);
            throw DocumentError(QStringLiteral("%1: %2").arg(file, fault));
        }
        return out;
    };
    if (rawTags) {
        if (!bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
            throw DocumentError(QStringLiteral("%1: not a binary document (no HVB1 header)").arg(file));
        // The class id and object length read as the tag and length of one record.
        RawTags d(4, offsets);
        schema::walkTagged(nullptr, bytes.mid(4), QDataStream::BigEndian, d);
        return finish(d.out, d.faultText);
    }
    if (format == QLatin1String("hvb")) {
        if (bytes.size() < 12 || !bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
            throw DocumentError(QStringLiteral("%1: not a binary document (no HVB1 header)").arg(file));
        const schema::Class *c = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
        const qint32 length = qFromBigEndian<qint32>(bytes.constData() + 8);
        if (length < 0 || length > bytes.size() - 12)
            throw DocumentError(QStringLiteral("%1: the object length %2 runs past the end of the file").arg(file).arg(length));
        if (length < bytes.size() - 12)
            throw DocumentError(QStringLiteral("%1: %2 bytes follow the object").arg(file).arg(bytes.size() - 12 - length));
        Dumper d(false, 1, 12, offsets);
        d.m_at = -8;
        d.line(0, QStringLiteral("%1 %2 length %3").arg(c->name, tagText(c->id)).arg(length));
        schema::walkTagged(c, bytes.mid(12, length), QDataStream::BigEndian, d);
        return finish(d.out, d.faultText);
    }
    if (format == QLatin1String("hvr")) {
        if (bytes.size() < 8 || !bytes.startsWith(QByteArray(kRawMagic, 4)))
            throw DocumentError(QStringLiteral("%1: not a raw document (no HVR1 header)").arg(file));
        const schema::Class *c = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
        Dumper d(true, 0, 8, offsets);
        qint64 end = 0;
        if (schema::walkRaw(*c, bytes.mid(8), QUILLET::kBinaryStreamVersion, QDataStream::BigEndian, d, &end)
            && end != bytes.size() - 8)
            d.faultText = QStringLiteral("at byte %1: %2 bytes follow the object").arg(end + 8).arg(bytes.size() - 8 - end);
        return finish(d.out, d.faultText);
    }
    throw UsageError{QStringLiteral("dump reads hvb and hvr documents"), QStringLiteral("dump")};
}

} // namespace tool
