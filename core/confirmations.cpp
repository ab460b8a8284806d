#include "core/confirmations.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "base/text.h"
#include "core/quoted.h"
#include "core/rows_beside.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kTable = "LogConferme";
// A card that has come by post makes it a card's box.
constexpr std::string_view kOfService =
    "Spunta and QsoNr not in (select QsoNr from LogQsl where Verso='R' and Via<>'E')";
constexpr char kBetween = '\t';
constexpr std::size_t kPieces = 11;

std::string WhereOf(std::int64_t qsoNr, std::string_view service) {
  return fmt::format(" where QsoNr={} and Servizio={}", qsoNr, Quoted(service));
}

int Whole(std::string_view text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

Confirmation ConfirmationOfRow(engine::Recordset& row, std::size_t first) {
  const auto text = [&](std::size_t at) { return base::Trim(row.Field(first + at).Text()); };
  const auto whole = [&](std::size_t at) {
    return static_cast<int>(row.Field(first + at).Integer());
  };
  const auto yes = [&](std::size_t at) {
    return row.Field(first + at).ReadableBool().value_or(false);
  };
  return {text(0),  text(1),  text(2), text(3), text(4), text(5),
          whole(6), whole(7), text(8), yes(9),  yes(10)};
}

std::optional<Confirmation> ConfirmationOf(engine::Database& database, std::int64_t qsoNr,
                                           std::string_view service) {
  const auto row = database.OpenSnapshot(
      fmt::format("select {} from {}{}", kConfirmationColumns, kTable, WhereOf(qsoNr, service)));
  if (row->EOF_()) return std::nullopt;
  return ConfirmationOfRow(*row, 0);
}

void StoreConfirmation(engine::Database& database, std::int64_t qsoNr, std::string_view service,
                       const std::optional<Confirmation>& confirmation) {
  database.Execute(fmt::format("delete * from {}{}", kTable, WhereOf(qsoNr, service)));
  if (!confirmation) return;
  const Confirmation& told = *confirmation;
  database.OpenAppender(kTable)->Append({qsoNr, service, told.record, told.locator, told.state,
                                         told.iota, told.mode, told.zoneCq, told.zoneItu,
                                         told.inferred, told.byHand, told.gaveBox});
}

bool IsBoxOfService(engine::Database& database, std::int64_t qsoNr) {
  return !database
              .OpenSnapshot(fmt::format("select QsoNr from LogConferme where QsoNr={} and {}",
                                        qsoNr, kOfService))
              ->EOF_();
}

std::vector<bool> BoxesOfServices(engine::Database& database, std::span<const std::int64_t> keys) {
  std::vector<bool> boxes(keys.size());
  SeeRowsBeside(database, kTable, "Spunta", keys, [&](std::size_t place, engine::Recordset& row) {
    if (row.Field(1).ReadableBool().value_or(false)) boxes[place] = true;
  });
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (boxes[i]) boxes[i] = IsBoxOfService(database, keys[i]);
  }
  return boxes;
}

std::string OnlyOfCards(engine::Database& database) {
  if (database.OpenSnapshot(fmt::format("select QsoNr from {} where Spunta", kTable))->EOF_()) {
    return {};
  }
  return fmt::format(" and QsoNr not in (select QsoNr from {} where {})", kTable, kOfService);
}

std::string TextOfConfirmation(const Confirmation& told) {
  const auto piece = [](std::string_view text) {
    std::string clean(text);
    for (char& c : clean) {
      if (static_cast<unsigned char>(c) < ' ') c = ' ';
    }
    return clean;
  };
  return fmt::format("{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}\t{}", piece(told.service),
                     piece(told.record), piece(told.locator), piece(told.state), piece(told.iota),
                     piece(told.mode), told.zoneCq, told.zoneItu, piece(told.inferred),
                     told.byHand ? 1 : 0, told.gaveBox ? 1 : 0);
}

std::optional<Confirmation> ConfirmationOfText(std::string_view text) {
  std::array<std::string, kPieces> pieces;
  std::size_t count = 0;
  for (;;) {
    const std::size_t end = std::min(text.find(kBetween), text.size());
    if (count == kPieces) return std::nullopt;
    pieces[count++] = text.substr(0, end);
    if (end == text.size()) break;
    text.remove_prefix(end + 1);
  }
  if (count != kPieces || pieces[0].empty()) return std::nullopt;
  return Confirmation{pieces[0], pieces[1],        pieces[2],        pieces[3],
                      pieces[4], pieces[5],        Whole(pieces[6]), Whole(pieces[7]),
                      pieces[8], pieces[9] == "1", pieces[10] == "1"};
}

}  // namespace brenvo::core
