#include "frame/tasti.h"

#include <fmt/format.h>

#include <algorithm>

#include "key_page.h"

namespace brenvo::frame {

Tasti::Tasti(core::Session& session)
    : core::TableWindow(session, "Tasti", "Tasti", base::Twips(11400), base::Twips(6600)),
      keys_(session) {
  ShowCommands({&cmCambia, &cmUpdate, &cmPredefinito, &cmPrint});
  DefaultCommand = &cmCambia;
  Tasto.WritesKeys = true;
  Tasto.OnEnter = [this] { Store(Tasto.Text()); };
  for (forms::CheckBox* filter : {&SoloConTasto, &SoloCambiati}) {
    filter->OnChange = [this] { ShowOwners(Chosen()); };
  }
}

void Tasti::Load() {
  core::TableWindow::Load();
  owners_ = AllKeyOwners(session_);
  ShowTable(rows_, {"Finestra", "Comando", "Tasto", "Predefinito"});
  ShowOwners(nullptr);
}

// A row's key is its place among those that the filters let through.
void Tasti::ShowOwners(const KeyOwner* marked) {
  std::vector<core::MemoryRows::Row> rows;
  std::optional<std::int64_t> row;
  listed_.clear();
  for (std::size_t i = 0; i < owners_.size(); ++i) {
    const KeyOwner& owner = owners_[i];
    if (SoloConTasto.IsOn() && owner.key.empty()) continue;
    if (SoloCambiati.IsOn() && owner.key == owner.standard) continue;
    if (&owner == marked) row = std::ssize(listed_);
    listed_.push_back(i);
    rows.push_back({owner.place, owner.words, owner.key, owner.standard});
  }
  rows_.SetRows(std::move(rows));
  ShowRows(row);
}

const KeyOwner* Tasti::Chosen() {
  const auto key = ChosenKey();
  return key ? &owners_[listed_[static_cast<std::size_t>(*key)]] : nullptr;
}

void Tasti::RowChosen() {
  const KeyOwner* const owner = Chosen();
  Tasto.SetEnabled(owner != nullptr);
  Tasto.SetText(owner == nullptr ? "" : owner->key);
}

const KeyOwner* Tasti::RivalFor(const KeyOwner& owner, std::string_view key) const {
  const auto at = std::find_if(owners_.begin(), owners_.end(), [&](const KeyOwner& each) {
    return each.window == owner.window && each.command != owner.command && each.key == key;
  });
  return key.empty() || at == owners_.end() ? nullptr : &*at;
}

std::string Tasti::OtherUses(const KeyOwner& owner) const {
  if (owner.key.empty()) return {};
  const std::string& main = owners_.front().window;
  std::string places;
  for (const KeyOwner& each : owners_) {
    if (each.key != owner.key || each.window == owner.window) continue;
    if (owner.window != main && each.window == main) {
      return fmt::format("; davanti a tutte le altre finestre è ancora di {}", each.words);
    }
    if (owner.window == main) places += (places.empty() ? "" : ", ") + each.place;
  }
  return places.empty() ? "" : "; non quando è davanti " + places;
}

void Tasti::GoBack() { Store(Chosen()->standard); }

void Tasti::Store(std::string_view text) {
  const KeyOwner* const owner = Chosen();
  if (owner == nullptr) return;
  const std::optional<std::string> key = text.empty() ? std::string() : ReadKey(text);
  const std::string shown = key.value_or(std::string(text));
  std::string fault;
  if (!key || (!key->empty() && *key != owner->standard)) fault = FaultOfKey(shown);
  if (!fault.empty()) {
    Say(fmt::format("{} non va: {}", shown, fault));
    return;
  }
  if (const KeyOwner* const rival = RivalFor(*owner, *key)) {
    Say(fmt::format("{} è già di {}: prima va cambiato quello", *key, rival->words));
    return;
  }
  KeyOwner& changed = owners_[listed_[static_cast<std::size_t>(*ChosenKey())]];
  keys_.Set(changed, *key);
  changed.key = *key;
  const std::string words = changed.words;
  Say(key->empty() ? fmt::format("{}: nessun tasto", words)
                   : fmt::format("{}: {}{}", words, *key, OtherUses(changed)));
  ShowOwners(Chosen());
}

void Tasti::Print() {
  const forms::BusyPointer busy(Host());
  Say(fmt::format("Stampati {} tasti", PrintKeys(owners_, session_.Machine.GetPrinter())));
}

}  // namespace brenvo::frame
