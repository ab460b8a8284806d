#include "core/qsl_cards.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "core/history.h"
#include "core/long_run.h"
#include "core/rows_beside.h"
#include "core/session.h"
#include "core/transaction.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kTable = "LogQsl";
constexpr std::size_t kDateLetters = 10;  // "2001-02-03"

constexpr CardWayFacts kWays[] = {
    {CardWay::kUnknown, "", ""},        {CardWay::kBureau, "B", "bureau"},
    {CardWay::kDirect, "D", "diretta"}, {CardWay::kManager, "M", "manager"},
    {CardWay::kOqrs, "O", "OQRS"},      {CardWay::kElectronic, "E", "elettronica"},
};

bool ChangeCards(Session& session, std::string_view title, const std::vector<std::int64_t>& keys,
                 CardSide side, std::string_view columns, const std::optional<QslCard>& card) {
  const auto change = [&] {
    Transaction transaction(session);
    for (const std::int64_t qsoNr : keys) {
      const std::string where = fmt::format(" WHERE QsoNr={}", qsoNr);
      if (session.Db.OpenSnapshot("SELECT QsoNr FROM Log" + where)->EOF_()) continue;
      session.Contacts.Past().KeepCards(qsoNr, side);
      session.Db.Execute(fmt::format("UPDATE Log SET {}{}", columns, where));
      QslCards cards;
      if (card) {
        cards = CardsOf(session.Db, qsoNr, side);
        std::erase_if(cards, [&](const QslCard& each) { return each.way == card->way; });
        cards.insert(std::ranges::upper_bound(cards, card->way, {}, &QslCard::way), *card);
      }
      StoreCards(session.Db, qsoNr, side, cards);
    }
    transaction.Commit();
  };
  return session.Contacts.ChangeMany(title, {ContactTable::kLog}, [&] {
    return RunLongStatements(session, title, "Interrotto: il log è rimasto com'era.", change);
  });
}

}  // namespace

std::span<const CardWayFacts> CardWays() { return kWays; }

std::string_view LetterOf(CardSide side) { return side == CardSide::kSent ? "I" : "R"; }

std::optional<QslCard> CardOfRow(std::string_view letter, std::optional<base::DateTime> day) {
  const auto way = CardWayOf(base::Trim(letter));
  if (!way) return std::nullopt;
  return QslCard{*way, day ? std::optional(day->DatePart()) : std::nullopt};
}

std::string ShownCard(const QslCard& card) {
  std::string text(FactsOf(card.way).name);
  if (card.day) text += (text.empty() ? "" : " ") + base::DateText(*card.day);
  return text;
}

std::string ShownCards(const QslCards& cards) {
  std::string text;
  for (const QslCard& card : cards) {
    const std::string one = ShownCard(card);
    if (!one.empty()) text += (text.empty() ? "" : ", ") + one;
  }
  return text;
}

std::optional<CardWay> CardWayOf(std::string_view letter) {
  const auto at = std::ranges::find(kWays, base::UpperAscii(letter), &CardWayFacts::letter);
  return at == std::end(kWays) ? std::nullopt : std::optional(at->way);
}

const QslCard* LatestCard(const QslCards& cards) {
  const QslCard* latest = nullptr;
  for (const QslCard& each : cards) {
    if (latest == nullptr || each.day >= latest->day) latest = &each;
  }
  return latest;
}

std::string TextOfCards(const QslCards& cards) {
  std::string text;
  for (const QslCard& each : cards) {
    if (!text.empty()) text += "; ";
    const std::string_view letter = FactsOf(each.way).letter;
    text += letter.empty() ? "-" : letter;
    if (each.day) text += ' ' + base::IsoText(*each.day).substr(0, kDateLetters);
  }
  return text;
}

std::optional<QslCards> CardsOfText(std::string_view text) {
  QslCards cards;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string piece = base::Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::size_t blank = std::min(piece.find(' '), piece.size());
    const std::string letter = piece.substr(0, blank);
    const auto way = letter == "-" ? CardWay::kUnknown : CardWayOf(letter);
    if (letter.empty() || !way || (!cards.empty() && cards.back().way >= *way)) return std::nullopt;
    QslCard card{*way, std::nullopt};
    if (blank < piece.size()) {
      card.day = base::ParseIso(base::Trim(std::string_view(piece).substr(blank)));
      if (!card.day || card.day->TimePart() != base::DateTime()) return std::nullopt;
    }
    cards.push_back(card);
  }
  return cards;
}

