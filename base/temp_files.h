#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/file_system.h"

namespace merivane {

/// Returns a name in `folder` that nothing has yet: the prefix, five digits and ".tmp". `random` returns
/// numbers that are spread evenly over its range; it is called until a name is free.
std::string MakeTempFileName(FileSystem& files, std::string_view folder, std::string_view prefix,
                             const std::function<uint32_t()>& random);

}  // namespace merivane
