#include "tests/support/failing_allocator.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// Plain, as thread-local ones would be allocated themselves on some platforms.
bool armed = false;
bool failsOn = false;
bool failed = false;
uint32_t allocationsLeft = 0;

bool isToFail() {
  if (!armed || (failed && !failsOn)) return false;
  if (!failed && allocationsLeft-- > 0) return false;
  failed = true;
  return true;
}

}  // namespace

#ifndef _WIN32
// The linker sends the program's calls of malloc and its kin to __wrap_..., and __real_... to the system's.
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);

void* __wrap_malloc(size_t size) { return isToFail() ? nullptr : __real_malloc(size); }
void* __wrap_calloc(size_t count, size_t size) { return isToFail() ? nullptr : __real_calloc(count, size); }
void* __wrap_realloc(void* block, size_t size) { return isToFail() ? nullptr : __real_realloc(block, size); }
}
#endif

void* operator new(size_t size) {
  if (!merivane::kMallocFails && isToFail()) throw std::bad_alloc();
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t) noexcept { std::free(block); }

namespace merivane {

AllocationFailure::AllocationFailure(uint32_t failing, Extent extent) {
  allocationsLeft = failing;
  failsOn = extent == fromThenOn;
  failed = false;
  armed = true;
}

AllocationFailure::~AllocationFailure() { end(); }

bool AllocationFailure::end() {
  armed = false;
  return failed;
}

}  // namespace merivane
