// The XML Schema of the XML form, made from the field tables. It is meant to
// agree with the reader: what it refuses, reading refuses or changes.
#include "schema.h"

#include <QtCore/QHash>
#include <QtCore/QXmlStreamWriter>

namespace HALVANE {
namespace schema {

namespace {

const QString kXs = QStringLiteral("http://www.w3.org/2001/XMLSchema");

bool repeated(const Field &f)
{
    return f.kind == Kind::ObjectList || f.kind == Kind::StringList || f.kind == Kind::EnumList;
}

// An object of the class that has not been read fails Check: a required
// field that only an element or attribute can set.
bool needsElement(const Class &c, int depth = 0)
{
    for (const Field &f : c.fields) {
        if (!f.required)
            continue;
        if (f.kind != Kind::Nested)
            return true;
        const Class *nested = findClass(f.itemClass);
        if (depth < 16 && nested && needsElement(*nested, depth + 1))
            return true;
    }
    return false;
}

class Writer
{
public:
    Writer() : w(&text) { w.setAutoFormatting(true); }

    QString text;
    QXmlStreamWriter w;

    void restriction(const QString &name, const QString &base, const QString &pattern, const Field *range)
    {
        w.writeStartElement(kXs, QStringLiteral("simpleType"));
        w.writeAttribute(QStringLiteral("name"), name);
        w.writeStartElement(kXs, QStringLiteral("restriction"));
        w.writeAttribute(QStringLiteral("base"), base);
        if (!pattern.isEmpty()) {
            w.writeEmptyElement(kXs, QStringLiteral("pattern"));
            w.writeAttribute(QStringLiteral("value"), pattern);
        }
        if (range) {
            w.writeEmptyElement(kXs, QStringLiteral("minInclusive"));
            w.writeAttribute(QStringLiteral("value"), QString::number(range->lo, 'g', 17));
            w.writeEmptyElement(kXs, QStringLiteral("maxInclusive"));
            w.writeAttribute(QStringLiteral("value"), QString::number(range->hi, 'g', 17));
        }
        w.writeEndElement();
        w.writeEndElement();
    }

    // Integers without sign or leading zeros beyond what the writer puts.
    static QString integerPattern() { return QStringLiteral("0|-?[1-9][0-9]*"); }
    // At most two decimals; the writer's texts of the values that are not finite.
    static QString decimalPattern() { return QStringLiteral("-?(0|[1-9][0-9]*)(\\.[0-9]{1,2})?"); }

    // The simple types that belong to one field: enumerated names, numbers with limits.
    void fieldTypes(const Class &c, const Field &f)
    {
        const QString name = c.name + QLatin1Char('.') + f.name;
        switch (f.kind) {
        case Kind::Enum:
        case Kind::EnumList:
            w.writeStartElement(kXs, QStringLiteral("simpleType"));
            w.writeAttribute(QStringLiteral("name"), name);
            w.writeStartElement(kXs, QStringLiteral("restriction"));
            w.writeAttribute(QStringLiteral("base"), QStringLiteral("xs:string"));
            for (const QStringList &row : f.table.rows) {
                w.writeEmptyElement(kXs, QStringLiteral("enumeration"));
                w.writeAttribute(QStringLiteral("value"), row.value(0));
            }
            w.writeEndElement();
            w.writeEndElement();
            break;
        case Kind::Int:
        case Kind::Int64:
            if (f.hasRange)
                restriction(name, f.kind == Kind::Int ? QStringLiteral("xs:int") : QStringLiteral("xs:long"),
                            integerPattern(), &f);
            break;
        case Kind::Double:
        case Kind::Float:
            // Not a number and the infinities lie outside every range.
            if (f.hasRange)
                restriction(name, QStringLiteral("xs:decimal"), decimalPattern(), &f);
            break;
        default:
            break;
        }
    }

    static QString typeOf(const Class &c, const Field &f)
    {
        switch (f.kind) {
        case Kind::Bool:
            return QStringLiteral("bool");
        case Kind::Int:
            return f.hasRange ? c.name + QLatin1Char('.') + f.name : QStringLiteral("int");
        case Kind::Int64:
            return f.hasRange ? c.name + QLatin1Char('.') + f.name : QStringLiteral("long");
        case Kind::Double:
        case Kind::Float:
            return f.hasRange ? c.name + QLatin1Char('.') + f.name : QStringLiteral("twoDecimals");
        case Kind::DateTime:
            return QStringLiteral("dateTime");
        case Kind::Enum:
        case Kind::EnumList:
            return c.name + QLatin1Char('.') + f.name;
        case Kind::Nested:
        case Kind::ObjectList:
            return f.itemClass;
        case Kind::String:
        case Kind::StringList:
            break;
        }
        return QStringLiteral("xs:string");
    }

    void element(const Class &c, const Field &f, int minOccurs, bool many)
    {
        w.writeEmptyElement(kXs, QStringLiteral("element"));
        w.writeAttribute(QStringLiteral("name"), f.element);
        w.writeAttribute(QStringLiteral("type"), typeOf(c, f));
        if (minOccurs != 1)
            w.writeAttribute(QStringLiteral("minOccurs"), QString::number(minOccurs));
        if (many)
            w.writeAttribute(QStringLiteral("maxOccurs"), QStringLiteral("unbounded"));
    }

