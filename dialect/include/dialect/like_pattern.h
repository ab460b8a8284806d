// Patterns of LIKE: "*" any run of characters, "?" any one, "#" a digit, [abc], [a-z], [!x].
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvo::dialect {

class LikePattern {
 public:
  enum class Shape {
    kText,    // no wildcard: Literal() itself
    kPrefix,  // Literal() and then anything
    kOther,
  };

  // Blanks at the end of the pattern do not count. DatabaseError 93 when a bracket is not closed
  // or a range runs backwards.
  explicit LikePattern(std::string_view pattern);

  Shape GetShape() const { return shape_; }
  // Of kText and kPrefix.
  const std::string& Literal() const { return literal_; }
  // Without regard to case and to blanks at the end of the text.
  bool Matches(std::string_view text) const;

 private:
  struct Range {
    char32_t first, last;
  };
  struct Element {
    enum Kind { kRun, kOne, kDigit, kCharacter, kSet } kind;
    char32_t character = 0;  // lower case
    bool negated = false;
    std::vector<Range> ranges;
  };

  static bool MatchesOne(const Element& element, char32_t character);

  std::vector<Element> elements_;
  Shape shape_ = Shape::kText;
  std::string literal_;
};

}  // namespace brenvo::dialect
