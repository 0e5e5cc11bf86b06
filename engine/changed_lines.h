#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/abort_flag.h"
#include "engine/compare_options.h"
#include "engine/diff_model.h"
#include "engine/edit_script.h"

namespace merivane {

/// A line as an in-line comparison sees it under the options, and where each of its characters came from.
struct NormalisedLine {
  std::string characters;
  std::vector<uint32_t> sources;  // for each character its index in the line

  void assign(std::string_view line, const CompareOptions& options);
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
  EditScript script_;
};

}  // namespace merivane
