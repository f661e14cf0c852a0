// halvane_bench: the library against the hand-written baseline on the same
// documents, every field set, validation on. With --report it prints one
// table (time per document and per item, ratios, memory and allocations);
// with --quick it runs only the small documents (for CI). Where protobuf was
// found, the MeasurementResultList documents are also built, serialised and
// parsed as protobuf messages, for reference.
#include "baseline.h"
#include "baseline_antenna.h"
#include "baseline_capabilities.h"
#include "baseline_settings.h"
#include "documents.h"
#ifdef HALVANE_BENCH_PROTOBUF
#include "protobuf_documents.h"

#include <google/protobuf/arena.h>
#endif

#include <halvane/halvane.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSysInfo>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

// ---- Allocation counting for the report

namespace {
long long g_allocations = 0;
}

void *operator new(std::size_t size)
{
    ++g_allocations;
    if (void *p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}

void operator delete(void *p) noexcept
{
    std::free(p);
}

void operator delete(void *p, std::size_t) noexcept
{
    std::free(p);
}

namespace {

// ---- Forms of a document, for the library and for the baseline

template <class T>
QByteArray libraryTagged(const T &object)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream s(&buffer);
    object.GetBinary(s, 0, false);
    return bytes;
}

template <class T>
QByteArray libraryRaw(const T &object)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream s(&buffer);
    object.GetVersionSpecificBinaryWithoutValidation(s);
    return bytes;
}

template <class T>
QString libraryXml(const T &object)
{
    QString text;
    QXmlStreamWriter w(&text);
    object.GetXml(w);
    return text;
}

template <class P>
QByteArray plainTagged(const P &plain)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream s(&buffer);
    baseline::writeTagged(s, plain);
    return bytes;
}

template <class P>
QByteArray plainRaw(const P &plain)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream s(&buffer);
    baseline::writeRaw(s, plain);
    return bytes;
}

template <class P>
QString plainXml(const P &plain)
{
    QString text;
    QXmlStreamWriter w(&text);
    baseline::writeXml(w, plain);
    return text;
}

// ---- One document: its library object, its plain struct, its size in items

struct Document {
    std::string name;
    int items;
    std::function<void(benchmark::State &, const std::string &form, bool library)> run;
    // The same document as protobuf messages (one of kProtobufOps), where it has them.
    std::function<void(benchmark::State &, const std::string &op)> protobuf = nullptr;
};

// The protobuf benchmark a row of the table is compared with: the generated
// setters for "build", SerializeToString for both binary writes and
// ParseFromString for both binary reads; none for the other forms.
const char *const kProtobufOps[] = {"build", "serialise", "parse"};

std::string protobufName(const std::string &document, const char *op)
{
    return document + " | protobuf " + op;
}

const char *protobufOp(const std::string &form)
{
    if (form == "build")
        return "build";
    if (form == "tagged write" || form == "raw write")
        return "serialise";
    if (form == "tagged read" || form == "raw read")
        return "parse";
    return nullptr;
}

#ifdef HALVANE_BENCH_PROTOBUF
// Each iteration makes what the library's loop makes: a fresh list, a fresh
// byte string, a fresh message to parse into.
void runProtobuf(benchmark::State &state, const std::string &op, const halvane_bench::MeasurementResultList &list,
                 int items)
{
    qint64 bytes = 0;
    if (op == "build") {
        for (auto _ : state) {
            const halvane_bench::MeasurementResultList object = documents::protobufResults(items);
            benchmark::DoNotOptimize(&object);
        }
    } else if (op == "serialise") {
        for (auto _ : state) {
            std::string out;
            list.SerializeToString(&out);
            bytes = qint64(out.size());
            benchmark::DoNotOptimize(out.data());
        }
    } else if (op == "parse") {
        std::string in;
        list.SerializeToString(&in);
        bytes = qint64(in.size());
        for (auto _ : state) {
            halvane_bench::MeasurementResultList object;
            if (!object.ParseFromString(in))
                state.SkipWithError("protobuf could not parse its own bytes");
            benchmark::DoNotOptimize(&object);
        }
    }
    state.SetBytesProcessed(qint64(state.iterations()) * bytes);
}
#endif

