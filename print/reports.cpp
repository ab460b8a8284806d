#include "print/reports.h"

#include <optional>

#include "base/text.h"
#include "core/entry_key.h"
#include "core/note_tag.h"
#include "core/session.h"
#include "core/shared_windows.h"
#include "core/texts.h"

namespace brenvo::print {
namespace {

struct Selection {
  std::string where;
  std::string_view layout;
};

// Nullopt when the operator cancels, or there is no dialog to ask him with.
std::optional<Selection> AskSelection(core::Session& session, std::string_view word) {
  auto* dialog = static_cast<core::SelectionWindow*>(session.Windows.LoadSingle("StatSel"));
  if (dialog == nullptr) return std::nullopt;
  dialog->Tag = word;
  dialog->OfferLayouts();
  session.Windows.ShowModal(*dialog);
  const std::optional<std::string> where = dialog->Chosen();
  const std::string_view layout = dialog->IsVertical() ? "\\logv.rpt" : "\\logo.rpt";
  session.Windows.Unload(*dialog);
  if (!where) return std::nullopt;
  return Selection{*where, layout};
}

void FillSLog(core::Session& session, std::string_view where, std::string_view order) {
  session.Db.Execute("DELETE FROM SLog");
  session.Db.Execute("INSERT INTO SLog SELECT * FROM Log " + std::string(where) +
                     std::string(order));
}

// Of rows with one key the first stays.
void Thin(core::Session& session, std::string_view select, std::string_view column, int length) {
  const auto rows = session.Db.OpenDynaset(select);
  std::string previous;
  for (; !rows->EOF_(); rows->MoveNext()) {
    std::string key = core::FieldText(*rows, column);
    if (length > 0) key = base::Left(key, static_cast<std::size_t>(length));
    key = core::ComparedKey(key);
    if (key == previous) {
      rows->Delete();
    } else {
      previous = key;
    }
  }
}

// Leaves of each note the tag that begins with the word; a note without one goes.
void CutNotes(core::Session& session, std::string_view word) {
  const auto rows = session.Db.OpenDynaset("SELECT Note,QslRicevuta FROM SLog");
  for (; !rows->EOF_(); rows->MoveNext()) {
    const auto tag = core::NoteTag(core::FieldText(*rows, "Note"), word);
    if (!tag) {
      rows->Delete();
      continue;
    }
    rows->Edit();
    rows->Set("Note", *tag);
    rows->Update();
  }
}

}  // namespace

const std::vector<ReportMember>& ReportMembers() {
  static const std::vector<ReportMember> kMembers = {
      {&frame::MainFrame::cmPLog, "PLOG", "", " ORDER BY DataQso", ""},
      // The word is that of the zone report.
      {&frame::MainFrame::cmPSquare, "ZONE", "Locator<>''", " ORDER BY Locator", "Locator", 4},
      {&frame::MainFrame::cmPPrefissi, "PREFISSO", "Prefisso<>''", " ORDER BY Prefisso",
       "Prefisso"},
      {&frame::MainFrame::cmPContinenti, "CONTINENTE", "Continente<>''", " ORDER BY Continente",
       "Continente"},
      {&frame::MainFrame::cmPZone, "ZONE", "[Zona CQ]<>0", " ORDER BY [Zona CQ]", "Zona CQ"},
      {&frame::MainFrame::cmPCountry, "COUNTRY", "Country<>''", " ORDER BY Country,QslRicevuta",
       "Country"},
      {&frame::MainFrame::cmPProvincie, "PROVINCIE", "Provincia<>''", " ORDER BY Provincia",
       "Provincia"},
      {&frame::MainFrame::cmPNote, "NOTE", "", " ORDER BY Note", "Note"},
  };
  return kMembers;
}

std::string AddCondition(std::string_view where, std::string_view condition) {
  if (condition.empty()) return std::string(where);
  return (where.empty() ? std::string("WHERE ") : std::string(where) + " AND ") +
         std::string(condition);
}

void PrintReport(core::Session& session, const ReportMember& member) {
  const std::optional<Selection> selection = AskSelection(session, member.word);
  if (!selection) return;
  const forms::BusyPointer busy(session.Host());
  if (member.command == &frame::MainFrame::cmPLog) session.Handed.QueryText = selection->where;
  FillSLog(session, AddCondition(selection->where, member.extra), member.insertOrder);
  if (member.command == &frame::MainFrame::cmPNote)
    CutNotes(session, core::NoteWords(selection->where));
  if (!member.key.empty()) {
    const std::string columns =
        member.command == &frame::MainFrame::cmPNote ? "Note,QslRicevuta" : "*";
    const std::string key = base::InStr(member.key, " ") > 0 ? "[" + std::string(member.key) + "]"
                                                             : std::string(member.key);
    Thin(session, "SELECT " + columns + " FROM SLog ORDER BY " + key + ",QslRicevuta", member.key,
         member.keyLength);
  }
  session.Machine.Reports().Print(session.File(selection->layout));
}

}  // namespace brenvo::print
