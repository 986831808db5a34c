#pragma once
// Allocations that fail on request: the test program's own operator new counts every
// allocation and can make one of them fail, as a process short of memory would.

namespace allocations {

// The n-th allocation from now (0: the next) throws std::bad_alloc, or gives null when asked
// for without exceptions; every other one succeeds.
void failAfter(long n);
// Forgets a failure not yet reached; whether it was reached.
bool stop();

}  // namespace allocations
