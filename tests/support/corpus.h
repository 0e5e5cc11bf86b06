#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/file_system.h"

namespace merivane {

struct CorpusPair {
  std::string paths[2];
  ByteArray texts[2];
};

/// The pairs of real files beside the checkout; none where they are missing.
inline std::vector<CorpusPair> corpusPairs() {
  const std::string folder = MERIVANE_SOURCE_DIR "/../shared/corpus/text/";
  constexpr std::string_view names[][2] = {{"header", ".hpp"}, {"database", ".cc"}, {"readme", ".md"}};
  std::vector<CorpusPair> pairs;
  for (const auto& [name, type] : names) {
    CorpusPair pair;
    bool read = true;
    for (const int side : {0, 1}) {
      pair.paths[side] = folder + std::string(name) + (side == 0 ? "-a" : "-b") + std::string(type);
      std::unique_ptr<InputFile> file;
      read =
          read && systemFiles().open(pair.paths[side], file) == 0 && readToEnd(*file, pair.texts[side]) == 0;
    }
    if (read) pairs.push_back(std::move(pair));
  }
  return pairs;
}

}  // namespace merivane
