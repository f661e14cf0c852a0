// Counts allocations, so that tests can prove what allocates nothing.
#include "support.h"

#include <cstdlib>
#include <new>

namespace {
thread_local long long g_allocations = 0;
}

long long test::allocations()
{
    return g_allocations;
}

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
