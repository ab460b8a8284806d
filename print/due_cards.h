// Which contacts owe a card, by the rules.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "card_rules.h"

namespace brenvo::print {

// Contacts of a station in that country come in by rising date. The rules and the modes live as
// long as this does.
class DueCards {
 public:
  DueCards(const CardRules& rules, const worked::Rules& modes, std::string_view country)
      : rules_(rules),
        modes_(modes),
        home_(HomeOf(rules, country)),
        groups_(rules.reasons.size()) {}

  void See(const CardContact& contact);
  // The contacts that owe a card, each with the name of its reason; the names live as long as the
  // rules.
  std::unordered_map<std::int64_t, std::string_view> Finish();

 private:
  struct Group {
    std::int64_t first = 0;  // 0 while none can be sent
    bool sent = false;
  };
  bool IsNever(const CardContact& contact) const;
  std::string TextOf(const CardContact& contact, CardField field) const;
  void Give(std::int64_t qsoNr, std::size_t reason);

  const CardRules& rules_;
  const worked::Rules& modes_;
  std::vector<std::string> home_;
  std::vector<std::unordered_map<std::string, Group>> groups_;  // by reason
  std::unordered_map<std::int64_t, std::size_t> due_;           // the first reason
};

}  // namespace brenvo::print
