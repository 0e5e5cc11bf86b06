#include "base/temp_files.h"

#include <cstdio>

#include "base/paths.h"

namespace merivane {

std::string MakeTempFileName(FileSystem& files, std::string_view folder, std::string_view prefix,
                             const std::function<uint32_t()>& random) {
  const std::string start = joinPath(folder, prefix);
  for (;;) {
    char end[16];
    std::snprintf(end, sizeof end, "%05u.tmp", static_cast<unsigned>(random() % 99999));
    if (std::string name = start + end; files.kind(name) == FileKind::none) return name;
  }
}

}  // namespace merivane
