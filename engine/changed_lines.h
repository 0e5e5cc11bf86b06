#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "engine/common_characters.h"
#include "engine/compare_options.h"
#include "engine/diff_model.h"
#include "engine/edit_script.h"

namespace merivane {

/// A line as a comparison of its characters sees it under the options, and where each of these is in the
/// line.
class NormalisedLine {
 public:
  /// `line` must outlive the use of this. If the flag is raised meanwhile, the contents are undefined.
  void assign(std::string_view line, const CompareOptions& options, const AbortFlag* abort);

  std::string_view characters() const { return characters_; }

  /// Returns for each character whether its byte of the line is marked.
  std::vector<uint8_t> flags(std::span<const uint8_t> marks) const;

  /// Marks the bytes of the line whose characters are flagged; `marks` have no mark yet.
  void setMarks(const std::vector<uint8_t>& changed, std::span<uint8_t> marks, const AbortFlag* abort) const;

 private:
  bool plain_ = true;  // whether all characters count as they are
  std::string_view characters_;
  std::string kept_;
  std::vector<uint32_t> sources_;  // the index in the line of each character of kept_
};

/// A changed pair of lines that an earlier comparison by the same options found: where the two lines begin
/// now. In a list, ascending on both sides.
struct KnownChange {
  uint32_t start[2] = {0, 0};
  RowMarks marks;
  int edited = -1;          // the side whose line has other bytes than then, if there is one,
  std::string_view before;  // and that line as it was
};

/// Decides whether a left and a right line are one changed line, and which of their characters differ. They
/// are if the runs of at least two matched characters make up half of both lines.
///
/// Keeps its work arrays from pair to pair; may be used by one thread at a time.
class ChangedLineTest {
 public:
  ChangedLineTest(const CompareOptions& options, const AbortFlag* abort) : options_(options), abort_(abort) {}

  /// Returns whether the lines, each with its LF if it has one, are a changed pair; lines too long for
  /// findEditScript() are none. If so, `marks` are filled
  /// in, or none if there is no memory for them; where memory for the work itself runs out, std::bad_alloc is
  /// thrown. If the abort flag is raised meanwhile, the result is undefined.
  bool compare(std::string_view left, std::string_view right, RowMarks& marks);

 private:
  uint64_t matchedInRuns() const;
  void setMarks(RowMarks& marks) const;

  const CompareOptions options_;
  const AbortFlag* const abort_;
  NormalisedLine lines_[2];
  CommonCharacters common_;
  EditScript script_;
};

}  // namespace merivane
