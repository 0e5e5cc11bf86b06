#include <algorithm>
#include <charconv>
#include <cstdio>
#include <initializer_list>
#include <string>

#include "output/html_text.h"
#include "output/writers.h"

namespace merivane {
namespace {

std::string cellStart(Colour colour) {
  char html[64];
  std::snprintf(html, sizeof html, "<TD VALIGN=\"top\" BGCOLOR=\"#%02X%02X%02X\"><CODE>", colour & 0xFF,
                colour >> 8 & 0xFF, colour >> 16 & 0xFF);
  return html;
}

class PageWriter {
 public:
  PageWriter(const WrittenComparison& comparison, const WriterOptions& options, ByteSink& sink)
      : model_(comparison.model), sides_(comparison.sides), look_(options.look), sink_(sink) {
    for (const int side : {0, 1}) {
      styles_[side] = {look_.tabStop, look_.showWhiteSpace, utf8_, isUnicode(sides_[side].encoding)};
      for (const auto status :
           {RowStatus::same, RowStatus::leftOnly, RowStatus::rightOnly, RowStatus::changed}) {
        cellStarts_[side][static_cast<int>(status)] = cellStart(rowColour(look_.colours, status, side));
      }
    }
  }

  void writeHead(std::string_view time) {
    const std::string names[] = {htmlName(sides_[0].path), htmlName(sides_[1].path)};
    const std::string_view encoding =
        utf8_ ? "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=utf-8\">\r\n" : "";
    append({"<HTML>\r\n<HEAD>\r\n", encoding, "<TITLE>", names[0], ", ", names[1],
            "</TITLE>\r\n</HEAD>\r\n<BODY BGCOLOR=\"#FFFFFF\">\r\n"
            "<TABLE BORDER=\"0\" CELLSPACING=\"0\" CELLPADDING=\"0\">\r\n"
            "<TR><TD ALIGN=\"center\" COLSPAN=\"2\"><B>",
            summaryText(model_), "</B> (", htmlName(time), ")</TD></TR>\r\n\r\n<TR>"});
    for (const int side : {0, 1}) {
      const std::string kind = withEncoding(lineEndKindName(sides_[side].lineEndKind), sides_[side].encoding);
      append(
          {"<TD WIDTH=\"50%\"><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD ALIGN=\"center\">"
           "<A HREF=\"file:///",
           names[side], "\">", names[side], "</A> (", kind, ")</TD></TR></TABLE></TD>",
           side == 0 ? "\r\n" : "</TR>\r\n\r\n"});
    }
    flush();
  }

  void writeSectionHead(uint32_t row) {
    html_ += "<TR>";
    for (const int side : {0, 1}) {
      html_ += "<TD><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD";
      const uint32_t line = model_.lineNumber(side, row);
      if (line == kNoLine) {
        append({">", kHtmlBlank});
      } else {
        append({" ALIGN=\"center\"><B>Line ", std::to_string(line + 1), "</B>"});
      }
      append({"</TD></TR></TABLE></TD>", side == 0 ? "\r\n" : "</TR>\r\n"});
    }
    flush();
  }

  void writeRow(uint32_t row) {
    html_ += "<TR>";
    for (const int side : {0, 1}) appendCell(side, row);
    html_ += "</TR>\r\n";
    flush();
  }

  void writeFoot() { sink_.write("</TABLE>\r\n</BODY>\r\n</HTML>\r\n"); }

 private:
  std::string htmlName(std::string_view name) const {
    std::string html;
    appendHtmlName(html, name, utf8_);
    return html;
  }

  void append(std::initializer_list<std::string_view> pieces) {
    for (const std::string_view piece : pieces) html_ += piece;
  }

  void flush() {
    sink_.write(html_);
    html_.clear();
  }

  void appendCell(int side, uint32_t row) {
    const RowStatus status = model_.status(row);
    const bool filler = fillerSide(status) == side;
    html_ += cellStarts_[side][static_cast<int>(status)];
    if (look_.lineNumbers != LineNumbers::none) {
      char digits[16];
      char* end = digits;
      if (!filler) {
        const uint32_t number = shownNumber(look_.lineNumbers, model_, side, row);
        end = std::to_chars(digits, std::end(digits), number).ptr;
      }
      for (auto i = static_cast<size_t>(end - digits); i < numberWidth_; ++i) html_ += kHtmlBlank;
      html_.append(digits, end);
      html_ += kHtmlBlank;
    }
    const std::string_view text = sides_[side].text;
    const uint32_t start = model_.position(side, row);
    // A filler's position is the next line's.
    const uint32_t end = filler ? start : model_.endPosition(side, row, static_cast<uint32_t>(text.size()));
    if (start == end) {
      html_ += kHtmlBlank;
    } else {
      appendHtmlText(html_, text.substr(start, end - start), styles_[side]);
    }
    html_ += "</CODE></TD>";
  }

  const DiffModel& model_;
  const WrittenSide (&sides_)[2];
  const RowLook& look_;
  ByteSink& sink_;
  const bool utf8_ = isUnicode(sides_[0].encoding) || isUnicode(sides_[1].encoding);
  HtmlStyle styles_[2];
  const size_t numberWidth_ = std::to_string(model_.rowCount()).size();
  std::string cellStarts_[2][4];  // by side and row status
  std::string html_;              // what the sink has not got yet; keeps its room from row to row
};

}  // namespace

void writeHtml(const WrittenComparison& comparison, const WriterOptions& options, ByteSink& sink) {
  PageWriter page(comparison, options, sink);
  page.writeHead(options.time);
  forEachSection(comparison.model, options.scope, [&](RowRange rows) {
    if (options.scope != ExportScope::everything) page.writeSectionHead(rows.begin);
    for (uint32_t row = rows.begin; row < rows.end; ++row) page.writeRow(row);
  });
  page.writeFoot();
}

}  // namespace merivane
