#pragma once

#include <string>

#include "base/file_system.h"
#include "output/html_export.h"

namespace merivane {

/// Makes the page of writeHtml() a file, all or nothing. Answers 0 or the error, notEnoughStorage() when
/// memory ran out.
SystemError exportHtml(FileSystem& files, const std::string& path, const DiffModel& model,
                       const HtmlSide (&sides)[2], const HtmlOptions& options, std::string_view time);

}  // namespace merivane
