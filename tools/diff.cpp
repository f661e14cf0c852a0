// halvane diff: the field paths whose texts differ between two documents of
// one class, read from the XML form that the library writes of each.
#include "document.h"

using namespace HALVANE;

namespace tool {

namespace {

const QString kNone = QStringLiteral("(none)");

QString join(const QString &path, const QString &name)
{
    return path.isEmpty() ? name : path + QLatin1Char('.') + name;
}

void line(QStringList &out, const QString &path, const QString &a, const QString &b)
{
    out.append(QStringLiteral("%1: %2 \u2192 %3").arg(path, a, b));
}

void compare(const Node &a, const Node &b, const QString &path, QStringList &out);

void compareEntry(const schema::Field &f, const Entry *ea, const Entry *eb, const QString &path, QStringList &out)
{
    const QString at = join(path, f.element);
    switch (f.kind) {
    case schema::Kind::Nested:
        if (ea && eb)
            compare(ea->nodes.value(0), eb->nodes.value(0), at, out);
        else
            line(out, at, ea ? f.itemClass : kNone, eb ? f.itemClass : kNone);
        return;
    case schema::Kind::ObjectList: {
        const int na = ea ? ea->nodes.size() : 0, nb = eb ? eb->nodes.size() : 0;
        for (int i = 0; i < qMax(na, nb); ++i) {
            const QString item = at + QStringLiteral("[%1]").arg(i);
            if (i < na && i < nb)
                compare(ea->nodes[i], eb->nodes[i], item, out);
            else
                line(out, item, i < na ? f.itemClass : kNone, i < nb ? f.itemClass : kNone);
        }
        return;
    }
    case schema::Kind::StringList:
    case schema::Kind::EnumList: {
        const int na = ea ? ea->texts.size() : 0, nb = eb ? eb->texts.size() : 0;
        for (int i = 0; i < qMax(na, nb); ++i) {
            const QString ta = i < na ? ea->texts[i] : kNone, tb = i < nb ? eb->texts[i] : kNone;
            if (i >= na || i >= nb || ta != tb)
                line(out, at + QStringLiteral("[%1]").arg(i), ta, tb);
        }
        return;
    }
    default: {
        const QString ta = ea ? ea->texts.value(0) : kNone, tb = eb ? eb->texts.value(0) : kNone;
        if (!ea || !eb || ta != tb)
            line(out, at, ta, tb);
        return;
    }
    }
}

void compare(const Node &a, const Node &b, const QString &path, QStringList &out)
{
    if (a.version != b.version)
        line(out, join(path, a.cls->versionField.element), a.version.isNull() ? kNone : a.version,
             b.version.isNull() ? kNone : b.version);
    for (const schema::Field &f : a.cls->fields) {
        const Entry *ea = a.entry(f), *eb = b.entry(f);
        if (ea || eb)
            compareEntry(f, ea, eb, path, out);
    }
}

} // namespace

QStringList differences(const Node &a, const Node &b)
{
    QStringList out;
    compare(a, b, QString(), out);
    return out;
}

} // namespace tool
