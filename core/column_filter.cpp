#include "core/column_filter.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/number.h"
#include "base/plain_letters.h"
#include "base/text.h"

namespace brenvo::core {
namespace {

// From the first second to the last one.
struct Period {
  double first = 0, last = 0;
};

std::optional<int> WholeOf(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<double> NumberOf(std::string_view text) {
  std::string plain(text);
  std::replace(plain.begin(), plain.end(), ',', '.');
  double number = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (error != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
  return number;
}

Period Until(base::DateTime first, base::DateTime next) {
  return {static_cast<double>(first.Seconds()), static_cast<double>(next.Seconds() - 1)};
}

// A year of four digits, and a month with one.
std::optional<Period> YearOrMonthOf(std::string_view text) {
  constexpr int kFirst = 1000, kLast = 9998;
  const std::size_t slash = text.find_first_of("/-.");
  const auto year = WholeOf(slash == std::string_view::npos ? text : text.substr(slash + 1));
  if (!year || *year < kFirst || *year > kLast) return std::nullopt;
  if (slash == std::string_view::npos) {
    return Until(base::DateTime::Of(*year, 1, 1), base::DateTime::Of(*year + 1, 1, 1));
  }
  const auto month = WholeOf(text.substr(0, slash));
  if (!month || *month < 1 || *month > 12) return std::nullopt;
  const bool isLast = *month == 12;
  return Until(base::DateTime::Of(*year, *month, 1),
               base::DateTime::Of(isLast ? *year + 1 : *year, isLast ? 1 : *month + 1, 1));
}

std::optional<Period> PeriodOf(std::string_view text) {
  if (const auto period = YearOrMonthOf(text)) return period;
  std::optional<base::DateTime> date = base::ParseIso(text);
  if (!date) date = base::ParseDate(text);
  if (!date) return std::nullopt;
  constexpr std::int64_t kDay = 24 * 60 * 60, kMinute = 60;
  const auto signs = std::count(text.begin(), text.end(), ':');
  const std::int64_t length = signs == 0 ? kDay : signs == 1 ? kMinute : 1;
  return Until(*date, base::DateTime::FromSeconds(date->Seconds() + length));
}

// What stands for yes or no, or begins to.
std::optional<bool> YesNoOf(std::string_view text) {
  const std::string word = Folded(text);
  const auto begins = [&](std::string_view whole) { return whole.starts_with(word); };
  if (begins("si") || begins("yes") || word == "1" || word == "-1") return true;
  if (begins("no") || word == "0") return false;
  return std::nullopt;
}

// "*" is any letters, "?" any one; bytes count for letters here, and a "?" passes over all of one.
bool Fits(std::string_view pattern, std::string_view text) {
  std::size_t p = 0, t = 0, star = std::string_view::npos, from = 0;
  const auto behindLetter = [&](std::size_t at) {
    for (++at; at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;) ++at;
    return at;
  };
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = ++p;
      from = t;
    } else if (p < pattern.size() && pattern[p] == '?') {
      ++p;
      t = behindLetter(t);
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star;
      t = from = behindLetter(from);
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace

std::string Folded(std::string_view text) {
  if (!base::IsAscii(text)) return base::Lower(base::ToPlainLetters(text).text);
  std::string folded(text);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return folded;
}

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : Folded(text)) {
    if (c != ' ') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  if (!word.empty()) words.push_back(std::move(word));
  return words;
}

std::string_view ColumnFilter::Hint(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::kNumber:
      return "Filtro: 14   >10   10..20   = vuoto   !14   14;21";
    case ColumnKind::kDate:
      return "Filtro: 2024   05/2024   12/05/2024   >2023   1/1/2024..31/3/2024";
    case ColumnKind::kYesNo:
      return "Filtro: sì   no";
    case ColumnKind::kText:
      break;
  }
  return "Filtro: testo   DL*   =DL1ABC   !DL   A..F   = vuoto   <> non vuoto   DL;IK";
}

ColumnFilter::ColumnFilter(std::string_view text, ColumnKind kind) : kind_(kind) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(';'), text.size());
    if (!Take(base::Trim(text.substr(0, end)))) {
      terms_.clear();
      fault_ = Hint(kind);
      return;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

bool ColumnFilter::Take(std::string_view text) {
  Term term;
  while (text.starts_with('!')) {
    term.turned = !term.turned;
    text.remove_prefix(1);
  }
  std::string_view sign;
  for (const std::string_view each : {"<>", ">=", "<=", ">", "<", "="}) {
    if (!text.starts_with(each)) continue;
    sign = each;
    text.remove_prefix(each.size());
    break;
  }
  const std::string value = base::Trim(text);
  if (sign == "<>") {
    term.turned = !term.turned;
    sign = "=";
  }
  if (value.empty()) {
    if (sign != "=") return true;  // still to come
    term.wants = Term::Wants::kEmpty;
  } else if (!TakeValue(sign, value, term)) {
    return false;
  }
  terms_.push_back(std::move(term));
  return true;
}

bool ColumnFilter::TakeValue(std::string_view sign, std::string_view text, Term& term) const {
  const std::size_t dots = text.find("..");
  if (sign.empty() && dots != std::string_view::npos) {
    return TakeRange(base::Trim(text.substr(0, dots)), base::Trim(text.substr(dots + 2)), term);
  }
  if (kind_ == ColumnKind::kYesNo) {
    const auto yes = YesNoOf(text);
    if (!yes || (!sign.empty() && sign != "=")) return false;
    term.wants = Term::Wants::kBetween;
    term.least = term.most = *yes ? 1 : 0;
    return true;
  }
  const bool isPattern = text.find_first_of("*?") != std::string_view::npos;
  if (isPattern && kind_ != ColumnKind::kDate && (sign.empty() || sign == "=")) {
    term.wants = Term::Wants::kPattern;
    term.text = Folded(text);
    return true;
  }
  if (kind_ == ColumnKind::kText && sign.empty()) {
    term.text = Folded(text);
    return true;
  }
  const bool above = sign.starts_with('>'), below = sign.starts_with('<');
  const bool itself = sign.empty() || sign.ends_with('=');
  if (!TakeRange(below ? std::string_view() : text, above ? std::string_view() : text, term)) {
    return false;
  }
  if (itself) return true;
  term.openFirst = above;
  term.openLast = below;
  // What lies behind or before a whole day, month or year.
  if (kind_ == ColumnKind::kDate) {
    const Period period = *PeriodOf(text);
    if (above) term.least = period.last;
    if (below) term.most = period.first;
  }
  return true;
}

bool ColumnFilter::TakeRange(std::string_view first, std::string_view last, Term& term) const {
  term.wants = Term::Wants::kBetween;
  switch (kind_) {
    case ColumnKind::kText:
      if (!first.empty()) term.first = Folded(first);
      if (!last.empty()) term.last = Folded(last);
      return true;
    case ColumnKind::kNumber:
      if (!first.empty() && !(term.least = NumberOf(first))) return false;
      if (!last.empty() && !(term.most = NumberOf(last))) return false;
      return true;
    case ColumnKind::kDate: {
      const auto from = first.empty() ? std::nullopt : PeriodOf(first);
      const auto to = last.empty() ? std::nullopt : PeriodOf(last);
      if ((!first.empty() && !from) || (!last.empty() && !to)) return false;
      if (from) term.least = from->first;
      if (to) term.most = to->last;
      return true;
    }
    case ColumnKind::kYesNo:
      break;
  }
  return false;
}

template <class Meets>
bool ColumnFilter::AnyTerm(const Meets& meets) const {
  return terms_.empty() || std::any_of(terms_.begin(), terms_.end(), [&](const Term& term) {
           return meets(term) != term.turned;
         });
}

namespace {

template <class Term, class T>
bool Between(const Term& term, const T& value, const std::optional<T>& least,
             const std::optional<T>& most) {
  if (least && (term.openFirst ? value <= *least : value < *least)) return false;
  return !most || (term.openLast ? value < *most : value <= *most);
}

}  // namespace

bool ColumnFilter::PassesText(std::string_view folded) const {
  return AnyTerm([&](const Term& term) {
    switch (term.wants) {
      case Term::Wants::kHolds:
        return folded.find(term.text) != std::string_view::npos;
      case Term::Wants::kPattern:
        return Fits(term.text, base::Trim(folded));
      case Term::Wants::kEmpty:
        return base::Trim(folded).empty();
      case Term::Wants::kBetween:
        break;
    }
    return Between(term, base::Trim(folded), term.first, term.last);
  });
}

bool ColumnFilter::PassesNumber(double number, std::string_view text) const {
  return AnyTerm([&](const Term& term) {
    if (term.wants == Term::Wants::kPattern) return Fits(term.text, base::Trim(text));
    if (term.wants == Term::Wants::kEmpty) return number == 0;
    return Between(term, number, term.least, term.most);
  });
}

bool ColumnFilter::PassesDate(std::optional<base::DateTime> date) const {
  return AnyTerm([&](const Term& term) {
    if (!date || term.wants == Term::Wants::kEmpty) {
      return !date && term.wants == Term::Wants::kEmpty;
    }
    return Between(term, static_cast<double>(date->Seconds()), term.least, term.most);
  });
}

bool ColumnFilter::PassesYesNo(bool yes) const {
  return AnyTerm([&](const Term& term) {
    return term.wants == Term::Wants::kEmpty ? !yes : term.least == (yes ? 1.0 : 0.0);
  });
}

bool ColumnFilter::Passes(std::string_view shown) const {
  switch (kind_) {
    case ColumnKind::kNumber:
      return PassesNumber(base::Val(shown), shown);
    case ColumnKind::kDate:
      return PassesDate(base::ParseDate(shown));
    case ColumnKind::kYesNo:
      return PassesYesNo(YesNoOf(shown).value_or(false) && !shown.empty());
    case ColumnKind::kText:
      break;
  }
  return PassesText(Folded(shown));
}

}  // namespace brenvo::core
