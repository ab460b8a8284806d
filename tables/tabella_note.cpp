#include "tables/tabella_note.h"

#include "base/text.h"
#include "core/modules.h"

namespace brenvo {
namespace {

constexpr std::string_view kSettingsKey = "Note";
constexpr std::string_view kRepeated = "Nota gia' caricata";
constexpr std::size_t kTypeWidth = 6, kKeyWidth = 5;

}  // namespace

TabellaNote::TabellaNote(Session& session)
    : Window(session.Host(), "TabellaNote", "Tabella Note", Twips(7200), Twips(5400)),
      session_(session) {
  CancelCommand = &cmExit;
  LBNote.OnClick = [this] {
    if (!SeekChosen()) return;
    Codice.SetText(FieldText(*session_.TbNoteHelp, "TipoNota"));
    Nota.SetText(FieldText(*session_.TbNoteHelp, "Nota"));
  };
}

void TabellaNote::Load() {
  RestoreWindow(session_, *this, kSettingsKey);
  LoadNotes(session_, LBNote, "ALL");
}

void TabellaNote::Unload() { SaveWindow(session_, *this, kSettingsKey); }

bool TabellaNote::SeekChosen() {
  session_.TbNoteHelp->Seek("=",
                            {Left(LBNote.Text(), kKeyWidth), Mid(LBNote.Text(), kTypeWidth + 1)});
  return !session_.TbNoteHelp->NoMatch();
}

bool TabellaNote::ValidateNote() const {
  return !IsEmptyField(Codice.Text()) && !IsEmptyField(Nota.Text());
}

void TabellaNote::Store() {
  Table& row = *session_.TbNoteHelp;
  row.Set("TipoNota", Codice.Text());
  row.Set("Nota", Nota.Text());
  row.Update();
}

void TabellaNote::ReloadAndSelect() {
  LoadNotes(session_, LBNote, "ALL");
  const std::string entry = PadRight(Codice.Text(), kTypeWidth) + Nota.Text();
  SelectListEntry(LBNote, entry, Len(entry));
  SeekChosen();
}

void TabellaNote::Insert() {
  if (!ValidateNote()) return;
  TryWrite(session_, "Inserimento nota", kRepeated, [this] {
    session_.TbNoteHelp->AddNew();
    Store();
  });
  ReloadAndSelect();
}

void TabellaNote::Update() {
  if (!ValidateNote()) return;
  TryWrite(session_, "Aggiornamento nota", kRepeated, [this] {
    session_.TbNoteHelp->Edit();
    Store();
  });
  ReloadAndSelect();
}

void TabellaNote::Delete() {
  if (!SeekChosen()) return;
  session_.TbNoteHelp->Delete();
  LBNote.RemoveItem(LBNote.ListIndex());
}

void TabellaNote::Leave() { Close(); }

}  // namespace brenvo
