// Files, forms and documents for the tool's commands.
#include "document.h"

#include <halvane/base/binaryheader.h>
#include <halvane/base/exceptions.h>

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>
#include <QtCore/QtEndian>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>

using namespace HALVANE;

namespace tool {

namespace {

// The raw document file: "HVR1", the class id as big-endian uint32, then the
// raw form on a big-endian stream of version Qt 5.12.
constexpr char kRawMagic[4] = {'H', 'V', 'R', '1'};

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// A failed write to standard output is told once.
bool g_outFailed = false;

} // namespace

void writeOut(const QByteArray &bytes)
{
    errno = 0;
    if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) != size_t(bytes.size()) && !g_outFailed) {
        g_outFailed = true;
        throw DocumentError(QStringLiteral("halvane: standard output: %1").arg(systemError()));
    }
}

void printOut(const QString &text)
{
    writeOut(text.toUtf8());
}

bool flushOut(QString *message)
{
    errno = 0;
    if ((std::fflush(stdout) == 0 && !std::ferror(stdout)) || g_outFailed)
        return true;
    g_outFailed = true;
    *message = QStringLiteral("halvane: standard output: %1").arg(errno ? systemError() : QStringLiteral("write error"));
    return false;
}

void printErr(const QString &line)
{
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

QString detectFormat(const QByteArray &bytes)
{
    if (bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
        return QStringLiteral("hvb");
    if (bytes.startsWith(QByteArray(kRawMagic, 4)))
        return QStringLiteral("hvr");
    int at = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (at < bytes.size() && (bytes[at] == ' ' || bytes[at] == '\t' || bytes[at] == '\n' || bytes[at] == '\r'))
        ++at;
    if (at < bytes.size() && bytes[at] == '<')
        return QStringLiteral("xml");
    if (at < bytes.size() && bytes[at] == '{')
        return QStringLiteral("json");
    return QString();
}

QString formatOf(const QString &file, const QString &given, const QByteArray *input)
{
    QString format = given;
    if (format.isEmpty()) {
        if (file == QLatin1String("-")) {
            if (!input)
                throw UsageError{QStringLiteral("give --to for standard output"), QString()};
            format = detectFormat(*input);
            if (format.isEmpty())
                throw UsageError{QStringLiteral("standard input is no form that its first bytes show; give --from"), QString()};
            return format;
        }
        format = QFileInfo(file).suffix().toLower();
    }
    if (format != QLatin1String("xml") && format != QLatin1String("hvb") && format != QLatin1String("hvr")
        && format != QLatin1String("json"))
        throw UsageError{QStringLiteral("%1: unknown format '%2' (xml, hvb, hvr or json)").arg(file, format), QString()};
    return format;
}

namespace {

QByteArray readAllOf(const QString &file, QFile &f)
{
    const QByteArray bytes = f.readAll();
    if (f.error() != QFileDevice::NoError)
        throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(file, f.errorString()));
    return bytes;
}

} // namespace

QByteArray readInput(const QString &file)
{
    QFile f;
    const bool ok = file == QLatin1String("-") ? f.open(stdin, QIODevice::ReadOnly) : (f.setFileName(file), f.open(QIODevice::ReadOnly));
    if (!ok)
        throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(file, f.errorString()));
    return readAllOf(file, f);
}

namespace {

// Standard output as a device for the writers: every write goes through
// writeOut; the first failure stops the writing and is kept for the end.
class StandardOutput : public QIODevice
{
public:
    StandardOutput() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }
    const QStringList &failure() const { return m_failure; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        if (!m_failure.isEmpty())
            return -1;
        try {
            writeOut(QByteArray::fromRawData(data, int(size)));
        } catch (const DocumentError &e) {
            m_failure = e.lines;
            return -1;
        }
        return size;
    }

private:
    QStringList m_failure;
};

} // namespace

