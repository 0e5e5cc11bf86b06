#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/abort_flag.h"
#include "base/file_system.h"
#include "engine/changed_lines.h"
#include "engine/compare_options.h"
#include "engine/diff_model.h"
#include "engine/text_document.h"

namespace merivane {

/// The engine's one entrance: compares two in-memory texts of at most ByteArray::maxSize bytes each. Returns
/// success, outOfMemory or cancelled; only success changes `model`, which then holds at least one row,
/// numbered and counted. A null flag never cancels.
/// `known` spares looking for marks again, as changed lines of long characters take their time.
///
/// Memory besides the texts: 17 bytes per line and side while the lines are compared, and where they differ
/// much what findEditScript() takes; then 32 bytes per row (24 in a 32-bit program), and the marks.
Result compareTexts(std::string_view left, std::string_view right, const CompareOptions& options,
                    const AbortFlag* abort, DiffModel& model, std::span<const KnownChange> known = {});

/// What compareFiles() returns: the two files as they were read, and their rows.
struct FileComparison {
  TextDocument documents[2];
  DiffModel model;
};

/// Loads and compares two files. After any failure `comparison` has empty texts and one empty row; if there
/// is no memory even for that row, it stays as it was.
Outcome compareFiles(FileSystem& files, const std::string (&paths)[2], const CompareOptions& options,
                     const AbortFlag* abort, FileComparison& comparison);

}  // namespace merivane
