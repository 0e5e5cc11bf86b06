#pragma once

#include <cstdint>
#include <functional>

#include "engine/diff_model.h"

namespace merivane {

/// Which rows an export holds; the setting's values.
enum class ExportScope : int32_t { everything = 0, context = 1, differences = 2 };

/// How many equal rows a context section shows before and after its differences.
constexpr uint32_t kContextRows = 3;

/// Visits the sections of an export from the top, as ascending and disjoint row ranges. Everything is one
/// section of all rows. Of the differences each block is a section. In the context scope an equal run of
/// 2 * kContextRows rows or more separates two sections and leaves each kContextRows of its rows; a shorter
/// one stays whole, at either end of the model too; where nothing differs there is no section.
void forEachSection(const DiffModel& model, ExportScope scope,
                    const std::function<void(RowRange rows)>& visit);

}  // namespace merivane
