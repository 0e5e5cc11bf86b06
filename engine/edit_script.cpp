#include "engine/edit_script.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <optional>

#include "engine/bit_parallel.h"
#include "engine/bit_row.h"
#include "engine/box_matcher.h"
#include "engine/crossings.h"
#include "engine/diagonal_search.h"
#include "engine/sparse_matches.h"

namespace merivane {
namespace {

constexpr int32_t kUnknown = -1;
constexpr int64_t kNoLimit = std::numeric_limits<int64_t>::max();
constexpr double kTooMany = std::numeric_limits<double>::infinity();

template <typename Element>
class DivideAndConquer {
 public:
  DivideAndConquer(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                   const SearchCosts& costs, EditScript& script)
      : left_(left),
        right_(right),
        changedLeft_(script.changed[0].data()),
        changedRight_(script.changed[1].data()),
        abort_(abort),
        costs_(costs),
        plain_(left.data(), right.data(), abort) {}

  bool run() {
    divide({0, 0, static_cast<int32_t>(left_.size()), static_cast<int32_t>(right_.size())}, kUnknown);
    return !aborted_;
  }

 private:
  enum class Step { split, done };

  /// Recurses on the part before the split and goes on with the part behind it. A split halves the edits, so
  /// the recursion is no deeper than their logarithm. `edits`: those of the box, where they are known.
  void divide(Box box, int32_t edits) {
    for (;;) {
      if (isRaised(abort_)) aborted_ = true;
      if (aborted_) return;
      trimEqualEnds(left_.data(), right_.data(), box);
      if (box.empty()) {
        mark(box);
        return;
      }
      Split split;
      if (findSplit(box, edits, split) == Step::done) return;
      divide({box.xlo, box.ylo, split.at.x, split.at.y}, (split.edits + 1) / 2);
      box = {split.at.x, split.at.y, box.xhi, box.yhi};
      edits = split.edits / 2;
    }
  }

  void mark(const Box& box) const {
    std::fill(changedLeft_ + box.xlo, changedLeft_ + box.xhi, uint8_t{1});
    std::fill(changedRight_ + box.ylo, changedRight_ + box.yhi, uint8_t{1});
  }

  /// The choice of the way. `done`: the box needs no split, or the search was aborted.
  Step findSplit(const Box& box, int32_t edits, Split& split) {
    const double plainSteps = std::max(costs_.leastPlainSteps, costs_.plainStepsPerElement * box.size());
    if (edits == kUnknown || squared(edits) / 2 <= plainSteps) {
      const SearchEnd end =
          plain_.find(box, edits == kUnknown ? static_cast<int64_t>(plainSteps) : kNoLimit, split);
      if (end != SearchEnd::overBudget) return check(end == SearchEnd::found);
    }

    if (!classes_) {
      classes_.emplace();
      if (!classify(left_, right_, abort_, *classes_)) return check(false);
      matcher_.emplace(*classes_);
    }
    MatchedBox matched;
    if (!matcher_->match(box, abort_, matched)) return check(false);
    if (matched.matches == 0) {
      mark(box);
      return Step::done;
    }
    const bool fewMatches = matched.matches <= kMostMatchesPerElement * box.size();
    const double sparseSteps = fewMatches ? sparseStepsFor(matched) : kTooMany;
    int32_t matchedEdits = kUnknown;
    if (edits != kUnknown) {
      matchedEdits = edits - matched.unmatched();
    } else {
      // Without the unmatched elements few edits may be left.
      const SearchEnd end = tryMatched(matched, split);
      if (end == SearchEnd::aborted) return check(false);
      if (end == SearchEnd::found && matched.unmatched() == 0) return splitAt(box, split);
      if (end == SearchEnd::found) matchedEdits = split.edits;
      if (end == SearchEnd::overBudget && sparseSteps > bitStepsFor(matched, matched.matched(1))) {
        if (!countEditsBitParallel(matched, abort_, matchedEdits)) return check(false);
      }
    }
    if (matchedEdits == 0) {
      markUnmatched(box, matched);
      return Step::done;
    }
    const double bitSteps = matchedEdits == kUnknown ? kTooMany : bitStepsFor(matched, matchedEdits);
    const double diagonalSteps = matchedEdits == kUnknown ? kTooMany : costs_.perCell * squared(matchedEdits);
    if (sparseSteps <= std::min(bitSteps, diagonalSteps)) {
      return splitBySparseMatches(matched, abort_, split) ? splitAt(box, split) : check(false);
    }
    const auto findCrossings = diagonalSteps <= bitSteps ? crossDiagonals : crossDiagonalsBitParallel;
    edits = matchedEdits + matched.unmatched();
    Crossings fromStart, fromEnd;
    if (!findCrossings(matched, (edits + 1) / 2, matchedEdits, abort_, fromStart) ||
        !findCrossings(matched.reversed(), edits / 2, matchedEdits, abort_, fromEnd)) {
      return check(false);
    }
    split = splitAtCrossings(matched, edits, fromStart, fromEnd);
    return splitAt(box, split);
  }

