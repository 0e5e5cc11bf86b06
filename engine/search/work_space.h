#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace merivane {

/// Cells that a search works with, kept from one search to the next. Their contents are not initialised.
class WorkSpace {
 public:
  /// Returns at least `count` cells. Those of the previous call are no longer valid. Throws std::bad_alloc.
  int32_t* cells(size_t count) {
    if (count > count_) {
      count_ = 0;
      cells_ = std::make_unique_for_overwrite<int32_t[]>(count);
      count_ = count;
    }
    return cells_.get();
  }

 private:
  std::unique_ptr<int32_t[]> cells_;
  size_t count_ = 0;
};

}  // namespace merivane
