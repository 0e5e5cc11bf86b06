#pragma once

#include <string_view>

#include "engine/changed_lines.h"

namespace merivane {

/// Returns provisional marks for a changed pair of lines of which one has been edited, and which is taken to
/// be changed still. Outside the edit they are as they were, so that this takes no longer than reading the
/// lines. None, or std::bad_alloc, where memory runs out.
RowMarks adaptMarks(std::string_view left, std::string_view right, const KnownChange& known,
                    const CompareOptions& options);

}  // namespace merivane
