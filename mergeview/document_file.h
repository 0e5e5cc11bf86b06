#pragma once

#include <string>

#include "base/file_system.h"
#include "mergeview/documents.h"

namespace merivane {

/// Writes a side's text, with its kind of line ends, to a file. Answers 0 or the error, notEnoughStorage()
/// when memory ran out; the earlier file is then whole. Saved, the file's stamp is the side's, and the side
/// can be written. Telling the history is the caller's.
SystemError saveDocument(FileSystem& files, const std::string& path, Documents& documents, int side);

/// The same with any text and without taking note.
SystemError saveText(FileSystem& files, const std::string& path, const TextBuffer& text, LineEndKind kind);

/// Whether the file that a side was loaded from or saved to has been written by somebody else since, so that
/// saving would undo that. A file that has gone is not in the way.
bool changedOnDisk(FileSystem& files, const std::string& path, const FileStamp& known);

}  // namespace merivane
