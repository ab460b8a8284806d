#include "adif/store_record.h"

#include <vector>

#include "adif/record_to_contact.h"
#include "adif/repeated_contacts.h"
#include "contact_to_fields.h"
#include "core/contact_door.h"
#include "core/transaction.h"
#include "kept_fields.h"
#include "missing_bands.h"
#include "record_origin.h"
#include "record_storing.h"

namespace brenvo::adif {
namespace {

// True when there was something to fill.
bool Complete(core::Session& session, engine::Table& row, const MappedRecord& mapped) {
  bool completed = false;
  const std::int64_t qsoNr = row.Field("QsoNr").Integer();
  if (mapped.country && !core::EntityKeptOf(session.Db, qsoNr).told) {
    core::Transaction transaction(session.Db);
    core::KeepToldEntity(session.Db, qsoNr, mapped.country);
    transaction.Commit();
    completed = true;
  }
  const core::LogContact& contact = mapped.contact;
  const auto empty = ColumnsToFill(core::ReadContact(row), contact);
  if (empty.empty()) return completed;
  session.Contacts.Change(core::ContactTable::kLog, row, [&](engine::EditableRecordset& filled) {
    for (const core::LogColumn* column : empty) core::WriteColumn(filled, contact, *column);
  });
  return true;
}

}  // namespace

StoredRecord StoreRecord(core::Session& session, const AdifRecord& record, std::string_view name) {
  StationTables tables(session);
  MappedRecord mapped;
  MapColumns(record, {}, tables, mapped);
  StoredRecord stored;
  stored.contact = mapped.contact;
  stored.refusal = mapped.refusal;
  if (!stored.refusal.empty()) return stored;
  RepeatedInLog repeated(session);
  const Placement placement = repeated.Find(mapped.contact);
  if (placement.kind == Placement::Kind::kFull) {
    stored.refusal = "nel minuto non c'è più un secondo libero";
    return stored;
  }
  if (placement.kind == Placement::Kind::kRepeated) {
    stored.kind = StoredRecord::Kind::kRepeated;
    stored.qsoNr = repeated.Row().Field("QsoNr").Integer();
    stored.completed = Complete(session, repeated.Row(), mapped);
    return stored;
  }
  const base::DateTime told = mapped.contact.DataQso;
  mapped.contact.DataQso = AtSecond(told, placement.second);
  MapRest(record, ColumnFields(mapped.contact, tables), mapped);
  if (mapped.contact.DataQso != told) KeepTime(mapped, tables.Times().ToUtc(told));
  RecordOrigins origins(session);
  const std::string own = origins.UuidOf(record);
  const std::int64_t station = origins.StationOf(record, mapped.contact.DataQso);
  const auto rows = session.Db.OpenTable("Log");
  session.Contacts.Add(
      core::ContactTable::kLog, *rows,
      [&](engine::EditableRecordset& row) {
        for (const core::LogColumn& column : core::LogColumns()) {
          core::WriteColumn(row, mapped.contact, column);
        }
      },
      [&](std::int64_t key) {
        stored.qsoNr = key;
        KeptFields(session.Db).Add(key, mapped.kept);
        KeepEntity(*session.Db.OpenAppender("EntitaQso"), key, mapped);
      },
      {own.empty() ? name : std::string_view(own), station});
  stored.kind = StoredRecord::Kind::kNew;
  stored.contact = mapped.contact;
  AddMissingBands(session, {mapped.contact.Banda});
  return stored;
}

StoredRecord CompleteFromRecord(core::Session& session, const AdifRecord& record,
                                std::int64_t qsoNr) {
  StationTables tables(session);
  MappedRecord mapped;
  MapColumns(record, {}, tables, mapped);
  StoredRecord stored;
  stored.contact = mapped.contact;
  stored.refusal = mapped.refusal;
  if (!stored.refusal.empty()) return stored;
  const auto row = session.Db.OpenTable("Log");
  row->SetBookmark({qsoNr});
  stored.kind = StoredRecord::Kind::kRepeated;
  stored.qsoNr = qsoNr;
  stored.completed = Complete(session, *row, mapped);
  return stored;
}

void AddMissingBands(core::Session& session, const std::set<std::string>& bands) {
  const std::set<std::string> missing = MissingBands(session, bands);
  for (const std::string& banda : missing) AddBand(session, banda);
  if (!missing.empty()) session.Station.ProfileStored();
}

}  // namespace brenvo::adif
