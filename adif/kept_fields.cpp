#include "kept_fields.h"

#include <algorithm>

#include "core/rows_beside.h"

namespace brenvo::adif {

KeptFields::KeptFields(engine::Database& database)
    : database_(database), table_(database.OpenTable(kTable)), new_(database.OpenAppender(kTable)) {
  table_->SetIndex("PrimaryKey");
}

std::vector<AdifField> KeptFields::Of(std::int64_t qsoNr) {
  std::vector<AdifField> fields;
  table_->Seek(engine::SeekComparison::kGreaterOrEqual, {qsoNr});
  if (table_->NoMatch()) return fields;
  for (; !table_->EOF_() && table_->Field("QsoNr").Integer() == qsoNr; table_->MoveNext()) {
    fields.push_back({table_->Field("Campo").Text(), table_->Field("Valore").Text()});
  }
  return fields;
}

std::vector<std::vector<AdifField>> KeptFields::OfEach(std::span<const std::int64_t> keys) {
  std::vector<std::vector<AdifField>> fields(keys.size());
  core::SeeRowsBeside(database_, kTable, "Campo,Valore", keys,
                      [&](std::size_t place, engine::Recordset& row) {
                        fields[place].push_back({row.Field(1).Text(), row.Field(2).Text()});
                      });
  return fields;
}

void KeptFields::Add(std::int64_t qsoNr, const std::vector<AdifField>& fields) {
  for (const AdifField& field : fields) new_->Append({qsoNr, field.name, field.value});
}

std::vector<AdifField> KeptFields::MissingOf(std::int64_t qsoNr,
                                             const std::vector<AdifField>& fields) {
  const std::vector<AdifField> present = Of(qsoNr);
  std::vector<AdifField> missing;
  for (const AdifField& field : fields) {
    const bool there = std::any_of(present.begin(), present.end(),
                                   [&](const AdifField& each) { return each.name == field.name; });
    if (!there) missing.push_back(field);
  }
  return missing;
}

}  // namespace brenvo::adif
