#include "due_cards.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo::print {
namespace {

std::string Word(std::string_view text) { return base::UpperAscii(base::Trim(text)); }

bool Fits(const std::string& pattern, const std::string& word) {
  if (!pattern.ends_with('*')) return pattern == word;
  return word.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
}

}  // namespace

std::string DueCards::TextOf(const CardContact& contact, CardField field) const {
  switch (field) {
    case CardField::kCall:
      return Word(contact.Call);
    case CardField::kManager:
      return Word(contact.Manager);
    case CardField::kPrefisso:
      return Word(contact.Prefisso);
    case CardField::kCountry:
      return Word(contact.Country);
    case CardField::kBanda:
      return Word(contact.Banda);
    case CardField::kModo:
      return Word(contact.Modo);
    case CardField::kGruppo: {
      const worked::Group group = modes_.MeaningOf(contact.Modo).group;
      return Word(group == worked::kNoGroup ? contact.Modo : modes_.Groups()[group]);
    }
  }
  return {};
}

bool DueCards::IsNever(const CardContact& contact) const {
  return std::ranges::any_of(rules_.never, [&](const CardRules::Never& rule) {
    if (rule.field == CardField::kCountry) {
      return IsInCountries(rule.values, contact.Country, home_);
    }
    const std::string word = TextOf(contact, rule.field);
    return std::ranges::any_of(rule.values,
                               [&](const std::string& value) { return Fits(value, word); });
  });
}

void DueCards::Give(std::int64_t qsoNr, std::size_t reason) {
  const auto [at, isNew] = due_.try_emplace(qsoNr, reason);
  if (!isNew) at->second = std::min(at->second, reason);
}

void DueCards::See(const CardContact& contact) {
  const bool never = IsNever(contact), canGo = !contact.sent && !never;
  for (std::size_t i = 0; i < rules_.reasons.size(); ++i) {
    const CardRules::Reason& reason = rules_.reasons[i];
    if (!reason.only.empty() && !IsInCountries(reason.only, contact.Country, home_)) continue;
    if (IsInCountries(reason.except, contact.Country, home_)) continue;
    using enum CardRules::Reason::Kind;
    if (reason.kind != kFirst) {
      // Who wants to send one again has said so.
      const bool asked =
          reason.kind == kWanted ? contact.wanted && !never : contact.received && canGo;
      if (asked) Give(contact.qsoNr, i);
      continue;
    }
    std::string key;
    for (const CardField field : reason.fields) key += TextOf(contact, field) + '\n';
    Group& group = groups_[i][std::move(key)];
    group.sent |= contact.sent;
    if (canGo && group.first == 0) group.first = contact.qsoNr;
  }
}

std::unordered_map<std::int64_t, std::string_view> DueCards::Finish() {
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    for (const auto& [key, group] : groups_[i]) {
      if (!group.sent && group.first != 0) Give(group.first, i);
    }
  }
  std::unordered_map<std::int64_t, std::string_view> due;
  for (const auto& [qsoNr, reason] : due_) due.emplace(qsoNr, rules_.reasons[reason].name);
  return due;
}

}  // namespace brenvo::print
