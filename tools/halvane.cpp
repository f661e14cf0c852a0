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

class Reader
{
public:
    explicit Reader(const QByteArray &data) : m_data(data) {}
    int left() const { return int(m_data.size()) - m_at; }
    bool i32(qint32 &v)
    {
        if (left() < 4)
            return false;
        v = qFromBigEndian<qint32>(m_data.constData() + m_at);
        m_at += 4;
        return true;
    }
    bool take(int n, QByteArray &out)
    {
        if (n < 0 || n > left())
            return false;
        out = m_data.mid(m_at, n);
        m_at += n;
        return true;
    }

private:
    QByteArray m_data;
    int m_at = 0;
};

struct Dumper {
    QString out;
    void line(int depth, const QString &text) { out += QString(depth * 2, QLatin1Char(' ')) + text + QLatin1Char('\n'); }

    static QString textOf(const QByteArray &value)
    {
        if (value.size() < 4)
            return QStringLiteral("(cut short) ") + hex(value);
        const qint32 n = qFromBigEndian<qint32>(value.constData());
        if (n == -1)
            return QStringLiteral("(null)");
        return QLatin1Char('"') + QString::fromUtf8(value.mid(4, n)) + QLatin1Char('"');
    }

    void value(const schema::Field &f, const QByteArray &value, int depth)
    {
        switch (f.kind) {
        case schema::Kind::Bool:
            line(depth, value.size() == 1 ? (value[0] ? QStringLiteral("true") : QStringLiteral("false")) : hex(value));
            return;
        case schema::Kind::Int:
        case schema::Kind::Int64:
            line(depth, value.size() == 8 ? QString::number(qFromBigEndian<qint64>(value.constData())) : hex(value));
            return;
        case schema::Kind::Nested:
            records(schema::findClass(f.itemClass), value, depth);
            return;
        case schema::Kind::ObjectList:
        case schema::Kind::StringList:
        case schema::Kind::EnumList: {
            Reader r(value);
            qint32 count;
            if (!r.i32(count))
                return line(depth, QStringLiteral("(no count) ") + hex(value));
            line(depth, QStringLiteral("%1 items").arg(count));
            for (qint32 i = 0; i < count; ++i) {
                qint32 length;
                QByteArray item;
                if (!r.i32(length) || !r.take(f.kind == schema::Kind::ObjectList ? length : qMax(length, 0), item))
                    return line(depth, QStringLiteral("[%1] cut short").arg(i));
                if (f.kind == schema::Kind::ObjectList) {
                    line(depth, QStringLiteral("[%1] %2, length %3").arg(i).arg(f.itemClass).arg(length));
                    records(schema::findClass(f.itemClass), item, depth + 1);
                } else {
                    line(depth, QStringLiteral("[%1] %2").arg(i).arg(textOf(item)));
                }
            }
            return;
        }
        default:
            line(depth, textOf(value));
            return;
        }
    }

    void records(const schema::Class *c, const QByteArray &data, int depth)
    {
        Reader r(data);
        while (r.left() > 0) {
            qint32 tag, length;
            QByteArray value;
            if (!r.i32(tag) || !r.i32(length) || !r.take(length, value)) {
                line(depth, QStringLiteral("(a record runs past the end of its object)"));
                return;
            }
            if (c && !c->version.isNull() && quint32(tag) == c->versionTag) {
                line(depth, QStringLiteral("%1 %2 length %3").arg(c->versionAttribute, tagText(quint32(tag))).arg(length));
                line(depth + 1, versionText(value));
                continue;
            }
            const schema::Field *f = c ? c->fieldByTag(quint32(tag)) : nullptr;
            if (!f) {
                line(depth, QStringLiteral("? %1 length %2: %3").arg(tagText(quint32(tag))).arg(length).arg(hex(value)));
                continue;
            }
            line(depth, QStringLiteral("%1 %2 length %3").arg(f->name, tagText(quint32(tag))).arg(length));
            this->value(*f, value, depth + 1);
        }
    }

