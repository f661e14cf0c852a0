// Text form of field values, shared by the XML form and the tagged binary form.
#ifndef HALVANE_FRAME_TEXT_H
#define HALVANE_FRAME_TEXT_H

#include "../model/descriptor.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringView>

namespace HALVANE {
namespace frame {

/*! Storage big enough for any scalar value or list item of a field. */
union ScalarValue {
    bool b;
    qint8 e;
    qint32 i;
    qint64 l;
    double d;
    float f;
};

/*! The text of a scalar value (XML element text and attribute values). */
QString valueText(const Field &f, const void *value);
/*! The UTF-8 text of a value kind that the tagged form writes as text. */
QByteArray valueUtf8(const Field &f, const void *value);

/*! Converts a text to the value of a number, enumerated or list item kind;
    text that is no number gives 0. */
void numberFromText(const Field &f, QStringView text, ScalarValue &out);
/*! Reads element or attribute text into the field through its setter, or
    appends it as an item for a list of strings or enumerated values. */
void setFromText(const Obj &o, int field, QStringView text);
/*! As setFromText, from the UTF-8 text of a tagged record. */
void setFromUtf8(const Obj &o, int field, const char *utf8, int size);

} // namespace frame
} // namespace HALVANE

#endif
