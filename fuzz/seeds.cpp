// fuzz_seeds DIR: writes the seed corpus of the fuzz targets and their
// dictionary from the field tables: for every document class an empty, a
// fully populated and a truncated document in each form, each behind the
// class id (four big-endian bytes); element names, field numbers and class ids
// (four big-endian bytes) and name table texts.
#include <halvane/halvane.h>

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtCore/QXmlStreamWriter>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cstdio>

using namespace HALVANE;

namespace {

void put(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
}

QString escaped(const QByteArray &bytes)
{
    QString out;
    for (char c : bytes) {
        const uchar u = uchar(c);
        if (u >= 0x20 && u < 0x7F && c != '"' && c != '\\')
            out += QLatin1Char(c);
        else
            out += QStringLiteral("\\x%1").arg(u, 2, 16, QLatin1Char('0'));
    }
    return out;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_seeds DIR\n");
        return 2;
    }
    const QDir dir(QString::fromLocal8Bit(argv[1]));
    for (const char *form : {"xml", "tagged", "raw"})
        QDir().mkpath(dir.filePath(QStringLiteral("corpus/") + QLatin1String(form)));

    QVector<const schema::Class *> documents;
    for (const schema::Class *c : schema::classes()) {
        if (c->document)
            documents.append(c);
    }
    for (const schema::Class *document : documents) {
        const schema::Class &c = *document;
        QByteArray selector(4, '\0');
        qToBigEndian<quint32>(c.id, selector.data());
        auto full = c.create();
        full->SetXmlString(schema::exampleXml(c));
        const auto empty = c.create();
        struct Variant {
            const char *name;
            const QUILLET::IQuilletObject *object;
        } variants[] = {{"full", full.get()}, {"empty", empty.get()}};
        for (const Variant &v : variants) {
            QString xml;
            {
                QXmlStreamWriter w(&xml);
                v.object->GetXml(w);
            }
            QByteArray tagged;
            {
                QDataStream s(&tagged, QIODevice::WriteOnly);
                v.object->GetBinary(s, 0, false);
            }
            QByteArray raw;
            {
                QDataStream s(&raw, QIODevice::WriteOnly);
                c.writeRaw(*v.object, s);
            }
            const QByteArray block = v.object->GetBinaryRepresentationAsQByteArray();
            const QString base = c.name + QLatin1Char('-') + QLatin1String(v.name);
            const QByteArray xmlBytes = xml.toUtf8();
            put(dir.filePath(QStringLiteral("corpus/xml/") + base), selector + xmlBytes);
            put(dir.filePath(QStringLiteral("corpus/xml/") + base + QStringLiteral("-cut")), selector + xmlBytes.left(xmlBytes.size() / 2));
            put(dir.filePath(QStringLiteral("corpus/tagged/") + base), selector + QByteArray(1, '\0') + tagged);
            put(dir.filePath(QStringLiteral("corpus/tagged/") + base + QStringLiteral("-cut")),
                selector + QByteArray(1, '\0') + tagged.left(tagged.size() / 2));
            put(dir.filePath(QStringLiteral("corpus/tagged/") + base + QStringLiteral("-block")), selector + QByteArray(1, '\1') + block);
            put(dir.filePath(QStringLiteral("corpus/tagged/") + base + QStringLiteral("-compressed")),
                selector + QByteArray(1, '\3') + qCompress(block));
            put(dir.filePath(QStringLiteral("corpus/raw/") + base), selector + raw);
            put(dir.filePath(QStringLiteral("corpus/raw/") + base + QStringLiteral("-cut")), selector + raw.left(raw.size() / 2));
        }
    }

    // The dictionary: words the readers look for, and field tags and class ids.
    QSet<QString> words;
    QSet<quint32> numbers;
    for (const schema::Class *c : schema::classes()) {
        words.insert(QLatin1Char('<') + c->name + QLatin1Char('>'));
        numbers.insert(c->id);
        for (const schema::Field &f : c->fields) {
            words.insert(QLatin1Char('<') + f.element + QLatin1Char('>'));
            words.insert(QStringLiteral("</") + f.element + QLatin1Char('>'));
            numbers.insert(f.tag);
            for (const QStringList &row : f.table.rows)
                words.insert(row.value(0));
        }
    }
    QStringList sorted = words.values();
    std::sort(sorted.begin(), sorted.end());
    QString dict;
    for (const QString &w : sorted)
        dict += QLatin1Char('"') + escaped(w.toUtf8()) + QStringLiteral("\"\n");
    QList<quint32> numberList = numbers.values();
    std::sort(numberList.begin(), numberList.end());
    for (quint32 number : numberList) {
        QByteArray bytes(4, '\0');
        for (int b = 0; b < 4; ++b)
            bytes[b] = char(number >> (24 - 8 * b));
        dict += QLatin1Char('"') + escaped(bytes) + QStringLiteral("\"\n");
    }
    put(dir.filePath(QStringLiteral("halvane.dict")), dict.toUtf8());
    std::printf("%d document classes, %d dictionary words\n", int(documents.size()), int(sorted.size() + numberList.size()));
    return 0;
}
