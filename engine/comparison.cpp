#include "engine/comparison.h"

#include <new>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/side_by_side.h"
#include "engine/edit_script.h"
#include "engine/line_keys.h"
#include "engine/row_builder.h"

namespace merivane {

Result compareTexts(std::string_view left, std::string_view right, const CompareOptions& options,
                    const AbortFlag* abort, DiffModel& model, std::span<const KnownChange> known) {
  try {
    const std::string_view texts[2] = {left, right};
    std::vector<uint32_t> starts[2];
    EditScript script;
    {
      // The keys and the search's work space are given back before the rows need their room.
      LineTable tables[2];
      forBothSides(uint64_t{left.size()} + right.size(),
                   [&](int side) { tables[side] = tableLines(texts[side], options, abort); });
      const std::span<const uint32_t> keys[2] = {tables[0].keys, tables[1].keys};
      if (!findEditScript(keys[0], keys[1], abort, script)) return Result::cancelled;
      for (const int side : {0, 1}) starts[side] = std::move(tables[side].starts);
      script.space = WorkSpace();
    }
    DiffModel compared;
    if (!buildRows(texts, starts, script, options, known, abort, compared)) return Result::cancelled;
    model = std::move(compared);
    return Result::success;
  } catch (const std::bad_alloc&) {
    return Result::outOfMemory;
  } catch (const std::length_error&) {
    return Result::outOfMemory;
  }
}

Outcome compareFiles(FileSystem& files, const std::string (&paths)[2], const CompareOptions& options,
                     const AbortFlag* abort, FileComparison& comparison) {
  // This is made beforehand, because there may be no memory for it when it is needed.
  FileComparison nothing;
  try {
    nothing.model.addRow(RowStatus::same, 0, 0);
    nothing.model.numberLines();
  } catch (const std::bad_alloc&) {
    return {Result::outOfMemory};
  }
  comparison = {};
  Outcome outcome = loadDocuments(files, paths, comparison.documents, abort);
  if (outcome.succeeded()) {
    outcome.result = compareTexts(comparison.documents[0].text.view(), comparison.documents[1].text.view(),
                                  options, abort, comparison.model);
  }
  if (!outcome.succeeded()) comparison = std::move(nothing);
  return outcome;
}

}  // namespace merivane
