#include "mergeview/edited_file.h"

#include <memory>
#include <new>
#include <utility>

namespace merivane {

namespace {

/// A text's bytes as they go into its file, the mark aside.
bool encode(std::string_view text, const EditedFile& file, ByteArray& bytes) {
  if (!convertToFile(text, file.lineEndKind, false, bytes)) return false;
  return !isUtf16(file.encoding) || encodeUtf16(bytes.view(), file.encoding, bytes);
}

SystemError saveText(FileSystem& files, const std::string& path, EditedFile& edited) {
  try {
    std::unique_ptr<OutputFile> file;
    SystemError error = files.create(path, file);
    const std::string_view mark = byteOrderMark(edited.encoding);
    if (error == 0 && !mark.empty()) error = file->write(mark);
    TextBuffer& text = edited.text;
    // No character is in both pieces, of which the larger one is in memory twice.
    if (isUtf16(edited.encoding)) text.view(0, text.size());
    const auto [head, tail] = text.stretch(0, text.size());
    for (const std::string_view stretch : {head, tail}) {
      ByteArray bytes;
      if (error == 0 && !encode(stretch, edited, bytes)) error = notEnoughStorage();
      if (error == 0) error = file->write(bytes.view());
    }
    return error == 0 ? file->commit() : error;
  } catch (const std::bad_alloc&) {
    return notEnoughStorage();
  }
}

}  // namespace

SystemError saveFile(FileSystem& files, const std::string& path, EditedFile& file) {
  std::string newPath;
  try {
    newPath = path;
  } catch (const std::bad_alloc&) {
    return notEnoughStorage();
  }
  const SystemError error = saveText(files, path, file);
  if (error != 0) return error;
  file.stamp = files.stamp(path);
  file.path = std::move(newPath);
  file.mixedLineEnds = false;
  file.readOnly = false;
  return 0;
}

bool changedOnDisk(FileSystem& files, const std::string& path, const FileStamp& known) {
  const FileStamp now = files.stamp(path);
  return now.exists && now != known;
}

}  // namespace merivane