    void start(const QString &name, int minOccurs = 1, bool many = false)
    {
        w.writeStartElement(kXs, name);
        if (minOccurs != 1)
            w.writeAttribute(QStringLiteral("minOccurs"), QString::number(minOccurs));
        if (many)
            w.writeAttribute(QStringLiteral("maxOccurs"), QStringLiteral("unbounded"));
    }

    // The children of a class. The reader takes them in any order.
    void content(const Class &c)
    {
        QVector<const Field *> lists, others;
        for (const Field &f : c.fields) {
            if (!f.attribute)
                (repeated(f) ? lists : others).append(&f);
        }
        if (lists.isEmpty()) {
            // Each at most once, in any order.
            start(QStringLiteral("all"));
            for (const Field *f : others)
                element(c, *f, mustBeGiven(*f) ? 1 : 0, false);
            w.writeEndElement();
        } else if (lists.size() == 1 && others.isEmpty()) {
            start(QStringLiteral("sequence"));
            element(c, *lists[0], mustBeGiven(*lists[0]) ? 1 : 0, true);
            w.writeEndElement();
        } else if (lists.size() == 1 && others.size() == 1) {
            // The items L around the one other child S: L* (S L*)?, with at
            // least one L where the list is required, and S where it is.
            const Field &l = *lists[0], &s = *others[0];
            const bool needL = mustBeGiven(l), needS = mustBeGiven(s);
            start(QStringLiteral("choice"));
            start(QStringLiteral("sequence"));
            element(c, l, 1, true);
            start(QStringLiteral("sequence"), needS ? 1 : 0);
            element(c, s, 1, false);
            element(c, l, 0, true);
            w.writeEndElement();
            w.writeEndElement();
            // S first; with neither required, nothing at all is allowed too.
            start(QStringLiteral("sequence"), needL || needS ? 1 : 0);
            element(c, s, 1, false);
            element(c, l, needL ? 1 : 0, true);
            w.writeEndElement();
            w.writeEndElement();
        } else {
            start(QStringLiteral("choice"), 0, true);
            for (const Field *f : lists + others)
                element(c, *f, 1, false);
            w.writeEndElement();
        }
    }

    void attributes(const Class &c)
    {
        if (!c.version.isNull()) {
            // Written always; a document without it is read as an older one.
            w.writeEmptyElement(kXs, QStringLiteral("attribute"));
            w.writeAttribute(QStringLiteral("name"), c.versionField.element);
            w.writeAttribute(QStringLiteral("type"), QStringLiteral("xs:string"));
        }
        for (const Field &f : c.fields) {
            if (!f.attribute)
                continue;
            w.writeEmptyElement(kXs, QStringLiteral("attribute"));
            w.writeAttribute(QStringLiteral("name"), f.element);
            w.writeAttribute(QStringLiteral("type"), typeOf(c, f));
            if (f.required)
                w.writeAttribute(QStringLiteral("use"), QStringLiteral("required"));
        }
    }
};

} // namespace

bool mustBeGiven(const Field &f)
{
    if (!f.required)
        return false;
    if (f.kind == Kind::Nested) {
        const Class *nested = findClass(f.itemClass);
        return nested && needsElement(*nested);
    }
    return true;
}

QString xmlSchema()
{
    Writer x;
    QXmlStreamWriter &w = x.w;
    w.writeStartDocument();
    w.writeNamespace(kXs, QStringLiteral("xs"));
    w.writeStartElement(kXs, QStringLiteral("schema"));
    // The texts that reading keeps as they are.
    x.restriction(QStringLiteral("bool"), QStringLiteral("xs:string"), QStringLiteral("true|false"), nullptr);
    x.restriction(QStringLiteral("int"), QStringLiteral("xs:int"), Writer::integerPattern(), nullptr);
    x.restriction(QStringLiteral("long"), QStringLiteral("xs:long"), Writer::integerPattern(), nullptr);
    x.restriction(QStringLiteral("twoDecimals"), QStringLiteral("xs:string"),
                  Writer::decimalPattern() + QStringLiteral("|nan|-?inf"), nullptr);
    x.restriction(QStringLiteral("dateTime"), QStringLiteral("xs:string"),
                  QStringLiteral("([+\\-]?[0-9]{4,}-[0-9]{2}-[0-9]{2})?T([0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3})?"
                                 "(Z|[+\\-][0-9]{2}:[0-9]{2}(:[0-9]{2})?|\\[[^\\]]*\\])?|"),
                  nullptr);
    for (const Class *c : classes()) {
        for (const Field &f : c->fields)
            x.fieldTypes(*c, f);
    }
    for (const Class *c : classes()) {
        w.writeStartElement(kXs, QStringLiteral("complexType"));
        w.writeAttribute(QStringLiteral("name"), c->name);
        x.content(*c);
        x.attributes(*c);
        w.writeEndElement();
    }
    // Every class, so that a part of a document can be checked on its own.
    for (const Class *c : classes()) {
        w.writeEmptyElement(kXs, QStringLiteral("element"));
        w.writeAttribute(QStringLiteral("name"), c->name);
        w.writeAttribute(QStringLiteral("type"), c->name);
    }
    w.writeEndElement();
    w.writeEndDocument();
    return x.text;
}

} // namespace schema
} // namespace HALVANE
