#include "output/patch_model.h"

namespace merivane {

PatchContents patchContents(const FileComparison& comparison, const std::string_view (&files)[2],
                            const CompareOptions& options) {
  if (files[0] == files[1]) return PatchContents::nothing;
  if (comparison.model.differingRows() > 0) return PatchContents::differences;
  if (!options.comparesBytes()) return PatchContents::nothing;
  // Unlike lines that share a key count as equal, and yet a patch has to bring them over.
  const bool sameTexts = comparison.documents[0].text.view() == comparison.documents[1].text.view();
  return sameTexts ? PatchContents::onlyLineEnds : PatchContents::differences;
}

Result compareForPatch(const std::string_view (&files)[2], const CompareOptions& options,
                       FileComparison& comparison) {
  bool asRead = true;
  for (const int side : {0, 1}) {
    asRead = asRead && files[side] == comparison.documents[side].text.view();
    comparison.documents[side].text.clear();
  }
  if (asRead) return Result::success;
  comparison.model.clear();
  return compareTexts(files[0], files[1], options, nullptr, comparison.model);
}

}  // namespace merivane
