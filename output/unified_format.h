#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/byte_sink.h"
#include "engine/diff_model.h"

namespace merivane {

struct UnifiedOptions {
  uint32_t contextLines = 3;
  /// Rows of status same are context even where their bytes differ: what a comparison that ignores something
  /// calls equal is no part of the patch. Otherwise such rows, lines of one key, are written as differences,
  /// so that the patch gives exactly the right file.
  bool trustsEqualRows = false;
};

/// Writes the patch that makes the left file the right one, or nothing when no row differs. `files` are the
/// files' own bytes, and the model is a comparison of just these. Hunks are merged as other tools do: when no
/// more than twice the context lies between two differences. Throws nothing but std::bad_alloc.
void writeUnified(const DiffModel& model, const std::string_view (&files)[2], const std::string (&paths)[2],
                  const UnifiedOptions& options, ByteSink& sink);

}  // namespace merivane
