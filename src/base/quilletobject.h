// The object base every data class derives from: name, type, validation flag,
// logger, and the whole-document operations (XML text, files, binary blocks).
#ifndef HALVANE_BASE_QUILLETOBJECT_H
#define HALVANE_BASE_QUILLETOBJECT_H

#include <halvane/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <memory>

class QDataStream;
class QDateTime;
class QFile;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace QUILLET {

/*! Object type of a data object. Class ids are arbitrary 32-bit numbers, so the
    enumeration only fixes the width; a data class stores its id here.
    \ingroup base */
enum ObjectTypes : quint32 {
    UnknownObjectType = 0 ///< The type of an object that is not of a data class.
};

/*! Held and handed on by the data objects; nothing in this library calls it.
    \ingroup base */
class HALVANE_EXPORT Logger
{
public:
    /// A logger is destroyed with the last object or caller that holds it.
    virtual ~Logger();
};

/*! The virtual operations stand in a fixed order, which is part of the
    interface: a data class overrides the destructor, HasData, Reset, both
    Check, GetXml, GetBinary, SetBinary, ProcessXml, SetValidate, SetLogger,
    SetObjectType and ProcessXmlStartElement, and inherits the rest.

    Every failure is one of the exceptions of exceptions.h; the file and
    document operations raise QuilletException when a file cannot be read or
    written, InvalidXmlException for XML that cannot be read (with the line
    and column), BinaryParsingException for a block that cannot.
    \ingroup base */
class HALVANE_EXPORT IQuilletObject
{
public:
    /// An object of UnknownObjectType, without name or logger, validation off.
    IQuilletObject();
    /// An object of the given type.
    explicit IQuilletObject(ObjectTypes type);
    /// Copies the type, the name, the logger and the validation flag.
    IQuilletObject(const IQuilletObject &other);
    /// Copies the type, the name, the logger and the validation flag.
    IQuilletObject &operator=(const IQuilletObject &other);
    /// Frees the name and drops the logger.
    virtual ~IQuilletObject();

    /// All fields that the class requires are set.
    virtual bool HasData() const = 0;
    /// All fields back to their initial values and unset.
    virtual void Reset() = 0;
    /// Throws OutOfRangeException at the first field that is missing or invalid; \a recursive checks nested objects too.
    virtual void Check(bool recursive) const = 0;
    /// Check(false).
    virtual void Check() const = 0;

    /// \name Validity of plain values
    /// Each type that has an invalid value has one SetInvalid writes and
    /// IsValid refuses: NaN for float and double (IsValid refuses every NaN;
    /// infinities are valid), the lowest value for int and qint64, the highest
    /// for unsigned int, the null string for QString. A bool is always valid, a
    /// QDateTime when QDateTime::isValid says so.
    //@{
    /// False for NaN.
    virtual bool IsValid(float value) const;
    /// Always true.
    virtual bool IsValid(bool value) const;
    /// False for the highest value.
    virtual bool IsValid(unsigned int value) const;
    /// False for the lowest value.
    virtual bool IsValid(qint64 value) const;
    /// QDateTime::isValid.
    virtual bool IsValid(const QDateTime &value) const;
    /// False for the null string.
    virtual bool IsValid(const QString &value) const;
    /// False for NaN.
    virtual bool IsValid(double value) const;
    /// False for the lowest value.
    virtual bool IsValid(int value) const;
    /*! A string literal would become a bool: wrap it in a QString. */
    bool IsValid(const char *value) const = delete;
    /// Writes NaN.
    virtual void SetInvalid(float &value) const;
    /// Writes the highest value.
    virtual void SetInvalid(unsigned int &value) const;
    /// Writes the lowest value.
    virtual void SetInvalid(qint64 &value) const;
    /// Writes the null string.
    virtual void SetInvalid(QString &value) const;
    /// Writes NaN.
    virtual void SetInvalid(double &value) const;
    /// Writes the lowest value.
    virtual void SetInvalid(int &value) const;
    //@}

