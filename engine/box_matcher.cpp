#include "engine/box_matcher.h"

#include <algorithm>
#include <bit>

namespace merivane {
namespace {

constexpr uint32_t kUnnumbered = 0xFFFFFFFF;

/// Open addressing with a multiplicative hash: line keys are well spread in their low bits only by chance.
class KeyTable {
 public:
  explicit KeyTable(size_t keys) {
    const size_t cells = std::bit_ceil(keys + keys / 2 + 2);
    shift_ = 64 - std::countr_zero(cells);
    cells_.assign(cells, {0, kFree});
  }

  uint32_t classOf(uint32_t key) {
    size_t at = static_cast<size_t>((key * uint64_t{0x9E3779B97F4A7C15}) >> shift_);
    while (cells_[at].number != kFree && cells_[at].key != key) at = (at + 1) & (cells_.size() - 1);
    if (cells_[at].number == kFree) cells_[at] = {key, count_++};
    return cells_[at].number;
  }

  uint32_t count() const { return count_; }

 private:
  static constexpr uint32_t kFree = 0xFFFFFFFF;
  struct Cell {
    uint32_t key, number;
  };
  std::vector<Cell> cells_;
  int shift_;
  uint32_t count_ = 0;
};

/// Calls `visit` for every element of [from, to); looks at the flag often enough, whatever a visit costs.
template <typename Index, typename Visit>
bool forEach(Index from, Index to, const AbortFlag* abort, Visit visit) {
  constexpr Index atOnce = 1 << 16;
  while (from < to) {
    if (isRaised(abort)) return false;
    for (const Index end = from + std::min<Index>(to - from, atOnce); from < end; ++from) visit(from);
  }
  return true;
}

}  // namespace

bool classify(std::span<const uint32_t> left, std::span<const uint32_t> right, const AbortFlag* abort,
              ElementClasses& classes) {
  KeyTable table(left.size() + right.size());
  for (const int side : {0, 1}) {
    const std::span<const uint32_t> keys = side == 0 ? left : right;
    classes.of[side].resize(keys.size());
    uint32_t* const of = classes.of[side].data();
    if (!forEach<size_t>(0, keys.size(), abort, [&](size_t at) { of[at] = table.classOf(keys[at]); }))
      return false;
  }
  classes.count = table.count();
  return true;
}

bool classify(std::span<const char> left, std::span<const char> right, const AbortFlag* abort,
              ElementClasses& classes) {
  for (const int side : {0, 1}) {
    const std::span<const char> bytes = side == 0 ? left : right;
    classes.of[side].resize(bytes.size());
    uint32_t* const of = classes.of[side].data();
    if (!forEach<size_t>(0, bytes.size(), abort,
                         [&](size_t at) { of[at] = static_cast<uint8_t>(bytes[at]); })) {
      return false;
    }
  }
  classes.count = 256;
  return true;
}

BoxMatcher::BoxMatcher(const ElementClasses& classes) : classes_(classes) {
  for (auto& counts : counts_) counts.assign(classes.count, 0);
  local_.assign(classes.count, kUnnumbered);
}

bool BoxMatcher::match(const Box& box, const AbortFlag* abort, MatchedBox& matched) {
  const int32_t begins[2] = {box.xlo, box.ylo};
  const int32_t ends[2] = {box.xhi, box.yhi};
  const auto classAt = [this](int side, int32_t at) { return classes_.of[side][static_cast<size_t>(at)]; };
  for (const int side : {0, 1}) {
    matched.sizes[side] = ends[side] - begins[side];
    if (!forEach(begins[side], ends[side], abort, [&](int32_t at) { ++counts_[side][classAt(side, at)]; })) {
      return false;
    }
  }
  for (const int side : {0, 1}) {
    matched.classes[side].resize(static_cast<size_t>(matched.sizes[side]));
    matched.positions[side].resize(static_cast<size_t>(matched.sizes[side]) + 2);
    matched.positions[side][0] = -1;
    uint32_t* const classes = matched.classes[side].data();
    int32_t* const positions = matched.positions[side].data() + 1;
    size_t count = 0;
    // Whether an element is matched is hard to foresee, so all are written and the unmatched ones
    // overwritten.
    const bool done = forEach(begins[side], ends[side], abort, [&](int32_t at) {
      const uint32_t c = classAt(side, at);
      const uint32_t others = counts_[1 - side][c];
      if (side == 0) {
        matched.matches += others;
        if (others != 0 && local_[c] == kUnnumbered) local_[c] = matched.classCount++;
      }
      classes[count] = local_[c];
      positions[count] = at - begins[side];
      count += others != 0;
    });
    if (!done) return false;
    matched.classes[side].resize(count);
    positions[count] = matched.sizes[side];
    matched.positions[side].resize(count + 2);
  }
  for (const int side : {0, 1}) {
    const bool done = forEach(begins[side], ends[side], abort, [&](int32_t at) {
      const uint32_t c = classAt(side, at);
      counts_[side][c] = 0;
      local_[c] = kUnnumbered;
    });
    if (!done) return false;
  }
  return true;
}

}  // namespace merivane
