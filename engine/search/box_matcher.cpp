#include "engine/search/box_matcher.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

namespace merivane {
namespace {

/// A hash table from line keys to classes, with open addressing. The hash multiplies, because the low bits of
/// line keys are well spread only by chance.
class KeyTable {
 public:
  explicit KeyTable(size_t keys) {
    const size_t cells = std::bit_ceil(keys + keys / 4 + 2);
    shift_ = 64 - std::countr_zero(cells);
    last_ = cells - 1;
    // The system gives large tables as zeros, each page when it is first touched: there is nothing to wait
    // for.
    cells_.reset(static_cast<Cell*>(std::calloc(cells, sizeof(Cell))));
    if (!cells_) throw std::bad_alloc();
  }

  uint32_t classOf(uint32_t key) {
    Cell& cell = cells_[placeOf(key)];
    if (cell.number == kFree) cell = {key, ++count_};
    return cell.number - 1;
  }

  /// Returns count() for a key that has no class.
  uint32_t knownClassOf(uint32_t key) const {
    const uint32_t number = cells_[placeOf(key)].number;
    return number == kFree ? count_ : number - 1;
  }

  uint32_t count() const { return count_; }

 private:
  static constexpr uint32_t kFree = 0;
  struct Cell {
    uint32_t key, number;  // the number is one more than the class
  };
  struct Free {
    void operator()(Cell* cells) const { std::free(cells); }
  };

  size_t placeOf(uint32_t key) const {
    size_t at = static_cast<size_t>((key * uint64_t{0x9E3779B97F4A7C15}) >> shift_);
    while (cells_[at].number != kFree && cells_[at].key != key) at = (at + 1) & last_;
    return at;
  }

  std::unique_ptr<Cell[], Free> cells_;
  size_t last_;
  int shift_;
  uint32_t count_ = 0;
};

}  // namespace

bool classify(std::span<const uint32_t> left, std::span<const uint32_t> right, const AbortFlag* abort,
              ElementClasses& classes) {
  const std::span<const uint32_t> keys[2] = {left, right};
  const int fewer = left.size() <= right.size() ? 0 : 1;
  KeyTable table(keys[fewer].size());
  const auto classifySide = [&](int side, auto classOf) {
    if (!resize(classes.of[side], keys[side].size(), abort)) return false;
    uint32_t* const of = classes.of[side].data();
    return forEach<size_t>(0, keys[side].size(), abort, [&](size_t at) { of[at] = classOf(keys[side][at]); });
  };
  if (!classifySide(fewer, [&](uint32_t key) { return table.classOf(key); })) return false;
  if (!classifySide(1 - fewer, [&](uint32_t key) { return table.knownClassOf(key); })) return false;
  classes.count = table.count() + 1;
  return true;
}

bool classify(std::span<const char> left, std::span<const char> right, const AbortFlag* abort,
              ElementClasses& classes) {
  for (const int side : {0, 1}) {
    const std::span<const char> bytes = side == 0 ? left : right;
    if (!resize(classes.of[side], bytes.size(), abort)) return false;
    uint32_t* const of = classes.of[side].data();
    if (!forEach<size_t>(0, bytes.size(), abort,
                         [&](size_t at) { of[at] = static_cast<uint8_t>(bytes[at]); })) {
      return false;
    }
  }
  classes.count = 256;
  return true;
}

BoxMatcher::BoxMatcher(const ElementClasses& classes) : classes_(classes), known_(classes.count) {}

bool BoxMatcher::match(const Box& box, const AbortFlag* abort, MatchedBox& matched) {
  matched.turned = box.size() % 2 == 0;
  // Where each side's reading starts, and the way to its next element.
  const uint32_t* firsts[2] = {classes_.of[0].data() + box.xlo, classes_.of[1].data() + box.ylo};
  int32_t sizes[2] = {box.xhi - box.xlo, box.yhi - box.ylo};
  ptrdiff_t stride = 1;
  if (matched.turned) {
    for (const int side : {0, 1}) firsts[side] += sizes[side] - 1;
    std::swap(firsts[0], firsts[1]);
    std::swap(sizes[0], sizes[1]);
    stride = -1;
  }
  const auto forSide = [&](int side, auto visit) {
    return forEach(0, sizes[side], abort, [&](int32_t at) { visit(at, known_[firsts[side][at * stride]]); });
  };
  for (const int side : {0, 1}) {
    if (!forSide(side, [side](int32_t, Class& of) { ++of.counts[side]; })) return false;
  }
  for (const int side : {0, 1}) {
    matched.sizes[side] = sizes[side];
    const auto size = static_cast<size_t>(sizes[side]);
    if (!resize(matched.classes[side], size, abort) || !resize(matched.positions[side], size + 2, abort))
      return false;
    matched.positions[side][0] = -1;
    uint32_t* const classes = matched.classes[side].data();
    int32_t* const positions = matched.positions[side].data() + 1;
    size_t count = 0;
    // Whether an element is matched is hard to predict, so all are written, and unmatched ones overwritten.
    // What is known of a class is reset when it is last of use: on the left if it does not occur on the
    // right, else at its last occurrence there.
    const auto matchLeft = [&](int32_t at, Class& of) {
      const bool isMatched = of.counts[1] != 0;
      const bool isNew = isMatched && of.number == kUnnumbered;
      of.number = isNew ? matched.classCount : of.number;
      of.counts[0] = isMatched ? of.counts[0] : 0;
      matched.classCount += isNew;
      matched.matches += of.counts[1];
      classes[count] = of.number;
      positions[count] = at;
      count += isMatched;
    };
    const auto matchRight = [&](int32_t at, Class& of) {
      classes[count] = of.number;
      positions[count] = at;
      count += of.counts[0] != 0;
      const bool isLast = --of.counts[1] == 0;
      of.counts[0] = isLast ? 0 : of.counts[0];
      of.number = isLast ? kUnnumbered : of.number;
    };
    const bool done = side == 0 ? forSide(0, matchLeft) : forSide(1, matchRight);
    if (!done) return false;
    matched.classes[side].resize(count);
    positions[count] = sizes[side];
    matched.positions[side].resize(count + 2);
  }
  return true;
}

}  // namespace merivane
