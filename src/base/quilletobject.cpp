// The object base: name, type, flag, logger, the XML loop over child
// elements, and the whole-document operations on text, files and blocks.
#include "quilletobject.h"

#include "binaryheader.h"
#include "exceptions.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>
#include <QtCore/QtEndian>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QtCore/QStringDecoder>
#else
#include <QtCore/QTextCodec>
#endif

#include <cmath>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif
#include <limits>

namespace QUILLET {

Logger::~Logger() = default;

IQuilletObject::IQuilletObject() = default;

IQuilletObject::IQuilletObject(ObjectTypes type) : m_objectType(type) {}

IQuilletObject::IQuilletObject(const IQuilletObject &other)
    : m_objectType(other.m_objectType),
      m_extras(other.m_extras ? new Extras(*other.m_extras) : nullptr),
      m_validate(other.m_validate)
{
}

IQuilletObject &IQuilletObject::operator=(const IQuilletObject &other)
{
    if (this != &other) {
        m_objectType = other.m_objectType;
        delete m_extras;
        m_extras = other.m_extras ? new Extras(*other.m_extras) : nullptr;
        m_validate = other.m_validate;
    }
    return *this;
}

IQuilletObject::~IQuilletObject()
{
    delete m_extras;
}

IQuilletObject::Extras &IQuilletObject::extras() const
{
    if (!m_extras)
        m_extras = new Extras;
    return *m_extras;
}

void IQuilletObject::dropExtrasIfEmpty() const
{
    if (m_extras && !m_extras->hasName && !m_extras->logger) {
        delete m_extras;
        m_extras = nullptr;
    }
}

void IQuilletObject::SetObjectType(ObjectTypes) {}

ObjectTypes IQuilletObject::GetObjectType() const
{
    return m_objectType;
}

const QString &IQuilletObject::GetObjectName() const
{
    return m_extras && m_extras->hasName ? m_extras->name : DefaultObjectName();
}

void IQuilletObject::SetObjectName(const QString &name)
{
    if (name == DefaultObjectName() && name.isNull() == DefaultObjectName().isNull()) {
        if (m_extras) {
            m_extras->hasName = false;
            m_extras->name = QString();
            dropExtrasIfEmpty();
        }
        return;
    }
    extras().name = name;
    m_extras->hasName = true;
}

const QString &IQuilletObject::DefaultObjectName() const
{
    static const QString none;
    return none;
}

void IQuilletObject::SetValidate(bool validate) const
{
    m_validate = validate;
}

bool IQuilletObject::GetValidate() const
{
    return m_validate;
}

std::shared_ptr<Logger> IQuilletObject::GetLogger() const
{
    return m_extras ? m_extras->logger : std::shared_ptr<Logger>();
}

void IQuilletObject::SetLogger(std::shared_ptr<Logger> logger) const
{
    if (logger) {
        if (!m_extras || m_extras->logger != logger)
            extras().logger = std::move(logger);
    } else if (m_extras) {
        m_extras->logger.reset();
        dropExtrasIfEmpty();
    }
}

void IQuilletObject::ResetLogger() const
{
    SetLogger(std::shared_ptr<Logger>());
}

const QString &IQuilletObject::GetVersion() const
{
    static const QString version = QStringLiteral("1");
    return version;
}

void IQuilletObject::MergeQuilletObject(const IQuilletObject &) {}

// ---- Validity of plain values

bool IQuilletObject::IsValid(float value) const
{
    return !std::isnan(value);
}

bool IQuilletObject::IsValid(bool) const
{
    return true;
}

bool IQuilletObject::IsValid(unsigned int value) const
{
    return value != std::numeric_limits<unsigned int>::max();
}

bool IQuilletObject::IsValid(qint64 value) const
{
    return value != std::numeric_limits<qint64>::min();
}

bool IQuilletObject::IsValid(const QDateTime &value) const
{
    return value.isValid();
}

bool IQuilletObject::IsValid(const QString &value) const
{
    return !value.isNull();
}

bool IQuilletObject::IsValid(double value) const
{
    return !std::isnan(value);
}

bool IQuilletObject::IsValid(int value) const
{
    return value != std::numeric_limits<int>::min();
}

void IQuilletObject::SetInvalid(float &value) const
{
    value = std::numeric_limits<float>::quiet_NaN();
}

void IQuilletObject::SetInvalid(unsigned int &value) const
{
    value = std::numeric_limits<unsigned int>::max();
}

void IQuilletObject::SetInvalid(qint64 &value) const
{
    value = std::numeric_limits<qint64>::min();
}

void IQuilletObject::SetInvalid(QString &value) const
{
    value = QString();
}

void IQuilletObject::SetInvalid(double &value) const
{
    value = std::numeric_limits<double>::quiet_NaN();
}

void IQuilletObject::SetInvalid(int &value) const
{
    value = std::numeric_limits<int>::min();
}

// ---- XML of one object

void IQuilletObject::ProcessXml(QXmlStreamReader &reader)
{
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            ProcessXmlStartElement(reader);
            // A handler that did not read its element to the end leaves the rest.
            if (!reader.isEndElement() && !reader.atEnd())
                reader.skipCurrentElement();
            break;
        case QXmlStreamReader::EndElement:
            return;
        default:
            break;
        }
    }
}

