#include "engine/matched_box.h"

namespace merivane {

MatchedBox MatchedBox::reversed() const {
  MatchedBox mirror;
  for (const int side : {0, 1}) {
    mirror.classes[side].assign(classes[side].rbegin(), classes[side].rend());
    mirror.positions[side].reserve(positions[side].size());
    for (auto at = positions[side].rbegin(); at != positions[side].rend(); ++at) {
      mirror.positions[side].push_back(sizes[side] - 1 - *at);
    }
    mirror.sizes[side] = sizes[side];
  }
  mirror.classCount = classCount;
  mirror.matches = matches;
  return mirror;
}

}  // namespace merivane
