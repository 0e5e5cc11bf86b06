#pragma once

#include <string>

namespace merivane {

// The product's own addresses.
inline constexpr const char* kWebSite = "https://merivane.example/";
inline constexpr const char* kSupportMail = "mailto:support@merivane.example";

/// Where the pages of the manual are.
struct HelpPlaces {
  std::string compiled;  // the compiled manual
  std::string topic;     // the page in it, as the help viewer wants it named
  std::string plain;     // the page as a file for browsers
};

/// The places of a page in the program's folder; of the start page for an empty name.
HelpPlaces helpPlaces(const std::string& folder, const std::string& page);

}  // namespace merivane
