#include "tables/help_form.h"

#include "core/modules.h"

namespace brenvo {
namespace {

constexpr std::string_view kSettingsKey = "Help";

}  // namespace

HelpForm::HelpForm(Session& session)
    : Window(session.Host(), "Help", "NoteHelp", Twips(6000), Twips(4800)), session_(session) {
  CancelCommand = &cmExit;
  LBTipoNote.OnDoubleClick = [this] {
    if (LBTipoNote.ListIndex() >= 0) LoadNotes(session_, LBNote, LBTipoNote.Text());
  };
  LBNote.OnDoubleClick = [this] {
    if (LBNote.ListIndex() < 0) return;
    session_.NoteChoice = "[" + LBNote.Text() + "]";
    Close();
  };
}

void HelpForm::Load() {
  RestoreWindow(session_, *this, kSettingsKey);
  LoadNotes(session_, LBTipoNote, "TIPO");
}

void HelpForm::Unload() { SaveWindow(session_, *this, kSettingsKey); }

}  // namespace brenvo
