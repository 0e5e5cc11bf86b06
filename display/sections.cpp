#include "display/sections.h"

namespace merivane {
namespace {

void forEachDifference(const DiffModel& model, const std::function<void(RowRange)>& visit) {
  RowRange run;
  for (uint32_t row = 0; row < model.rowCount(); row = run.end) {
    run = model.blockAround(row);
    if (model.status(row) != RowStatus::same) visit(run);
  }
}

void forEachContext(const DiffModel& model, const std::function<void(RowRange)>& visit) {
  uint32_t begin = 0;    // where the next section starts
  bool pending = false;  // whether a difference has been seen since
  RowRange run;
  for (uint32_t row = 0; row < model.rowCount(); row = run.end) {
    run = model.blockAround(row);
    if (model.status(row) != RowStatus::same) {
      pending = true;
    } else if (run.size() >= 2 * kContextRows) {
      if (pending) visit({begin, run.begin + kContextRows});
      begin = run.end - kContextRows;
      pending = false;
    }
  }
  if (pending) visit({begin, model.rowCount()});
}

}  // namespace

void forEachSection(const DiffModel& model, ExportScope scope, const std::function<void(RowRange)>& visit) {
  switch (scope) {
    case ExportScope::everything:
      return visit({0, model.rowCount()});
    case ExportScope::context:
      return forEachContext(model, visit);
    case ExportScope::differences:
      return forEachDifference(model, visit);
  }
}

}  // namespace merivane
