// The Windows program's entry.

#include <windows.h>

#include <commctrl.h>

#include <exception>

#include "base/win/command_line.h"
#include "base/win/messages.h"
#include "shell/win/application.h"

namespace {

/// Running out of memory while starting or ending does not keep the other steps from being done.
template <typename Step>
void guarded(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    merivane::reportOutOfMemory();
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int showCommand) {
  INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  merivane::Application application(showCommand);
  guarded([&] {
    if (application.InitApplication(merivane::commandLineArguments())) application.run();
  });
  guarded([&] { application.end(); });
  return 0;
}
