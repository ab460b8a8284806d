#include "adif/log_contact.h"

#include <cmath>

#include "base/number.h"

namespace brenvo::adif {
namespace {

template <class... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

}  // namespace

const std::vector<ContactColumn>& ContactColumns() {
  static const std::vector<ContactColumn> kColumns = {
      {"DataQso", "APP_BRENVO_DATAQSO", &LogContact::DataQso},
      {"Call", "APP_BRENVO_CALL", &LogContact::Call},
      {"Manager", "APP_BRENVO_MANAGER", &LogContact::Manager},
      {"Qra", "APP_BRENVO_QRA", &LogContact::Qra},
      {"Qth", "APP_BRENVO_QTH", &LogContact::Qth},
      {"Prefisso", "APP_BRENVO_PREFISSO", &LogContact::Prefisso},
      {"Zona CQ", "APP_BRENVO_ZONACQ", &LogContact::ZonaCQ},
      {"Zona ITU", "APP_BRENVO_ZONAITU", &LogContact::ZonaITU},
      {"Continente", "APP_BRENVO_CONTINENTE", &LogContact::Continente},
      {"Country", "APP_BRENVO_COUNTRY", &LogContact::Country},
      {"Provincia", "APP_BRENVO_PROVINCIA", &LogContact::Provincia},
      {"Locator", "APP_BRENVO_LOCATOR", &LogContact::Locator},
      {"Qrb", "APP_BRENVO_QRB", &LogContact::Qrb},
      {"Banda", "APP_BRENVO_BANDA", &LogContact::Banda},
      {"Frequenza", "APP_BRENVO_FREQUENZA", &LogContact::Frequenza},
      {"Potenza", "APP_BRENVO_POTENZA", &LogContact::Potenza},
      {"Modo", "APP_BRENVO_MODO", &LogContact::Modo},
      {"Propagazione", "APP_BRENVO_PROPAGAZIONE", &LogContact::Propagazione},
      {"QrkDato", "APP_BRENVO_QRKDATO", &LogContact::QrkDato},
      {"QrkRicevuto", "APP_BRENVO_QRKRICEVUTO", &LogContact::QrkRicevuto},
      {"QslDaInviare", "APP_BRENVO_QSLDAINVIARE", &LogContact::QslDaInviare},
      {"QslRicevuta", "APP_BRENVO_QSLRICEVUTA", &LogContact::QslRicevuta},
      {"QslInviata", "APP_BRENVO_QSLINVIATA", &LogContact::QslInviata},
      {"Note", "APP_BRENVO_NOTE", &LogContact::Note},
  };
  return kColumns;
}

std::string ColumnText(const LogContact& contact, const ContactColumn& column) {
  return std::visit(
      Overloaded{
          [&](base::DateTime LogContact::*member) { return base::IsoText(contact.*member); },
          [&](std::string LogContact::*member) { return contact.*member; },
          [&](double LogContact::*member) { return base::PlainNumber(contact.*member); },
          [&](bool LogContact::*member) { return std::string(contact.*member ? "Y" : "N"); }},
      column.member);
}

void SetColumnText(LogContact& contact, const ContactColumn& column, std::string_view text) {
  std::visit(Overloaded{[&](base::DateTime LogContact::*member) {
                          if (const auto date = base::ParseIso(text)) contact.*member = *date;
                        },
                        [&](std::string LogContact::*member) { contact.*member = text; },
                        [&](double LogContact::*member) { contact.*member = base::Val(text); },
                        [&](bool LogContact::*member) { contact.*member = text == "Y"; }},
             column.member);
}

bool IsColumnEmpty(const LogContact& contact, const ContactColumn& column) {
  return std::visit(
      Overloaded{[&](base::DateTime LogContact::*) { return false; },
                 [&](std::string LogContact::*member) { return (contact.*member).empty(); },
                 [&](double LogContact::*member) { return contact.*member == 0; },
                 [&](bool LogContact::*member) { return !(contact.*member); }},
      column.member);
}

const ContactColumn* ColumnTooSmall(const LogContact& contact) {
  constexpr double kLargestWhole = 9.2e18;  // of 64 bits, with room for rounding
  constexpr int kFirstYear = 100, kLastYear = 9999;
  const auto holds = Overloaded{[&](base::DateTime LogContact::*member) {
                                  const int year = (contact.*member).Year();
                                  return year >= kFirstYear && year <= kLastYear;
                                },
                                [&](double LogContact::*member) {
                                  const double value = std::fabs(contact.*member);
                                  return member == &LogContact::Frequenza ? std::isfinite(value)
                                                                          : value < kLargestWhole;
                                },
                                [](const auto&) { return true; }};
  for (const ContactColumn& column : ContactColumns()) {
    if (!std::visit(holds, column.member)) return &column;
  }
  return nullptr;
}

LogContact ReadContact(engine::Recordset& row) {
  LogContact contact;
  std::size_t at = 0;
  for (const ContactColumn& column : ContactColumns()) {
    const engine::Value value = row.Field(++at);  // QsoNr stands first
    if (value.IsNull()) continue;
    // What another tool has made unreadable counts as Null.
    std::visit(Overloaded{[&](base::DateTime LogContact::*member) {
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

void WriteColumn(engine::EditableRecordset& row, const LogContact& contact,
                 const ContactColumn& column) {
  std::visit([&](auto member) { row.Set(column.column, contact.*member); }, column.member);
}

std::vector<engine::Value> RowOf(const LogContact& contact) {
  std::vector<engine::Value> row;
  row.reserve(ContactColumns().size());
  for (const ContactColumn& column : ContactColumns()) {
    std::visit([&](auto member) { row.emplace_back(contact.*member); }, column.member);
  }
  return row;
}

}  // namespace brenvo::adif