bool plainEqual(const baseline::ModeManager &a, const baseline::ModeManager &b)
{
    return a.runningState == b.runningState && a.dualState == b.dualState && a.searchScanMode == b.searchScanMode;
}
bool plainEqual(const baseline::Administration &a, const baseline::Administration &b)
{
    const auto &s = a.sensorMetaData;
    const auto &t = b.sensorMetaData;
    return a.hardwareStatus == b.hardwareStatus && a.cw == b.cw && a.driverType == b.driverType
           && a.drvCommands == b.drvCommands && a.rdsState == b.rdsState && a.clearGroup == b.clearGroup
           && a.ifPan == b.ifPan && a.df == b.df && a.general == b.general && a.massDataStreams == b.massDataStreams
           && a.speed == b.speed && s.group == t.group && s.unit == t.unit && s.minMaxStep.min == t.minMaxStep.min
           && s.minMaxStep.max == t.minMaxStep.max && s.minMaxStep.step == t.minMaxStep.step
           && s.valueMin == t.valueMin && s.valueMax == t.valueMax && s.valueStep == t.valueStep
           && s.measurementInvalid == t.measurementInvalid && s.overload == t.overload;
}
bool plainEqual(const baseline::MeasurementResultList &a, const baseline::MeasurementResultList &b)
{
    return a == b;
}
bool plainEqual(const baseline::Capabilities &a, const baseline::Capabilities &b)
{
    return a == b;
}
bool plainEqual(const baseline::ReceiverSettings &a, const baseline::ReceiverSettings &b)
{
    return a == b;
}
bool plainEqual(const baseline::AntennaMatrixConfiguration &a, const baseline::AntennaMatrixConfiguration &b)
{
    return a == b;
}

// The first change after a copy, the same on both sides.
void touch(HALVANE::ModeManager &m) { m.SetDualState(1); }
void touch(baseline::ModeManager &m) { m.dualState = 1; }
void touch(HALVANE::Administration &a) { a.GetSensorMetaData().SetOverload(4); }
void touch(baseline::Administration &a) { a.sensorMetaData.overload = 4; }
void touch(HALVANE::MeasurementResultList &l) { l.GetMeasurementData()[0].SetInternalKey(1); }
void touch(baseline::MeasurementResultList &l) { l.measurementData[0].internalKey = 1; }
void touch(HALVANE::Capabilities &c) { c.GetHardwareOptions().SetGPS(false); }
void touch(baseline::Capabilities &c) { c.hardwareOptions.gps = false; }
void touch(HALVANE::ReceiverSettings &r) { r.GetScanSettings().SetStepFrequency(12500); }
void touch(baseline::ReceiverSettings &r) { r.scanSettings.stepFrequency = 12500; }
void touch(HALVANE::AntennaMatrixConfiguration &m) { m.GetAuxTimings().GetAuxTiming()[0].SetAuxGuardTime(1); }
void touch(baseline::AntennaMatrixConfiguration &m) { m.auxTimings.auxTiming[0].auxGuardTime = 1; }

