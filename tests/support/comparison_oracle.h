#pragma once

#include <string>
#include <string_view>

#include "engine/compare_options.h"
#include "engine/diff_model.h"

namespace merivane {

/// The first thing that is wrong with a comparison of two texts, or an empty string. The rows have to
/// rebuild both texts line by line, their statuses to agree with the lines' keys, marks to fit the lines,
/// and numbers and counts to be those of the rows. Marks may be missing, as when memory ran out for them.
std::string comparisonFault(const DiffModel& model, std::string_view left, std::string_view right,
                            const CompareOptions& options);

}  // namespace merivane
