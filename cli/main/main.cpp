#include <cstdlib>
#include <ctime>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_sink.h"
#include "base/message_format.h"
#include "base/texts.h"
#include "cli/process.h"
#include "cli/run_diff.h"
#include "cli/standard_streams.h"

namespace {

class ErrorSink final : public merivane::ByteSink {
 public:
  void write(std::string_view bytes) override { merivane::writeStandardError(bytes); }
};

/// The time now, in one form on every computer.
std::string timeText() {
  const std::time_t now = std::time(nullptr);
  const std::tm* const local = std::localtime(&now);
  if (local == nullptr) return {};
  char date[16], time[16];
  std::strftime(date, sizeof date, "%Y-%m-%d", local);
  std::strftime(time, sizeof time, "%H:%M:%S", local);
  return merivane::formatMessage(merivane::TextId::dateAndTime,
                                 {std::string_view(date), std::string_view(time)});
}

}  // namespace

int main(int count, char** arguments) {
  using namespace merivane;
  keepFreedMemory();
  removeUnfinishedFilesOnSignals();
  ErrorSink errors;
  try {
    StandardStreams streams;
    const std::vector<std::string> words = commandLineArguments(count, arguments);
    return runDiff(std::vector<std::string_view>(words.begin(), words.end()),
                   {.files = systemFiles(),
                    .standardInput = streams.input(),
                    .standardOutput = streams.output(),
                    .standardError = errors,
                    .terminal = [&streams] { return streams.terminal(); },
                    .columns = std::getenv("COLUMNS"),
                    .noColour = std::getenv("NO_COLOR"),
                    .time = timeText,
                    .brokenPipe = StandardStreams::brokenPipe()});
  } catch (const std::exception&) {
    // Nothing but memory can be missing this early.
    errors.write("merivane-diff: ");
    errors.write(text(TextId::outOfMemory));
    errors.write("\n");
    return kExitTrouble;
  }
}
