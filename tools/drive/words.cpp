#include "drive/words.h"

#include "base/text.h"
#include "recorder/refused.h"

namespace brenvo::drive {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

char32_t HexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<char32_t>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<char32_t>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<char32_t>(c - 'a' + 10);
  throw recorder::Refused{"\\x wants two hexadecimal digits"};
}

class Reader {
 public:
  explicit Reader(std::string_view line) : line_(line) {}

  bool SkipBlanks() {
    while (!AtEnd() && IsBlank(line_[at_])) ++at_;
    return !AtEnd() && line_[at_] != '#';
  }

  std::size_t At() const { return at_; }

  std::string Word() {
    if (line_[at_] == '"') return QuotedWord();
    const std::size_t begin = at_;
    while (!AtEnd() && !IsBlank(line_[at_])) ++at_;
    return std::string(line_.substr(begin, at_ - begin));
  }

 private:
  bool AtEnd() const { return at_ >= line_.size(); }

  char Next() {
    if (AtEnd()) throw recorder::Refused{"a text in quotes does not end"};
    return line_[at_++];
  }

  std::string QuotedWord() {
    ++at_;
    std::string word;
    for (char c = Next(); c != '"'; c = Next()) {
      if (c == '\\') {
        word += Escape();
      } else {
        word += c;
      }
    }
    if (!AtEnd() && !IsBlank(line_[at_]))
      throw recorder::Refused{"a text in quotes wants a blank behind it"};
    return word;
  }

  std::string Escape() {
    switch (const char c = Next()) {
      case 'n':
        return "\n";
      case 'r':
        return "\r";
      case 't':
        return "\t";
      case '"':
        return "\"";
      case '\\':
        return "\\";
      case 'x': {
        const char32_t high = HexDigit(Next());
        return base::FromCharacters(std::u32string(1, high * 16 + HexDigit(Next())));
      }
      default:
        throw recorder::Refused{std::string("unknown escape \\") + c};
    }
  }

  std::string_view line_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<std::string> SplitWords(std::string_view line) {
  std::vector<std::string> words;
  Reader reader(line);
  while (reader.SkipBlanks()) words.push_back(reader.Word());
  return words;
}

std::string RestOfLine(std::string_view line) {
  Reader reader(line);
  if (!reader.SkipBlanks()) return {};
  reader.Word();
  if (!reader.SkipBlanks()) return {};
  const std::size_t begin = reader.At();
  std::string only = reader.Word();
  std::size_t end = reader.At();
  if (!reader.SkipBlanks()) return only;
  do {
    reader.Word();
    end = reader.At();
  } while (reader.SkipBlanks());
  return std::string(line.substr(begin, end - begin));
}

}  // namespace brenvo::drive
