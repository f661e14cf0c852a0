// Strict checking of the three forms and of JSON, against what reading makes
// of each value (schema::Class::readBack) and what the field tables demand.
#include "strict.h"

#include "document.h"

#include <halvane/base/binaryheader.h>
#include <halvane/frame/schema/visit.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace HALVANE;

namespace tool {

namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString rangeText(const schema::Field &f)
{
    return QStringLiteral("%1 to %2").arg(QString::number(f.lo, 'g', 17), QString::number(f.hi, 'g', 17));
}

// A whole number as the library writes it, with at most two decimals
// where the field takes a double or float.
const QRegularExpression &decimalForm()
{
    static const QRegularExpression re(QStringLiteral("^-?[0-9]+(\\.[0-9]{1,2})?$"));
    return re;
}

const QRegularExpression &numberForm()
{
    static const QRegularExpression re(QStringLiteral("^\\s*[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?\\s*$"));
    return re;
}

// The text of a number that fits its field, padded to the two decimals that
// the form writes ("1.5" as "1.50"), so that it compares with readBack.
QString padded(const QString &text)
{
    const int point = int(text.indexOf(QLatin1Char('.')));
    if (point < 0)
        return text + QStringLiteral(".00");
    return text + QString(2 - (text.size() - point - 1), QLatin1Char('0'));
}

QString outsideRange(const schema::Field &f, const QString &text, double value)
{
    if (f.hasRange && !(value >= f.lo && value <= f.hi))
        return QStringLiteral("%1 is outside the range %2").arg(quoted(text), rangeText(f));
    return QString();
}

} // namespace

QString valueProblem(const schema::Class &c, const schema::Field &f, const QString &text)
{
    const QString back = c.readBack(f, text);
    switch (f.kind) {
    case schema::Kind::Bool:
        if (text != QLatin1String("true") && text != QLatin1String("false"))
            return QStringLiteral("%1 is not a bool, true or false: it reads as %2").arg(quoted(text), back);
        return QString();
    case schema::Kind::Int:
    case schema::Kind::Int64: {
        if (back == text)
            return outsideRange(f, text, text.toDouble());
        const QString type = f.kind == schema::Kind::Int ? QStringLiteral("an int, -2147483648 to 2147483647")
                                                         : QStringLiteral("a 64-bit int");
        bool ok = false;
        const qint64 value = text.toLongLong(&ok);
        const bool fits = ok && (f.kind == schema::Kind::Int64 || (value >= std::numeric_limits<qint32>::min()
                                                                   && value <= std::numeric_limits<qint32>::max()));
        if (fits)
            return QStringLiteral("%1 is not written as the form writes it: it reads as %2").arg(quoted(text), back);
        if (numberForm().match(text).hasMatch() && !text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e'))
            && !text.contains(QLatin1Char('E')))
            return QStringLiteral("%1 is out of the range of %2: it reads as %3").arg(quoted(text), type, back);
        return QStringLiteral("%1 is not a whole number: it reads as %2").arg(quoted(text), back);
    }
    case schema::Kind::Double:
    case schema::Kind::Float: {
        const QString type = f.kind == schema::Kind::Double ? QStringLiteral("a double") : QStringLiteral("a float");
        if (back == text || (decimalForm().match(text).hasMatch() && padded(text) == back))
            return outsideRange(f, text, f.kind == schema::Kind::Double ? text.toDouble() : double(text.toFloat()));
        bool ok = false;
        const double value = f.kind == schema::Kind::Double ? text.toDouble(&ok) : double(text.toFloat(&ok));
        if (!numberForm().match(text).hasMatch())
            return QStringLiteral("%1 is not a number: it reads as %2").arg(quoted(text), back);
        if (!ok || !std::isfinite(value))
            return QStringLiteral("%1 is out of the range of %2: it reads as %3").arg(quoted(text), type, back);
        const int point = int(text.indexOf(QLatin1Char('.')));
        if (point >= 0 && decimalForm().match(text.left(point)).hasMatch() && text.size() - point - 1 > 2)
            return QStringLiteral("%1 has more than the two decimals that the form keeps: it reads as %2").arg(quoted(text), back);
        return QStringLiteral("%1 is not kept as written: it reads as %2").arg(quoted(text), back);
    }
    case schema::Kind::DateTime:
        if (back == text)
            return QString();
        if (back.isEmpty())
            return QStringLiteral("%1 is not a date-time: it reads as none").arg(quoted(text));
        return QStringLiteral("%1 is not kept as written: it reads as %2").arg(quoted(text), back);
    case schema::Kind::Enum:
    case schema::Kind::EnumList: {
        if (!back.isNull())
            return QString();
        QStringList names;
        for (const QStringList &row : f.table.rows)
            names.append(row.value(0));
        if (names.size() <= 8)
            return QStringLiteral("%1 is not one of %2").arg(quoted(text), names.join(QLatin1String(", ")));
        return QStringLiteral("%1 is not one of the %2 names of its table").arg(quoted(text)).arg(names.size());
    }
    case schema::Kind::String:
    case schema::Kind::StringList:
    case schema::Kind::Nested:
    case schema::Kind::ObjectList:
        break;
    }
    return QString();
}

