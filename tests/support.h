// Helpers shared by the tests: the forms of an object as bytes and text, a
// record builder for hand-made tagged input, and an allocation counter.
#ifndef HALVANE_TESTS_SUPPORT_H
#define HALVANE_TESTS_SUPPORT_H

#include <halvane/halvane.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace test {

/*! Number of operator new calls so far in this thread. */
long long allocations();

inline std::string hex(const QByteArray &bytes)
{
    return bytes.toHex(' ').toUpper().toStdString();
}

inline QByteArray written(const std::function<void(QDataStream &)> &write)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    write(stream);
    return bytes;
}

/*! GetBinary's output, or "(nothing)" when it returns false. */
template <class T>
QByteArray tagged(const T &object, int tag = 0, bool writeTag = false)
{
    bool result = false;
    QByteArray bytes = written([&](QDataStream &s) { result = object.GetBinary(s, tag, writeTag); });
    return result ? bytes : QByteArray("(nothing)");
}

template <class T>
QByteArray raw(const T &object)
{
    return written([&](QDataStream &s) { object.GetVersionSpecificBinaryWithoutValidation(s); });
}

/*! Reads an object's tagged form (object length first, no tag). */
template <class T>
void readTagged(T &object, const QByteArray &bytes)
{
    QDataStream in(bytes);
    qint32 length = 0;
    in >> length;
    object.SetBinary(in, length);
}

template <class T>
void readRaw(T &object, const QByteArray &bytes)
{
    QDataStream in(bytes);
    object.SetVersionSpecificBinaryWithoutValidation(in);
}

/*! GetXml on a writer without document prologue or formatting. */
template <class T>
QString xml(const T &object)
{
    QString text;
    QXmlStreamWriter writer(&text);
    object.GetXml(writer);
    return text;
}

template <class T>
void readXml(T &object, const QString &text)
{
    QXmlStreamReader reader(text);
    reader.readNextStartElement();
    object.ProcessXml(reader);
    ASSERT_FALSE(reader.hasError()) << reader.errorString().toStdString();
}

/*! Builds tagged input by hand: records of tag, length and value. */
class Records
{
public:
    Records &i32(qint32 v) { m_stream << v; return *this; }
    Records &i64(qint64 v) { m_stream << v; return *this; }
    Records &byte(quint8 v) { m_stream << v; return *this; }
    Records &text(const QByteArray &utf8) { m_stream << utf8; return *this; }
    Records &bytes(const QByteArray &b) { m_stream.writeRawData(b.constData(), b.size()); return *this; }
    /*! A record whose value is written by \a value; its length is counted. */
    Records &record(quint32 tag, const std::function<void(Records &)> &value)
    {
        Records inner;
        value(inner);
        return i32(qint32(tag)).i32(inner.data().size()).bytes(inner.data());
    }
    Records &textRecord(quint32 tag, const QByteArray &utf8)
    {
        return record(tag, [&](Records &r) { r.text(utf8); });
    }
    const QByteArray &data() const { return m_bytes; }
    /*! The records behind an object length. */
    QByteArray object() const
    {
        Records out;
        return out.i32(m_bytes.size()).bytes(m_bytes).data();
    }

private:
    QByteArray m_bytes;
    QDataStream m_stream{&m_bytes, QIODevice::WriteOnly};
};

/*! Expects \a body to throw E with exactly \a message. */
template <class E>
void expectThrow(const std::function<void()> &body, const QString &message)
{
    try {
        body();
        ADD_FAILURE() << "no exception; expected " << message.toStdString();
    } catch (const E &e) {
        EXPECT_EQ(e.GetMessage().toStdString(), message.toStdString());
    }
}

} // namespace test

#endif
