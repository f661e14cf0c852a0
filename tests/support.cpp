// Counts allocations, so that tests can prove what allocates nothing, and
// watches the size of malloc's blocks, so that they can bound what a reader
// holds at once.
#include "support.h"

#include <cstdlib>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define HALVANE_TEST_SANITIZED_MALLOC
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define HALVANE_TEST_SANITIZED_MALLOC
#endif
#if defined(__GLIBC__) && !defined(HALVANE_TEST_SANITIZED_MALLOC)
#define HALVANE_TEST_WATCHED_MALLOC
#endif

namespace {
thread_local long long g_allocations = 0;
}

long long test::allocations()
{
    return g_allocations;
}

#ifdef HALVANE_TEST_WATCHED_MALLOC
// malloc, calloc and realloc of the C library, taken in front of it: the
// executable's definitions stand before the library's for every caller,
// Qt included, and hand on to glibc's own entry points, whose blocks its
// free takes back.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *p, std::size_t size);
}

namespace {
thread_local bool g_watching = false;
thread_local long long g_largest = 0;

inline void watch(std::size_t size)
{
    if (g_watching && (long long)size > g_largest)
        g_largest = (long long)size;
}
} // namespace

extern "C" void *malloc(std::size_t size)
{
    watch(size);
    return __libc_malloc(size);
}

extern "C" void *calloc(std::size_t count, std::size_t size)
{
    watch(count * size);
    return __libc_calloc(count, size);
}

extern "C" void *realloc(void *p, std::size_t size)
{
    watch(size);
    return __libc_realloc(p, size);
}

long long test::largestAllocation(const std::function<void()> &body)
{
    g_largest = 0;
    g_watching = true;
    try {
        body();
    } catch (...) {
        g_watching = false;
        throw;
    }
    g_watching = false;
    return g_largest;
}
#else
long long test::largestAllocation(const std::function<void()> &body)
{
    body();
    return -1;
}
#endif

// Every form of the plain operators is replaced, so that no block passes
// between this file's free() and the runtime's (or a sanitizer's) own new.
namespace {
void *counted(std::size_t size) noexcept
{
    ++g_allocations;
    return std::malloc(size ? size : 1);
}
void *countedOrThrow(std::size_t size)
{
    if (void *p = counted(size))
        return p;
    throw std::bad_alloc();
}
} // namespace

void *operator new(std::size_t size)
{
    return countedOrThrow(size);
}
void *operator new[](std::size_t size)
{
    return countedOrThrow(size);
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return counted(size);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return counted(size);
}
void operator delete(void *p) noexcept
{
    std::free(p);
}
void operator delete[](void *p) noexcept
{
    std::free(p);
}
void operator delete(void *p, std::size_t) noexcept
{
    std::free(p);
}
void operator delete[](void *p, std::size_t) noexcept
{
    std::free(p);
}
void operator delete(void *p, const std::nothrow_t &) noexcept
{
    std::free(p);
}
void operator delete[](void *p, const std::nothrow_t &) noexcept
{
    std::free(p);
}
