#include <cstdint>
#include <new>
#include <span>
#include <string_view>

#include "output/decimal.h"
#include "output/json_text.h"
#include "output/writers.h"

namespace merivane {
namespace {

constexpr const char* kSideNames[2] = {"left", "right"};

const char* statusName(RowStatus status) {
  switch (status) {
    case RowStatus::same:
      return "same";
    case RowStatus::leftOnly:
      return "left";
    case RowStatus::rightOnly:
      return "right";
    case RowStatus::changed:
      return "changed";
  }
  return "";
}

/// The runs of marked bytes as half-open ranges.
void appendMarks(std::string& json, std::span<const uint8_t> marks) {
  json += '[';
  const char* separator = "[";
  for (uint32_t i = 0; i < marks.size(); ++i) {
    if (!(marks[i] & kDiffersMark)) continue;
    const uint32_t begin = i;
    while (i < marks.size() && (marks[i] & kDiffersMark)) ++i;
    json += separator;
    appendDecimal(json, begin);
    json += ',';
    appendDecimal(json, i);
    json += ']';
    separator = ",[";
  }
  json += ']';
}

void appendRow(std::string& json, const DiffModel& model, uint32_t row) {
  const RowStatus status = model.status(row);
  json += "{\"status\":\"";
  json += statusName(status);
  json += '"';
  for (const int side : {0, 1}) {
    json += ",\"";
    json += kSideNames[side];
    json += "\":{\"line\":";
    const uint32_t number = model.lineNumber(side, row);
    if (number == kNoLine) {
      json += "null";
    } else {
      appendDecimal(json, number + 1);
    }
    json += ",\"position\":";
    appendDecimal(json, model.position(side, row));
    json += '}';
  }
  if (status == RowStatus::changed) {
    // A changed row has none only where memory ran out, and to write none would be wrong.
    if (model.marks(row).none()) throw std::bad_alloc();
    for (const int side : {0, 1}) {
      json += ",\"";
      json += kSideNames[side];
      json += "Marks\":";
      appendMarks(json, model.marks(row).side(side));
    }
  }
  json += '}';
}

}  // namespace

void writeJson(const WrittenComparison& comparison, const WriterOptions&, ByteSink& sink) {
  const DiffModel& model = comparison.model;
  std::string json = "{";
  for (const int side : {0, 1}) {
    json += '"';
    json += kSideNames[side];
    json += "\":{\"path\":";
    appendJsonString(json, comparison.sides[side].path);
    json += ",\"lineEnd\":\"";
    json += lineEndKindName(comparison.sides[side].lineEndKind);
    json += "\",\"encoding\":\"";
    json += encodingName(comparison.sides[side].encoding);
    json += "\"},";
  }
  json += "\"diffs\":";
  appendDecimal(json, model.differenceBlocks());
  json += ",\"lines\":";
  appendDecimal(json, model.differingRows());
  json += ",\"rows\":[\n";
  sink.write(json);
  for (uint32_t row = 0; row < model.rowCount(); ++row) {
    json.clear();
    appendRow(json, model, row);
    json += row + 1 < model.rowCount() ? ",\n" : "\n";
    sink.write(json);
  }
  sink.write("]}\n");
}

}  // namespace merivane