namespace {

QString fieldName(const schema::Class &c, const schema::Field &f)
{
    return c.name + QLatin1Char('.') + f.name;
}

// ---- XML

struct Place {
    qint64 line, column;
};

// The text of a document about where a reader stands in it, to tell where
// its tokens begin: the whole text of a document held whole; of a plain
// file (XmlFile), a window decoded from a handle of its own as the reader
// comes to it and dropped behind the reader, so that it holds the text of
// the longest token, not of the file. Lines are counted by LF alone.
class TextWindow
{
public:
    explicit TextWindow(const QString &text) : m_text(text)
    {
        m_lines.append(0);
        addLines(0);
    }
    explicit TextWindow(const XmlFile &xml) : m_file(xml.name()), m_streamed(true)
    {
        m_lines.append(0);
        m_file.open(QIODevice::ReadOnly);
    }

    const QString &text() const { return m_text; }

    // Decodes the text up to \a end, unless the file ends before.
    void reach(qint64 end)
    {
        while (m_base + m_text.size() < end && more()) {
        }
    }

    // The text before \a offset is not looked at again.
    void keepFrom(qint64 offset)
    {
        m_keep = qMax(m_keep, offset);
        trim();
    }

    // The line and column (from 1) of a character of the text held.
    Place placeOf(qint64 offset) const
    {
        const auto after = std::upper_bound(m_lines.begin(), m_lines.end(), offset);
        const qsizetype index = after - m_lines.begin();
        return Place{m_firstLine + index - 1, offset - m_lines[int(index - 1)] + 1};
    }

    // The last '<' before \a end, or 0.
    qint64 lastOpening(qint64 end)
    {
        reach(end);
        const qsizetype at = m_text.lastIndexOf(QLatin1Char('<'), int(end - 1 - m_base));
        return at < 0 ? 0 : m_base + at;
    }

    // Where \a head first stands from \a from on, to the end of the
    // document; where it does not, \a otherwise.
    Place find(const QString &head, qint64 from, qint64 otherwise)
    {
        reach(otherwise);
        const qsizetype at = m_text.indexOf(head, int(qMax<qint64>(0, from - m_base)));
        if (at >= 0)
            return placeOf(m_base + at);
        if (!m_streamed || from > m_base + m_text.size())
            return placeOf(otherwise);
        // On through the rest of the file, read once more, not held: the
        // text decoded so far of the window joins the first piece.
        QFile ahead(m_file.fileName());
        if (!ahead.open(QIODevice::ReadOnly) || !ahead.seek(m_file.pos() - m_undecoded.size()))
            return placeOf(otherwise);
        qint64 start = qMax(from, m_base + m_text.size() - head.size() + 1);
        QString window = m_text.mid(int(start - m_base));
        qint64 line = m_firstLine + m_lines.size() - 1, lineStart = m_lines.last();
        qint64 counted = m_base + m_text.size(); // lines are counted up to here
        QByteArray undecoded;
        for (;;) {
            const QByteArray piece = ahead.read(kPiece);
            if (piece.isEmpty())
                return placeOf(otherwise);
            const QByteArray bytes = undecoded + piece;
            const qsizetype whole = wholeSequences(bytes);
            undecoded = bytes.mid(int(whole));
            window += QString::fromUtf8(bytes.constData(), int(whole));
            const qsizetype found = window.indexOf(head);
            const qsizetype upTo = found >= 0 ? found : window.size();
            for (qsizetype i = qMax<qint64>(0, counted - start); i < upTo; ++i) {
                if (window.at(int(i)) == QLatin1Char('\n')) {
                    ++line;
                    lineStart = start + i + 1;
                }
            }
            if (found >= 0)
                return found + start < m_base + m_text.size() ? placeOf(start + found)
                                                                : Place{line, start + found - lineStart + 1};
            counted = start + window.size();
            const int keep = int(qMin<qsizetype>(window.size(), head.size() - 1));
            start += window.size() - keep;
            window = window.right(keep);
        }
    }

private:
    static constexpr qint64 kPiece = 1 << 16;