template <class Lib, class Plain>
void runForm(benchmark::State &state, const std::string &form, bool library, const Lib &lib, const Plain &plain,
             const std::function<Lib()> &build, const std::function<Plain()> &buildPlain)
{
    qint64 bytes = 0;
    if (form == "xml write") {
        for (auto _ : state) {
            const QString text = library ? libraryXml(lib) : plainXml(plain);
            bytes = text.size() * 2;
            benchmark::DoNotOptimize(text.constData());
        }
    } else if (form == "xml read") {
        const QString text = libraryXml(lib);
        bytes = text.size() * 2;
        for (auto _ : state) {
            QXmlStreamReader reader(text);
            reader.readNextStartElement();
            if (library) {
                Lib object;
                object.SetValidate(true);
                object.ProcessXml(reader);
                benchmark::DoNotOptimize(&object);
            } else {
                Plain object;
                baseline::readXml(reader, object);
                benchmark::DoNotOptimize(&object);
            }
        }
    } else if (form == "tagged write" || form == "raw write") {
        const bool tagged = form == "tagged write";
        for (auto _ : state) {
            const QByteArray out = library ? (tagged ? libraryTagged(lib) : libraryRaw(lib))
                                           : (tagged ? plainTagged(plain) : plainRaw(plain));
            bytes = out.size();
            benchmark::DoNotOptimize(out.constData());
        }
    } else if (form == "tagged read" || form == "raw read") {
        const bool tagged = form == "tagged read";
        const QByteArray in = tagged ? libraryTagged(lib) : libraryRaw(lib);
        bytes = in.size();
        for (auto _ : state) {
            QBuffer buffer;
            buffer.setData(in);
            buffer.open(QIODevice::ReadOnly);
            QDataStream s(&buffer);
            qint32 length = 0;
            if (tagged)
                s >> length;
            if (library) {
                Lib object;
                object.SetValidate(true);
                if (tagged)
                    object.SetBinary(s, length);
                else
                    object.SetVersionSpecificBinaryWithoutValidation(s);
                benchmark::DoNotOptimize(&object);
            } else {
                Plain object;
                if (tagged)
                    baseline::readTagged(s, length, object);
                else
                    baseline::readRaw(s, object);
                benchmark::DoNotOptimize(&object);
            }
        }
    } else if (form == "document xml") {
        // The base's whole-document operations, write then read (library only).
        for (auto _ : state) {
            const QString text = lib.GetXmlString();
            Lib back;
            back.SetXmlString(text);
            bytes = text.size() * 2;
            benchmark::DoNotOptimize(&back);
        }
    } else if (form == "document binary") {
        for (auto _ : state) {
            const QByteArray block = lib.GetBinaryRepresentationAsQByteArray();
            Lib back;
            back.SetBinaryRepresentation(block);
            bytes = block.size();
            benchmark::DoNotOptimize(&back);
        }
    } else if (form == "build") {
        for (auto _ : state) {
            if (library) {
                const Lib object = build();
                benchmark::DoNotOptimize(&object);
            } else {
                const Plain object = buildPlain();
                benchmark::DoNotOptimize(&object);
            }
        }
    } else if (form == "copy + write") {
        // A copy, then the first change to it.
        for (auto _ : state) {
            if (library) {
                Lib copy(lib);
                touch(copy);
                benchmark::DoNotOptimize(&copy);
            } else {
                Plain copy(plain);
                touch(copy);
                benchmark::DoNotOptimize(&copy);
            }
        }
    } else if (form == "compare") {
        // Equal documents built separately, so that nothing is shared.
        const Lib other = build();
        const Plain otherPlain = buildPlain();
        for (auto _ : state) {
            const bool same = library ? lib == other : plainEqual(plain, otherPlain);
            benchmark::DoNotOptimize(same);
        }
    }
    state.SetBytesProcessed(qint64(state.iterations()) * bytes);
}

