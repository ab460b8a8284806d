#include "contact_columns.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/match.h"
#include "base/number.h"
#include "core/contact_origin.h"
#include "core/qsl_cards.h"
#include "core/stations.h"

namespace brenvo::list {
namespace {

namespace column = core::column;
using core::ColumnKind;

// What an operator looks for in a list stands first, and is shown where nobody has chosen.
constexpr std::string_view kUsual[] = {
    column::kDataQso,     column::kCall,        column::kBanda,        column::kModo,
    column::kQrkDato,     column::kQrkRicevuto, column::kQra,          column::kQth,
    column::kLocator,     column::kCountry,     column::kQslDaInviare, column::kQslInviata,
    column::kQslRicevuta, column::kNote};

// Beyond so many contacts those seen are dropped.
constexpr std::size_t kMostCells = 2000;

ColumnKind KindOf(const core::LogColumn& column) {
  if (column.Holds<base::DateTime>()) return ColumnKind::kDate;
  if (column.Holds<double>()) return ColumnKind::kNumber;
  return column.Holds<bool>() ? ColumnKind::kYesNo : ColumnKind::kText;
}

ContactColumn Of(const core::LogColumn& column, bool shown) {
  return {ContactColumn::Source::kLog, std::string(column.name), KindOf(column), shown, &column};
}

}  // namespace

std::vector<ContactColumn> ContactColumns() {
  using enum ContactColumn::Source;
  std::vector<ContactColumn> columns;
  for (const std::string_view name : kUsual) columns.push_back(Of(core::LogColumnOf(name), true));
  for (const core::LogColumn& column : core::LogColumns()) {
    if (std::ranges::find(kUsual, column.name) == std::end(kUsual)) {
      columns.push_back(Of(column, false));
    }
  }
  columns.push_back({kNumber, std::string(column::kQsoNr), ColumnKind::kNumber, false, nullptr});
  columns.push_back({kStation, "Stazione", ColumnKind::kText, false, nullptr});
  columns.push_back({kUuid, "Uuid", ColumnKind::kText, false, nullptr});
  columns.push_back({kSentCards, "Qsl inviate", ColumnKind::kText, false, nullptr});
  columns.push_back({kReceivedCards, "Qsl ricevute", ColumnKind::kText, false, nullptr});
  return columns;
}

ContactColumn KeptColumn(std::string_view field) {
  return {ContactColumn::Source::kKept, std::string(field), ColumnKind::kText, false, nullptr};
}

std::vector<core::TableColumn> TableColumnsOf(const std::vector<ContactColumn>& columns) {
  std::vector<core::TableColumn> table;
  for (const ContactColumn& each : columns) {
    table.push_back({each.heading, each.kind, each.shown, {}});
  }
  return table;
}

std::string ShownDate(base::DateTime date) {
  std::string text =
      fmt::format("{} {:02}:{:02}", base::DateText(date), date.Hour(), date.Minute());
  if (date.Second() != 0) text += fmt::format(":{:02}", date.Second());
  return text;
}

std::string ShownText(const core::LogContact& contact, const core::LogColumn& column) {
  return std::visit(
      base::Match{
          [&](base::DateTime core::LogContact::*member) { return ShownDate(contact.*member); },
          [&](std::string core::LogContact::*member) { return contact.*member; },
          [&](double core::LogContact::*member) {
            return contact.*member == 0 ? std::string() : base::PlainNumber(contact.*member);
          },
          [&](bool core::LogContact::*member) {
            return std::string(contact.*member ? "Sì" : "No");
          }},
      column.member);
}

ContactCells::Cells& ContactCells::Of(std::int64_t qsoNr) {
  if (const auto at = cells_.find(qsoNr); at != cells_.end()) return at->second;
  if (cells_.size() >= kMostCells) cells_.clear();
  Cells& cells = cells_[qsoNr];
  if (log_ == nullptr) log_ = session_.Db.OpenTable("Log");
  try {
    log_->SetBookmark({qsoNr});
    cells.contact = core::ReadContact(*log_);
    cells.there = true;
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kRecordDeleted) {
      cells_.erase(qsoNr);
      throw;
    }
  }
  return cells;
}

const core::LogContact* ContactCells::Contact(std::int64_t qsoNr) {
  const Cells& cells = Of(qsoNr);
  return cells.there ? &cells.contact : nullptr;
}

const std::string& ContactCells::StationName(std::int64_t number) {
  if (stations_.empty()) {
    for (const core::StationRow& each : core::AllStations(session_.Db)) {
      stations_[each.Stazione] = each.Nome;
    }
  }
  return stations_[number];
}

void ContactCells::ReadBeside(std::int64_t qsoNr, Cells& cells) {
  cells.hasBeside = true;
  if (const auto origin = core::OriginOf(session_.Db, qsoNr)) {
    cells.station = StationName(origin->station);
    cells.uuid = origin->uuid;
  }
  using enum core::CardSide;
  cells.sent = core::ShownCards(core::CardsOf(session_.Db, qsoNr, kSent));
  cells.received = core::ShownCards(core::CardsOf(session_.Db, qsoNr, kReceived));
  const auto rows = session_.Db.OpenSnapshot(
      fmt::format("Select Campo,Valore from LogAdif where QsoNr={}", qsoNr));
  for (; !rows->EOF_(); rows->MoveNext()) {
    cells.kept[rows->Field(std::size_t{0}).Text()] = rows->Field(std::size_t{1}).Text();
  }
}

std::string ContactCells::Text(std::int64_t qsoNr, const ContactColumn& column) {
  Cells& cells = Of(qsoNr);
  if (!cells.there) return {};
  using enum ContactColumn::Source;
  if (column.source == kNumber) return std::to_string(qsoNr);
  if (column.source == kLog) return ShownText(cells.contact, *column.log);
  if (!cells.hasBeside) ReadBeside(qsoNr, cells);
  if (column.source == kStation) return cells.station;
  if (column.source == kUuid) return cells.uuid;
  if (column.source == kSentCards) return cells.sent;
  if (column.source == kReceivedCards) return cells.received;
  const auto at = cells.kept.find(column.heading);
  return at == cells.kept.end() ? std::string() : at->second;
}

void ContactCells::ForgetAll() {
  cells_.clear();
  stations_.clear();
}

void ContactCells::Close() {
  ForgetAll();
  log_.reset();
}

}  // namespace brenvo::list