    // The bytes of \a bytes up to the last whole sequence of UTF-8.
    static qsizetype wholeSequences(const QByteArray &bytes)
    {
        qsizetype at = bytes.size();
        for (qsizetype back = 1; back <= qMin<qsizetype>(4, bytes.size()); ++back) {
            const uchar b = uchar(bytes.at(int(bytes.size() - back)));
            if ((b & 0xC0) == 0x80)
                continue;
            const qsizetype length = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
            at = length > back ? bytes.size() - back : bytes.size();
            break;
        }
        return at;
    }

    // Decodes the next piece of the file; false at its end.
    bool more()
    {
        if (!m_streamed)
            return false;
        const QByteArray bytes = m_undecoded + m_file.read(kPiece);
        if (bytes.size() == m_undecoded.size())
            return false;
        const qsizetype whole = wholeSequences(bytes);
        m_undecoded = bytes.mid(int(whole));
        const qsizetype from = m_text.size();
        m_text += QString::fromUtf8(bytes.constData(), int(whole));
        addLines(from);
        trim();
        return true;
    }

    void addLines(qsizetype from)
    {
        for (qsizetype i = from; (i = m_text.indexOf(QLatin1Char('\n'), int(i))) >= 0; ++i)
            m_lines.append(m_base + i + 1);
    }

    // Drops what is no longer looked at, in large steps.
    void trim()
    {
        if (!m_streamed || m_keep - m_base < 16 * kPiece)
            return;
        const qsizetype drop = qsizetype(qMin<qint64>(m_keep - m_base, m_text.size()));
        m_text.remove(0, int(drop));
        m_base += drop;
        const qsizetype line = qsizetype(std::upper_bound(m_lines.begin(), m_lines.end(), m_base) - m_lines.begin()) - 1;
        m_lines.remove(0, int(line));
        m_firstLine += line;
    }

    QString m_text;
    QFile m_file;
    bool m_streamed = false;
    QByteArray m_undecoded; // the start of a sequence that the next piece ends
    qint64 m_base = 0;      // the offset of m_text's first character
    qint64 m_keep = 0;
    QVector<qint64> m_lines; // the offsets of the lines' first characters, from the line m_base is in
    qint64 m_firstLine = 1;
};

class XmlCheck
{
public:
    // A document held whole.
    XmlCheck(const QString &file, const QByteArray &bytes)
        : m_file(file), m_window(QString::fromUtf8(bytes)), m_r(m_window.text())
    {
        const qsizetype dtd = QUILLET::FindDocumentTypeDeclaration(m_window.text());
        if (dtd >= 0)
            m_doctype = m_window.placeOf(dtd);
    }

    // A plain file, read from the disk.
    explicit XmlCheck(XmlFile &xml) : m_file(xml.name()), m_window(xml), m_r(&xml.rewound())
    {
        if (xml.doctype() >= 0) {
            const QString before = xml.head(xml.doctype());
            m_doctype = Place{before.count(QLatin1Char('\n')) + 1, before.size() - before.lastIndexOf(QLatin1Char('\n'))};
            xml.rewound();
        }
    }

