#include "engine/edit_script.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>

#include "base/side_by_side.h"
#include "engine/search/banded_split.h"
#include "engine/search/bit_row.h"
#include "engine/search/box_matcher.h"
#include "engine/search/diagonal_search.h"
#include "engine/search/diagonal_table.h"
#include "engine/search/sparse_matches.h"

// A box of the edit graph is split at a point on one of its shortest paths, and both parts are searched in
// the same way. Which point that is, is a fact about the two sequences, so every way of finding it leads to
// the same script. There are four ways; findSplit() takes the one that it expects to cost least:
//
//   diagonal_search.h   the plain search from both ends: D * D / 4 steps; for few edits
//   diagonal_table.h    a table by diagonals, of what occurs on both sides: E * E / 4 steps, where E of the
//                       D edits are of such elements; for many edits, few of which are
//   sparse_matches.h    from the m pairs of equal elements alone: m * log n steps; for moved lines
//   banded_split.h      a table of bits, 256 columns a step: n * (1 + E / 256) steps; for dense matches
//
// The lemma that they rest on. Let before(p) and after(p) be the fewest edits from the start of the box to
// the point p and from p to its end, D those of the whole box and h = (D + 1) / 2. The split is a point on a
// shortest path with before(p) = h, on the highest diagonal x - y where there is one: the furthest such point
// on it if D is odd, the nearest if D is even.
//
// Proof. (1) Along a diagonal before() never falls and after() never grows: a step along it takes an element
// of each side from those after p, and so at most one pair from their longest common subsequence; likewise
// for before(). (2) Let D be odd. In round h the forward search knows on every diagonal the furthest
// point F with before(F) <= h, the backward search the nearest point B with after(B) <= h - 1. They meet
// where F is not nearer than B. Then after(F) <= h - 1 by (1), and as before(F) + after(F) >= D, F is on a
// shortest path with before(F) = h. Conversely, on the diagonal of any such point p, F is not nearer than p
// and B not further, so they meet there. They do not meet earlier, since that would make a path of fewer than
// D edits, and the highest diagonal is looked at first. (3) If D is even, the same holds for the backward
// half of round h, in which B is the nearest point with after(B) <= h and F is the furthest with before(F) <=
// h.
//
// The other ways read a box with an even D from its end with its sides exchanged. That keeps the order of its
// diagonals and makes the nearest point the furthest. D is even if and only if the sum of the box's sizes is.
namespace merivane {
namespace {

constexpr double kTooMany = std::numeric_limits<double>::infinity();

template <typename Element>
class DivideAndConquer {
 public:
  /// For elements whose flags begin at `firstFlag` of the script's.
  DivideAndConquer(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                   const SearchCosts& costs, EditScript& script, size_t firstFlag)
      : left_(left),
        right_(right),
        changedLeft_(script.changed[0].data() + firstFlag),
        changedRight_(script.changed[1].data() + firstFlag),
        abort_(abort),
        costs_(costs),
        space_(script.space),
        plain_(left.data(), right.data(), space_, abort) {}

  /// Searches a part of what `other` does, at the same time on another thread.
  DivideAndConquer(const DivideAndConquer& other, WorkSpace& space)
      : left_(other.left_),
        right_(other.right_),
        changedLeft_(other.changedLeft_),
        changedRight_(other.changedRight_),
        abort_(other.abort_),
        costs_(other.costs_),
        space_(space),
        plain_(left_.data(), right_.data(), space_, abort_),
        classes_(other.classes_) {
    matcher_.emplace(*classes_);
  }

  bool run(int32_t edits) {
    divide({0, 0, static_cast<int32_t>(left_.size()), static_cast<int32_t>(right_.size())}, edits);
    return !aborted_;
  }

 private:
  enum class Step { split, done };

