#include "base/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace merivane {
namespace {

SystemError lastError() { return static_cast<SystemError>(errno); }

class Descriptor {
 public:
  Descriptor() = default;
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return number_; }
  /// Takes a descriptor on; false for the -1 of a failure.
  bool take(int number) {
    close();
    number_ = number;
    return number >= 0;
  }
  bool close() {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_ = -1;
};

// The objects exist before what they own is opened, so that running out of memory leaves nothing behind.

class PosixInputFile final : public InputFile {
 public:
  SystemError open(const std::string& path) {
    struct stat status = {};
    if (!descriptor_.take(::open(path.c_str(), O_RDONLY | O_CLOEXEC))) return lastError();
    if (::fstat(descriptor_.get(), &status) != 0) return lastError();
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (S_ISREG(status.st_mode)) size_ = static_cast<uint64_t>(status.st_size);
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
    }
    return 0;
  }

  uint64_t size() const override { return size_; }

 private:
  Descriptor descriptor_;
  uint64_t size_ = 0;
};

SystemError writeAll(int descriptor, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t count = ::write(descriptor, contents.data(), contents.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return lastError();
    contents.remove_prefix(static_cast<size_t>(count));
  }
  return 0;
}

class DeviceOutput final : public OutputFile {
 public:
  SystemError open(const std::string& path) {
    return file_.take(::open(path.c_str(), O_WRONLY | O_CLOEXEC)) ? 0 : lastError();
  }

  SystemError write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }
  SystemError commit() override { return file_.close() ? 0 : lastError(); }

 private:
  Descriptor file_;
};

class ReplacingOutput final : public OutputFile {
 public:
  /// `owner` and `group` may be -1 for the process's own.
  ReplacingOutput(std::string target, mode_t mode, uid_t owner, gid_t group)
      : beside_(target + ".XXXXXX"), target_(std::move(target)), mode_(mode), owner_(owner), group_(group) {}

  ~ReplacingOutput() override {
    if (!beside_.empty()) ::unlink(beside_.c_str());
  }

  SystemError open() {
    if (file_.take(::mkstemp(beside_.data()))) return 0;
    const SystemError error = lastError();
    beside_.clear();
    return error;
  }

  SystemError write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }

  SystemError commit() override {
    // Before the mode, which this may cut down. Who may not give a file away keeps it.
    [[maybe_unused]] const int given = ::fchown(file_.get(), owner_, group_);
    if (::fchmod(file_.get(), mode_) != 0) return lastError();
    // Some file systems cannot flush and say so; that is not a failed write.
    if (::fsync(file_.get()) != 0 && errno != EINVAL) return lastError();
    if (!file_.close()) return lastError();
    if (::rename(beside_.c_str(), target_.c_str()) != 0) return lastError();
    beside_.clear();
    return 0;
  }

 private:
  Descriptor file_;
  std::string beside_;
  std::string target_;
  mode_t mode_;
  uid_t owner_;
  gid_t group_;
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
    return {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino), true};
  }

  std::string absolute(const std::string& path) override {
    if (path.empty() || path[0] == '/') return path;
    const std::unique_ptr<char, void (*)(void*)> folder(::getcwd(nullptr, 0), ::free);
    if (!folder) return path;
    // ".." stays: behind a symbolic link it is not the folder that the text before it names.
    size_t begin = 0;
    while (path.compare(begin, 2, "./") == 0)
      begin = std::min(path.find_first_not_of('/', begin + 1), path.size());
    std::string whole = folder.get();
    if (whole.back() != '/') whole += '/';
    return whole + path.substr(begin);
  }

  SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) override {
    auto opened = std::make_unique<PosixInputFile>();
    const SystemError error = opened->open(path);
    if (error == 0) file = std::move(opened);
    return error;
  }

  SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) override {
    struct stat status;
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) return EISDIR;
    if (exists && !S_ISREG(status.st_mode)) {
      auto opened = std::make_unique<DeviceOutput>();
      const SystemError error = opened->open(path);
      if (error == 0) file = std::move(opened);
      return error;
    }
    std::string target = path;
    mode_t mode = 0;
    uid_t owner = static_cast<uid_t>(-1);
    gid_t group = static_cast<gid_t>(-1);
    if (exists) {
      if (::access(path.c_str(), W_OK) != 0) return lastError();
      mode = status.st_mode & 07777;
      owner = status.st_uid;
      group = status.st_gid;
      // A link keeps pointing at the file it names; the file behind it is what is replaced.
      const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(path.c_str(), nullptr), ::free);
      if (!resolved) return lastError();
      target = resolved.get();
    } else {
      const mode_t mask = ::umask(0);
      ::umask(mask);
      mode = 0666 & ~mask;
    }
    auto opened = std::make_unique<ReplacingOutput>(std::move(target), mode, owner, group);
    const SystemError error = opened->open();
    if (error == 0) file = std::move(opened);
    return error;
  }
};

}  // namespace

FileSystem& systemFiles() {
  static PosixFileSystem files;
  return files;
}

SystemError notEnoughStorage() { return ENOMEM; }

std::string platformErrorText(SystemError error) { return std::strerror(static_cast<int>(error)); }

}  // namespace merivane