void writeOutput(const QString &file, const std::function<void(QIODevice &)> &write)
{
    if (file == QLatin1String("-")) {
        StandardOutput out;
        write(out);
        if (!out.failure().isEmpty())
            throw DocumentError(out.failure());
        return;
    }
    const QFileInfo info(file);
    if (info.exists() && !info.isFile()) {
        // A device or a pipe: there is nothing to rename over.
        QFile f(file);
        if (f.open(QIODevice::WriteOnly))
            write(f);
        if (!f.isOpen() || f.error() != QFileDevice::NoError || !f.flush())
            throw DocumentError(QStringLiteral("%1: cannot write: %2").arg(file, f.errorString()));
        return;
    }
    // Written to a temporary file and renamed: no partial output is left.
    QSaveFile f(file);
    if (f.open(QIODevice::WriteOnly))
        write(f);
    if (!f.isOpen() || f.error() != QFileDevice::NoError || !f.commit())
        throw DocumentError(QStringLiteral("%1: cannot write: %2").arg(file, f.errorString()));
}

void writeOutput(const QString &file, const QByteArray &bytes)
{
    writeOutput(file, [&bytes](QIODevice &out) { out.write(bytes); });
}

namespace {

// Whether bytes, fed piece by piece, are UTF-8 that Qt's decoders all take
// alike: no NUL, no overlong form, surrogate or noncharacter, nothing cut.
class PlainUtf8
{
public:
    bool feed(const char *piece, qsizetype size)
    {
        const uchar *bytes = reinterpret_cast<const uchar *>(piece);
        for (qsizetype i = 0; i < size; ++i) {
            const uchar b = bytes[i];
            if (m_need == 0) {
                if (b >= 0x01 && b < 0x80)
                    continue;
                if (b >= 0xC2 && b <= 0xDF)
                    start(1, b & 0x1F, 0x80);
                else if (b >= 0xE0 && b <= 0xEF)
                    start(2, b & 0x0F, 0x800);
                else if (b >= 0xF0 && b <= 0xF4)
                    start(3, b & 0x07, 0x10000);
                else
                    return false;
                continue;
            }
            if ((b & 0xC0) != 0x80)
                return false;
            m_code = (m_code << 6) | (b & 0x3F);
            if (--m_need == 0
                && (m_code < m_least || m_code > 0x10FFFF || (m_code >= 0xD800 && m_code <= 0xDFFF)
                    || (m_code >= 0xFDD0 && m_code <= 0xFDEF) || (m_code & 0xFFFE) == 0xFFFE))
                return false;
        }
        return true;
    }
    bool complete() const { return m_need == 0; }

private:
    void start(int need, uint code, uint least)
    {
        m_need = need;
        m_code = code;
        m_least = least;
    }
    int m_need = 0;
    uint m_code = 0;
    uint m_least = 0;
};

} // namespace

std::unique_ptr<XmlFile> XmlFile::open(const QString &name)
{
    std::unique_ptr<XmlFile> xml(new XmlFile(name));
    QFile &f = xml->m_file;
    if (!f.open(QIODevice::ReadOnly))
        throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(name, f.errorString()));
    if (f.isSequential())
        return nullptr;
    // Qt's reader takes the encoding from a byte order mark or a declaration
    // where it reads a file, not where it reads text: only UTF-8 reads alike.
    const QByteArray head = f.peek(256);
    if (head.size() < 4 || head.startsWith("\xEF\xBB\xBF") || head.indexOf("<?xml", 1) >= 0)
        return nullptr;
    if (head.startsWith("<?xml")) {
        const int close = int(head.indexOf("?>"));
        if (close < 0)
            return nullptr;
        QXmlStreamReader declaration(head.left(close + 2));
        declaration.readNext();
        const QString encoding = declaration.documentEncoding().toString();
        if (declaration.hasError()
            || (!encoding.isEmpty() && encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0))
            return nullptr;
    }
    PlainUtf8 utf8;
    QUILLET::DocumentTypeDeclarationScan search;
    QByteArray piece(1 << 16, Qt::Uninitialized);
    for (;;) {
        const qint64 n = f.read(piece.data(), piece.size());
        if (n < 0)
            throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(name, f.errorString()));
        if (!utf8.feed(piece.constData(), qsizetype(n)) || (n == 0 && !utf8.complete()))
            return nullptr;
        xml->m_doctype = search.feed(piece.constData(), qsizetype(n), n == 0);
        if (xml->m_doctype >= 0 || n == 0)
            return xml;
    }
}

QString XmlFile::head(qint64 size)
{
    return QString::fromUtf8(rewound().read(size));
}

