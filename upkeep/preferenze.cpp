#include "upkeep/preferenze.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/match.h"

namespace brenvo::upkeep {
namespace {

using core::Preferences;

// What Enter makes of a value: the one behind it. Nothing where it has to be written.
std::optional<std::string> ValueBehind(const core::Choice& choice, const std::string& value) {
  return std::visit(
      base::Match{[&](const core::YesNoKind&) -> std::optional<std::string> {
                    return value == "Sì" ? "No" : "Sì";
                  },
                  [&](const core::WordKind& kind) -> std::optional<std::string> {
                    const auto at = std::find(kind.words.begin(), kind.words.end(), value);
                    const auto next = static_cast<std::size_t>(at - kind.words.begin()) + 1;
                    return std::string(kind.words[next % kind.words.size()]);
                  },
                  [](const auto&) { return std::optional<std::string>(); }},
      choice.kind);
}

std::vector<std::string> WordsFor(const core::Choice& choice) {
  return std::visit(base::Match{[](const core::YesNoKind&) {
                                  return std::vector<std::string>{"Sì", "No"};
                                },
                                [](const core::WordKind& kind) {
                                  return std::vector<std::string>(kind.words.begin(),
                                                                  kind.words.end());
                                },
                                [](const auto&) { return std::vector<std::string>(); }},
                    choice.kind);
}

}  // namespace

Preferenze::Preferenze(core::Session& session)
    : core::TableWindow(session, "Preferenze", "Preferenze", base::Twips(11400),
                        base::Twips(6600)) {
  ShowCommands({&cmCambia, &cmUpdate, &cmPredefinito});
  DefaultCommand = &cmCambia;
  SoloCambiate.OnChange = [this] {
    FillTable();
    ShowRows(std::nullopt);
  };
  Valore.OnEnter = [this] { Store(Valore.Text()); };
  Valore.OnClick = [this] { Store(Valore.Text()); };
  changed_ = session.Choices.Changed.Subscribe([this](const core::Choice&) {
    const core::Choice* const marked = Chosen();
    FillTable();
    const auto at = std::find(listed_.begin(), listed_.end(), marked);
    ShowRows(at == listed_.end() ? std::nullopt : std::optional(at - listed_.begin()));
  });
}

void Preferenze::Load() {
  core::TableWindow::Load();
  FillTable();
  ShowTable(rows_, {"Sezione", "Scelta", "Valore", "Predefinito", "Che cosa fa"});
}

void Preferenze::FillTable() {
  std::vector<core::MemoryRows::Row> rows;
  listed_.clear();
  for (const core::Choice* choice : core::AllChoices()) {
    const std::string value = session_.Choices.Text(*choice);
    const std::string standard = Preferences::StandardText(*choice);
    if (SoloCambiate.IsOn() && value == standard) continue;
    listed_.push_back(choice);
    rows.push_back({std::string(choice->section), std::string(choice->name), value, standard,
                    std::string(choice->what)});
  }
  rows_.SetRows(std::move(rows));
}

const core::Choice* Preferenze::Chosen() {
  const auto key = ChosenKey();
  return key ? listed_[static_cast<std::size_t>(*key)] : nullptr;
}

void Preferenze::RowChosen() { ShowValue(); }

void Preferenze::ShowValue() {
  const core::Choice* const choice = Chosen();
  Spiegazione.SetText(choice == nullptr ? "" : choice->what);
  Valore.SetEnabled(choice != nullptr);
  Valore.SetItems(choice == nullptr ? std::vector<std::string>() : WordsFor(*choice));
  Valore.SetText(choice == nullptr ? "" : session_.Choices.Text(*choice));
}

bool Preferenze::TableKey(char32_t key) {
  if (key != U' ' || Chosen() == nullptr) return false;
  Change();
  return true;
}

void Preferenze::Change() {
  const core::Choice* const choice = Chosen();
  if (const auto next = ValueBehind(*choice, session_.Choices.Text(*choice))) {
    Store(*next);
  } else {
    Host().MoveFocus(Valore);
  }
}

void Preferenze::GoBack() { Store(Preferences::StandardText(*Chosen())); }

void Preferenze::Store(std::string_view text) {
  const core::Choice* const choice = Chosen();
  if (choice == nullptr) return;
  const std::string fault = session_.Choices.Set(*choice, text);
  if (!fault.empty()) {
    Say(fmt::format("{} non cambia: {}", choice->name, fault));
    return;
  }
  const std::string value = session_.Choices.Text(*choice);
  Valore.SetText(value);
  Say(fmt::format("{}: {}", choice->name, value.empty() ? "vuoto" : value));
}

}  // namespace brenvo::upkeep
