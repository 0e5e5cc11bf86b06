#include "base/paths.h"

namespace merivane {

bool IsValidPath(std::string_view name, bool allowDriveOnly) {
  if (name.empty() || name[0] == ':') return false;
  if (name.size() >= 2 && name[1] == ':') {
    if (name.size() == 2) {
      if (!allowDriveOnly) return false;
    } else {
      const char drive = name[0];
      const bool letter = (drive >= 'A' && drive <= 'Z') || (drive >= 'a' && drive <= 'z');
      if (!letter || name[2] != '\\') return false;
    }
  }
  if (name.size() >= 3) {
    if (name.find(':', 2) != std::string_view::npos) return false;
    if (name.substr(0, 2) == "\\\\" && name.find('\\', 2) == std::string_view::npos) return false;
  }
  return name.find_first_of("?*<>|") == std::string_view::npos;
}

bool IsValidFilePath(std::string_view name) { return IsValidPath(name, false) && name.back() != '\\'; }

std::string FileNamePart(std::string_view path) {
  const size_t separator = path.rfind('\\');
  return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string joinPath(std::string_view folder, std::string_view name) {
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path += folder;
  const bool parted = path.empty() || name.empty() || path.back() == kPathSeparator || path.back() == '/';
  if (!parted) path += kPathSeparator;
  path += name;
  return path;
}

}  // namespace merivane
