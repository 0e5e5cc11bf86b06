#pragma once

#include <string>

#include "base/file_system.h"
#include "engine/text_document.h"
#include "mergeview/text_buffer.h"

namespace merivane {

/// One side of a comparison as it is shown and edited: a text and the file that it came from or was last
/// saved to. Exchanging two sides is one swap, which cannot fail.
struct EditedFile {
  TextBuffer text;
  LineEndKind lineEndKind = LineEndKind::crLf;
  bool mixedLineEnds = false;  // in the file; saving makes them all of the kind
  bool readOnly = false;
  FileStamp stamp;   // the file's when it was loaded or saved
  std::string path;  // empty until the text was loaded from a file or saved to one
};

/// Writes a text with its kind of line ends to a file, from then on the text's own: path and stamp are the
/// file's, and the side can be written. Returns 0 or the error, notEnoughStorage() when memory ran out; both
/// files are then as they were. Telling the history is the caller's.
SystemError saveFile(FileSystem& files, const std::string& path, EditedFile& file);

/// Whether a file has been written by somebody else since it had this stamp, so that saving would undo that.
/// A file that has gone is not in the way.
bool changedOnDisk(FileSystem& files, const std::string& path, const FileStamp& known);

}  // namespace merivane
