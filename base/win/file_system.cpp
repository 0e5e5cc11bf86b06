#include "base/file_system.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <utility>

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
    if (!handle_.take(CreateFileA(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
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
  ReplacingOutput(std::string target, bool replaces) : target_(std::move(target)), replaces_(replaces) {}

  ~ReplacingOutput() override {
    file_.close();
    if (!beside_.empty()) DeleteFileA(beside_.c_str());
  }

  SystemError open() {
    DWORD number = GetTickCount() ^ GetCurrentProcessId() << 8;
    SystemError error = ERROR_FILE_EXISTS;
    for (int tries = 0; tries < 1000 && error == ERROR_FILE_EXISTS; ++tries, ++number) {
      char suffix[16];
      std::snprintf(suffix, sizeof suffix, ".%06lx.tmp", static_cast<unsigned long>(number & 0xFFFFFF));
      std::string beside = target_ + suffix;
      if (file_.take(CreateFileA(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
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
    const BOOL done = replaces_ ? ReplaceFileA(target_.c_str(), beside_.c_str(), nullptr,
                                               REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)
                                : MoveFileExA(beside_.c_str(), target_.c_str(), 0);
    if (!done) return GetLastError();
    beside_.clear();
    return 0;
  }

 private:
  Handle file_;
  std::string beside_;
  std::string target_;
  bool replaces_;
};

class WindowsFileSystem final : public FileSystem {
 public:
  FileKind kind(const std::string& path) override {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::none;
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return FileKind::folder;
    return attributes & FILE_ATTRIBUTE_DEVICE ? FileKind::other : FileKind::file;
  }

  bool isWritable(const std::string& path) override {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY)) return false;
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    Handle file(CreateFileA(path.c_str(), GENERIC_WRITE, share, nullptr, OPEN_EXISTING, 0, nullptr));
    // In use by somebody else just now is no lack of rights.
    return file.valid() || GetLastError() == ERROR_SHARING_VIOLATION;
  }

  FileStamp stamp(const std::string& path) override {
    WIN32_FILE_ATTRIBUTE_DATA found;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &found)) return {};
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return {};
    const auto joined = [](DWORD high, DWORD low) { return uint64_t{high} << 32 | low; };
    const FILETIME& written = found.ftLastWriteTime;
    return {joined(found.nFileSizeHigh, found.nFileSizeLow),
            static_cast<int64_t>(joined(written.dwHighDateTime, written.dwLowDateTime)), true};
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
    auto opened = std::make_unique<ReplacingOutput>(path, before == FileKind::file);
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

std::string systemErrorText(SystemError error) {
  char buffer[1024];
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                buffer, sizeof buffer, nullptr);
  while (length > 0 && (buffer[length - 1] == '\n' || buffer[length - 1] == '\r')) --length;
  if (length > 0) return std::string(buffer, length);
  std::snprintf(buffer, sizeof buffer, "Error %lu", static_cast<unsigned long>(error));
  return buffer;
}

}  // namespace merivane
