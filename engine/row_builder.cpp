#include "engine/row_builder.h"

#include <algorithm>
#include <utility>

#include "engine/adapted_marks.h"

namespace merivane {
namespace {

class RowBuilder {
 public:
  RowBuilder(const std::string_view (&texts)[2], const std::vector<uint32_t> (&starts)[2],
             const CompareOptions& options, std::span<const KnownChange> known, const AbortFlag* abort,
             DiffModel& model)
      : texts_{texts[0], texts[1]},
        starts_(starts),
        options_(options),
        test_(options, abort),
        known_(known),
        abort_(abort),
        model_(model) {}

  bool build(const EditScript& script) {
    const uint8_t* const changed[2] = {script.changed[0].data(), script.changed[1].data()};
    const uint32_t count[2] = {lineCount(0), lineCount(1)};
    reserve(changed[0], count);
    uint32_t x = 0, y = 0;
    while (x < count[0] || y < count[1]) {
      if (isRaised(abort_)) return false;
      if (!changed[0][x] && !changed[1][y]) {
        add(RowStatus::same, x++, y++);
        continue;
      }
      const uint32_t x0 = x, y0 = y;
      while (changed[0][x]) ++x;
      while (changed[1][y]) ++y;
      if (!addHunk(x0, x, y0, y)) return false;
    }
    if (model_.rowCount() == 0) model_.addRow(RowStatus::same, 0, 0);
    return model_.numberLines(abort_) && model_.countDifferences(abort_);
  }

 private:
  uint32_t lineCount(int side) const { return static_cast<uint32_t>(starts_[side].size() - 1); }

  /// Makes room for every equal pair and every flagged line; pairs of changed lines need less.
  void reserve(const uint8_t* changedLeft, const uint32_t (&count)[2]) {
    const auto deleted = std::count(changedLeft, changedLeft + count[0], uint8_t{1});
    model_.reserve(size_t{model_.rowCount()} + count[1] + static_cast<size_t>(deleted));
  }

  std::string_view line(int side, uint32_t number) const {
    const uint32_t start = starts_[side][number];
    return texts_[side].substr(start, starts_[side][number + 1] - start);
  }

  void add(RowStatus status, uint32_t x, uint32_t y, RowMarks marks = {}) {
    model_.addRow(status, starts_[0][x], starts_[1][y], std::move(marks));
  }

  bool addLeft(uint32_t x0, uint32_t x1, uint32_t y) {
    return forEach(x0, x1, abort_, [&](uint32_t x) { add(RowStatus::leftOnly, x, y); });
  }

  bool addRight(uint32_t x, uint32_t y0, uint32_t y1) {
    return forEach(y0, y1, abort_, [&](uint32_t y) { add(RowStatus::rightOnly, x, y); });
  }

  /// Whether two lines are a changed pair; as they were the last time where that is known.
  bool isChanged(uint32_t x, uint32_t y, RowMarks& marks) {
    const std::string_view left = line(0, x), right = line(1, y);
    const auto at =
        std::lower_bound(known_.begin(), known_.end(), starts_[0][x],
                         [](const KnownChange& each, uint32_t start) { return each.start[0] < start; });
    if (at == known_.end() || at->start[0] != starts_[0][x] || at->start[1] != starts_[1][y] ||
        (at->edited != 0 && at->marks.side(0).size() != left.size()) ||
        (at->edited != 1 && at->marks.side(1).size() != right.size())) {
      return test_.compare(left, right, marks);
    }
    marks = at->edited < 0 ? at->marks : adaptMarks(left, right, *at, options_);
    return true;
  }

  bool addHunk(uint32_t x0, uint32_t x1, uint32_t y0, uint32_t y1) {
    if (x1 - x0 == y1 - y0) {
      // The lines pair up from the top for as long as they are alike.
      RowMarks marks;
      while (x0 < x1 && isChanged(x0, y0, marks)) {
        if (isRaised(abort_)) return false;
        add(RowStatus::changed, x0++, y0++, std::move(marks));
      }
      if (isRaised(abort_)) return false;
    }
    // The order follows the longer side.
    if (y1 - y0 > x1 - x0) return addRight(x0, y0, y1) && addLeft(x0, x1, y1);
    return addLeft(x0, x1, y0) && addRight(x1, y0, y1);
  }

  const std::string_view texts_[2];
  const std::vector<uint32_t> (&starts_)[2];
  const CompareOptions& options_;
  ChangedLineTest test_;
  const std::span<const KnownChange> known_;
  const AbortFlag* const abort_;
  DiffModel& model_;
};

}  // namespace

bool buildRows(const std::string_view (&texts)[2], const std::vector<uint32_t> (&starts)[2],
               const EditScript& script, const CompareOptions& options, std::span<const KnownChange> known,
               const AbortFlag* abort, DiffModel& model) {
  return RowBuilder(texts, starts, options, known, abort, model).build(script);
}

}  // namespace merivane
