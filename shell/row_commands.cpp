#include "shell/row_commands.h"

#include <algorithm>

namespace merivane {

const CategoryMenu& menuOf(FolderCategory category) {
  static const CategoryMenu menus[kFolderCategories] = {
      {{{Command::copyToNew, TextId::copyToNewItem}, {Command::deleteOld, TextId::deleteOldItem}},
       Command::deleteOld},
      {{{Command::copyToOld, TextId::copyToOldItem}, {Command::deleteNew, TextId::deleteNewItem}},
       Command::copyToOld},
      {{{Command::compareEntries, TextId::compareItem},
        {},
        {Command::copyToOld, TextId::copyToOldItem},
        {Command::copyToNew, TextId::copyToNewItem},
        {},
        {Command::deleteOld, TextId::deleteOldItem},
        {Command::deleteNew, TextId::deleteNewItem},
        {Command::deleteBoth, TextId::deleteBothItem}},
       Command::compareEntries},
      {{{Command::compareEntries, TextId::compareItem}}, Command::compareEntries}};
  return menus[static_cast<size_t>(category)];
}

bool offers(FolderCategory category, Command command) {
  const auto& items = menuOf(category).items;
  return std::any_of(items.begin(), items.end(),
                     [&](const RowCommand& item) { return item.command == command; });
}

EntryOperation operationOf(Command command) {
  switch (command) {
    case Command::copyToOld:
      return EntryOperation::copyToOld;
    case Command::copyToNew:
      return EntryOperation::copyToNew;
    case Command::deleteOld:
      return EntryOperation::deleteOld;
    case Command::deleteNew:
      return EntryOperation::deleteNew;
    case Command::deleteBoth:
      return EntryOperation::deleteBoth;
    default:
      return EntryOperation::none;
  }
}

}  // namespace merivane
