#include "tables/help_form.h"

#include "core/lists.h"
#include "core/window_place.h"

namespace brenvo::tables {
namespace {

constexpr std::string_view kSettingsKey = "Help";

}  // namespace

HelpForm::HelpForm(core::Session& session)
    : core::NotePicker(session.Host(), "Help", "NoteHelp", base::Twips(6000), base::Twips(4800)),
      session_(session) {
  CancelCommand = &cmExit;
  LBTipoNote.OnDoubleClick = [this] {
    if (LBTipoNote.ListIndex() >= 0) core::LoadNotes(session_, LBNote, LBTipoNote.Text());
  };
  LBNote.OnDoubleClick = [this] {
    if (LBNote.ListIndex() < 0) return;
    NoteChoice = "[" + LBNote.Text() + "]";
    Close();
  };
}

void HelpForm::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  core::LoadNotes(session_, LBTipoNote, "TIPO");
}

void HelpForm::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

}  // namespace brenvo::tables
