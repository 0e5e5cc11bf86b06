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

/// A line as an in-line comparison sees it under the options, and where each of its characters came from.
class NormalisedLine {
 public:
  /// `line` must outlive the use of this. When the flag is raised meanwhile it means nothing.
  void assign(std::string_view line, const CompareOptions& options, const AbortFlag* abort);

  std::string_view characters() const { return characters_; }

  /// Marks those bytes of the line, unmarked so far, whose characters are flagged.
  void setMarks(const std::vector<uint8_t>& changed, std::span<uint8_t> marks, const AbortFlag* abort) const;

 private:
  bool plain_ = true;  // the line as it is
  std::string_view characters_;
  std::string kept_;
  std::vector<uint32_t> sources_;  // the index in the line of each character that was kept
};

/// Decides whether a left and a right line are one changed line, and which of their characters differ. The
/// decision weighs the runs of at least two matched characters against the length of both lines.
///
/// Keeps its work arrays from pair to pair; used by one thread at a time.
class ChangedLineTest {
 public:
  ChangedLineTest(const CompareOptions& options, const AbortFlag* abort) : options_(options), abort_(abort) {}

  /// Whether the lines, each with its LF if it has one, are a changed pair; `marks` are then filled in, or
  /// left none when there is no memory for them. Throws std::bad_alloc where the work itself runs out of
  /// memory. When the abort flag is raised meanwhile the answer means nothing.
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
