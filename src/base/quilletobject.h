// The object base every data class derives from: name, type, validation flag,
// logger, and the whole-document operations (XML text, files, binary blocks).
#ifndef HALVANE_BASE_QUILLETOBJECT_H
#define HALVANE_BASE_QUILLETOBJECT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <memory>

class QDataStream;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace QUILLET {

/*! Object type of a data object. Class ids are arbitrary 32-bit numbers, so the
    enumeration only fixes the width; a data class stores its id here. */
enum ObjectTypes : quint32 { UnknownObjectType = 0 };

/*! Held and handed on by the data objects; nothing in this library calls it. */
class Logger
{
public:
    virtual ~Logger();
};

class IQuilletObject
{
public:
    IQuilletObject();
    explicit IQuilletObject(ObjectTypes type);
    IQuilletObject(const IQuilletObject &other);
    IQuilletObject &operator=(const IQuilletObject &other);
    virtual ~IQuilletObject();

    const QString &GetObjectName() const { return m_extras && m_extras->hasName ? m_extras->name : DefaultObjectName(); }
    ObjectTypes GetObjectType() const { return m_objectType; }
    virtual void SetObjectType(ObjectTypes type);

    bool GetValidate() const { return m_validate; }
    virtual void SetValidate(bool validate) const;
    std::shared_ptr<Logger> GetLogger() const;
    virtual void SetLogger(std::shared_ptr<Logger> logger) const;
    void ResetLogger() const;
    bool HasLogger() const { return m_extras && m_extras->logger; }

    /*! Version of the object's format; "1" unless a class has versions of its own. */
    virtual const QString &GetVersion() const;

    virtual bool HasData() const = 0;
    virtual void Reset() = 0;
    virtual void Check() const = 0;
    virtual void Check(bool recursive) const = 0;

    // XML form of one object.
    virtual void GetXml(QXmlStreamWriter &writer) const = 0;
    /*! Reads the children of the element the reader stands on, calling
        ProcessXmlStartElement for each direct child start element, and leaves the
        reader on the object's own end element. */
    virtual void ProcessXml(QXmlStreamReader &reader);

    // Tagged binary form of one object.
    virtual bool GetBinary(QDataStream &stream, int tag, bool writeTag) const = 0;
    virtual void SetBinary(QDataStream &stream, int length) = 0;

    // Whole documents as XML text or files. Errors raise InvalidXmlException
    // (with the reader's message, line and column) or QuilletException (files).
    QString GetXmlString() const;
    void SetXmlString(const QString &xml);
    void SaveXml(const QString &fileName) const;
    void LoadXml(const QString &fileName);

    // Whole objects as binary blocks: a header naming the class (see
    // binaryheader.h), then GetBinary's output with the class id as object tag.
    void GetBinaryRepresentation(QDataStream &stream) const;
    QByteArray GetBinaryRepresentationAsQByteArray() const;
    void SetBinaryRepresentation(QDataStream &stream);
    void SetBinaryRepresentation(const QByteArray &data);
    void SaveBinary(const QString &fileName) const;
    void LoadBinary(const QString &fileName);
    QByteArray GetCompressedBinaryRepresentation() const;
    void SetCompressedBinaryRepresentation(const QByteArray &data);

    // Inherited as they are; no data class relies on them.
    virtual void MergeQuilletObject(const IQuilletObject &other);
    virtual void SetInvalid();
    bool IsValid(const QString &value) const;
    bool IsValid(int value) const;
    bool IsValid(double value) const;

protected:
    virtual void SetObjectName(const QString &name);
    /*! The name of an object until SetObjectName gives it another one; data
        classes answer their own name, so that it is not stored per object. */
    virtual const QString &DefaultObjectName() const;
    virtual void ProcessXmlStartElement(QXmlStreamReader &reader) = 0;

    /*! With the reader on a start element: its text (empty, never null, for an
        empty element); leaves the reader on the element's end element. */
    QString GetTextValue(QXmlStreamReader &reader);
    /*! Consumes the value of a record whose tag the class does not know. */
    int skipCurrentElement(QDataStream &stream, int length, int tag) const;

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

} // namespace QUILLET

#endif
