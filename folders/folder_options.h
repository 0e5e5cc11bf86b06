#pragma once

#include <cstdint>
#include <string>

#include "engine/compare_options.h"

namespace merivane {

/// What a comparison of folders looks at.
struct FolderOptions {
  bool subfolders = true;      // list what differs in subfolders; else only whether anything does
  bool ignoreNameCase = true;  // names that differ in the case of A to Z alone pair up; filters too
  bool date = true;            // of files, in whole seconds
  bool size = true;            // of files
  bool attributes = false;     // hidden and read-only, of files
  bool folderDate = false;
  bool folderAttributes = false;
  bool quickContents = false;     // byte for byte; beats fullContents
  bool fullContents = false;      // as texts, under `text`
  bool hasIncludeFilter = false;  // beats an exclude filter
  bool hasExcludeFilter = false;
  std::string includeFilter;  // patterns with semicolons between; see NameFilter
  std::string excludeFilter;
  CompareOptions text;
  uint32_t threads = 0;  // 0 for as many as there are processors, up to eight

  bool comparesContents() const { return quickContents || fullContents; }

  bool operator==(const FolderOptions&) const = default;
};

}  // namespace merivane
