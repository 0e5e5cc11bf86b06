#include "base/temp_files.h"

#include <cstdio>

namespace merivane {

std::string MakeTempFileName(FileSystem& files, std::string_view folder, std::string_view prefix,
                             const std::function<uint32_t()>& random) {
  std::string start(folder);
  if (start.empty() || start.back() != '\\') start += '\\';
  start += prefix;
  for (;;) {
    char end[16];
    std::snprintf(end, sizeof end, "%05u.tmp", static_cast<unsigned>(random() % 99999));
    if (std::string name = start + end; files.kind(name) == FileKind::none) return name;
  }
}

}  // namespace merivane
