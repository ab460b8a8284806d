#include "base/plain_letters.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"

namespace brenvo::base {
namespace {

// From the first character on, one word for each: "_" for a blank, "~" for nothing.
struct Range {
  char32_t first;
  std::string_view words;
};
// clang-format off
constexpr Range kRanges[] = {
    {0xA0,
     "_ ! c GBP ? JPY | par. _ (C) a \" - ~ (R) - o +- 2 3 ' u par. . , 1 o \" 1/4 "
     "1/2 3/4 ? A A A A A A AE C E E E E I I I I D N O O O O O x O U U U U Y Th ss "
     "a a a a a a ae c e e e e i i i i d n o o o o o / o u u u u y th y A a A a A a "
     "C c C c C c C c D d D d E e E e E e E e E e G g G g G g G g H h H h I i I i I "
     "i I i I i IJ ij J j K k k L l L l L l L. l. L l N n N n N n n N n O o O o O o "
     "OE oe R r R r R r S s S s S s S s T t T t T t U u U u U u U u U u U u W w Y y "
     "Y Z z Z z Z z s"},
    {0x180,
     "? ? ? ? ? ? ? ? ? ? ? ? ? ? ? E ? ? f ? ? ? ? I ? ? ? ? ? ? ? ? O o ? ? ? ? ? "
     "? ? ? ? ? ? ? ? U u ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? DZ Dz dz LJ Lj lj "
     "NJ Nj nj A a I i O o U u U u U u U u U u ? A a A a AE ae ? ? G g K k O o O o "
     "? ? j DZ Dz dz G g ? ? N n A a AE ae O o A a A a E e E e I i I i O o O o R r "
     "R r U u U u S s T t ? ? H h ? ? ? ? ? ? A a E e O o O o O o O o Y y ? ? ? ? ? "
     "? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ? ?"},
    {0x386,
     "A . E I I ? O ? Y O i A V G D E Z I Th I K L M N X O P R ? S T Y F Ch Ps O I "
     "Y a e i i y a v g d e z i th i k l m n x o p r s s t y f ch ps o i y o y o"},
    {0x400,
     "E E Dj G Ye Dz I Yi J Lj Nj C K I U Dz A B V G D E Zh Z I J K L M N O P R S T "
     "U F Kh Ts Ch Sh Shch ' Y ' E Yu Ya a b v g d e zh z i j k l m n o p r s t u f "
     "kh ts ch sh shch ' y ' e yu ya e e dj g ye dz i yi j lj nj c k i u dz"},
    {0x490,
     "G g"},
    {0x1E00,
     "A a B b B b B b C c D d D d D d D d D d E e E e E e E e E e F f G g H h H h H "
     "h H h H h I i I i K k K k K k L l L l L l L l M m M m M m N n N n N n N n O o "
     "O o O o O o P p P p R r R r R r R r S s S s S s S s S s T t T t T t T t U u U "
     "u U u U u U u V v V v W w W w W w W w W w X x X x Y y Z z Z z Z z h t w y ? s "
     "? ? SS ? A a A a A a A a A a A a A a A a A a A a A a A a E e E e E e E e E e "
     "E e E e E e I i I i O o O o O o O o O o O o O o O o O o O o O o O o U u U u U "
     "u U u U u U u U u Y y Y y Y y Y y ? ? ? ? ? ?"},
    {0x2010, "- - - - - -"},
    {0x2018, "' ' , ' \" \" \" \" + + *"},
    {0x2026, "..."},
    {0x2030, "o/oo ? ' \""},
    {0x2039, "< >"},
    {0x2044, "/"},
    {0x20AC, "EUR"},
    {0x2116, "No"},
    {0x2122, "TM"},
    {0x2212, "-"},
};
// clang-format on

std::unordered_map<char32_t, std::string_view> ByCharacter() {
  std::unordered_map<char32_t, std::string_view> letters;
  for (const Range& range : kRanges) {
    char32_t character = range.first;
    for (std::size_t at = 0; at < range.words.size(); ++character) {
      const std::size_t end = std::min(range.words.find(' ', at), range.words.size());
      const std::string_view word = range.words.substr(at, end - at);
      letters.emplace(character, word == "_" ? " " : word == "~" ? "" : word);
      at = end + 1;
    }
  }
  return letters;
}

constexpr bool IsMark(char32_t c) { return c >= 0x300 && c <= 0x36F; }

}  // namespace

PlainLetters ToPlainLetters(std::string_view text) {
  if (IsAscii(text)) return {std::string(text), 0};
  static const auto kLetters = ByCharacter();
  PlainLetters plain;
  for (const char32_t c : Characters(text)) {
    if (c < 0x80) {
      plain.text += static_cast<char>(c);
      continue;
    }
    ++plain.changed;
    const auto found = kLetters.find(c);
    if (found != kLetters.end()) {
      plain.text += found->second;
    } else if (!IsMark(c)) {
      plain.text += '?';
    }
  }
  return plain;
}

}  // namespace brenvo::base
