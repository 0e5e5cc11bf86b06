#include "cli/standard_streams.h"

#include <fcntl.h>
#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string_view>

namespace merivane {
namespace {

SystemError lastError() { return static_cast<SystemError>(errno); }

class StandardInput final : public InputFile {
 public:
  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    constexpr uint32_t atOnce = 1u << 30;
    got = 0;
    while (got < wanted && !atEnd_) {
      const ssize_t count = ::read(STDIN_FILENO, bytes + got, std::min(wanted - got, atOnce));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return lastError();
      atEnd_ = count == 0;
      got += static_cast<uint32_t>(count);
    }
    return 0;
  }

  uint64_t size() const override { return 0; }

 private:
  bool atEnd_ = false;  // a terminal tells it once, and then there may be more
};

class StandardOutput final : public OutputFile {
 public:
  SystemError write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return lastError();
      bytes.remove_prefix(static_cast<size_t>(count));
    }
    return 0;
  }

  SystemError commit() override { return ::close(STDOUT_FILENO) == 0 ? 0 : lastError(); }
};

/// What the locale says of bytes.
struct LocaleBytes {
  bool unknown = false;  // the C locale: nothing is said of those beyond ASCII
  TerminalBytes bytes;
};

LocaleBytes localeBytes() {
  LocaleBytes locale;
  // This is only to learn the encoding: nothing that the program writes depends on the locale.
  std::setlocale(LC_CTYPE, "");
  const std::string_view name = ::nl_langinfo(CODESET);
  locale.bytes.utf8 = name == "UTF-8";
  locale.unknown = name == "ANSI_X3.4-1968" || name == "US-ASCII";
  for (size_t i = 0; !locale.bytes.utf8 && !locale.unknown && i < locale.bytes.page.size(); ++i) {
    const char byte = static_cast<char>(0x80 + i);
    wchar_t character = 0;
    std::mbstate_t state = {};
    if (std::mbrtowc(&character, &byte, 1, &state) != 1) continue;
    if (character >= 0x80 && character < 0xFFFF) locale.bytes.page[i] = static_cast<char16_t>(character);
  }
  std::setlocale(LC_CTYPE, "C");
  return locale;
}

bool terminalShowsColours() {
  const char* const terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) != "dumb";
}

}  // namespace

void writeStandardError(std::string_view bytes) { std::fwrite(bytes.data(), 1, bytes.size(), stderr); }

StandardStreams::StandardStreams()
    : input_(std::make_unique<StandardInput>()), output_(std::make_unique<StandardOutput>()) {
  // The next file to be opened would take the place of a closed stream. What takes it here is open in the
  // wrong direction, so that the stream fails when it is used.
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) >= 0) continue;
    [[maybe_unused]] const int taken = ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
  std::signal(SIGPIPE, SIG_IGN);
}

TerminalFacts StandardStreams::terminal() {
  TerminalFacts terminal;
  terminal.isTerminal = ::isatty(STDOUT_FILENO) != 0;
  terminal.errorsToo = ::isatty(STDERR_FILENO) != 0;
  const LocaleBytes locale = localeBytes();
  terminal.bytes = locale.bytes;
  // What no terminal gets is UTF-8 where no other encoding is asked for.
  if (locale.unknown && !terminal.isTerminal && !terminal.errorsToo) terminal.bytes.utf8 = true;
  if (!terminal.isTerminal) return terminal;
  terminal.showsColours = terminalShowsColours();
  winsize size = {};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) terminal.width = size.ws_col;
  return terminal;
}

StandardStreams::~StandardStreams() = default;

SystemError StandardStreams::brokenPipe() { return EPIPE; }

}  // namespace merivane
