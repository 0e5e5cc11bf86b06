#include "base/file_system.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif
#endif

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <vector>

#include "base/buffered_sink.h"
#include "base/unfinished_files.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/scratch_folder.h"

namespace merivane {
namespace {

namespace fs = std::filesystem;

class SystemFilesTest : public testing::Test, protected ScratchFolder {
 protected:
  FileSystem& files_ = systemFiles();
};

TEST_F(SystemFilesTest, TellsWhatAPathNamesAndWhenItWasWritten) {
  put("file", "text");
  fs::create_directory(path / "sub");
  const std::tuple<std::string, FileKind, bool> cases[] = {{at("file"), FileKind::file, true},
                                                           {at("sub"), FileKind::folder, false},
                                                           {at("missing"), FileKind::none, false},
                                                           {at("file/below"), FileKind::none, false},
                                                           {"", FileKind::none, false}};
  for (const auto& [name, kind, isFile] : cases) {
    EXPECT_EQ(files_.kind(name), kind) << name;
    EXPECT_EQ(IsFile(name), isFile) << name;
    EXPECT_EQ(IsFolder(name), kind == FileKind::folder) << name;
    EXPECT_EQ(files_.stamp(name).exists, isFile) << name;
  }
  EXPECT_TRUE(files_.isWritable(at("file")));
  const FileStamp stamp = files_.stamp(at("file"));
  EXPECT_EQ(stamp.size, 4u);
  fs::last_write_time(path / "file", fs::last_write_time(path / "file") + std::chrono::seconds(2));
  EXPECT_NE(files_.stamp(at("file")), stamp);
}

TEST_F(SystemFilesTest, KnowsAFileByEachOfItsNames) {
  put("file", "text");
  put("twin", "text");
  fs::create_directory(path / "sub");
  const std::string file = at("file");
  std::vector<std::string> others = {at("./file"), at("sub/../file")};
#ifdef _WIN32
  others.push_back(at("FILE"));
#else
  fs::create_symlink("file", path / "link");
  fs::create_hard_link(path / "file", path / "second");
  others.insert(others.end(), {at("link"), at("second")});
#endif
  for (const std::string& other : others) {
    EXPECT_TRUE(sameFile(files_, file, other)) << other;
    EXPECT_EQ(files_.identity(file), files_.identity(other)) << other;
  }
  EXPECT_TRUE(sameFile(files_, at("missing"), at("missing")));
  for (const char* const other : {"twin", "missing", "sub"}) EXPECT_FALSE(sameFile(files_, file, at(other)));
  const fs::path before = fs::current_path();
  fs::current_path(path);
  EXPECT_TRUE(sameFile(files_, file, ".//file"));
  EXPECT_EQ(files_.absolute("new"), files_.absolute("./new"));
  EXPECT_TRUE(fs::path(files_.absolute("new")).is_absolute());
  EXPECT_EQ(files_.absolute(""), "");
  fs::current_path(before);
}

TEST_F(SystemFilesTest, RemovesUnfinishedFilesForASignal) {
  put("kept", "");
  UnfinishedFile kept;
  kept.begin(at("kept"));
  kept.end();
  std::unique_ptr<OutputFile> outputs[2];
  for (auto& output : outputs) ASSERT_EQ(files_.create(at("new"), output), 0u);
  outputs[1].reset();
  EXPECT_EQ(filesThere(), 2);
  removeUnfinishedFiles();
  outputs[0].reset();
  EXPECT_EQ(filesThere(), 1);
  EXPECT_TRUE(fs::exists(path / "kept"));
}

TEST_F(SystemFilesTest, ReadsWholeFilesAndWritesThemInPieces) {
  std::unique_ptr<OutputFile> made;
  ASSERT_EQ(files_.create(at("file"), made), 0u);
  BufferedSink sink(*made);
  std::string text;
  for (const size_t size : {0, 10, 65526, 1, 65535, 65536, 3, 200000, 5}) {
    const std::string piece(size, static_cast<char>('a' + text.size() % 26));
    sink.write(piece);
    text += piece;
  }
  EXPECT_EQ(sink.finish(), 0u);
  EXPECT_EQ(made->commit(), 0u);

  std::unique_ptr<InputFile> file;
  ASSERT_EQ(files_.open(at("file"), file), 0u);
  EXPECT_EQ(file->size(), text.size());
  ByteArray bytes;
  ASSERT_TRUE(bytes.allocate(1000));
  uint32_t got = 0;
  ASSERT_EQ(file->read(bytes.data(), 1000, got), 0u);
  ASSERT_EQ(got, 1000u);
  ASSERT_EQ(readToEnd(*file, bytes), 0u);
  EXPECT_TRUE(bytes.view() == text);
  EXPECT_NE(files_.open(path.string(), file), 0u);
  EXPECT_NE(systemErrorText(files_.open(at("missing"), file)), "");
}

TEST_F(SystemFilesTest, ReplacesFilesWholeOrLeavesThem) {
  put("old", "a much longer text than what comes");
  for (const char* const text : {"short", "", "fresh"}) {
    for (const char* const name : {"old", "new"}) {
      EXPECT_EQ(replaceFile(files_, at(name), text), 0u);
      EXPECT_EQ(contents(name), text);
    }
  }
  for (const char* const name : {"old", "third"}) {
    std::unique_ptr<OutputFile> file;
    ASSERT_EQ(files_.create(at(name), file), 0u);
    ASSERT_EQ(file->write("given up"), 0u);
  }
  EXPECT_EQ(contents("old"), "fresh");
  fs::create_directory(path / "sub");
  EXPECT_NE(replaceFile(files_, at("sub"), "text"), 0u);
  EXPECT_NE(replaceFile(files_, at("missing/file"), "text"), 0u);
  EXPECT_EQ(filesThere(), 3) << "nothing is left beside";

  const std::string target = at("old");
  failEachAllocation([&] { put("old", "earlier"); }, [&] { return replaceFile(files_, target, "other"); },
                     [&](SystemError error) {
                       EXPECT_NE(error, 0u);
                       EXPECT_EQ(contents("old"), "earlier");
                       EXPECT_EQ(filesThere(), 3);
                     },
                     notEnoughStorage());
}

TEST_F(SystemFilesTest, DoesNotReplaceALockedFile) {
  put("file", "earlier");
  fs::permissions(path / "file", fs::perms(0222), fs::perm_options::remove);
#ifndef _WIN32
  if (::geteuid() == 0) GTEST_SKIP() << "rights do not count for a super-user";
#endif
  EXPECT_FALSE(files_.isWritable(at("file")));
  EXPECT_NE(replaceFile(files_, at("file"), "other"), 0u);
  EXPECT_EQ(contents("file"), "earlier");
  EXPECT_EQ(filesThere(), 1);
}

TEST_F(SystemFilesTest, NamesOfEveryLanguageTheLongestAndRelativeOnesAreTheirOwn) {
#ifdef _WIN32
  const size_t longest = std::min<size_t>(255, 259 - path.string().size() - 1);
#else
  const size_t longest = 255;
#endif
  // The first is no other letter of any code page's, one is outside the first 65,536 characters.
  const std::u8string names[] = {u8"\u0141odz.txt",  u8"\u041F\u0440\u0438\u0432\u0435\u0442.txt",
                                 u8"\u00E9.txt",     u8"\u4E2D\u6587.txt",
                                 u8"\U0001F600.txt", std::u8string(longest, u8'n')};
  const fs::path before = fs::current_path();
  fs::current_path(path);
  for (const std::u8string& name : names) {
    for (const std::u8string& whole : {path.u8string() + u8"/" + name, name}) {
      const std::string bytes(whole.begin(), whole.end());
      for (const char* const text : {"made", "replaced"}) EXPECT_EQ(replaceFile(files_, bytes, text), 0u);
      EXPECT_TRUE(fs::exists(path / name)) << bytes;
      EXPECT_EQ(files_.stamp(bytes).size, 8u);
      std::unique_ptr<InputFile> file;
      EXPECT_EQ(files_.open(bytes, file), 0u);
    }
  }
  fs::current_path(before);
  EXPECT_EQ(filesThere(), 6);
}

TEST_F(SystemFilesTest, ListsAFolderInOneGo) {
  put("a b", "four");
  put("locked", "");
  fs::permissions(path / "locked", fs::perms(0222), fs::perm_options::remove);
  fs::create_directory(path / "sub");
  // Half a second before a whole one of 1969. The library of Windows sets whole seconds.
  fs::last_write_time(path / "a b",
                      fs::file_time_type::clock::from_sys(std::chrono::sys_time<std::chrono::milliseconds>(
                          std::chrono::milliseconds(-86'400'500))));
  std::string expected = "a b: file 4 at -86400\nlocked: file 0 read-only\nsub: folder\n";
#ifndef _WIN32
  // Of links it tells what they lead to; of one that leads nowhere, why.
  fs::create_symlink("a b", path / "to file");
  fs::create_symlink("sub", path / "to folder");
  fs::create_symlink("missing", path / "to nothing");
  ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
  expected =
      "a b: file 4 at -86401\nlocked: file 0 read-only\npipe: other\nsub: folder\n"
      "to file: file 4 at -86401 link\nto folder: folder link\nto nothing: none missing link\n";
#endif
  FolderListing listing;
  ASSERT_EQ(files_.list(path.string(), nullptr, listing), 0u);
  std::map<std::string, std::string> found;
  for (uint32_t i = 0; i < listing.size(); ++i) {
    const ListedEntry& entry = listing.entry(i);
    constexpr const char* kinds[] = {"none", "file", "folder", "other"};
    std::string& facts = found[std::string(listing.name(i))] = kinds[static_cast<int>(entry.kind)];
    if (entry.kind == FileKind::file) facts += " " + std::to_string(entry.size);
    if (entry.modified < 0) facts += " at " + std::to_string(entry.modified);
    if (entry.isReadOnly) facts += " read-only";
    if (entry.isHidden) facts += " hidden";
    if (meansMissing(entry.error)) facts += " missing";
    if (entry.isLink) facts += " link";
  }
  std::string all;
  for (const auto& [name, facts] : found) all += name + ": " + facts + "\n";
  EXPECT_EQ(all, expected);

  for (const std::string& nothing : {at("missing"), at("a b")}) {
    listing.add("x", {});
    EXPECT_NE(files_.list(nothing, nullptr, listing), 0u);
    EXPECT_EQ(listing.size(), 0u);
  }
  EXPECT_TRUE(meansMissing(files_.list(at("missing"), nullptr, listing)));
#ifndef _WIN32
  EXPECT_TRUE(meansTooLong(files_.list(at(std::string(300, 'x')), nullptr, listing)));
#endif
}

#ifndef _WIN32
TEST_F(SystemFilesTest, KeepsModeOwnerAndLinks) {
  put("file", "earlier");
  fs::permissions(path / "file", fs::perms(0751));
  const bool isSuperUser = ::geteuid() == 0;
  if (isSuperUser) {
    ASSERT_EQ(::chown(at("file").c_str(), 1234, 2345), 0);
  }
  fs::create_symlink("file", path / "link");
  EXPECT_EQ(replaceFile(files_, at("link"), "other"), 0u);
  EXPECT_TRUE(fs::is_symlink(path / "link"));
  EXPECT_EQ(contents("file"), "other");
  struct stat status;
  ASSERT_EQ(::stat(at("file").c_str(), &status), 0);
  EXPECT_EQ(std::tuple(status.st_mode & 07777, status.st_uid, status.st_gid),
            isSuperUser ? std::tuple(0751u, 1234u, 2345u) : std::tuple(0751u, ::geteuid(), ::getegid()));

#ifdef __linux__
  ASSERT_EQ(::setxattr(at("file").c_str(), "user.note", "mine", 4, 0), 0);
  char note[8];
  EXPECT_EQ(replaceFile(files_, at("file"), "again"), 0u);
  EXPECT_EQ(::getxattr(at("file").c_str(), "user.note", note, sizeof note), 4);
#endif

  // A second name stays one of the file, a link makes what it names, and one that names itself makes nothing.
  fs::create_hard_link(path / "file", path / "second");
  EXPECT_EQ(replaceFile(files_, at("second"), "both"), 0u);
  EXPECT_EQ(contents("file"), "both");
  fs::create_symlink("made", path / "dangling");
  EXPECT_EQ(replaceFile(files_, at("dangling"), "text"), 0u);
  EXPECT_TRUE(fs::is_symlink(path / "dangling"));
  EXPECT_EQ(contents("made"), "text");
  fs::create_symlink("circle", path / "circle");
  EXPECT_NE(replaceFile(files_, at("circle"), "text"), 0u);
  EXPECT_TRUE(fs::is_symlink(path / "circle"));

  // What is new has the rights that any new file has.
  put("plain", "");
  EXPECT_EQ(replaceFile(files_, at("new"), "text"), 0u);
  EXPECT_EQ(fs::status(path / "new").permissions(), fs::status(path / "plain").permissions());
}

TEST_F(SystemFilesTest, WritesIntoDevicesAndOpenFiles) {
  EXPECT_EQ(replaceFile(files_, "/dev/null", "text"), 0u);
  EXPECT_NE(replaceFile(files_, "/dev/full", "text"), 0u);
  EXPECT_EQ(files_.kind("/dev/null"), FileKind::other);
  put("log", "before ");
  const int log = ::open(at("log").c_str(), O_WRONLY | O_APPEND);
  fs::create_symlink("/dev/fd/" + std::to_string(log), path / "link");
  EXPECT_EQ(replaceFile(files_, "/dev/fd/" + std::to_string(log), "text "), 0u);
  EXPECT_EQ(replaceFile(files_, "/proc/self/fd/" + std::to_string(log), "and "), 0u);
  EXPECT_EQ(replaceFile(files_, at("link"), "more"), 0u);
  ::close(log);
  EXPECT_EQ(contents("log"), "before text and more");
  EXPECT_EQ(filesThere(), 2);
}

#endif

}  // namespace
}  // namespace merivane
