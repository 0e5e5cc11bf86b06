#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "base/abort_flag.h"
#include "engine/changed_lines.h"
#include "engine/compare_options.h"
#include "engine/diff_model.h"
#include "engine/edit_script.h"

namespace merivane {

/// Turns an edit script of two texts' lines into aligned rows: equal pairs side by side, and in every hunk
/// the lines that pair up as changed, the deleted and the inserted ones.
///
/// `starts` are the line starts as in LineTable. Appends to `model` and gives it line numbers and counts. A
/// model without any row gets one empty row, so that there is always one to stand on. Throws std::bad_alloc.
/// Returns false when the abort flag was raised; the rows so far are then undefined.
bool buildRows(const std::string_view (&texts)[2], const std::vector<uint32_t> (&starts)[2],
               const EditScript& script, const CompareOptions& options, std::span<const KnownChange> known,
               const AbortFlag* abort, DiffModel& model);

}  // namespace merivane
