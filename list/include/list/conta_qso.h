// Contacts counted by what a column says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/arranged_window.h"
#include "forms/list_field.h"

namespace brenvo::list {

class ContactRows;

// Modal, by the name "ContaQso"; the list gives it its contacts.
class ContaQso : public core::ArrangedWindow {
 public:
  explicit ContaQso(core::Session& session);
  void Load() override;

  // The rows outlive the dialog.
  void Give(ContactRows& rows, std::vector<std::int64_t> keys, std::size_t field);
  // The column and the filter that shows the chosen ones; nothing where none were.
  const std::optional<std::pair<std::size_t, std::string>>& Chosen() const { return chosen_; }

  forms::ListField Colonna{
      *this, "Colonna", forms::ListStyle::kDropDown, {.caption = "Conta per", .characters = 16}};
  core::TableGrid Tabella{*this, {.hint = "Invio mostra nell'elenco quelli della riga"}};
  forms::Command cmMostra{*this,
                          "cmMostra",
                          "Mostra questi",
                          {.tip = "Mostra nell'elenco solo i contatti della riga scelta",
                           .run = [this] { Take(); },
                           .enabled = [this] { return ChosenKey().has_value(); }}};

 private:
  void Count();
  void Take();
  std::size_t Field() const;

  ContactRows* contacts_ = nullptr;
  std::vector<std::int64_t> keys_;
  core::MemoryRows rows_;
  std::vector<std::string> texts_;  // a row each, by its key
  std::optional<std::pair<std::size_t, std::string>> chosen_;
};

}  // namespace brenvo::list
