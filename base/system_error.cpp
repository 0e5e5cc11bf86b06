#include "base/system_error.h"

#include <mutex>
#include <utility>
#include <vector>

#include "base/texts.h"

namespace merivane {
namespace {

constexpr SystemError kFirstInWords = 0x20010000;

std::mutex wordsMutex;

std::vector<std::string>& allWords() {
  static std::vector<std::string> words;
  return words;
}

}  // namespace

SystemError errorInWords(std::string words) {
  const std::lock_guard<std::mutex> lock(wordsMutex);
  allWords().push_back(std::move(words));
  return kFirstInWords + static_cast<SystemError>(allWords().size() - 1);
}

std::string systemErrorText(SystemError error) {
  if (error == kFileTooLarge) return text(TextId::fileTooLarge);
  if (error == kNoFile) return text(TextId::entrySpecial);
  if (error >= kFirstInWords) {
    const std::lock_guard<std::mutex> lock(wordsMutex);
    const size_t number = error - kFirstInWords;
    if (number < allWords().size()) return allWords()[number];
  }
  return platformErrorText(error);
}

}  // namespace merivane