QString IQuilletObject::GetTextValue(QXmlStreamReader &reader)
{
    QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
    if (text.isNull())
        text = QLatin1String("");
    return text;
}

int IQuilletObject::skipCurrentElement(QDataStream &stream, int length, int) const
{
    return length > 0 ? stream.skipRawData(length) : 0;
}

// ---- XML documents

namespace {

// The library's documents have no document type declaration, and a reader
// that took one would declare entities and expand them: one entity of a few
// thousand characters referenced a hundred thousand times is hundreds of
// millions of characters. Qt's reader also expands parameter entities while
// it reads a declaration, before it reports it, and it reads one wherever it
// stands, after the root element or inside it too, where it is an error only
// once it has been read. So every document is scanned before the reader sees
// it, and a declaration is refused.
const char kNoDtd[] = "Document type declarations (DTDs) are not accepted.";

[[noreturn]] void throwXmlError(const IQuilletObject &object, qint64 line, qint64 column, const QString &message)
{
    throw InvalidXmlException(QStringLiteral("%1: XML error at line %2, column %3: %4")
                                  .arg(object.GetObjectName())
                                  .arg(line)
                                  .arg(column)
                                  .arg(message));
}

[[noreturn]] void throwXmlError(const IQuilletObject &object, const QXmlStreamReader &reader)
{
    throwXmlError(object, reader.lineNumber(), reader.columnNumber(), reader.errorString());
}

// Where a document holds a document type declaration: the offset of its
// "<!DOCTYPE" in the text, or -1. Outside comments, processing instructions
// and CDATA sections, where it is text, "<!DOCTYPE" can only begin a
// declaration: character data and attribute values cannot hold a '<'. A
// construct that is not closed ends the scan; the reader reports it. The
// text is UTF-16 (QChar) or bytes of UTF-8 (char); only a '<' before '!' or
// '?' needs a closer look, so element tags cost a comparison each.
inline bool is(QChar c, char ascii)
{
    return c.unicode() == ushort(uchar(ascii));
}

inline bool is(char c, char ascii)
{
    return c == ascii;
}

template <class Char>
bool startsAt(const Char *text, qsizetype size, qsizetype at, const char *ascii)
{
    for (qsizetype i = 0; ascii[i]; ++i) {
        if (at + i >= size || !is(text[at + i], ascii[i]))
            return false;
    }
    return true;
}

qsizetype findChar(const QChar *text, qsizetype size, qsizetype from, char c)
{
    return QStringView(text, size).indexOf(QLatin1Char(c), from);
}

qsizetype findChar(const char *text, qsizetype size, qsizetype from, char c)
{
    const void *at = from < size ? std::memchr(text + from, c, size_t(size - from)) : nullptr;
    return at ? static_cast<const char *>(at) - text : -1;
}

// The next '!' or '?' from \a from, or -1: sixteen bytes a step where the
// processor has SSE2, one character a step elsewhere.
qsizetype findMark(const QChar *text, qsizetype size, qsizetype from)
{
    const ushort *units = reinterpret_cast<const ushort *>(text);
    qsizetype i = from;
#ifdef __SSE2__
    const __m128i bang = _mm_set1_epi16('!');
    const __m128i question = _mm_set1_epi16('?');
    for (; i + 8 <= size; i += 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(units + i));
        const int hits = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi16(v, bang), _mm_cmpeq_epi16(v, question)));
        if (hits)
            return i + qCountTrailingZeroBits(uint(hits)) / 2;
    }
