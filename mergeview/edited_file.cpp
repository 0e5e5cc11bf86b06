#include "mergeview/edited_file.h"

#include <memory>
#include <new>
#include <utility>

namespace merivane {

namespace {

SystemError saveText(FileSystem& files, const std::string& path, const TextBuffer& text, LineEndKind kind) {
  try {
    std::unique_ptr<OutputFile> file;
    SystemError error = files.create(path, file);
    const auto [head, tail] = text.stretch(0, text.size());
    for (const std::string_view stretch : {head, tail}) {
      ByteArray bytes;
      if (error == 0 && !convertToFile(stretch, kind, false, bytes)) error = notEnoughStorage();
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
  const SystemError error = saveText(files, path, file.text, file.lineEndKind);
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