    QStringList run()
    {
        if (m_doctype.line > 0)
            return QStringList{QStringLiteral("%1:%2:%3: %4")
                                   .arg(m_file)
                                   .arg(m_doctype.line)
                                   .arg(m_doctype.column)
                                   .arg(kNoDocumentTypeDeclarations)};
        while (!m_r.atEnd()) {
            next();
            if (m_r.isStartElement()) {
                const schema::Class *c = schema::findClass(m_r.name().toString());
                if (!c)
                    return QStringList(); // the reader names an unknown root
                object(*c);
            }
        }
        if (m_r.hasError()) {
            m_problems.prepend(QStringLiteral("%1:%2:%3: %4")
                                   .arg(m_file)
                                   .arg(m_r.lineNumber())
                                   .arg(m_r.columnNumber())
                                   .arg(m_r.errorString()));
        }
        return m_problems;
    }

private:
    // The next token; m_start is where it begins: the '<' of an element,
    // else where the reader stands after it (see textStart for text).
    void next()
    {
        // A token begins where the one before ended, or a character before,
        // where the reader looked ahead; the window keeps a margin.
        m_window.keepFrom(m_r.characterOffset() - 4096);
        m_r.readNext();
        if (m_r.isStartElement())
            m_start = m_window.placeOf(m_window.lastOpening(m_r.characterOffset()));
        else
            m_start = Place{m_r.lineNumber(), m_r.columnNumber() + 1};
    }

    // Where the text that the reader stands on begins: its first character
    // that is not white space.
    Place textStart()
    {
        const qint64 end = m_r.characterOffset();
        const auto text = m_r.text();
        int lead = 0;
        while (lead < text.size() && text.at(lead).isSpace())
            ++lead;
        // The reader may have looked one character ahead.
        const QString head = text.mid(lead, 16).toString();
        return m_window.find(head, qMax<qint64>(0, end - text.size() + lead - 2), end);
    }

    void report(const Place &at, const QString &what)
    {
        m_problems.append(QStringLiteral("%1:%2:%3: %4").arg(m_file).arg(at.line).arg(at.column).arg(what));
    }

    void given(const schema::Class &c, const schema::Field &f, QVector<int> &count, const Place &at)
    {
        if (++count[f.bit] == 2 && f.kind != schema::Kind::ObjectList && f.kind != schema::Kind::StringList
            && f.kind != schema::Kind::EnumList)
            report(at, QStringLiteral("%1: given more than once; reading keeps the last").arg(fieldName(c, f)));
    }

    // The reader stands on the object's start element; leaves it on its end.
    void object(const schema::Class &c)
    {
        const Place begin = m_start;
        QVector<int> count(c.fields.size());
        const auto attributes = m_r.attributes();
        for (const QXmlStreamAttribute &a : attributes) {
            const QString name = a.name().toString();
            if (a.namespaceUri() == QLatin1String("http://www.w3.org/2001/XMLSchema-instance"))
                continue;
            if (!c.version.isNull() && name == c.versionField.element && a.namespaceUri().isEmpty())
                continue;
            const schema::Field *f = c.fieldByElement(name);
            if (!f || !f->attribute || !a.namespaceUri().isEmpty()) {
                report(begin, QStringLiteral("%1: %2 is not an attribute of %1").arg(c.name, quoted(name)));
                continue;
            }
            given(c, *f, count, begin);
            const QString problem = valueProblem(c, *f, a.value().toString());
            if (!problem.isNull())
                report(begin, QStringLiteral("%1: %2").arg(fieldName(c, *f), problem));
        }
        while (!m_r.atEnd()) {
            next();
            if (m_r.isEndElement())
                break;
            if (m_r.isCharacters() && !m_r.isWhitespace()) {
                report(textStart(), QStringLiteral("%1: text outside of any field is not read").arg(c.name));
            } else if (m_r.isStartElement()) {
                const Place at = m_start;
                const QString name = m_r.name().toString();
                const schema::Field *f = c.fieldByElement(name);
                if (!f || (f->attribute && !f->elementToo)) {
                    report(at, QStringLiteral("%1: %2 is not an element of %1; reading skips it").arg(c.name, quoted(name)));
                    skip();
                    continue;
                }
                given(c, *f, count, at);
                if (f->kind == schema::Kind::Nested || f->kind == schema::Kind::ObjectList)
                    object(*schema::findClass(f->itemClass));
                else
                    value(c, *f);
            }
        }
        if (m_r.hasError())
            return;
        for (const schema::Field &f : c.fields) {
            if (count[f.bit] || !schema::mustBeGiven(f))
                continue;
            report(begin, f.attribute ? QStringLiteral("%1: the required attribute %2 is missing").arg(fieldName(c, f), quoted(f.element))
                                      : QStringLiteral("%1: the required element %2 is missing").arg(fieldName(c, f), quoted(f.element)));
        }
    }

