#include "shell/high_contrast.h"

namespace merivane {

void followHighContrast(const HighContrast& system, ViewOptions& options) {
  const ViewOptions usual;
  const auto follow = [](Colour& colour, Colour byDefault, Colour ofSystem) {
    if (colour == byDefault) colour = ofSystem;
  };
  follow(options.textColour, usual.textColour, system.windowText);
  follow(options.readOnlyColour, usual.readOnlyColour, system.windowText);
  for (Colour RowColours::*const plain : {&RowColours::same, &RowColours::empty}) {
    follow(options.colours.*plain, usual.colours.*plain, system.window);
  }
  for (Colour RowColours::*const differing : {&RowColours::left, &RowColours::right, &RowColours::changed}) {
    follow(options.colours.*differing, usual.colours.*differing, system.highlight);
  }
  options.highContrast = system;
  options.rowMarks = true;
}

}  // namespace merivane
