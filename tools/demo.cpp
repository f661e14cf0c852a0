// halvane-demo: builds a MeasurementResultList and an Administration, writes
// each in the XML form, the tagged binary form and the raw binary form, reads
// every form back and reports whether the copies equal the originals.
#include <halvane/halvane.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QTextStream>

#include <cstdio>
#include <functional>

using namespace HALVANE;

namespace {

MeasurementResultList makeResults()
{
    MeasurementResultList list;
    list.SetValidate(true);
    const QDateTime start(QDate(2026, 11, 24), QTime(12, 0, 0, 125), Qt::UTC);
    const char *items[] = {"CW_Level", "CW_Offset", "CW_Bandwidth"};
    const double values[] = {42.125, -1250.0, 9000.5};
    for (int i = 0; i < 3; ++i) {
        MeasurementData data;
        data.SetValidate(true);
        data.SetMeasurementItem(MeasurementData::NameToMeasurementItem(QString::fromLatin1(items[i])));
        data.SetInternalKey(1000 + i);
        data.SetMeasurementMode(MeasurementData::NameToMeasurementMode(QStringLiteral("CW_DMM")));
        data.SetMeasurementState(2);
        MeasurementResult result;
        result.SetTimeStamp(start.addMSecs(250 * i));
        result.SetDoubleResult(values[i]);
        result.SetUnit(MeasurementData::MeasurementItemToUnit(data.GetMeasurementItem()));
        data.SetMeasurementResult(result);
        list.AppendMeasurementData(data);
    }
    return list;
}

Administration makeAdministration()
{
    Administration admin;
    admin.SetValidate(true);
    admin.SetHardwareStatus(Administration::NameToHardwareStatus(QStringLiteral("RUNNING")));
    admin.SetCW(Administration::GuinameToCW(QStringLiteral("AM+")));
    admin.SetDriverType(Administration::HelpidToDriverType(60480));
    admin.SetDrvCommands(Administration::NameToDrvCommands(QStringLiteral("FFM")));
    admin.SetRDSState(Administration::NameToRDSState(QStringLiteral("DATA")));
    admin.SetClearGroup(0);
    admin.SetIFPan(Administration::SelflagToIFPan(QStringLiteral("MAX")));
    admin.SetDF(Administration::ItemnameToDF(QStringLiteral("BEARINGRESULT")));
    admin.SetGeneral(1);
    admin.SetMassDataStreams(Administration::TagToMassDataStreams(QStringLiteral("IFP")));
    admin.SetSpeed(Administration::NameToSpeed(QStringLiteral("Ludicrous speed")));
    SensorMetaData &meta = admin.GetSensorMetaData();
    meta.SetGroup(QStringLiteral("Level"));
    meta.SetUnit(QStringLiteral("dBuV"));
    meta.GetMinMaxStep().SetMin(-30.0);
    meta.GetMinMaxStep().SetMax(130.0);
    meta.GetMinMaxStep().SetStep(0.5);
    meta.SetValueMin(-20.0);
    meta.SetValueMax(120.0);
    meta.SetValueStep(1.0);
    meta.SetMeasurementInvalid(false);
    return admin;
}

QByteArray rawForm(const QUILLET::IQuilletObject &, const std::function<void(QDataStream &)> &write)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    write(stream);
    return bytes;
}

template <class T>
bool roundTrip(const char *title, const T &original)
{
    QTextStream out(stdout);
    out << "== " << title << "\n";

    const QString xml = original.GetXmlString();
    T fromXml;
    fromXml.SetXmlString(xml);
    out << xml;

    const QByteArray tagged = original.GetBinaryRepresentationAsQByteArray();
    T fromTagged;
    fromTagged.SetBinaryRepresentation(tagged);

    const QByteArray raw = rawForm(original, [&original](QDataStream &s) {
        original.GetVersionSpecificBinaryWithoutValidation(s);
    });
    T fromRaw;
    QDataStream rawIn(raw);
    fromRaw.SetVersionSpecificBinaryWithoutValidation(rawIn);

    // XML and the tagged form keep two decimals; the raw form keeps every bit.
    const bool ok = fromXml.GetXmlString() == xml && fromTagged.GetXmlString() == xml && fromRaw == original;
    out << "XML " << xml.toUtf8().size() << " bytes, tagged " << tagged.size() << " bytes, raw "
        << raw.size() << " bytes: " << (ok ? "read back equal" : "MISMATCH") << "\n";
    return ok;
}

} // namespace

int main()
{
    try {
        const bool ok = roundTrip("MeasurementResultList", makeResults())
                        & roundTrip("Administration", makeAdministration());
        return ok ? 0 : 1;
    } catch (const QuilletRootException &e) {
        std::fprintf(stderr, "halvane-demo: %s\n", e.GetMessage().toLocal8Bit().constData());
        return 1;
    }
}
