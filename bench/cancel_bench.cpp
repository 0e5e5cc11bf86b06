// Tells how long a comparison of two folders goes on once it is cancelled:
//
//   bench-cancel [--contents=quick|full] [--threads=N] [--rounds=N] OLDFOLDER NEWFOLDER
//
// Compares them as a whole first, and then as many times, each cancelled at a random moment. Prints how long
// the whole takes, and the longest time from a cancellation to the end, both in milliseconds.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <thread>

#include "folders/folder_comparison.h"

namespace merivane {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// How long it went on after the flag was raised; no time when it had ended before.
Milliseconds cancelledAfter(Milliseconds wait, const std::string (&paths)[2], const FolderOptions& options) {
  AbortFlag flag;
  FolderComparison comparison;
  Result result = Result::success;
  std::thread worker([&] { result = compareFolders(systemFiles(), paths, options, &flag, comparison); });
  std::this_thread::sleep_for(wait);
  flag.raise();
  const auto raised = Clock::now();
  worker.join();
  return result == Result::cancelled ? Clock::now() - raised : Milliseconds(0);
}

int run(int count, char** arguments) {
  FolderOptions options;
  int rounds = 50, named = 0;
  std::string paths[2];
  for (int i = 1; i < count; ++i) {
    const std::string_view argument = arguments[i];
    const auto number = [&] { return std::atoi(arguments[i] + argument.find('=') + 1); };
    if (argument == "--contents=quick") {
      options.quickContents = true;
    } else if (argument == "--contents=full") {
      options.fullContents = true;
    } else if (argument.starts_with("--threads=")) {
      options.threads = static_cast<uint32_t>(number());
    } else if (argument.starts_with("--rounds=")) {
      rounds = number();
    } else if (named < 2) {
      paths[named++] = argument;
    }
  }
  FolderComparison comparison;
  const auto began = Clock::now();
  const Result result = compareFolders(systemFiles(), paths, options, nullptr, comparison);
  const Milliseconds whole = Clock::now() - began;
  comparison = {};
  if (result != Result::success) {
    std::fprintf(stderr, "bench-cancel: %s\n", folderResultMessage(result, paths).c_str());
    return 2;
  }
  std::mt19937 random(1);
  Milliseconds longest(0);
  for (int round = 0; round < rounds; ++round) {
    std::uniform_real_distribution<double> moment(0, whole.count());
    longest = std::max(longest, cancelledAfter(Milliseconds(moment(random)), paths, options));
  }
  std::printf("%.1f %.1f\n", whole.count(), longest.count());
  return 0;
}

}  // namespace
}  // namespace merivane

int main(int count, char** arguments) { return merivane::run(count, arguments); }
