#pragma once

#include <cstdint>
#include <functional>

namespace merivane {

/// Runs two pieces of work, which touch nothing in common, at the same time if a processor is spare for the
/// second, and returns true when both are done; otherwise runs neither and returns false. All calls together
/// use at most four processors. What a piece throws is thrown again, the first's before the second's.
///
/// Starting the second costs some ten microseconds; the work should take many times as long.
bool trySideBySide(const std::function<void()>& first, const std::function<void()>& second);

/// Calls `work` for side 0 and side 1 of two texts of `bytes` bytes together: side by side if these are many,
/// else one after the other.
void forBothSides(uint64_t bytes, const std::function<void(int)>& work);

}  // namespace merivane
