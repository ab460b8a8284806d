#include "note_staging.h"

#include "core/note_tag.h"
#include "core/session.h"
#include "core/texts.h"
#include "core/transaction.h"

namespace brenvo::awards {

std::string StageNotes(core::Session& session, std::string_view selection) {
  engine::Database& db = session.Db;
  db.Execute("DELETE FROM SNote");
  // One write to the disk for all rows.
  core::Transaction transaction(db);
  db.Execute("INSERT INTO SNote SELECT Note,QslRicevuta FROM Log " + std::string(selection));
  std::string words = core::NoteWords(selection);
  const auto notes = db.OpenDynaset("SELECT * FROM SNote");
  for (; !notes->EOF_(); notes->MoveNext()) {
    const auto tag = core::NoteTag(core::FieldText(*notes, "Note"), words);
    if (!tag) {
      notes->Delete();
      continue;
    }
    notes->Edit();
    notes->Set("Note", *tag);
    notes->Update();
  }
  notes->Close();
  transaction.Commit();
  return words;
}

}  // namespace brenvo::awards
