#include "shell/win/question_box.h"

#include "base/win/messages.h"

namespace merivane {

Answer askInBox(HWND owner, const Question& question) {
  UINT style = question.cancel ? MB_YESNOCANCEL : MB_YESNO;
  style |= question.warning ? MB_ICONWARNING : MB_ICONQUESTION;
  if (question.noByDefault) style |= MB_DEFBUTTON2;
  switch (showMessage(owner, question.text, style)) {
    case IDYES: return Answer::yes;
    case IDNO: return Answer::no;
    default: return Answer::cancel;
  }
}

void reportInBox(HWND owner, const std::string& message, ReportKind kind) {
  showMessage(owner, message, MB_OK | (kind == ReportKind::error ? MB_ICONERROR : MB_ICONINFORMATION));
}

}  // namespace merivane
