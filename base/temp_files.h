#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/file_system.h"

namespace merivane {

/// A name in `folder` that nothing has yet: the prefix, five digits and ".tmp". `random` gives numbers spread
/// evenly over its range; it is asked until a name is free.
std::string MakeTempFileName(FileSystem& files, std::string_view folder, std::string_view prefix,
                             const std::function<uint32_t()>& random);

}  // namespace merivane
