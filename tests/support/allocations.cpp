#include "tests/support/allocations.h"

#include <cstdlib>
#include <new>

namespace {

long countdown = -1;  // allocations left before the one that fails; -1: none fails
bool reached = false;

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

// The runtime's array, nothrow and sized forms all come down to these two.
void* operator new(std::size_t size)
{
    if (countdown >= 0 && countdown-- == 0) {
        reached = true;
        throw std::bad_alloc();
    }
    if (void* p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}
