#include "conferme/paper_cards.h"

#include <algorithm>
#include <map>
#include <span>

#include "conferme/match_log.h"
#include "contact_state.h"
#include "core/qsl_cards.h"

namespace brenvo::conferme {
namespace {

constexpr std::size_t kTogether = 1000;

}  // namespace

std::int64_t TakeCards(core::Session& session, std::string_view title, const Report& report) {
  const auto matched = MatchLog(session, report.cards, {}, Earlier::kAside);
  std::map<std::int64_t, std::size_t> cardOf;  // by contact
  for (std::size_t i = 0; i < report.cards.size(); ++i) {
    if (matched->matches[i].outcome == Outcome::kMatched)
      cardOf.emplace(matched->matches[i].key, i);
  }
  std::vector<std::int64_t> keys;
  for (const auto& [key, card] : cardOf) keys.push_back(key);
  struct ByCard {
    bool operator()(const core::QslCard& a, const core::QslCard& b) const {
      return a.way != b.way ? a.way < b.way : a.day < b.day;
    }
  };
  std::map<core::QslCard, std::vector<std::int64_t>, ByCard> groups;
  std::int64_t taken = 0;
  for (std::size_t from = 0; from < keys.size(); from += kTogether) {
    const auto block = std::span(keys).subspan(from, std::min(kTogether, keys.size() - from));
    const std::vector<ContactState> states = StatesOf(session, block);
    const std::vector<bool> ofServices = core::BoxesOfServices(session.Db, block);
    for (std::size_t i = 0; i < block.size(); ++i) {
      // One that is ticked for a card is as the operator wants it.
      if (!states[i].exists || (states[i].box && !ofServices[i])) continue;
      const std::size_t card = cardOf.at(block[i]);
      const auto way = core::CardWayOf(report.cardWays[card]);
      groups[{way.value_or(core::CardWay::kUnknown), report.cards[card].day}].push_back(block[i]);
      ++taken;
    }
  }
  if (taken == 0) return 0;
  session.Contacts.ChangeMany(title, {core::ContactTable::kLog}, [&] {
    for (const auto& [card, ofCard] : groups) {
      core::MarkCards(session, title, ofCard, core::CardSide::kReceived, card);
    }
    return true;
  });
  return taken;
}

}  // namespace brenvo::conferme
