#include "contest/contest_form.h"

#include <algorithm>
#include <filesystem>

#include "base/number.h"
#include "contact.h"
#include "contest/contest_search.h"
#include "contest_sheets.h"
#include "core/entry.h"
#include "core/history.h"
#include "core/lists.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "core/transaction.h"
#include "core/window_place.h"
#include "core/writing.h"
#include "export.h"

namespace brenvo::contest {
namespace {

constexpr std::string_view kLogoFile = "\\Logo.bmp";
constexpr std::string_view kSignFile = "\\Sign.bmp";

// A column and the field that shows its text or its number as it stands.
struct TextColumn {
  std::string_view column;
  forms::TextField ContestForm::*field;
  bool number = false;
};

// In the order in which they are written; the columns of another kind stand between them.
constexpr TextColumn kName = {"Nome", &ContestForm::NomeContest};
constexpr TextColumn kBeforeOptions[] = {{"Frequenza", &ContestForm::Frequenza, true},
                                         {"Categoria", &ContestForm::Categoria}};
constexpr TextColumn kBehindOptions[] = {{"Call", &ContestForm::CallContest},
                                         {"Qra", &ContestForm::Qra},
                                         {"Qth", &ContestForm::Qth},
                                         {"Indirizzo", &ContestForm::Indirizzo},
                                         {"Provincia", &ContestForm::Provincia},
                                         {"SQth", &ContestForm::SQTH},
                                         {"SProvincia", &ContestForm::SProvincia},
                                         {"Altezza", &ContestForm::Altezza, true},
                                         {"Locator", &ContestForm::Locator},
                                         {"RTX", &ContestForm::RTX},
                                         {"Antenna", &ContestForm::Antenna},
                                         {"Potenza", &ContestForm::Potenza, true},
                                         {"Note", &ContestForm::Note}};

struct BoxColumn {
  std::string_view column;
  forms::CheckBox ContestForm::*box;
};
constexpr BoxColumn kBoxes[] = {{"MoltSquare", &ContestForm::Square},
                                {"MoltCountry", &ContestForm::Country},
                                {"MoltExch", &ContestForm::Exch}};

std::string NumberText(const engine::Value& value) {
  return base::PlainNumber(base::Val(value.Text()));
}

// A move at an end of the table, or in an empty one, is harmless.
template <class Move>
void TryMove(Move move) {
  try {
    move();
  } catch (const engine::DatabaseError&) {
  }
}

}  // namespace

ContestForm::ContestForm(core::Session& session)
    : forms::Window(session.Host(), "Contest", "Contest", base::Twips(11100), base::Twips(7800)),
      session_(session) {
  Fisso.JoinWith(Portatile);
  Singolo.JoinWith(Multi);
  HandleEvents();
}

ContestForm::~ContestForm() = default;

void ContestForm::HandleEvents() {
  CallContest.Filter = core::UpperKey;
  Locator.Filter = core::UpperKey;
  Frequenza.Filter = core::NumericKey;
  Banda.OnChange = [this] { OnBandaChange(); };
}

void ContestForm::Load() {
  core::RestoreWindow(session_, *this, "Contest");
  core::LoadBands(session_, Banda);
  Logo.SetPicture(session_.File(kLogoFile));
  Sign.SetPicture(session_.File(kSignFile));
  GoToLast();
  session_.Opened.ContestOpen = true;
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kContestQso && change.Many()) ForgetRecordThatIsGone();
  });
}

void ContestForm::Unload() {
  changes_ = {};
  core::SaveWindow(session_, *this, "Contest");
  session_.Opened.ContestOpen = false;
}

void ContestForm::SelectBand(std::string_view band) {
  PrevBanda = band;
  // A band that the station has given up meanwhile still belongs to its contest.
  const auto& bands = Banda.Items();
  if (!band.empty() && std::find(bands.begin(), bands.end(), band) == bands.end()) {
    Banda.AddItem(band);
  }
  Banda.SetText(band);
}

void ContestForm::ContestDisplay() {
  engine::Table& contest = *session_.Tables.TbContest;
  shown_ = contest.GetBookmark();
  const auto show = [&](const TextColumn& each) {
    (this->*each.field)
        .SetText(each.number ? NumberText(contest.Field(each.column))
                             : core::FieldText(contest, each.column));
  };
  DataContest.SetText(base::DateText(contest.Field("DataContest").Date()));
  SelectBand(core::FieldText(contest, "Banda"));
  show(kName);
  for (const TextColumn& each : kBeforeOptions) show(each);
  (core::FieldText(contest, "FissoPortatile") == "F" ? Fisso : Portatile).SetOn(true);
  (core::FieldText(contest, "SingoloMulti") == "S" ? Singolo : Multi).SetOn(true);
  for (const TextColumn& each : kBehindOptions) show(each);
  for (const BoxColumn& each : kBoxes) (this->*each.box).SetOn(contest.Field(each.column).Bool());
}

