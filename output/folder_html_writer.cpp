#include <string>
#include <string_view>

#include "base/paths.h"
#include "output/folder_writers.h"

namespace merivane {
namespace {

/// Control bytes are shown by a letter, as no page can hold them.
void appendEscaped(std::string& html, std::string_view text) {
  for (const char c : text) {
    if (c == '&') {
      html += "&amp;";
    } else if (c == '<') {
      html += "&lt;";
    } else if (c == '>') {
      html += "&gt;";
    } else if (c == '"') {
      html += "&quot;";
    } else if (static_cast<uint8_t>(c) < 0x20 || c == 0x7F) {
      html += '^';
      html += controlLetter(c);
    } else {
      html += c;
    }
  }
}

}  // namespace

void writeFolderHtml(const WrittenFolders& folders, const WriterOptions& options, ByteSink& sink) {
  const FolderComparison& comparison = folders.comparison;
  std::string paths;
  appendEscaped(paths, folders.paths[0]);
  paths += ", ";
  appendEscaped(paths, folders.paths[1]);
  sink.write("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + paths +
             "</title>\n<style>\nbody { font-family: sans-serif }\ntd { padding: 0 1em 0 0 }\n"
             ".changed { background: #F0CAA6 }\n.old { background: #C0DCC0 }\n.new { background: #A6CAF0 }\n"
             "</style>\n</head>\n<body>\n<p>" +
             paths + "</p>\n<p><b>" + folderCounts(comparison) + "</b> (" + options.time + ")</p>\n");
  constexpr const char* classes[kFolderCategories] = {"old", "new", "changed", "same"};
  std::string html;
  for (const FolderCategory category : kShownOrder) {
    const size_t number = static_cast<size_t>(category);
    if (!folders.shows[number] || comparison.entries[number].empty()) continue;
    sink.write(std::string("<h2>") + categoryName(category) + " (" +
               std::to_string(comparison.entries[number].size()) + ")</h2>\n<table class=\"" +
               classes[number] + "\">\n");
    for (const FolderEntry& entry : comparison.entries[number]) {
      html = "<tr><td>";
      appendEscaped(html, entry.name());
      if (entry.isFolder) html += kPathSeparator;
      html += "</td><td>";
      if (category == FolderCategory::changed) appendEscaped(html, differenceText(entry.differences));
      if (entry.notCompared != NotCompared::nothing) {
        html += " <i>";
        appendEscaped(html, notComparedText(entry.notCompared));
        html += "</i>";
      }
      html += "</td></tr>\n";
      sink.write(html);
    }
    sink.write("</table>\n");
  }
  sink.write("</body>\n</html>\n");
}

}  // namespace merivane