    // A version record holds a QString as the stream writes it: UTF-16 behind its byte count.
    static QString versionText(const QByteArray &value)
    {
        QDataStream in(value);
        QUILLET::pinStream(in);
        QString version;
        in >> version;
        if (in.status() != QDataStream::Ok || !in.atEnd())
            return hex(value);
        return version.isNull() ? QStringLiteral("(null)") : QLatin1Char('"') + version + QLatin1Char('"');
    }

    // Without a schema: a record's value is taken for records, a number, a
    // bool or a text where its bytes fit one of them exactly.
    static bool isRecords(const QByteArray &data)
    {
        Reader r(data);
        if (r.left() < 8)
            return false;
        while (r.left() > 0) {
            qint32 tag, length;
            QByteArray value;
            if (!r.i32(tag) || !r.i32(length) || !r.take(length, value))
                return false;
        }
        return true;
    }

    void rawTags(const QByteArray &data, int depth)
    {
        Reader r(data);
        while (r.left() > 0) {
            qint32 tag, length;
            QByteArray value;
            if (!r.i32(tag) || !r.i32(length) || !r.take(length, value)) {
                line(depth, QStringLiteral("(a record runs past the end: %1 bytes left)").arg(r.left()));
                return;
            }
            const QString head = QStringLiteral("%1 length %2").arg(tagText(quint32(tag))).arg(length);
            const qint32 n = value.size() >= 4 ? qFromBigEndian<qint32>(value.constData()) : -2;
            if (isRecords(value)) {
                line(depth, head + QStringLiteral(" {"));
                rawTags(value, depth + 1);
                line(depth, QStringLiteral("}"));
            } else if ((n == -1 && value.size() == 4) || (n >= 0 && n + 4 == value.size())) {
                line(depth, head + QStringLiteral(": ") + textOf(value));
            } else if (value.size() == 8) {
                line(depth, head + QStringLiteral(": %1").arg(qFromBigEndian<qint64>(value.constData())));
            } else if (value.size() == 1) {
                line(depth, head + QStringLiteral(": %1").arg(int(quint8(value[0]))));
            } else {
                line(depth, head + QStringLiteral(": ") + hex(value));
            }
        }
    }

    // The raw form, by the class's layout.
    void raw(const schema::Class &c, QDataStream &in, int depth)
    {
        const int n = (int(c.fields.size()) + 7) / 8;
        QByteArray bits(n, '\0');
        in.readRawData(bits.data(), n);
        QString shown;
        for (const schema::Field &f : c.fields)
            shown += (quint8(bits[f.bit / 8]) >> (f.bit % 8)) & 1 ? QLatin1Char('1') : QLatin1Char('0');
        line(depth, QStringLiteral("%1 presence %2 (bit 0 first)").arg(c.name, shown));
        if (!c.version.isNull()) {
            QString version;
            in >> version;
            line(depth + 1, QStringLiteral("%1: \"%2\"").arg(c.versionAttribute, version));
        }
        for (const schema::Field &f : c.fields) {
            const bool set = (quint8(bits[f.bit / 8]) >> (f.bit % 8)) & 1;
            if (!f.required && !set)
                continue;
            if (in.status() != QDataStream::Ok)
                return line(depth, QStringLiteral("(cut short)"));
            rawValue(f, in, depth + 1);
        }
    }

