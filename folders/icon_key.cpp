#include "folders/icon_key.h"

#include <algorithm>
#include <charconv>

#include "base/names.h"
#include "base/paths.h"

namespace merivane {

std::optional<std::string> iconKey(const std::string& path) {
  const std::string name = FileNamePart(path);
  const size_t dot = name.rfind('.');
  if (dot == std::string::npos || dot == 0 || dot + 1 == name.size()) return std::nullopt;
  const std::string extension = name.substr(dot);
  constexpr std::string_view withIconsOfTheirOwn[] = {".exe", ".dll", ".ocx", ".ico"};
  const bool own = std::ranges::any_of(
      withIconsOfTheirOwn, [&](std::string_view each) { return equalNames(extension, each, false); });
  return own ? path : extension;
}

std::optional<IconLocation> parseIconLocation(std::string_view text) {
  const size_t comma = text.rfind(',');
  if (comma == std::string_view::npos || comma == 0) return std::nullopt;
  std::string_view file = text.substr(0, comma);
  if (file.size() > 1 && file.front() == '"' && file.back() == '"') file = file.substr(1, file.size() - 2);
  const std::string_view number = text.substr(std::min(text.find_first_not_of(' ', comma + 1), text.size()));
  IconLocation location{std::string(file)};
  const auto end = std::from_chars(number.data(), number.data() + number.size(), location.number);
  if (end.ec != std::errc() || file.empty()) return std::nullopt;
  return location;
}

}  // namespace merivane
