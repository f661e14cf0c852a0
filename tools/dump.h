// halvane dump: the annotated tree of a binary document.
#ifndef HALVANE_TOOLS_DUMP_H
#define HALVANE_TOOLS_DUMP_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace tool {

/*! The dump of a tagged (hvb) or raw (hvr) document, or with \a rawTags the
    records of a tagged one without the field tables. With \a offsets each
    line begins with the file offset of what it shows. A fault prints what
    was read before it and throws a DocumentError that names its offset. */
QString dump(const QString &file, const QByteArray &bytes, const QString &format, bool rawTags, bool offsets);

QString tagText(quint32 tag);

} // namespace tool

#endif
