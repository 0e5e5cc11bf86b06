#include <cstdio>
#include "engine/comparison.h"
using namespace merivane;
int main(int argc, char** argv) {
  FileComparison c;
  const std::string paths[2] = {argv[argc - 2], argv[argc - 1]};
  auto o = compareFiles(systemFiles(), paths, {}, nullptr, c);
  if (!o.succeeded()) {
    std::fprintf(stderr, "%s\n", outcomeMessage(o).c_str());
    return 2;
  }
  std::puts(summaryText(c.model).c_str());
}
