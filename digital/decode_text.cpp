#include "decode_text.h"

#include <algorithm>
#include <vector>

#include "words.h"

namespace brenvo::digital {
namespace {

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A locator of four characters; the word that ends a contact looks like one.
bool IsGrid(std::string_view word) {
  return word.size() == 4 && word != "RR73" && word[0] >= 'A' && word[0] <= 'R' && word[1] >= 'A' &&
         word[1] <= 'R' && IsDigit(word[2]) && IsDigit(word[3]);
}

// Letters and a digit between them, parts joined by "/"; long enough for a call.
bool IsCall(std::string_view word) {
  if (word.size() < 3 || word.size() > 11 || IsGrid(word) || word == "RR73") return false;
  bool letter = false, digit = false;
  for (const char c : word) {
    if (!IsLetter(c) && !IsDigit(c) && c != '/') return false;
    letter = letter || IsLetter(c);
    digit = digit || IsDigit(c);
  }
  return letter && digit && word.front() != '/' && word.back() != '/';
}

// A hashed call stands in angle brackets; "<...>" is one that nobody knows.
std::string_view Bare(std::string_view word) {
  if (word.size() > 2 && word.front() == '<' && word.back() == '>') {
    word = word.substr(1, word.size() - 2);
  }
  return word;
}

bool IsCallWord(std::string_view word) { return word == "<...>" || IsCall(Bare(word)); }

std::string CallOf(std::string_view word) {
  return word == "<...>" ? std::string() : std::string(Bare(word));
}

}  // namespace

DecodeText ReadDecode(std::string_view message) {
  DecodeText read;
  // One who answers several at once tells of himself behind the last of them.
  if (const std::size_t several = message.find("; "); several != std::string_view::npos) {
    read = ReadDecode(message.substr(several + 2));
    read.isEnd = true;
    return read;
  }
  const std::vector<std::string_view> words = WordsOf(message);
  if (words.empty()) return read;
  std::size_t at = 0;
  if (words[0] == "CQ" || words[0] == "QRZ" || words[0] == "DE") {
    read.isCq = words[0] != "DE";
    // Behind it may stand whom he looks for: "DX", "EU", "TEST", a number.
    at = 1;
    if (at < words.size() && !IsCallWord(words[at])) ++at;
    if (at >= words.size() || !IsCallWord(words[at])) return read;
    read.call = CallOf(words[at]);
  } else {
    if (words.size() < 2 || !IsCallWord(words[0]) || !IsCallWord(words[1])) return read;
    read.to = CallOf(words[0]);
    read.call = CallOf(words[1]);
    at = 1;
  }
  if (words.size() > at + 1) {
    const std::string_view last = words.back();
    if (IsGrid(last)) read.locator = last;
    // A contest's message ends with the whole locator.
    if (last.size() == 6 && IsGrid(last.substr(0, 4))) read.locator = last.substr(0, 4);
    read.isEnd = last == "RR73" || last == "73" || last == "RRR";
  }
  return read;
}

}  // namespace brenvo::digital
