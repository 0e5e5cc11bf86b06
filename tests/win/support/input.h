#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace merivane {

/// Keys come as from the keyboard, to whatever window is in front. The mouse comes by message, straight to a
/// window, and is done with on return: a virtual display reports each move of the pointer back a while later,
/// and puts it there again. Messages overtake keys: a test waits for what a key does before it sends one.

/// Presses a key (a VK_ number, or a capital letter or digit) with others held.
void press(WORD key, std::initializer_list<WORD> held = {});

void type(std::string_view text);

/// Presses the mouse's left button at a place in a window's client area and lets it go at another.
void drag(HWND window, POINT from, POINT to);
inline void click(HWND window, POINT at) { drag(window, at, at); }

/// Turns the wheel; forwards, away from the user, for a positive count.
void turnWheel(HWND window, int notches);

/// The text that an action puts on the clipboard.
std::string copiedBy(const std::function<void()>& action);

}  // namespace merivane
