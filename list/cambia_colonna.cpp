#include "list/cambia_colonna.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "change_column.h"
#include "contact_rows.h"
#include "core/lists.h"

namespace brenvo::list {

CambiaColonna::CambiaColonna(core::Session& session)
    : core::TableWindow(session, "CambiaColonna", "Cambia una colonna", base::Twips(9600),
                        base::Twips(7200)) {
  ShowCommands({&cmCambia});
  Colonna.OnChange = [this] {
    ShowValues();
    ShowPreview();
  };
  Valore.OnChange = [this] { ShowPreview(); };
}

void CambiaColonna::Load() {
  core::TableWindow::Load();
  ShowTable(rows_, {"Qso", "Call", "Prima", "Dopo"});
}

void CambiaColonna::Give(ContactRows& rows, std::vector<std::int64_t> keys) {
  contacts_ = &rows;
  keys_ = std::move(keys);
  done_.reset();
  std::vector<std::string> names;
  for (const ContactColumn& column : rows.Columns()) {
    if (column.log != nullptr) names.push_back(column.heading);
  }
  Colonna.SetItems(std::move(names));
  Colonna.SetText(core::column::kNote);
  ShowValues();
  ShowPreview();
}

const core::LogColumn& CambiaColonna::Column() const { return core::LogColumnOf(Colonna.Text()); }

void CambiaColonna::ShowValues() {
  Valore.Clear();
  const std::string name = Colonna.Text();
  if (name.empty()) return;
  if (name == core::column::kBanda) {
    core::LoadBands(session_, Valore);
  } else if (name == core::column::kModo) {
    core::LoadModes(session_, Valore);
  } else if (name == core::column::kPropagazione) {
    core::LoadPropagations(session_, Valore);
  } else if (Column().Holds<bool>()) {
    Valore.SetItems({"Sì", "No"});
  }
  Valore.HoldText("");
}

std::string CambiaColonna::Value() const {
  const std::string wanted = base::Trim(Valore.Text());
  for (const std::string& item : Valore.Items()) {
    if (base::SameText(base::Trim(item), wanted)) return item;
  }
  return Valore.Text();
}

void CambiaColonna::ShowPreview() {
  changing_.clear();
  std::vector<core::MemoryRows::Row> preview;
  if (contacts_ != nullptr && !Colonna.Text().empty()) {
    const NewValue value = ParseValue(Column(), Value());
    Say(value.fault);
    if (value.fault.empty()) {
      changing_ = contacts_->WithOther(Column(), keys_, value.shown);
      for (const std::int64_t key : changing_) {
        if (preview.size() == kMostShown) break;
        if (const core::LogContact* contact = contacts_->Cells().Contact(key)) {
          preview.push_back(
              {std::to_string(key), contact->Call, ShownText(*contact, Column()), value.shown});
        }
      }
    }
  }
  Quanti.SetText(fmt::format("Cambiano {} Qso di {}", changing_.size(), keys_.size()));
  rows_.SetRows(std::move(preview));
  ShowRows(std::nullopt);
}

void CambiaColonna::Change() {
  const NewValue value = ParseValue(Column(), Value());
  const std::string what = fmt::format("{}: {}", Colonna.Text(),
                                       value.shown.empty() ? "vuoto" : base::Trim(value.shown));
  const std::vector<std::int64_t> keys = changing_;
  switch (ChangeColumn(session_, what, keys, Column(), value.value)) {
    case Changed::kAll:
      done_ = fmt::format("{} in {} Qso", what, keys.size());
      Close();
      return;
    case Changed::kRepeats:
      Say("Due contatti avrebbero la stessa data, call e banda: nulla è cambiato");
      return;
    case Changed::kStopped:
      Say("Interrotto: nulla è cambiato");
      return;
  }
}

}  // namespace brenvo::list
