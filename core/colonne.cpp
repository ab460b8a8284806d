#include "core/colonne.h"

#include <algorithm>

namespace brenvo::core {

Colonne::Colonne(Session& session)
    : TableWindow(session, "Colonne", "Colonne della tabella", base::Twips(6600),
                  base::Twips(8400)) {
  ShowCommands({&cmCambia, &cmSu, &cmGiu, &cmConsuete, &cmApplica});
  DefaultCommand = &cmCambia;
}

void Colonne::Load() {
  TableWindow::Load();
  ShowTable(rows_, {"Colonna", "Mostrata"});
}

void Colonne::Give(std::vector<Column> columns) {
  columns_ = std::move(columns);
  chosen_.reset();
  Fill(std::nullopt);
}

void Colonne::Fill(std::optional<std::int64_t> key) {
  std::vector<MemoryRows::Row> rows;
  for (const Column& column : columns_) rows.push_back({column.heading, column.shown ? "Sì" : ""});
  rows_.SetRows(std::move(rows));
  ShowRows(key);
}

void Colonne::Toggle() {
  const auto key = ChosenKey();
  if (!key) return;
  Column& column = columns_[static_cast<std::size_t>(*key)];
  column.shown = !column.shown;
  Fill(key);
}

void Colonne::MoveBy(int places) {
  const auto key = ChosenKey();
  if (!key || *key + places < 0 || *key + places >= std::ssize(columns_)) return;
  std::swap(columns_[static_cast<std::size_t>(*key)],
            columns_[static_cast<std::size_t>(*key + places)]);
  Fill(*key + places);
}

void Colonne::TakeUsual() {
  std::sort(columns_.begin(), columns_.end(),
            [](const Column& a, const Column& b) { return a.field < b.field; });
  for (Column& column : columns_) column.shown = column.usual;
  Fill(std::nullopt);
}

void Colonne::Take() {
  if (std::none_of(columns_.begin(), columns_.end(),
                   [](const Column& each) { return each.shown; })) {
    Say("Almeno una colonna deve essere mostrata");
    return;
  }
  chosen_ = columns_;
  Close();
}

}  // namespace brenvo::core
