#pragma once

#include <windows.h>

#include <initializer_list>
#include <string_view>

namespace merivane {

/// Keys come as from the keyboard, to whatever window is in front. The mouse comes by message, straight to a
/// window: a virtual display reports each move of the pointer back a while later, and puts it there again.
/// Messages overtake keys: between the two a test waits for what the first of them does.

/// Presses a key (a VK_ number, or a capital letter or digit) with others held.
void press(WORD key, std::initializer_list<WORD> held = {});

void type(std::string_view text);

/// Clicks at a place in a window's client area.
enum class MouseButton { left, right };
void click(HWND window, POINT at, MouseButton button = MouseButton::left);

/// Turns the wheel over the middle of a window; forwards, away from the user, for a positive count.
void turnWheel(HWND window, int notches);

}  // namespace merivane
