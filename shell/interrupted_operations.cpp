#include "shell/interrupted_operations.h"

#include "base/message_format.h"
#include "operations/journal.h"

namespace merivane {

void offerInterruptedOperations(UserBoxes& boxes, FileSystem& files, TreeOperations& trees) {
  for (InterruptedOperation& operation : findInterrupted(files, trees)) {
    const Question question = {formatMessage(TextId::interruptedOperation, {operation.words}), true, true};
    const Answer answer = boxes.ask(question);
    if (answer == Answer::cancel) continue;
    const bool worked =
        answer == Answer::yes ? finish(files, trees, operation) : putBack(files, trees, operation);
    if (!worked) boxes.report(formatMessage(TextId::stillInterrupted, {operation.words}), ReportKind::error);
  }
}

}  // namespace merivane
