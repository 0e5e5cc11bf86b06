#include "tests/support/failing_allocator.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// Plain, as thread-local ones would be allocated themselves on some platforms.
static bool armed = false, failsOn = false, failed = false;
static uint32_t allocationsLeft = 0;

static bool isToFail() {
  if (!armed || (failed ? !failsOn : allocationsLeft-- > 0)) return false;
  failed = true;
  return true;
}

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
  if (void* const block = std::malloc(size == 0 ? 1 : size)) return block;
  throw std::bad_alloc();
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  if (!merivane::kMallocFails && isToFail()) return nullptr;
  return std::malloc(size == 0 ? 1 : size);
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

bool AllocationFailure::end() {
  armed = false;
  return failed;
}

}  // namespace merivane
