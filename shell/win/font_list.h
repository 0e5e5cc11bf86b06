#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace merivane {

/// The screen's fonts in a combo box that leaves drawing to its owner, has strings and items of one height:
/// every face is written in its own typeface, those first whose characters have one width. An item's data are
/// its font's type flags, as EnumFonts gives them.

/// The name of a face in the list, without blanks at its ends; none for the vertical twin of a face, "@"
/// before its name, which is for text turned on its side.
std::optional<std::wstring> listedFace(std::wstring_view face);

/// Fills the box and widens its list to the widest face name.
void fillFontList(HWND comboBox);

/// Handles WM_DRAWITEM for an item of the box.
void drawFontItem(const DRAWITEMSTRUCT& item);

}  // namespace merivane
