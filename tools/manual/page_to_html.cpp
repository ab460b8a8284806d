#include "tools/manual/page_to_html.h"

#include <cctype>
#include <utility>

#include "base/text.h"

namespace brenvo {
namespace {

constexpr std::string_view kStyle =
    "body{font:16px/1.5 sans-serif;color:#222;margin:0;display:flex}"
    "nav{width:15em;flex:none;height:100vh;overflow:auto;position:sticky;top:0;"
    "background:#f1f3f5;padding:1em;box-sizing:border-box}"
    "nav a{display:block;color:#245;text-decoration:none;padding:.1em 0}"
    "main{max-width:52em;padding:1em 2em}"
    "img{max-width:100%;border:1px solid #ccd}"
    "table{border-collapse:collapse}td,th{border:1px solid #ccd;padding:.2em .6em;text-align:left}"
    "code{background:#f1f3f5;padding:0 .2em}h2{margin-top:2em;border-bottom:1px solid #ccd}"
    "@media(prefers-color-scheme:dark){body{background:#1e2023;color:#ddd}nav,code{background:"
    "#2b2e32}nav a{color:#9cf}}";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

// Words between two equal marks, with a pair of tags around them.
struct Mark {
  std::string_view mark, tag;
  bool marksInside;  // other marks count within it
};
constexpr Mark kMarks[] = {{"`", "code", false}, {"**", "strong", true}, {"*", "em", true}};

std::string Inline(std::string_view text) {
  std::string html;
  while (!text.empty()) {
    bool marked = false;
    for (const Mark& mark : kMarks) {
      if (!text.starts_with(mark.mark)) continue;
      const std::size_t end = text.find(mark.mark, mark.mark.size());
      if (end == std::string_view::npos) continue;
      const std::string_view words = text.substr(mark.mark.size(), end - mark.mark.size());
      html += "<" + std::string(mark.tag) + ">";
      html += mark.marksInside ? Inline(words) : Escaped(words);
      html += "</" + std::string(mark.tag) + ">";
      text.remove_prefix(end + mark.mark.size());
      marked = true;
      break;
    }
    if (marked) continue;
    html += Escaped(text.substr(0, 1));
    text.remove_prefix(1);
  }
  return html;
}

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  return lines;
}

std::string Row(std::string_view line, std::string_view tag) {
  std::string row = "<tr>";
  line = line.substr(1);  // the first bar
  while (!line.empty()) {
    const std::size_t bar = line.find('|');
    if (bar == std::string_view::npos) break;
    row += "<" + std::string(tag) + ">" + Inline(Trim(line.substr(0, bar))) + "</" +
           std::string(tag) + ">";
    line.remove_prefix(bar + 1);
  }
  return row + "</tr>\n";
}

// "![words](file)"; empty when the line is no picture.
std::string Picture(std::string_view line) {
  const std::size_t middle = line.find("](");
  if (!line.starts_with("![") || middle == std::string_view::npos || !line.ends_with(")")) {
    return "";
  }
  const std::string_view words = line.substr(2, middle - 2);
  const std::string_view file = line.substr(middle + 2, line.size() - middle - 3);
  return "<p><img src=\"" + Escaped(file) + "\" alt=\"" + Escaped(words) + "\"></p>\n";
}

bool BeginsEntry(std::string_view line) {
  return line.size() > 3 && std::isdigit(static_cast<unsigned char>(line[0])) != 0 &&
         line.substr(1, 2) == ". ";
}

// A block: the lines between two empty ones.
std::string Block(const std::vector<std::string>& lines) {
  if (const std::string picture = Picture(lines.front()); !picture.empty()) return picture;
  if (lines.front().starts_with('|')) {
    std::string table = "<table>\n" + Row(lines.front(), "th");
    for (std::size_t i = 2; i < lines.size(); ++i) table += Row(lines[i], "td");
    return table + "</table>\n";
  }
  const bool isList = BeginsEntry(lines.front());
  std::string html = isList ? "<ol>\n" : "<p>";
  std::string words;
  const auto endEntry = [&] {
    if (isList && !words.empty()) html += "<li>" + Inline(words) + "</li>\n";
    if (isList) words.clear();
  };
  for (const std::string& line : lines) {
    const bool begins = isList && BeginsEntry(line);
    if (begins) endEntry();
    if (!words.empty()) words += ' ';
    words += Trim(begins ? std::string_view(line).substr(3) : std::string_view(line));
  }
  endEntry();
  return isList ? html + "</ol>\n" : html + Inline(words) + "</p>\n";
}

}  // namespace

std::string PageToHtml(std::string_view markdown) {
  std::string html;
  std::vector<std::string> block;
  const auto endBlock = [&] {
    if (!block.empty()) html += Block(std::exchange(block, {}));
  };
  for (const std::string& line : LinesOf(markdown)) {
    if (Trim(line).empty()) {
      endBlock();
    } else {
      block.push_back(line);
    }
  }
  endBlock();
  return html;
}

std::string ManualToHtml(const std::vector<HelpPage>& pages, std::string_view title) {
  std::string contents, text;
  for (const HelpPage& page : pages) {
    const std::string anchor = "t" + std::to_string(page.topic);
    contents += "<a href=\"#" + anchor + "\">" + Escaped(page.title) + "</a>\n";
    text += "<h2 id=\"" + anchor + "\">" + Escaped(page.title) + "</h2>\n" + PageToHtml(page.text);
  }
  return "<!DOCTYPE html>\n<html lang=\"it\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
         Escaped(title) + "</title>\n<style>" + std::string(kStyle) +
         "</style>\n</head>\n<body>\n" + "<nav>\n" + contents + "</nav>\n<main>\n<h1>" +
         Escaped(title) + "</h1>\n" + text + "</main>\n</body>\n</html>\n";
}

}  // namespace brenvo
