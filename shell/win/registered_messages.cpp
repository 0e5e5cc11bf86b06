#include "shell/win/registered_messages.h"

namespace merivane {

const UINT compareDoneMessage =
    RegisterWindowMessageA("MSG_COMPARE_DONE-{2ECF7E4C-1184-4b0e-8849-F7DDD5BCF4DC}");
const UINT findReplaceMessage = RegisterWindowMessageA("commdlg_FindReplace");

}  // namespace merivane
