#pragma once

#include <cstdint>
#include <string>

#include "base/file_system.h"
#include "engine/diff_model.h"
#include "engine/text_document.h"
#include "mergeview/text_buffer.h"

namespace merivane {

/// One side of a comparison as it is shown and edited: a text and the file that it came from or was last
/// saved to. Exchanging two sides is one swap, which cannot fail.
struct EditedFile {
  TextBuffer text;
  LineEndKind lineEndKind = LineEndKind::crLf;
  TextEncoding encoding = TextEncoding::ascii;
  bool mixedLineEnds = false;  // in the file; saving makes them all of the kind
  bool readOnly = false;
  FileStamp stamp;   // the file's when it was loaded or saved
  std::string path;  // empty until the text was loaded from a file or saved to one
};

/// What the panes show: the two files and how their lines align. A side is 0, left, or 1, right.
struct EditedPair {
  EditedFile files[2];
  DiffModel model;            // always at least one row
  bool rowsOfOptions = true;  // all rows were compared by the options that edits are compared by

  /// The row of a side's line in which a position lies. At the end of a text without a last "\n" that is the
  /// row of its last line, not a filler after it.
  uint32_t rowOf(int side, uint32_t position) const {
    const TextBuffer& text = files[side].text;
    const bool unended = position > 0 && text.atEnd(position) && text.charBefore(position) != '\n';
    return static_cast<uint32_t>(model.rowAtPosition(side, unended ? position - 1 : position));
  }
};

/// Writes a text with its kind of line ends and its encoding to a file, from then on the text's own: path and
/// stamp are the file's, and the side can be written. Returns 0 or the error, notEnoughStorage() when memory
/// ran out; both files are then as they were. Telling the history is the caller's.
SystemError saveFile(FileSystem& files, const std::string& path, EditedFile& file);

/// Whether a file has been written by somebody else since it had this stamp, so that saving would undo that.
/// A file that has gone is not in the way.
bool changedOnDisk(FileSystem& files, const std::string& path, const FileStamp& known);

}  // namespace merivane