QFile &XmlFile::rewound()
{
    if (!m_file.seek(0))
        throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(m_name, m_file.errorString()));
    return m_file;
}

Input openInput(const QString &file, const QString &given)
{
    Input in;
    in.file = file;
    if (file != QLatin1String("-")) {
        // A form that cannot be told is told after the file has been read.
        QString format;
        try {
            format = formatOf(file, given);
        } catch (const UsageError &) {
        }
        if (format == QLatin1String("xml") && (in.xml = XmlFile::open(file))) {
            in.format = format;
            return in;
        }
        if (format == QLatin1String("hvb") || format == QLatin1String("hvr")) {
            std::unique_ptr<QFile> f(new QFile(file));
            if (!f->open(QIODevice::ReadOnly))
                throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(file, f->errorString()));
            in.format = format;
            if (f->isSequential())
                in.bytes = readAllOf(file, *f); // a pipe, say: read once, whole
            else
                in.binary = std::move(f);
            return in;
        }
    }
    in.bytes = readInput(file);
    in.format = formatOf(file, given, &in.bytes);
    return in;
}

InputBytes::InputBytes(const Input &in)
{
    if (!in.binary) {
        m_bytes = in.bytes;
        return;
    }
    QFile &f = *in.binary;
    const qint64 size = f.size();
    if (size > 0 && size < qint64(std::numeric_limits<int>::max()) && (m_map = f.map(0, size))) {
        m_mapped = &f;
        m_bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(m_map), int(size));
        return;
    }
    if (!f.seek(0))
        throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(in.file, f.errorString()));
    m_bytes = readAllOf(in.file, f);
}

InputBytes::~InputBytes()
{
    m_bytes = QByteArray();
    if (m_mapped)
        m_mapped->unmap(m_map);
}

namespace {

const schema::Class *classOfId(const QString &file, quint32 id)
{
    const schema::Class *c = schema::findClassById(id);
    if (!c)
        throw DocumentError(QStringLiteral("%1: no class has the id 0x%2").arg(file).arg(id, 8, 16, QLatin1Char('0')));
    return c;
}

// A document that holds a document type declaration, refused at the place
// where Qt's reader gives the text before it.
[[noreturn]] void refuseDoctype(const QString &file, const QString &before)
{
    QXmlStreamReader reader(before);
    while (!reader.atEnd())
        reader.readNext();
    throw DocumentError(QStringLiteral("%1: line %2, column %3: %4")
                            .arg(file)
                            .arg(reader.lineNumber())
                            .arg(reader.columnNumber())
                            .arg(kNoDocumentTypeDeclarations));
}

// The class of the document's root element, the first element the reader
// comes to.
const schema::Class *classOfRoot(const QString &file, QXmlStreamReader &reader)
{
    if (!reader.readNextStartElement())
        throw DocumentError(QStringLiteral("%1: line %2, column %3: %4")
                                .arg(file)
                                .arg(reader.lineNumber())
                                .arg(reader.columnNumber())
                                .arg(reader.hasError() ? reader.errorString() : QStringLiteral("no root element")));
    const QString root = reader.name().toString();
    const schema::Class *c = schema::findClass(root);
    if (!c)
        throw DocumentError(QStringLiteral("%1: line %2, column %3: '%4' is not a class of this library")
                                .arg(file)
                                .arg(reader.lineNumber())
                                .arg(reader.columnNumber())
                                .arg(root));
    return c;
}

void loadXml(Document &doc, const QString &file, const QString &text, bool validate)
{
    // The class is found with a reader of our own, which would expand the
    // entities of a declaration before it reports one: such documents are
    // refused first.
    const qsizetype dtd = QUILLET::FindDocumentTypeDeclaration(text);
    if (dtd >= 0)
        refuseDoctype(file, text.left(int(dtd)));
    QXmlStreamReader reader(text);
    doc.cls = classOfRoot(file, reader);
    doc.object = doc.cls->create();
    doc.object->SetValidate(validate);
    doc.object->SetXmlString(text);
}

// The same from a plain file, which the library reads from the disk.
void loadXml(Document &doc, XmlFile &xml, bool validate)
{
    if (xml.doctype() >= 0)
        refuseDoctype(xml.name(), xml.head(xml.doctype()));
    {
        QXmlStreamReader reader(&xml.rewound());
        doc.cls = classOfRoot(xml.name(), reader);
    }
    doc.object = doc.cls->create();
    doc.object->SetValidate(validate);
    doc.object->LoadXml(&xml.rewound());
}

// What the binary forms' header gives: the class of a document in the form
// whose magic \a head starts with, named by the next four bytes.
const schema::Class *classOfHeader(const QString &file, const QByteArray &head, const QString &format)
{
    const bool tagged = format == QLatin1String("hvb");
    if (head.size() < 8 || !head.startsWith(tagged ? QByteArray(QUILLET::kBinaryMagic, 4) : QByteArray(kRawMagic, 4)))
        throw DocumentError(tagged ? QStringLiteral("%1: not a binary document (no HVB1 header)").arg(file)
                                   : QStringLiteral("%1: not a raw document (no HVR1 header)").arg(file));
    return classOfId(file, qFromBigEndian<quint32>(head.constData() + 4));
}

// The raw form behind its header, from where the stream stands to its end.
void readRawForm(Document &doc, const QString &file, QDataStream &in)
{
    QUILLET::pinStream(in);
    doc.cls->readRaw(*doc.object, in);
    if (in.status() != QDataStream::Ok)
        throw DocumentError(QStringLiteral("%1: the raw form is truncated or corrupt").arg(file));
    if (!in.atEnd())
        throw DocumentError(QStringLiteral("%1: bytes left after the raw form").arg(file));
}

// A binary file read where it lies, by the library's readers on the file.
void loadBinary(Document &doc, const QString &file, QFile &f, const QString &format, bool validate)
{
    if (!f.seek(0))
        throw DocumentError(QStringLiteral("%1: cannot read: %2").arg(file, f.errorString()));
    doc.cls = classOfHeader(file, f.peek(8), format);
    doc.object = doc.cls->create();
    doc.object->SetValidate(validate);
    if (format == QLatin1String("hvb")) {
        doc.object->LoadBinary(&f);
        return;
    }
    f.seek(8);
    QDataStream in(&f);
    readRawForm(doc, file, in);
}

} // namespace

