// libFuzzer targets, one per form (built three times with HALVANE_FUZZ_FORM
// set to 0 for XML, 1 for the tagged form, 2 for the raw form). The first four
// bytes of an input are the id of the class to read (big-endian), the rest is
// the document; an input whose id is no class's is rejected. Naming the class
// by its id, not by its place in the registry, keeps saved inputs reading the
// same class when classes are added.
//
// Oracles: no crash and no sanitizer report; no exception but the library's;
// an object that was read without an exception, written and read again,
// writes the same text or bytes as the first time; writing an object whose
// read failed does not crash; while an input of n bytes is read, the memory
// it holds at its peak stays below kBytesPerInputByte * n + kFixedBytes (for
// a compressed block, n is what it claims to hold, within the library's limit).
// Time and total memory are bounded by libFuzzer's -timeout, -malloc_limit_mb
// and -rss_limit_mb.
#include <halvane/halvane.h>
#include <halvane/base/binaryheader.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QtEndian>
#include <QtCore/QTimeZone>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace HALVANE;

namespace {

// Bytes in front of the document: the class id.
constexpr size_t kClassBytes = 4;

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "oracle: %s\n", what);
    std::abort();
}

QString xmlOf(const QUILLET::IQuilletObject &o)
{
    QString text;
    QXmlStreamWriter w(&text);
    o.GetXml(w);
    return text;
}

QByteArray taggedOf(const QUILLET::IQuilletObject &o)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    o.GetBinary(s, 0, false);
    return bytes;
}

QByteArray rawOf(const schema::Class &c, const QUILLET::IQuilletObject &o)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    c.writeRaw(o, s);
    return bytes;
}

std::unique_ptr<QUILLET::IQuilletObject> readXml(const schema::Class &c, const QString &text)
{
    auto o = c.create();
    QXmlStreamReader reader(text);
    reader.readNextStartElement();
    o->ProcessXml(reader);
    return o;
}

std::unique_ptr<QUILLET::IQuilletObject> readTagged(const schema::Class &c, const QByteArray &bytes, bool validate)
{
    auto o = c.create();
    o->SetValidate(validate);
    QDataStream s(bytes);
    qint32 length = 0;
    s >> length;
    o->SetBinary(s, length);
    return o;
}

// XML and the tagged form round numbers to two decimals: the second pass
// must write what the first wrote. Objects read in the raw form hold values
// that no setter checked; they do not validate, and neither do the objects
// their tagged form is read into. The raw form itself is only written twice:
// its writer leaves out unset required bools and nested objects that its
// reader expects, by design.
void checkRoundTrips(const schema::Class &c, const QUILLET::IQuilletObject &o, bool validate)
{
    const QString xml1 = xmlOf(*readXml(c, xmlOf(o)));
    if (xmlOf(*readXml(c, xml1)) != xml1)
        fail("XML written again differs");
    const QByteArray tagged1 = taggedOf(*readTagged(c, taggedOf(o), validate));
    if (taggedOf(*readTagged(c, tagged1, validate)) != tagged1)
        fail("tagged form written again differs");
    if (rawOf(c, o) != rawOf(c, o))
        fail("raw form is not written the same twice");
}

// Memory held by the reader. The hooks see every allocation of the process;
// they count only while a read is under way. Frees of memory that was
// allocated before the read lower the count, which only makes it lenient.
constexpr long long kBytesPerInputByte = 64;
constexpr long long kFixedBytes = 1 << 20;
bool counting = false;
long long held = 0;
long long peak = 0;

void onAllocate(const volatile void *, size_t size)
{
    if (counting) {
        held += static_cast<long long>(size);
        if (held > peak)
            peak = held;
    }
}

void onFree(const volatile void *pointer)
{
    if (counting && pointer)
        held -= static_cast<long long>(__sanitizer_get_allocated_size(const_cast<const void *>(pointer)));
}

// The bytes an input accounts for: its size, or for a compressed block what
// the block claims to hold, as far as the library accepts the claim.
long long accountedBytes(const uint8_t *data, size_t size)
{
    long long bytes = static_cast<long long>(size);
#if HALVANE_FUZZ_FORM == 1
    // The class id, the byte that chooses how to read, then the block.
    if (size >= kClassBytes + 5 && (data[kClassBytes] & 3) == 3) {
        const qint64 block = bytes - qint64(kClassBytes) - 1;
        const qint64 limit = std::min(QUILLET::kMaxUncompressedSize,
                                      QUILLET::kMaxCompressionRatio * block + QUILLET::kCompressedClaimSlack);
        bytes = std::max<qint64>(bytes, std::min<qint64>(qFromBigEndian<quint32>(data + kClassBytes + 1), limit));
    }
#else
    (void)data;
#endif
    return bytes;
}

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

// Qt's warnings about corrupt compressed data would drown libFuzzer's output.
extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler(quiet);
    __sanitizer_install_malloc_and_free_hooks(onAllocate, onFree);
    // First uses that fill Qt's lasting caches (the time zone list) are not
    // the reader's doing.
    QTimeZone::availableTimeZoneIds();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < kClassBytes)
        return -1;
    const schema::Class *known = schema::findClassById(qFromBigEndian<quint32>(data));
    if (!known)
        return -1;
    const schema::Class &c = *known;
    const QByteArray input =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data + kClassBytes), int(size - kClassBytes));
    auto object = c.create();
    bool read = false;
    held = peak = 0;
    counting = true;
    try {
#if HALVANE_FUZZ_FORM == 0
        object->SetXmlString(QString::fromUtf8(input));
#elif HALVANE_FUZZ_FORM == 1
        if (!input.isEmpty() && (input[0] & 1)) {
            // The whole input as a block, plain or compressed.
            if (input[0] & 2)
                object->SetCompressedBinaryRepresentation(input.mid(1));
            else
                object->SetBinaryRepresentation(input.mid(1));
        } else {
            QBuffer buffer;
            buffer.setData(input.mid(1));
            buffer.open(QIODevice::ReadOnly);
            QDataStream s(&buffer);
            qint32 length = 0;
            s >> length;
            object->SetBinary(s, length);
        }
#else
        object->SetValidate(false);
        QDataStream s(input);
        c.readRaw(*object, s);
#endif
        read = true;
    } catch (const QuilletRootException &) {
    }
    counting = false;
    static const bool report = std::getenv("HALVANE_FUZZ_MEMORY") != nullptr;
    if (report)
        std::fprintf(stderr, "memory: %lld bytes held for %zu input bytes\n", peak, size);
    if (peak > kBytesPerInputByte * accountedBytes(data, size) + kFixedBytes)
        fail("the reader held more memory than the input accounts for");
    try {
        if (read)
            checkRoundTrips(c, *object, object->GetValidate());
        else {
            xmlOf(*object);
            taggedOf(*object);
            rawOf(c, *object);
        }
    } catch (const QuilletRootException &) {
        if (read)
            fail("an object read without an exception could not be written");
    }
    return 0;
}
