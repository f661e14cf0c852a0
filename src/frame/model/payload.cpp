// Payload layout and lifetime: creating, copying (detaching), resetting and
// destroying the values of a class's fields, and pushing the validation flag
// and logger down into nested objects and list items.
#include "../frame.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <cstring>
#include <new>

namespace HALVANE {
namespace frame {

namespace {

// Push state of a payload with nested objects or lists: when a bit is set,
// every object below carries the flag in FlagValue (or no logger), so pushing
// the same again can be skipped.
enum PushState : quint8 { FlagClean = 0x01, FlagValue = 0x02, LoggerClean = 0x04 };

// "m_" and the field's name with its first letter in lower case, as messages name a member.
QString memberNameOf(const char *name)
{
    QString member = QString::fromLatin1(name);
    if (!member.isEmpty())
        member[0] = member[0].toLower();
    return QStringLiteral("m_") + member;
}

// Payload memory. Payloads come and go in bursts (a list read, a list freed)
// and each class has one size, so freed blocks are kept per size and thread
// and handed out again before asking the allocator. A block may be freed on
// another thread than the one that made it; it then joins that thread's
// lists, if that thread has a pool. Under AddressSanitizer a kept block is
// poisoned whole, its link included, so that a use after free is still
// found; the pool unpoisons a block only to follow its link or hand it out.
#if defined(__SANITIZE_ADDRESS__)
#define HALVANE_POISON_POOL 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HALVANE_POISON_POOL 1
#endif
#endif
#ifdef HALVANE_POISON_POOL
#include <sanitizer/asan_interface.h>
#define HALVANE_POISON(p, size) ASAN_POISON_MEMORY_REGION((p), size_t(size))
#define HALVANE_UNPOISON(p, size) ASAN_UNPOISON_MEMORY_REGION((p), size_t(size))
#else
#define HALVANE_POISON(p, size) ((void)(p), (void)(size))
#define HALVANE_UNPOISON(p, size) ((void)(p), (void)(size))
#endif
#ifndef HALVANE_POOL_PAYLOADS
#define HALVANE_POOL_PAYLOADS 1
#endif

#if HALVANE_POOL_PAYLOADS
// This thread's pool: free blocks by size, in a trivially destructible
// structure that is constant-initialised, so that reaching it costs one
// thread-local lookup and no guard, and it can still be read while a thread,
// or the process, destroys its objects in whatever order. A reaper made on
// the thread's first payload empties the lists when the thread ends and
// marks the pool Gone: an object destroyed after it (a static, or a
// thread_local made before the thread's first payload) hands its block
// straight back to the allocator.
enum class PoolState : quint8 { None, Live, Gone };

struct Block {
    Block *next;
};

struct Pool {
    static constexpr int kClasses = 64;                // block sizes below 512 bytes, in steps of 8
    static constexpr int kKeepBytes = 2 * 1024 * 1024; // free bytes kept per thread, all sizes together

