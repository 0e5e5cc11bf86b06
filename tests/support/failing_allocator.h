#pragma once

#include <cstdint>
#include <new>
#include <optional>
#include <type_traits>

namespace merivane {

/// Whether malloc, calloc and realloc can be made to fail, besides operator new. Where the thread library
/// is linked into the program it would be hit as well, and crash.
#ifdef _WIN32
constexpr bool kMallocFails = false;
#else
constexpr bool kMallocFails = true;
#endif

/// While it lives, an allocation of the test program fails: the `failing`-th from 0 alone, or that one and
/// all after it. There may be one at a time, and no other thread may allocate meanwhile.
class AllocationFailure {
 public:
  enum Extent { once, fromThenOn };

  AllocationFailure(uint32_t failing, Extent extent);
  ~AllocationFailure() { end(); }

  /// Lets all allocations succeed again, and tells whether one has failed.
  bool end();
};

/// Runs `operation` over and over, each time with the next of its allocations failing, until it gets by
/// without that one. `prepare` runs before each time; `check` looks at what each failing run returned. An
/// operation may throw std::bad_alloc where it is told what it has then returned.
template <typename Prepare, typename Operation, typename Check,
          typename Returned = std::invoke_result_t<Operation>>
void failEachAllocation(Prepare prepare, Operation operation, Check check,
                        std::type_identity_t<std::optional<Returned>> whenThrown = {}) {
  for (const auto extent : {AllocationFailure::once, AllocationFailure::fromThenOn}) {
    for (uint32_t failing = 0;; ++failing) {
      prepare();
      AllocationFailure failure(failing, extent);
      std::optional<Returned> returned;
      try {
        returned = operation();
      } catch (const std::bad_alloc&) {
        if (!(returned = whenThrown)) throw;
      }
      if (!failure.end()) break;
      check(*returned);
    }
  }
}

}  // namespace merivane
