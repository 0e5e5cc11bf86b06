#include "tests/win/support/drops.h"

#include <shlobj.h>

#include "tests/win/support/remote_block.h"

namespace merivane {

void dropFiles(const Program& program, HWND window, POINT at, const std::vector<std::string>& paths) {
  DROPFILES header = {};
  header.pFiles = sizeof header;
  header.pt = at;
  std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
  for (const std::string& path : paths) bytes += path + '\0';
  bytes += '\0';
  // A handle of this process means nothing in the other, an address in the other does.
  RemoteBlock block(program.process(), bytes.size());
  block.write(bytes.data(), bytes.size());
  PostMessageA(window, WM_DROPFILES, static_cast<WPARAM>(block.release()), 0);
}

}  // namespace merivane
