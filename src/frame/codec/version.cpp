// The version of a versioned document class. The class writes its own version
// as an attribute of its element, as the first record of its tagged form and
// behind the presence bytes of its raw form; reading any of them keeps the
// version read and applies one rule: a document older than the class (or
// without a version) replaces what the object held. In XML the version also
// decides what becomes of an element that no field knows.
#include "../frame.h"
#include "../text/messages.h"

#include <QtCore/QXmlStreamReader>

namespace HALVANE {
namespace frame {

namespace {

// Versions are compared as numbers; text that is none counts as 0.
float versionNumber(const QString &version)
{
    return version.toFloat();
}

bool olderDocument(const Obj &o)
{
    Payload *p = initData(o);
    return versionNumber(p->loadedVersion(*o.desc)) < versionNumber(o.desc->currentVersion);
}

} // namespace

const QString &currentVersion(const Obj &o)
{
    return o.desc->currentVersion;
}

const QString &loadedVersion(const Obj &o)
{
    static const QString none;
    Payload *p = access(o);
    return p ? p->loadedVersion(*o.desc) : none;
}

void versionRead(const Obj &o, const QString &version)
{
    initData(o)->loadedVersion(*o.desc) = version;
    if (versionNumber(o.desc->currentVersion) > versionNumber(version))
        resetToDefault(o);
}

void readXmlVersion(const Obj &o, const QXmlStreamReader &reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QString &attribute = o.desc->versionAttribute;
    versionRead(o, attributes.hasAttribute(attribute) ? attributes.value(attribute).toString()
                                                      : QString(QLatin1String("")));
}

void readVersionedChildren(const Obj &o, QXmlStreamReader &reader)
{
    // The base's loop, with a count of the unknown elements read into, so
    // that their end elements do not end the object.
    int open = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            processXmlStartElement(o, reader);
            if (reader.isStartElement())
                ++open;
            else if (!reader.isEndElement() && !reader.atEnd())
                reader.skipCurrentElement();
            break;
        case QXmlStreamReader::EndElement:
            if (open == 0)
                return;
            --open;
            break;
        default:
            break;
        }
    }
}

void unknownVersionedElement(const Obj &o, QXmlStreamReader &reader)
{
    if (olderDocument(o)) {
        reader.skipCurrentElement();
        return;
    }
    if (o.self->GetValidate())
        messages::unknownTag(reader.name().toString(), o.self->GetObjectName());
}

} // namespace frame
} // namespace HALVANE
