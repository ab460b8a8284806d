#include "tokenizer.h"

#include <algorithm>

namespace brenvo::dialect {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool BeginsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

Token Tokenizer::Make(TokenKind kind, std::size_t from, std::size_t to) const {
  Token token;
  token.kind = kind;
  token.text = statement_.substr(from, to - from);
  token.start = from;
  return token;
}

Token Tokenizer::Quoted(std::size_t from) {
  const char quote = statement_[from];
  std::size_t end = from + 1;
  while (true) {
    end = statement_.find(quote, end);
    if (end == std::string_view::npos) {
      at_ = statement_.size();
      return Make(TokenKind::kBad, from, at_);
    }
    if (end + 1 >= statement_.size() || statement_[end + 1] != quote) break;
    end += 2;
  }
  at_ = end + 1;
  Token token = Make(TokenKind::kText, from + 1, end);
  token.quote = quote;
  token.start = from;
  return token;
}

Token Tokenizer::Next() {
  while (at_ < statement_.size() && IsBlank(statement_[at_])) ++at_;
  const std::size_t from = at_;
  if (from == statement_.size()) return Make(TokenKind::kEnd, from, from);
  const char c = statement_[from];
  const auto peek = [&](std::size_t i) { return i < statement_.size() ? statement_[i] : '\0'; };

  if (BeginsName(c)) {
    while (BeginsName(peek(at_)) || IsDigit(peek(at_))) ++at_;
    Token token = Make(TokenKind::kName, from, at_);
    token.word = PackedForm(token.text);
    return token;
  }
  if (IsDigit(c) || (c == '.' && IsDigit(peek(from + 1)))) {
    while (IsDigit(peek(at_))) ++at_;
    if (peek(at_) == '.') {
      ++at_;
      while (IsDigit(peek(at_))) ++at_;
    }
    if (peek(at_) == 'e' || peek(at_) == 'E') {
      std::size_t exponent = at_ + 1;
      if (peek(exponent) == '+' || peek(exponent) == '-') ++exponent;
      if (IsDigit(peek(exponent))) {
        at_ = exponent;
        while (IsDigit(peek(at_))) ++at_;
      }
    }
    const bool ends = !BeginsName(peek(at_)) && peek(at_) != '.';
    return Make(ends ? TokenKind::kNumber : TokenKind::kBad, from, at_);
  }
  if (c == '\'' || c == '"') return Quoted(from);
  if (c == '[') {
    const std::size_t end = statement_.find(']', from);
    const std::string_view name = statement_.substr(from + 1, end - from - 1);
    const bool clean = std::none_of(name.begin(), name.end(), [](char letter) {
      return static_cast<unsigned char>(letter) < ' ';  // a zero would end a store's text
    });
    if (end == std::string_view::npos || name.empty() || !clean) {
      at_ = statement_.size();
      return Make(TokenKind::kBad, from, at_);
    }
    at_ = end + 1;
    Token token = Make(TokenKind::kBracketed, from + 1, end);
    token.start = from;
    return token;
  }
  ++at_;
  if ((c == '<' && (peek(at_) == '>' || peek(at_) == '=')) || (c == '>' && peek(at_) == '=')) {
    ++at_;
    return Make(TokenKind::kSymbol, from, at_);
  }
  constexpr std::string_view kSymbols = "(),.;*+-/&=<>";
  const bool known = kSymbols.find(c) != std::string_view::npos;
  return Make(known ? TokenKind::kSymbol : TokenKind::kBad, from, at_);
}

}  // namespace brenvo::dialect
