#include "base/file_system.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "base/file_replacement.h"
#include "base/paths.h"
#include "base/win/file_facts.h"
#include "base/win/handle.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

class WindowsInputFile final : public InputFile {
 public:
  SystemError open(const std::string& path) {
    LARGE_INTEGER size = {};
    if (!handle_.take(CreateFileW(systemPath(path).c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_SEQUENTIAL_SCAN, nullptr))) {
      return GetLastError();
    }
    if (GetFileType(handle_.get()) == FILE_TYPE_DISK && !GetFileSizeEx(handle_.get(), &size)) {
      return GetLastError();
    }
    size_ = static_cast<uint64_t>(size.QuadPart);
    return 0;
  }

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    // Larger single reads fail on some network drives.
    constexpr uint32_t atOnce = 1u << 24;
    got = 0;
    while (got < wanted) {
      DWORD count = 0;
      if (!ReadFile(handle_.get(), bytes + got, std::min(wanted - got, atOnce), &count, nullptr)) {
        const DWORD error = GetLastError();
        if (error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF) break;
        return error;
      }
      if (count == 0) break;
      got += count;
    }
    return 0;
  }

  uint64_t size() const override { return size_; }

 private:
  Handle handle_;
  uint64_t size_ = 0;
};

/// Opens what a path leads to, links followed, to be asked about.
HANDLE openToAsk(const std::wstring& path) {
  return CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                     FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

/// The facts of what a path leads to; false where nothing is there. Only a link has to be opened for them.
bool askFacts(const std::wstring& path, WIN32_FILE_ATTRIBUTE_DATA& facts) {
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts)) return false;
  if ((facts.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return true;
  const Handle target(openToAsk(path));
  BY_HANDLE_FILE_INFORMATION found;
  if (!target.valid() || !GetFileInformationByHandle(target.get(), &found)) return false;
  facts = {found.dwFileAttributes, found.ftCreationTime, found.ftLastAccessTime,
           found.ftLastWriteTime,  found.nFileSizeHigh,  found.nFileSizeLow};
  return true;
}

/// A number for a file whose file system has none for it: of its name as the system writes it.
uint64_t numberOfName(HANDLE file) {
  std::wstring name(32768, L'\0');
  const DWORD length =
      GetFinalPathNameByHandleW(file, name.data(), static_cast<DWORD>(name.size()), FILE_NAME_NORMALIZED);
  if (length == 0 || length >= name.size()) return 0;
  uint64_t number = 0xCBF29CE484222325;  // FNV-1a
  for (DWORD i = 0; i < length; ++i) number = (number ^ name[i]) * 0x100000001B3;
  return number;
}

class WindowsFileSystem final : public FileSystem {
 public:
  FileKind kind(const std::string& path) override {
    const std::wstring name = systemPath(path);
    WIN32_FILE_ATTRIBUTE_DATA facts;
    if (isDevicePath(fullPath(name))) return FileKind::other;
    if (!askFacts(name, facts)) return FileKind::none;
    return facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ? FileKind::folder : FileKind::file;
  }

  bool isWritable(const std::string& path) override {
    const std::wstring name = systemPath(path);
    WIN32_FILE_ATTRIBUTE_DATA facts;
    if (!askFacts(name, facts) || (facts.dwFileAttributes & FILE_ATTRIBUTE_READONLY)) return false;
    const Handle file(
        CreateFileW(name.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    // In use by somebody else just now is no lack of rights.
    return file.valid() || GetLastError() == ERROR_SHARING_VIOLATION;
  }

  FileStamp stamp(const std::string& path) override {
    WIN32_FILE_ATTRIBUTE_DATA facts;
    if (!askFacts(systemPath(path), facts) || (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return {};
    const FILETIME& written = facts.ftLastWriteTime;
    return {joined(facts.nFileSizeHigh, facts.nFileSizeLow),
            static_cast<int64_t>(joined(written.dwHighDateTime, written.dwLowDateTime)), true};
  }

  FileIdentity identity(const std::string& path) override {
    const Handle file(openToAsk(systemPath(path)));
    BY_HANDLE_FILE_INFORMATION found;
    if (!file.valid() || !GetFileInformationByHandle(file.get(), &found)) return {};
    const uint64_t index = joined(found.nFileIndexHigh, found.nFileIndexLow);
    return {found.dwVolumeSerialNumber, index != 0 ? index : numberOfName(file.get())};
  }

  std::string absolute(const std::string& path) override {
    return path.empty() ? path : utf8(fullPath(wide(path)));
  }

  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    auto opened = std::make_unique<WindowsInputFile>();
    const SystemError error = opened->open(path);
    if (error == 0) file = std::move(opened);
    return error;
  }

  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override {
    return createSystemFile(path, file);
  }

  SystemError list(const std::string& path, const AbortFlag* abort, FolderListing& listing) override {
    return listSystemFolder(path, abort, listing);
  }
};

}  // namespace

FileSystem& systemFiles() {
  static WindowsFileSystem files;
  return files;
}

const char kPathSeparator = '\\';

SystemError notEnoughStorage() { return ERROR_OUTOFMEMORY; }

bool meansMissing(SystemError error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool meansTooLong(SystemError error) { return error == ERROR_FILENAME_EXCED_RANGE; }

std::string platformErrorText(SystemError error) {
  wchar_t buffer[1024];
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                buffer, sizeof buffer / sizeof *buffer, nullptr);
  while (length > 0 && (buffer[length - 1] == L'\n' || buffer[length - 1] == L'\r')) --length;
  if (length > 0) return utf8({buffer, length});
  return "Error " + std::to_string(error);
}

}  // namespace merivane