#endif
    for (; i < size; ++i) {
        if (units[i] == '!' || units[i] == '?')
            return i;
    }
    return -1;
}

qsizetype findMark(const char *text, qsizetype size, qsizetype from)
{
    qsizetype i = from;
#ifdef __SSE2__
    const __m128i bang = _mm_set1_epi8('!');
    const __m128i question = _mm_set1_epi8('?');
    for (; i + 16 <= size; i += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text + i));
        const int hits = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, bang), _mm_cmpeq_epi8(v, question)));
        if (hits)
            return i + qCountTrailingZeroBits(uint(hits));
    }
#endif
    for (; i < size; ++i) {
        if (text[i] == '!' || text[i] == '?')
            return i;
    }
    return -1;
}

// The next "<!" or "<?" from \a from, or -1: the two marks are rare in a
// document, so they are searched for rather than every '<'.
template <class Char>
qsizetype nextMarkup(const Char *text, qsizetype size, qsizetype from)
{
    for (;;) {
        const qsizetype mark = findMark(text, size, from + 1);
        if (mark < 0)
            return -1;
        if (is(text[mark - 1], '<'))
            return mark - 1;
        from = mark;
    }
}

// The constructs in which "<!DOCTYPE" is only text, and their ends.
constexpr struct {
    const char *open;
    const char *close;
} kSkippedConstructs[] = {{"<!--", "-->"}, {"<?", "?>"}, {"<![CDATA[", "]]>"}};

template <class Char>
qsizetype doctypeOffset(const Char *text, qsizetype size)
{
    qsizetype i = 0;
    while ((i = nextMarkup(text, size, i)) >= 0) {
        if (startsAt(text, size, i, "<!DOCTYPE"))
            return i;
        qsizetype next = i + 1;
        for (const auto &skipped : kSkippedConstructs) {
            if (startsAt(text, size, i, skipped.open)) {
                // The end of the construct: its closing text, found from its first character.
                qsizetype close = i + qsizetype(std::strlen(skipped.open));
                while ((close = findChar(text, size, close, skipped.close[0])) >= 0 && !startsAt(text, size, close, skipped.close))
                    ++close;
                if (close < 0)
                    return -1;
                next = close + qsizetype(std::strlen(skipped.close));
                break;
            }
        }
        i = next;
    }
    return -1;
}

qsizetype doctypeOffset(QStringView text)
{
    return doctypeOffset(text.data(), text.size());
}

// Line and column of an offset as the reader counts them: lines from 1, a
// line break being LF, CR LF or CR; columns from 0, without a leading byte
// order mark.
void throwDtdError(const IQuilletObject &object, QStringView text, qsizetype at)
{
    qint64 line = 1;
    qsizetype lineStart = text.startsWith(QChar(0xFEFF)) ? 1 : 0;
    for (qsizetype i = 0; i < at; ++i) {
        if (text[i] == QLatin1Char('\n')
            || (text[i] == QLatin1Char('\r') && (i + 1 == text.size() || text[i + 1] != QLatin1Char('\n')))) {
            ++line;
            lineStart = i + 1;
        }
    }
    throwXmlError(object, line, at - lineStart, QLatin1String(kNoDtd));
}

// Decodes bytes in a named encoding as Qt's reader does; false if this Qt
// does not know the encoding.
bool decode(const QByteArray &encoding, const QByteArray &bytes, qsizetype from, QString &text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QStringDecoder decoder(encoding.constData(), QStringConverter::Flag::Stateless);
    if (!decoder.isValid())
        return false;
    text = decoder.decode(QByteArrayView(bytes.constData() + from, bytes.size() - from));
#else
    QTextCodec *codec = QTextCodec::codecForName(encoding);
    if (!codec)
        return false;
    text = codec->toUnicode(bytes.constData() + from, int(bytes.size() - from));
#endif
    return true;
}

// "<?xml" and white space: an XML declaration, not a processing instruction.
bool startsWithDeclaration(const QByteArray &bytes, qsizetype from)
{
    if (bytes.size() - from <= 5 || std::memcmp(bytes.constData() + from, "<?xml", 5) != 0)
        return false;
    const char next = bytes.at(int(from + 5));
    return next == ' ' || next == '\t' || next == '\r' || next == '\n';
}

