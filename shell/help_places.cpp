#include "shell/help_places.h"

#include "base/paths.h"

namespace merivane {

HelpPlaces helpPlaces(const std::string& folder, const std::string& page) {
  const std::string compiled = joinPath(folder, "manual.chm");
  return {compiled, page.empty() ? compiled : compiled + "::/" + page,
          joinPath(joinPath(folder, "manual"), page.empty() ? "index.html" : page)};
}

}  // namespace merivane
