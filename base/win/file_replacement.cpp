#include "base/file_replacement.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "base/win/handle.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

/// An absolute path as the file functions take it, made without the heap for every well-formed name: what
/// cleans up after memory ran out must not need any.
class StepPath {
 public:
  explicit StepPath(const std::string& path) {
    wchar_t* const begin = units_ + kPrefix;
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path.c_str(), -1, begin, kRoom);
    if (length == 0) {
      other_ = systemPath(path);
      path_ = other_.c_str();
      return;
    }
    path_ = begin;
    const std::wstring_view start(begin, 2);
    if (length <= kLongPath || (start == L"\\\\" && (begin[2] == L'?' || begin[2] == L'.'))) return;
    // A share's second backslash stands for both.
    const bool isShare = start == L"\\\\";
    const std::wstring_view prefix = isShare ? L"\\\\?\\UNC" : L"\\\\?\\";
    path_ = begin + (isShare ? 1 : 0) - prefix.size();
    prefix.copy(const_cast<wchar_t*>(path_), prefix.size());
  }

  operator const wchar_t*() const { return path_; }

 private:
  static constexpr int kPrefix = 8;
  static constexpr int kRoom = 32768;
  static constexpr int kLongPath = 240;  // well below what the functions take without a prefix

  wchar_t units_[kPrefix + kRoom];
  std::wstring other_;
  const wchar_t* path_ = nullptr;
};

class WindowsWrittenFile final : public WrittenFile {
 public:
  SystemError open(const std::string& path, DWORD share, DWORD disposition) {
    const HANDLE file = CreateFileW(systemPath(path).c_str(), GENERIC_WRITE, share, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return file_.take(file) ? 0 : GetLastError();
  }

  SystemError write(std::string_view bytes) override {
    while (!bytes.empty()) {
      DWORD written = 0;
      const DWORD wanted = static_cast<DWORD>(std::min<size_t>(bytes.size(), 1u << 24));
      if (!WriteFile(file_.get(), bytes.data(), wanted, &written, nullptr)) return GetLastError();
      if (written == 0) return ERROR_DISK_FULL;
      bytes.remove_prefix(written);
    }
    return 0;
  }

  // ReplaceFile does it.
  SystemError takeAfter(const std::string&) override { return 0; }

  SystemError finish() override {
    if (GetFileType(file_.get()) == FILE_TYPE_DISK &&
        (!SetEndOfFile(file_.get()) || !FlushFileBuffers(file_.get()))) {
      return GetLastError();
    }
    return file_.close() ? 0 : GetLastError();
  }

 private:
  Handle file_;
};

SystemError opened(const std::string& path, DWORD share, DWORD disposition,
                   std::unique_ptr<WrittenFile>& file) {
  // The object exists before the file, so that running out of memory leaves nothing behind.
  auto made = std::make_unique<WindowsWrittenFile>();
  const SystemError error = made->open(path, share, disposition);
  if (error == 0) file = std::move(made);
  return error;
}

SystemError errorUnless(BOOL done) { return done ? 0 : GetLastError(); }

class WindowsSteps final : public ReplacementSteps {
 public:
  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    return systemFiles().open(path, file);
  }

  // The folder's rights are the file's; what replaces another one gets that one's. It can be removed while it
  // is open, for a signal.
  SystemError make(const std::string& path, bool, std::unique_ptr<WrittenFile>& file) override {
    return opened(path, FILE_SHARE_DELETE, CREATE_NEW, file);
  }

  // Through a link whose target is missing this makes it.
  SystemError openInPlace(const std::string& path, std::unique_ptr<WrittenFile>& file) override {
    return opened(path, kShareAll, OPEN_ALWAYS, file);
  }

  // ReplaceFile keeps attributes, time of creation, access rights and further streams of the file that goes.
  SystemError replace(const std::string& target, const std::string& fresh,
                      const std::string& spare) override {
    return errorUnless(ReplaceFileW(StepPath(target), StepPath(fresh), StepPath(spare),
                                    REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr));
  }

  SystemError move(const std::string& from, const std::string& to) override {
    return errorUnless(MoveFileExW(StepPath(from), StepPath(to), MOVEFILE_WRITE_THROUGH));
  }

  SystemError remove(const std::string& path) override {
    const SystemError error = errorUnless(DeleteFileW(StepPath(path)));
    return error == ERROR_FILE_NOT_FOUND ? 0 : error;
  }

  bool exists(const std::string& path) override {
    return GetFileAttributesW(StepPath(path)) != INVALID_FILE_ATTRIBUTES;
  }

  void wait(uint32_t milliseconds) override { Sleep(milliseconds); }

  std::string temporaryFolder() override {
    wchar_t folder[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    return length > MAX_PATH ? std::string() : utf8({folder, length});
  }

  bool isTaken(SystemError error) const override {
    return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS;
  }

  bool isMomentary(SystemError error) const override {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
           error == ERROR_LOCK_VIOLATION || error == ERROR_UNABLE_TO_REMOVE_REPLACED;
  }
};

/// The path of an open file as the system has it, links followed; empty when there is no telling.
std::string finalPath(HANDLE file) {
  std::wstring path(32768, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0);
  if (length == 0 || length >= path.size()) return {};
  path.resize(length);
  if (path.compare(0, 8, L"\\\\?\\UNC\\") == 0) return "\\\\" + utf8(path.substr(8));
  return utf8(path.compare(0, 4, L"\\\\?\\") == 0 ? path.substr(4) : path);
}

}  // namespace

SystemError createSystemFile(const std::string& path, std::unique_ptr<OutputFile>& file) {
  ReplacementTarget target;
  target.path = systemFiles().absolute(path);
  const std::wstring name = systemPath(target.path);
  if (isDevicePath(name)) {
    std::unique_ptr<WrittenFile> device;
    const SystemError error = opened(target.path, kShareAll, OPEN_EXISTING, device);
    if (error == 0) file = directOutput(std::move(device));
    return error;
  }
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    const Handle found(CreateFileW(name.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION facts = {};
    const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    target.exists = !isLink || found.valid();
    // To be sure it is written in place where the other names or the end of a link are not known.
    target.inPlace = !GetFileInformationByHandle(found.get(), &facts) || facts.nNumberOfLinks > 1;
    if (isLink && found.valid()) {
      const std::string end = finalPath(found.get());
      if (end.empty()) target.inPlace = true;
      if (!end.empty()) target.path = end;
    }
  }
  if (target.exists && !systemFiles().isWritable(target.path)) return ERROR_ACCESS_DENIED;
  target.folder = target.path.substr(0, target.path.rfind('\\') + 1);
  static WindowsSteps steps;
  return createReplacement(steps, std::move(target), file);
}

}  // namespace merivane
