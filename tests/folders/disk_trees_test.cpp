#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#ifndef _WIN32
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#endif

#include "base/paths.h"
#include "cli/run_diff.h"
#include "folders/folder_comparison.h"
#include "tests/cli/diff_program.h"
#include "tests/support/random_trees.h"
#include "tests/support/reference_folders.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/watched_files.h"

namespace merivane {
namespace {

namespace fs = std::filesystem;

/// Two trees on the disk, below a scratch folder of their own.
class DiskTreesTest : public testing::Test {
 protected:
  DiskTreesTest() { clear(); }

  void clear() {
    for (const int side : {0, 1}) {
      paths_[side] = (scratch_ / (side == 0 ? "old" : "new")).string();
      ScratchFolder::remove(paths_[side]);
      fs::create_directory(paths_[side]);
    }
  }
  std::string at(int side, const std::string& name) const { return joinPath(paths_[side], name); }
  void put(const std::string& name, const std::string& text) {
    for (const int side : {0, 1}) put(side, name, text);
  }
  void put(int side, const std::string& name, const std::string& text) { folder_.put(at(side, name), text); }

  Result compare(const AbortFlag* abort = nullptr) {
    return compareFolders(systemFiles(), paths_, options_, abort, found_);
  }
  /// Each as its name and the reason.
  std::vector<std::string> troubles() const {
    std::vector<std::string> all;
    for (const FolderTrouble& trouble : found_.notCompared)
      all.push_back(trouble.name + " " + notComparedKey(trouble.reason));
    return all;
  }

