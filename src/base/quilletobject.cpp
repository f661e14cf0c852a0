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

#include <cmath>
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

QString hex8(quint32 value)
{
    return QStringLiteral("%1").arg(value, 8, 16, QLatin1Char('0')).toUpper();
}

// What is left of a file: a closed file is opened for reading and closed
// again, an open one is read from where it stands and stays open.
QByteArray readFile(const IQuilletObject &object, QFile *file)
{
    if (!file)
        throw QuilletException(QStringLiteral("%1: no file to read").arg(object.GetObjectName()));
    if (file->isOpen()) {
        if (!file->isReadable())
            throw QuilletException(QStringLiteral("%1: cannot read file '%2': it is not open for reading")
                                       .arg(object.GetObjectName(), file->fileName()));
        return file->readAll();
    }
    if (!file->open(QIODevice::ReadOnly))
        throw QuilletException(QStringLiteral("%1: cannot read file '%2': %3")
                                   .arg(object.GetObjectName(), file->fileName(), file->errorString()));
    const QByteArray bytes = file->readAll();
    file->close();
    return bytes;
}

QByteArray readFile(const IQuilletObject &object, const QString &fileName)
{
    QFile file(fileName);
    return readFile(object, &file);
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
void readDocument(IQuilletObject &object, QXmlStreamReader &reader, bool resetFirst)
{
    if (!reader.readNextStartElement()) {
        if (!reader.hasError())
            reader.raiseError(QStringLiteral("no root element"));
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
    QXmlStreamReader reader(bytes); // honours the document's encoding declaration
    readDocument(object, reader, false);
}

} // namespace

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
    readDocument(*this, readFile(*this, fileName));
}

void IQuilletObject::LoadXml(QFile *file)
{
    readDocument(*this, readFile(*this, file));
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
    QDataStream stream(&buffer);
    pinStream(stream);
    SetBinaryRepresentation(stream);
    if (!buffer.atEnd())
        throw BinaryParsingException(QStringLiteral("%1: %2 trailing bytes after the object")
                                         .arg(GetObjectName())
                                         .arg(buffer.size() - buffer.pos()));
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
    SetBinaryRepresentation(readFile(*this, fileName));
}

void IQuilletObject::LoadBinary(QFile *file)
{
    SetBinaryRepresentation(readFile(*this, file));
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
