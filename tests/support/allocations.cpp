#include "tests/support/allocations.h"

#include <cstdlib>
#include <new>

namespace {

long countdown = -1;  // allocations left before the one that fails; -1: none fails
bool reached = false;

void* allocate(std::size_t size)
{
    if (countdown >= 0 && countdown-- == 0) {
        reached = true;
        return nullptr;
    }
    return std::malloc(size ? size : 1);
}

}  // namespace

namespace allocations {

void failAfter(long n)
{
    countdown = n;
    reached = false;
}

bool stop()
{
    countdown = -1;
    return reached;
}

}  // namespace allocations

void* operator new(std::size_t size)
{
    if (void* p = allocate(size))
        return p;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

// Every delete frees what malloc gave.
void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete[](void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}
