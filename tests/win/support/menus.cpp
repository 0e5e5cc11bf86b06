#include "tests/win/support/menus.h"

#include <memory>
#include <stdexcept>

#include "tests/win/support/menu_protocol.h"
#include "tests/win/support/program.h"
#include "tests/win/support/remote_block.h"

namespace merivane {
namespace {

/// The hook library in the process of a window, for as long as this lives.
class MenuHook {
 public:
  explicit MenuHook(HWND window)
      : library_(LoadLibraryA((programFolder() + "merivane-menu-hook.dll").c_str())) {
    FARPROC const procedure = GetProcAddress(library_, kMenuHookName);
    const DWORD thread = GetWindowThreadProcessId(window, nullptr);
    hook_ = SetWindowsHookExA(WH_CALLWNDPROC, reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(procedure)),
                              library_, thread);
    if (hook_ == nullptr) throw std::runtime_error("the menu hook does not hold");
  }
  ~MenuHook() {
    UnhookWindowsHookEx(hook_);
    FreeLibrary(library_);
  }
  MenuHook(const MenuHook&) = delete;
  MenuHook& operator=(const MenuHook&) = delete;

 private:
  HMODULE library_;
  HHOOK hook_;
};

}  // namespace

std::vector<MenuItem> readMenu(HANDLE process, HWND window, int place) {
  const MenuHook hook(window);
  RemoteBlock block(process, sizeof(MenuReport));
  SendMessageA(window, RegisterWindowMessageA(kMenuMessage), static_cast<WPARAM>(place), block.address());
  const auto report = std::make_unique<MenuReport>();
  block.read(report.get(), sizeof *report);

  std::vector<MenuItem> items;
  for (uint32_t i = 0; i < report->count; ++i) {
    const MenuReport::Item& item = report->items[i];
    items.push_back({item.id, item.text, (item.state & MFS_GRAYED) == 0, (item.state & MFS_CHECKED) != 0,
                     (item.type & MFT_RADIOCHECK) != 0, (item.type & MFT_SEPARATOR) != 0});
  }
  return items;
}

}  // namespace merivane