void ContestForm::ContestSave() {
  engine::Table& contest = *session_.Tables.TbContest;
  const auto write = [&](const TextColumn& each) {
    const std::string& text = (this->*each.field).Text();
    if (each.number) {
      core::SetNumber(contest, each.column, text);
    } else {
      contest.Set(each.column, text);
    }
  };
  contest.Set("DataContest", base::ParseDate(DataContest.Text())->DatePart());
  contest.Set("Banda", Banda.Text());
  write(kName);
  for (const TextColumn& each : kBeforeOptions) write(each);
  contest.Set("FissoPortatile", Fisso.IsOn() ? "F" : "P");
  contest.Set("SingoloMulti", Singolo.IsOn() ? "S" : "M");
  for (const TextColumn& each : kBehindOptions) write(each);
  for (const BoxColumn& each : kBoxes) contest.Set(each.column, (this->*each.box).IsOn());
}

bool ContestForm::ContestValid() {
  return core::IsValidDate(session_, DataContest.Text()) && !core::IsEmptyField(CallContest.Text());
}

void ContestForm::ContestAdd() {
  if (!ContestValid()) return;
  const bool stored = core::TryWrite(session_, "Insert Qso", "Qso gia' caricato", [this] {
    engine::Table& contest = *session_.Tables.TbContest;
    contest.AddNew();
    ContestSave();
    contest.Update();
    contest.SetBookmark(contest.LastModified());
    shown_ = contest.GetBookmark();
  });
  if (stored) recordCommands_ = true;
}

void ContestForm::ContestUpdate() {
  if (!ContestValid()) return;
  const bool stored = core::TryWrite(session_, "Update Qso", "Qso gia' caricato", [this] {
    ReturnToShownRecord();
    session_.Tables.TbContest->Edit();
    ContestSave();
    session_.Tables.TbContest->Update();
  });
  if (stored) recordCommands_ = true;
}

void ContestForm::ContestDelete() {
  if (!session_.Messages().AskYesNo("Cancellazione Qso", "Confermi l'operazione ?")) return;
  const forms::BusyPointer busy(Host());
  try {
    ReturnToShownRecord();
    engine::Table& contest = *session_.Tables.TbContest;
    // The record's own date and band: what was typed over them and not stored names contacts of
    // another contest.
    const std::string contacts = OfContest(base::DateText(contest.Field("DataContest").Date()),
                                           core::FieldText(contest, "Banda"));
    session_.Contacts.ChangeMany("Contest cancellato", {core::ContactTable::kContestQso}, [&] {
      core::Transaction transaction(session_);
      core::History& past = session_.Contacts.Past();
      past.KeepContestQsos(contacts);
      past.KeepContests(contacts);
      session_.Db.Execute("DELETE * FROM [Contest Qso]" + contacts);
      contest.Delete();
      transaction.Commit();
      return true;
    });
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, "Delete Qso");
  }
  shown_.reset();
  GoToNext();
}

void ContestForm::ReturnToShownRecord() {
  if (shown_) session_.Tables.TbContest->SetBookmark(*shown_);
}

void ContestForm::ForgetRecordThatIsGone() {
  try {
    ReturnToShownRecord();
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
    shown_.reset();
    recordCommands_ = false;
  }
}

void ContestForm::GoToFirst() {
  engine::Table& contest = *session_.Tables.TbContest;
  TryMove([&] { contest.MoveFirst(); });
  if (contest.BOF()) {
    recordCommands_ = false;
    ContestClear();
    return;
  }
  ContestDisplay();
  recordCommands_ = true;
}

void ContestForm::GoToLast() {
  engine::Table& contest = *session_.Tables.TbContest;
  TryMove([&] { contest.MoveLast(); });
  if (contest.EOF_()) {
    ContestClear();
    recordCommands_ = false;
    return;
  }
  ContestDisplay();
  recordCommands_ = true;
}

void ContestForm::GoToNext() {
  engine::Table& contest = *session_.Tables.TbContest;
  TryMove([&] { ReturnToShownRecord(); });
  TryMove([&] {
    if (contest.RecordCount() != 0) contest.MoveNext();
  });
  if (contest.EOF_() || contest.RecordCount() == 0) {
    GoToLast();
    return;
  }
  ContestDisplay();
  recordCommands_ = true;
}

void ContestForm::GoToPrevious() {
  engine::Table& contest = *session_.Tables.TbContest;
  TryMove([&] { ReturnToShownRecord(); });
  TryMove([&] {
    if (contest.RecordCount() != 0) contest.MovePrevious();
  });
  if (contest.BOF() || contest.RecordCount() == 0) {
    GoToFirst();
    return;
  }
  ContestDisplay();
  recordCommands_ = true;
}

