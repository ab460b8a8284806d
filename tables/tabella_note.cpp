#include "tables/tabella_note.h"

#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "core/writing.h"

namespace brenvo::tables {
namespace {

constexpr std::string_view kSettingsKey = "Note";
constexpr std::string_view kRepeated = "Nota gia' caricata";
constexpr std::size_t kTypeWidth = 6, kKeyWidth = 5;

}  // namespace

TabellaNote::TabellaNote(core::Session& session)
    : forms::Window(session.Host(), "TabellaNote", "Tabella Note", base::Twips(7200),
                    base::Twips(5400)),
      session_(session) {
  CancelCommand = &cmExit;
  LBNote.OnClick = [this] {
    engine::Table* row = Chosen();
    if (row == nullptr) return;
    Codice.SetText(core::FieldText(*row, "TipoNota"));
    Nota.SetText(core::FieldText(*row, "Nota"));
  };
}

void TabellaNote::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  core::LoadNotes(session_, LBNote, "ALL");
}

void TabellaNote::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

engine::Table* TabellaNote::Chosen() {
  engine::Table& notes = *session_.Tables.TbNoteHelp;
  notes.Seek("=", {base::Left(LBNote.Text(), kKeyWidth), base::Mid(LBNote.Text(), kTypeWidth + 1)});
  return notes.NoMatch() ? nullptr : &notes;
}

bool TabellaNote::ValidateNote() const {
  return !core::IsEmptyField(Codice.Text()) && !core::IsEmptyField(Nota.Text());
}

void TabellaNote::Store() {
  engine::Table& row = *session_.Tables.TbNoteHelp;
  row.Set("TipoNota", Codice.Text());
  row.Set("Nota", Nota.Text());
  row.Update();
}

void TabellaNote::ReloadAndSelect() {
  core::LoadNotes(session_, LBNote, "ALL");
  const std::string entry = base::PadRight(Codice.Text(), kTypeWidth) + Nota.Text();
  core::SelectListEntry(LBNote, entry, base::Len(entry));
  Chosen();
}

void TabellaNote::Insert() {
  if (!ValidateNote()) return;
  const bool stored = core::TryWrite(session_, "Inserimento nota", kRepeated, [this] {
    session_.Tables.TbNoteHelp->AddNew();
    Store();
  });
  if (stored) Avviso.SetText("Nota inserita: " + core::Joined({Codice.Text(), Nota.Text()}));
  ReloadAndSelect();
}

void TabellaNote::Update() {
  if (!ValidateNote()) return;
  const bool stored = core::TryWrite(session_, "Aggiornamento nota", kRepeated, [this] {
    if (LBNote.ListIndex() >= 0) Chosen();
    session_.Tables.TbNoteHelp->Edit();
    Store();
  });
  if (stored) Avviso.SetText("Nota aggiornata: " + core::Joined({Codice.Text(), Nota.Text()}));
  ReloadAndSelect();
}

void TabellaNote::Delete() {
  engine::Table* row = Chosen();
  if (row == nullptr) return;
  const std::string deleted = base::Trim(LBNote.Text());
  row->Delete();
  LBNote.RemoveItem(LBNote.ListIndex());
  Avviso.SetText("Nota cancellata: " + deleted);
}

void TabellaNote::Leave() { Close(); }

}  // namespace brenvo::tables