// Refuses a document file that holds a document type declaration. The scan needs
// the characters that the reader will see: the code units follow from the
// byte order mark or the first bytes, as XML's autodetection tells them; in
// a document of single bytes, an XML declaration that names an encoding
// decides how the rest is read.
void refuseDtd(const IQuilletObject &object, const QByteArray &bytes)
{
    static const struct {
        const char *start;
        int length;
        int skip;
        const char *encoding;
    } kLayouts[] = {
        {"\x00\x00\xFE\xFF", 4, 4, "UTF-32BE"}, {"\xFF\xFE\x00\x00", 4, 4, "UTF-32LE"},
        {"\x00\x00\x00\x3C", 4, 0, "UTF-32BE"}, {"\x3C\x00\x00\x00", 4, 0, "UTF-32LE"},
        {"\xFE\xFF", 2, 2, "UTF-16BE"},         {"\xFF\xFE", 2, 2, "UTF-16LE"},
        {"\x00\x3C", 2, 0, "UTF-16BE"},         {"\x3C\x00", 2, 0, "UTF-16LE"},
        {"\xEF\xBB\xBF", 3, 3, nullptr},
    };
    qsizetype from = 0;
    const char *wide = nullptr;
    for (const auto &layout : kLayouts) {
        if (bytes.startsWith(QByteArray::fromRawData(layout.start, layout.length))) {
            from = layout.skip;
            wide = layout.encoding;
            break;
        }
    }
    QString text;
    if (!wide && !startsWithDeclaration(bytes, from)) {
        // UTF-8, the common case: the bytes are scanned as they are, and
        // decoded only to tell where a declaration stands.
        if (doctypeOffset(bytes.constData() + from, bytes.size() - from) < 0)
            return;
        text = QString::fromUtf8(bytes.constData() + from, int(bytes.size() - from));
    } else if (wide) {
        decode(wide, bytes, from, text);
    } else {
        // The reader stops after the declaration with its first token.
        QXmlStreamReader declaration(bytes);
        declaration.readNext();
        if (declaration.hasError())
            throwXmlError(object, declaration);
        const QByteArray encoding = declaration.documentEncoding().toLatin1();
        const qsizetype end = bytes.indexOf("?>", int(from)) + 2;
        if (encoding.isEmpty() || end < 2) {
            text = QString::fromUtf8(bytes.constData() + from, int(bytes.size() - from));
        } else {
            if (!decode(encoding, bytes, end, text))
                throwXmlError(object, declaration.lineNumber(), declaration.columnNumber(),
                              QStringLiteral("Encoding %1 is not supported.").arg(QLatin1String(encoding)));
            text.prepend(QLatin1String(bytes.constData() + from, int(end - from)));
        }
    }
    const qsizetype at = doctypeOffset(text);
    if (at >= 0)
        throwDtdError(object, text, at);
}

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0')).toUpper();
}

// Runs \a read on a file as the file operations take it: a closed file is
// opened for reading and closed again, also when \a read throws; an open one
// is read from where it stands and stays open.
template <class Read>
void withReadableFile(const IQuilletObject &object, QFile *file, Read read)
{
    if (!file)
        throw QuilletException(QStringLiteral("%1: no file to read").arg(object.GetObjectName()));
    if (file->isOpen()) {
        if (!file->isReadable())
            throw QuilletException(QStringLiteral("%1: cannot read file '%2': it is not open for reading")
                                       .arg(object.GetObjectName(), file->fileName()));
        read(*file);
        return;
    }
    if (!file->open(QIODevice::ReadOnly))
        throw QuilletException(QStringLiteral("%1: cannot read file '%2': %3")
                                   .arg(object.GetObjectName(), file->fileName(), file->errorString()));
    struct Closer {
        QFile *file;
        ~Closer() { file->close(); }
    } closer{file};
    read(*file);
}