std::vector<Document> makeDocuments(bool quick)
{
    std::vector<Document> docs;
    docs.push_back({"ModeManager", 1, [](benchmark::State &s, const std::string &form, bool library) {
                        static const auto lib = documents::modeManager();
                        static const auto plain = documents::plainModeManager();
                        runForm<HALVANE::ModeManager, baseline::ModeManager>(
                            s, form, library, lib, plain, documents::modeManager, documents::plainModeManager);
                    }});
    docs.push_back({"Administration", 1, [](benchmark::State &s, const std::string &form, bool library) {
                        static const auto lib = documents::administration();
                        static const auto plain = documents::plainAdministration();
                        runForm<HALVANE::Administration, baseline::Administration>(
                            s, form, library, lib, plain, documents::administration, documents::plainAdministration);
                    }});
    docs.push_back({"Capabilities", 1, [](benchmark::State &s, const std::string &form, bool library) {
                        static const auto lib = documents::capabilities();
                        static const auto plain = documents::plainCapabilities();
                        runForm<HALVANE::Capabilities, baseline::Capabilities>(
                            s, form, library, lib, plain, documents::capabilities, documents::plainCapabilities);
                    }});
    docs.push_back({"ReceiverSettings", 1, [](benchmark::State &s, const std::string &form, bool library) {
                        static const auto lib = documents::receiverSettings();
                        static const auto plain = documents::plainReceiverSettings();
                        runForm<HALVANE::ReceiverSettings, baseline::ReceiverSettings>(
                            s, form, library, lib, plain, documents::receiverSettings,
                            documents::plainReceiverSettings);
                    }});
    docs.push_back({"AntennaMatrixConfiguration", 1, [](benchmark::State &s, const std::string &form, bool library) {
                        static const auto lib = documents::antennaMatrixConfiguration();
                        static const auto plain = documents::plainAntennaMatrixConfiguration();
                        runForm<HALVANE::AntennaMatrixConfiguration, baseline::AntennaMatrixConfiguration>(
                            s, form, library, lib, plain, documents::antennaMatrixConfiguration,
                            documents::plainAntennaMatrixConfiguration);
                    }});
    std::vector<int> sizes = {1000};
    if (!quick) {
        sizes.push_back(100000);
        sizes.push_back(1000000);
    }
    for (int n : sizes) {
        docs.push_back({"MeasurementResultList/" + std::to_string(n), n,
                        [n](benchmark::State &s, const std::string &form, bool library) {
                            static std::map<int, std::pair<HALVANE::MeasurementResultList,
                                                           baseline::MeasurementResultList>> cache;
                            if (!cache.count(n))
                                cache[n] = {documents::results(n), documents::plainResults(n)};
                            const auto &doc = cache[n];
                            runForm<HALVANE::MeasurementResultList, baseline::MeasurementResultList>(
                                s, form, library, doc.first, doc.second, [n] { return documents::results(n); },
                                [n] { return documents::plainResults(n); });
                        }});
#ifdef HALVANE_BENCH_PROTOBUF
        docs.back().protobuf = [n](benchmark::State &s, const std::string &op) {
            static std::map<int, halvane_bench::MeasurementResultList> cache;
            if (!cache.count(n))
                cache[n] = documents::protobufResults(n);
            runProtobuf(s, op, cache[n], n);
        };
#endif
    }
    return docs;
}

const char *const kForms[] = {"xml write",    "xml read",     "tagged write", "tagged read",    "raw write",
                              "raw read",     "build",        "copy + write", "compare",        "document xml",
                              "document binary"};

bool baselineHas(const std::string &form)
{
    return form != "document xml" && form != "document binary";
}

// ---- The report

struct Row {
    std::string document, form;
    int items;
    double library = 0, baseline = 0; // ns per document
    double libraryBytesPerSecond = 0;
};

class Collector : public benchmark::ConsoleReporter
{
public:
    std::map<std::string, double> times;     // name -> µs per iteration (median when repeated)
    std::map<std::string, double> bandwidth; // name -> bytes per second
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median")
                continue;
            const std::string name = run.run_name.function_name;
            if (run.run_type == Run::RT_Iteration && times.count(name) && run.repetitions > 1)
                continue;
            times[name] = run.GetAdjustedRealTime();
            const auto bytes = run.counters.find("bytes_per_second");
            if (bytes != run.counters.end())
                bandwidth[name] = bytes->second;
        }
        ConsoleReporter::ReportRuns(runs);
    }
};

// Heap in use, including the large blocks that malloc maps on their own.
double heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

