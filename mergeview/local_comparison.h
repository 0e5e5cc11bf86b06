#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/changed_lines.h"
#include "engine/compare_options.h"
#include "mergeview/edited_file.h"

namespace merivane {

/// Bytes of one side that are put in the place of others.
struct TextChange {
  int side = 0;
  uint32_t start = 0;
  uint32_t removed = 0;  // how many go
  std::string_view inserted;

  /// The rows that the change is made from: the caret's, or a block's. They tell which of the fillers at
  /// `start` it belongs to. Empty, all of them take part.
  RowRange from;
};

/// How far the rows look different after a change.
enum class ChangeExtent {
  text = 0,   // the changed rows do, in their own pane
  marks = 1,  // and, as their characters are marked anew, in the other one too
  rows = 2,   // rows came, went or stand elsewhere
};

struct RowsChange {
  ChangeExtent extent = ChangeExtent::text;
  RowRange touched;    // the rows that the change was made in; look at them only where no row moved
  RowRange replacing;  // the rows from the first to the last that are others than before, as they are now
  DiffModel replaced;  // those that stood in their place; there is always one
};

/// The rows that are compared anew around changed ones: 40 each way, and up to 20 more that differ.
RowRange comparisonWindow(const DiffModel& model, RowRange changed);

/// What is known of the changed rows of a window, in the positions of the whole texts.
std::vector<KnownChange> knownChanges(const DiffModel& model, RowRange window);

/// Changes a text and compares the rows around the change anew, so that the sides stay aligned. How many
/// rows take part depends on the change alone, not on the length of the texts. Returns none, and nothing
/// has changed, when memory runs out.
///
/// A changed row of long lines that an edit is made within stays changed, with provisional marks; ExactMarks
/// finds out what it really is.
std::optional<RowsChange> changeText(EditedPair& pair, const TextChange& change,
                                     const CompareOptions& options);

/// The same with rows that are known: exchanges `rows` with those in `range`, which becomes their place.
/// False, and nothing has changed, when memory runs out.
bool changeText(EditedPair& pair, const TextChange& change, const CompareOptions& options, RowRange& range,
                DiffModel& rows);

}  // namespace merivane
