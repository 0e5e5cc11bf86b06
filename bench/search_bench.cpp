// Times the search for the edit script of two files' lines, without reading and rows:
//
//   bench-search [--rounds=N] [--costs=NAME=VALUE,...]... FILE FILE...
//
// Takes the files in pairs and prints a line for each: the processor time of the search as it is fitted and
// with each of the other SearchCosts, in seconds. They take turns, N rounds, and the best of each counts; the
// time is that of all threads together, so that other work on the machine counts least. bench/fit looks for
// the best costs with it.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "engine/edit_script.h"
#include "engine/line_keys.h"
#include "engine/text_document.h"

namespace merivane {
namespace {

struct NamedCost {
  const char* name;
  double SearchCosts::*cost;
};
constexpr NamedCost namedCosts[] = {
    {"minPlainSteps", &SearchCosts::minPlainSteps},
    {"plainStepsPerElement", &SearchCosts::plainStepsPerElement},
    {"unclassifiedFactor", &SearchCosts::unclassifiedFactor},
    {"perCell", &SearchCosts::perCell},
    {"perMatch", &SearchCosts::perMatch},
    {"perRow", &SearchCosts::perRow},
    {"perBlock", &SearchCosts::perBlock},
};

/// Reads "NAME=VALUE,NAME=VALUE"; false for a name that is none.
bool readCosts(std::string_view text, SearchCosts& costs) {
  while (!text.empty()) {
    const std::string_view setting = text.substr(0, text.find(','));
    text.remove_prefix(std::min(text.size(), setting.size() + 1));
    const size_t equals = setting.find('=');
    const auto named = std::find_if(std::begin(namedCosts), std::end(namedCosts), [&](const NamedCost& cost) {
      return setting.substr(0, equals) == cost.name;
    });
    if (named == std::end(namedCosts) || equals == setting.npos) return false;
    costs.*named->cost = std::atof(std::string(setting.substr(equals + 1)).c_str());
  }
  return true;
}

/// False when the file cannot be read.
bool readKeys(const std::string& path, std::vector<uint32_t>& keys) {
  TextDocument documents[2];
  if (!loadDocuments(systemFiles(), {path, path}, documents).succeeded()) return false;
  keys = tableLines(documents[0].text.view(), {}).keys;
  return true;
}

void printTimes(const std::vector<uint32_t> (&keys)[2], const std::vector<SearchCosts>& costs, int rounds) {
  std::vector<std::clock_t> best(costs.size(), std::numeric_limits<std::clock_t>::max());
  for (int round = 0; round < rounds; ++round) {
    for (size_t at = 0; at < costs.size(); ++at) {
      EditScript script;
      const std::clock_t start = std::clock();
      findEditScript(std::span(keys[0]), std::span(keys[1]), nullptr, script, costs[at]);
      best[at] = std::min(best[at], std::clock() - start);
    }
  }
  for (const std::clock_t time : best) std::printf("%.6f ", static_cast<double>(time) / CLOCKS_PER_SEC);
  std::printf("\n");
}

int run(const std::vector<std::string>& arguments) {
  std::vector<SearchCosts> costs(1);
  int rounds = 10;
  std::vector<std::string> paths;
  for (const std::string& argument : arguments) {
    if (argument.starts_with("--rounds=")) {
      rounds = std::atoi(argument.c_str() + 9);
    } else if (!argument.starts_with("--costs=")) {
      paths.push_back(argument);
    } else if (!readCosts(std::string_view(argument).substr(8), costs.emplace_back())) {
      std::fprintf(stderr, "bench-search: what is %s?\n", argument.c_str());
      return 2;
    }
  }
  for (size_t at = 0; at + 1 < paths.size(); at += 2) {
    std::vector<uint32_t> keys[2];
    if (!readKeys(paths[at], keys[0]) || !readKeys(paths[at + 1], keys[1])) {
      std::fprintf(stderr, "bench-search: cannot read %s or %s\n", paths[at].c_str(), paths[at + 1].c_str());
      return 2;
    }
    printTimes(keys, costs, rounds);
  }
  return 0;
}

}  // namespace
}  // namespace merivane

int main(int count, char** arguments) { return merivane::run({arguments + 1, arguments + count}); }
