#include "output/html_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/memory_files.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

TEST(HtmlFile, IsWholeOrNotThere) {
  const DiffModel model = modelOf("=<>!");
  const HtmlSide sides[2] = {{"left", "x\nx\nx\n"}, {"right", "x\nx\nx\n"}};
  MemoryFiles files;
  files.files["page.html"].contents = "earlier";
  for (uint32_t failing = 0;; ++failing) {
    FailingFiles broken(files, failing, 77);
    const SystemError error = exportHtml(broken, "page.html", model, sides, {}, "now");
    const std::string& page = files.files["page.html"].contents;
    if (!broken.hasFailed()) {
      EXPECT_EQ(error, 0u);
      EXPECT_TRUE(page.starts_with("<HTML>") && page.ends_with("</HTML>\r\n")) << page;
      EXPECT_GE(failing, 3u) << "creating, writing and committing";
      break;
    }
    EXPECT_EQ(error, 77u);
    EXPECT_EQ(page, "earlier");
  }
}

}  // namespace
}  // namespace merivane
