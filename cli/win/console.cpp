#include "cli/win/console.h"

#include <algorithm>
#include <utility>

#include "base/utf16.h"

namespace merivane {

ConsoleWriter::ConsoleWriter(HANDLE console) : console_(console) {
  for (int i = 0; i < 256; ++i) {
    const char byte = static_cast<char>(i);
    wchar_t character = 0xFFFD;
    const bool known =
        MultiByteToWideChar(GetConsoleOutputCP(), MB_ERR_INVALID_CHARS, &byte, 1, &character, 1) == 1;
    // A control character would act on the console.
    codePage_[i] = known && (character < 0x80 || character > 0x9F) ? character : L'\xFFFD';
  }
}

bool ConsoleWriter::isConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0;
}

SystemError ConsoleWriter::write(std::string_view bytes) {
  waiting_ += bytes;
  const std::string all = std::move(waiting_);
  const size_t whole = all.size() - unfinishedCharacter(all);
  waiting_ = all.substr(whole);
  return put(std::string_view(all).substr(0, whole));
}

SystemError ConsoleWriter::finish() {
  const std::string rest = std::move(waiting_);
  waiting_.clear();
  return put(rest);
}

SystemError ConsoleWriter::put(std::string_view bytes) {
  const std::wstring text = utf16FromUtf8<wchar_t>(bytes, codePage_);
  for (size_t done = 0; done < text.size();) {
    // Consoles of older systems refuse more at once.
    const DWORD wanted = static_cast<DWORD>(std::min<size_t>(text.size() - done, 8192));
    DWORD written = 0;
    if (!WriteConsoleW(console_, text.data() + done, wanted, &written, nullptr)) return GetLastError();
    if (written == 0) return ERROR_WRITE_FAULT;
    done += written;
  }
  return 0;
}

}  // namespace merivane
