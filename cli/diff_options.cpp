#include "cli/diff_options.h"

#include <charconv>
#include <cstddef>
#include <system_error>
#include <vector>

#include "cli/option_scanner.h"
#include "folders/folder_entry.h"

namespace merivane {
namespace {

/// An option and what it does. `set` returns whether it understands the argument.
struct OptionRow {
  OptionName name;
  bool (*set)(DiffOptions& options, std::string_view value);
  std::string_view missing = {};  // stands in for an optional argument that is not there

  std::string spelled() const {
    return name.name.empty() ? std::string("-") + name.letter : "--" + std::string(name.name);
  }
};

template <typename Value>
struct Word {
  std::string_view word;
  Value value;
};

template <typename Value, size_t count>
bool choose(const Word<Value> (&words)[count], std::string_view text, Value& value) {
  for (const Word<Value>& word : words) {
    if (word.word != text) continue;
    value = word.value;
    return true;
  }
  return false;
}

bool setFormat(DiffOptions& options, std::string_view value) {
  options.format = findFormat(value);
  return options.format != nullptr;
}

bool setUnified(DiffOptions& options, std::string_view value) {
  options.format = findFormat("unified");
  return parseNumber(value, 0, UINT32_MAX, options.writing.contextLines);
}

bool setColour(DiffOptions& options, std::string_view value) {
  static constexpr Word<ColourUse> words[] = {
      {"auto", ColourUse::automatic}, {"always", ColourUse::always}, {"never", ColourUse::never}};
  return choose(words, value, options.colour);
}

bool setScope(DiffOptions& options, std::string_view value) {
  static constexpr Word<ExportScope> words[] = {{"everything", ExportScope::everything},
                                                {"context", ExportScope::context},
                                                {"differences", ExportScope::differences}};
  return choose(words, value, options.writing.scope);
}

bool setLineNumbers(DiffOptions& options, std::string_view value) {
  static constexpr Word<LineNumbers> words[] = {
      {"virtual", LineNumbers::rows}, {"real", LineNumbers::lines}, {"none", LineNumbers::none}};
  return choose(words, value, options.writing.look.lineNumbers);
}

bool addIgnoreBlanks(DiffOptions& options, std::string_view list) {
  static constexpr Word<uint32_t> words[] = {{"all", kIgnoreAllBlanks},
                                             {"multiple", kIgnoreMultipleBlanks},
                                             {"start", kIgnoreBlanksAtStart},
                                             {"end", kIgnoreBlanksAtEnd}};
  for (;;) {
    const size_t comma = list.find(',');
    uint32_t blanks = 0;
    if (!choose(words, list.substr(0, comma), blanks)) return false;
    options.compare.ignoreBlanks |= blanks;
    if (comma == std::string_view::npos) return true;
    list.remove_prefix(comma + 1);
  }
}

bool setContents(DiffOptions& options, std::string_view value) {
  FolderOptions& folders = options.folders;
  folders.quickContents = value == "quick";
  folders.fullContents = value == "full";
  return folders.comparesContents();
}

bool setShown(DiffOptions& options, std::string_view list) {
  static constexpr Word<FolderCategory> words[] = {{"changed", FolderCategory::changed},
                                                   {"old", FolderCategory::onlyOld},
                                                   {"new", FolderCategory::onlyNew},
                                                   {"same", FolderCategory::same}};
  uint32_t shows = 0;
  for (;;) {
    const size_t comma = list.find(',');
    FolderCategory category;
    if (!choose(words, list.substr(0, comma), category)) return false;
    shows |= 1u << static_cast<uint32_t>(category);
    options.shows = shows;
    if (comma == std::string_view::npos) return true;
    list.remove_prefix(comma + 1);
  }
}

bool setOutput(DiffOptions& options, std::string_view value) {
  options.output = value;
  return !value.empty();
}

constexpr OptionRow kOptions[] = {
    {{"attributes"},
     [](DiffOptions& options, std::string_view) { return options.folders.attributes = true; }},
    {{"color", 0, OptionArgument::required}, setColour},
    {{"contents", 0, OptionArgument::required}, setContents},
    {{"exclude", 0, OptionArgument::required},
     [](DiffOptions& options, std::string_view value) {
       options.folders.excludeFilter = value;
       return options.folders.hasExcludeFilter = true;
     }},
    {{"folder-attributes"},
     [](DiffOptions& options, std::string_view) { return options.folders.folderAttributes = true; }},
    {{"folder-date"},
     [](DiffOptions& options, std::string_view) { return options.folders.folderDate = true; }},
    {{"format", 0, OptionArgument::required}, setFormat},
    {{"help"}, [](DiffOptions& options, std::string_view) { return options.help = true; }},
    {{"ignore-blanks", 0, OptionArgument::required}, addIgnoreBlanks},
    {{"ignore-case"},
     [](DiffOptions& options, std::string_view) { return options.compare.ignoreCase = true; }},
    {{"include", 0, OptionArgument::required},
     [](DiffOptions& options, std::string_view value) {
       options.folders.includeFilter = value;
       return options.folders.hasIncludeFilter = true;
     }},
    {{"line-numbers", 0, OptionArgument::required}, setLineNumbers},
    {{"match-name-case"},
     [](DiffOptions& options, std::string_view) { return !(options.folders.ignoreNameCase = false); }},
    {{"no-changed-lines"},
     [](DiffOptions& options, std::string_view) { return !(options.compare.compareChanges = false); }},
    {{"no-date"}, [](DiffOptions& options, std::string_view) { return !(options.folders.date = false); }},
    {{"no-size"}, [](DiffOptions& options, std::string_view) { return !(options.folders.size = false); }},
    {{"no-subfolders"},
     [](DiffOptions& options, std::string_view) { return !(options.folders.subfolders = false); }},
    {{"output", 0, OptionArgument::required}, setOutput},
    {{"scope", 0, OptionArgument::required}, setScope},
    {{"show", 0, OptionArgument::required}, setShown},
    {{"show-white-space"},
     [](DiffOptions& options, std::string_view) { return options.writing.look.showWhiteSpace = true; }},
    {{"tab-stop", 0, OptionArgument::required},
     [](DiffOptions& options, std::string_view value) {
       return parseNumber(value, kMinTabStop, kMaxTabStop, options.writing.look.tabStop);
     }},
    {{"threads", 0, OptionArgument::required},
     [](DiffOptions& options, std::string_view value) {
       return parseNumber(value, 1, 64, options.folders.threads);
     }},
    {{"unified", 'u', OptionArgument::optional}, setUnified, "3"},
    {{"", 'U', OptionArgument::required}, setUnified},
    {{"version"}, [](DiffOptions& options, std::string_view) { return options.version = true; }},
    {{"width", 0, OptionArgument::required},
     [](DiffOptions& options, std::string_view value) {
       return parseNumber(value, kMinWidth, kMaxWidth, options.writing.width);
     }},
};

std::string checkOperands(const std::vector<std::string_view>& operands, DiffOptions& options) {
  if (operands.empty()) return "missing operand";
  if (operands.size() == 1) return "missing operand after '" + std::string(operands[0]) + "'";
  if (operands.size() > 2) return "extra operand '" + std::string(operands[2]) + "'";
  if (operands[0] == "-" && operands[1] == "-") return "standard input can be one side only";
  for (const size_t side : {0, 1}) options.paths[side] = operands[side];
  return {};
}

}  // namespace

bool parseNumber(std::string_view text, uint32_t min, uint32_t max, uint32_t& number) {
  uint32_t parsed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  if (parsed < min || parsed > max) return false;
  number = parsed;
  return true;
}

std::string parseOptions(std::span<const std::string_view> arguments, DiffOptions& options) {
  std::vector<OptionName> names;
  for (const OptionRow& row : kOptions) names.push_back(row.name);
  OptionScanner scanner(names, arguments);
  std::vector<std::string_view> operands;
  for (OptionScanner::Item item; scanner.next(item);) {
    if (item.option < 0) {
      operands.push_back(item.value);
      continue;
    }
    const OptionRow& row = kOptions[item.option];
    const std::string_view value = item.hasValue ? item.value : row.missing;
    if (!row.set(options, value)) {
      return "invalid argument '" + std::string(value) + "' for '" + row.spelled() + "'";
    }
    if (options.help || options.version) return {};
  }
  return scanner.error().empty() ? checkOperands(operands, options) : scanner.error();
}

}  // namespace merivane
