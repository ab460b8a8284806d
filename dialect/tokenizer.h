// The words of a statement.
#pragma once

#include <cstdint>
#include <string_view>

namespace brenvo::dialect {

// A bare word of 1 to 8 ASCII letters, without regard to case, as one number: keywords compare
// fast. 0 for any other text.
constexpr std::uint64_t PackedForm(std::string_view word) {
  if (word.size() > 8) return 0;
  std::uint64_t packed = 0;
  for (char c : word) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    if (c < 'A' || c > 'Z') return 0;
    packed = packed << 8 | static_cast<unsigned char>(c);
  }
  return packed;
}

// The same for a keyword in the source: one that has no packed form, being longer than 8 letters
// or not of letters alone, does not compile. As 0 it would equal every word that is no keyword.
consteval std::uint64_t PackWord(std::string_view word) {
  const std::uint64_t packed = PackedForm(word);
  if (packed == 0) throw "a keyword is 1 to 8 letters";
  return packed;
}

enum class TokenKind {
  kEnd,
  kName,       // bare: text is the word, word its packed form
  kBracketed,  // text is what stands within the brackets
  kText,       // text is what stands within the quotes, doubled quotes not yet undone
  kNumber,
  kSymbol,  // one of ( ) , . ; * + - / & = < > <> <= >=
  kBad,
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::string_view text;
  std::uint64_t word = 0;
  char quote = 0;         // of kText
  std::size_t start = 0;  // byte offset in the statement
};

class Tokenizer {
 public:
  // The text must outlive the tokens.
  explicit Tokenizer(std::string_view statement) : statement_(statement) {}
  // kEnd for ever at the end; kBad for what begins no word, or a word that does not end.
  Token Next();

 private:
  Token Make(TokenKind kind, std::size_t from, std::size_t to) const;
  Token Quoted(std::size_t from);

  std::string_view statement_;
  std::size_t at_ = 0;
};

}  // namespace brenvo::dialect
