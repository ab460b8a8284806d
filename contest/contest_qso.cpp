#include "contest/contest_qso.h"

#include <algorithm>

#include "contact.h"
#include "contest/check_call_contest.h"
#include "contest/contest_new_qso.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "transfer.h"

namespace brenvo::contest {
namespace {

std::string ShortTime(const std::string& text) {
  const auto time = base::ParseTime(text);
  return time ? core::HourMinute(*time) : text;
}

struct GridColumn {
  std::string_view heading, column;
  std::string (*format)(const std::string&) = nullptr;
};

constexpr GridColumn kColumns[] = {
    {"Giorno", "Giorno"},
    {"Qtr", "Qtr", ShortTime},
    {"Call", "Call"},
    {"Qrk Dato", "QrkDato"},
    {"Progr Dato", "ProgrDato"},
    {"Qrk Ricevuto", "QrkRicevuto"},
    {"Progr Ricevuto", "ProgrRicevuto"},
    {"Locator", "Locator"},
    {"Qrb", "Qrb"},
    {"Punti", "Punti"},
    {"Modo", "Modo"},
    {"Qsl", "Qsl", core::YesNo},
    {"In Log", "InLog", core::YesNo},
    {"Note", "Note"},
};

}  // namespace

std::string ContactRows::CellText(std::int64_t row, std::size_t field) {
  try {
    return core::DataSource::CellText(row, field);
  } catch (const engine::DatabaseError&) {
    return {};
  }
}

void ContactRows::DeleteRow(std::int64_t row) {
  try {
    core::DataSource::DeleteRow(row);
  } catch (const engine::DatabaseError&) {
  }
}

void ContactRows::DeleteCurrent() {
  session_.Contacts.Delete(core::ContactTable::kContestQso, *Rows());
}

ContestQso::ContestQso(core::Session& session)
    : forms::Window(session.Host(), "ContestQso", "Contest Qso - ", base::Twips(12000),
                    base::Twips(6000)),
      Data1(session),
      session_(session),
      autoCall_(session, cmAutoCall) {
  QC.SetSource(&Data1);
  QC.OnDoubleClick = [this] {
    if (Data1.AtEnd() || QC.Row() < 1 || QC.Row() > Data1.RowCount()) return;
    Data1.Rows()->SetBookmark(Data1.Rows()->BookmarkAt(QC.Row() - 1));
    OpenEntry("U");
  };
  // Rows can be deleted here, but are written by the entry alone.
  QC.Editable = true;
  QC.DeletesOnly = true;
  QC.OnBeforeEdit = [](std::int64_t, int, std::string&) { return false; };
  QC.OnBeforeDelete = [this](std::int64_t) {
    return session_.Messages().AskYesNo("Contest", "Confermi cancellazione Qso ?");
  };
}

ContestQso::~ContestQso() = default;

void ContestQso::Load() {
  contest_ = session_.Handed.CurrentContest;
  SetCaption("Contest Qso - " + contest_.Nome);
  Data1.RecordSource = "SELECT * FROM [Contest Qso]" +
                       OfContest(contest_.DataContest, contest_.Banda) + " order by ProgrDato";
  try {
    Data1.Refresh();
    SetUpGrid();
    ShowLastRow();
  } catch (const engine::DatabaseError&) {
    // Data errors of the grid are not told.
  }
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kContestQso && change.Many()) Data1.Renew(QC);
  });
  core::RestoreWindow(session_, *this, "ContestQso");
  autoCall_.Load();
}

void ContestQso::SetUpGrid() {
  const std::vector<std::string>& names = Data1.Rows()->Columns();
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const GridColumn& each : kColumns) {
    const auto at = std::find(names.begin(), names.end(), each.column);
    columns.push_back({std::string(each.heading), static_cast<std::size_t>(at - names.begin()),
                       forms::kOwnSize, each.format});
  }
  QC.SetColumnsOf(std::move(columns));
}

void ContestQso::ShowLastRow() {
  if (Data1.RowCount() == 0) return;
  Data1.Rows()->MoveLast();
  QC.SetCurrent(Data1.RowCount(), 0);
}

void ContestQso::Unload() {
  changes_ = {};
  core::SaveWindow(session_, *this, "ContestQso");
  // A contest whose rows cannot be read has none to offer, and must not hold the window open.
  if (Data1.Rows() != nullptr &&
      HasContactsForLog(session_, contest_.DataContest, contest_.Banda) &&
      session_.Messages().AskYesNo("", "Vuoi inserire i qso nel Log ?")) {
    TransferToLog(session_, contest_.DataContest, contest_.Banda);
  }
  if (forms::Window* check = session_.Windows.Find("CheckCallContest"))
    session_.Windows.Unload(*check);
  autoCall_.Stop();
  Data1.Close();
}

void ContestQso::WriteBack() {
  session_.Handed.CurrentContest.DataContest = contest_.DataContest;
  session_.Handed.CurrentContest.Banda = contest_.Banda;
  session_.Handed.CurrentContest.Nome = contest_.Nome;
}

void ContestQso::OpenEntry(std::string_view operation) {
  WriteBack();
  auto* entry = static_cast<ContestNewQso*>(session_.Windows.LoadNew("ContestNewQso"));
  if (entry == nullptr) return;
  entry->Data1 = &Data1;
  entry->Operation.SetText(operation);
  entry->OnStored = [this] {
    QC.ContentChanged();
    ShowLastRow();
  };
  try {
    session_.Windows.ShowModal(*entry);
  } catch (...) {
    // It failed while it was prepared, so nobody sees it.
    if (session_.Windows.IsLoaded(entry)) session_.Windows.Unload(*entry);
    throw;
  }
}

void ContestQso::OpenStatistics() {
  WriteBack();
  session_.Handed.CurrentContest.MoltSquare = contest_.MoltSquare;
  session_.Handed.CurrentContest.MoltCountry = contest_.MoltCountry;
  session_.Handed.CurrentContest.MoltExch = contest_.MoltExch;
  if (forms::Window* statistics = session_.Windows.LoadNew("StatContest")) {
    session_.Windows.ShowModal(*statistics);
  }
}

void ContestQso::OpenCheckCall() {
  WriteBack();
  // One that answers for the log of another contest is of no use here.
  if (auto* open = static_cast<CheckCallContest*>(session_.Windows.Find("CheckCallContest"));
      open != nullptr &&
      (open->DataContest != contest_.DataContest || open->Banda != contest_.Banda)) {
    session_.Windows.Unload(*open);
  }
  if (forms::Window* check = session_.Windows.LoadSingle("CheckCallContest")) {
    session_.Windows.Show(*check);
  }
}

}  // namespace brenvo::contest