    // A field's text; the reader ends on its end element.
    void value(const schema::Class &c, const schema::Field &f)
    {
        const Place at{m_r.lineNumber(), m_r.columnNumber() + 1};
        QString text;
        bool inner = false;
        while (!m_r.atEnd()) {
            next();
            if (m_r.isEndElement())
                break;
            if (m_r.isCharacters()) {
                text += m_r.text();
            } else if (m_r.isStartElement()) {
                if (!inner)
                    report(m_start, QStringLiteral("%1: holds an element, which reading does not take").arg(fieldName(c, f)));
                inner = true;
                skip();
            }
        }
        if (m_r.hasError() || inner)
            return;
        const QString problem = valueProblem(c, f, text);
        if (!problem.isNull())
            report(at, QStringLiteral("%1: %2").arg(fieldName(c, f), problem));
    }

    void skip()
    {
        int depth = 1;
        while (depth > 0 && !m_r.atEnd()) {
            m_r.readNext();
            depth += m_r.isStartElement() ? 1 : m_r.isEndElement() ? -1 : 0;
        }
    }

    QString m_file;
    TextWindow m_window;
    QXmlStreamReader m_r;
    Place m_doctype{0, 0}; // of a document type declaration; line 0 without one
    Place m_start{1, 1};
    QStringList m_problems;
};

// ---- The binary forms, by the frame's walks

class BinaryCheck : public schema::RecordVisitor
{
public:
    BinaryCheck(const QString &file, qint64 base, bool raw) : m_file(file), m_base(base), m_raw(raw) {}

    QStringList problems;

