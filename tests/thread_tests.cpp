// Objects on several threads: one object is used by one thread at a time,
// copies that share a payload go to other threads. Objects are built, copied,
// handed over through a queue, read, changed and destroyed across threads,
// outlive the thread that made them, and outlive the payload pools at thread
// and process exit. Results are checked on the main thread after the joins.
#include "support.h"

#include "frame/frame.h"

#include <QtCore/QStringList>

#include <atomic>
#include <cstdio>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace HALVANE;

namespace {

// A queue that hands objects from one thread to another; pop() answers false
// once the queue is closed and empty.
template <class T>
class Queue
{
public:
    void push(T item)
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_items.push_back(std::move(item));
        }
        m_ready.notify_one();
    }
    void close()
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_closed = true;
        }
        m_ready.notify_all();
    }
    bool pop(T &item)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_ready.wait(lock, [this] { return m_closed || !m_items.empty(); });
        if (m_items.empty())
            return false;
        item = std::move(m_items.front());
        m_items.pop_front();
        return true;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_ready;
    std::deque<T> m_items;
    bool m_closed = false;
};

// Threads joined when the test leaves, also by a failed assertion or an
// exception, so that a failure is reported rather than ending the program.
class Threads
{
public:
    ~Threads() { join(); }
    template <class F>
    void start(F body) { m_threads.emplace_back(std::move(body)); }
    void join()
    {
        for (std::thread &t : m_threads) {
            if (t.joinable())
                t.join();
        }
    }

private:
    std::vector<std::thread> m_threads;
};

// Lets every thread start its loop at once, so that the loops overlap.
class StartLine
{
public:
    explicit StartLine(int threads) : m_waiting(threads) {}
    void arrive()
    {
        m_waiting.fetch_sub(1);
        while (m_waiting.load() > 0)
            std::this_thread::yield();
    }

private:
    std::atomic<int> m_waiting;
};

using test::forms;
using test::measurement;

} // namespace

TEST(Threads, CopiesHandedOverThroughAQueueAreReadChangedAndDestroyedThere)
{
    // The producer builds a list, hands a copy over and goes on changing its
    // own; each consumer reads what it got, changes it and lets it go.
    const int kDocuments = 40;
    const int kConsumers = 3;
    std::vector<std::string> expected;
    {
        MeasurementResultList list;
        for (int i = 0; i < kDocuments; ++i) {
            list.AppendMeasurementData(measurement(i % 69, i * 0.5));
            expected.push_back(forms(list));
        }
    }

    Queue<std::pair<int, MeasurementResultList>> queue;
    std::vector<std::vector<std::string>> seen(kConsumers), changed(kConsumers);
    Threads threads;
    for (int t = 0; t < kConsumers; ++t) {
        threads.start([&, t] {
            std::pair<int, MeasurementResultList> got;
            while (queue.pop(got)) {
                seen[t].push_back(std::to_string(got.first) + ":" + forms(got.second));
                got.second.AppendMeasurementData(measurement(68, -1));
                got.second.GetMeasurementData()[0].SetInternalKey(-1);
                changed[t].push_back(forms(got.second));
                got.second = MeasurementResultList();
            }
        });
    }
    threads.start([&] {
        MeasurementResultList list;
        for (int i = 0; i < kDocuments; ++i) {
            list.AppendMeasurementData(measurement(i % 69, i * 0.5));
            queue.push({i, list});
        }
        // Changing the producer's list leaves every copy handed over as it was.
        list.Reset();
        queue.close();
    });
    threads.join();

    std::vector<bool> arrived(kDocuments, false);
    int count = 0;
    for (int t = 0; t < kConsumers; ++t) {
        ASSERT_EQ(seen[t].size(), changed[t].size());
        for (size_t k = 0; k < seen[t].size(); ++k) {
            const std::string &s = seen[t][k];
            const int i = std::stoi(s.substr(0, s.find(':')));
            ASSERT_FALSE(arrived[i]) << i;
            arrived[i] = true;
            ++count;
            EXPECT_EQ(s.substr(s.find(':') + 1), expected[i]) << i;
            EXPECT_NE(changed[t][k], expected[i]) << i;
            EXPECT_NE(changed[t][k].find("<InternalKey>-1</InternalKey>"), std::string::npos) << i;
        }
    }
    EXPECT_EQ(count, kDocuments);
}

