#include "base/file_system.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>

#include "base/win/wide.h"

namespace merivane {
namespace {

class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE get() const { return handle_; }
  bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
  /// Takes a handle on; false for the invalid one of a failure.
  bool take(HANDLE handle) {
    close();
    handle_ = handle;
    return valid();
  }
  bool close() {
    const HANDLE handle = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

// The objects exist before what they own is opened, so that running out of memory leaves nothing behind.

class WindowsInputFile final : public InputFile {
 public:
  SystemError open(const std::string& path) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    LARGE_INTEGER size = {};
    if (!handle_.take(CreateFileW(systemPath(path).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
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

SystemError writeAll(HANDLE handle, std::string_view contents) {
  while (!contents.empty()) {
    DWORD written = 0;
    const DWORD wanted = static_cast<DWORD>(std::min<size_t>(contents.size(), 1u << 24));
    if (!WriteFile(handle, contents.data(), wanted, &written, nullptr)) return GetLastError();
    if (written == 0) return ERROR_DISK_FULL;
    contents.remove_prefix(written);
  }
  return 0;
}

class ReplacingOutput final : public OutputFile {
 public:
  ReplacingOutput(std::wstring target, bool replaces) : target_(std::move(target)), replaces_(replaces) {}

  ~ReplacingOutput() override {
    file_.close();
    if (!beside_.empty()) DeleteFileW(beside_.c_str());
  }

  SystemError open() {
    DWORD number = GetTickCount() ^ GetCurrentProcessId() << 8;
    SystemError error = ERROR_FILE_EXISTS;
    for (int tries = 0; tries < 1000 && error == ERROR_FILE_EXISTS; ++tries, ++number) {
      std::wstring beside = target_ + L'.' + std::to_wstring(number & 0xFFFFFF) + L".tmp";
      if (file_.take(CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                 nullptr))) {
        beside_ = std::move(beside);
        return 0;
      }
      error = GetLastError();
    }
    return error;
  }

  SystemError write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }

  SystemError commit() override {
    if (!FlushFileBuffers(file_.get())) return GetLastError();
    if (!file_.close()) return GetLastError();
    // ReplaceFile keeps attributes, time of creation and access rights of the file that goes.
    const BOOL done = replaces_ ? ReplaceFileW(target_.c_str(), beside_.c_str(), nullptr,
                                               REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)
                                : MoveFileExW(beside_.c_str(), target_.c_str(), 0);
    if (!done) return GetLastError();
    beside_.clear();
    return 0;
  }

 private:
  Handle file_;
  std::wstring beside_;
  std::wstring target_;
  bool replaces_;
};

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

constexpr uint64_t joined(DWORD high, DWORD low) { return uint64_t{high} << 32 | low; }

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
    return {found.dwVolumeSerialNumber, index != 0 ? index : numberOfName(file.get()), true};
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
    const FileKind before = kind(path);
    if (before == FileKind::folder) return ERROR_ACCESS_DENIED;
    if (before == FileKind::file && !isWritable(path)) return ERROR_ACCESS_DENIED;
    auto opened = std::make_unique<ReplacingOutput>(systemPath(absolute(path)), before == FileKind::file);
    const SystemError error = opened->open();
    if (error == 0) file = std::move(opened);
    return error;
  }
};

}  // namespace

FileSystem& systemFiles() {
  static WindowsFileSystem files;
  return files;
}

SystemError notEnoughStorage() { return ERROR_OUTOFMEMORY; }

std::string platformErrorText(SystemError error) {
  wchar_t buffer[1024];
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                buffer, sizeof buffer / sizeof *buffer, nullptr);
  while (length > 0 && (buffer[length - 1] == L'\n' || buffer[length - 1] == L'\r')) --length;
  if (length > 0) return utf8({buffer, length});
  return "Error " + std::to_string(error);
}

}  // namespace merivane
