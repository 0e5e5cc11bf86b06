#include "base/file_system.h"

#include <algorithm>

namespace merivane {

bool IsFile(const std::string& path) { return !path.empty() && systemFiles().kind(path) == FileKind::file; }

bool IsFolder(const std::string& path) { return systemFiles().kind(path) == FileKind::folder; }

bool sameFile(FileSystem& files, const std::string& a, const std::string& b) {
  const FileIdentity identity = files.identity(a);
  if (identity.known()) return identity == files.identity(b);
  return !files.identity(b).known() && files.absolute(a) == files.absolute(b);
}

SystemError replaceFile(FileSystem& files, const std::string& path, std::string_view contents) {
  std::unique_ptr<OutputFile> file;
  SystemError error = files.create(path, file);
  if (error == 0) error = file->write(contents);
  return error == 0 ? file->commit() : error;
}

SystemError readToEnd(InputFile& file, ByteArray& contents) {
  uint32_t filled = contents.size();
  // One byte more than the size tells, so that the read that finds the end needs no further room.
  uint64_t capacity = std::max<uint64_t>(file.size(), filled) + 1;
  for (;;) {
    if (!contents.resize(std::min(capacity, ByteArray::maxSize))) return notEnoughStorage();
    uint32_t got = 0;
    const SystemError error = file.read(contents.data() + filled, contents.size() - filled, got);
    if (error != 0) return error;
    filled += got;
    if (filled < contents.size()) break;
    if (filled == ByteArray::maxSize) return notEnoughStorage();
    capacity = uint64_t{filled} * 2;
  }
  return contents.resize(filled) ? 0 : notEnoughStorage();
}

}  // namespace merivane