  SearchEnd tryMatched(const MatchedBox& matched, Split& split) const {
    const uint32_t* const classes[2] = {matched.classes[0].data(), matched.classes[1].data()};
    Box rest{0, 0, matched.matched(0), matched.matched(1)};
    trimEqualEnds(classes[0], classes[1], rest);
    split.edits = static_cast<int32_t>(rest.size());
    if (rest.empty()) return SearchEnd::found;
    DiagonalSearch<uint32_t> search(classes[0], classes[1], abort_);
    return search.find(rest, static_cast<int64_t>(costs_.plainStepsPerElement * rest.size()), split);
  }

  double sparseStepsFor(const MatchedBox& matched) const {
    return static_cast<double>(matched.matches) *
           (costs_.perMatch + std::bit_width(matched.classes[1].size()));
  }

  double bitStepsFor(const MatchedBox& matched, int32_t band) const {
    const int32_t blocks = std::min(band, matched.matched(1)) / BitBlock::kColumns + 1;
    return matched.matched(0) * (costs_.perRow + costs_.perBlock * blocks);
  }

  static double squared(int32_t edits) { return static_cast<double>(edits) * edits; }

  static Step splitAt(const Box& box, Split& split) {
    split.at.x += box.xlo;
    split.at.y += box.ylo;
    return Step::split;
  }

  /// What is matched in the box is the same on both sides.
  void markUnmatched(const Box& box, const MatchedBox& matched) const {
    mark(box);
    for (const int side : {0, 1}) {
      uint8_t* const changed = side == 0 ? changedLeft_ + box.xlo : changedRight_ + box.ylo;
      for (int32_t i = 0; i < matched.matched(side); ++i) changed[matched.high(side, i)] = 0;
    }
  }

  Step check(bool notAborted) {
    aborted_ = aborted_ || !notAborted;
    return notAborted ? Step::split : Step::done;
  }

  static constexpr int64_t kMostMatchesPerElement = 2;  // bounds the memory of the sparse search

  const std::span<const Element> left_, right_;
  uint8_t* const changedLeft_;
  uint8_t* const changedRight_;
  const AbortFlag* const abort_;
  const SearchCosts costs_;
  bool aborted_ = false;
  DiagonalSearch<Element> plain_;
  std::optional<ElementClasses> classes_;  // made for the first box that asks for them
  std::optional<BoxMatcher> matcher_;
};

}  // namespace

template <typename Element>
bool findEditScript(std::span<const Element> left, std::span<const Element> right, const AbortFlag* abort,
                    EditScript& script, const SearchCosts& costs) {
  if (uint64_t{left.size()} + right.size() > std::numeric_limits<int32_t>::max() - 3) throw std::bad_alloc();
  script.changed[0].assign(left.size() + 1, 0);
  script.changed[1].assign(right.size() + 1, 0);
  return DivideAndConquer<Element>(left, right, abort, costs, script).run();
}

template bool findEditScript(std::span<const uint32_t>, std::span<const uint32_t>, const AbortFlag*,
                             EditScript&, const SearchCosts&);
template bool findEditScript(std::span<const char>, std::span<const char>, const AbortFlag*, EditScript&,
                             const SearchCosts&);

}  // namespace merivane