void ContestForm::ContestClear() {
  shown_.reset();
  PrevBanda.clear();
  DataContest.SetText(base::DateText(session_.Now()));
  // A new contest starts with this description.
  NomeContest.SetText("0");
  Banda.SetListIndex(-1);
  for (forms::TextField* field : {&Frequenza, &Altezza, &Potenza}) field->SetText("0");
  for (forms::TextField* field : {&Categoria, &CallContest, &Qra, &Qth, &Indirizzo, &Provincia,
                                  &SQTH, &SProvincia, &Locator, &RTX, &Antenna, &Note}) {
    field->SetText("");
  }
  Fisso.SetOn(true);
  Singolo.SetOn(true);
  recordCommands_ = false;
}

void ContestForm::OnBandaChange() {
  const std::string band = Banda.Text();
  if (band.empty() || band == PrevBanda) return;
  CallContest.SetText(core::ProfileText(session_, "Call"));
  Qra.SetText(core::ProfileText(session_, "Qra"));
  Qth.SetText(core::ProfileText(session_, "Qth"));
  Indirizzo.SetText(core::ProfileText(session_, "Indirizzo"));
  Provincia.SetText(core::ProfileText(session_, "Provincia"));
  Locator.SetText(core::ProfileText(session_, "Locator"));
  SQTH.SetText(Qth.Text());
  SProvincia.SetText(Provincia.Text());
  if (const auto profile = core::FindBandProfile(session_, band)) {
    Frequenza.SetText(NumberText(profile->Frequenza));
    Potenza.SetText(NumberText(profile->Potenza));
    RTX.SetText(profile->RTX);
    Antenna.SetText(profile->Antenna);
  }
  PrevBanda = band;
}

void ContestForm::ContestFind() {
  auto* search = static_cast<ContestSearch*>(session_.Windows.LoadNew("ContestSearch"));
  if (search == nullptr) return;
  session_.Windows.ShowModal(*search);
  if (!session_.Windows.IsLoaded(search)) return;  // left by its frame
  const std::optional<std::int64_t> row = search->Chosen();
  if (!row) {
    session_.Windows.Unload(*search);
    return;
  }
  const auto date = base::ParseDate(search->Spread1.Cell(*row, 0));
  const std::string band = search->Spread1.Cell(*row, 1);
  session_.Windows.Unload(*search);
  if (!date) return;
  session_.Tables.TbContest->Seek("=", {*date, band});
  if (session_.Tables.TbContest->NoMatch()) return;
  ContestDisplay();
  recordCommands_ = true;
}

void ContestForm::OpenContacts() {
  session_.Handed.CurrentContest = {DataContest.Text(), Banda.Text(),  NomeContest.Text(),
                                    Locator.Text(),     Square.IsOn(), Country.IsOn(),
                                    Exch.IsOn()};
  if (forms::Window* contacts = session_.Windows.LoadNew("ContestQso"))
    session_.Windows.Show(*contacts);
}

ContestHeader ContestForm::ReadHeader() const {
  ContestHeader header;
  header.DataContest = base::ParseDate(DataContest.Text()).value_or(base::DateTime());
  header.Banda = Banda.Text();
  header.NomeContest = NomeContest.Text();
  header.Categoria = Categoria.Text();
  header.CallContest = CallContest.Text();
  header.Qra = Qra.Text();
  header.Qth = Qth.Text();
  header.Indirizzo = Indirizzo.Text();
  header.Provincia = Provincia.Text();
  header.SQTH = SQTH.Text();
  header.SProvincia = SProvincia.Text();
  header.Altezza = Altezza.Text();
  header.Locator = Locator.Text();
  header.RTX = RTX.Text();
  header.Antenna = Antenna.Text();
  header.Potenza = Potenza.Text();
  header.Note = Note.Text();
  header.Fisso = Fisso.IsOn();
  header.Singolo = Singolo.IsOn();
  header.Square = Square.IsOn();
  header.Country = Country.IsOn();
  return header;
}

void ContestForm::Export() {
  const forms::BusyPointer busy(Host());
  WriteReg1Test(session_, ReadHeader(),
                ReadContacts(session_.Db, DataContest.Text(), Banda.Text()));
}

void ContestForm::Print() {
  const forms::BusyPointer busy(Host());
  const std::vector<Contact> contacts = ReadContacts(session_.Db, DataContest.Text(), Banda.Text());
  std::optional<std::filesystem::path> sign = session_.File(kSignFile);
  if (std::filesystem::exists(*sign)) {
    Sign.SetPicture(*sign);
  } else {
    sign.reset();
  }
  PrintContestSheets(session_.Machine.GetPrinter(), ReadHeader(), contacts,
                     session_.File(kLogoFile), sign);
}

}  // namespace brenvo::contest