    /// \name Forms of one object: XML and the tagged binary form
    //@{
    /// Writes the object as one element named by its object name.
    virtual void GetXml(QXmlStreamWriter &writer) const = 0;
    /// Writes the tagged form, behind the tag \a tag when \a writeTag; false when it wrote nothing.
    virtual bool GetBinary(QDataStream &stream, int tag, bool writeTag) const = 0;
    /// Reads \a length bytes of field records of the tagged form.
    virtual void SetBinary(QDataStream &stream, int length) = 0;
    //@}

    /*! Reads a whole document whose root element is this object's. With
        \a resetFirst the object is Reset once the root element has been found
        to be its own, so that afterwards it holds what the document holds and
        nothing else; without, the document is read onto the object as it
        stands: fields the document leaves out keep their values and list items
        are appended. A document that is refused before its root element (not
        well formed there, another class, a DTD) leaves the object untouched;
        one refused later leaves what was read so far. Documents with a
        document type declaration are refused (InvalidXmlException), so that no
        entity is ever declared or expanded. */
    virtual void SetXmlString(const QString &xml, bool resetFirst);
    /*! Reads a binary block (see binaryheader.h) that must hold this object
        and nothing after it; \a data is not changed. */
    virtual void SetBinaryRepresentation(QByteArray &data);
    /*! Reads one binary block from where the stream stands; bytes after the
        object are left in the stream. */
    virtual void SetBinaryRepresentation(QDataStream &stream);
    /*! Merging is a matter of the fields, which the base does not know: the
        base changes nothing, and no data class overrides it. */
    virtual void MergeQuilletObject(const IQuilletObject &other);
    /// The object type; a data class's is its class id.
    virtual ObjectTypes GetObjectType() const;
    /// The name given by SetObjectName, else the class's own (DefaultObjectName).
    virtual const QString &GetObjectName() const;
    /*! Reads the children of the element the reader stands on, calling
        ProcessXmlStartElement for each direct child start element, and leaves the
        reader on the object's own end element. The reader is the caller's: a
        caller who hands in a reader that has read a DTD owns the entities it
        declared, which the texts of fields would then take in expanded. */
    virtual void ProcessXml(QXmlStreamReader &reader);
    /// The object as an XML document, GetXml under an XML declaration.
    virtual QString GetXmlString() const;
    /*! Writes the binary block (magic, then GetBinary) to the caller's stream. */
    virtual void GetBinaryRepresentation(QDataStream &stream) const;
    /// The binary block (see binaryheader.h) on a stream of the pinned version, big-endian.
    virtual QByteArray GetBinaryRepresentationAsQByteArray() const;
    /*! Writes GetCompressedBinaryRepresentationAsQByteArray(level) to the stream
        as a QByteArray (32-bit length, then the bytes), so that
        `stream >> bytes` gives the block back for SetCompressedBinaryRepresentation. */
    virtual void GetCompressedBinaryRepresentation(QDataStream &stream, int level) const;
    /*! qCompress of the binary block at zlib's \a level: 0 (stored) to 9
        (smallest), -1 for zlib's default; any other level counts as -1. */
    virtual QByteArray GetCompressedBinaryRepresentationAsQByteArray(int level) const;
    /*! Reads a whole document file, as SetXmlString(text, false); the encoding
        is the one the file declares. The file is read as a stream: memory
        grows with the objects read, not with the file. */
    virtual void LoadXml(const QString &fileName);
    /*! The same from a file: a closed file is opened for reading and closed
        again when the document has been read (or has failed); an open one is
        read from where it stands to its end and stays open. A null file
        raises QuilletException. */
    virtual void LoadXml(QFile *file);
    /*! Reads a file that holds one binary block and nothing after it, with the
        same handling of the file as LoadXml(QFile *); an open file is left at
        its end, also when the block is refused. The object, the exceptions and
        their messages are those of SetBinaryRepresentation on the same bytes.
        The file is read as a stream: the reader decodes at most a window of
        1 MiB of it in place and takes the rest value by value from a piece of
        64 KiB, trusting no length or count beyond the bytes it has got, so
        memory grows with the objects read, not with the file. */
    virtual void LoadBinary(QFile *file);
    /*! Writes GetXmlString as UTF-8, the whole file or nothing. */
    virtual void SaveXml(const QString &fileName) const;
    /// Switches all checking in setters and writers on or off.
    virtual void SetValidate(bool validate) const;
    /// The validation flag; off in a new object.
    virtual bool GetValidate() const;
    /// Holds the logger, to hand on; the library never calls it.
    virtual void SetLogger(std::shared_ptr<Logger> logger) const;
    /*! SetLogger without a logger, through the virtual table, so that nested
        objects and list items drop it too. */
    virtual void ResetLogger() const;
    /*! Version of the object's format; "1" unless a class has versions of its own. */
    virtual const QString &GetVersion() const;
    /*! Does nothing here: a data class keeps its class id. */
    virtual void SetObjectType(ObjectTypes type);

