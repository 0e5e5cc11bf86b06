#pragma once

#include <string>

namespace merivane {

/// One side of a text window as its title and its prompts name it.
struct TitleSide {
  std::string savedPath;  // empty until a file was loaded or saved
  std::string boxText;    // of the name box
  bool modified = false;
};

/// The saved path, else the box text; may be empty.
const std::string& sideName(const TitleSide& side);

/// How a question names the side: its name, or "<no file>".
std::string promptName(const TitleSide& side);

/// "Merivane - [a.txt, b.txt*]": the file names without their folders, a star after one with unsaved changes,
/// "<no file>" for a name that is no path of a file.
std::string windowTitle(const TitleSide (&sides)[2]);

}  // namespace merivane
