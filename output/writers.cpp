#include "output/writers.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>

#include "base/buffered_sink.h"

namespace merivane {
namespace {

constexpr OutputFormat kFormats[] = {
    {"text", writeText}, {"summary", writeSummary},       {"json", writeJson},
    {"html", writeHtml}, {"unified", writeUnified, true},
};

}  // namespace

std::span<const OutputFormat> outputFormats() { return kFormats; }

const OutputFormat* findFormat(std::string_view name) {
  const auto* const found = std::ranges::find(kFormats, name, &OutputFormat::name);
  return found == std::end(kFormats) ? nullptr : found;
}

WrittenComparison writtenComparison(const FileComparison& comparison, const std::string (&paths)[2],
                                    const CompareOptions& compare) {
  WrittenComparison written = {comparison.model, {}, compare};
  for (const int side : {0, 1}) {
    const TextDocument& document = comparison.documents[side];
    written.sides[side] = {paths[side], document.text.view(), document.lineEndKind, document.encoding};
  }
  return written;
}

void writeSummary(const WrittenComparison& comparison, const WriterOptions&, ByteSink& sink) {
  sink.write(summaryText(comparison.model) + "\n");
}

SystemError writeToFile(OutputFile& file, const std::function<void(ByteSink&)>& write) {
  try {
    const auto sink = std::make_unique<BufferedSink>(file);  // too large for a window's stack
    write(*sink);
    const SystemError error = sink->finish();
    return error == 0 ? file.commit() : error;
  } catch (const std::bad_alloc&) {
    return notEnoughStorage();
  }
}

SystemError writeToFile(OutputFile& file, Writer& write, const WrittenComparison& comparison,
                        const WriterOptions& options) {
  return writeToFile(file, [&](ByteSink& sink) { write(comparison, options, sink); });
}

SystemError exportComparison(FileSystem& files, const std::string& path, Writer& write,
                             const WrittenComparison& comparison, const WriterOptions& options) {
  std::unique_ptr<OutputFile> file;
  const SystemError error = files.create(path, file);
  return error == 0 ? writeToFile(*file, write, comparison, options) : error;
}

}  // namespace merivane
