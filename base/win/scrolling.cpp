#include "base/win/scrolling.h"

namespace merivane {

int64_t scrollTarget(HWND bar, int kind, int request, int64_t position, int64_t page, int64_t last,
                     int64_t line) {
  switch (request) {
    case SB_LINEUP: return position - line;
    case SB_LINEDOWN: return position + line;
    case SB_PAGEUP: return position - page;
    case SB_PAGEDOWN: return position + page;
    case SB_TOP: return 0;
    case SB_BOTTOM: return last;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
      // The message has only 16 bits of it.
      SCROLLINFO info = {};
      info.cbSize = sizeof info;
      info.fMask = SIF_TRACKPOS;
      return GetScrollInfo(bar, kind, &info) ? info.nTrackPos : position;
    }
    default: return position;
  }
}

int wheelSteps(int delta, int unitsANotch, int& rest) {
  if (delta * rest < 0) rest = 0;  // turned back
  rest += delta * unitsANotch;
  const int steps = rest / WHEEL_DELTA;
  rest -= steps * WHEEL_DELTA;
  return steps;
}

}  // namespace merivane