  /// Recurses on the part before the split and goes on with the part after it. A split halves the edits, so
  /// the recursion is no deeper than their logarithm. `edits`: those of the box, or kUnknown.
  void divide(Box box, int32_t edits) {
    for (;;) {
      if (isRaised(abort_)) aborted_ = true;
      if (aborted_) return;
      trimEqualEnds(left_.data(), right_.data(), abort_, box);
      if (box.empty()) {
        mark(box);
        return;
      }
      BoxSplit split;
      if (findSplit(box, edits, split) == Step::done) return;
      const Box before{box.xlo, box.ylo, split.at.x, split.at.y};
      const Box after{split.at.x, split.at.y, box.xhi, box.yhi};
      if (classes_ != nullptr && box.size() >= kMinForThreads && split.edits >= kMinEditsForThreads) {
        bool otherAborted = false;
        // The second searcher is large: it is made only where there is a processor for it.
        const bool both = trySideBySide([&] { divide(before, (split.edits + 1) / 2); },
                                        [&] {
                                          WorkSpace space;
                                          DivideAndConquer other(*this, space);
                                          other.divide(after, split.edits / 2);
                                          otherAborted = other.aborted_;
                                        });
        if (both) {
          aborted_ = aborted_ || otherAborted;
          return;
        }
      }
      divide(before, (split.edits + 1) / 2);
      box = after;
      edits = split.edits / 2;
    }
  }

  void mark(const Box& box) const {
    std::fill(changedLeft_ + box.xlo, changedLeft_ + box.xhi, uint8_t{1});
    std::fill(changedRight_ + box.ylo, changedRight_ + box.yhi, uint8_t{1});
  }

  /// Chooses the way and takes it. Returns `done` if the box needs no split, and when aborted.
  Step findSplit(const Box& box, int32_t edits, BoxSplit& split) {
    const double plainSteps = std::max(costs_.minPlainSteps, costs_.plainStepsPerElement * box.size()) *
                              (classes_ == nullptr ? costs_.unclassifiedFactor : 1);
    if (edits == kUnknown || squared(edits) / 4 <= plainSteps) {
      const SearchEnd end = plain_.find(box, edits, static_cast<int64_t>(plainSteps), split);
      if (end != SearchEnd::overBudget) return check(end == SearchEnd::found);
    }

    if (classes_ == nullptr) {
      if (!classify(left_, right_, abort_, ownClasses_)) return check(false);
      classes_ = &ownClasses_;
      matcher_.emplace(*classes_);
    }
    MatchedBox matched;
    if (!matcher_->match(box, abort_, matched)) return check(false);
    if (matched.matches == 0) {
      mark(box);
      return Step::done;
    }
    int32_t matchedEdits = edits == kUnknown ? kUnknown : edits - matched.unmatched();
    // Without the unmatched elements there may be few edits.
    if (edits == kUnknown && matched.unmatched() > 0 && !tryMatched(matched, matchedEdits))
      return check(false);
    if (matchedEdits == 0) {
      markUnmatched(box, matched);
      return Step::done;
    }
    const double sparseSteps = sparseStepsFor(matched), bandedSteps = bandedStepsFor(matched, matchedEdits),
                 diagonalSteps = diagonalStepsFor(matched, matchedEdits);
    const double lowest = std::min({sparseSteps, bandedSteps, diagonalSteps});
    Point at;
    const bool found = lowest == sparseSteps   ? splitBySparseMatches(matched, abort_, matchedEdits, at)
                       : lowest == bandedSteps ? splitByBandedTable(matched, matchedEdits, abort_, at)
                                               : splitByDiagonals(matched, matchedEdits, abort_, at);
    if (!found) return check(false);
    at = matched.turnedBack(at);
    split = {{box.xlo + at.x, box.ylo + at.y}, matchedEdits + matched.unmatched()};
    return Step::split;
  }

  /// Sets the edits of matched elements if the plain search finds them soon. Returns false when aborted.
  bool tryMatched(const MatchedBox& matched, int32_t& matchedEdits) {
    const uint32_t* const classes[2] = {matched.classes[0].data(), matched.classes[1].data()};
    Box rest{0, 0, matched.matched(0), matched.matched(1)};
    trimEqualEnds(classes[0], classes[1], abort_, rest);
    if (rest.empty()) {
      matchedEdits = static_cast<int32_t>(rest.size());
      return true;
    }
    BoxSplit split;
    DiagonalSearch<uint32_t> search(classes[0], classes[1], space_, abort_);
    const double steps = costs_.plainStepsPerElement * costs_.unclassifiedFactor * rest.size();
    const SearchEnd end = search.find(rest, kUnknown, static_cast<int64_t>(steps), split);
    if (end == SearchEnd::found) matchedEdits = split.edits;
    return end != SearchEnd::aborted;
  }

