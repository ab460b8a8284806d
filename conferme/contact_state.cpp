#include "contact_state.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "core/rows_beside.h"

namespace brenvo::conferme {

std::string DayText(base::DateTime day) {
  return fmt::format("{:04}{:02}{:02}", day.Year(), day.Month(), day.Day());
}

std::string_view FirstPlace(std::string_view places) { return places.substr(0, places.find(',')); }

bool AgreeOnPlace(std::string_view a, std::string_view b) {
  const std::size_t size = std::min(a.size(), b.size());
  return base::SameText(a.substr(0, size), b.substr(0, size));
}

bool IsInferred(std::string_view inferred, std::string_view what) {
  return fmt::format(" {} ", inferred).find(fmt::format(" {} ", what)) != std::string::npos;
}

std::vector<ContactState> StatesOf(core::Session& session, std::span<const std::int64_t> keys) {
  std::vector<ContactState> states(keys.size());
  core::SeeRowsBeside(
      session.Db, "Log",
      "DataQso,Call,Banda,Locator,Country,Provincia,[Zona CQ],[Zona ITU],Qrb,QslRicevuta", keys,
      [&](std::size_t place, engine::Recordset& row) {
        ContactState& state = states[place];
        const auto text = [&](std::size_t at) { return base::Trim(row.Field(at).Text()); };
        state.exists = true;
        state.when = row.Field(1).ReadableDate().value_or(base::DateTime());
        state.call = text(2);
        state.band = row.Field(3).Text();
        state.locator = text(4);
        state.country = text(5);
        state.province = text(6);
        state.zoneCq = row.Field(7).Number();
        state.zoneItu = row.Field(8).Number();
        state.distance = row.Field(9).Number();
        state.box = row.Field(10).ReadableBool().value_or(false);
      });
  core::SeeRowsBeside(session.Db, "LogAdif", "Campo,Valore", keys,
                      [&](std::size_t place, engine::Recordset& row) {
                        states[place].fields[base::UpperAscii(base::Trim(row.Field(1).Text()))] =
                            row.Field(2).Text();
                      });
  core::SeeRowsBeside(session.Db, "LogConferme", core::kConfirmationColumns, keys,
                      [&](std::size_t place, engine::Recordset& row) {
                        core::Confirmation told = core::ConfirmationOfRow(row, 1);
                        std::string service = told.service;
                        states[place].told[std::move(service)] = std::move(told);
                      });
  return states;
}

bool ContactWriter::SetField(std::int64_t key, ContactState& state, std::string_view field,
                             std::string_view value) {
  const auto [at, isNew] = state.fields.try_emplace(std::string(field), value);
  if (!isNew && at->second == value) return false;
  beside_.SetField(key, field, isNew ? std::nullopt : std::optional(at->second),
                   std::string(value));
  at->second = value;
  return true;
}

bool ContactWriter::Store(std::int64_t key, ContactState& state, const core::Confirmation& told) {
  const auto [at, isNew] = state.told.try_emplace(told.service, told);
  if (!isNew && at->second == told) return false;
  beside_.SetConfirmation(key, told.service, isNew ? std::nullopt : std::optional(at->second),
                          told);
  at->second = told;
  return true;
}

void ContactWriter::SetColumn(std::int64_t key, std::string_view column,
                              const engine::Value& value) {
  beside_.Touch(key);
  columns_[key].emplace_back(column, value);
}

void ContactWriter::Write() {
  beside_.Write();
  if (columns_.empty()) return;
  if (log_ == nullptr) log_ = session_.Db.OpenTable("Log");
  for (const auto& [key, columns] : columns_) {
    log_->SetBookmark({key});
    log_->Edit();
    for (const auto& [column, value] : columns) log_->Set(column, value);
    log_->Update();
  }
  columns_.clear();
}

}  // namespace brenvo::conferme
