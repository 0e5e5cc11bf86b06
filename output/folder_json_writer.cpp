#include <string>

#include "output/folder_writers.h"
#include "output/json_text.h"

namespace merivane {
namespace {

constexpr const char* kKeys[kFolderCategories] = {"old", "new", "changed", "same"};

void appendEntry(std::string& json, const FolderEntry& entry, bool isChanged) {
  json += "{\"name\":";
  appendJsonString(json, entry.name());
  json += entry.isFolder ? ",\"folder\":true" : ",\"folder\":false";
  if (isChanged) {
    json += ",\"differences\":[";
    const char* separator = "";
    for (const char* const word : differenceWords(entry.differences)) {
      json += separator;
      appendJsonString(json, word);
      separator = ",";
    }
    json += ']';
  }
  if (entry.notCompared != NotCompared::nothing) {
    json += ",\"notCompared\":";
    appendJsonString(json, notComparedKey(entry.notCompared));
  }
  json += '}';
}

}  // namespace

void writeFolderJson(const WrittenFolders& folders, const WriterOptions&, ByteSink& sink) {
  const FolderComparison& comparison = folders.comparison;
  std::string json = "{\"oldPath\":";
  appendJsonString(json, folders.paths[0]);
  json += ",\"newPath\":";
  appendJsonString(json, folders.paths[1]);
  json += ",\"counts\":{";
  for (int category = 0; category < kFolderCategories; ++category) {
    json += std::string("\"") + kKeys[category] +
            "\":" + std::to_string(comparison.entries[category].size()) + ",";
  }
  json += "\"notCompared\":" + std::to_string(comparison.notCompared.size()) + "}";
  for (int category = 0; category < kFolderCategories; ++category) {
    if (!folders.shows[category]) continue;
    json += std::string(",\n\"") + kKeys[category] + "\":[";
    const char* separator = "\n";
    for (const FolderEntry& entry : comparison.entries[category]) {
      json += separator;
      appendEntry(json, entry, category == static_cast<int>(FolderCategory::changed));
      sink.write(json);
      json.clear();
      separator = ",\n";
    }
    json += json.empty() ? "\n]" : "]";
  }
  json += "\n}\n";
  sink.write(json);
}

}  // namespace merivane
