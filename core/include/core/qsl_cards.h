// The cards of contacts, sent and received, by which way and on which day: table LogQsl. It stands
// beside the columns QslInviata and QslRicevuta, which may be set where no card is known: other
// programs, and whoever has kept no account, set them alone.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "engine/database.h"

namespace brenvo::core {

class Session;

enum class CardSide : std::uint8_t { kSent, kReceived };

enum class CardWay : std::uint8_t {
  kUnknown,
  kBureau,
  kDirect,
  kManager,
  kOqrs,  // asked for on line; the card itself comes by post
  kElectronic,
};
struct CardWayFacts {
  CardWay way;
  std::string_view letter;  // in the table: empty for the unknown one
  std::string_view name;    // for the operator: "bureau"
};
// In the order of CardWay.
std::span<const CardWayFacts> CardWays();
inline const CardWayFacts& FactsOf(CardWay way) {
  return CardWays()[static_cast<std::size_t>(way)];
}
// By its letter, of either case; nothing for one that is none.
std::optional<CardWay> CardWayOf(std::string_view letter);

struct QslCard {
  CardWay way = CardWay::kUnknown;
  std::optional<base::DateTime> day;  // at midnight; nothing where it is not known
  friend bool operator==(const QslCard&, const QslCard&) = default;
};
// Of one contact and side: each way once, by rising ways.
using QslCards = std::vector<QslCard>;

// Of one contact.
struct ContactCards {
  QslCards sent, received;
  QslCards& Of(CardSide side) { return side == CardSide::kSent ? sent : received; }
  const QslCards& Of(CardSide side) const { return side == CardSide::kSent ? sent : received; }
  friend bool operator==(const ContactCards&, const ContactCards&) = default;
};

// The one of the latest day, of equal ones the last; null where there is none.
const QslCard* LatestCard(const QslCards& cards);
// "B 2001-02-03; D": as the history and files hold them. Empty for none.
std::string TextOfCards(const QslCards& cards);
// Nothing for a text that is not of this form.
std::optional<QslCards> CardsOfText(std::string_view text);

// "bureau 03/02/2001, diretta": for the operator. Empty where nothing is known but that there is
// one.
std::string ShownCard(const QslCard& card);
std::string ShownCards(const QslCards& cards);

// A row of the table as a card of it; nothing for one of a way that another version knows.
std::optional<QslCard> CardOfRow(std::string_view letter, std::optional<base::DateTime> day);
// The letter of a side in the table.
std::string_view LetterOf(CardSide side);

QslCards CardsOf(engine::Database& database, std::int64_t qsoNr, CardSide side);
// In place of those that there are; the contact's own columns stay. Whoever changes the cards of a
// contact that stands in the log keeps them in the history before (History::KeepCards).
void StoreCards(engine::Database& database, std::int64_t qsoNr, CardSide side,
                const QslCards& cards);

// The same for many contacts, one after another.
class CardTable {
 public:
  explicit CardTable(engine::Database& database);
  ContactCards Of(std::int64_t qsoNr);
  // The same of many contacts, in the order of their numbers.
  std::vector<ContactCards> OfEach(std::span<const std::int64_t> keys);
  // Of a contact that has none of this side.
  void Add(std::int64_t qsoNr, CardSide side, const QslCards& cards);

 private:
  engine::Database& database_;
  std::unique_ptr<engine::Table> rows_;
  std::unique_ptr<engine::RowAppender> new_;
};

// Each contact has sent or got this card, in place of one by the same way, and the column of that
// side says so; one that went out is not to be sent any more. All contacts or none, as one work of
// that title. False when the operator has stopped it, which he is told.
bool MarkCards(Session& session, std::string_view title, const std::vector<std::int64_t>& keys,
               CardSide side, const QslCard& card);
// The same the other way round: no card of that side, and its column says no.
bool ForgetCards(Session& session, std::string_view title, const std::vector<std::int64_t>& keys,
                 CardSide side);

}  // namespace brenvo::core