    // Beside the operations above, and not virtual.
    /*! SetXmlString(xml, false). */
    void SetXmlString(const QString &xml);
    /// SetBinaryRepresentation on a copy of \a data.
    void SetBinaryRepresentation(const QByteArray &data);
    /// Writes the binary block to a file, the whole file or nothing.
    void SaveBinary(const QString &fileName) const;
    /// Reads a file that holds one binary block and nothing after it, as LoadBinary(QFile *).
    void LoadBinary(const QString &fileName);
    /*! GetCompressedBinaryRepresentationAsQByteArray(-1). */
    QByteArray GetCompressedBinaryRepresentation() const;
    /*! Reads what the compressed variants write; the size the block claims is
        checked before anything is allocated (see binaryheader.h). */
    void SetCompressedBinaryRepresentation(const QByteArray &data);
    /// The logger held; null when there is none.
    std::shared_ptr<Logger> GetLogger() const;
    /// A logger is held.
    bool HasLogger() const { return m_extras && m_extras->logger; }

protected:
    /// Gives the object a name of its own (its element name in XML); the class's name drops it again.
    virtual void SetObjectName(const QString &name);
    /// Reads one child element, the reader on its start element; called by ProcessXml.
    virtual void ProcessXmlStartElement(QXmlStreamReader &reader) = 0;
    /*! The name of an object until SetObjectName gives it another one; data
        classes answer their own name, so that it is not stored per object. */
    virtual const QString &DefaultObjectName() const;

    /*! With the reader on a start element: its text (empty, never null, for an
        empty element); leaves the reader on the element's end element. */
    QString GetTextValue(QXmlStreamReader &reader);
    /*! Consumes the value of a record whose tag the class does not know. */
    int skipCurrentElement(QDataStream &stream, int length, int tag) const;

    /// The object type; a data class stores its class id here.
    ObjectTypes m_objectType = UnknownObjectType;

private:
    // What most objects do not have, a logger or a name of their own, lies
    // behind one pointer, so that an object is its vtable, this pointer, type
    // and flag, and the payload pointer of its class.
    struct Extras {
        QString name;
        bool hasName = false;
        std::shared_ptr<Logger> logger;
    };
    Extras &extras() const;
    void dropExtrasIfEmpty() const;

    mutable Extras *m_extras = nullptr;
    mutable bool m_validate = false;
};

/*! Where a document's text holds a document type declaration: the offset of
    its "<!DOCTYPE" (outside comments, processing instructions and CDATA
    sections, where it is only text), or -1. The whole-document readers
    refuse such a document before Qt's reader sees it; a caller that looks
    into a document with a reader of its own (for its root element, say)
    refuses it the same way first, because Qt's reader expands the entities
    that a declaration defines while it reads the declaration. */
HALVANE_EXPORT qsizetype FindDocumentTypeDeclaration(const QString &text);

/*! FindDocumentTypeDeclaration for a document in UTF-8 that comes in pieces
    (a file read a block at a time): what a piece leaves open, a construct
    whose end has not come or a markup that may still become "<!DOCTYPE", is
    carried into the next, so the answer is the one the whole text gives.
    It holds at most a piece and a few bytes. */
class HALVANE_EXPORT DocumentTypeDeclarationScan
{
public:
    /*! Takes the next \a size bytes; \a last says that none follow. The
        offset of "<!DOCTYPE" from the first byte ever fed, or -1 while none
        has been seen. */
    qint64 feed(const char *piece, qsizetype size, bool last);

private:
    QByteArray m_window;
    qint64 m_base = 0;
    const char *m_close = nullptr;
};

} // namespace QUILLET

#endif
