#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/abort_flag.h"
#include "base/byte_array.h"
#include "base/folder_listing.h"
#include "base/result.h"
#include "base/system_error.h"

namespace merivane {

/// What tells whether a file has been written since: another stamp, other contents. Of a path that names no
/// file it is the empty one.
struct FileStamp {
  uint64_t size = 0;
  int64_t modified = 0;  // in the platform's own unit
  bool exists = false;

  bool operator==(const FileStamp&) const = default;
};

/// A file open for reading, from its start on. Closes itself.
class InputFile {
 public:
  virtual ~InputFile() = default;

  /// Reads up to `wanted` bytes on from the last read; fewer only at the end of the file. Returns 0 or
  /// the error.
  virtual SystemError read(char* bytes, uint32_t wanted, uint32_t& got) = 0;

  /// The size the file had when it was opened; 0 where there is no telling, as for a pipe.
  virtual uint64_t size() const = 0;

  /// Whether its owner may run it; false on systems without such a right.
  virtual bool isExecutable() const { return false; }
};

/// New contents for a file, collected beside it. The file is as it was until commit() puts the new contents
/// in its place, whole; destroyed without that, they vanish.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  /// Returns 0 or the error, after which the file can only be given up.
  virtual SystemError write(std::string_view bytes) = 0;

  /// Flushes to the disk and replaces the file, keeping its attributes, owner, access rights and names. Tries
  /// for some two seconds what fails for a moment. Returns 0 or the error, with the earlier file intact; if
  /// even that could not be had, the error's text says where the new and the old contents are.
  virtual SystemError commit() = 0;
};

/// All access to files, small enough to have a real, an in-memory and a failing version. Paths have the
/// platform's own form, in UTF-8 on Windows (base/win/wide.h), in bytes elsewhere. Safe to use from any
/// thread.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// What a path names; symbolic links are followed.
  virtual FileKind kind(const std::string& path) = 0;

  /// Whether an existing file may be opened for writing.
  virtual bool isWritable(const std::string& path) = 0;

  /// Of what a symbolic link leads to.
  virtual FileStamp stamp(const std::string& path) = 0;
  virtual FileIdentity identity(const std::string& path) = 0;

  /// The path completed by the current folder, and on Windows by the drive and in the system's own form. What
  /// it names need not exist. As it is when it is empty or that fails.
  virtual std::string absolute(const std::string& path) = 0;

  /// Opens a file for reading; a folder is an error. Returns 0 or the error.
  virtual SystemError open(const std::string& path, std::unique_ptr<InputFile>& file) = 0;

  /// As open(), for what a listing called a file: a pipe or a device that has come into its place since is
  /// not waited for and is the error kNoFile.
  virtual SystemError openListed(const std::string& path, std::unique_ptr<InputFile>& file) {
    return open(path, file);
  }

  /// Starts new contents for the file at `path`, which need not exist; those of a symbolic link are the
  /// file's that it names. A device, a pipe or an open file ("/dev/stdout") has no earlier contents to keep
  /// and is written to at once. Returns 0 or the error.
  virtual SystemError create(const std::string& path, std::unique_ptr<OutputFile>& file) = 0;

  /// Lists a folder, "." and ".." left out, in place of what `listing` held. Returns 0 or the error, after
  /// which the listing is empty; it means nothing when the flag was raised meanwhile, and a null flag never
  /// aborts. Throws std::bad_alloc.
  virtual SystemError list(const std::string& path, const AbortFlag* abort, FolderListing& listing) = 0;
};

/// The computer's own files.
FileSystem& systemFiles();

/// True only for a path, not empty, that a file-status query reports to be a regular file.
bool IsFile(const std::string& path);

/// True only for a path that names an existing folder.
bool IsFolder(const std::string& path);

/// Whether two names lead to one file or folder, or would if it were there.
bool sameFile(FileSystem& files, const std::string& a, const std::string& b);

/// Makes `contents` the whole contents of the file at `path`, all or nothing. Returns 0 or the error.
SystemError replaceFile(FileSystem& files, const std::string& path, std::string_view contents);

/// Reads on to the end of the file after the `contents.size()` bytes already there. A file that does not
/// fit into 32-bit positions or into memory returns notEnoughStorage().
SystemError readToEnd(InputFile& file, ByteArray& contents);

}  // namespace merivane
