#include "tests/support/random_trees.h"

#include <iterator>

#include "base/paths.h"

namespace merivane {
namespace {

MemoryFiles::File randomFile(Random& random) {
  const std::string contents[] = {"",
                                  "one\ntwo\n",
                                  "one\r\ntwo\r\n",
                                  "one \ntwo\n",
                                  "ONE\ntwo\n",
                                  "one\ntwo",
                                  "one\ntwx\n",
                                  std::string("\0\1\2binary", 9),
                                  std::string("\0\1\3binary", 9),
                                  std::string(70'000, 'x') + "\nend\n",
                                  std::string(70'000, 'x') + "\nEnd\n",
                                  std::string(131'071, 'x') + "\r\n" + std::string(140'000, 'y'),
                                  std::string(131'071, 'x') + "\n" + std::string(140'000, 'y') + '\r'};
  MemoryFiles::File file;
  file.contents = contents[random.below(random.below(8) == 0 ? std::size(contents) : 9)];
  return file;
}

void makeEntry(MemoryFiles& files, const std::string (&paths)[2], Random& random, uint32_t depth);

void fill(MemoryFiles& files, const std::string (&paths)[2], Random& random, uint32_t depth) {
  const char* const names[] = {"a", "A", "b.txt", "B.txt", "B.TXT", "c.h", "d d", "\xC3\xA9.c"};
  for (uint32_t count = random.below(depth == 0 ? 9 : 6); count > 0; --count) {
    const std::string name = names[random.below(std::size(names))];
    std::string below[2];
    for (const int side : {0, 1}) {
      // Now and then an entry is missing, or spelled in another way, on one side.
      if (paths[side].empty() || random.below(8) == 0) continue;
      below[side] = joinPath(paths[side], random.below(8) == 0 ? std::string(names[random.below(5)]) : name);
      if (files.files.contains(below[side])) below[side].clear();
    }
    makeEntry(files, below, random, depth);
  }
}

void makeEntry(MemoryFiles& files, const std::string (&paths)[2], Random& random, uint32_t depth) {
  const bool isFolder = depth < 4 && random.below(3) == 0;
  MemoryFiles::File alike = randomFile(random);
  if (isFolder) {
    alike.contents.clear();
    alike.kind = FileKind::folder;
  }
  alike.modified = random.below(3);
  alike.hidden = random.below(6) == 0;
  alike.writable = random.below(6) != 0;
  for (const int side : {0, 1}) {
    if (paths[side].empty()) continue;
    MemoryFiles::File file = alike;
    if (!isFolder && random.below(4) == 0) file.contents = randomFile(random).contents;
    if (random.below(8) == 0) file.modified = random.below(3);
    if (random.below(8) == 0) file.hidden = !file.hidden;
    if (random.below(8) == 0) file.writable = !file.writable;
    if (isFolder && random.below(16) == 0) file.kind = FileKind::file;
    files.files[paths[side]] = file;
  }
  if (!isFolder) return;
  std::string below[2];
  for (const int side : {0, 1}) {
    const auto at = files.files.find(paths[side]);
    if (at != files.files.end() && at->second.kind == FileKind::folder) below[side] = paths[side];
  }
  fill(files, below, random, depth + 1);
}

}  // namespace

void makeTrees(MemoryFiles& files, const std::string (&paths)[2], Random& random) {
  for (const std::string& path : paths) files.files[path].kind = FileKind::folder;
  fill(files, paths, random, 0);
}

FolderOptions randomFolderOptions(Random& random) {
  FolderOptions options;
  for (bool* const option :
       {&options.subfolders, &options.ignoreNameCase, &options.date, &options.size, &options.attributes,
        &options.folderDate, &options.folderAttributes, &options.quickContents, &options.fullContents}) {
    *option = random.below(2) == 0;
  }
  options.hasIncludeFilter = random.below(5) == 0;
  options.hasExcludeFilter = random.below(3) == 0;
  const char* const filters[] = {"", " ; ", "*.txt;a", "b*.*; ?", "a*", "*.*"};
  options.includeFilter = filters[random.below(std::size(filters))];
  options.excludeFilter = filters[random.below(std::size(filters))];
  options.text.ignoreCase = random.below(2) == 0;
  options.text.ignoreBlanks = random.below(16);
  options.text.compareChanges = false;  // takes long, and does not decide whether texts differ
  options.threads = 1 + random.below(4);
  return options;
}

}  // namespace merivane
