// Strict checking: the values of a document whose text or bytes reading
// would change or lose, found in the document itself so that each can be
// named by its line and column (XML) or byte offset (binary forms).
#ifndef HALVANE_TOOLS_STRICT_H
#define HALVANE_TOOLS_STRICT_H

#include "document.h"

#include <halvane/frame/schema/schema.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace tool {

/*! What is wrong with \a text as the value of field \a f of class \a c (an
    item, for a list of strings or enumerated values), as the end of a
    sentence ("'abc' is not a number"); null when reading keeps it. */
QString valueProblem(const HALVANE::schema::Class &c, const HALVANE::schema::Field &f, const QString &text);

/*! The faults of a document in a form, one line each: "FILE:LINE:COLUMN:
    ..." in XML, "FILE: at byte N: ..." in the binary forms (offsets from the
    start of the file), "FILE: PATH: ..." in JSON. An XML syntax error comes
    first. Faults of the header and of lengths are left to the reader. */
QStringList strictProblems(const Input &in);

} // namespace tool

#endif
