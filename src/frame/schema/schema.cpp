// The class registry and the read-only view of the field tables.
#include "schema.h"

#include "../frame.h"
#include "../text/text.h"

#include "../../base/converters.h"

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QTextStream>
#include <QtCore/QXmlStreamWriter>

#include <algorithm>
#include <cstddef>
#include <typeinfo>
#include <vector>

namespace HALVANE {
namespace schema {

// Filled during static initialisation, before any query.
std::vector<const frame::ObjectOps *> &registered()
{
    static std::vector<const frame::ObjectOps *> ops;
    return ops;
}

namespace {

Kind kindOf(frame::Kind kind)
{
    switch (kind) {
    case frame::Kind::Bool:
        return Kind::Bool;
    case frame::Kind::Int:
        return Kind::Int;
    case frame::Kind::Int64:
        return Kind::Int64;
    case frame::Kind::Double:
        return Kind::Double;
    case frame::Kind::Float:
        return Kind::Float;
    case frame::Kind::String:
        return Kind::String;
    case frame::Kind::DateTime:
        return Kind::DateTime;
    case frame::Kind::Enum:
        return Kind::Enum;
    case frame::Kind::Nested:
        return Kind::Nested;
    case frame::Kind::ObjectList:
        return Kind::ObjectList;
    case frame::Kind::StringList:
        return Kind::StringList;
    case frame::Kind::EnumList:
        return Kind::EnumList;
    }
    return Kind::Int;
}

QString initialText(const frame::Field &f)
{
    switch (f.kind) {
    case frame::Kind::Bool:
        return f.initInt ? QStringLiteral("true") : QStringLiteral("false");
    case frame::Kind::Int:
    case frame::Kind::Int64:
        return QString::number(f.initInt);
    case frame::Kind::Double:
    case frame::Kind::Float:
        return QString::number(f.initReal, 'f', 2);
    case frame::Kind::String:
        return f.initString;
    case frame::Kind::Enum:
        return f.table ? f.table->text(0, int(f.initInt)) : QString();
    case frame::Kind::DateTime:
    case frame::Kind::Nested:
    case frame::Kind::ObjectList:
    case frame::Kind::StringList:
    case frame::Kind::EnumList:
        return QString();
    }
    return QString(); // not a kind
}

Table tableOf(const frame::NameTable &t)
{
    Table table;
    for (int c = 0; c < t.columnCount(); ++c)
        table.columns.append(t.columnName(c));
    if (t.hasHelpids())
        table.columns.append(QStringLiteral("Helpid"));
    for (int r = 0; r < t.size(); ++r) {
        QStringList row;
        for (int c = 0; c < t.columnCount(); ++c)
            row.append(t.text(c, r));
        if (t.hasHelpids())
            row.append(QString::number(t.helpid(r)));
        table.rows.append(row);
    }
    return table;
}

// The containers hold types of this file and Qt's only, so that none of their
// members is exported from the library along with the public Class.
struct Owned {
    Class c;
};

struct Registry {
    std::vector<std::unique_ptr<Owned>> owned;
    QVector<const Class *> sorted;
    QHash<quint32, const Class *> byId;
};

const Registry &registry()
{
    static const Registry reg = [] {
        Registry r;
        QSet<QString> held;
        for (const frame::ObjectOps *ops : registered()) {
            const frame::ClassDescriptor &desc = *ops->desc;
            auto owned = std::make_unique<Owned>();
            Class *c = &owned->c;
            c->name = desc.name;
            c->id = desc.id;
            c->ops = ops;
            for (const frame::Field &f : desc.fields) {
                Field field;
                field.bit = f.bit;
                field.name = QString::fromLatin1(f.name);
                field.element = f.elementName;
                field.tag = f.tag;
                field.kind = kindOf(f.kind);
                field.required = f.required();
                field.attribute = f.attribute();
                field.elementToo = f.flags & frame::ElementToo;
                field.hasRange = f.flags & frame::HasRange;
                field.lo = f.lo;
                field.hi = f.hi;
                field.hasDefault = f.flags & frame::HasDefault;
                field.initial = initialText(f);
                if (f.itemOps) {
                    field.itemClass = f.itemOps->desc->name;
                    held.insert(field.itemClass);
                }
                if (f.table)
                    field.table = tableOf(*f.table);
                c->fields.append(field);
            }
            for (quint16 i : desc.taggedOrder)
                c->taggedOrder.append(i);
            if (desc.version) {
                c->version = desc.currentVersion;
                c->versionField.bit = -1;
                c->versionField.name = desc.versionAttribute;
                c->versionField.element = desc.versionAttribute;
                c->versionField.tag = desc.version->tag;
                c->versionField.kind = Kind::String;
                c->versionField.attribute = true;
            }
            r.owned.push_back(std::move(owned));
        }
        for (const auto &owned : r.owned) {
            Class &c = owned->c;
            c.document = !held.contains(c.name);
            r.sorted.append(&c);
            r.byId.insert(c.id, &c);
        }
        std::sort(r.sorted.begin(), r.sorted.end(), [](const Class *a, const Class *b) { return a->name < b->name; });
        return r;
    }();
    return reg;
}

} // namespace

QString kindName(Kind kind)
{
    switch (kind) {
    case Kind::Bool:
        return QStringLiteral("bool");
    case Kind::Int:
        return QStringLiteral("int");
    case Kind::Int64:
        return QStringLiteral("int64");
    case Kind::Double:
        return QStringLiteral("double");
    case Kind::Float:
        return QStringLiteral("float");
    case Kind::String:
        return QStringLiteral("string");
    case Kind::DateTime:
        return QStringLiteral("datetime");
    case Kind::Enum:
        return QStringLiteral("enum");
    case Kind::Nested:
        return QStringLiteral("nested");
    case Kind::ObjectList:
        return QStringLiteral("list");
    case Kind::StringList:
        return QStringLiteral("stringlist");
    case Kind::EnumList:
        return QStringLiteral("enumlist");
    }
    return QString();
}

const Field *Class::field(const QString &fieldName) const
{
    for (const Field &f : fields) {
        if (f.name == fieldName)
            return &f;
    }
    return nullptr;
}

const Field *Class::fieldByTag(quint32 fieldTag) const
{
    for (const Field &f : fields) {
        if (f.tag == fieldTag)
            return &f;
    }
    return nullptr;
}

const Field *Class::fieldByElement(const QString &elementName) const
{
    for (const Field &f : fields) {
        if (f.element == elementName)
            return &f;
    }
    return nullptr;
}

std::unique_ptr<QUILLET::IQuilletObject> Class::create() const
{
    return std::unique_ptr<QUILLET::IQuilletObject>(static_cast<const frame::ObjectOps *>(ops)->create());
}

void Class::writeRaw(const QUILLET::IQuilletObject &object, QDataStream &stream) const
{
    static_cast<const frame::ObjectOps *>(ops)->rawWrite(&object, stream);
}

void Class::readRaw(QUILLET::IQuilletObject &object, QDataStream &stream) const
{
    static_cast<const frame::ObjectOps *>(ops)->rawRead(&object, stream);
}

namespace {

// The object of the data class whose base is \a object, or null when it is
// of another class. A data class derives from the base alone, so the base
// lies at the same offset in every object of the class; an empty object of
// the class shows where.
void *objectOf(const frame::ObjectOps &ops, const QUILLET::IQuilletObject &object)
{
    alignas(QUILLET::IQuilletObject) char probe[frame::kObjectSize];
    ops.construct(probe);
    const QUILLET::IQuilletObject *base = ops.base(probe);
    const bool same = typeid(*base) == typeid(object);
    const std::ptrdiff_t offset = reinterpret_cast<const char *>(base) - probe;
    ops.destroy(probe);
    if (!same)
        return nullptr;
    return const_cast<char *>(reinterpret_cast<const char *>(&object)) - offset;
}

} // namespace

std::unique_ptr<QUILLET::IQuilletObject> Class::copy(const QUILLET::IQuilletObject &object) const
{
    const auto &o = *static_cast<const frame::ObjectOps *>(ops);
    const void *from = objectOf(o, object);
    if (!from)
        return nullptr;
    // What the copy constructor does: share the payload, take the flag.
    std::unique_ptr<QUILLET::IQuilletObject> made(o.create());
    o.assign(objectOf(o, *made), from);
    made->SetValidate(object.GetValidate());
    return made;
}

bool Class::equal(const QUILLET::IQuilletObject &a, const QUILLET::IQuilletObject &b) const
{
    const auto &o = *static_cast<const frame::ObjectOps *>(ops);
    void *x = objectOf(o, a);
    void *y = objectOf(o, b);
    if (!x || !y)
        return false;
    return frame::equals(frame::Obj{o.desc, o.payload(x), &a}, frame::Obj{o.desc, o.payload(y), &b});
}

QString Class::readBack(const Field &f, const QString &text) const
{
    if (f.bit < 0 || f.bit >= fields.size())
        return text; // a version: a string
    const frame::Field &row = static_cast<const frame::ObjectOps *>(ops)->desc->fields[f.bit];
    switch (f.kind) {
    case Kind::Bool: {
        bool value = false;
        if (text.isEmpty())
            value = (row.flags & frame::HasDefault) && row.initInt != 0;
        else
            value = text.compare(QLatin1String("0"), Qt::CaseInsensitive) != 0
                    && text.compare(QLatin1String("false"), Qt::CaseInsensitive) != 0;
        return value ? QStringLiteral("true") : QStringLiteral("false");
    }
    case Kind::String:
    case Kind::StringList:
        return text;
    case Kind::DateTime:
        return Converters::ToString(Converters::ToDateTime(text));
    case Kind::Int:
    case Kind::Int64:
    case Kind::Double:
    case Kind::Float:
    case Kind::Enum:
    case Kind::EnumList: {
        frame::ScalarValue value;
        frame::numberFromText(row, text, value);
        if ((f.kind == Kind::Enum || f.kind == Kind::EnumList) && (value.e < 0 || value.e >= f.table.rows.size()))
            return QString();
        return frame::valueText(row, &value);
    }
    case Kind::Nested:
    case Kind::ObjectList:
        break;
    }
    return QString();
}

const QVector<const Class *> &classes()
{
    return registry().sorted;
}

const Class *findClass(const QString &name)
{
    for (const Class *c : registry().sorted) {
        if (c->name == name)
            return c;
    }
    return nullptr;
}

const Class *findClassById(quint32 id)
{
    return registry().byId.value(id, nullptr);
}

QVector<QPair<const Class *, const Field *>> findTag(quint32 tag)
{
    QVector<QPair<const Class *, const Field *>> found;
    for (const Class *c : registry().sorted) {
        if (const Field *f = c->fieldByTag(tag))
            found.append(qMakePair(c, f));
    }
    return found;
}

namespace {

QString sampleText(const Field &f, int variant)
{
    switch (f.kind) {
    case Kind::Bool:
        return variant ? QStringLiteral("false") : QStringLiteral("true");
    case Kind::Int:
        return f.hasRange ? QString::number(qint64(f.lo)) : QString::number(7 + variant);
    case Kind::Int64:
        return f.hasRange ? QString::number(qint64(f.lo)) : QStringLiteral("1234567890123");
    case Kind::Double:
    case Kind::Float:
        return QString::number(f.hasRange ? f.hi : 12.5 + variant, 'f', 2);
    case Kind::String:
    case Kind::StringList:
        return QStringLiteral("sample %1").arg(variant + 1);
    case Kind::DateTime:
        return QStringLiteral("2026-11-24T12:00:0%1.250Z").arg(variant);
    case Kind::Enum:
    case Kind::EnumList:
        return f.table.rows.value(qMin(variant, int(f.table.rows.size()) - 1)).value(0);
    case Kind::Nested:
    case Kind::ObjectList:
        break;
    }
    return QString();
}

// \a count items in each list of this object; lists of its nested objects
// take as many, lists inside items two.
void writeExample(QXmlStreamWriter &w, const Class &c, int depth, int count)
{
    w.writeStartElement(c.name);
    if (!c.version.isNull())
        w.writeAttribute(c.versionField.element, c.version);
    for (const Field &f : c.fields) {
        if (f.attribute)
            w.writeAttribute(f.element, sampleText(f, 0));
    }
    for (const Field &f : c.fields) {
        if (f.attribute)
            continue;
        switch (f.kind) {
        case Kind::Nested:
            if (depth < 8)
                writeExample(w, *findClass(f.itemClass), depth + 1, count);
            break;
        case Kind::ObjectList:
            for (int i = 0; i < count && depth < 8; ++i)
                writeExample(w, *findClass(f.itemClass), depth + 1, 2);
            break;
        case Kind::StringList:
        case Kind::EnumList:
            for (int i = 0; i < count; ++i)
                w.writeTextElement(f.element, sampleText(f, i % 2));
            break;
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::String:
        case Kind::DateTime:
        case Kind::Enum:
            w.writeTextElement(f.element, sampleText(f, 0));
            break;
        }
    }
    w.writeEndElement();
}

} // namespace

QString exampleXml(const Class &c)
{
    return exampleXml(c, 2);
}

QString exampleXml(const Class &c, int count)
{
    QString text;
    QXmlStreamWriter w(&text);
    writeExample(w, c, 0, count);
    return text;
}

QString describe(const Class &c)
{
    QString text;
    QTextStream out(&text);
    out << c.name << " 0x" << QString::number(c.id, 16).toUpper().rightJustified(8, QLatin1Char('0'))
        << (c.document ? " document" : "") << "\n";
    if (!c.version.isNull())
        out << "  version <" << c.versionField.element << "> 0x"
            << QString::number(c.versionField.tag, 16).toUpper().rightJustified(8, QLatin1Char('0')) << " " << c.version
            << "\n";
    for (const Field &f : c.fields) {
        out << "  " << f.bit << " " << f.name << " " << kindName(f.kind);
        if (!f.itemClass.isEmpty())
            out << "<" << f.itemClass << ">";
        out << " <" << f.element << "> 0x" << QString::number(f.tag, 16).toUpper().rightJustified(8, QLatin1Char('0'))
            << (f.required ? " required" : " optional");
        if (f.attribute)
            out << (f.elementToo ? " attribute+element" : " attribute");
        if (f.hasRange)
            out << " range " << f.lo << ".." << f.hi;
        if (f.hasDefault)
            out << " default " << f.initial;
        out << "\n";
        if (!f.table.columns.isEmpty()) {
            out << "    " << f.table.columns.join(QLatin1String(" | ")) << "\n";
            for (int r = 0; r < f.table.rows.size(); ++r)
                out << "    " << r << ": " << f.table.rows[r].join(QLatin1String(" | ")) << "\n";
        }
    }
    if (c.taggedOrder.size() == c.fields.size()) {
        bool inOrder = true;
        for (int i = 0; i < c.taggedOrder.size(); ++i)
            inOrder = inOrder && c.taggedOrder[i] == i;
        if (!inOrder) {
            QStringList order;
            for (int i : c.taggedOrder)
                order.append(c.fields[i].name);
            out << "  tagged order: " << order.join(QLatin1String(", ")) << "\n";
        }
    }
    return text;
}

} // namespace schema

namespace frame {

Registrar::Registrar(const ObjectOps *ops)
{
    schema::registered().push_back(ops);
}

} // namespace frame
} // namespace HALVANE