    PoolState state;
    int kept;                 // bytes on the lists
    Block *free[kClasses];
};

thread_local Pool t_pool = {PoolState::None, 0, {}};

struct PoolReaper {
    PoolReaper() { t_pool.state = PoolState::Live; }
    ~PoolReaper()
    {
        Pool &pool = t_pool;
        pool.state = PoolState::Gone;
        for (Block *&head : pool.free) {
            while (head) {
                HALVANE_UNPOISON(head, sizeof(Block));
                Block *next = head->next;
                ::operator delete(head);
                head = next;
            }
        }
        pool.kept = 0;
    }
    PoolReaper(const PoolReaper &) = delete;
    PoolReaper &operator=(const PoolReaper &) = delete;
};

void *allocatePayload(int size)
{
    Pool &pool = t_pool;
    if (pool.state != PoolState::Live) {
        if (pool.state == PoolState::Gone)
            return ::operator new(size_t(size));
        static thread_local PoolReaper reaper; // made once per thread, here
    }
    const int c = size / 8;
    if (c < Pool::kClasses && pool.free[c]) {
        Block *b = pool.free[c];
        HALVANE_UNPOISON(b, size);
        pool.free[c] = b->next;
        pool.kept -= size;
        return b;
    }
    return ::operator new(size_t(size));
}

// Freeing never makes a pool: a thread that only frees what others made
// keeps nothing, and nothing is made while the thread or process winds down.
void freePayload(void *p, int size)
{
    Pool &pool = t_pool;
    const int c = size / 8;
    if (pool.state == PoolState::Live && c < Pool::kClasses && pool.kept <= Pool::kKeepBytes - size) {
        Block *b = static_cast<Block *>(p);
        b->next = pool.free[c];
        pool.free[c] = b;
        pool.kept += size;
        HALVANE_POISON(b, size);
        return;
    }
    ::operator delete(p);
}
#else
void *allocatePayload(int size)
{
    return ::operator new(size_t(size));
}

void freePayload(void *p, int)
{
    ::operator delete(p);
}
#endif

Payload *createPayload(const ClassDescriptor &desc)
{
    Payload *p = static_cast<Payload *>(allocatePayload(desc.payloadSize));
    new (&p->ref) QAtomicInt(1);
    std::fill_n(p->words(), desc.wordCount, 0u);
    if (desc.hasChildren)
        p->state(desc) = 0;
    for (const Field &f : desc.fields)
        traits(f.kind).construct(f, p->at(f));
    if (desc.version)
        new (&p->loadedVersion(desc)) QString();
    return p;
}

Payload *clonePayload(const ClassDescriptor &desc, Payload *from)
{
    Payload *p = static_cast<Payload *>(allocatePayload(desc.payloadSize));
    new (&p->ref) QAtomicInt(1);
    std::copy_n(from->words(), desc.wordCount, p->words());
    // The copy's flag is pushed again on its next prologue, whose walk also
    // detaches a list still shared with the source, so that a copy is deep.
    // No logger appears by copying: nested copies take none, shared list
    // items keep theirs, so the logger state stays what it was.
    if (desc.hasChildren)
        p->state(desc) = quint8(from->state(desc) & LoggerClean);
    for (const Field &f : desc.fields)
        traits(f.kind).copy(f, p->at(f), from->at(f));
    if (desc.version)
        new (&p->loadedVersion(desc)) QString(from->loadedVersion(desc));
    return p;
}

void destroyPayload(const ClassDescriptor &desc, Payload *p)
{
    for (const Field &f : desc.fields)
        traits(f.kind).destroy(f, p->at(f));
    if (desc.version)
        p->loadedVersion(desc).~QString();
    p->ref.~QAtomicInt();
    freePayload(p, desc.payloadSize);
}

} // namespace

ClassDescriptor::ClassDescriptor(const char *name_, quint32 id_, const FieldDef *defs, int count,
                                 const Hooks *hooks_, const quint16 *order, const VersionDef *version_)
    : name(QString::fromLatin1(name_)), id(id_), hooks(hooks_), version(version_)
{
    fields.reserve(count);
    QVector<QString> elementNames;
    hasChildren = false;
    hasRequired = false;
    for (int i = 0; i < count; ++i) {
        Field f;
        static_cast<FieldDef &>(f) = defs[i];
        f.itemOps = defs[i].ops ? &defs[i].ops() : nullptr;
        f.elementName = QString::fromLatin1(f.element);
        f.initString = f.initText ? QString::fromUtf8(f.initText) : QString();
        f.memberName = memberNameOf(f.name);
        f.bit = quint16(i);
        f.tested = f.kind == Kind::Enum || f.kind == Kind::String || (f.flags & HasRange);
        f.offset = 0;
        hasChildren = hasChildren || traits(f.kind).child;
        hasRequired = hasRequired || f.required();
        fields.append(f);
        // Attributes are found among the children only where they may be elements too.
        elementNames.append(!f.attribute() || (f.flags & ElementToo) ? f.elementName : QString());
    }
    elements.build(elementNames);

    // Values by falling alignment, so that the payload has no holes.
    wordCount = quint16(std::max(1, (count + 31) / 32));
    int offset = Payload::kWordsOffset + 4 * wordCount;
    for (int align : {8, 4, 2, 1}) {
        for (Field &f : fields) {
            const KindTraits &t = traits(f.kind);
            if (t.align != align)
                continue;
            offset = (offset + align - 1) / align * align;
            f.offset = quint16(offset);
            offset += t.size;
        }
    }
    // The version last read follows the values.
    loadedVersionOffset = 0;
    if (version) {
        versionAttribute = QString::fromLatin1(version->attribute);
        currentVersion = QString::fromLatin1(version->current);
        offset = (offset + int(alignof(QString)) - 1) / int(alignof(QString)) * int(alignof(QString));
        loadedVersionOffset = quint16(offset);
        offset += int(sizeof(QString));
    }
    stateOffset = quint16(offset);
    if (hasChildren)
        ++offset;
    payloadSize = quint16((offset + 7) / 8 * 8);

    for (int i = 0; i < count; ++i)
        taggedOrder.append(order ? order[i] : quint16(i));

    QVector<QPair<quint32, quint16>> tags;
    for (const Field &f : fields)
        tags.append(qMakePair(f.tag, f.bit));
    std::sort(tags.begin(), tags.end());
    for (const auto &t : tags) {
        m_tags.append(t.first);
        m_tagFields.append(t.second);
    }
}

int ClassDescriptor::findTag(quint32 tag) const
{
    const auto it = std::lower_bound(m_tags.constBegin(), m_tags.constEnd(), tag);
    if (it == m_tags.constEnd() || *it != tag)
        return -1;
    return m_tagFields[int(it - m_tags.constBegin())];
}

void retain(Payload *p)
{
    if (p)
        p->ref.ref();
}

void release(const ClassDescriptor &desc, Payload *&p)
{
    if (p && !p->ref.deref())
        destroyPayload(desc, p);
    p = nullptr;
}

void assign(const ClassDescriptor &desc, Payload *&to, Payload *from)
{
    if (to == from)
        return;
    retain(from);
    release(desc, to);
    to = from;
}

Payload *access(const Obj &o)
{
    Payload *p = *o.d;
    // Acquire: a count of 1 may come from a copy on another thread that has
    // just read the payload and let it go; what follows may write in place,
    // which must come after that copy's reads.
    if (p && p->ref.loadAcquire() != 1) {
        Payload *copy = clonePayload(*o.desc, p);
        if (!p->ref.deref())
            destroyPayload(*o.desc, p);
        *o.d = copy;
        p = copy;
    }
    return p;
}

Payload *initData(const Obj &o)
{
    if (Payload *p = access(o))
        return p;
    Payload *p = createPayload(*o.desc);
    *o.d = p;
    // The objects of a fresh payload carry no flag and no logger: they are
    // known to carry the object's own where it has none of either, and only
    // a flag that is on, or a logger, is pushed down to them.
    if (o.desc->hasChildren) {
        quint8 &state = p->state(*o.desc);
        state = FlagClean | LoggerClean;
        if (o.self->GetValidate()) {
            state = LoggerClean;
            o.self->SetValidate(true);
        }
        if (o.self->HasLogger())
            o.self->SetLogger(o.self->GetLogger());
    }
    return p;
}

void constNoClearReset(const Obj &o)
{
    Payload *p = access(o);
    if (!p)
        return;
    for (const Field &f : o.desc->fields)
        traits(f.kind).reset(f, p->at(f));
}

void reset(const Obj &o)
{
    Payload *p = access(o);
    if (!p)
        return;
    std::fill_n(p->words(), o.desc->wordCount, 0u);
    constNoClearReset(o);
}

void resetToDefault(const Obj &o)
{
    const bool existed = access(o) != nullptr;
    initData(o);
    if (existed)
        const_cast<QUILLET::IQuilletObject *>(o.self)->Reset();
    Payload *p = access(o);
    for (const Field &f : o.desc->fields) {
        if (!(f.flags & HasDefault))
            continue;
        bool usable = true;
        if (f.kind == Kind::String)
            usable = !f.initString.isNull();
        else if (f.kind == Kind::Enum)
            usable = f.initInt >= 0 && f.table && f.initInt < f.table->size();
        if (usable)
            p->setBit(f.bit);
    }
}

void markChildrenDirty(Payload *p, const ClassDescriptor &desc)
{
    if (desc.hasChildren)
        p->state(desc) = 0;
}

namespace {

// Calls \a push on every nested object and list item of the payload.
template <class Push>
void forEachChild(const ClassDescriptor &desc, Payload *p, Push push)
{
    for (const Field &f : desc.fields) {
        if (f.kind == Kind::Nested) {
            push(f.itemOps->base(p->at(f)));
        } else if (f.kind == Kind::ObjectList) {
            void *list = p->at(f);
            const int n = f.itemOps->listSize(list);
            for (int i = 0; i < n; ++i)
                push(f.itemOps->base(f.itemOps->listAt(list, i)));
        }
    }
}

} // namespace

void setValidate(const Obj &o, bool validate)
{
    if (!o.desc->hasChildren)
        return;
    Payload *p = access(o);
    if (!p)
        return;
    quint8 &state = p->state(*o.desc);
    if ((state & FlagClean) && bool(state & FlagValue) == validate)
        return;
    forEachChild(*o.desc, p, [validate](QUILLET::IQuilletObject *child) { child->SetValidate(validate); });
    state = quint8((state & LoggerClean) | FlagClean | (validate ? FlagValue : 0));
}

void setLogger(const Obj &o, const std::shared_ptr<QUILLET::Logger> &logger)
{
    if (!o.desc->hasChildren)
        return;
    Payload *p = access(o);
    if (!p)
        return;
    quint8 &state = p->state(*o.desc);
    if (!logger && (state & LoggerClean))
        return;
    forEachChild(*o.desc, p, [&logger](QUILLET::IQuilletObject *child) { child->SetLogger(logger); });
    state = quint8((state & ~LoggerClean) | (logger ? 0 : LoggerClean));
}

void prologue(const Obj &o)
{
    // Pushing the object's own flag and logger to itself changes nothing
    // where nothing lies below it, or where everything below already carries
    // them: the walk is skipped, which is all the calls below would do.
    if (!o.desc->hasChildren)
        return;
    Payload *p = *o.d;
    if (p && p->ref.loadRelaxed() == 1 && !o.self->HasLogger()) {
        const quint8 state = p->state(*o.desc);
        if ((state & FlagClean) && (state & LoggerClean) && bool(state & FlagValue) == o.self->GetValidate())
            return;
    }
    o.self->SetValidate(o.self->GetValidate());
    o.self->SetLogger(o.self->GetLogger());
}

namespace {

quint8 childState(const Obj &child)
{
    Payload *p = *child.d;
    if (!p || !child.desc->hasChildren)
        return FlagClean | LoggerClean | (child.self->GetValidate() ? FlagValue : 0);
    return p->state(*child.desc);
}

bool carriesFlag(const Obj &child, bool validate)
{
    const quint8 state = childState(child);
    return child.self->GetValidate() == validate && (state & FlagClean) && bool(state & FlagValue) == validate;
}

bool carriesNoLogger(const Obj &child)
{
    return !child.self->HasLogger() && (childState(child) & LoggerClean);
}

} // namespace

void childChanged(const Obj &owner, Payload *p, const Obj &child)
{
    quint8 &state = p->state(*owner.desc);
    if ((state & FlagClean) && !carriesFlag(child, bool(state & FlagValue)))
        state = quint8(state & ~(FlagClean | FlagValue));
    if ((state & LoggerClean) && !carriesNoLogger(child))
        state = quint8(state & ~LoggerClean);
}

} // namespace frame
} // namespace HALVANE
