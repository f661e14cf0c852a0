// The tool's reading and writing of documents and files, shared by its
// commands: the forms by name or by their first bytes, whole-file output
// written as it is made, checked writes, and a document as a tree of element
// texts (the XML form as the library writes it), on which the JSON form and
// diff are built.
#ifndef HALVANE_TOOLS_DOCUMENT_H
#define HALVANE_TOOLS_DOCUMENT_H

#include <halvane/frame/schema/schema.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <functional>
#include <memory>

namespace tool {

/*! What the library's readers say of a document that holds a document type
    declaration, said in the same words where the tool refuses one itself. */
constexpr const char kNoDocumentTypeDeclarations[] = "Document type declarations (DTDs) are not accepted.";

/*! A wrong command line: exit code 2, with the usage of \a command. */
struct UsageError {
    QString message;
    QString command;
};

/*! A document that cannot be read or written, or a file that cannot: exit
    code 1. One line per fault, each a whole message. */
struct DocumentError {
    QStringList lines;
    explicit DocumentError(const QString &line) : lines{line} {}
    explicit DocumentError(const QStringList &all) : lines(all) {}
};

/*! Standard output, every write checked: a failure throws a DocumentError
    with the system's text. */
void printOut(const QString &text);
void writeOut(const QByteArray &bytes);
/*! Flushes standard output; false after a failed write, with the message. */
bool flushOut(QString *message);
void printErr(const QString &line);

/*! xml, hvb, hvr or json: given, else by the file's extension; for "-" as
    input, from the first bytes of \a input. */
QString formatOf(const QString &file, const QString &given, const QByteArray *input = nullptr);
/*! The form that the first bytes show, or empty. */
QString detectFormat(const QByteArray &bytes);

QByteArray readInput(const QString &file);
/*! Writes the whole file or nothing; "-" is standard output. A device or
    other file that is not a regular one is written in place. \a write puts
    the output on the device as it is made (a regular file goes through a
    QSaveFile, renamed over the file once it is whole); the first failure is
    reported when it is done, with the system's text. */
void writeOutput(const QString &file, const std::function<void(QIODevice &)> &write);
void writeOutput(const QString &file, const QByteArray &bytes);

/*! An XML document file that is read from the disk in pieces, never whole.
    Only a plain file is taken so: UTF-8 without a byte order mark, without a
    declared encoding other than UTF-8, every sequence one that the decoders
    keep and no NUL byte (which Qt's reader would take for UTF-16). Qt's
    reader then reads the file exactly as it reads the file's text decoded
    whole, which the tool reads any other file as. */
class XmlFile
{
public:
    /*! Opens \a name and looks through it once; null when it is not plain.
        A file that cannot be read throws a DocumentError. */
    static std::unique_ptr<XmlFile> open(const QString &name);

    const QString &name() const { return m_name; }
    /*! Where a document type declaration's "<!DOCTYPE" stands, as an
        offset in bytes (outside comments, processing instructions and CDATA
        sections), or -1. */
    qint64 doctype() const { return m_doctype; }
    /*! The text of the first \a size bytes. */
    QString head(qint64 size);
    /*! The file, standing at its start. */
    QFile &rewound();

private:
    explicit XmlFile(const QString &name) : m_name(name), m_file(name) {}
    QString m_name;
    QFile m_file;
    qint64 m_doctype = -1;
};

/*! The input of a command: a plain XML file (xml) and a binary file that
    can seek (binary, open for reading) stay on the disk, any other input is
    read whole (bytes). */
struct Input {
    QString file;
    QString format;
    QByteArray bytes;
    std::unique_ptr<XmlFile> xml;
    std::unique_ptr<QFile> binary;
};

/*! The bytes of an input held whole, or of a binary file mapped read-only
    for as long as the view lives (the pages are the system's cache of the
    file, given back with the view; a file that cannot be mapped is read). */
class InputBytes
{
public:
    explicit InputBytes(const Input &in);
    ~InputBytes();
    InputBytes(const InputBytes &) = delete;
    InputBytes &operator=(const InputBytes &) = delete;
    const QByteArray &bytes() const { return m_bytes; }

private:
    QFile *m_mapped = nullptr;
    uchar *m_map = nullptr;
    QByteArray m_bytes;
};

/*! Reads or opens \a file, in the form \a given or that formatOf tells. */
Input openInput(const QString &file, const QString &given);

struct Document {
    const HALVANE::schema::Class *cls = nullptr;
    std::unique_ptr<QUILLET::IQuilletObject> object;
};

/*! Reads a document of any form with the library, validation on or off.
    Faults are one line each, starting with the file's name. */
Document load(const QString &file, const QByteArray &bytes, const QString &format, bool validate);
Document load(const Input &in, bool validate);
/*! The document in a form, as the library writes it, put on \a out as it is
    made (the library's writers still make each binary form whole first).
    XML goes out as it is made only to a file that can be started again,
    else, and for JSON, the text is made whole first. */
void save(const Document &doc, const QString &format, QIODevice &out);

// ---- A document as a tree of texts

struct Node;

/*! A field that is present: its text (a scalar, an attribute), its items'
    texts (a list of strings or enumerated values) or its objects (a nested
    object, a list of objects). */
struct Entry {
    const HALVANE::schema::Field *field = nullptr;
    QStringList texts;
    QVector<Node> nodes;
};

struct Node {
    const HALVANE::schema::Class *cls = nullptr;
    QString version; // of a versioned document; null when it has none
    QVector<Entry> entries; // in field order
    const Entry *entry(const HALVANE::schema::Field &f) const;
};

/*! The tree of a document's XML form as the library writes it. */
Node treeOf(const Document &doc);
/*! The XML text of a tree, for the library to read. */
QString xmlOf(const Node &node);

// ---- JSON (json.cpp)

/*! The JSON form of a tree: {"Class": {...}}. */
QByteArray jsonOf(const Node &node);
/*! The XML text of a JSON document; \a problems gets one line per value that
    reading would change or lose when \a strict, and per key or value that
    has no place in the class in any case. */
QString xmlOfJson(const QString &file, const QByteArray &bytes, bool strict, QStringList &problems);

// ---- diff (diff.cpp)

/*! One line per field path whose text differs, "path: a → b". */
QStringList differences(const Node &a, const Node &b);

} // namespace tool

#endif
