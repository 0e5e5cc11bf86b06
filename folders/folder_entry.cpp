#include "folders/folder_entry.h"

#include <algorithm>

#include "base/names.h"
#include "base/texts.h"

namespace merivane {

const char* notComparedKey(NotCompared reason) {
  switch (reason) {
    case NotCompared::nothing:
      break;
    case NotCompared::unreadable:
      return "unreadable";
    case NotCompared::vanished:
      return "vanished";
    case NotCompared::tooLong:
      return "tooLong";
    case NotCompared::brokenLink:
      return "brokenLink";
    case NotCompared::loop:
      return "loop";
    case NotCompared::special:
      return "special";
    case NotCompared::binary:
      return "binary";
    case NotCompared::outOfMemory:
      return "outOfMemory";
    case NotCompared::below:
      return "below";
  }
  return "";
}

const char* notComparedText(NotCompared reason) {
  switch (reason) {
    case NotCompared::nothing:
      break;
    case NotCompared::unreadable:
      return text(TextId::entryUnreadable);
    case NotCompared::vanished:
      return text(TextId::entryVanished);
    case NotCompared::tooLong:
      return text(TextId::entryPathTooLong);
    case NotCompared::brokenLink:
      return text(TextId::entryBrokenLink);
    case NotCompared::loop:
      return text(TextId::entryLoop);
    case NotCompared::special:
      return text(TextId::entrySpecial);
    case NotCompared::binary:
      return text(TextId::entryBinary);
    case NotCompared::outOfMemory:
      return text(TextId::entryOutOfMemory);
    case NotCompared::below:
      return text(TextId::entryBelow);
  }
  return "";
}

std::vector<const char*> differenceWords(uint16_t differences) {
  constexpr TextId words[] = {
      TextId::differenceHidden,      TextId::differenceWasHidden, TextId::differenceReadOnly,
      TextId::differenceWasReadOnly, TextId::differenceNewer,     TextId::differenceOlder,
      TextId::differenceLarger,      TextId::differenceSmaller,   TextId::differenceContents};
  if (differences & kHidden) differences &= static_cast<uint16_t>(~kWasHidden);
  if (differences & kReadOnly) differences &= static_cast<uint16_t>(~kWasReadOnly);
  std::vector<const char*> found;
  for (const TextId word : words) {
    if (differences & 1) found.push_back(text(word));
    differences >>= 1;
  }
  return found;
}

std::string differenceText(uint16_t differences) {
  std::string words;
  for (const char* const word : differenceWords(differences)) {
    words += words.empty() ? "(" : ", ";
    words += word;
  }
  if (!words.empty()) words += ')';
  return words;
}

bool comesBefore(const FolderEntry& a, const FolderEntry& b) {
  const bool firstGroup[] = {a.isFolder || a.inSubfolder, b.isFolder || b.inSubfolder};
  if (firstGroup[0] != firstGroup[1]) return firstGroup[0];
  const std::string_view x = a.name(), y = b.name();
  const size_t length = std::min(x.size(), y.size());
  for (size_t i = 0; i < length; ++i) {
    const uint8_t c = static_cast<uint8_t>(lowerCase(x[i])), d = static_cast<uint8_t>(lowerCase(y[i]));
    if (c != d) return c < d;
  }
  if (x.size() != y.size()) return x.size() < y.size();
  const int order = x.compare(y);
  return order != 0 ? order < 0 : a.isFolder && !b.isFolder;
}

}  // namespace merivane
