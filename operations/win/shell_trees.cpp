#include "operations/win/shell_trees.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <random>

#include "base/paths.h"
#include "base/win/file_facts.h"
#include "base/win/handle.h"
#include "base/win/wide.h"

namespace merivane {
namespace {

/// Tries again for a while what scanners and indexers make fail for a moment.
template <typename Call>
SystemError patiently(Call call) {
  constexpr DWORD pause = 50;
  for (int left = 20;; --left) {
    if (call()) return 0;
    const SystemError error = GetLastError();
    // What is not empty now may be so when a deletion below has come through; no longer than that.
    if (error == ERROR_DIR_NOT_EMPTY) left -= 4;
    const bool momentary = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
                           error == ERROR_LOCK_VIOLATION || error == ERROR_DIR_NOT_EMPTY;
    if (!momentary || left <= 0) return error;
    Sleep(pause);
  }
}

std::wstring currentFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return folder;
}

/// While it lives, the current folder is an empty one that nobody needs: some versions of the shell delete
/// what is in the current folder when they meet a path that is too long for them.
class ScratchFolder {
 public:
  explicit ScratchFolder(const std::string& temporary)
      : before_(currentFolder()),
        scratch_(wide(joinPath(temporary, "merivane-" + std::to_string(GetCurrentProcessId()) + ".tmp"))) {
    isCurrent_ = !temporary.empty() &&
                 (CreateDirectoryW(scratch_.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS) &&
                 SetCurrentDirectoryW(scratch_.c_str());
  }
  ~ScratchFolder() {
    if (isCurrent_) SetCurrentDirectoryW(before_.c_str());
    RemoveDirectoryW(scratch_.c_str());
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  bool isCurrent() const { return isCurrent_; }

 private:
  const std::wstring before_;
  const std::wstring scratch_;
  bool isCurrent_ = false;
};

class WindowsJournalFile final : public JournalFile {
 public:
  SystemError create(const std::string& path) { return open(path, CREATE_NEW); }

  SystemError openExisting(const std::string& path, std::string& contents) {
    if (const SystemError error = open(path, OPEN_EXISTING)) return error;
    contents.clear();
    char block[4096];
    DWORD got = 0;
    while (ReadFile(file_.get(), block, sizeof block, &got, nullptr)) {
      if (got == 0) return 0;
      contents.append(block, got);
    }
    return GetLastError();
  }

  SystemError append(std::string_view text) override {
    DWORD written = 0;
    const auto length = static_cast<DWORD>(text.size());
    if (!WriteFile(file_.get(), text.data(), length, &written, nullptr)) return GetLastError();
    if (written != length) return ERROR_DISK_FULL;
    return FlushFileBuffers(file_.get()) ? 0 : GetLastError();
  }

 private:
  SystemError open(const std::string& path, DWORD how) {
    const bool opened = file_.take(CreateFileW(systemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                               nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr));
    return opened ? 0 : GetLastError();
  }

  Handle file_;
};

class ShellTrees final : public TreeOperations {
 public:
  explicit ShellTrees(HWND owner) : owner_(owner) {}

  bool copyInto(const std::string& path, const std::string& folder, TextId title) override {
    return shell(FO_COPY, path, folder, 0, title);
  }

  bool recycle(const std::string& path) override {
    // Where there is a bin the user is warned of what does not fit into it; else that has been asked.
    const FILEOP_FLAGS warning = hasRecycleBin(path) ? FOF_WANTNUKEWARNING : 0;
    return shell(FO_DELETE, path, {}, FOF_ALLOWUNDO | warning, TextId::deletingFiles);
  }

  SystemError makeFolder(const std::string& path) override {
    return patiently([name = systemPath(path)] { return CreateDirectoryW(name.c_str(), nullptr); });
  }

  SystemError removeFolder(const std::string& path) override { return remove(path, RemoveDirectoryW); }
  SystemError removeFile(const std::string& path) override { return remove(path, DeleteFileW); }

  SystemError move(const std::string& from, const std::string& to) override {
    return patiently([old = systemPath(from), name = systemPath(to)] {
      return MoveFileExW(old.c_str(), name.c_str(), 0);
    });
  }

  void copyFacts(const std::string& from, const std::string& to) override {
    FILETIME created, accessed, written;
    {
      const Handle source(openFolder(from, FILE_READ_ATTRIBUTES));
      if (!source.valid() || !GetFileTime(source.get(), &created, &accessed, &written)) return;
    }
    {
      const Handle target(openFolder(to, FILE_WRITE_ATTRIBUTES));
      if (target.valid()) SetFileTime(target.get(), &created, &accessed, &written);
    }
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM;
    const DWORD wanted = GetFileAttributesW(systemPath(from).c_str());
    const DWORD had = GetFileAttributesW(systemPath(to).c_str());
    if (wanted == INVALID_FILE_ATTRIBUTES || had == INVALID_FILE_ATTRIBUTES) return;
    if ((wanted & kept) != (had & kept)) {
      SetFileAttributesW(systemPath(to).c_str(), (had & ~kept) | (wanted & kept));
    }
  }

  FoundEntry find(const std::string& path) override {
    FoundEntry found;
    const std::wstring name = systemPath(path);
    WIN32_FILE_ATTRIBUTE_DATA facts;
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &facts)) return found;
    found.kind = facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ? FileKind::folder : FileKind::file;
    if (found.kind == FileKind::file) found.size = joined(facts.nFileSizeHigh, facts.nFileSizeLow);
    found.modified = wholeSeconds(facts.ftLastWriteTime);
    found.name = path.substr(path.rfind(kPathSeparator) + 1);
    // The name as it is written, which the top folder of a drive has not, and whether it is a link.
    WIN32_FIND_DATAW entry;
    if (found.name.find_first_of("?*") != std::string::npos) return found;
    const HANDLE search = FindFirstFileW(name.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return found;
    FindClose(search);
    found.name = utf8(entry.cFileName);
    found.isLink = isLink(entry);
    return found;
  }

  bool hasRecycleBin(const std::string& path) override {
    wchar_t root[MAX_PATH + 1];
    return GetVolumePathNameW(wide(path).c_str(), root, MAX_PATH + 1) && GetDriveTypeW(root) == DRIVE_FIXED;
  }

  std::optional<uint64_t> freeSpace(const std::string& folder) override {
    ULARGE_INTEGER available;
    if (!GetDiskFreeSpaceExW(systemPath(folder).c_str(), &available, nullptr, nullptr)) return std::nullopt;
    return available.QuadPart;
  }

  /// Without the separator at its end, and with the names that short ones may stand for.
  std::string temporaryFolder() override {
    wchar_t folder[MAX_PATH + 1], whole[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH) return {};
    const DWORD wholeLength = GetLongPathNameW(folder, whole, MAX_PATH + 1);
    std::string path = utf8(wholeLength > 0 && wholeLength <= MAX_PATH ? whole : folder);
    while (path.size() > 3 && path.back() == kPathSeparator) path.pop_back();
    return find(path).kind == FileKind::folder ? path : std::string();
  }

  uint32_t random() override { return static_cast<uint32_t>(random_()); }

  SystemError createJournal(const std::string& path, std::unique_ptr<JournalFile>& file) override {
    auto created = std::make_unique<WindowsJournalFile>();
    const SystemError error = created->create(path);
    if (error == 0) file = std::move(created);
    return error;
  }

  SystemError openJournal(const std::string& path, std::unique_ptr<JournalFile>& file,
                          std::string& contents) override {
    auto opened = std::make_unique<WindowsJournalFile>();
    const SystemError error = opened->openExisting(path, contents);
    if (error == 0) file = std::move(opened);
    return error;
  }

 private:
  static HANDLE openFolder(const std::string& path, DWORD access) {
    return CreateFileW(systemPath(path).c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  }

  /// What is read-only is removed as well, and stays read-only when it cannot be removed.
  static SystemError remove(const std::string& path, BOOL(WINAPI* call)(const wchar_t*)) {
    const std::wstring name = systemPath(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    const bool readOnly =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (readOnly) SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
    const SystemError error = patiently([&] { return call(name.c_str()); });
    if (error != 0 && readOnly) SetFileAttributesW(name.c_str(), attributes);
    return error;
  }

  bool shell(UINT what, const std::string& path, const std::string& folder, FILEOP_FLAGS flags,
             TextId title) {
    const ScratchFolder scratch(temporaryFolder());
    if (!scratch.isCurrent()) return false;
    // Lists of names: each ends in a zero, and the list in one more.
    const std::wstring from = wide(path) + L'\0', to = wide(folder) + L'\0', words = wide(text(title));
    SHFILEOPSTRUCTW operation = {};
    operation.hwnd = owner_;
    operation.wFunc = what;
    operation.pFrom = from.c_str();
    operation.pTo = folder.empty() ? nullptr : to.c_str();
    operation.fFlags = static_cast<FILEOP_FLAGS>(flags | FOF_NOCONFIRMATION | FOF_NOCONFIRMMKDIR |
                                                 FOF_SIMPLEPROGRESS | FOF_NO_CONNECTED_ELEMENTS);
    operation.lpszProgressTitle = words.c_str();
    return SHFileOperationW(&operation) == 0 && !operation.fAnyOperationsAborted;
  }

  const HWND owner_;
  std::random_device random_;
};

}  // namespace

std::unique_ptr<TreeOperations> makeShellTrees(void* owner) {
  return std::make_unique<ShellTrees>(static_cast<HWND>(owner));
}

}  // namespace merivane
