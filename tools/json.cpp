// The tool's JSON form of a document, made from the field tables: an object
// per data object keyed by the XML element (or attribute) names, enumerated
// values by their names, date-times as the library's text, numbers as JSON
// numbers (a 64-bit int beyond 2^53, and a double that is not finite, as
// text), lists as arrays; a field is present when its key is.
#include "document.h"
#include "strict.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

#include <cmath>

using namespace HALVANE;

namespace tool {

namespace {

constexpr double kExactInteger = 9007199254740992.0; // 2^53

QJsonValue jsonValue(const schema::Field &f, const QString &text)
{
    switch (f.kind) {
    case schema::Kind::Bool:
        return QJsonValue(text == QLatin1String("true"));
    case schema::Kind::Int:
    case schema::Kind::Int64: {
        bool ok = false;
        const qint64 value = text.toLongLong(&ok);
        if (ok && std::fabs(double(value)) <= kExactInteger)
            return QJsonValue(double(value));
        return QJsonValue(text);
    }
    case schema::Kind::Double:
    case schema::Kind::Float: {
        bool ok = false;
        const double value = text.toDouble(&ok);
        if (ok && std::isfinite(value))
            return QJsonValue(value);
        return QJsonValue(text);
    }
    default:
        return QJsonValue(text);
    }
}

QJsonObject jsonObject(const Node &node)
{
    QJsonObject o;
    if (!node.version.isNull())
        o.insert(node.cls->versionField.element, node.version);
    for (const Entry &e : node.entries) {
        const schema::Field &f = *e.field;
        switch (f.kind) {
        case schema::Kind::Nested:
            o.insert(f.element, jsonObject(e.nodes.value(0)));
            break;
        case schema::Kind::ObjectList: {
            QJsonArray items;
            for (const Node &n : e.nodes)
                items.append(jsonObject(n));
            o.insert(f.element, items);
            break;
        }
        case schema::Kind::StringList:
        case schema::Kind::EnumList: {
            QJsonArray items;
            for (const QString &t : e.texts)
                items.append(t);
            o.insert(f.element, items);
            break;
        }
        default:
            o.insert(f.element, jsonValue(f, e.texts.value(0)));
            break;
        }
    }
    return o;
}

// The text of a JSON number as a field of its kind would hold it: whole
// numbers without a point, others in their shortest exact form.
QString numberText(double value)
{
    if (value == std::floor(value) && std::fabs(value) < 1e300)
        return QString::number(value, 'f', 0);
    const QString shortest = QString::number(value, 'g', QLocale::FloatingPointShortest);
    if (!shortest.contains(QLatin1Char('e')))
        return shortest;
    QString fixed = QString::number(value, 'f', 40);
    while (fixed.endsWith(QLatin1Char('0')))
        fixed.chop(1);
    return fixed;
}

class JsonReader
{
public:
    JsonReader(const QString &file, bool strict, QStringList &problems) : m_file(file), m_strict(strict), m_problems(problems) {}

    Node node(const schema::Class &c, const QJsonObject &o, const QString &path)
    {
        Node n;
        n.cls = &c;
        QVector<Entry> byField(c.fields.size());
        for (auto it = o.begin(); it != o.end(); ++it) {
            const QString key = it.key();
            const QString at = path.isEmpty() ? key : path + QLatin1Char('.') + key;
            if (!c.version.isNull() && key == c.versionField.element) {
                if (it.value().isString())
                    n.version = it.value().toString();
                else
                    report(at, QStringLiteral("a version is a text"));
                continue;
            }
            const schema::Field *f = c.fieldByElement(key);
            if (!f) {
                report(at, QStringLiteral("%1 is not a field of %2").arg(QLatin1Char('\'') + key + QLatin1Char('\''), c.name));
                continue;
            }
            Entry &e = byField[f->bit];
            e.field = f;
            switch (f->kind) {
            case schema::Kind::Nested:
                if (it.value().isObject())
                    e.nodes.append(node(*schema::findClass(f->itemClass), it.value().toObject(), at));
                else
                    report(at, QStringLiteral("%1 is an object").arg(f->name));
                break;
            case schema::Kind::ObjectList:
            case schema::Kind::StringList:
            case schema::Kind::EnumList: {
                if (!it.value().isArray()) {
                    report(at, QStringLiteral("%1 is an array").arg(f->name));
                    break;
                }
                const QJsonArray items = it.value().toArray();
                for (int i = 0; i < items.size(); ++i) {
                    const QString itemAt = at + QStringLiteral("[%1]").arg(i);
                    if (f->kind == schema::Kind::ObjectList) {
                        if (items[i].isObject())
                            e.nodes.append(node(*schema::findClass(f->itemClass), items[i].toObject(), itemAt));
                        else
                            report(itemAt, QStringLiteral("an item of %1 is an object").arg(f->name));
                    } else {
                        e.texts.append(text(c, *f, items[i], itemAt));
                    }
                }
                break;
            }
            default:
                e.texts = QStringList{text(c, *f, it.value(), at)};
                break;
            }
        }
        for (const Entry &e : byField) {
            if (e.field)
                n.entries.append(e);
        }
        if (m_strict) {
            for (const schema::Field &f : c.fields) {
                if (!byField[f.bit].field && schema::mustBeGiven(f))
                    report(path.isEmpty() ? c.name : path, QStringLiteral("the required field %1 is missing").arg(f.element));
            }
        }
        return n;
    }

    void report(const QString &path, const QString &what)
    {
        m_problems.append(QStringLiteral("%1: %2: %3").arg(m_file, path, what));
    }

private:
    QString text(const schema::Class &c, const schema::Field &f, const QJsonValue &v, const QString &at)
    {
        QString t;
        if (v.isString())
            t = v.toString();
        else if (v.isBool())
            t = v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
        else if (v.isDouble())
            t = numberText(v.toDouble());
        else
            report(at, QStringLiteral("%1 takes a text, a number or a bool").arg(c.name + QLatin1Char('.') + f.name));
        if (m_strict && (v.isString() || v.isBool() || v.isDouble())) {
            const QString problem = valueProblem(c, f, t);
            if (!problem.isNull())
                report(at, problem);
        }
        return t;
    }

    QString m_file;
    bool m_strict;
    QStringList &m_problems;
};

} // namespace

QByteArray jsonOf(const Node &node)
{
    QJsonObject root;
    root.insert(node.cls->name, jsonObject(node));
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

QString xmlOfJson(const QString &file, const QByteArray &bytes, bool strict, QStringList &problems)
{
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        problems.append(QStringLiteral("%1: at byte %2: %3").arg(file).arg(error.offset).arg(error.errorString()));
        return QString();
    }
    const QJsonObject root = doc.object();
    if (!doc.isObject() || root.size() != 1) {
        problems.append(QStringLiteral("%1: a document is an object with one key, the name of its class").arg(file));
        return QString();
    }
    const QString name = root.begin().key();
    const schema::Class *c = schema::findClass(name);
    if (!c || !root.begin().value().isObject()) {
        problems.append(QStringLiteral("%1: %2 is not a class of this library").arg(file, QLatin1Char('\'') + name + QLatin1Char('\'')));
        return QString();
    }
    JsonReader reader(file, strict, problems);
    return xmlOf(reader.node(*c, root.begin().value().toObject(), QString()));
}

} // namespace tool
