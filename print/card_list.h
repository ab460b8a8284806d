// The contacts of the log by what is known of their cards.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "card_rules.h"
#include "core/log_contact.h"
#include "core/qsl_cards.h"
#include "core/session.h"

namespace brenvo::print {

enum class CardView : std::uint8_t { kDue, kSent, kReceived, kAwaited };

// What is looked for. Way and days are those of the view's cards; a contact that owes one has none
// yet, and is taken by its own day.
struct CardQuestion {
  CardView view = CardView::kDue;
  std::optional<core::CardWay> way;
  std::optional<base::DateTime> from, to;  // midnights, both days included
};

struct ListedContact {
  std::int64_t qsoNr = 0;
  base::DateTime DataQso;
  std::string Call, Manager, Country, Banda, Modo;
  bool sent = false, received = false;
  core::ContactCards cards;
  std::string reason;  // for which one is due
};

struct CardList {
  std::vector<ListedContact> contacts;  // newest first, at most kMost
  std::int64_t found = 0;
  static constexpr std::int64_t kMost = 100'000;
};

// The country of the own call, as the prefix table says.
std::string HomeCountry(core::Session& session);

// Nothing when the operator has stopped it. Modes are grouped as the session's rules say.
std::optional<CardList> ListCards(core::Session& session, const CardRules& rules,
                                  const worked::Rules& modes, const CardQuestion& question);

}  // namespace brenvo::print
