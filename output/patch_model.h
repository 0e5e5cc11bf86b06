#pragma once

#include <string_view>

#include "base/result.h"
#include "engine/comparison.h"

namespace merivane {

enum class PatchContents {
  nothing,
  onlyLineEnds,  // the texts are the same, the files' own line ends are not
  differences,
};

/// Whether there is anything to patch in two compared files, whose own bytes `files` are.
PatchContents patchContents(const FileComparison& comparison, const std::string_view (&files)[2],
                            const CompareOptions& options);

/// Turns a comparison of two files' texts into one of their own bytes, which a patch is made of: other line
/// ends than LF are part of the lines there. Gives up the texts. Answers success or outOfMemory.
Result compareForPatch(const std::string_view (&files)[2], const CompareOptions& options,
                       FileComparison& comparison);

}  // namespace merivane
