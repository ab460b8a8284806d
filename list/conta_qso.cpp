#include "list/conta_qso.h"

#include <fmt/format.h>

#include "base/text.h"
#include "contact_rows.h"

namespace brenvo::list {

using core::ColumnKind;

ContaQso::ContaQso(core::Session& session)
    : core::ArrangedWindow(session, "ContaQso", "Conta i contatti", base::Twips(7200),
                           base::Twips(8400)) {
  ShowCommands({&cmMostra});
  DefaultCommand = &cmMostra;
  Colonna.OnChange = [this] { Count(); };
}

void ContaQso::Load() {
  core::ArrangedWindow::Load();
  ArrangeTable(rows_, {{"Valore"}, {"Qso", ColumnKind::kNumber}, {"%", ColumnKind::kNumber}});
}

void ContaQso::Give(ContactRows& rows, std::vector<std::int64_t> keys, std::size_t field) {
  contacts_ = &rows;
  keys_ = std::move(keys);
  chosen_.reset();
  std::vector<std::string> names;
  for (const ContactColumn& column : rows.Columns()) names.push_back(column.heading);
  Colonna.SetItems(std::move(names));
  Colonna.SetListIndex(static_cast<int>(field));
}

std::size_t ContaQso::Field() const { return static_cast<std::size_t>(Colonna.ListIndex()); }

void ContaQso::Count() {
  texts_.clear();
  std::vector<core::MemoryRows::Row> rows;
  if (contacts_ != nullptr && Colonna.ListIndex() >= 0) {
    for (const ContactRows::Count& each : contacts_->CountBy(Field(), keys_)) {
      texts_.push_back(each.text);
      rows.push_back({each.text.empty() ? "(vuoto)" : each.text, std::to_string(each.contacts),
                      fmt::format("{:.1f}", 100.0 * static_cast<double>(each.contacts) /
                                                static_cast<double>(keys_.size()))});
    }
  }
  Say(fmt::format("{} Qso, {} valori", keys_.size(), texts_.size()));
  rows_.SetRows(std::move(rows));
  ShowRows(std::nullopt);
}

void ContaQso::Take() {
  const auto key = ChosenKey();
  if (!key) return;
  const std::string& text = texts_[static_cast<std::size_t>(*key)];
  const bool isDate = contacts_->Columns()[Field()].kind == ColumnKind::kDate;
  chosen_.emplace(Field(), (isDate && !text.empty() ? "" : "=") + base::Trim(text));
  Close();
}

}  // namespace brenvo::list