// The rest of a file from where it stands, as a device that reads forward
// only. The tagged reader decodes in place what a device has at hand and
// takes the rest from the stream value by value, but takes the whole object
// into memory first from a device that can seek; through this device it
// holds at most a window of the file. The reads value by value come from a
// piece of the file held here, without QIODevice's buffer between; reads go
// to the file until its end.
class FileRest : public QIODevice
{
public:
    explicit FileRest(QFile &file) : m_file(file), m_piece(kPiece, Qt::Uninitialized)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    // Asks the file (its size) only once the piece held is used up.
    bool atEnd() const override { return m_at == m_end && QIODevice::bytesAvailable() == 0 && m_file.atEnd(); }
    // What is held, and at most a window of the file beyond it.
    qint64 bytesAvailable() const override
    {
        return QIODevice::bytesAvailable() + (m_end - m_at) + qMin(kWindow, m_file.bytesAvailable());
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        qint64 done = 0;
        while (done < maxSize) {
            if (m_at == m_end) {
                if (maxSize - done >= kPiece) {
                    const qint64 n = m_file.read(data + done, maxSize - done);
                    return n < 0 && done == 0 ? -1 : done + qMax<qint64>(n, 0);
                }
                const qint64 n = m_file.read(m_piece.data(), kPiece);
                if (n <= 0)
                    return n < 0 && done == 0 ? -1 : done;
                m_at = m_piece.constData();
                m_end = m_at + n;
            }
            const qint64 n = qMin(maxSize - done, qint64(m_end - m_at));
            std::memcpy(data + done, m_at, size_t(n));
            m_at += n;
            done += n;
        }
        return done;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    static constexpr qint64 kWindow = 1 << 20;
    static constexpr qint64 kPiece = 1 << 16;
    QFile &m_file;
    QByteArray m_piece;
    const char *m_at = nullptr;
    const char *m_end = nullptr;
};

// Reads a binary block that must hold the object and nothing after it, from
// where the device stands; the bytes after the object are counted by reading
// them, in pieces, up to the device's end (not its size, which a file of
// the system's may not know).
void readSoleBlock(IQuilletObject &object, QIODevice &device)
{
    QDataStream stream(&device);
    pinStream(stream);
    object.SetBinaryRepresentation(stream);
    qint64 trailing = 0;
    char scratch[4096];
    for (qint64 n; (n = device.read(scratch, sizeof scratch)) > 0;)
        trailing += n;
    if (trailing > 0)
        throw BinaryParsingException(
            QStringLiteral("%1: %2 trailing bytes after the object").arg(object.GetObjectName()).arg(trailing));
}

// The same from a file, through FileRest. The file is left at its end, also
// when the block is refused, as if it had been read whole.
void loadBlock(IQuilletObject &object, QFile &file)
{
    struct ToEnd {
        QFile &file;
        ~ToEnd()
        {
            if (!file.isSequential()) {
                file.seek(file.size());
                return;
            }
            char scratch[4096];
            while (file.read(scratch, sizeof scratch) > 0) {
            }
        }
    } toEnd{file};
    FileRest rest(file);
    readSoleBlock(object, rest);
}

void writeFile(const IQuilletObject &object, const QString &fileName, const QByteArray &bytes)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw QuilletException(QStringLiteral("%1: cannot write file '%2': %3")
                                   .arg(object.GetObjectName(), fileName, file.errorString()));
}

// Reads a whole document: the root element must be this object's, and any
// error of the reader, also after the root element, ends in an exception.
// The caller has scanned the text for a DTD; should the reader still meet
// one before the root element, it stops there.
void readDocument(IQuilletObject &object, QXmlStreamReader &reader, bool resetFirst)
{
    for (;;) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            break;
        if (token == QXmlStreamReader::DTD)
            reader.raiseError(QLatin1String(kNoDtd));
        else if (!reader.hasError()
                 && (token == QXmlStreamReader::Invalid || token == QXmlStreamReader::EndElement
                     || token == QXmlStreamReader::EndDocument))
            reader.raiseError(QStringLiteral("no root element"));
        if (reader.hasError())
            throwXmlError(object, reader);
    }
    if (reader.name() != object.GetObjectName()) {
        throw InvalidXmlException(QStringLiteral("%1: root element '%2' at line %3, column %4 is not '%1'")
                                      .arg(object.GetObjectName(), reader.name().toString())
                                      .arg(reader.lineNumber())
                                      .arg(reader.columnNumber()));
    }
    if (resetFirst)
        object.Reset();
    object.ProcessXml(reader);
    while (!reader.atEnd() && !reader.hasError())
        reader.readNext();
    if (reader.hasError())
        throwXmlError(object, reader);
}

void readDocument(IQuilletObject &object, const QByteArray &bytes)
{
    refuseDtd(object, bytes);
    QXmlStreamReader reader(bytes); // honours the document's encoding declaration
    readDocument(object, reader, false);
}

