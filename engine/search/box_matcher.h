#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/abort_flag.h"
#include "engine/search/box.h"
#include "engine/search/matched_box.h"

namespace merivane {

/// Gives equal elements of two sequences equal numbers, dense from 0. Elements of the longer one that the
/// other has not got may share one.
struct ElementClasses {
  std::vector<uint32_t> of[2];  // for every element its class
  uint32_t count = 0;
};

/// Time O(elements), memory 4 bytes an element and meanwhile up to 20 more. Throws std::bad_alloc. False when
/// aborted.
bool classify(std::span<const uint32_t> left, std::span<const uint32_t> right, const AbortFlag* abort,
              ElementClasses& classes);
bool classify(std::span<const char> left, std::span<const char> right, const AbortFlag* abort,
              ElementClasses& classes);

/// Takes the matched elements out of boxes. Time O(elements in the box); keeps 12 bytes a class.
class BoxMatcher {
 public:
  /// `classes` must outlive this.
  explicit BoxMatcher(const ElementClasses& classes);

  /// Fills in `matched`, which is new. Throws std::bad_alloc. False when aborted.
  bool match(const Box& box, const AbortFlag* abort, MatchedBox& matched);

 private:
  const ElementClasses& classes_;
  static constexpr uint32_t kUnnumbered = 0xFFFFFFFF;
  /// Of a class in the box at hand; as new between calls.
  struct Class {
    uint32_t counts[2] = {0, 0};
    uint32_t number = kUnnumbered;  // in the box
  };
  std::vector<Class> of_;
};

}  // namespace merivane
