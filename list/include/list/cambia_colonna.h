// One column of the marked contacts changed, looked at before.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/log_contact.h"
#include "core/table_window.h"
#include "forms/list_field.h"

namespace brenvo::list {

class ContactRows;

// Modal, by the name "CambiaColonna"; the list gives it its contacts.
class CambiaColonna : public core::TableWindow {
 public:
  explicit CambiaColonna(core::Session& session);
  void Load() override;

  // The rows outlive the dialog.
  void Give(ContactRows& rows, std::vector<std::int64_t> keys);
  // What was done, in words for the operator; nothing when nothing was.
  const std::optional<std::string>& Done() const { return done_; }

  forms::ListField Colonna{
      *this, "Colonna", forms::ListStyle::kDropDown, {.caption = "Colonna", .characters = 16}};
  forms::ListField Valore{
      *this,
      "Valore",
      forms::ListStyle::kCombo,
      {.caption = "Nuovo valore", .hint = "Vuoto toglie quello che c'è", .characters = 30}};
  // Of those that change, the first ones: as they are and as they will be.
  static constexpr std::size_t kMostShown = 200;
  core::TableGrid Tabella{*this, {.hint = "I primi contatti che cambiano, prima e dopo"}};
  // How many change.
  forms::Label Quanti{*this, "Quanti"};
  forms::Command cmCambia{*this,
                          "cmCambia",
                          "Cambia",
                          {.tip = "Scrive il nuovo valore in tutti questi contatti",
                           .shortcut = kStoreKey,
                           .run = [this] { Change(); },
                           .enabled = [this] { return !changing_.empty(); }}};

 private:
  const core::LogColumn& Column() const;
  void ShowValues();
  void ShowPreview();
  // As it stands in the list of values, where it has one; else as it is written.
  std::string Value() const;
  void Change();

  ContactRows* contacts_ = nullptr;
  std::vector<std::int64_t> keys_, changing_;
  core::MemoryRows rows_;
  std::optional<std::string> done_;
};

}  // namespace brenvo::list
