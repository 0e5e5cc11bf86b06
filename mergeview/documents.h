#pragma once

#include <cstdint>

#include "engine/diff_model.h"
#include "engine/text_document.h"
#include "mergeview/text_buffer.h"

namespace merivane {

/// What the view shows: both texts and how their lines align. A side is 0, left, or 1, right.
struct Documents {
  TextBuffer text[2];
  bool readOnly[2] = {false, false};
  LineEndKind lineEndKind[2] = {LineEndKind::crLf, LineEndKind::crLf};
  FileStamp stamp[2];  // each file's when it was loaded or saved
  DiffModel model;     // always at least one row

  /// The row of a side's line in which a position lies. At the end of a text without a last "\n" that is the
  /// row of its last line, not a filler behind it.
  uint32_t rowOf(int side, uint32_t position) const {
    const bool unended =
        position > 0 && text[side].atEnd(position) && text[side].charBefore(position) != '\n';
    return static_cast<uint32_t>(model.rowAtPosition(side, unended ? position - 1 : position));
  }
};

}  // namespace merivane