TEST(Threads, ObjectsOutliveTheThreadThatMadeThem)
{
    // Payloads made on threads that have ended are read, changed and freed
    // on this one; their blocks go to this thread's pool or the allocator.
    const Administration administration = test::example<Administration>();
    const MeasurementResultList results = test::example<MeasurementResultList>();
    const std::string administrationForms = forms(administration);
    const std::string resultForms = forms(results);

    std::vector<Administration> administrations(4);
    std::vector<MeasurementResultList> lists(4);
    Threads makers;
    for (int t = 0; t < 4; ++t) {
        makers.start([&, t] {
            administrations[size_t(t)] = test::example<Administration>();
            MeasurementResultList list;
            list.SetXmlString(test::xml(results));
            // Moved out: the payload leaves the thread with the object.
            lists[size_t(t)] = std::move(list);
        });
    }
    makers.join();

    for (int t = 0; t < 4; ++t) {
        EXPECT_TRUE(administrations[size_t(t)] == administration) << t;
        EXPECT_EQ(forms(administrations[size_t(t)]), administrationForms) << t;
        EXPECT_EQ(forms(lists[size_t(t)]), resultForms) << t;
        administrations[size_t(t)].GetSensorMetaData().SetGroup(QStringLiteral("changed"));
        EXPECT_FALSE(administrations[size_t(t)] == administration) << t;
    }
    administrations.clear();
    lists.clear();
    EXPECT_EQ(forms(administration), administrationForms);
}

TEST(Threads, CopiesAreReadOnSeveralThreadsWhileTheOriginalChanges)
{
    // Every reader has its own copy; all copies and the original share one
    // payload when the readers start, and each side detaches on first access.
    const int kReaders = 4;
    const int kRounds = 50;
    ModeManager mode = test::example<ModeManager>();
    Administration administration = test::example<Administration>();
    MeasurementResultList list = test::example<MeasurementResultList>();
    const std::string modeForms = forms(mode);
    const std::string administrationForms = forms(administration);
    const std::string listForms = forms(list);

    std::vector<ModeManager> modes(size_t(kReaders), mode);
    std::vector<Administration> administrations(size_t(kReaders), administration);
    std::vector<MeasurementResultList> lists(size_t(kReaders), list);
    std::vector<int> mismatches(size_t(kReaders), 0);
    StartLine start(kReaders + 1);
    Threads readers;
    for (int t = 0; t < kReaders; ++t) {
        readers.start([&, t] {
            const size_t i = size_t(t);
            start.arrive();
            for (int round = 0; round < kRounds; ++round) {
                mismatches[i] += modes[i].GetRunningState() != ModeManager::NameToRunningState(QStringLiteral("Off"));
                mismatches[i] += forms(modes[i]) != modeForms;
                mismatches[i] += administrations[i].GetSensorMetaData().GetGroup() != QStringLiteral("sample 1");
                mismatches[i] += forms(administrations[i]) != administrationForms;
                mismatches[i] += lists[i].GetMeasurementData().size() != 2;
                mismatches[i] += forms(lists[i]) != listForms;
            }
        });
    }
    start.arrive();
    for (int round = 0; round < kRounds; ++round) {
        mode.SetRunningState(ModeManager::RunningState(round % 2));
        administration.GetSensorMetaData().SetGroup(QString::number(round));
        list.AppendMeasurementData(measurement(round % 69, round));
        list.GetMeasurementData()[0].SetInternalKey(round);
    }
    readers.join();

    for (int t = 0; t < kReaders; ++t)
        EXPECT_EQ(mismatches[size_t(t)], 0) << t;
    EXPECT_EQ(mode.GetRunningState(), 1);
    EXPECT_EQ(administration.GetSensorMetaData().GetGroup(), QStringLiteral("49"));
    EXPECT_EQ(list.GetMeasurementData().size(), 2 + kRounds);
    EXPECT_EQ(list.GetMeasurementData()[0].GetInternalKey(), kRounds - 1);
    // The readers' copies, now back on this thread, are still the example.
    EXPECT_EQ(forms(modes.back()), modeForms);
    EXPECT_EQ(forms(administrations.back()), administrationForms);
    EXPECT_EQ(forms(lists.back()), listForms);
}

namespace {

// Given a payload in its test; destroyed at exit, after the main thread's
// pool is gone.
Administration g_destroyedAtExit;

// Made on its thread before the thread's first payload, so that the thread's
// pool is made after it and destroyed before it. Its destructor still makes,
// copies and frees payloads, and says what it wrote.
struct OutlivesThePool {
    std::string *written = nullptr;
    ModeManager mode;
    ~OutlivesThePool()
    {
        ModeManager copy = mode;
        copy.SetDualState(1);
        MeasurementResultList list;
        list.AppendMeasurementData(measurement(3, 1.5));
        *written = forms(mode) + "|" + forms(copy) + "|" + forms(list);
    }
};

} // namespace

TEST(Threads, ObjectsDestroyedAfterTheirThreadsPool)
{
    g_destroyedAtExit = test::example<Administration>();
    MeasurementResultList list;
    list.AppendMeasurementData(measurement(3, 1.5));

    std::string written;
    std::thread t([&] {
        thread_local OutlivesThePool probe;
        probe.written = &written;
        probe.mode.SetXmlString(test::xml(test::example<ModeManager>()));
    });
    t.join();

    ModeManager mode = test::example<ModeManager>();
    ModeManager copy = mode;
    copy.SetDualState(1);
    EXPECT_EQ(written, forms(mode) + "|" + forms(copy) + "|" + forms(list));
    EXPECT_TRUE(g_destroyedAtExit.GetSensorMetaData().IsGroupSet());
}

