#include "cli/standard_streams.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>

#include "cli/win/console.h"

#ifndef ENABLE_VIRTUAL_TERMINAL_PROCESSING
#define ENABLE_VIRTUAL_TERMINAL_PROCESSING 0x0004
#endif

namespace merivane {
namespace {

/// The handle of a standard stream. A closed one's may later be that of a file, so this is asked before any
/// file is opened.
HANDLE standardHandle(DWORD stream) {
  const HANDLE handle = GetStdHandle(stream);
  SetLastError(NO_ERROR);
  const bool isClosed = GetFileType(handle) == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR;
  return isClosed ? INVALID_HANDLE_VALUE : handle;
}

HANDLE outputHandle() {
  static const HANDLE handle = standardHandle(STD_OUTPUT_HANDLE);
  return handle;
}

class StandardInput final : public InputFile {
 public:
  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    constexpr uint32_t atOnce = 1u << 24;
    got = 0;
    while (got < wanted && !atEnd_) {
      DWORD count = 0;
      if (!ReadFile(handle_, bytes + got, std::min(wanted - got, atOnce), &count, nullptr)) {
        const DWORD error = GetLastError();
        if (error != ERROR_BROKEN_PIPE && error != ERROR_HANDLE_EOF) return error;
        count = 0;
      }
      atEnd_ = count == 0;
      got += count;
    }
    return 0;
  }

  uint64_t size() const override { return 0; }

 private:
  const HANDLE handle_ = standardHandle(STD_INPUT_HANDLE);
  bool atEnd_ = false;  // a console tells it once, and then there may be more
};

class StandardOutput final : public OutputFile {
 public:
  SystemError write(std::string_view bytes) override {
    if (console_ == nullptr && ConsoleWriter::isConsole(outputHandle())) {
      console_ = std::make_unique<ConsoleWriter>(outputHandle());
    }
    if (console_ != nullptr) return console_->write(bytes);
    while (!bytes.empty()) {
      const DWORD wanted = static_cast<DWORD>(std::min<size_t>(bytes.size(), 1u << 24));
      DWORD written = 0;
      if (!WriteFile(outputHandle(), bytes.data(), wanted, &written, nullptr)) {
        const DWORD error = GetLastError();
        return error == ERROR_NO_DATA ? ERROR_BROKEN_PIPE : error;
      }
      if (written == 0) return ERROR_DISK_FULL;
      bytes.remove_prefix(written);
    }
    return 0;
  }

  SystemError commit() override { return console_ != nullptr ? console_->finish() : 0; }

 private:
  std::unique_ptr<ConsoleWriter> console_;  // where the output goes to one
};

}  // namespace

void writeStandardError(std::string_view bytes) {
  const HANDLE handle = GetStdHandle(STD_ERROR_HANDLE);
  if (ConsoleWriter::isConsole(handle)) {
    try {
      ConsoleWriter console(handle);
      if (console.write(bytes) == 0 && console.finish() == 0) return;
    } catch (const std::bad_alloc&) {
      // What tells of it is plain ASCII, the same in every code page.
    }
  }
  DWORD written = 0;
  WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

StandardStreams::StandardStreams()
    : input_(std::make_unique<StandardInput>()), output_(std::make_unique<StandardOutput>()) {
  outputHandle();
}

TerminalFacts StandardStreams::terminal() {
  TerminalFacts terminal;
  DWORD mode = 0;
  DWORD errorMode = 0;
  terminal.errorsToo = GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &errorMode) != 0;
  terminal.isTerminal = GetConsoleMode(outputHandle(), &mode) != 0;
  terminal.bytes.utf8 = true;  // whatever its code page, a console is written characters
  if (!terminal.isTerminal) return terminal;
  terminal.showsColours = (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
  if (!terminal.showsColours && SetConsoleMode(outputHandle(), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING)) {
    terminal.showsColours = true;
    modeBefore_ = mode;
  }
  CONSOLE_SCREEN_BUFFER_INFO screen = {};
  if (GetConsoleScreenBufferInfo(outputHandle(), &screen)) {
    // Older consoles start another line when the last column is written to.
    terminal.width = static_cast<uint32_t>(std::max(screen.srWindow.Right - screen.srWindow.Left, 1));
  }
  return terminal;
}

StandardStreams::~StandardStreams() {
  if (modeBefore_ != 0) SetConsoleMode(outputHandle(), modeBefore_);
}

SystemError StandardStreams::brokenPipe() { return ERROR_BROKEN_PIPE; }

}  // namespace merivane
