#pragma once

#include <memory>
#include <vector>

#include "base/abort_flag.h"
#include "base/byte_array.h"
#include "engine/comparison.h"
#include "mergeview/undo_history.h"
#include "mergeview/view_state.h"

namespace merivane {

/// Finds what rows really are whose marks an edit has left provisional: compares the rows around the first of
/// them anew. That may take seconds, and so it works on copies, on any thread.
class ExactMarks {
 public:
  /// Copies what is to be compared. Null when nothing is provisional, or there is no memory for it.
  static std::unique_ptr<ExactMarks> of(const ViewState& view);

  /// Whether the view still shows what is compared here.
  bool isOf(const ViewState& view) const;

  /// Compares; once. Throws std::bad_alloc.
  void find(const AbortFlag* abort);

  /// Puts what was found into the view that this is still of; the rest is then to be found in the same way.
  /// False, and nothing has changed, if nothing was found or there is no memory for it.
  bool apply(ViewState& view, UndoHistory& history);

 private:
  RowRange window_;
  uint32_t begin_[2] = {0, 0};
  ByteArray texts_[2];
  CompareOptions options_;
  std::vector<KnownChange> known_;
  DiffModel found_;
};

}  // namespace merivane