Document load(const Input &in, bool validate)
{
    if (!in.xml && !in.binary)
        return load(in.file, in.bytes, in.format, validate);
    Document doc;
    try {
        if (in.xml)
            loadXml(doc, *in.xml, validate);
        else
            loadBinary(doc, in.file, *in.binary, in.format, validate);
    } catch (const QuilletRootException &e) {
        throw DocumentError(QStringLiteral("%1: %2").arg(in.file, e.GetMessage()));
    }
    return doc;
}

Document load(const QString &file, const QByteArray &bytes, const QString &format, bool validate)
{
    Document doc;
    try {
        if (format == QLatin1String("xml") || format == QLatin1String("json")) {
            QString text;
            if (format == QLatin1String("json")) {
                QStringList problems;
                text = xmlOfJson(file, bytes, false, problems);
                if (!problems.isEmpty())
                    throw DocumentError(problems);
            } else {
                text = QString::fromUtf8(bytes);
            }
            loadXml(doc, file, text, validate);
        } else {
            doc.cls = classOfHeader(file, bytes, format);
            doc.object = doc.cls->create();
            doc.object->SetValidate(validate);
            if (format == QLatin1String("hvb")) {
                doc.object->SetBinaryRepresentation(bytes);
            } else {
                QDataStream in(bytes.mid(8));
                readRawForm(doc, file, in);
            }
        }
    } catch (const QuilletRootException &e) {
        throw DocumentError(QStringLiteral("%1: %2").arg(file, e.GetMessage()));
    }
    return doc;
}

