#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace merivane {

/// A folder of its own among the temporary files, of which nothing is left in the end.
class ScratchFolder {
 public:
  ScratchFolder()
      : path(std::filesystem::temp_directory_path() /
             ("merivane-test-" +
              std::to_string(std::chrono::system_clock::now().time_since_epoch().count()))) {
    EXPECT_TRUE(std::filesystem::create_directory(path)) << path;
  }
  ~ScratchFolder() { remove(path); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Removes a file or a tree whatever its rights. Links go themselves, whatever they lead to.
  static void remove(const std::filesystem::path& path) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(path, ignored))) {
      fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ignored);
      for (const fs::path& below : std::vector<fs::path>(fs::directory_iterator(path, ignored), {}))
        remove(below);
    }
    fs::permissions(path, fs::perms::owner_write, fs::perm_options::add | fs::perm_options::nofollow,
                    ignored);
    fs::remove(path, ignored);
  }

  std::string at(const std::string& name) const { return (path / name).string(); }
  auto filesThere() const { return std::distance(std::filesystem::directory_iterator(path), {}); }
  void put(const std::string& name, const std::string& contents) const {
    std::filesystem::create_directories((path / name).parent_path());
    std::ofstream(path / name, std::ios::binary) << contents;
  }
  std::string contents(const std::string& name) const {
    std::ifstream file(path / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  const std::filesystem::path path;
};

}  // namespace merivane
