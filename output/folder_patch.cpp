#include "output/folder_patch.h"

#include <algorithm>
#include <memory>
#include <string>

#include "base/paths.h"
#include "engine/comparison.h"
#include "folders/entry_comparison.h"
#include "folders/folder_walk.h"
#include "output/patch_name.h"

namespace merivane {
namespace {

class FolderPatch {
 public:
  FolderPatch(FileSystem& files, const WrittenFolders& folders, const FolderOptions& compared,
              const WriterOptions& options, ByteSink& sink, std::vector<FolderTrouble>& left)
      : files_(files),
        tops_{std::string(folders.paths[0]), std::string(folders.paths[1])},
        comparison_(folders.comparison),
        compared_(compared),
        options_(options),
        sink_(sink),
        left_(left) {}

  /// What goes makes room for what comes: a file where there was a folder, say.
  void write() {
    writeOneSided(FolderCategory::onlyOld, 0);
    for (const FolderEntry& entry : comparison_.category(FolderCategory::changed)) {
      if (!entry.isFolder) writeFile({std::string(entry.names[0]), std::string(entry.names[1])});
    }
    writeOneSided(FolderCategory::onlyNew, 1);
  }

 private:
  void writeOneSided(FolderCategory category, int side) {
    for (const FolderEntry& entry : comparison_.category(category)) {
      for (const std::string& name :
           listFilesOf(files_, tops_[side], std::string(entry.name()), side, compared_, left_)) {
        writeFile({side == 0 ? name : std::string(), side == 1 ? name : std::string()});
      }
    }
  }

  /// Writes the part for one file; an empty name is that of a side which does not have it.
  void writeFile(const std::string (&names)[2]) {
    ByteArray bytes[2];
    bool executable[2] = {false, false};
    for (const int side : {0, 1}) {
      if (!names[side].empty() && !read(names[side], side, bytes[side], executable[side])) return;
    }
    const bool onBoth = !names[0].empty() && !names[1].empty();
    if (onBoth && bytes[0].view() == bytes[1].view()) return;
    for (const int side : {0, 1}) {
      if (!isBinary(bytes[side].view())) continue;
      left_.push_back({names[side], side, NotCompared::binary, 0});
      return;
    }
    CompareOptions options = compared_.text;
    options.compareChanges = false;
    DiffModel model;
    const int known = names[0].empty() ? 1 : 0;
    if (compareTexts(bytes[0].view(), bytes[1].view(), options, nullptr, model) != Result::success) {
      left_.push_back({names[known], known, NotCompared::outOfMemory, notEnoughStorage()});
      return;
    }
    std::string paths[2];
    for (const int side : {0, 1}) {
      paths[side] = (side == 0 ? "a/" : "b/") + names[names[side].empty() ? 1 - side : side];
      std::replace(paths[side].begin(), paths[side].end(), kPathSeparator, '/');
    }
    if (onBoth && !options.comparesBytes() && model.differingRows() == 0) return;
    writeHead(names, paths, executable, bytes[known].size() == 0);
    for (const int side : {0, 1}) {
      if (names[side].empty()) paths[side] = "/dev/null";
    }
    writeUnified(
        {model,
         {{paths[0], bytes[0].view(), LineEndKind::lf}, {paths[1], bytes[1].view(), LineEndKind::lf}},
         options},
        options_, sink_);
  }

  /// Every file has a head of this kind, as where one has it the programs expect it of all; files that come
  /// or go empty need it. The number is the one that an empty file has in such heads. Of the rights they know
  /// whether a file may be run.
  void writeHead(const std::string (&names)[2], const std::string (&paths)[2], const bool (&executable)[2],
                 bool isEmpty) {
    std::string head = "diff --git " + patchName(paths[0], true) + " " + patchName(paths[1], true) + "\n";
    const auto mode = [&](int side) { return executable[side] ? " mode 100755\n" : " mode 100644\n"; };
    if (names[0].empty()) {
      head += std::string("new file") + mode(1);
    } else if (names[1].empty()) {
      head += std::string("deleted file") + mode(0);
    } else if (executable[0] != executable[1]) {
      head += std::string("old") + mode(0) + "new" + mode(1);
    }
    if (isEmpty && names[0].empty()) head += "index 0000000..e69de29\n";
    if (isEmpty && names[1].empty()) head += "index e69de29..0000000\n";
    sink_.write(head);
  }

  bool read(const std::string& name, int side, ByteArray& bytes, bool& executable) {
    std::unique_ptr<InputFile> file;
    SystemError error = files_.openListed(joinPath(tops_[side], name), file);
    if (error == 0) error = readToEnd(*file, bytes);
    if (error != 0) {
      left_.push_back({name, side, reasonFor(error), error == kNoFile ? 0 : error});
      return false;
    }
    executable = file->isExecutable();
    return true;
  }

  FileSystem& files_;
  const std::string tops_[2];
  const FolderComparison& comparison_;
  const FolderOptions& compared_;
  const WriterOptions& options_;
  ByteSink& sink_;
  std::vector<FolderTrouble>& left_;
};

}  // namespace

void writeFolderPatch(FileSystem& files, const WrittenFolders& folders, const FolderOptions& compared,
                      const WriterOptions& options, ByteSink& sink, std::vector<FolderTrouble>& left) {
  FolderPatch(files, folders, compared, options, sink, left).write();
}

}  // namespace merivane