// Reads a document from a file as a stream: the reader takes it in pieces
// from the device, so neither the file's bytes nor their UTF-16 text are
// ever held whole. A file in UTF-8 (no byte order mark of a wider encoding,
// no declaration of another encoding) is scanned for a document type
// declaration in a first pass of fixed-size pieces; any other file, and a
// device that cannot seek back, is read whole and scanned as text.
void loadDocument(IQuilletObject &object, QFile &file)
{
    const qint64 start = file.pos();
    const QByteArray head = file.peek(256);
    bool utf8 = !file.isSequential();
    qsizetype from = head.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    if (utf8 && (head.startsWith(QByteArray("\x00", 1)) || head.startsWith("\xFE\xFF") || head.startsWith("\xFF\xFE")
                 || (head.size() > 1 && head.at(1) == '\0')))
        utf8 = false;
    if (utf8 && startsWithDeclaration(head, from)) {
        const qsizetype close = head.indexOf("?>", int(from));
        QXmlStreamReader declaration(close < 0 ? head : head.left(int(close + 2)));
        declaration.readNext();
        const QString encoding = declaration.documentEncoding().toString();
        utf8 = close >= 0 && !declaration.hasError()
               && (encoding.isEmpty() || encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0);
    }
    if (!utf8) {
        readDocument(object, file.readAll());
        return;
    }
    DocumentTypeDeclarationScan scan;
    QByteArray piece(1 << 16, Qt::Uninitialized);
    qint64 at = -1;
    for (;;) {
        const qint64 n = file.read(piece.data(), piece.size());
        if (n < 0)
            throw QuilletException(QStringLiteral("%1: cannot read file '%2': %3")
                                       .arg(object.GetObjectName(), file.fileName(), file.errorString()));
        if ((at = scan.feed(piece.constData(), qsizetype(n), n == 0)) >= 0 || n == 0)
            break;
    }
    if (at >= 0) {
        // Line and column come from the text before it, read once more.
        file.seek(start + from);
        const QString text = QString::fromUtf8(file.read(at - from + 1));
        throwDtdError(object, text, text.size() - 1);
    }
    if (!file.seek(start))
        throw QuilletException(QStringLiteral("%1: cannot read file '%2': %3")
                                   .arg(object.GetObjectName(), file.fileName(), file.errorString()));
    QXmlStreamReader reader(&file);
    readDocument(object, reader, false);
}

} // namespace

qsizetype FindDocumentTypeDeclaration(const QString &text)
{
    return doctypeOffset(text);
}

// What a piece leaves open is carried into the next: the last bytes of a
// construct whose end has not come, or a markup too short yet to tell.
qint64 DocumentTypeDeclarationScan::feed(const char *piece, qsizetype size, bool last)
{
    static constexpr char kLongestOpen[] = "<![CDATA[";
    m_window.append(piece, int(size));
    const char *text = m_window.constData();
    const qsizetype end = m_window.size();
    qsizetype i = 0, keep = end;
    for (;;) {
        if (m_close) {
            const qsizetype length = qsizetype(std::strlen(m_close));
            qsizetype close = i;
            while ((close = findChar(text, end, close, m_close[0])) >= 0 && !startsAt(text, end, close, m_close))
                ++close;
            if (close < 0) {
                keep = qMax(i, end - length + 1);
                break;
            }
            i = close + length;
            m_close = nullptr;
        }
        const qsizetype at = nextMarkup(text, end, i);
        if (at < 0) {
            keep = end > i && text[end - 1] == '<' ? end - 1 : end;
            break;
        }
        if (!last && end - at < qsizetype(sizeof kLongestOpen - 1)) {
            keep = at;
            break;
        }
        if (startsAt(text, end, at, "<!DOCTYPE"))
            return m_base + at;
        i = at + 1;
        for (const auto &skipped : kSkippedConstructs) {
            if (startsAt(text, end, at, skipped.open)) {
                i = at + qsizetype(std::strlen(skipped.open));
                m_close = skipped.close;
                break;
            }
        }
    }
    m_window.remove(0, int(keep));
    m_base += keep;
    return -1;
}


QString IQuilletObject::GetXmlString() const
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    GetXml(writer);
    writer.writeEndDocument();
    return text;
}

void IQuilletObject::SetXmlString(const QString &xml, bool resetFirst)
{
    const qsizetype at = doctypeOffset(xml);
    if (at >= 0)
        throwDtdError(*this, xml, at);
    QXmlStreamReader reader(xml);
    readDocument(*this, reader, resetFirst);
}