namespace {

std::optional<QslCard> CardIn(const engine::Value& way, const engine::Value& day) {
  return CardOfRow(way.Text(), day.IsNull() ? std::nullopt : day.ReadableDate());
}

void AddRow(ContactCards& cards, const engine::Value& side, const engine::Value& way,
            const engine::Value& day) {
  const auto card = CardIn(way, day);
  if (!card) return;
  const std::string letter = base::UpperAscii(base::Trim(side.Text()));
  if (letter == LetterOf(CardSide::kSent)) cards.sent.push_back(*card);
  if (letter == LetterOf(CardSide::kReceived)) cards.received.push_back(*card);
}

void SortByWay(ContactCards& cards) {
  std::ranges::sort(cards.sent, {}, &QslCard::way);
  std::ranges::sort(cards.received, {}, &QslCard::way);
}

void Append(engine::RowAppender& rows, std::int64_t qsoNr, CardSide side, const QslCards& cards) {
  for (const QslCard& each : cards) {
    rows.Append({qsoNr, LetterOf(side), FactsOf(each.way).letter,
                 each.day ? engine::Value(*each.day) : engine::Value()});
  }
}

}  // namespace

QslCards CardsOf(engine::Database& database, std::int64_t qsoNr, CardSide side) {
  const auto rows = database.OpenSnapshot(fmt::format(
      "Select Via,Data from {} where QsoNr={} and Verso='{}'", kTable, qsoNr, LetterOf(side)));
  QslCards cards;
  for (; !rows->EOF_(); rows->MoveNext()) {
    if (const auto card = CardIn(rows->Field(std::size_t{0}), rows->Field(1))) {
      cards.push_back(*card);
    }
  }
  std::ranges::sort(cards, {}, &QslCard::way);
  return cards;
}

void StoreCards(engine::Database& database, std::int64_t qsoNr, CardSide side,
                const QslCards& cards) {
  database.Execute(
      fmt::format("Delete * from {} where QsoNr={} and Verso='{}'", kTable, qsoNr, LetterOf(side)));
  if (cards.empty()) return;
  Append(*database.OpenAppender(kTable), qsoNr, side, cards);
}

CardTable::CardTable(engine::Database& database)
    : database_(database), rows_(database.OpenTable(kTable)), new_(database.OpenAppender(kTable)) {
  rows_->SetIndex("PrimaryKey");
}

ContactCards CardTable::Of(std::int64_t qsoNr) {
  ContactCards cards;
  rows_->Seek(engine::SeekComparison::kGreaterOrEqual, {qsoNr});
  if (rows_->NoMatch()) return cards;
  for (; !rows_->EOF_() && rows_->Field("QsoNr").Integer() == qsoNr; rows_->MoveNext()) {
    AddRow(cards, rows_->Field("Verso"), rows_->Field("Via"), rows_->Field("Data"));
  }
  SortByWay(cards);
  return cards;
}

std::vector<ContactCards> CardTable::OfEach(std::span<const std::int64_t> keys) {
  std::vector<ContactCards> cards(keys.size());
  SeeRowsBeside(database_, kTable, "Verso,Via,Data", keys,
                [&](std::size_t place, engine::Recordset& row) {
                  AddRow(cards[place], row.Field(1), row.Field(2), row.Field(3));
                });
  std::ranges::for_each(cards, SortByWay);
  return cards;
}

void CardTable::Add(std::int64_t qsoNr, CardSide side, const QslCards& cards) {
  Append(*new_, qsoNr, side, cards);
}

bool MarkCards(Session& session, std::string_view title, const std::vector<std::int64_t>& keys,
               CardSide side, const QslCard& card) {
  return ChangeCards(
      session, title, keys, side,
      side == CardSide::kSent ? "QslInviata=True,QslDaInviare=False" : "QslRicevuta=True", card);
}

bool ForgetCards(Session& session, std::string_view title, const std::vector<std::int64_t>& keys,
                 CardSide side) {
  return ChangeCards(session, title, keys, side,
                     side == CardSide::kSent ? "QslInviata=False" : "QslRicevuta=False",
                     std::nullopt);
}

}  // namespace brenvo::core