long peakResidentKb()
{
    struct rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Run in a process of its own (--load-peak FILE), so that nothing the
// benchmark held before counts: reads the document with LoadXml (LoadBinary
// for a file ending in .hvb) and prints the peak resident memory it added
// and the heap its objects hold, in bytes.
int loadPeak(const char *file)
{
    const long start = peakResidentKb();
    const double heapBefore = heapInUse();
    HALVANE::MeasurementResultList list;
    const QString name = QString::fromLocal8Bit(file);
    if (name.endsWith(QLatin1String(".hvb")))
        list.LoadBinary(name);
    else
        list.LoadXml(name);
    std::printf("%.0f %.0f %d\n", double(peakResidentKb() - start) * 1024, heapInUse() - heapBefore,
                int(list.GetMeasurementData().size()));
    return 0;
}

// Has a fresh process of this program read a file of the list; prints the
// row, and gives the heap its objects hold (0 when the child failed).
double printLoadPeak(const HALVANE::MeasurementResultList &list, const char *self, const QString &path, const char *what)
{
    const std::string command = std::string(self) + " --load-peak '" + path.toStdString() + "'";
    FILE *child = popen(command.c_str(), "r");
    double peak = 0, objects = 0;
    int items = 0;
    const bool ok = child && std::fscanf(child, "%lf %lf %d", &peak, &objects, &items) == 3;
    if (child)
        pclose(child);
    if (!ok || items != list.GetMeasurementData().size())
        return 0;
    std::printf("| peak memory of %s (%.0f MB) | %.0f MB, %.2f × the %.0f MB its objects hold |\n", what,
                double(QFileInfo(path).size()) / 1e6, peak / 1e6, peak / objects, objects / 1e6);
    return objects;
}

#ifdef HALVANE_TOOL
// Run in a process of its own (--convert-peak IN OUT): forks, has the child
// run the tool's convert, and prints the child's peak resident memory as
// wait4 reports it, in bytes. A child that this small process forks starts
// from its small peak; one started straight from the benchmark would be
// credited with the benchmark's peak at its exec.
int convertPeak(char *in, char *out)
{
    char tool[] = HALVANE_TOOL, convert[] = "convert";
    char *argv[] = {tool, convert, in, out, nullptr};
    const pid_t pid = fork();
    if (pid == 0) {
        execv(tool, argv);
        _exit(127);
    }
    int status = 0;
    struct rusage usage;
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return 1;
    std::printf("%.0f\n", double(usage.ru_maxrss) * 1024);
    return 0;
}

// Has a fresh process of this program measure the tool converting \a in to
// \a out; prints the row.
void printConvertPeak(const char *self, const QString &in, const QString &out, double objects)
{
    const std::string command =
        std::string(self) + " --convert-peak '" + in.toStdString() + "' '" + out.toStdString() + "'";
    FILE *child = popen(command.c_str(), "r");
    double peak = 0;
    const bool ok = child && std::fscanf(child, "%lf", &peak) == 1;
    if (child)
        pclose(child);
    if (!ok)
        return;
    std::printf("| peak memory of `halvane convert` %s → %s (%.0f MB in, %.0f MB out) | %.0f MB, %.2f × the objects |\n",
                qPrintable(QFileInfo(in).suffix()), qPrintable(QFileInfo(out).suffix()), double(QFileInfo(in).size()) / 1e6,
                double(QFileInfo(out).size()) / 1e6, peak / 1e6, objects > 0 ? peak / objects : 0.0);
}
#endif

// Writes the list as an XML file (streamed) and as a binary file, has fresh
// processes of this program read them, and the tool convert between them.
void printLoadPeaks(const HALVANE::MeasurementResultList &list, const char *self)
{
    QTemporaryDir dir;
    const QString xml = dir.filePath(QStringLiteral("results.xml"));
    const QString binary = dir.filePath(QStringLiteral("results.hvb"));
    {
        QFile file(xml);
        if (!file.open(QIODevice::WriteOnly))
            return;
        QXmlStreamWriter writer(&file);
        writer.setAutoFormatting(true);
        writer.writeStartDocument();
        list.GetXml(writer);
        writer.writeEndDocument();
    }
    list.SaveBinary(binary);
    const double objects = printLoadPeak(list, self, xml, "LoadXml on that list as XML");
    printLoadPeak(list, self, binary, "LoadBinary on that list in the tagged form");
#ifdef HALVANE_TOOL
    printConvertPeak(self, xml, dir.filePath(QStringLiteral("converted.hvb")), objects);
    printConvertPeak(self, binary, dir.filePath(QStringLiteral("converted.xml")), objects);
#else
    Q_UNUSED(objects);
#endif
}

#ifdef HALVANE_BENCH_PROTOBUF
// The same million items as protobuf messages: on the heap, each message and
// string allocated on its own, and on an arena, whose blocks come from the
// heap too.
void printProtobufMemory(int n)
{
    {
        const double before = heapInUse();
        const halvane_bench::MeasurementResultList list = documents::protobufResults(n);
        std::printf("| heap per filled MeasurementData, protobuf's generated classes on the heap | %.1f bytes |\n",
                    (heapInUse() - before) / n);
        const long long copies = g_allocations;
        halvane_bench::MeasurementResultList copy(list);
        std::printf("| allocations per item when copying that list, protobuf | %.2f |\n",
                    double(g_allocations - copies) / n);
    }
    {
        const double before = heapInUse();
        google::protobuf::Arena arena;
        auto *list = google::protobuf::Arena::CreateMessage<halvane_bench::MeasurementResultList>(&arena);
        documents::fillProtobufResults(*list, n);
        std::printf("| heap per filled MeasurementData, protobuf on an arena | %.1f bytes (%.1f used of the arena's "
                    "blocks) |\n",
                    (heapInUse() - before) / n, double(arena.SpaceUsed()) / n);
    }
    const int small = 1000;
    std::printf("| bytes per item of the %d-item list, tagged / raw / protobuf | %.1f / %.1f / %.1f |\n", small,
                double(libraryTagged(documents::results(small)).size()) / small,
                double(libraryRaw(documents::results(small)).size()) / small,
                double(documents::protobufResults(small).ByteSizeLong()) / small);
}
#endif

void printMemory(const char *self)
{
    // Heap per filled MeasurementData: growth while building a million items.
    const int n = 1000000;
    const double before = heapInUse();
    {
        const HALVANE::MeasurementResultList list = documents::results(n);
        const double after = heapInUse();
        std::printf("\n| measure | value |\n|---|---|\n");
        std::printf("| heap per filled MeasurementData (1 000 000 items) | %.1f bytes |\n", (after - before) / n);
        const long long copies = g_allocations;
        HALVANE::MeasurementResultList copy(list);
        std::printf("| allocations per item when copying that list | %.2f |\n", double(g_allocations - copies) / n);
        printLoadPeaks(list, self);
    }
    const long long untouched = g_allocations;
    {
        HALVANE::Administration a;
        HALVANE::MeasurementResultList l;
        HALVANE::Administration b(a);
        benchmark::DoNotOptimize(&b);
        benchmark::DoNotOptimize(&l);
    }
    std::printf("| allocations of untouched objects | %lld |\n", g_allocations - untouched);
#ifdef HALVANE_BENCH_PROTOBUF
    printProtobufMemory(n);
#endif
}

// Name of a benchmark: the library's or the baseline's run of a form, or the
// protobuf run a form is compared with (empty when there is none).
std::string benchName(const std::string &document, const std::string &form, const char *side)
{
    if (std::string(side) != "protobuf")
        return document + " | " + form + " | " + side;
    const char *op = protobufOp(form);
    return op ? protobufName(document, op) : std::string();
}

// Time per item at 1 000 000 items over time per item at 1 000, per form and
// side: the documents grow a thousandfold, the time per item should not.
void printGrowth(const Collector &collector)
{
    const std::string small = "MeasurementResultList/1000", large = "MeasurementResultList/1000000";
    const double limit = 1.3;
    if (!collector.times.count(benchName(large, "xml write", "library")))
        return;
    std::printf("\n| time per item, 1 000 → 1 000 000 items (≤ %.1f×) | library | baseline | protobuf | library met |\n",
                limit);
    std::printf("|---|---:|---:|---:|---|\n");
    for (const char *form : {"xml write", "xml read", "tagged write", "tagged read", "raw write", "raw read"}) {
        char text[3][32];
        double library = 0;
        int column = 0;
        for (const char *side : {"library", "baseline", "protobuf"}) {
            const std::string a = benchName(small, form, side), b = benchName(large, form, side);
            std::snprintf(text[column], sizeof text[column], "-");
            if (collector.times.count(a) && collector.times.count(b) && collector.times.at(a) > 0) {
                const double growth = collector.times.at(b) / (collector.times.at(a) * 1000);
                std::snprintf(text[column], sizeof text[column], "%.2f×", growth);
                if (column == 0)
                    library = growth;
            }
            ++column;
        }
        std::printf("| %s | %s | %s | %s | %s |\n", form, text[0], text[1], text[2], library <= limit ? "yes" : "no");
    }
}

void printReport(const Collector &collector, const std::vector<Document> &docs)
{
    std::printf("\nMachine: %s, %s, %d cores; Qt %s\n", qPrintable(QSysInfo::prettyProductName()),
                qPrintable(QSysInfo::currentCpuArchitecture()), int(std::thread::hardware_concurrency()), qVersion());
#ifdef HALVANE_BENCH_PROTOBUF
    std::printf("protobuf %s (C++ generated from bench/measurements.proto): \"build\" against its setters, the "
                "binary writes against SerializeToString, the binary reads against ParseFromString\n\n",
                google::protobuf::internal::VersionString(GOOGLE_PROTOBUF_VERSION).c_str());
#else
    std::printf("protobuf was not found when the benchmark was built: its columns are empty\n\n");
#endif
    std::printf("| document | form | library µs | baseline µs | library/baseline | ns per item | library MB/s "
                "| protobuf µs | library/protobuf |\n");
    std::printf("|---|---|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const Document &doc : docs) {
        for (const char *form : kForms) {
            const std::string lib = benchName(doc.name, form, "library");
            const std::string base = benchName(doc.name, form, "baseline");
            if (!collector.times.count(lib))
                continue;
            const double l = collector.times.at(lib);
            const bool hasBase = collector.times.count(base) != 0;
            const double b = hasBase ? collector.times.at(base) : 0;
            const double mbs = collector.bandwidth.count(lib) ? collector.bandwidth.at(lib) / 1e6 : 0;
            char ratio[32] = "-";
            if (hasBase && b > 0)
                std::snprintf(ratio, sizeof ratio, "%.2f", l / b);
            char baseText[32] = "-";
            if (hasBase)
                std::snprintf(baseText, sizeof baseText, "%.2f", b);
            const std::string proto = benchName(doc.name, form, "protobuf");
            char protoText[32] = "-", protoRatio[32] = "-";
            if (collector.times.count(proto)) {
                const double p = collector.times.at(proto);
                std::snprintf(protoText, sizeof protoText, "%.2f", p);
                if (p > 0)
                    std::snprintf(protoRatio, sizeof protoRatio, "%.2f", l / p);
            }
            std::printf("| %s | %s | %.2f | %s | %s | %.0f | %s | %s | %s |\n", doc.name.c_str(), form, l, baseText,
                        ratio, l * 1000 / doc.items, mbs > 0 ? std::to_string(int(mbs)).c_str() : "-", protoText,
                        protoRatio);
        }
    }
    printGrowth(collector);
}

// Microseconds; large documents a fixed, small number of iterations.
void configure(benchmark::internal::Benchmark *b, int items)
{
    b->Unit(benchmark::kMicrosecond);
    if (items >= 100000)
        b->Iterations(items >= 1000000 ? 1 : 3);
}

} // namespace

