#pragma once

#include "mergeview/view_options.h"

namespace merivane {

/// Has the panes follow the system's high contrast while it is on: every colour that stands at its default
/// gives way to one of the system's. What the user has chosen stays.
void followHighContrast(const HighContrast& system, ViewOptions& options);

}  // namespace merivane