  const ScratchFolder folder_;
  const fs::path& scratch_ = folder_.path;
  std::string paths_[2];
  FolderOptions options_;
  FolderComparison found_;
};

/// Brings trees from memory to the disk, without what has no place beside another name there.
void writeTrees(const MemoryFiles& from, const std::string (&names)[2], const std::string (&paths)[2]) {
  for (const auto& [name, file] : from.files) {
    const int side = name.starts_with(names[0]) ? 0 : 1;
    const fs::path path = paths[side] + name.substr(names[side].size());
    std::error_code taken;
    fs::create_directories(path.parent_path(), taken);
    if (taken || fs::exists(path)) continue;
    if (file.kind == FileKind::folder) {
      fs::create_directory(path);
    } else {
      std::ofstream(path, std::ios::binary) << file.contents;
      fs::last_write_time(path, fs::file_time_type::clock::from_sys(std::chrono::sys_seconds(
                                    std::chrono::seconds(1'000'000 + file.modified))));
    }
    if (!file.writable && file.kind == FileKind::file)
      fs::permissions(path, fs::perms(0222), fs::perm_options::remove);
  }
}

TEST_F(DiskTreesTest, FindsWhatThePlainComparisonFinds) {
  const std::string names[2] = {"O", "N"};
#ifdef _WIN32
  constexpr uint32_t trees = 40;
#else
  constexpr uint32_t trees = 200;
#endif
  for (uint32_t seed = 0; seed < trees; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    MemoryFiles memory;
    makeTrees(memory, names, random);
    clear();
    writeTrees(memory, names, paths_);
    options_ = randomFolderOptions(random);
    const ReferenceFolders expected(systemFiles(), paths_, options_);
    ASSERT_EQ(compare(), Result::success);
    for (int category = 0; category < kFolderCategories; ++category)
      ASSERT_EQ(plainEntries(found_.entries[category]), expected.entries[category]) << category;
  }
}

#ifndef _WIN32
/// What a shell says to a command line.
int shell(const std::string& command) {
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(DiskTreesTest, LinksPipesAndLongPathsEndTheComparisonNowhere) {
  put("dir/file", "text");
  fs::create_directory_symlink("..", at(0, "dir/up"));
  fs::create_directory_symlink("..", at(1, "dir/up"));
  for (const int side : {0, 1}) {
    fs::create_directory_symlink(at(side, "dir"), at(side, "other way"));
    fs::create_symlink("circle", at(side, "circle"));
    fs::create_symlink("missing", at(side, "nowhere"));
    ASSERT_EQ(::mkfifo(at(side, "pipe").c_str(), 0600), 0);
    put(side, std::string(255, 'n'), "long");
    // Deeper than a path can be long.
    fs::current_path(paths_[side]);
    for (int depth = 0; depth < 25; ++depth) {
      fs::create_directory(std::string(200, 'd'));
      fs::current_path(std::string(200, 'd'));
    }
  }
  constexpr sockaddr_un address = {AF_UNIX, "socket"};
  fs::current_path(paths_[0]);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ::close(socket);
  put(1, "socket", "a file here");
  fs::current_path(scratch_);
  options_.date = options_.size = false;
  options_.quickContents = true;
  for (const uint32_t threads : {1u, 3u}) {
    options_.threads = threads;
    ASSERT_EQ(compare(), Result::success);
    EXPECT_FALSE(found_.differs());
    std::vector<std::string> found = troubles();
    EXPECT_EQ(std::erase_if(found, [](const std::string& each) { return each.ends_with("d tooLong"); }), 2u);
    EXPECT_EQ(found, (std::vector<std::string>{"circle unreadable", "dir/up loop", "nowhere brokenLink",
                                               "other way/up loop", "pipe special", "socket special"}));
  }
  // Too deep a tree cannot be removed by its path either.
  for (const int side : {0, 1}) EXPECT_EQ(shell("rm -r '" + paths_[side] + "'"), 0);
  fs::current_path(scratch_.parent_path());
}

TEST_F(DiskTreesTest, TreesThatChangeMeanwhileAreToldAsTheyAreMet) {
  put("a", "text"), put("b", "text"), put("c", "text"), put("sub/d", "text"), put("sub2/e", "text");
  options_.quickContents = true;
  options_.date = false;
  options_.threads = 1;
  WatchedFiles files(systemFiles(), [&](const std::string& path) {
    if (path == at(0, "a")) fs::remove(path), ::mkfifo(path.c_str(), 0600);
    if (path == at(1, "b")) fs::remove(path);
    if (path == at(1, "c")) fs::remove(path), fs::create_directory(path);
    if (path == paths_[1])
      fs::remove_all(at(1, "sub")), fs::remove_all(at(1, "sub2")), put(1, "sub2", "file");
  });
  ASSERT_EQ(compareFolders(files, paths_, options_, nullptr, found_), Result::success);
  EXPECT_EQ(troubles(), (std::vector<std::string>{"a special", "b vanished", "c unreadable", "sub vanished",
                                                  "sub2 vanished"}));
}

TEST_F(DiskTreesTest, PatchesBringTheOldTreeToTheNewOne) {
  put("same", "text\n"), put("dir/same", "");
  put(0, "dir/text", "one\ntwo\nthree\n"), put(1, "dir/text", "one\nTWO\nthree");
  put(0, "run", "#!/bin/sh\n"), put(1, "run", "#!/bin/sh\nexit\n");
  fs::permissions(at(1, "run"), fs::perms::owner_exec, fs::perm_options::add);
  put(0, "gone/deep/file", "text\n"), put(0, "empty gone", "");
  put(1, "come/deep/a file", "text\n"), put(1, "empty come", ""), put(1, "come/tool", "#!/bin/sh\n");
  fs::permissions(at(1, "come/tool"), fs::perms::owner_exec, fs::perm_options::add);
  put(0, "quo\"te\xC3\xA9", "a\n"), put(1, "quo\"te\xC3\xA9", "b\n");
  put(0, "dos", "one\r\ntwo\r\n"), put(1, "dos", "one\r\nTwo\r\n");

  const std::string patch = (scratch_ / "patch").string();
  DiffProgram program;
  program.disk = &systemFiles();
  EXPECT_EQ(program.run({"--format=unified", "--output", patch, paths_[0], paths_[1]}), 1);
  EXPECT_EQ(program.errors(), "");
  for (const std::string apply : {"git apply", "patch -s -p1 --binary <"}) {
    SCOPED_TRACE(apply);
    if (shell(apply.substr(0, apply.find(' ')) + " --version >/dev/null") != 0)
      GTEST_SKIP() << "nothing is here to apply them";
    const std::string copy = (scratch_ / ("by " + apply)).string();
    fs::copy(paths_[0], copy, fs::copy_options::recursive);
    EXPECT_EQ(shell("cd '" + copy + "' && GIT_CEILING_DIRECTORIES='" + scratch_.string() + "' " + apply +
                    " '" + patch + "'"),
              0);
    EXPECT_EQ(program.run({"--contents=quick", "--no-date", copy, paths_[1]}), 0);
    EXPECT_EQ(program.output(), "Changed: 0, Old: 0, New: 0, Same: 7\n");
    for (const char* const name : {"run", "come/tool", "same"})
      EXPECT_EQ(::access(joinPath(copy, name).c_str(), X_OK), ::access(at(1, name).c_str(), X_OK)) << name;
  }
}
#endif

}  // namespace
}  // namespace merivane
