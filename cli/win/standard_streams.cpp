#include "cli/standard_streams.h"

#include <windows.h>

#include <algorithm>

#ifndef ENABLE_VIRTUAL_TERMINAL_PROCESSING
#define ENABLE_VIRTUAL_TERMINAL_PROCESSING 0x0004
#endif

namespace merivane {
namespace {

HANDLE outputHandle() { return GetStdHandle(STD_OUTPUT_HANDLE); }

class StandardInput final : public InputFile {
 public:
  SystemError read(char* bytes, uint32_t wanted, uint32_t& got) override {
    const HANDLE handle = GetStdHandle(STD_INPUT_HANDLE);
    constexpr uint32_t atOnce = 1u << 24;
    got = 0;
    while (got < wanted) {
      DWORD count = 0;
      if (!ReadFile(handle, bytes + got, std::min(wanted - got, atOnce), &count, nullptr)) {
        const DWORD error = GetLastError();
        if (error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF) break;
        return error;
      }
      if (count == 0) break;
      got += count;
    }
    return 0;
  }

  uint64_t size() const override { return 0; }
};

class StandardOutput final : public OutputFile {
 public:
  SystemError write(std::string_view bytes) override {
    while (!bytes.empty()) {
      // Consoles of older systems refuse more at once.
      const DWORD wanted = static_cast<DWORD>(std::min<size_t>(bytes.size(), 32768));
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

  SystemError commit() override { return 0; }
};

}  // namespace

StandardStreams::StandardStreams()
    : input_(std::make_unique<StandardInput>()), output_(std::make_unique<StandardOutput>()) {}

TerminalFacts StandardStreams::terminal() {
  TerminalFacts terminal;
  DWORD mode = 0;
  terminal.isTerminal = GetConsoleMode(outputHandle(), &mode) != 0;
  terminal.utf8 = (terminal.isTerminal ? GetConsoleOutputCP() : GetACP()) == CP_UTF8;
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
