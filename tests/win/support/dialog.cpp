#include "tests/win/support/dialog.h"

#include "tests/win/support/polling.h"

namespace merivane {
namespace {

constexpr char dialogClass[] = "#32770";

}  // namespace

HWND awaitDialog(const Program& program, const std::string& title) {
  return program.window(dialogClass, title);
}

std::string labelsOf(HWND dialog) {
  std::string labels;
  HWND label = nullptr;
  while ((label = FindWindowExA(dialog, label, "Static", nullptr)) != nullptr) {
    const std::string text = textOf(label);
    if (!text.empty() && !labels.empty()) labels += '\n';
    labels += text;
  }
  return labels;
}

bool pressButton(HWND dialog, int id) {
  PostMessageA(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
  return waitUntil([&] { return !IsWindow(dialog); });
}

std::string answerMessage(const Program& program, int button) {
  const HWND box = awaitDialog(program, "Merivane");
  if (box == nullptr) return "(no message came)";
  const std::string text = labelsOf(box);
  return pressButton(box, button) ? text : text + " (and the message stays)";
}

}  // namespace merivane
