#include "engine/changed_lines.h"

#include <span>

namespace merivane {
namespace {

constexpr uint32_t kMinimumRun = 2;
constexpr uint64_t kSimilarityPercent = 50;

/// Calls `visit(a, b)` for every pair of unflagged elements, in order.
template <typename Visit>
void forEachMatch(const EditScript& script, size_t leftSize, Visit visit) {
  uint32_t b = 0;
  for (uint32_t a = 0; a < leftSize; ++a) {
    if (script.changed[0][a]) continue;
    while (script.changed[1][b]) ++b;
    visit(a, b++);
  }
}

}  // namespace

void NormalisedLine::assign(std::string_view line, const CompareOptions& options) {
  characters.clear();
  sources.clear();
  const uint32_t blanks = options.ignoreBlanks;
  size_t begin = 0;
  size_t end = line.size();
  if (!(blanks & kIgnoreAllBlanks)) {
    if (blanks & kIgnoreBlanksAtStart) {
      while (begin < end && isBlank(line[begin])) ++begin;
    }
    if (blanks & kIgnoreBlanksAtEnd) {
      while (end > begin && isBlank(line[end - 1])) --end;
    }
  }
  characters.reserve(end - begin);
  sources.reserve(end - begin);
  bool inBlankRun = false;
  for (size_t i = begin; i < end; ++i) {
    char c = line[i];
    if (isBlank(c)) {
      if (blanks & kIgnoreAllBlanks) continue;
      if (blanks & kIgnoreMultipleBlanks) {
        if (inBlankRun) continue;
        c = ' ';
      }
      inBlankRun = true;
    } else {
      inBlankRun = false;
    }
    characters += options.ignoreCase ? foldCase(c) : c;
    sources.push_back(static_cast<uint32_t>(i));
  }
}

bool ChangedLineTest::compare(std::string_view left, std::string_view right, RowMarks& marks) {
  marks = {};
  if (!options_.compareChanges) return false;
  lines_[0].assign(left, options_);
  lines_[1].assign(right, options_);
  const std::string& a = lines_[0].characters;
  const std::string& b = lines_[1].characters;
  if (!findEditScript(std::span<const char>(a), std::span<const char>(b), abort_, script_)) return false;
  const uint64_t total = uint64_t{left.size()} + right.size();
  if (total > 2 * kMinimumRun && matchedInRuns() * 200 / total < kSimilarityPercent) return false;
  marks = RowMarks::allocate(static_cast<uint32_t>(left.size()), static_cast<uint32_t>(right.size()));
  if (!marks.none()) setMarks(marks);
  return true;
}

uint64_t ChangedLineTest::matchedInRuns() const {
  uint64_t sum = 0;
  uint64_t run = 0;
  // So that a first pair of (0, 0) continues a run that is empty so far.
  uint32_t nextA = 0, nextB = 0;
  forEachMatch(script_, lines_[0].characters.size(), [&](uint32_t a, uint32_t b) {
    run = a == nextA && b == nextB ? run + 1 : 1;
    if (run == kMinimumRun) sum += kMinimumRun;
    if (run > kMinimumRun) ++sum;
    nextA = a + 1;
    nextB = b + 1;
  });
  return sum;
}

void ChangedLineTest::setMarks(RowMarks& marks) const {
  for (const int side : {0, 1}) {
    const std::span<uint8_t> bytes = marks.side(side);
    const NormalisedLine& line = lines_[side];
    for (size_t i = 0; i < line.sources.size(); ++i) {
      if (script_.changed[side][i]) bytes[line.sources[i]] = kDiffersMark;
    }
  }
}

}  // namespace merivane
