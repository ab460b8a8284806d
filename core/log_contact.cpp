#include "core/log_contact.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/match.h"
#include "base/number.h"

namespace brenvo::core {
std::span<const LogColumn> LogColumns() {
  static constexpr LogColumn kColumns[] = {
      {column::kDataQso, &LogContact::DataQso},
      {column::kCall, &LogContact::Call},
      {column::kManager, &LogContact::Manager},
      {column::kQra, &LogContact::Qra},
      {column::kQth, &LogContact::Qth},
      {column::kPrefisso, &LogContact::Prefisso},
      {column::kZonaCQ, &LogContact::ZonaCQ},
      {column::kZonaITU, &LogContact::ZonaITU},
      {column::kContinente, &LogContact::Continente},
      {column::kCountry, &LogContact::Country},
      {column::kProvincia, &LogContact::Provincia},
      {column::kLocator, &LogContact::Locator},
      {column::kQrb, &LogContact::Qrb},
      {column::kBanda, &LogContact::Banda},
      {column::kFrequenza, &LogContact::Frequenza},
      {column::kPotenza, &LogContact::Potenza},
      {column::kModo, &LogContact::Modo},
      {column::kPropagazione, &LogContact::Propagazione},
      {column::kQrkDato, &LogContact::QrkDato},
      {column::kQrkRicevuto, &LogContact::QrkRicevuto},
      {column::kQslDaInviare, &LogContact::QslDaInviare},
      {column::kQslRicevuta, &LogContact::QslRicevuta},
      {column::kQslInviata, &LogContact::QslInviata},
      {column::kNote, &LogContact::Note},
  };
  return kColumns;
}

const LogColumn& LogColumnOf(std::string_view name) {
  const auto at = std::ranges::find(LogColumns(), name, &LogColumn::name);
  if (at == LogColumns().end()) throw std::logic_error("no column " + std::string(name));
  return *at;
}

std::string ColumnText(const LogContact& contact, const LogColumn& column) {
  return std::visit(
      base::Match{
          [&](base::DateTime LogContact::*member) { return base::IsoText(contact.*member); },
          [&](std::string LogContact::*member) { return contact.*member; },
          [&](double LogContact::*member) { return base::PlainNumber(contact.*member); },
          [&](bool LogContact::*member) { return std::string(contact.*member ? "Y" : "N"); }},
      column.member);
}

void SetColumnText(LogContact& contact, const LogColumn& column, std::string_view text) {
  std::visit(base::Match{[&](base::DateTime LogContact::*member) {
                           if (const auto date = base::ParseIso(text)) contact.*member = *date;
                         },
                         [&](std::string LogContact::*member) { contact.*member = text; },
                         [&](double LogContact::*member) { contact.*member = base::Val(text); },
                         [&](bool LogContact::*member) { contact.*member = text == "Y"; }},
             column.member);
}

bool IsColumnEmpty(const LogContact& contact, const LogColumn& column) {
  return std::visit(
      base::Match{[&](base::DateTime LogContact::*) { return false; },
                  [&](std::string LogContact::*member) { return (contact.*member).empty(); },
                  [&](double LogContact::*member) { return contact.*member == 0; },
                  [&](bool LogContact::*member) { return !(contact.*member); }},
      column.member);
}

const LogColumn* ColumnTooSmall(const LogContact& contact) {
  constexpr double kLargestWhole = 9.2e18;  // of 64 bits, with room for rounding
  constexpr int kFirstYear = 100, kLastYear = 9999;
  const auto holds = base::Match{[&](base::DateTime LogContact::*member) {
                                   const int year = (contact.*member).Year();
                                   return year >= kFirstYear && year <= kLastYear;
                                 },
                                 [&](double LogContact::*member) {
                                   const double value = std::fabs(contact.*member);
                                   return member == &LogContact::Frequenza ? std::isfinite(value)
                                                                           : value < kLargestWhole;
                                 },
                                 [](const auto&) { return true; }};
  for (const LogColumn& column : LogColumns()) {
    if (!std::visit(holds, column.member)) return &column;
  }
  return nullptr;
}

namespace {

// `valueAt` gives the column at a place of the table, QsoNr standing at 0.
template <class ValueAt>
LogContact Read(ValueAt valueAt) {
  LogContact contact;
  std::size_t at = 0;
  for (const LogColumn& column : LogColumns()) {
    const engine::Value value = valueAt(++at);
    if (value.IsNull()) continue;
    // What another tool has made unreadable counts as Null.
    std::visit(base::Match{[&](base::DateTime LogContact::*member) {
                             contact.*member = value.ReadableDate().value_or(base::DateTime());
                           },
                           [&](std::string LogContact::*member) { contact.*member = value.Text(); },
                           [&](double LogContact::*member) { contact.*member = value.Number(); },
                           [&](bool LogContact::*member) {
                             contact.*member = value.ReadableBool().value_or(false);
                           }},
               column.member);
  }
  return contact;
}

}  // namespace

LogContact ReadContact(engine::Recordset& row) {
  return Read([&](std::size_t at) { return row.Field(at); });
}

LogContact ContactOf(std::span<const engine::Value> row) {
  return Read([&](std::size_t at) { return row[at]; });
}

void WriteColumn(engine::EditableRecordset& row, const LogContact& contact,
                 const LogColumn& column) {
  std::visit([&](auto member) { row.Set(column.name, contact.*member); }, column.member);
}

std::vector<engine::Value> RowOf(const LogContact& contact) {
  std::vector<engine::Value> row;
  row.reserve(LogColumns().size());
  for (const LogColumn& column : LogColumns()) {
    std::visit([&](auto member) { row.emplace_back(contact.*member); }, column.member);
  }
  return row;
}

}  // namespace brenvo::core
