// What an operator writes under a heading, to see some of a table's rows.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace brenvo::core {

enum class ColumnKind { kText, kNumber, kDate, kYesNo };

// A text by which case and accents do not count.
std::string Folded(std::string_view text);
// The words of a search, folded.
std::vector<std::string> WordsOf(std::string_view text);

// One or more conditions, any of which is enough, with ";" between; each may be turned round by a
// "!" before it:
//   text       what the cell holds; with * and ? the whole cell; =text; >text; a..b
//   number     14; >10; >=10; 10..20; 10.. ; with * as text
//   date       2024, 05/2024, 12/05/2024, 12/05/2024 10:30; >2023; 1/1/2024..31/3/2024
//   yes/no     sì, no
// "=" alone wants an empty cell, "<>" one that is not. A sign whose value is still to come wants
// nothing.
class ColumnFilter {
 public:
  ColumnFilter() = default;  // wants nothing
  ColumnFilter(std::string_view text, ColumnKind kind);

  bool WantsNothing() const { return terms_.empty(); }
  // Why the text is not understood, in words for the operator; empty when it is. One that is not
  // wants nothing.
  const std::string& Fault() const { return fault_; }
  // What may be written for a kind.
  static std::string_view Hint(ColumnKind kind);

  // A cell of each kind; `text` is a number as it is shown.
  bool PassesText(std::string_view folded) const;
  bool PassesNumber(double number, std::string_view text) const;
  bool PassesDate(std::optional<base::DateTime> date) const;
  bool PassesYesNo(bool yes) const;
  // A cell of the filter's kind as it is shown.
  bool Passes(std::string_view shown) const;

 private:
  struct Term {
    enum class Wants { kHolds, kPattern, kBetween, kEmpty } wants = Wants::kHolds;
    bool turned = false;
    std::string text{};  // folded: what is held, the pattern
    // Of a range, ends included; a date's are seconds.
    std::optional<double> least{}, most{};
    std::optional<std::string> first{}, last{};
    bool openFirst = false, openLast = false;  // the end itself is left out
  };
  // False when it is not understood; a term that wants nothing is left out.
  bool Take(std::string_view text);
  bool TakeValue(std::string_view sign, std::string_view text, Term& term) const;
  bool TakeRange(std::string_view first, std::string_view last, Term& term) const;
  template <class Meets>
  bool AnyTerm(const Meets& meets) const;

  ColumnKind kind_ = ColumnKind::kText;
  std::vector<Term> terms_;
  std::string fault_;
};

}  // namespace brenvo::core
