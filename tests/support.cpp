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
