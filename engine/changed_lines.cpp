#include "engine/changed_lines.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace merivane {
namespace {

constexpr uint32_t kMinimumRun = 2;
constexpr uint64_t kSimilarityPercent = 50;

/// Returns the first place from `at` on that has this flag; `end` if none has.
size_t findFlag(const std::vector<uint8_t>& changed, uint8_t flag, size_t at, size_t end) {
  const void* const found = std::memchr(changed.data() + at, flag, end - at);
  return found ? static_cast<size_t>(static_cast<const uint8_t*>(found) - changed.data()) : end;
}

}  // namespace

void NormalisedLine::assign(std::string_view line, const CompareOptions& options, const AbortFlag* abort) {
  plain_ = options.comparesBytes();
  characters_ = line;
  if (plain_) return;
  kept_.clear();
  sources_.clear();
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
  kept_.reserve(end - begin);
  sources_.reserve(end - begin);
  bool inBlankRun = false;
  forEach(begin, end, abort, [&](size_t i) {
    char c = line[i];
    if (isBlank(c)) {
      if (blanks & kIgnoreAllBlanks) return;
      if (blanks & kIgnoreMultipleBlanks) {
        if (inBlankRun) return;
        c = ' ';
      }
      inBlankRun = true;
    } else {
      inBlankRun = false;
    }
    kept_ += options.ignoreCase ? foldCase(c) : c;
    sources_.push_back(static_cast<uint32_t>(i));
  });
  characters_ = kept_;
}

void NormalisedLine::setMarks(const std::vector<uint8_t>& changed, std::span<uint8_t> marks,
                              const AbortFlag* abort) const {
  const uint8_t* const flags = changed.data();
  uint8_t* const to = marks.data();
  const size_t count = characters_.size();
  if (plain_) {
    forEach<size_t>(0, count, abort,
                    [&](size_t i) { to[i] = static_cast<uint8_t>(flags[i] * kDiffersMark); });
  } else {
    forEach<size_t>(0, count, abort,
                    [&](size_t i) { to[sources_[i]] = static_cast<uint8_t>(flags[i] * kDiffersMark); });
  }
}

std::vector<uint8_t> NormalisedLine::flags(std::span<const uint8_t> marks) const {
  std::vector<uint8_t> flags(characters_.size());
  if (plain_) {
    for (size_t i = 0; i < flags.size(); ++i) flags[i] = marks[i] / kDiffersMark;
  } else {
    for (size_t i = 0; i < flags.size(); ++i) flags[i] = marks[sources_[i]] / kDiffersMark;
  }
  return flags;
}

bool ChangedLineTest::compare(std::string_view left, std::string_view right, RowMarks& marks) {
  marks = {};
  if (!options_.compareChanges) return false;
  lines_[0].assign(left, options_, abort_);
  lines_[1].assign(right, options_, abort_);
  if (isRaised(abort_)) return false;
  const std::string_view a = lines_[0].characters();
  const std::string_view b = lines_[1].characters();
  const uint64_t total = uint64_t{left.size()} + right.size();
  const auto alike = [total](uint64_t matched) {
    return total <= 2 * kMinimumRun || matched * 200 / total >= kSimilarityPercent;
  };
  // No script matches more than this, in runs or not: most pairs of unlike lines need no script.
  const std::optional<uint32_t> common = common_.count(a, b, abort_);
  if (!alike(common ? *common : sharedCharacters(a, b, abort_))) return false;
  const int32_t edits = common ? static_cast<int32_t>(a.size() + b.size() - 2 * *common) : kUnknown;
  try {
    if (!findEditScript(std::span<const char>(a), std::span<const char>(b), abort_, script_, {}, edits))
      return false;
  } catch (const std::length_error&) {
    return false;  // lines that are too long to compare are not changed but deleted and inserted
  }
  if (!alike(matchedInRuns())) return false;
  marks = RowMarks::allocate(static_cast<uint32_t>(left.size()), static_cast<uint32_t>(right.size()));
  if (!marks.none()) setMarks(marks);
  return true;
}

uint64_t ChangedLineTest::matchedInRuns() const {
  const size_t sizes[2] = {lines_[0].characters().size(), lines_[1].characters().size()};
  uint64_t sum = 0;
  uint32_t runs = 0;
  size_t at[2] = {0, 0}, ends[2] = {0, 0};
  for (;;) {
    for (const int side : {0, 1}) {
      if (at[side] < ends[side]) continue;
      at[side] = findFlag(script_.changed[side], 0, at[side], sizes[side]);
      // Both sides have the same number of unflagged elements.
      if (at[side] == sizes[side]) return sum;
      ends[side] = findFlag(script_.changed[side], 1, at[side], sizes[side]);
    }
    const size_t run = std::min(ends[0] - at[0], ends[1] - at[1]);
    if (run >= kMinimumRun) sum += run;
    if (++runs % 1024 == 0 && isRaised(abort_)) return sum;
    for (size_t& position : at) position += run;
  }
}

void ChangedLineTest::setMarks(RowMarks& marks) const {
  for (const int side : {0, 1}) {
    lines_[side].setMarks(script_.changed[side], marks.side(side), abort_);
  }
}

}  // namespace merivane