  double sparseStepsFor(const MatchedBox& matched) const {
    const auto matches = static_cast<double>(matched.matches);
    if (matches > kMaxMatchesPerElement * (matched.sizes[0] + matched.sizes[1])) return kTooMany;
    return matches * (costs_.perMatch + std::bit_width(matched.classes[1].size()));
  }

  double bandedStepsFor(const MatchedBox& matched, int32_t edits) const {
    const int32_t band = edits == kUnknown ? matched.matched(1) : std::min(edits, matched.matched(1));
    return matched.matched(0) * (costs_.perRow + costs_.perBlock * (band / BitBlock::kColumns + 1));
  }

  double diagonalStepsFor(const MatchedBox& matched, int32_t edits) const {
    if (edits == kUnknown) return kTooMany;
    const double cells = squared(edits) / 4;
    return cells > kMaxCellsPerElement * (matched.sizes[0] + matched.sizes[1]) ? kTooMany
                                                                               : costs_.perCell * cells;
  }

  static double squared(int32_t edits) { return static_cast<double>(edits) * edits; }

  /// Marks a box whose matched elements are the same on both sides.
  void markUnmatched(const Box& box, const MatchedBox& matched) const {
    mark(box);
    for (int32_t i = 0; i < matched.matched(0); ++i) {
      const Point at = matched.turnedBack({matched.high(0, i), matched.high(1, i)});
      const int32_t inside = matched.turned ? 1 : 0;
      changedLeft_[box.xlo + at.x - inside] = 0;
      changedRight_[box.ylo + at.y - inside] = 0;
    }
  }

  Step check(bool notAborted) {
    aborted_ = aborted_ || !notAborted;
    return notAborted ? Step::split : Step::done;
  }

  // From these sizes on a second processor gains more than it costs.
  static constexpr int64_t kMinForThreads = 1 << 13;
  static constexpr int32_t kMinEditsForThreads = 256;
  // These bound the memory of the ways.
  static constexpr double kMaxMatchesPerElement = 2;
  static constexpr double kMaxCellsPerElement = 8;

  const std::span<const Element> left_, right_;
  uint8_t* const changedLeft_;
  uint8_t* const changedRight_;
  const AbortFlag* const abort_;
  const SearchCosts costs_;
  bool aborted_ = false;
  WorkSpace& space_;
  DiagonalSearch<Element> plain_;
  const ElementClasses* classes_ = nullptr;  // made for the first box that asks for them
  ElementClasses ownClasses_;
  std::optional<BoxMatcher> matcher_;
};

}  // namespace

template <typename Element>
bool findEditScript(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                    EditScript& script, const SearchCosts& costs, int32_t edits) {
  for (const int side : {0, 1}) {
    script.changed[side].clear();
    if (!resize(script.changed[side], (side == 0 ? left : right).size() + 1, abort)) return false;
  }
  // Points are 32-bit, so the equal ends are not part of the first box.
  const size_t shorter = std::min(left.size(), right.size());
  const size_t atStart = equalAtStart(left.data(), right.data(), shorter, abort);
  const size_t atEnd =
      equalAtEnd(left.data() + left.size(), right.data() + right.size(), shorter - atStart, abort);
  left = left.subspan(atStart, left.size() - atStart - atEnd);
  right = right.subspan(atStart, right.size() - atStart - atEnd);
  if (isRaised(abort)) return false;
  if (uint64_t{left.size()} + right.size() > std::numeric_limits<int32_t>::max() - 3)
    throw std::length_error("more elements than a search has positions for");
  return DivideAndConquer<Element>(left, right, abort, costs, script, atStart).run(edits);
}

template bool findEditScript(std::span<const uint32_t>, std::span<const uint32_t>, const AbortFlag*,
                             EditScript&, const SearchCosts&, int32_t);
template bool findEditScript(std::span<const char>, std::span<const char>, const AbortFlag*, EditScript&,
                             const SearchCosts&, int32_t);

}  // namespace merivane
