// XML form: one element per object, one child element per field.
#include "../frame.h"
#include "../model/kinds.h"
#include "../text/messages.h"
#include "../text/text.h"

#include <QtCore/QVarLengthArray>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace HALVANE {
namespace frame {

namespace {

// The text of the element the reader stands on, with the text of any child
// elements, as readElementText(IncludeChildElements) gives it, but gathered
// on the stack: short texts cost no allocation. Leaves the reader on the
// element's end element.
class ElementText
{
public:
    explicit ElementText(QXmlStreamReader &reader)
    {
        int depth = 1;
        while (!reader.atEnd()) {
            switch (reader.readNext()) {
            case QXmlStreamReader::Characters:
            case QXmlStreamReader::EntityReference: {
                const auto text = reader.text();
                m_text.append(text.constData(), int(text.size()));
                break;
            }
            case QXmlStreamReader::StartElement:
                ++depth;
                break;
            case QXmlStreamReader::EndElement:
                if (--depth == 0)
                    return;
                break;
            default:
                break;
            }
        }
    }
    QStringView view() const { return QStringView(m_text.constData(), m_text.size()); }

private:
    QVarLengthArray<QChar, 256> m_text;
};

void writeObject(const Obj &o, QXmlStreamWriter &writer, bool checked);

// The field's initial value through its setter: what an empty child element
// stands for where the field says so (EmptyElementDefault).
void setDefaultValue(const Obj &o, int index)
{
    const Field &f = o.desc->fields[index];
    const KindTraits &t = traits(f.kind);
    struct Slot {
        const Field &f;
        const KindTraits &t;
        alignas(8) char value[32];
        Slot(const Field &f_, const KindTraits &t_) : f(f_), t(t_) { t.construct(f, value); }
        ~Slot() { t.destroy(f, value); }
    };
    Q_ASSERT(t.size <= sizeof(Slot::value) && !t.list && !t.child);
    Slot slot(f, t);
    setValue(o, index, slot.value);
}

// A nested object or list item: its own GetXml, without repeating the
// prologue and Check that the owner's Check has already run over it.
void writeChild(const Field &f, void *at, QXmlStreamWriter &writer, bool checked)
{
    const Obj child = objectAt(f.itemOps, at);
    if (checked)
        writeObject(child, writer, true);
    else
        child.self->GetXml(writer);
}

void writeObject(const Obj &o, QXmlStreamWriter &writer, bool checked)
{
    const bool validate = o.self->GetValidate();
    if (!checked) {
        prologue(o);
        if (validate)
            o.self->Check();
    }
    if (validate && !o.self->HasData())
        return;
    Payload *p = initData(o);
    writer.writeStartElement(o.self->GetObjectName());
    if (o.desc->version)
        writer.writeAttribute(o.desc->versionAttribute, o.desc->currentVersion);
    for (const Field &f : o.desc->fields) {
        if (f.attribute() && (f.required() || p->bit(f.bit)))
            writer.writeAttribute(f.elementName, valueText(f, p->at(f)));
    }
    for (const Field &f : o.desc->fields) {
        if (f.attribute())
            continue;
        void *at = p->at(f);
        const bool set = p->bit(f.bit);
        switch (f.kind) {
        case Kind::Nested:
            if (f.required() && validate && !f.itemOps->base(at)->HasData())
                messages::incomplete(f.elementName, o.self->GetObjectName());
            if (set)
                writeChild(f, at, writer, validate);
            break;
        case Kind::ObjectList: {
            const int n = f.itemOps->listSize(at);
            for (int i = 0; i < n; ++i) {
                void *item = f.itemOps->listAt(at, i);
                if (f.required()) {
                    if (validate && !f.itemOps->base(item)->HasData())
                        messages::incomplete(f.elementName, o.self->GetObjectName());
                    if (set)
                        writeChild(f, item, writer, validate);
                } else {
                    writeChild(f, item, writer, validate && set);
                }
            }
            break;
        }
        case Kind::StringList:
            for (const QString &item : *static_cast<const QVector<QString> *>(at))
                writer.writeTextElement(f.elementName, item);
            break;
        case Kind::EnumList:
            for (qint8 item : *static_cast<const QVector<qint8> *>(at))
                writer.writeTextElement(f.elementName, valueText(f, &item));
            break;
        case Kind::Bool:
        case Kind::Int:
        case Kind::Int64:
        case Kind::Double:
        case Kind::Float:
        case Kind::String:
        case Kind::DateTime:
        case Kind::Enum:
            if ((f.required() && f.kind != Kind::Bool) || set)
                writer.writeTextElement(f.elementName, valueText(f, at));
            break;
        }
    }
    writer.writeEndElement();
}

} // namespace

void getXml(const Obj &o, QXmlStreamWriter &writer)
{
    writeObject(o, writer, false);
}

void processXml(const Obj &o, QXmlStreamReader &reader)
{
    initData(o);
    if (o.desc->version)
        readXmlVersion(o, reader);
    bool attributesRead = false;
    QXmlStreamAttributes attributes;
    for (const Field &f : o.desc->fields) {
        if (!f.attribute())
            continue;
        if (!attributesRead) {
            attributes = reader.attributes();
            attributesRead = true;
        }
        if (attributes.hasAttribute(f.elementName))
            setFromText(o, f.bit, QStringView(attributes.value(f.elementName)));
    }
    if (o.desc->version)
        readVersionedChildren(o, reader);
    else
        const_cast<QUILLET::IQuilletObject *>(o.self)->QUILLET::IQuilletObject::ProcessXml(reader);
}

void processXmlStartElement(const Obj &o, QXmlStreamReader &reader)
{
    prologue(o);
    const auto name = reader.name();
    Payload *p = initData(o);
    const int index = o.desc->elements.find(QStringView(name));
    if (index < 0) {
        if (o.desc->version)
            unknownVersionedElement(o, reader);
        else
            reader.skipCurrentElement();
        return;
    }
    const Field &f = o.desc->fields[index];
    switch (f.kind) {
    case Kind::Nested: {
        void *at = p->at(f);
        f.itemOps->base(at)->ProcessXml(reader);
        p = access(o);
        p->setBit(f.bit);
        childChanged(o, p, objectAt(f.itemOps, at));
        break;
    }
    case Kind::ObjectList: {
        TempItem item(f.itemOps);
        item.object()->SetValidate(o.self->GetValidate());
        item.object()->SetLogger(o.self->GetLogger());
        item.object()->ProcessXml(reader);
        append(o, index, item.get(), true);
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
    case Kind::StringList:
    case Kind::EnumList: {
        const ElementText text(reader);
        if ((f.flags & EmptyElementDefault) && text.view().isEmpty())
            setDefaultValue(o, index);
        else
            setFromText(o, index, text.view());
        break;
    }
    }
}

} // namespace frame
} // namespace HALVANE
