#include "dialect/like_pattern.h"

#include <algorithm>

#include "base/text.h"
#include "engine/database_error.h"

namespace brenvo::dialect {

LikePattern::LikePattern(std::string_view pattern) {
  const std::u32string characters = base::Characters(base::RTrim(pattern));
  const auto fail = [] {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidPattern,
                                "Modello di ricerca non valido.");
  };
  std::u32string literal;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const char32_t c = characters[i];
    Element element{};
    if (c == U'*') {
      element.kind = Element::kRun;
      if (!elements_.empty() && elements_.back().kind == Element::kRun) continue;
    } else if (c == U'?') {
      element.kind = Element::kOne;
    } else if (c == U'#') {
      element.kind = Element::kDigit;
    } else if (c == U'[') {
      const std::size_t end = characters.find(U']', i);
      if (end == std::u32string::npos) fail();
      element.kind = Element::kSet;
      std::size_t at = i + 1;
      if (at < end && characters[at] == U'!') {
        element.negated = true;
        ++at;
      }
      while (at < end) {
        Range range{characters[at], characters[at]};
        if (at + 2 < end && characters[at + 1] == U'-') {
          range.last = characters[at + 2];
          at += 2;
        }
        if (range.last < range.first) fail();
        element.ranges.push_back(range);
        ++at;
      }
      i = end;
      if (element.ranges.empty()) continue;  // [] stands for no character at all
    } else {
      element.kind = Element::kCharacter;
      element.character = base::LowerChar(c);
      literal += c;
    }
    elements_.push_back(std::move(element));
  }
  const auto wild = std::find_if(elements_.begin(), elements_.end(), [](const Element& element) {
    return element.kind != Element::kCharacter;
  });
  if (wild == elements_.end()) {
    shape_ = Shape::kText;
  } else if (wild->kind == Element::kRun && wild + 1 == elements_.end()) {
    shape_ = Shape::kPrefix;
  } else {
    shape_ = Shape::kOther;
  }
  if (shape_ != Shape::kOther) literal_ = base::FromCharacters(literal);
}

bool LikePattern::MatchesOne(const Element& element, char32_t character) {
  switch (element.kind) {
    case Element::kOne:
      return true;
    case Element::kDigit:
      return character >= U'0' && character <= U'9';
    case Element::kCharacter:
      return base::LowerChar(character) == element.character;
    case Element::kSet: {
      const char32_t lower = base::LowerChar(character);
      const char32_t upper = base::UpperChar(character);
      const bool inside =
          std::any_of(element.ranges.begin(), element.ranges.end(), [&](const Range& range) {
            return (lower >= range.first && lower <= range.last) ||
                   (upper >= range.first && upper <= range.last);
          });
      return inside != element.negated;
    }
    case Element::kRun:
      break;
  }
  return false;
}

bool LikePattern::Matches(std::string_view text) const {
  const std::u32string characters = base::Characters(base::RTrim(text));
  // Only the last run met needs to be tried again longer, so the time is at most the product of
  // both lengths, whatever the pattern.
  std::size_t element = 0;
  std::size_t at = 0;
  std::size_t runElement = elements_.size();
  std::size_t runAt = 0;
  while (at < characters.size()) {
    if (element < elements_.size() && elements_[element].kind == Element::kRun) {
      runElement = element++;
      runAt = at;
    } else if (element < elements_.size() && MatchesOne(elements_[element], characters[at])) {
      ++element;
      ++at;
    } else if (runElement < elements_.size()) {
      element = runElement + 1;
      at = ++runAt;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].kind == Element::kRun) ++element;
  return element == elements_.size();
}

}  // namespace brenvo::dialect
