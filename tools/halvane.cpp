// halvane: looks into, checks and converts the library's documents. Knows the
// classes only through the schema registry, so every class is covered.
//
//   halvane convert IN OUT [--from FORMAT] [--to FORMAT]
//   halvane validate FILE...
//   halvane dump FILE [--raw-tags] [--from FORMAT]
//   halvane schema [CLASS] | halvane schema --xsd
//   halvane example CLASS [--to FORMAT] [OUT]
//   halvane plot FILE [OUT] [--entry INDEX] [--csv] [--to svg|png|csv] [--from FORMAT]   (plot.cpp)
//
// FORMAT is xml, hvb (the binary block of GetBinaryRepresentation) or hvr (the
// raw form behind a header naming the class, see rawheader below); it follows
// from the file's extension unless given. "-" is standard input or output.
#include <halvane/halvane.h>

#include <halvane/base/binaryheader.h>
#include <halvane/frame/schema/visit.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QTextStream>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QtEndian>

#include <cstdio>
#include <memory>

#ifdef HALVANE_PLOT
#include "plot.h"
#endif

using namespace HALVANE;

namespace {

// ---- The raw document file: "HVR1", the class id as big-endian uint32, then
// the raw form on a big-endian stream of version Qt 5.12.
constexpr char kRawMagic[4] = {'H', 'V', 'R', '1'};

struct UsageError {
    QString message;
};

struct DocumentError {
    QString message;
};

void printErr(const QString &line)
{
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

void printOut(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

QString formatOf(const QString &file, const QString &given)
{
    QString format = given;
    if (format.isEmpty()) {
        if (file == QLatin1String("-"))
            throw UsageError{QStringLiteral("give --from or --to for standard input or output")};
        format = QFileInfo(file).suffix().toLower();
    }
    if (format != QLatin1String("xml") && format != QLatin1String("hvb") && format != QLatin1String("hvr"))
        throw UsageError{QStringLiteral("%1: unknown format '%2' (xml, hvb or hvr)").arg(file, format)};
    return format;
}

QByteArray readInput(const QString &file)
{
    QFile f;
    const bool ok = file == QLatin1String("-") ? f.open(stdin, QIODevice::ReadOnly) : (f.setFileName(file), f.open(QIODevice::ReadOnly));
    if (!ok)
        throw DocumentError{QStringLiteral("%1: cannot read: %2").arg(file, f.errorString())};
    return f.readAll();
}

void writeOutput(const QString &file, const QByteArray &bytes)
{
    if (file == QLatin1String("-")) {
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        std::fflush(stdout);
        return;
    }
    // Written to a temporary file and renamed: no partial output is left.
    QSaveFile f(file);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit())
        throw DocumentError{QStringLiteral("%1: cannot write: %2").arg(file, f.errorString())};
}

struct Document {
    const schema::Class *cls = nullptr;
    std::unique_ptr<QUILLET::IQuilletObject> object;
};

const schema::Class *classOfId(const QString &file, quint32 id)
{
    const schema::Class *c = schema::findClassById(id);
    if (!c)
        throw DocumentError{QStringLiteral("%1: no class has the id 0x%2").arg(file).arg(id, 8, 16, QLatin1Char('0'))};
    return c;
}

Document load(const QString &file, const QByteArray &bytes, const QString &format, bool validate)
{
    Document doc;
    try {
        if (format == QLatin1String("xml")) {
            QXmlStreamReader reader(bytes);
            if (!reader.readNextStartElement())
                throw DocumentError{QStringLiteral("%1: line %2, column %3: %4")
                                        .arg(file)
                                        .arg(reader.lineNumber())
                                        .arg(reader.columnNumber())
                                        .arg(reader.hasError() ? reader.errorString() : QStringLiteral("no root element"))};
            const QString root = reader.name().toString();
            doc.cls = schema::findClass(root);
            if (!doc.cls)
                throw DocumentError{QStringLiteral("%1: line %2, column %3: '%4' is not a class of this library")
                                        .arg(file)
                                        .arg(reader.lineNumber())
                                        .arg(reader.columnNumber())
                                        .arg(root)};
            doc.object = doc.cls->create();
            doc.object->SetValidate(validate);
            doc.object->SetXmlString(QString::fromUtf8(bytes));
        } else if (format == QLatin1String("hvb")) {
            if (bytes.size() < 8 || !bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
                throw DocumentError{QStringLiteral("%1: not a binary document (no HVB1 header)").arg(file)};
            doc.cls = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
            doc.object = doc.cls->create();
            doc.object->SetValidate(validate);
            doc.object->SetBinaryRepresentation(bytes);
        } else {
            if (bytes.size() < 8 || !bytes.startsWith(QByteArray(kRawMagic, 4)))
                throw DocumentError{QStringLiteral("%1: not a raw document (no HVR1 header)").arg(file)};
            doc.cls = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
            doc.object = doc.cls->create();
            doc.object->SetValidate(validate);
            QDataStream in(bytes.mid(8));
            QUILLET::pinStream(in);
            doc.cls->readRaw(*doc.object, in);
            if (in.status() != QDataStream::Ok)
                throw DocumentError{QStringLiteral("%1: the raw form is truncated or corrupt").arg(file)};
            if (!in.atEnd())
                throw DocumentError{QStringLiteral("%1: bytes left after the raw form").arg(file)};
        }
    } catch (const QuilletRootException &e) {
        throw DocumentError{QStringLiteral("%1: %2").arg(file, e.GetMessage())};
    }
    return doc;
}

QByteArray save(const Document &doc, const QString &format)
{
    try {
        if (format == QLatin1String("xml"))
            return doc.object->GetXmlString().toUtf8();
        if (format == QLatin1String("hvb"))
            return doc.object->GetBinaryRepresentationAsQByteArray();
        QByteArray bytes(kRawMagic, 4);
        bytes.resize(8);
        qToBigEndian(doc.cls->id, bytes.data() + 4);
        QDataStream out(&bytes, QIODevice::WriteOnly);
        QUILLET::pinStream(out);
        out.device()->seek(8);
        doc.cls->writeRaw(*doc.object, out);
        return bytes;
    } catch (const QuilletRootException &e) {
        throw DocumentError{e.GetMessage()};
    }
}

// ---- dump

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QString tagText(quint32 tag)
{
    return QStringLiteral("0x%1").arg(tag, 8, 16, QLatin1Char('0')).toUpper().replace(QLatin1String("0X"), QLatin1String("0x"));
}

// Lines of the dump, from the frame's walk over a binary form.
class Dumper : public schema::RecordVisitor
{
public:
    explicit Dumper(bool raw, int depth = 0) : m_raw(raw), m_depth(depth) {}
    QString out;
    QString faultText;

    void line(int depth, const QString &text) { out += QString(depth * 2, QLatin1Char(' ')) + text + QLatin1Char('\n'); }

    // In the raw form an object's presence line takes a level of its own; in
    // the tagged form the records stand below their field's line.
    void beginObject(const schema::Class *, qint64, qint64) override { m_depth += m_raw ? 1 : 0; }
    void endObject() override { m_depth -= m_raw ? 1 : 0; }
    void presence(const schema::Class &c, const QByteArray &bits) override
    {
        QString shown;
        for (const schema::Field &f : c.fields)
            shown += (quint8(bits[f.bit / 8]) >> (f.bit % 8)) & 1 ? QLatin1Char('1') : QLatin1Char('0');
        // The raw form's object line stands where its owner's field or item put it.
        line(m_depth - 1, QStringLiteral("%1 presence %2 (bit 0 first)").arg(c.name, shown));
    }
    void beginField(const schema::Field *f, quint32 tag, qint64, qint64 length) override
    {
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
        if (m_raw) {
            line(m_depth - 1, m_pending + QStringLiteral("%1 items").arg(count));
            m_pending.clear();
        } else {
            line(m_depth, QStringLiteral("%1 items").arg(count));
        }
    }
    void beginItem(int index, qint64, qint64 length) override
    {
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
    void fault(qint64 offset, const QString &what) override { faultText = QStringLiteral("at byte %1: %2").arg(offset).arg(what); }

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
    QString out;
    QString faultText;
    int depth = 0;

    void beginField(const schema::Field *, quint32 tag, qint64, qint64 length) override
    {
        m_head = QStringLiteral("%1 length %2").arg(tagText(tag)).arg(length);
    }
    void value(const schema::Value &v) override
    {
        const QByteArray &value = v.bytes;
        const qint32 n = value.size() >= 4 ? qFromBigEndian<qint32>(value.constData()) : -2;
        RawTags inner;
        inner.depth = depth + 1;
        if (value.size() >= 8 && schema::walkTagged(nullptr, value, QDataStream::BigEndian, inner)) {
            line(m_head + QStringLiteral(" {"));
            out += inner.out;
            line(QStringLiteral("}"));
        } else if ((n == -1 && value.size() == 4) || (n >= 0 && n + 4 == value.size())) {
            line(m_head + QStringLiteral(": ") + (n == -1 ? QStringLiteral("(null)")
                                                           : QLatin1Char('"') + QString::fromUtf8(value.mid(4)) + QLatin1Char('"')));
        } else if (value.size() == 8) {
            line(m_head + QStringLiteral(": %1").arg(qFromBigEndian<qint64>(value.constData())));
        } else if (value.size() == 1) {
            line(m_head + QStringLiteral(": %1").arg(int(quint8(value[0]))));
        } else {
            line(m_head + QStringLiteral(": ") + hex(value));
        }
    }
    void fault(qint64 offset, const QString &what) override { faultText = QStringLiteral("at byte %1: %2").arg(offset).arg(what); }

private:
    void line(const QString &text) { out += QString(depth * 2, QLatin1Char(' ')) + text + QLatin1Char('\n'); }
    QString m_head;
};

// The dump's text; a fault of the walk ends it with a DocumentError after
// what was read before it has been printed.
QString dump(const QString &file, const QByteArray &bytes, const QString &format, bool rawTags)
{
    auto finish = [&](const QString &out, const QString &fault) {
        if (!fault.isEmpty()) {
            printOut(out);
            throw DocumentError{QStringLiteral("%1: %2").arg(file, fault)};
        }
        return out;
    };
    if (rawTags) {
        const QByteArray block = bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)) ? bytes.mid(4) : bytes;
        RawTags d;
        schema::walkTagged(nullptr, block, QDataStream::BigEndian, d);
        return finish(d.out, d.faultText);
    }
    if (format == QLatin1String("hvb")) {
        if (bytes.size() < 12 || !bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
            throw DocumentError{QStringLiteral("%1: not a binary document (no HVB1 header)").arg(file)};
        const schema::Class *c = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
        const qint32 length = qFromBigEndian<qint32>(bytes.constData() + 8);
        if (length < 0 || length > bytes.size() - 12)
            throw DocumentError{QStringLiteral("%1: the object length %2 runs past the end of the file").arg(file).arg(length)};
        Dumper d(false, 1);
        d.line(0, QStringLiteral("%1 %2 length %3").arg(c->name, tagText(c->id)).arg(length));
        schema::walkTagged(c, bytes.mid(12, length), QDataStream::BigEndian, d);
        return finish(d.out, d.faultText);
    }
    if (format == QLatin1String("hvr")) {
        if (bytes.size() < 8 || !bytes.startsWith(QByteArray(kRawMagic, 4)))
            throw DocumentError{QStringLiteral("%1: not a raw document (no HVR1 header)").arg(file)};
        const schema::Class *c = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
        Dumper d(true);
        schema::walkRaw(*c, bytes.mid(8), QUILLET::kBinaryStreamVersion, QDataStream::BigEndian, d);
        return finish(d.out, d.faultText);
    }
    throw UsageError{QStringLiteral("dump reads hvb and hvr documents")};
}

// ---- Examples and the XML Schema, from the tables

QString xsd()
{
    QString text;
    QXmlStreamWriter w(&text);
    w.setAutoFormatting(true);
    w.writeStartDocument();
    const QString xs = QStringLiteral("http://www.w3.org/2001/XMLSchema");
    w.writeNamespace(xs, QStringLiteral("xs"));
    w.writeStartElement(xs, QStringLiteral("schema"));
    auto simple = [&](const QString &name, const QString &pattern) {
        w.writeStartElement(xs, QStringLiteral("simpleType"));
        w.writeAttribute(QStringLiteral("name"), name);
        w.writeStartElement(xs, QStringLiteral("restriction"));
        w.writeAttribute(QStringLiteral("base"), QStringLiteral("xs:string"));
        w.writeEmptyElement(xs, QStringLiteral("pattern"));
        w.writeAttribute(QStringLiteral("value"), pattern);
        w.writeEndElement();
        w.writeEndElement();
    };
    // Numbers with two decimals as the library writes them, and its date-time text.
    simple(QStringLiteral("twoDecimals"), QStringLiteral("-?[0-9]+\\.[0-9]{2}|nan|-?inf"));
    simple(QStringLiteral("dateTime"),
           QStringLiteral("([+\\-]?[0-9]{4,}-[0-9]{2}-[0-9]{2})?T([0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3})?"
                          "(Z|[+\\-][0-9]{2}:[0-9]{2}(:[0-9]{2})?|\\[[^\\]]*\\])?|"));
    for (const schema::Class *c : schema::classes()) {
        for (const schema::Field &f : c->fields) {
            if (f.kind != schema::Kind::Enum && f.kind != schema::Kind::EnumList)
                continue;
            w.writeStartElement(xs, QStringLiteral("simpleType"));
            w.writeAttribute(QStringLiteral("name"), c->name + QLatin1Char('.') + f.name);
            w.writeStartElement(xs, QStringLiteral("restriction"));
            w.writeAttribute(QStringLiteral("base"), QStringLiteral("xs:string"));
            for (const QStringList &row : f.table.rows) {
                w.writeEmptyElement(xs, QStringLiteral("enumeration"));
                w.writeAttribute(QStringLiteral("value"), row.value(0));
            }
            w.writeEndElement();
            w.writeEndElement();
        }
    }
    auto typeOf = [](const schema::Class &c, const schema::Field &f) -> QString {
        switch (f.kind) {
        case schema::Kind::Bool:
            return QStringLiteral("xs:boolean");
        case schema::Kind::Int:
            return QStringLiteral("xs:int");
        case schema::Kind::Int64:
            return QStringLiteral("xs:long");
        case schema::Kind::Double:
        case schema::Kind::Float:
            return QStringLiteral("twoDecimals");
        case schema::Kind::DateTime:
            return QStringLiteral("dateTime");
        case schema::Kind::Enum:
        case schema::Kind::EnumList:
            return c.name + QLatin1Char('.') + f.name;
        case schema::Kind::Nested:
        case schema::Kind::ObjectList:
            return f.itemClass;
        default:
            return QStringLiteral("xs:string");
        }
    };
    for (const schema::Class *c : schema::classes()) {
        w.writeStartElement(xs, QStringLiteral("complexType"));
        w.writeAttribute(QStringLiteral("name"), c->name);
        w.writeStartElement(xs, QStringLiteral("sequence"));
        for (const schema::Field &f : c->fields) {
            if (f.attribute)
                continue;
            const bool many = f.kind == schema::Kind::ObjectList || f.kind == schema::Kind::StringList
                              || f.kind == schema::Kind::EnumList;
            // Required values other than bools are always written; the rest only when set.
            const bool always = f.required && !many && f.kind != schema::Kind::Bool && f.kind != schema::Kind::Nested;
            w.writeEmptyElement(xs, QStringLiteral("element"));
            w.writeAttribute(QStringLiteral("name"), f.element);
            w.writeAttribute(QStringLiteral("type"), typeOf(*c, f));
            if (!always)
                w.writeAttribute(QStringLiteral("minOccurs"), QStringLiteral("0"));
            if (many)
                w.writeAttribute(QStringLiteral("maxOccurs"), QStringLiteral("unbounded"));
        }
        w.writeEndElement();
        if (!c->version.isNull()) {
            // Written always; a document without it is read as an older one.
            w.writeEmptyElement(xs, QStringLiteral("attribute"));
            w.writeAttribute(QStringLiteral("name"), c->versionField.element);
            w.writeAttribute(QStringLiteral("type"), QStringLiteral("xs:string"));
        }
        for (const schema::Field &f : c->fields) {
            if (!f.attribute)
                continue;
            w.writeEmptyElement(xs, QStringLiteral("attribute"));
            w.writeAttribute(QStringLiteral("name"), f.element);
            w.writeAttribute(QStringLiteral("type"), typeOf(*c, f));
            if (f.required)
                w.writeAttribute(QStringLiteral("use"), QStringLiteral("required"));
        }
        w.writeEndElement();
    }
    for (const schema::Class *c : schema::classes()) {
        if (!c->document)
            continue;
        w.writeEmptyElement(xs, QStringLiteral("element"));
        w.writeAttribute(QStringLiteral("name"), c->name);
        w.writeAttribute(QStringLiteral("type"), c->name);
    }
    w.writeEndElement();
    w.writeEndDocument();
    return text;
}

// ---- Commands

struct Options {
    QStringList args;
    QString from, to;
    bool rawTags = false;
    bool xsd = false;
};

Options parse(const QStringList &argv)
{
    Options o;
    for (int i = 0; i < argv.size(); ++i) {
        const QString &a = argv[i];
        if (a == QLatin1String("--from") || a == QLatin1String("--to")) {
            if (i + 1 >= argv.size())
                throw UsageError{QStringLiteral("%1 needs a format").arg(a)};
            (a == QLatin1String("--from") ? o.from : o.to) = argv[++i].toLower();
        } else if (a == QLatin1String("--raw-tags")) {
            o.rawTags = true;
        } else if (a == QLatin1String("--xsd")) {
            o.xsd = true;
        } else if (a.startsWith(QLatin1String("--")) || (a.startsWith(QLatin1Char('-')) && a != QLatin1String("-"))) {
            throw UsageError{QStringLiteral("unknown option '%1'").arg(a)};
        } else {
            o.args.append(a);
        }
    }
    return o;
}

const char kUsage[] =
    "usage: halvane convert IN OUT [--from FORMAT] [--to FORMAT]\n"
    "       halvane validate FILE...\n"
    "       halvane dump FILE [--raw-tags] [--from FORMAT]\n"
    "       halvane schema [CLASS] | halvane schema --xsd\n"
    "       halvane example CLASS [--to FORMAT] [OUT]\n"
    "       halvane plot FILE [OUT] [--entry INDEX] [--csv] [--to svg|png|csv] [--from FORMAT]\n"
    "FORMAT: xml, hvb (binary block) or hvr (raw form); by default the file's extension.\n"
    "plot draws the patterns of an AntennaPatterns or AntennaMatrixConfiguration document (SVG by\n"
    "default), or the antenna entry of that index with its band and limits; --csv gives the points.";

int run(const QString &command, const Options &o)
{
    if (command == QLatin1String("convert")) {
        if (o.args.size() != 2)
            throw UsageError{QStringLiteral("convert takes IN and OUT")};
        const QString in = o.args[0], out = o.args[1];
        const QString from = formatOf(in, o.from), to = formatOf(out, o.to);
        const Document doc = load(in, readInput(in), from, false);
        writeOutput(out, save(doc, to));
        return 0;
    }
    if (command == QLatin1String("validate")) {
        if (o.args.isEmpty())
            throw UsageError{QStringLiteral("validate takes one or more files")};
        int bad = 0;
        for (const QString &file : o.args) {
            try {
                const Document doc = load(file, readInput(file), formatOf(file, o.from), true);
                doc.object->Check();
                printOut(file + QStringLiteral(": ok\n"));
            } catch (const DocumentError &e) {
                printOut(e.message + QLatin1Char('\n'));
                ++bad;
            } catch (const QuilletRootException &e) {
                printOut(file + QStringLiteral(": ") + e.GetMessage() + QLatin1Char('\n'));
                ++bad;
            }
        }
        return bad ? 1 : 0;
    }
    if (command == QLatin1String("dump")) {
        if (o.args.size() != 1)
            throw UsageError{QStringLiteral("dump takes one file")};
        const QString file = o.args[0];
        const QByteArray bytes = readInput(file);
        printOut(dump(file, bytes, o.rawTags ? QStringLiteral("hvb") : formatOf(file, o.from), o.rawTags));
        return 0;
    }
    if (command == QLatin1String("schema")) {
        if (o.xsd) {
            printOut(xsd());
            return 0;
        }
        if (o.args.isEmpty()) {
            for (const schema::Class *c : schema::classes())
                printOut(QStringLiteral("%1 %2%3\n")
                             .arg(c->name, tagText(c->id), c->document ? QStringLiteral(" document") : QString()));
            return 0;
        }
        const schema::Class *c = schema::findClass(o.args[0]);
        if (!c)
            throw UsageError{QStringLiteral("no class '%1' (halvane schema lists them)").arg(o.args[0])};
        printOut(schema::describe(*c));
        return 0;
    }
    if (command == QLatin1String("example")) {
        if (o.args.isEmpty() || o.args.size() > 2)
            throw UsageError{QStringLiteral("example takes CLASS and an optional OUT")};
        const schema::Class *c = schema::findClass(o.args[0]);
        if (!c)
            throw UsageError{QStringLiteral("no class '%1' (halvane schema lists them)").arg(o.args[0])};
        const Document doc = load(c->name, schema::exampleXml(*c).toUtf8(), QStringLiteral("xml"), true);
        doc.object->Check();
        const QString out = o.args.value(1, QStringLiteral("-"));
        const QString to = o.to.isEmpty() && out == QLatin1String("-") ? QStringLiteral("xml") : formatOf(out, o.to);
        writeOutput(out, save(doc, to));
        return 0;
    }
    throw UsageError{command.isEmpty() ? QStringLiteral("no command") : QStringLiteral("unknown command '%1'").arg(command)};
}

// plot draws with Qt's GUI modules and makes its own application object.
int runPlot(int argc, char **argv)
{
#ifdef HALVANE_PLOT
    plot::ToolIo io;
    io.load = [](const QString &file, const QString &from) {
        try {
            return load(file, readInput(file), formatOf(file, from), false).object;
        } catch (const UsageError &e) {
            throw plot::Failure{e.message, 2};
        } catch (const DocumentError &e) {
            throw plot::Failure{e.message, 1};
        }
    };
    io.write = [](const QString &file, const QByteArray &bytes) {
        try {
            writeOutput(file, bytes);
        } catch (const DocumentError &e) {
            throw plot::Failure{e.message, 1};
        }
    };
    return plot::run(argc, argv, io);
#else
    Q_UNUSED(argc);
    Q_UNUSED(argv);
    printErr(QStringLiteral("halvane: plot is not built into this tool: it needs Qt's Gui and Svg modules"));
    return 2;
#endif
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "plot") == 0)
        return runPlot(argc, argv);
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.size() == 1 && args[0] == QLatin1String("--version")) {
        std::printf("halvane %s (Qt %s)\n", HALVANE::libraryVersion(), qVersion());
        return 0;
    }
    if (args.isEmpty() || args[0] == QLatin1String("--help") || args[0] == QLatin1String("-h")) {
        std::printf("%s\n", kUsage);
        return args.isEmpty() ? 2 : 0;
    }
    const QString command = args.takeFirst();
    try {
        return run(command, parse(args));
    } catch (const UsageError &e) {
        printErr(QStringLiteral("halvane: %1 (halvane --help shows the usage)").arg(e.message));
        return 2;
    } catch (const DocumentError &e) {
        printErr(e.message);
        return 1;
    } catch (const QuilletRootException &e) {
        printErr(e.GetMessage());
        return 1;
    }
}
