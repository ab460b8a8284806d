#include "core/station_notes.h"

#include "base/text.h"
#include "core/call_forms.h"
#include "core/texts.h"

namespace brenvo::core {
namespace {

std::unique_ptr<engine::Table> NoteOf(engine::Database& database, const std::string& call) {
  auto notes = database.OpenTable("NoteStazioni");
  notes->SetIndex("PrimaryKey");
  notes->Seek(engine::SeekComparison::kEqual, {call});
  return notes;
}

}  // namespace

std::string StationNote(engine::Database& database, std::string_view call) {
  const auto note = NoteOf(database, BaseCall(call));
  return note->NoMatch() ? std::string() : FieldText(*note, "Nota");
}

void StoreStationNote(engine::Database& database, std::string_view call, std::string_view note) {
  const std::string base = BaseCall(call), text = base::Trim(note);
  if (base.empty()) return;
  const auto present = NoteOf(database, base);
  if (text.empty()) {
    if (!present->NoMatch()) present->Delete();
    return;
  }
  present->NoMatch() ? present->AddNew() : present->Edit();
  present->Set("Call", base);
  present->Set("Nota", text);
  present->Update();
}

}  // namespace brenvo::core
