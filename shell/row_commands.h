#pragma once

#include <optional>
#include <vector>

#include "base/texts.h"
#include "folders/folder_entry.h"
#include "operations/folder_operations.h"
#include "shell/commands.h"

namespace merivane {

/// A command on rows that nothing was done to yet, and its label; without one, a separator.
struct RowCommand {
  std::optional<Command> command;
  TextId label = TextId::productName;
};

/// What can be done with the rows of a category.
struct CategoryMenu {
  std::vector<RowCommand> items;
  Command byDefault;  // brings the old folder in line with the new one, or compares
};

const CategoryMenu& menuOf(FolderCategory category);

/// Whether the menu of a category has a command.
bool offers(FolderCategory category, Command command);

/// What a command does to an entry; none for all others.
EntryOperation operationOf(Command command);

/// Whether something can still be done to a row to which this was done last.
constexpr bool isOpen(EntryOperation last) {
  return last == EntryOperation::none || last == EntryOperation::compared;
}

}  // namespace merivane
