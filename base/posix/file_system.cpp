#include "base/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/file_replacement.h"
#include "base/posix/descriptor.h"

#include "base/paths.h"

namespace merivane {
namespace {

class PosixInputFile final : public InputFile {
 public:
  /// `expectsFile`: does not wait for the other end of what turns out to be a pipe.
  SystemError open(const std::string& path, bool expectsFile) {
    struct stat status = {};
    const int flags = O_RDONLY | O_CLOEXEC | (expectsFile ? O_NONBLOCK | O_NOCTTY : 0);
    if (!descriptor_.take(::open(path.c_str(), flags))) {
      const bool isSocket = errno == ENXIO;
      return expectsFile && isSocket ? kNoFile : lastError();
    }
    if (::fstat(descriptor_.get(), &status) != 0) return lastError();
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return expectsFile ? kNoFile : 0;
    size_ = static_cast<uint64_t>(status.st_size);
    isExecutable_ = (status.st_mode & S_IXUSR) != 0;
    return 0;
  }

  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    // Above this a single read may be refused.
    constexpr uint32_t atOnce = 1u << 30;
    got = 0;
    while (got < wanted) {
      const ssize_t count = ::read(descriptor_.get(), bytes + got, std::min(wanted - got, atOnce));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return lastError();
      if (count == 0) break;
      got += static_cast<uint32_t>(count);
      read_ += static_cast<uint64_t>(count);
      // The end of a regular file that has not grown needs no read of its own to be found.
      if (read_ == size_ && got < wanted) break;
    }
    return 0;
  }

  uint64_t size() const override { return size_; }
  bool isExecutable() const override { return isExecutable_; }

 private:
  Descriptor descriptor_;
  uint64_t size_ = 0;
  bool isExecutable_ = false;
  uint64_t read_ = 0;
};

class PosixFileSystem final : public FileSystem {
 public:
  FileKind kind(const std::string& path) override {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return FileKind::none;
    if (S_ISREG(status.st_mode)) return FileKind::file;
    return S_ISDIR(status.st_mode) ? FileKind::folder : FileKind::other;
  }

  bool isWritable(const std::string& path) override { return ::access(path.c_str(), W_OK) == 0; }

  FileStamp stamp(const std::string& path) override {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    const int64_t seconds = status.st_mtim.tv_sec;
    return {static_cast<uint64_t>(status.st_size), seconds * 1'000'000'000 + status.st_mtim.tv_nsec, true};
  }

  FileIdentity identity(const std::string& path) override {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return {};
    return {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino)};
  }

  std::string absolute(const std::string& path) override {
    if (path.empty() || path[0] == '/') return path;
    const std::unique_ptr<char, void (*)(void*)> folder(::getcwd(nullptr, 0), ::free);
    if (!folder) return path;
    // ".." stays: after a symbolic link it is not the folder that the text before it names.
    size_t begin = 0;
    while (path.compare(begin, 2, "./") == 0)
      begin = std::min(path.find_first_not_of('/', begin + 1), path.size());
    std::string whole = folder.get();
    if (whole.back() != '/') whole += '/';
    return whole + path.substr(begin);
  }

  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    return openFor(path, false, file);
  }

  SystemError openListed(const std::string& path, std::unique_ptr<InputFile>& file) override {
    return openFor(path, true, file);
  }

  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override {
    return createSystemFile(path, file);
  }

  SystemError list(const std::string& path, const AbortFlag* abort, FolderListing& listing) override {
    return listSystemFolder(path, abort, listing);
  }

 private:
  static SystemError openFor(const std::string& path, bool expectsFile, std::unique_ptr<InputFile>& file) {
    auto opened = std::make_unique<PosixInputFile>();
    const SystemError error = opened->open(path, expectsFile);
    if (error == 0) file = std::move(opened);
    return error;
  }
};

}  // namespace

FileSystem& systemFiles() {
  static PosixFileSystem files;
  return files;
}

const char kPathSeparator = '/';

SystemError notEnoughStorage() { return ENOMEM; }

bool meansMissing(SystemError error) { return error == ENOENT || error == ENOTDIR; }

bool meansTooLong(SystemError error) { return error == ENAMETOOLONG; }

std::string platformErrorText(SystemError error) { return std::strerror(static_cast<int>(error)); }

}  // namespace merivane
