#pragma once

#include <string>
#include <string_view>

namespace merivane {

/// Texts at the system's door: UTF-8 inside, the wide functions outside. Lossless for every name that the
/// system gives (base/utf16.h).
std::wstring wide(std::string_view utf8);
std::string utf8(std::wstring_view wide);

/// A path as the file functions take it. One near the length that they stop at comes out absolute and with
/// the prefix that lifts that bound.
std::wstring systemPath(std::string_view path);

/// The path completed by the current folder and drive, "." and ".." resolved, each separator a backslash. As
/// it is when that fails.
std::wstring fullPath(const std::wstring& path);

/// Whether an absolute path names a device, such as "\\.\NUL", which "nul" stands for in any folder.
bool isDevicePath(std::wstring_view path);

}  // namespace merivane
