#pragma once

#include <cstdint>

#include "engine/diff_model.h"
#include "mergeview/edited_file.h"

namespace merivane {

/// What the panes show: the two files and how their lines align. A side is 0, left, or 1, right.
struct EditedPair {
  EditedFile files[2];
  DiffModel model;  // always at least one row

  /// The row of a side's line in which a position lies. At the end of a text without a last "\n" that is the
  /// row of its last line, not a filler after it.
  uint32_t rowOf(int side, uint32_t position) const {
    const TextBuffer& text = files[side].text;
    const bool unended = position > 0 && text.atEnd(position) && text.charBefore(position) != '\n';
    return static_cast<uint32_t>(model.rowAtPosition(side, unended ? position - 1 : position));
  }
};

}  // namespace merivane
