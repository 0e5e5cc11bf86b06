// Measures what editing costs in long comparisons, as a part of what it costs in short ones: typing must not
// feel the length of the files or of a line, and merging one difference after the other must take as long for
// the last as for the first.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "mergeview/editor.h"
#include "mergeview/exact_marks.h"
#include "mergeview/merge_commands.h"
#include "mergeview/navigation.h"

namespace merivane {
namespace {

class NoWindow final : public ViewHost {
 public:
  void beep() override {}
  void refuse(const std::string&) override {}
  bool confirm(const std::string&) override { return true; }
  bool setClipboardText(std::string_view) override { return true; }
  bool clipboardText(ByteArray&) override { return false; }
  void reportOutOfMemory() override { std::abort(); }
};

/// A comparison of this many rows, of which every tenth differs; its rows are known without comparing.
class Comparison {
 public:
  explicit Comparison(uint32_t rows) {
    std::string texts[2];
    FileComparison comparison;
    comparison.model.reserve(rows);
    for (uint32_t row = 0; row < rows; ++row) {
      const std::string line = "row " + std::to_string(row) + ": a line of the usual length, more or less";
      const bool differs = row % 10 == 5;
      comparison.model.addRow(differs ? RowStatus::changed : RowStatus::same,
                              static_cast<uint32_t>(texts[0].size()), static_cast<uint32_t>(texts[1].size()));
      texts[0] += line + '\n';
      texts[1] += line + (differs ? ", changed\n" : "\n");
    }
    comparison.model.numberLines();
    comparison.model.countDifferences();
    for (const int side : {0, 1}) {
      if (!comparison.documents[side].text.assign(texts[side])) std::abort();
    }
    view.resize(1000, 800);
    view.take(std::move(comparison), {}, AfterComparison::top);
  }

  /// One of changed rows of this length, of which every so many characters one differs.
  Comparison(uint32_t rows, uint32_t length, uint32_t distance) {
    std::string texts[2];
    uint32_t state = 1;
    for (uint32_t row = 0; row < rows; ++row) {
      for (uint32_t i = 0; i < length; ++i) {
        state = state * 1664525 + 1013904223;
        const char c = "etaoin shrdlu{},:"[(state >> 24) % 17];
        texts[0] += c;
        texts[1] += i % distance == distance / 2 ? '#' : c;
      }
      for (std::string& text : texts) text += '\n';
    }
    FileComparison comparison;
    if (compareTexts(texts[0], texts[1], {}, nullptr, comparison.model) != Result::success) std::abort();
    for (const int side : {0, 1}) {
      if (!comparison.documents[side].text.assign(texts[side])) std::abort();
    }
    view.resize(1000, 800);
    view.take(std::move(comparison), {}, AfterComparison::top);
  }

  /// Milliseconds that a character takes in a row, or a line end.
  double type(uint32_t row, char c = 'x', uint32_t column = 4) {
    view.moveCaret(row, view.rowStart(0, row) + column, false);
    const auto begin = std::chrono::steady_clock::now();
    Editor(view, history).characterInput(c, 1, false);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
  }

  NoWindow window;
  ViewState view{window};
  UndoHistory history;
};

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

struct TypingCosts {
  double first, typed, far;
};

TypingCosts measureTyping(uint32_t rows) {
  Comparison comparison(rows);
  TypingCosts costs;
  costs.first = comparison.type(rows / 2, '\r');
  std::vector<double> typed, far;
  for (uint32_t i = 0; i < 1000; ++i) typed.push_back(comparison.type(rows / 2));
  for (uint32_t i = 0; i < 20; ++i)
    far.push_back(comparison.type(i % 2 == 0 ? rows / 100 : rows - rows / 100));
  costs.typed = median(std::move(typed));
  costs.far = median(std::move(far));
  std::printf(
      "typing, %7u rows: %7.3f ms the first line end, %7.4f ms the next, %7.3f ms far from the last\n", rows,
      costs.first, costs.typed, costs.far);
  return costs;
}

void measureLongLines(uint32_t rows, uint32_t length, uint32_t distance) {
  Comparison comparison(rows, length, distance);
  double slowest[2] = {0, 0};
  std::vector<double> all[2];
  for (uint32_t i = 0; i < 30; ++i) {
    for (const bool atEnd : {false, true}) {
      all[atEnd].push_back(comparison.type(rows / 2, 'x', atEnd ? length + 1 + 2 * i : length / 2));
      slowest[atEnd] = std::max(slowest[atEnd], all[atEnd].back());
    }
  }
  const auto begin = std::chrono::steady_clock::now();
  while (const auto marks = ExactMarks::of(comparison.view)) {
    marks->find(nullptr);
    if (!marks->apply(comparison.view, comparison.history)) std::abort();
  }
  const std::chrono::duration<double, std::milli> exact = std::chrono::steady_clock::now() - begin;
  std::printf(
      "typing in %2u rows of %7u characters, each %4u. another: %6.2f ms within (at most %.2f), %6.2f ms at "
      "the end (at most %.2f); exact marks %.0f ms later\n",
      rows, length, distance, median(all[0]), slowest[0], median(all[1]), slowest[1], exact.count());
}

/// Milliseconds that one of the differences takes to be gone to and merged.
double measureMerging(uint32_t differences) {
  Comparison comparison(10 * differences);
  uint32_t merged = 0;
  const auto begin = std::chrono::steady_clock::now();
  for (; comparison.view.model().differenceBlocks() > 0; ++merged) {
    goToNextDifference(comparison.view);
    copyBlock(comparison.view, comparison.history, BlockKind::difference, static_cast<int>(merged % 2));
  }
  const std::chrono::duration<double, std::milli> all = std::chrono::steady_clock::now() - begin;
  std::printf("merging %6u differences in %7u rows: %9.1f ms, %.4f ms each\n", merged, 10 * differences,
              all.count(), all.count() / merged);
  return all.count() / merged;
}

}  // namespace
}  // namespace merivane

int main() {
  using namespace merivane;
  const TypingCosts few = measureTyping(1000), many = measureTyping(1'000'000);
  std::printf("a million rows to a thousand: %.2f times for a character\n", many.typed / few.typed);
  measureLongLines(1, 1'000'000, 1000);
  measureLongLines(1, 1'000'000, 20);
  measureLongLines(80, 20'000, 1000);
  measureLongLines(80, 20'000, 20);
  const double small = measureMerging(1000), middle = measureMerging(10'000), large = measureMerging(100'000);
  std::printf("a merge in ten and a hundred times the rows: %.2f and %.2f times\n", middle / small,
              large / small);
}