    void rawValue(const schema::Field &f, QDataStream &in, int depth)
    {
        const QString head = f.name + QStringLiteral(": ");
        switch (f.kind) {
        case schema::Kind::Bool: {
            bool v;
            in >> v;
            return line(depth, head + (v ? QStringLiteral("true") : QStringLiteral("false")));
        }
        case schema::Kind::Int:
        case schema::Kind::Int64: {
            qint64 v;
            in >> v;
            return line(depth, head + QString::number(v));
        }
        case schema::Kind::Double: {
            double v;
            in >> v;
            return line(depth, head + QString::number(v, 'g', 17));
        }
        case schema::Kind::Float: {
            float v;
            in >> v;
            return line(depth, head + QString::number(double(v), 'g', 9));
        }
        case schema::Kind::String: {
            QString v;
            in >> v;
            return line(depth, head + (v.isNull() ? QStringLiteral("(null)") : QLatin1Char('"') + v + QLatin1Char('"')));
        }
        case schema::Kind::DateTime: {
            QDateTime v;
            in >> v;
            return line(depth, head + Converters::ToString(v));
        }
        case schema::Kind::Enum: {
            qint8 v;
            in >> v;
            return line(depth, head + enumText(f, v));
        }
        case schema::Kind::Nested:
            line(depth, head);
            return raw(*schema::findClass(f.itemClass), in, depth + 1);
        case schema::Kind::ObjectList:
        case schema::Kind::StringList:
        case schema::Kind::EnumList: {
            qint32 count;
            in >> count;
            line(depth, head + QStringLiteral("%1 items").arg(count));
            for (qint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
                if (f.kind == schema::Kind::ObjectList) {
                    line(depth + 1, QStringLiteral("[%1]").arg(i));
                    raw(*schema::findClass(f.itemClass), in, depth + 2);
                } else if (f.kind == schema::Kind::StringList) {
                    QString v;
                    in >> v;
                    line(depth + 1, QStringLiteral("[%1] \"%2\"").arg(i).arg(v));
                } else {
                    qint8 v;
                    in >> v;
                    line(depth + 1, QStringLiteral("[%1] %2").arg(i).arg(enumText(f, v)));
                }
            }
            return;
        }
        }
    }

    static QString enumText(const schema::Field &f, qint8 v)
    {
        if (v >= 0 && v < f.table.rows.size())
            return QStringLiteral("%1 (%2)").arg(v).arg(f.table.rows[v].value(0));
        return QStringLiteral("%1 (invalid)").arg(int(v));
    }
};

QString dump(const QString &file, const QByteArray &bytes, const QString &format, bool rawTags)
{
    Dumper d;
    if (rawTags) {
        const QByteArray block = bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)) ? bytes.mid(4) : bytes;
        d.rawTags(block, 0);
        return d.out;
    }
    if (format == QLatin1String("hvb")) {
        if (bytes.size() < 12 || !bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
            throw DocumentError{QStringLiteral("%1: not a binary document (no HVB1 header)").arg(file)};
        const schema::Class *c = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
        const qint32 length = qFromBigEndian<qint32>(bytes.constData() + 8);
        d.line(0, QStringLiteral("%1 %2 length %3").arg(c->name, tagText(c->id)).arg(length));
        if (length < 0 || length > bytes.size() - 12)
            throw DocumentError{QStringLiteral("%1: the object length %2 runs past the end of the file").arg(file).arg(length)};
        d.records(c, bytes.mid(12, length), 1);
    } else if (format == QLatin1String("hvr")) {
        if (bytes.size() < 8 || !bytes.startsWith(QByteArray(kRawMagic, 4)))
            throw DocumentError{QStringLiteral("%1: not a raw document (no HVR1 header)").arg(file)};
        const schema::Class *c = classOfId(file, qFromBigEndian<quint32>(bytes.constData() + 4));
        QDataStream in(bytes.mid(8));
        QUILLET::pinStream(in);
        d.raw(*c, in, 0);
        if (in.status() != QDataStream::Ok)
            throw DocumentError{QStringLiteral("%1: the raw form is truncated or corrupt").arg(file)};
    } else {
        throw UsageError{QStringLiteral("dump reads hvb and hvr documents")};
    }
    return d.out;
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
            w.writeAttribute(QStringLiteral("name"), c->versionAttribute);
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