namespace {

#if defined(__SANITIZE_ADDRESS__)
#define HALVANE_TEST_ASAN
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HALVANE_TEST_ASAN
#endif
#endif

// Bytes of free payload blocks a thread keeps (payload.cpp).
constexpr int kKeepBytes = 2 * 1024 * 1024;

int payloadSize(const char *className)
{
    const schema::Class *c = schema::findClass(QString::fromLatin1(className));
    return static_cast<const frame::ObjectOps *>(c->ops)->desc->payloadSize;
}

// Operator new calls while \a n objects of T get a payload, on this thread.
template <class T>
long long allocationsToMake(std::vector<T> &objects, int n)
{
    objects.clear();
    objects.reserve(size_t(n));
    const long long before = test::allocations();
    for (int i = 0; i < n; ++i) {
        objects.emplace_back();
        objects.back().ResetToDefault(); // makes the payload
    }
    return test::allocations() - before;
}

} // namespace

TEST(Threads, EachThreadKeepsAtMostTwoMebibytesOfFreeBlocks)
{
    const int modeSize = payloadSize("ModeManager");
    const int resultSize = payloadSize("RDSResult");
    ASSERT_NE(modeSize, resultSize);
    const int kept = kKeepBytes / modeSize;
    const int n = kept + 100;
    // What room the blocks of the one size leave for the other.
    const int keptResults = (kKeepBytes - kept * modeSize) / resultSize;

    long long first = -1, again = -1, results = -1, resultsAgain = -1, freedHere = -1;
    std::vector<ModeManager> made;
    std::thread maker([&] {
        std::vector<ModeManager> modes;
        std::vector<RDSResult> rds;
        first = allocationsToMake(modes, n);
        modes.clear();
        // The blocks kept are handed out again; the rest come from the allocator.
        again = allocationsToMake(modes, n);
        modes.clear();
        // The budget is full of the one size: little or nothing of the other is kept.
        results = allocationsToMake(rds, 100);
        rds.clear();
        resultsAgain = allocationsToMake(rds, 100);
        rds.clear();
        allocationsToMake(made, 1000);
    });
    maker.join();
    // A thread that only frees keeps nothing for later.
    std::thread freer([&] {
        made.clear();
        std::vector<ModeManager> modes;
        freedHere = allocationsToMake(modes, 1000);
    });
    freer.join();

    EXPECT_EQ(first, n);
    EXPECT_EQ(again, n - kept);
    EXPECT_EQ(results, 100);
    EXPECT_EQ(resultsAgain, 100 - keptResults);
    EXPECT_EQ(freedHere, 1000);
}

TEST(Threads, AnOwnerLeftAloneChangesThePayloadAfterTheCopiesLetItGo)
{
    // The copies detach (they read the shared payload, then let it go) and
    // say so through a flag that orders nothing; the owner, seeing the
    // payload no longer shared, changes it in place. Its change must be
    // ordered after the copies' reads by the reference count alone.
    ModeManager mode = test::example<ModeManager>();
    RDSResult rds = test::example<RDSResult>();
    const std::string modeForms = forms(mode);
    const std::string rdsForms = forms(rds);
    for (int round = 0; round < 20; ++round) {
        ModeManager modeCopy = mode;
        RDSResult rdsCopy = rds;
        std::atomic<bool> detached{false};
        std::string seen;
        std::thread reader([&] {
            seen = forms(modeCopy) + forms(rdsCopy);
            detached.store(true, std::memory_order_relaxed);
        });
        while (!detached.load(std::memory_order_relaxed))
            std::this_thread::yield();
        mode.SetDualState(round % 2);
        rds.SetPICode(QString::number(round));
        reader.join();
        EXPECT_EQ(seen, modeForms + rdsForms) << round;
        mode = test::example<ModeManager>();
        rds = test::example<RDSResult>();
    }
}

#ifdef HALVANE_TEST_ASAN
// The pool keeps freed payload blocks poisoned: reading a value through a
// reference that outlived its object is reported, though the block is
// still the pool's and not the allocator's.
TEST(ThreadsDeathTest, AKeptPayloadBlockIsPoisoned)
{
    EXPECT_DEATH(
        {
            auto *mode = new ModeManager;
            mode->SetRunningState(1);
            const qint8 *state = &mode->GetRunningState();
            delete mode;
            std::fprintf(stderr, "%d\n", int(*static_cast<const volatile qint8 *>(state)));
        },
        "use-after-poison");
}
#endif
