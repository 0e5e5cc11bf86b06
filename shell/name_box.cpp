#include "shell/name_box.h"

#include <algorithm>

#include "base/paths.h"
#include "base/utf16.h"

namespace merivane {

std::optional<Completion> NameCompletion::onEdit(std::string_view typed, const HistoryList& history) const {
  if (lastEditWasDeletion_ || typed.empty()) return std::nullopt;
  const int32_t entry = history.FindCompletion(typed);
  if (entry < 0) return std::nullopt;
  const auto length = [](std::string_view name) { return utf16FromUtf8<char16_t>(name).size(); };
  return Completion{entry, length(typed), length(history.entries()[static_cast<size_t>(entry)])};
}

std::string meantName(std::string_view typed) {
  const auto trim = [](std::string_view name) {
    const size_t begin = std::min(name.find_first_not_of(" \t"), name.size());
    return name.substr(begin, name.find_last_not_of(" \t") + 1 - begin);
  };
  std::string_view name = trim(typed);
  if (name.size() >= 2 && name.front() == '"' && name.back() == '"') {
    name = trim(name.substr(1, name.size() - 2));
  }
  return std::string(name);
}

bool acceptsDrop(FileKind item, uint32_t dropKinds) {
  return (item == FileKind::file && (dropKinds & kDropFiles) != 0) ||
         (item == FileKind::folder && (dropKinds & kDropFolders) != 0);
}

std::optional<std::string> upOneFolder(std::string_view path) {
  // What must stay: the backslash after a drive, or server and share.
  size_t root = 0;
  if (path.size() >= 3 && path[1] == ':' && path[2] == '\\') {
    root = 3;
  } else if (path.substr(0, 2) == "\\\\") {
    const size_t share = path.find('\\', 2);
    root = share == std::string_view::npos ? path.size() : path.find('\\', share + 1);
    if (root == std::string_view::npos) root = path.size();
  } else if (path.substr(0, 1) == "\\") {
    root = 1;
  }
  while (path.size() > root && path.back() == '\\') path.remove_suffix(1);
  size_t cut = path.rfind('\\');
  if (path.size() <= root || cut == std::string_view::npos) return std::nullopt;
  if (cut < root) cut = root;
  std::string folder(path.substr(0, cut));
  if (folder.back() != '\\') folder += '\\';
  return folder;
}

std::optional<std::array<std::string, 2>> parentFolders(const std::string (&files)[2]) {
  std::array<std::string, 2> folders;
  for (const int side : {0, 1}) {
    const auto above = upOneFolder(files[side]);
    if (!above) return std::nullopt;
    const bool isTop = above->ends_with(":\\") || above->size() == 1;
    folders[side] = isTop ? *above : above->substr(0, above->size() - 1);
  }
  return folders;
}

BrowseStart browseStart(FileSystem& files, const std::string& name) {
  if (!IsValidPath(name, false)) return {};
  const std::string whole = files.absolute(name);
  if (files.kind(whole) == FileKind::folder) return {whole, {}};
  for (std::optional<std::string> folder = upOneFolder(whole); folder; folder = upOneFolder(*folder)) {
    if (files.kind(*folder) != FileKind::folder) continue;
    const bool inFolder = upOneFolder(whole) == folder && IsValidFilePath(whole);
    return {*folder, inFolder ? FileNamePart(whole) : std::string()};
  }
  return {};
}

std::string boxTextKey(std::string_view baseName) { return std::string(baseName) + ".text"; }

}  // namespace merivane
