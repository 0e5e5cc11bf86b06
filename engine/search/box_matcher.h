#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Numbers for the elements of two sequences, dense from 0: elements are equal if and only if their numbers
/// are. Only elements of the longer sequence that do not occur in the other may share a number.
struct ElementClasses {
  std::vector<uint32_t> of[2];  // for every element of a side its class
  uint32_t count = 0;
};

/// Time: O(elements). Memory: 4 bytes per element and meanwhile up to 20 more. Returns false when aborted.
/// Throws std::bad_alloc.
bool classify(std::span<const uint32_t> left, std::span<const uint32_t> right, const AbortFlag* abort,
              ElementClasses& classes);
bool classify(std::span<const char> left, std::span<const char> right, const AbortFlag* abort,
              ElementClasses& classes);

/// Takes the matched elements out of boxes. Time: O(elements in the box). Memory: 12 bytes per class.
class BoxMatcher {
 public:
  /// `classes` must outlive this.
  explicit BoxMatcher(const ElementClasses& classes);

  /// Fills in `matched`, which is empty. Returns false when aborted. Throws std::bad_alloc.
  bool match(const Box& box, const AbortFlag* abort, MatchedBox& matched);

 private:
  const ElementClasses& classes_;
  static constexpr uint32_t kUnnumbered = 0xFFFFFFFF;
  /// What is known of a class in the box at hand; reset between calls.
  struct Class {
    uint32_t counts[2] = {0, 0};    // occurrences on each side
    uint32_t number = kUnnumbered;  // in the box
  };
  std::vector<Class> known_;
};

}  // namespace merivane
