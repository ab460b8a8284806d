// The contacts that cards are written for, as labels in the order in which a bureau wants the
// cards.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "card_rules.h"
#include "print/qsl_labels.h"

namespace brenvo::print {

struct LabelContact {
  std::int64_t qsoNr = 0;
  QsoLabel qso;
  std::string Manager;
};

// Who the card goes to: the manager where that is a call, as it stands or behind a "via"; else the
// station's own call, without what stands before and behind its slashes.
struct Addressee {
  std::string call;
  bool manager = false;
};
Addressee AddresseeOf(std::string_view call, std::string_view manager);

// Sorted by the country of the addressee, in countries that are told so by the digit of his call,
// then by his call, its contacts by date; home is last. `countryOf` is asked once for each of them.
// A label has at most so many lines; the next one goes on.
std::vector<CardLabel> LabelsFor(
    const std::vector<LabelContact>& contacts, const CardRules& rules,
    const std::vector<std::string>& home, int linesALabel,
    const std::function<std::string(const std::string& call)>& countryOf);

}  // namespace brenvo::print