int main(int argc, char **argv)
{
    bool report = false;
    bool quick = false;
    std::vector<char *> args;
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--load-peak" && i + 1 < argc)
            return loadPeak(argv[i + 1]);
#ifdef HALVANE_TOOL
        if (arg == "--convert-peak" && i + 2 < argc)
            return convertPeak(argv[i + 1], argv[i + 2]);
#endif
        if (arg == "--report")
            report = true;
        else if (arg == "--quick")
            quick = true;
        else
            args.push_back(argv[i]);
    }
    int count = int(args.size());
    benchmark::Initialize(&count, args.data());

    const std::vector<Document> docs = makeDocuments(quick);
    for (const Document &doc : docs) {
        for (const char *form : kForms) {
            for (bool library : {true, false}) {
                if (!library && !baselineHas(form))
                    continue;
                const std::string name = doc.name + " | " + form + (library ? " | library" : " | baseline");
                configure(benchmark::RegisterBenchmark(
                              name.c_str(), [&doc, form, library](benchmark::State &s) { doc.run(s, form, library); }),
                          doc.items);
            }
        }
        for (const char *op : kProtobufOps) {
            if (!doc.protobuf)
                continue;
            configure(benchmark::RegisterBenchmark(protobufName(doc.name, op).c_str(),
                                                   [&doc, op](benchmark::State &s) { doc.protobuf(s, op); }),
                      doc.items);
        }
    }
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    if (report) {
        printReport(collector, docs);
        if (!quick)
            printMemory(argv[0]);
    }
    benchmark::Shutdown();
    return 0;
}
