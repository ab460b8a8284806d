#include "manual/page_to_html.h"

#include <QFont>
#include <QString>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextList>
#include <QTextTable>

namespace brenvo::manual {
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
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
      .toHtmlEscaped()
      .toStdString();
}

std::string Tagged(const char* tag, const std::string& html) {
  return std::string("<") + tag + '>' + html + "</" + tag + '>';
}

std::string Piece(const QTextFragment& piece) {
  const QTextCharFormat format = piece.charFormat();
  if (format.isImageFormat()) {
    const QTextImageFormat image = format.toImageFormat();
    return "<img src=\"" + Escaped(image.name().toStdString()) + "\" alt=\"" +
           Escaped(image.stringProperty(QTextFormat::ImageAltText).toStdString()) + "\">";
  }
  std::string html = Escaped(piece.text().toStdString());
  if (format.fontFixedPitch()) html = Tagged("code", html);
  if (format.fontItalic()) html = Tagged("em", html);
  if (format.fontWeight() > QFont::Normal) html = Tagged("strong", html);
  return html;
}

std::string Words(const QTextBlock& block) {
  std::string html;
  for (auto at = block.begin(); !at.atEnd(); ++at) html += Piece(at.fragment());
  return html;
}

// The reader of Markdown shows a heading in bold letters; on a page it is a heading.
std::string Heading(const QTextBlock& block) {
  std::string words;
  for (auto at = block.begin(); !at.atEnd(); ++at) {
    words += Escaped(at.fragment().text().toStdString());
  }
  return words;
}

std::string TagOf(const QTextList& list) {
  return list.format().style() == QTextListFormat::ListDecimal ? "ol" : "ul";
}

std::string Table(const QTextTable& table) {
  std::string html = "<table>\n";
  for (int row = 0; row < table.rows(); ++row) {
    std::string cells;
    for (int column = 0; column < table.columns(); ++column) {
      const QTextBlock block = table.cellAt(row, column).firstCursorPosition().block();
      cells += row == 0 ? Tagged("th", Heading(block)) : Tagged("td", Words(block));
    }
    html += Tagged("tr", cells) + '\n';
  }
  return html + "</table>\n";
}

}  // namespace

std::string PageToHtml(std::string_view markdown) {
  QTextDocument page;
  page.setMarkdown(QString::fromUtf8(markdown.data(), static_cast<qsizetype>(markdown.size())));
  std::string html;
  const QTextList* list = nullptr;
  const auto goOnIn = [&](const QTextList* next) {
    if (list == next) return;
    if (list != nullptr) html += "</" + TagOf(*list) + ">\n";
    if (next != nullptr) html += '<' + TagOf(*next) + ">\n";
    list = next;
  };
  for (auto at = page.rootFrame()->begin(); !at.atEnd(); ++at) {
    if (const auto* table = qobject_cast<QTextTable*>(at.currentFrame())) {
      goOnIn(nullptr);
      html += Table(*table);
      continue;
    }
    const QTextBlock block = at.currentBlock();
    goOnIn(block.textList());
    // Around a table stand empty blocks of the toolkit's own.
    if (const std::string words = Words(block); !words.empty()) {
      html += Tagged(list != nullptr ? "li" : "p", words) + '\n';
    }
  }
  goOnIn(nullptr);
  return html;
}

std::string ManualToHtml(const std::vector<frame::HelpPage>& pages, std::string_view title) {
  std::string contents, text;
  for (const frame::HelpPage& page : pages) {
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

}  // namespace brenvo::manual