    void beginObject(const schema::Class *c, qint64 offset, qint64) override
    {
        m_objects.append(Object{c, offset, QVector<int>(c ? c->fields.size() : 0)});
    }
    void endObject() override
    {
        const Object o = m_objects.takeLast();
        if (!o.cls || m_raw)
            return;
        for (const schema::Field &f : o.cls->fields) {
            if (!o.count[f.bit] && schema::mustBeGiven(f))
                report(o.offset, QStringLiteral("%1: the required field has no record").arg(fieldName(*o.cls, f)));
        }
    }
    void presence(const schema::Class &c, const QByteArray &bits) override
    {
        for (const schema::Field &f : c.fields) {
            const bool on = (quint8(bits[f.bit / 8]) >> (f.bit % 8)) & 1;
            if (!on && f.required && f.kind != schema::Kind::Nested)
                report(m_objects.last().offset, QStringLiteral("%1: the required field is not set").arg(fieldName(c, f)));
        }
    }
    void beginField(const schema::Field *f, quint32 tag, qint64 offset, qint64 length) override
    {
        m_field = f;
        m_at = offset;
        Object &o = m_objects.last();
        if (!f && o.cls)
            report(offset, QStringLiteral("%1: a record of the unknown tag 0x%2 (%3 bytes) is skipped")
                               .arg(o.cls->name)
                               .arg(tag, 8, 16, QLatin1Char('0'))
                               .arg(length));
        if (f && f->bit >= 0)
            ++o.count[f->bit];
    }
    void beginItem(int, qint64 offset, qint64) override { m_at = offset; }
    void value(const schema::Value &v) override
    {
        const schema::Class *c = m_objects.last().cls;
        if (!m_field || !c || m_field->bit < 0)
            return;
        const schema::Field &f = *m_field;
        QString problem;
        switch (v.type) {
        case schema::Value::Text:
            if (!v.text.isNull())
                problem = valueProblem(*c, f, v.text);
            break;
        case schema::Value::Integer:
            if (f.kind == schema::Kind::Int && (v.integer < std::numeric_limits<qint32>::min() || v.integer > std::numeric_limits<qint32>::max()))
                problem = QStringLiteral("%1 is out of the range of an int, -2147483648 to 2147483647").arg(v.integer);
            else if (f.hasRange && (double(v.integer) < f.lo || double(v.integer) > f.hi))
                problem = QStringLiteral("%1 is outside the range %2").arg(v.integer).arg(rangeText(f));
            break;
        case schema::Value::Real:
            if (f.hasRange && !(v.real >= f.lo && v.real <= f.hi))
                problem = QStringLiteral("%1 is outside the range %2").arg(QString::number(v.real, 'g', 17), rangeText(f));
            break;
        case schema::Value::Index:
            if (v.integer < 0 || v.integer >= f.table.rows.size())
                problem = QStringLiteral("%1 is not a row of its table of %2").arg(v.integer).arg(f.table.rows.size());
            break;
        case schema::Value::Bytes:
            problem = QStringLiteral("a record of %1 bytes does not hold a %2").arg(v.bytes.size()).arg(schema::kindName(f.kind));
            break;
        case schema::Value::Bool:
        case schema::Value::DateTime:
            break;
        }
        if (!problem.isNull())
            report(m_at, QStringLiteral("%1: %2").arg(fieldName(*c, f), problem));
    }

private:
    struct Object {
        const schema::Class *cls;
        qint64 offset;
        QVector<int> count;
    };

    void report(qint64 offset, const QString &what)
    {
        problems.append(QStringLiteral("%1: at byte %2: %3").arg(m_file).arg(offset + m_base).arg(what));
    }

    QString m_file;
    qint64 m_base;
    bool m_raw;
    QVector<Object> m_objects;
    const schema::Field *m_field = nullptr;
    qint64 m_at = 0;
};

} // namespace

QStringList strictProblems(const Input &in)
{
    const QString &file = in.file;
    const QString &format = in.format;
    if (in.xml)
        return XmlCheck(*in.xml).run();
    if (format == QLatin1String("xml"))
        return XmlCheck(file, in.bytes).run();
    if (format == QLatin1String("json")) {
        QStringList problems;
        xmlOfJson(file, in.bytes, true, problems);
        return problems;
    }
    // The walks look at the bytes where they lie: a binary file's mapping
    // is given back when the check is done, before the document is read.
    const InputBytes view(in);
    const QByteArray &bytes = view.bytes();
    if (bytes.size() < 8)
        return QStringList();
    const schema::Class *c = schema::findClassById(qFromBigEndian<quint32>(bytes.constData() + 4));
    if (!c)
        return QStringList();
    if (format == QLatin1String("hvb")) {
        if (bytes.size() < 12 || !bytes.startsWith(QByteArray(QUILLET::kBinaryMagic, 4)))
            return QStringList();
        const qint32 length = qFromBigEndian<qint32>(bytes.constData() + 8);
        if (length < 0 || length > bytes.size() - 12)
            return QStringList();
        BinaryCheck check(file, 12, false);
        check.beginObject(c, -12, length);
        if (!schema::walkTagged(c, QByteArray::fromRawData(bytes.constData() + 12, length), QDataStream::BigEndian, check))
            return QStringList(); // the reader names the fault of lengths
        check.endObject();
        return check.problems;
    }
    if (!bytes.startsWith("HVR1"))
        return QStringList();
    BinaryCheck check(file, 8, true);
    if (!schema::walkRaw(*c, QByteArray::fromRawData(bytes.constData() + 8, bytes.size() - 8), QUILLET::kBinaryStreamVersion,
                         QDataStream::BigEndian, check))
        return QStringList();
    return check.problems;
}

} // namespace tool
