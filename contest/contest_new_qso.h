// The entry of one contest contact.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/data_source.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// Its caller sets Data1 and Operation, and shows it. Enter goes from field to field and stores the
// contact from the last one, or goes to what is still missing.
class ContestNewQso : public Window {
 public:
  explicit ContestNewQso(Session& session);

  void Load() override;
  void Activate() override;
  void Unload() override;

  TextField CallQso{*this, "CallQso"};
  TextField QrkD{*this, "QrkD"};
  TextField QrkR{*this, "QrkR"};
  TextField ProgrR{*this, "ProgrR"};
  TextField Locator{*this, "Locator"};
  TextField Exc{*this, "Exc"};
  TextField Note{*this, "Note"};
  TextField Giorno{*this, "Giorno"};
  MaskedField Qtr{*this, "Qtr", "##:##"};
  TextField ProgrD{*this, "ProgrD"};
  TextField Modo{*this, "Modo"};
  CheckBox Qsl{*this, "Qsl"};
  CheckBox InLog{*this, "InLog"};
  TextField Qrb{*this, "Qrb"};              // km
  TextField Operation{*this, "Operation"};  // "I" a new contact, "U" a change of the current row
  Command cmInsertR{*this, "cmInsertR", "Inserisci e &resta"};
  Command cmInsertE{*this, "cmInsertE", "&Inserisci ed esci"};
  Command cmQtr{*this, "cmQtr", "Qtr"};

  // The rows of the log's own grid.
  DataSource* Data1 = nullptr;
  // They have been read anew.
  std::function<void()> OnStored;

  // The serial handed out last; 0 before the first.
  std::int64_t UltimoProgr = 0;

  // The only writer of contest contacts. A refused contact is told, and nothing more: neither
  // caller stops for it.
  void InsertQso();

 private:
  struct Refusal {
    std::string_view text;
    TextField* field;
  };

  void HangInEvents();
  void ChainEnter();
  void Prepare();
  void PrepareNew();
  void ShowRow();
  void ShowTime();
  void OnCallLeave();
  void OnLocatorLeave();
  void EnterOnLastField();
  std::optional<Refusal> FindRefusal();
  // The first serial of another contact with this call.
  std::optional<std::string> DuplicateSerial();
  void StoreRow(double punti, std::string_view note);

  Session& session_;
  ContestContext contest_;
};

}  // namespace brenvo
