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
#include <utility>

namespace test {

/*! Number of operator new calls so far in this thread. */
long long allocations();

/*! The largest block that malloc, calloc or realloc handed to this thread
    while \a body ran (Qt's arrays and strings come from there, the objects
    through operator new); -1 where it cannot be told, in a build whose
    sanitizer owns malloc. */
long long largestAllocation(const std::function<void()> &body);

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

/*! What \a write writes, on a writer without document prologue or formatting. */
inline QString writtenXml(const std::function<void(QXmlStreamWriter &)> &write)
{
    QString text;
    QXmlStreamWriter writer(&text);
    write(writer);
    return text;
}

template <class T>
QString xml(const T &object)
{
    return writtenXml([&](QXmlStreamWriter &w) { object.GetXml(w); });
}

template <class T>
void readXml(T &object, const QString &text)
{
    QXmlStreamReader reader(text);
    reader.readNextStartElement();
    object.ProcessXml(reader);
    ASSERT_FALSE(reader.hasError()) << reader.errorString().toStdString();
}

/*! A filled object of class T, read from the registry's example document. */
template <class T>
T example()
{
    T object;
    object.SetValidate(true);
    object.SetXmlString(HALVANE::schema::exampleXml(*HALVANE::schema::findClass(T::GetStaticObjectName())));
    return object;
}

/*! The three forms of an object as one text, to compare in one go. */
template <class T>
std::string forms(const T &object)
{
    return xml(object).toStdString() + "|" + hex(tagged(object)) + "|" + hex(raw(object));
}

/*! Reads \a original back from XML, the tagged form, the raw form and a
    binary block: each copy equals it and writes the same three forms. XML
    and the tagged form keep two decimals: for values with more, say so in
    \a twoDecimals, and the copies from them must only write the same text
    forms. */
template <class T>
void expectRoundTrip(const T &original, bool twoDecimals = true)
{
    SCOPED_TRACE(T::GetStaticObjectName().toStdString());
    T fromXml, fromTagged, fromRaw, fromBlock;
    fromXml.SetValidate(true);
    fromTagged.SetValidate(true);
    fromBlock.SetValidate(true);
    readXml(fromXml, xml(original));
    readTagged(fromTagged, tagged(original));
    readRaw(fromRaw, raw(original));
    fromBlock.SetBinaryRepresentation(original.GetBinaryRepresentationAsQByteArray());
    const std::string expected = forms(original);
    const std::pair<const char *, const T *> backs[] = {
        {"from XML", &fromXml}, {"from the tagged form", &fromTagged}, {"from the raw form", &fromRaw}, {"from a block", &fromBlock}};
    for (const auto &back : backs) {
        if (twoDecimals || back.second == &fromRaw) {
            EXPECT_TRUE(*back.second == original) << back.first << ": " << xml(*back.second).toStdString();
            EXPECT_EQ(forms(*back.second), expected) << back.first;
        } else {
            EXPECT_EQ(xml(*back.second), xml(original)) << back.first;
            EXPECT_EQ(hex(tagged(*back.second)), hex(tagged(original))) << back.first;
        }
    }
}

/*! A ModeManager with its three fields set: On, On, LeaveScanMode. */
inline HALVANE::ModeManager fullModeManager()
{
    HALVANE::ModeManager m;
    m.SetValidate(true);
    m.SetRunningState(1);
    m.SetDualState(1);
    m.SetSearchScanMode(3);
    return m;
}

/*! An Administration with every field set, values of at most two decimals. */
inline HALVANE::Administration administration()
{
    HALVANE::Administration a;
    a.SetValidate(true);
    a.SetHardwareStatus(6);
    a.SetCW(10);
    a.SetDriverType(33);
    a.SetDrvCommands(38);
    a.SetRDSState(2);
    a.SetClearGroup(1);
    a.SetIFPan(3);
    a.SetDF(7);
    a.SetGeneral(1);
    a.SetMassDataStreams(16);
    a.SetSpeed(3);
    HALVANE::SensorMetaData &s = a.GetSensorMetaData();
    s.SetGroup(QStringLiteral("Level"));
    s.SetUnit(QStringLiteral("dB\u00b5V"));
    s.GetMinMaxStep().SetMin(-10);
    s.GetMinMaxStep().SetMax(10.5);
    s.GetMinMaxStep().SetStep(0.25);
    s.SetValueMin(1);
    s.SetValueMax(2);
    s.SetValueStep(3);
    s.SetMeasurementInvalid(true);
    s.SetOverload(0);
    return a;
}

/*! A complete MeasurementData (a list that validates takes it) with every
    field set; item and value as given. */
inline HALVANE::MeasurementData measurement(int item, double value)
{
    HALVANE::MeasurementData d;
    d.SetValidate(true);
    d.SetMeasurementItem(HALVANE::MeasurementData::MeasurementItem(item));
    d.SetInternalKey(-7);
    d.SetMeasurementMode(8);
    d.SetMeasurementState(1);
    d.GetMeasurementResult().SetTimeStamp(QDateTime(QDate(2026, 11, 24), QTime(8, 30, 15, 250), Qt::UTC));
    d.GetMeasurementResult().SetDoubleResult(value);
    d.GetMeasurementResult().SetStringResult(QStringLiteral("text"));
    d.GetMeasurementResult().SetUnit(QStringLiteral("dBuV"));
    return d;
}

/*! The message of a length error that \a objectName's SetBinary reports. */
inline QString lengthError(const QString &objectName)
{
    return objectName + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation");
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
