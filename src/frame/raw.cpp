// Raw binary form: presence bytes, then bare values in field order, with no
// tags, lengths or validation. Writer and reader must agree on the layout.
#include "frame.h"

#include <QtCore/QDataStream>

namespace HALVANE {
namespace frame {

namespace {

int presenceBytes(const ClassDescriptor &desc)
{
    return (desc.fields.size() + 7) / 8;
}

void writeValue(const Field &f, void *at, QDataStream &stream)
{
    switch (f.kind) {
    case Kind::Bool:
        stream << *static_cast<const bool *>(at);
        break;
    case Kind::Int:
        stream << qint64(*static_cast<const qint32 *>(at));
        break;
    case Kind::Int64:
        stream << *static_cast<const qint64 *>(at);
        break;
    case Kind::Double:
        stream << *static_cast<const double *>(at);
        break;
    case Kind::Float:
        stream << *static_cast<const float *>(at);
        break;
    case Kind::String:
        stream << *static_cast<const QString *>(at);
        break;
    case Kind::DateTime:
        stream << *static_cast<const QDateTime *>(at);
        break;
    case Kind::Enum:
        stream << *static_cast<const qint8 *>(at);
        break;
    case Kind::Nested:
        writeRaw(objectAt(f.itemOps, at), stream);
        break;
    case Kind::ObjectList:
    case Kind::StringList:
    case Kind::EnumList:
        break;
    }
}

void writeList(const Field &f, void *list, bool set, QDataStream &stream)
{
    switch (f.kind) {
    case Kind::ObjectList: {
        const int n = f.itemOps->listSize(list);
        stream << qint32(n);
        if (set || !f.required()) {
            for (int i = 0; i < n; ++i)
                writeRaw(objectAt(f.itemOps, f.itemOps->listAt(list, i)), stream);
        }
        break;
    }
    case Kind::StringList: {
        const auto &items = *static_cast<const QVector<QString> *>(list);
        stream << qint32(items.size());
        for (const QString &item : items)
            stream << item;
        break;
    }
    case Kind::EnumList: {
        const auto &items = *static_cast<const QVector<qint8> *>(list);
        stream << qint32(items.size());
        for (qint8 item : items)
            stream << item;
        break;
    }
    default:
        break;
    }
}

// Reads a value straight into the payload, without setter or test.
void readValue(const Field &f, void *at, QDataStream &stream)
{
    switch (f.kind) {
    case Kind::Bool:
        stream >> *static_cast<bool *>(at);
        break;
    case Kind::Int: {
        qint64 wide = 0;
        stream >> wide;
        *static_cast<qint32 *>(at) = qint32(quint32(quint64(wide)));
        break;
    }
    case Kind::Int64:
        stream >> *static_cast<qint64 *>(at);
        break;
    case Kind::Double:
        stream >> *static_cast<double *>(at);
        break;
    case Kind::Float:
        stream >> *static_cast<float *>(at);
        break;
    case Kind::String:
        stream >> *static_cast<QString *>(at);
        break;
    case Kind::DateTime:
        stream >> *static_cast<QDateTime *>(at);
        break;
    case Kind::Enum:
        stream >> *static_cast<qint8 *>(at);
        break;
    case Kind::Nested:
        readRaw(objectAt(f.itemOps, at), stream);
        break;
    case Kind::ObjectList:
    case Kind::StringList:
    case Kind::EnumList:
        break;
    }
}

// List items go through a new item and the append, which tests them.
void readList(const Obj &o, int index, QDataStream &stream)
{
    const Field &f = o.desc->fields[index];
    qint32 count = 0;
    stream >> count;
    // Each item takes at least one byte: stop as soon as the stream runs dry
    // instead of trusting the count.
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        switch (f.kind) {
        case Kind::ObjectList: {
            TempItem item(f.itemOps);
            readRaw(item.obj(), stream);
            if (stream.status() != QDataStream::Ok)
                return;
            append(o, index, item.get(), true);
            break;
        }
        case Kind::StringList: {
            QString item;
            stream >> item;
            if (stream.status() != QDataStream::Ok)
                return;
            append(o, index, &item);
            break;
        }
        case Kind::EnumList: {
            qint8 item = 0;
            stream >> item;
            if (stream.status() != QDataStream::Ok)
                return;
            append(o, index, &item);
            break;
        }
        default:
            return;
        }
    }
}

bool isList(Kind kind)
{
    return kind == Kind::ObjectList || kind == Kind::StringList || kind == Kind::EnumList;
}

} // namespace

void writeRaw(const Obj &o, QDataStream &stream)
{
    Payload *p = initData(o);
    const int n = presenceBytes(*o.desc);
    char bytes[8];
    for (int i = 0; i < n; ++i)
        bytes[i] = char(p->words()[i / 4] >> (8 * (i % 4)));
    stream.writeRawData(bytes, n);
    for (const Field &f : o.desc->fields) {
        void *at = p->at(f);
        const bool set = p->bit(f.bit);
        if (isList(f.kind)) {
            if (f.required() || set)
                writeList(f, at, set, stream);
        } else if (f.required() ? (set || (f.kind != Kind::Bool && f.kind != Kind::Nested)) : set) {
            writeValue(f, at, stream);
        }
    }
}

void readRaw(const Obj &o, QDataStream &stream)
{
    Payload *p = initData(o);
    const int n = presenceBytes(*o.desc);
    char bytes[8] = {};
    if (stream.readRawData(bytes, n) != n)
        stream.setStatus(QDataStream::ReadPastEnd);
    for (int w = 0; w < o.desc->wordCount; ++w) {
        quint32 word = 0;
        for (int i = 0; i < 4 && 4 * w + i < n; ++i)
            word |= quint32(quint8(bytes[4 * w + i])) << (8 * i);
        p->words()[w] = word;
    }
    // Bits beyond the field count are not part of the object.
    const int count = o.desc->fields.size();
    if (count % 32)
        p->words()[count / 32] &= (1u << (count % 32)) - 1;
    for (const Field &f : o.desc->fields) {
        if (!f.required() && !p->bit(f.bit))
            continue;
        if (isList(f.kind)) {
            readList(o, f.bit, stream);
            p = access(o);
            continue;
        }
        readValue(f, p->at(f), stream);
        if (f.kind == Kind::Nested)
            childChanged(o, p, objectAt(f.itemOps, p->at(f)));
    }
}

} // namespace frame
} // namespace HALVANE