namespace {

// GetXmlString in UTF-8. To a file that can be started again it is written
// as the writer makes it: the declaration comes from a writer on text (one
// on a device would name the encoding in it), the rest from the same writer
// turned to the file. A text that UTF-8 cannot hold (a lone surrogate,
// which toUtf8 writes as '?') stops a writer on a device: then the file is
// emptied and written once more from the whole text, as is any other output.
void writeXml(const QUILLET::IQuilletObject &object, QIODevice &out)
{
    QFileDevice *file = qobject_cast<QFileDevice *>(&out);
    if (file && !file->isSequential()) {
        const qint64 start = file->pos();
        QString declaration;
        QXmlStreamWriter writer(&declaration);
        writer.setAutoFormatting(true);
        writer.writeStartDocument();
        file->write(declaration.toUtf8());
        writer.setDevice(file);
        object.GetXml(writer);
        writer.writeEndDocument();
        if (!writer.hasError() || file->error() != QFileDevice::NoError)
            return; // done, or a failed write that the caller reports
        if (!file->seek(start) || !file->resize(start))
            return;
    }
    out.write(object.GetXmlString().toUtf8());
}

} // namespace

void save(const Document &doc, const QString &format, QIODevice &out)
{
    try {
        if (format == QLatin1String("xml")) {
            writeXml(*doc.object, out);
            return;
        }
        QDataStream stream(&out);
        QUILLET::pinStream(stream);
        if (format == QLatin1String("hvb")) {
            doc.object->GetBinaryRepresentation(stream);
        } else if (format == QLatin1String("json")) {
            out.write(jsonOf(treeOf(doc)));
        } else {
            char head[8];
            std::memcpy(head, kRawMagic, 4);
            qToBigEndian(doc.cls->id, head + 4);
            stream.writeRawData(head, 8);
            doc.cls->writeRaw(*doc.object, stream);
        }
    } catch (const QuilletRootException &e) {
        throw DocumentError(e.GetMessage());
    }
}

// ---- The tree of texts

const Entry *Node::entry(const schema::Field &f) const
{
    for (const Entry &e : entries) {
        if (e.field == &f)
            return &e;
    }
    return nullptr;
}

namespace {

Node readNode(QXmlStreamReader &r, const schema::Class &c)
{
    Node node;
    node.cls = &c;
    QVector<Entry> byField(c.fields.size());
    const auto attributes = r.attributes();
    for (const QXmlStreamAttribute &a : attributes) {
        const QString name = a.name().toString();
        if (!c.version.isNull() && name == c.versionField.element) {
            node.version = a.value().toString();
        } else if (const schema::Field *f = c.fieldByElement(name)) {
            byField[f->bit].field = f;
            byField[f->bit].texts = QStringList{a.value().toString()};
        }
    }
    while (!r.atEnd()) {
        r.readNext();
        if (r.isEndElement())
            break;
        if (!r.isStartElement())
            continue;
        const schema::Field *f = c.fieldByElement(r.name().toString());
        if (!f) {
            r.skipCurrentElement();
            continue;
        }
        Entry &e = byField[f->bit];
        e.field = f;
        if (f->kind == schema::Kind::Nested || f->kind == schema::Kind::ObjectList) {
            e.nodes.append(readNode(r, *schema::findClass(f->itemClass)));
        } else if (f->kind == schema::Kind::StringList || f->kind == schema::Kind::EnumList) {
            e.texts.append(r.readElementText());
        } else {
            e.texts = QStringList{r.readElementText()};
        }
    }
    for (const Entry &e : byField) {
        if (e.field)
            node.entries.append(e);
    }
    return node;
}

void writeNode(QXmlStreamWriter &w, const Node &node)
{
    w.writeStartElement(node.cls->name);
    if (!node.version.isNull())
        w.writeAttribute(node.cls->versionField.element, node.version);
    for (const Entry &e : node.entries) {
        if (e.field->attribute)
            w.writeAttribute(e.field->element, e.texts.value(0));
    }
    for (const Entry &e : node.entries) {
        if (e.field->attribute)
            continue;
        for (const QString &text : e.texts)
            w.writeTextElement(e.field->element, text);
        for (const Node &n : e.nodes)
            writeNode(w, n);
    }
    w.writeEndElement();
}

} // namespace

Node treeOf(const Document &doc)
{
    doc.object->SetValidate(false);
    QXmlStreamReader r(doc.object->GetXmlString());
    r.readNextStartElement();
    return readNode(r, *doc.cls);
}

QString xmlOf(const Node &node)
{
    QString text;
    QXmlStreamWriter w(&text);
    writeNode(w, node);
    return text;
}

} // namespace tool
