#include "contact_state.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/history.h"
#include "core/quoted.h"
#include "core/rows_beside.h"

namespace brenvo::conferme {

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
  session_.Contacts.Past().KeepField(key, field);
  if (isNew) {
    if (fields_ == nullptr) fields_ = session_.Db.OpenAppender("LogAdif");
    fields_->Append({key, field, value});
  } else {
    at->second = value;
    session_.Db.Execute(fmt::format("update LogAdif set Valore={} where QsoNr={} and Campo={}",
                                    core::Quoted(value), key, core::Quoted(field)));
  }
  return true;
}

bool ContactWriter::Store(std::int64_t key, ContactState& state, const core::Confirmation& told) {
  const auto [at, isNew] = state.told.try_emplace(told.service, told);
  if (!isNew && at->second == told) return false;
  session_.Contacts.Past().KeepConfirmation(key, told.service);
  core::StoreConfirmation(session_.Db, key, told.service, told);
  at->second = told;
  return true;
}

void ContactWriter::SetColumns(std::int64_t key, std::string_view columns) {
  session_.Contacts.Past().Keep(key);
  session_.Db.Execute(fmt::format("update Log set {} where QsoNr={}", columns, key));
}

}  // namespace brenvo::conferme
