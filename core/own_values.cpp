#include "core/own_values.h"

namespace brenvo::core {
namespace {

std::unique_ptr<engine::Table> RowOfValue(engine::Database& database, std::string_view name) {
  auto rows = database.OpenTable("Valori");
  rows->SetIndex("PrimaryKey");
  rows->Seek(engine::SeekComparison::kEqual, {name});
  return rows;
}

}  // namespace

std::optional<std::string> OwnValue(engine::Database& database, std::string_view name) {
  const auto row = RowOfValue(database, name);
  return row->NoMatch() ? std::nullopt : std::optional(row->Field("Valore").Text());
}

void StoreOwnValue(engine::Database& database, std::string_view name,
                   const std::optional<std::string>& value) {
  const auto row = RowOfValue(database, name);
  if (!value) {
    if (!row->NoMatch()) row->Delete();
    return;
  }
  if (row->NoMatch()) {
    row->AddNew();
    row->Set("Nome", name);
  } else {
    row->Edit();
  }
  row->Set("Valore", *value);
  row->Update();
}

}  // namespace brenvo::core
