#include "output/html_file.h"

#include <memory>
#include <new>

#include "base/buffered_sink.h"

namespace merivane {

SystemError exportHtml(FileSystem& files, const std::string& path, const DiffModel& model,
                       const HtmlSide (&sides)[2], const HtmlOptions& options, std::string_view time) {
  try {
    std::unique_ptr<OutputFile> file;
    SystemError error = files.create(path, file);
    if (error != 0) return error;
    const auto sink = std::make_unique<BufferedSink>(*file);  // too large for a window's stack
    writeHtml(model, sides, options, time, *sink);
    error = sink->finish();
    return error == 0 ? file->commit() : error;
  } catch (const std::bad_alloc&) {
    return notEnoughStorage();
  }
}

}  // namespace merivane
