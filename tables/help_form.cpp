#include "tables/help_form.h"

#include "core/modules.h"

namespace brenvo {
namespace {

constexpr std::string_view kSettingsKey = "Help";

}  // namespace

HelpForm::HelpForm(Session& session)
    : Window(session.Host(), "Help", "NoteHelp", Twips(6000), Twips(4800)), session_(session) {
  LBTipoNote.SetCaption("Tipo");
  LBNote.SetCaption("Nota");
  cmExit.Icon = "cmExit";
  cmExit.Tip = "Chiude la finestra Help";
  cmExit.OnClick = [this] { Close(); };
  CancelCommand = &cmExit;
  LBTipoNote.OnDoubleClick = [this] {
    if (LBTipoNote.ListIndex() >= 0) LoadNotes(session_, LBNote, LBTipoNote.Text());
  };
  LBNote.OnDoubleClick = [this] {
    if (LBNote.ListIndex() < 0) return;
    session_.NoteChoice = "[" + LBNote.Text() + "]";
    Close();
  };
  const std::pair<Field*, std::string_view> hints[] = {
      {&LBTipoNote, "Doppio click per gli elementi"},
      {&LBNote, "Doppio click per riportare la nota nel Log"},
      {&cmExit, "Chiude la finestra Help"}};
  for (const auto& [field, text] : hints) {
    field->OnHover = [this, text = text] { StatusBar1.SetPanel(1, text); };
  }
}

void HelpForm::Load() {
  RestoreWindow(session_, *this, kSettingsKey);
  LoadNotes(session_, LBTipoNote, "TIPO");
}

void HelpForm::Unload() { SaveWindow(session_, *this, kSettingsKey); }

}  // namespace brenvo
