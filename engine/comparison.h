#pragma once

#include <string>
#include <string_view>

#include "base/abort_flag.h"
#include "base/file_system.h"
#include "engine/compare_options.h"
#include "engine/diff_model.h"
#include "engine/text_document.h"

namespace merivane {

/// The engine's one entrance: compares two in-memory texts, of at most ByteArray::maxSize bytes each.
/// Answers success, outOfMemory or cancelled; only success changes `model`, which then holds at least one
/// row, numbered and counted. A null flag never cancels.
///
/// Memory besides the texts: 17 bytes a line and side while the lines are compared, and where they differ
/// much what findEditScript() takes; then 32 bytes a row (64-bit; 24 bytes on 32-bit), and the marks.
Result compareTexts(std::string_view left, std::string_view right, const CompareOptions& options,
                    const AbortFlag* abort, DiffModel& model);

/// What a comparison of two files leaves.
struct FileComparison {
  TextDocument documents[2];
  DiffModel model;
};

/// Loads and compares two files. On any failure `comparison` is left with empty texts and one empty row;
/// only where there is no memory for that row, it stays as it was.
Outcome compareFiles(FileSystem& files, const std::string (&paths)[2], const CompareOptions& options,
                     const AbortFlag* abort, FileComparison& comparison);

}  // namespace merivane
