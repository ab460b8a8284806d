#include "screens/pictures.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <QEventLoop>
#include <QTimer>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "adif/importa_adif.h"
#include "adif/station_tables.h"
#include "conferme/taking.h"
#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/qsl_cards.h"
#include "core/session.h"
#include "core/shared_windows.h"
#include "core/station_notes.h"
#include "core/station_profile.h"
#include "core/stations.h"
#include "digital/datagrams.h"
#include "diplomi/diplomi.h"
#include "file/database_file.h"
#include "forms/field_visit.h"
#include "history/take_back.h"
#include "screens/far_ends.h"

namespace brenvo::screens {
namespace {

constexpr std::string_view kCall = "DL1ABC";

forms::Window* Open(core::Session& session, std::string_view name) {
  forms::Window* const window = session.Windows.LoadNew(name);
  if (window != nullptr && session.Windows.IsLoaded(window)) session.Windows.Show(*window);
  return window;
}

template <class Kind>
Kind& FieldOf(forms::Window& window, std::string_view name) {
  forms::Field* const field = window.FindField(name);
  auto* as = field == nullptr ? nullptr : forms::FieldAs<Kind>(*field);
  if (as == nullptr) throw std::logic_error(window.Name() + " has no such " + std::string(name));
  return *as;
}

void Put(forms::Window& window, std::string_view field, std::string_view text) {
  FieldOf<forms::TextField>(window, field).SetText(text);
}

void Press(forms::Window& window, std::string_view command) {
  window.FindCommand(command)->Press();
}

void Choose(forms::Window& window, std::string_view list, int entry) {
  FieldOf<forms::ListField>(window, list).Pick(entry);
}

// A window as it comes up.
Picture Plain(std::string name) {
  return {name, [name](core::Session& session) { return Open(session, name); }};
}

// A window, and what the operator does in it.
Picture With(std::string name, std::function<void(forms::Window&)> work, std::string file = "") {
  return {file.empty() ? name : file, [name, work](core::Session& session) {
            forms::Window* const window = Open(session, name);
            if (window != nullptr) work(*window);
            return window;
          }};
}

// A dialog that a command of a window brings up; `work` is done in it before it shows.
Picture DialogOf(std::string parent, std::string command, std::string name) {
  return {name,
          [parent, command](core::Session& session) -> forms::Window* {
            forms::Window* const frame = session.Windows.Find(parent);
            Press(frame != nullptr ? *frame : *Open(session, parent), command);
            return nullptr;
          },
          name};
}

// A window that another one opens beside itself.
Picture From(std::string parent, std::string command, std::string name,
             std::function<void(forms::Window&)> work = {}) {
  return {name, [=](core::Session& session) -> forms::Window* {
            Press(*Open(session, parent), command);
            forms::Window* const window = session.Windows.Find(name);
            if (window != nullptr && work) work(*window);
            return window;
          }};
}

void Arrange(forms::Window& window, int left, int top, int width, int height) {
  window.Move({base::Twips(left), base::Twips(top), base::Twips(width), base::Twips(height)});
}

// The copies of the last days, from which one can be put back.
forms::Window* CopiesOfTheDatabase(core::Session& session) {
  const std::filesystem::path copies = session.AppPath / "Backup";
  std::filesystem::create_directories(copies);
  for (const char* name : {"Brenvo-2025-11-18.mdb", "Brenvo-2025-11-19.mdb"}) {
    if (std::filesystem::exists(copies / name)) continue;
    file::CompactDatabase(session.File("\\Brenvo.mdb"), copies / name);
  }
  Press(*session.Windows.Find("Brenvo"), "cmRipristinaBackup");
  return nullptr;
}

// The station at work: the log over an award's map, and what the call is worth.
forms::Window* StationAtWork(core::Session& session) {
  forms::Window& award = *Open(session, "SSQuare");
  Press(award, "cmMappaMondo");
  session.Windows.Unload(award);
  forms::Window& matrix = *Open(session, "Hrd");
  Arrange(matrix, 6900, 6800, 12000, 4680);
  const auto last = session.Db.OpenSnapshot("select Call,Locator from Log order by QsoNr desc");
  Put(matrix, "CallQso", last->Field("Call").Text());
  Put(matrix, "Locator", last->Field("Locator").Text());
  Press(matrix, "cmSearch");
  forms::Window& log = *Open(session, "LogForm");
  Arrange(log, 240, 240, 12600, 7530);
  Press(log, "cmLast");
  return session.Windows.Find("Brenvo");
}

// A station on a hill beside the one at home.
forms::Window* HomeAndHill(core::Session& session) {
  core::CurrentStation(session.Db);
  core::StationRow hill;
  hill.Nome = "Monte Grappa";
  hill.Tipo = core::kStationKinds[1];
  hill.Call = core::ProfileText(session, "Call") + "/P";
  hill.Locator = "JN55VU";
  hill.Provincia = "TV";
  hill.Country = "I";
  hill.Altezza = 1775;
  hill.RTX = "IC-705";
  hill.Antenna = "Yagi 5 elementi";
  hill.Dal = hill.Al = base::DateTime::Of(2025, 7, 5);
  core::FindOrStoreStation(session.Db, hill);
  return Open(session, "Stazioni");
}

// Some works on the contacts, one of them taken back.
forms::Window* PastWorks(core::Session& session) {
  engine::Table& log = *session.Tables.TbLog;
  log.SetIndex("");
  log.MoveLast();
  const auto set = [&](std::string_view column, std::string_view value) {
    session.Contacts.Change(core::ContactTable::kLog, log,
                            [&](engine::EditableRecordset& row) { row.Set(column, value); });
  };
  set(core::column::kQra, "Francesca");
  session.Contacts.ChangeMany("Assegnazione Prefissi", {core::ContactTable::kLog}, [&] {
    for (int i = 0; i < 3; ++i, log.MovePrevious()) set(core::column::kManager, "DL1XYZ");
    return true;
  });
  session.Contacts.Delete(core::ContactTable::kLog, log);
  history::TakeBack(session, *history::LastWork(session));
  forms::Window* const window = Open(session, "Storia");
  FieldOf<forms::DataGrid>(*window, "Tabella").SetCurrent(3, 0);
  FieldOf<forms::DataGrid>(*window, "Tabella").ClickCell(3, 0);
  return window;
}

// The page of a station that was met more than once.
forms::Window* StationsPage(core::Session& session) {
  const auto often = session.Db.OpenSnapshot(
      "select Call,Count(*) from Log where Locator<>'' group by Call order by Count(*) desc");
  const std::string call = often->Field(std::size_t{0}).Text();
  core::StoreStationNote(session.Db, call, "Antenna nuova in primavera: chiedere com'è andata");
  forms::Window* const window = Open(session, "Corrispondente");
  Put(*window, "CallQso", call);
  return window;
}

// The list, sorted and filtered, some of its contacts marked; and a dialog of its own.
forms::Window* List(core::Session& session, std::string_view command) {
  forms::Window& window = *Open(session, "Elenco");
  auto& table = FieldOf<forms::DataGrid>(window, "Tabella");
  forms::GridArranger& arranger = *table.Arranger();
  arranger.SetFilterText(2, "m");
  arranger.SortBy(2, false);
  arranger.Mark(3, 6, true);
  arranger.Mark(9, 9, true);
  table.SetCurrent(4, 2);
  if (command.empty()) return &window;
  Press(window, command);
  return nullptr;
}

// The log with some mistakes in it, one of them let stand.
forms::Window* CheckedLog(core::Session& session) {
  for (const char* mistake :
       {"Provincia='QQ',Country='I' where QsoNr=120",
        "Locator='JN95QQ',Country='DL' where QsoNr=95",
        "Frequenza=432.2,Banda='  2 m' where QsoNr=77",
        "DataQso='2031-05-06 10:00' where QsoNr=150", "Call='DL9QQQ',Country='OE' where QsoNr=60",
        "Locator='JN65' where QsoNr=61"}) {
    session.Db.Execute(fmt::format("update Log set {}", mistake));
  }
  forms::Window* const window = Open(session, "VerificaLog");
  Press(*window, "cmVerifica");
  return window;
}

// The newest contacts have sent cards by several ways, and some have come.
forms::Window* CardsOfTheLog(core::Session& session) {
  constexpr int kSent = 30, kReceived = 12;
  std::vector<std::int64_t> newest;
  const auto rows = session.Db.OpenSnapshot("select QsoNr from Log order by DataQso desc");
  for (; !rows->EOF_() && std::ssize(newest) < kSent; rows->MoveNext()) {
    newest.push_back(rows->Field(0).Integer());
  }
  rows->Close();
  for (int i = 0; i < std::ssize(newest); ++i) {
    const std::vector<std::int64_t> one = {newest[static_cast<std::size_t>(i)]};
    const auto sent = core::CardWays()[static_cast<std::size_t>(1 + i % 4)].way;
    const auto day = base::DateTime::Of(2025, 12, 1 + i % 28);
    core::MarkCards(session, "Qsl inviata", one, core::CardSide::kSent, {sent, day});
    if (i % 2 == 0 || i > kReceived) continue;
    constexpr std::int64_t kTwoMonths = 60 * 86400;
    core::MarkCards(session, "Qsl ricevuta", one, core::CardSide::kReceived,
                    {core::CardWay::kBureau, day.Later(kTwoMonths)});
  }
  forms::Window* const window = Open(session, "GestioneQsl");
  Choose(*window, "Mostra", 1);
  return window;
}

// The log with contacts that were made when their calls were others.
forms::Window* LogByDate(core::Session& session) {
  for (const char* contact :
       {"Call='GB6WW',DataQso='2024-05-10 14:20',Country='G' where QsoNr=118",
        "Call='Y21XX',DataQso='1985-06-01 10:00',Country='DL' where QsoNr=92",
        "Call='OM3ABC',DataQso='1989-03-05 08:12',Country='OM' where QsoNr=74",
        "Call='K0ABC/MM',Country='K' where QsoNr=55"}) {
    session.Db.Execute(fmt::format("update Log set {}", contact));
  }
  forms::Window* const window = Open(session, "VerificaEntita");
  Press(*window, "cmVerifica");
  return window;
}

// The first hour of a VHF contest: some stations, a duplicate being typed, the log checked.
forms::Window* ContestAtWork(core::Session& session) {
  forms::Window* const window = Open(session, "GaraContest");
  const auto text = [&](const char* field, const char* value) { Put(*window, field, value); };
  text("Regole", "IARU Region 1 145 MHz");
  text("MioLocator", "JN65DM");
  text("Dal", "05/09/2026");
  Press(*window, "cmNuova");
  constexpr struct {
    const char *call, *serial, *locator, *when;
  } kWorked[] = {{"DK5AB", "12", "JN48QT", "14:00"},  {"S51ZO", "3", "JN86DT", "14:02"},
                 {"9A2AA", "21", "JN85EF", "14:03"},  {"IK4XYZ/P", "5", "JN54PD", "14:07"},
                 {"I6XYZ", "9", "JN63QN", "14:09"},   {"OE5BC", "17", "JN78CJ", "14:13"},
                 {"OK1AA", "44", "JO70UP", "14:18"},  {"DK5AB/P", "19", "JN48QT", "14:22"},
                 {"HA5KDQ", "30", "JN97KR", "14:31"}, {"S51ZA", "8", "JN86DT", "14:40"}};
  for (const auto& each : kWorked) {
    text("Call", each.call);
    text("SerialeRicevuto", each.serial);
    text("Locator", each.locator);
    text("Quando", (std::string("05/09/2026 ") + each.when).c_str());
    Press(*window, "cmInserisci");
  }
  text("Categoria", "SINGLE");
  Press(*window, "cmVerifica");
  text("Call", "9A2A");
  text("Locator", "JN85");
  return window;
}

// A report of LoTW has come: most of it is matched, some of it waits for the operator.
forms::Window* ConfirmedContacts(core::Session& session) {
  constexpr int kConfirmed = 60, kUnclear = 9;
  conferme::Report report;
  const adif::StationTables tables(session);
  const auto rows = session.Db.OpenSnapshot(
      "select Call,DataQso,Banda,Modo,Frequenza from Log order by DataQso desc");
  for (int i = 0; i < kConfirmed && !rows->EOF_(); ++i, rows->MoveNext()) {
    conferme::ReportRecord record;
    record.call = rows->Field(std::size_t{0}).Text();
    record.when = rows->Field(1).Date();
    record.hasDay = record.hasTime = record.hasSeconds = true;
    const auto* const band =
        tables.AdifBandOf(rows->Field(2).Text(), base::Mhz(rows->Field(4).Number()));
    record.band = band == nullptr ? "20m" : std::string(band->name);
    record.mode = rows->Field(3).Text();
    if (i < kUnclear) {
      // Another mode, another band, or a credit of long ago.
      if (i % 3 == 0) record.mode = record.mode == "CW" ? "SSB" : "CW";
      if (i % 3 == 1) record.band = "6m";
      if (i % 3 == 2) {
        record.credit = true;
        record.credits = "DXCC:CARD,DXCC_BAND:CARD";
        record.dxcc = 100 + i;
        record.band = "10m";
        record.when = base::DateTime::Of(1985 + i, 6, 1 + i);
        record.hasTime = false;
      }
    }
    record.id = std::to_string(i);
    report.records.push_back(std::move(record));
  }
  rows->Close();
  std::ostringstream told;
  const auto matched = conferme::MatchLog(session, report.records);
  conferme::TakeReport(session, "Conferme: lotwreport.adi", report, *matched, told);
  forms::Window* const window = Open(session, "Conferme");
  return window;
}

// What that report makes of the DXCC, and why.
forms::Window* AwardsOfTheLog(core::Session& session) {
  auto* const window = static_cast<diplomi::Diplomi*>(Open(session, "Diplomi"));
  for (std::int64_t row = 1; row < window->Tabella.Rows(); ++row) {
    if (window->Tabella.Cell(row, 2) != "C") continue;
    window->Tabella.ClickCell(row, 2);
    break;
  }
  return window;
}

// An evening on 20 metres: WSJT-X has heard a dozen stations.
forms::Window* HeardStations(core::Session& session) {
  constexpr int kPort = 22371;
  session.SaveSetting("Digitale", "Porta", std::to_string(kPort));
  session.SaveSetting("Digitale", "Suona", "N");
  forms::Window* const window = Open(session, "Digitale");
  const digital::Header header{3, "WSJT-X"};
  std::vector<std::string> heard = {
      digital::WriteDatagram({header, digital::Status{.dial = 14074000,
                                                      .mode = "FT8",
                                                      .dxCall = "JA1ABC",
                                                      .decoding = true,
                                                      .deCall = "IK3ABC",
                                                      .deGrid = "JN65AA"}})};
  constexpr std::pair<int, std::string_view> kMessages[] = {
      {-12, "CQ K1ABC FN42"},     {3, "DL1ABC OE5XYZ R-08"},  {-19, "CQ DX VK3ABC QF22"},
      {-7, "CQ I4XYZ JN54"},      {-15, "IK3ABC F6ABC IN88"}, {-2, "SP5ABC DL2XYZ 73"},
      {-21, "CQ ZL2ABC RE78"},    {1, "CQ EA5ABC IM98"},      {-10, "W1ABC <PJ4/K1ABC> -11"},
      {-4, "IK3ABC JA1ABC PM95"}, {-17, "CQ 9A5XYZ JN75"},    {-9, "TNX BOB 73 GL"},
      {-13, "LZ1ABC 5B4XYZ RR73"}};
  std::uint32_t time = 20 * 3600 * 1000;
  std::uint32_t df = 400;
  for (const auto& [snr, message] : kMessages) {
    heard.push_back(
        digital::WriteDatagram({header, digital::Decode{.time = time += 15000,
                                                        .snr = snr,
                                                        .dtBits = 0x3FC999999999999A,
                                                        .df = df += 157,
                                                        .mode = "~",
                                                        .message = std::string(message)}}));
  }
  SendDatagrams(kPort, heard);
  return window;
}

// An evening on 20 metres: the transceiver hears a station of Japan, and the beam looks there.
forms::Window* RigAtWork(core::Session& session) {
  static const AnsweringServer kRig([](const std::string& line) -> std::string {
    if (line == "\\chk_vfo") return "0\n";
    if (line == "+\\get_freq") return "get_freq:\nFrequency: 14195250\nRPRT 0\n";
    if (line == "+\\get_mode") return "get_mode:\nMode: USB\nPassband: 2400\nRPRT 0\n";
    if (line == "+\\get_split_vfo") return "get_split_vfo:\nSplit: 1\nTX VFO: VFOB\nRPRT 0\n";
    if (line == "+\\get_split_freq") return "get_split_freq:\nTX Frequency: 14200000\nRPRT 0\n";
    return "get_level: STRENGTH\n12\nRPRT 0\n";
  });
  static const AnsweringServer kRotor([](const std::string& line) -> std::string {
    if (line == "+\\get_pos") return "get_pos:\nAzimuth: 41.00\nElevation: 0.00\nRPRT 0\n";
    return "dump_state:\nMinimum Azimuth: 0.0\nMaximum Azimuth: 450.0\nRPRT 0\n";
  });
  session.SaveSetting("Rtx", "Dove", "altro");
  session.SaveSetting("Rtx", "Indirizzo", kRig.Address());
  session.SaveSetting("Rotore", "Dove", "altro");
  session.SaveSetting("Rotore", "Indirizzo", kRotor.Address());
  forms::Window* const window = Open(session, "Rtx");
  session.CallTyped({"JA1ABC", "PM95UQ"});
  QEventLoop loop;  // until the signal has come
  QTimer::singleShot(1500, &loop, &QEventLoop::quit);
  loop.exec();
  Press(*window, "cmRicorda");
  return window;
}

// A log in local time with contacts in the hours in which the clocks were changed.
forms::Window* LogInLocalTime(core::Session& session) {
  core::StoreLogTime(session, core::LogTime::kLocal);
  session.SaveSetting("Ora", "Zona", "Europe/Rome");
  session.Db.Execute("update Log set DataQso='2024-10-27 02:30:00' where QsoNr in (101, 102, 103)");
  session.Db.Execute("update Log set DataQso='2024-03-31 02:15:00' where QsoNr=104");
  Press(*session.Windows.Find("Brenvo"), "cmConvertiOra");
  return nullptr;
}

// What another program has written, before it comes in.
forms::Window* FileToImport(core::Session& session) {
  const std::filesystem::path file = session.AppPath / "2024.adi";
  std::ofstream(file, std::ios::binary)
      << "Log of 2024 <adif_ver:5>3.1.4 <programid:5>Other <eoh>\n"
         "<call:6>DL1ABC <qso_date:8>20240309 <time_on:4>1405 <band:2>2m <mode:3>SSB "
         "<rst_sent:2>59 <rst_rcvd:2>57 <gridsquare:6>JO62QM <name:4>Hans <qth:6>Berlin "
         "<qsl_rcvd:1>Y <eor>\n"
         "<call:6>EA5XYZ <qso_date:8>20240309 <time_on:4>1512 <freq:6>50.150 <mode:3>SSB "
         "<gridsquare:4>IM98 <prop_mode:2>ES <eor>\n"
         "<call:5>W1AAA <qso_date:8>20240310 <time_on:6>201500 <band:3>20m <mode:3>FT8 "
         "<lotw_qsl_rcvd:1>Y <state:2>MA <eor>\n"
         "<call:6>IK3ZZZ <qso_date:8>20241332 <time_on:4>1000 <band:2>2m <mode:2>FM <eor>\n"
         "<call:5>OK1KK <qso_date:8>20240310 <time_on:4>2130 <band:4>70cm <mode:2>CW "
         "<gridsquare:6>JO70FD <eor>\n";
  auto* const window = dynamic_cast<adif::ImportaAdif*>(session.Windows.LoadNew("ImportaAdif"));
  if (window == nullptr || !window->Preview(file)) return nullptr;
  session.Windows.Show(*window);
  return window;
}

}  // namespace

std::vector<Picture> AllPictures() {
  const auto search = [](forms::Window& window) {
    Put(window, "CallQso", kCall);
    Put(window, "Locator", "JO62QM");
    Press(window, "cmSearch");
  };
  const auto last = [](forms::Window& window) { Press(window, "cmLast"); };
  return {
      With("LogForm", last),
      With(
          "LogForm", [](forms::Window& window) { Press(window, "cmVista"); }, "LogForm-griglia"),
      {"Elenco", [](core::Session& session) { return List(session, ""); }},
      {"Corrispondente", StationsPage},
      {"Colonne", [](core::Session& session) { return List(session, "cmColonne"); }, "Colonne"},
      {"CambiaColonna", [](core::Session& session) { return List(session, "cmCambia"); },
       "CambiaColonna"},
      {"ContaQso", [](core::Session& session) { return List(session, "cmConta"); }, "ContaQso"},
      DialogOf("LogForm", "cmSearch", "LogSearch"),
      With("OldQsoForm",
           [](forms::Window& window) {
             dynamic_cast<core::FeedWindow&>(window).SetRecordSource(
                 "select * from Log where Country='DL' order by DataQso desc");
           }),
      With("OldQsoLocator",
           [](forms::Window& window) {
             dynamic_cast<core::FeedWindow&>(window).SetRecordSource(
                 "select * from Log where Left(Locator,4)='JN48' order by DataQso desc");
           }),
      With("Contest", last),
      DialogOf("Contest", "cmSearch", "ContestSearch"),
      Plain("ContestQso"),
      DialogOf("ContestQso", "cmNew", "ContestNewQso"),
      From("ContestQso", "cmCheckCall", "CheckCallContest",
           [](forms::Window& window) {
             Put(window, "CallContest", "OE5XYZ");
             Press(window, "cmCheck");
           }),
      DialogOf("ContestQso", "cmStatistiche", "StatContest"),
      DialogOf("Brenvo", "cmSCountry", "StatSel"),
      Plain("SField"),
      Plain("SSQuare"),
      Plain("SPrefissi"),
      Plain("SContinenti"),
      Plain("SZone"),
      Plain("SCountry"),
      {"SProvincie", [](core::Session& session) { return Open(session, "SProvincie"); }, "",
       "WHERE Country='I'"},
      {"SNote", [](core::Session& session) { return Open(session, "SNote"); }, "",
       "WHERE Note LIKE '*IOTA/*'"},
      With("Hrd", search),
      With("HrdMode", search),
      From("SSQuare", "cmMappa", "MappaSquare"),
      DialogOf("Brenvo", "cmQslStampa", "StampaQsl"),
      Plain("TNC"),
      Plain("TNCtelnet"),
      Plain("WWConv"),
      DialogOf("TNCtelnet", "cmDX", "DX"),
      With("FT736", [](forms::Window& window) { Press(window, "Accensione"); }),
      Plain("User"),
      With(
          "User",
          [](forms::Window& window) { FieldOf<forms::OptionGroup>(window, "Tab1").Press(1); },
          "User-collegamenti"),
      With("TabellaPrefissi",
           [](forms::Window& window) {
             Put(window, "Codice", "IK3");
             Press(window, "cmSearch");
           }),
      With("TabellaCountry", [](forms::Window& window) { Choose(window, "LBCountry", 120); }),
      With("TabellaProvincie",
           [](forms::Window& window) {
             const auto& items = FieldOf<forms::ListField>(window, "LBCountry").Items();
             for (std::size_t i = 0; i < items.size(); ++i) {
               if (items[i].starts_with("I  ")) Choose(window, "LBCountry", static_cast<int>(i));
             }
             Choose(window, "LBProv", 3);
           }),
      With("TabellaNote", [](forms::Window& window) { Choose(window, "LBNote", 2); }),
      With("Help",
           [](forms::Window& window) {
             Choose(window, "LBTipoNote", 0);
             window.FindField("LBTipoNote")->DoubleClick();
           }),
      {"RipristinaBackup", CopiesOfTheDatabase, "RipristinaBackup"},
      {"ImportaAdif", FileToImport},
      Plain("EsportaAdif"),
      Plain("Preferenze"),
      Plain("Tasti"),
      {"Digitale", HeardStations},
      {"GaraContest", ContestAtWork},
      {"Rtx", RigAtWork},
      DialogOf("Rtx", "cmModello", "Modelli"),
      DialogOf("Brenvo", "cmOraDelLog", "OraDelLog"),
      DialogOf("Brenvo", "cmPalette", "Palette"),
      {"ConvertiOra", LogInLocalTime, "ConvertiOra"},
      {"Brenvo", StationAtWork},
      {"Stazioni", HomeAndHill},
      {"Storia", PastWorks},
      {"GestioneQsl", CardsOfTheLog},
      {"Conferme", ConfirmedContacts},
      {"Diplomi", AwardsOfTheLog},
      {"VerificaEntita", LogByDate},
      {"VerificaLog", CheckedLog},  // its faults stay in the log
  };
}

}  // namespace brenvo::screens