void IQuilletObject::SetXmlString(const QString &xml)
{
    SetXmlString(xml, false);
}

void IQuilletObject::SaveXml(const QString &fileName) const
{
    writeFile(*this, fileName, GetXmlString().toUtf8());
}

void IQuilletObject::LoadXml(const QString &fileName)
{
    QFile file(fileName);
    LoadXml(&file);
}

void IQuilletObject::LoadXml(QFile *file)
{
    withReadableFile(*this, file, [this](QFile &open) { loadDocument(*this, open); });
}

// ---- Binary blocks

void IQuilletObject::GetBinaryRepresentation(QDataStream &stream) const
{
    stream.writeRawData(kBinaryMagic, sizeof kBinaryMagic);
    GetBinary(stream, int(quint32(GetObjectType())), true);
}

QByteArray IQuilletObject::GetBinaryRepresentationAsQByteArray() const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    pinStream(stream);
    GetBinaryRepresentation(stream);
    return bytes;
}

void IQuilletObject::SetBinaryRepresentation(QDataStream &stream)
{
    char magic[sizeof kBinaryMagic];
    if (stream.readRawData(magic, sizeof magic) != int(sizeof magic)
        || !std::equal(magic, magic + sizeof magic, kBinaryMagic))
        throw BinaryParsingException(QStringLiteral("%1: not a binary representation (bad header)").arg(GetObjectName()));
    qint32 tag = 0;
    qint32 length = 0;
    stream >> tag >> length;
    if (stream.status() != QDataStream::Ok)
        throw BinaryParsingException(QStringLiteral("%1: binary representation is truncated").arg(GetObjectName()));
    const quint32 id = quint32(GetObjectType());
    if (quint32(tag) != id) {
        throw BinaryParsingException(QStringLiteral("%1: binary representation holds class 0x%2, not %1 (0x%3)")
                                         .arg(GetObjectName(), hex8(quint32(tag)), hex8(id)));
    }
    SetBinary(stream, length);
}

void IQuilletObject::SetBinaryRepresentation(QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    readSoleBlock(*this, buffer);
}

void IQuilletObject::SetBinaryRepresentation(const QByteArray &data)
{
    QByteArray shared = data;
    SetBinaryRepresentation(shared);
}

void IQuilletObject::SaveBinary(const QString &fileName) const
{
    writeFile(*this, fileName, GetBinaryRepresentationAsQByteArray());
}

void IQuilletObject::LoadBinary(const QString &fileName)
{
    QFile file(fileName);
    LoadBinary(&file);
}

void IQuilletObject::LoadBinary(QFile *file)
{
    withReadableFile(*this, file, [this](QFile &open) { loadBlock(*this, open); });
}

QByteArray IQuilletObject::GetCompressedBinaryRepresentationAsQByteArray(int level) const
{
    return qCompress(GetBinaryRepresentationAsQByteArray(), level >= -1 && level <= 9 ? level : -1);
}

void IQuilletObject::GetCompressedBinaryRepresentation(QDataStream &stream, int level) const
{
    stream << GetCompressedBinaryRepresentationAsQByteArray(level);
}

QByteArray IQuilletObject::GetCompressedBinaryRepresentation() const
{
    return GetCompressedBinaryRepresentationAsQByteArray(-1);
}

void IQuilletObject::SetCompressedBinaryRepresentation(const QByteArray &data)
{
    if (data.size() < 4)
        throw BinaryParsingException(QStringLiteral("%1: compressed block is truncated").arg(GetObjectName()));
    // qUncompress reserves what the first four bytes claim: refuse absurd
    // claims before it allocates anything.
    const qint64 claimed = qFromBigEndian<quint32>(data.constData());
    const qint64 limit = qMin(kMaxUncompressedSize, kMaxCompressionRatio * data.size() + kCompressedClaimSlack);
    if (claimed > limit)
        throw BinaryParsingException(QStringLiteral("%1: compressed block claims %2 bytes, more than the limit of %3")
                                         .arg(GetObjectName())
                                         .arg(claimed)
                                         .arg(limit));
    const QByteArray bytes = qUncompress(data);
    if (bytes.isEmpty() && claimed != 0)
        throw BinaryParsingException(QStringLiteral("%1: compressed block is corrupt").arg(GetObjectName()));
    SetBinaryRepresentation(bytes);
}

} // namespace QUILLET
