#include "gara/gara_contest.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "gara/contest_log.h"
#include "history/take_back.h"
#include "tests/gara/gara_station.h"
#include "tests/support/golden.h"
#include "upkeep/maintenance.h"

namespace brenvo::gara {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr const char* kIaru = "IARU Region 1 145 MHz";
constexpr const char* kUhf = "IARU Region 1 UHF e microonde";

TEST_F(GaraStation, AContestBeginsOnTheDayOfItsRules) {
  Event([&] { window->Regole.SetText(kIaru); });
  EXPECT_EQ(window->Dal.Text(), "07/09/2024");
  EXPECT_THAT(window->Regolamento.Text(), StartsWith("Regole del 2023: fa testo la pagina"));
  Press(*window, "cmNuova");
  EXPECT_EQ(window->Avviso.Text(),
            "Cominciato IARU Region 1 145 MHz dal 07/09/2024 14:00 al 08/09/2024 14:00 UTC");
  EXPECT_EQ(window->Tempo.Text(), "Finisce fra 23 h 59 min");
  EXPECT_EQ(window->SerialeDato.Text(), "001");
  EXPECT_EQ(window->Banda.Text(), "2 m");
}

TEST_F(GaraStation, AContactStandsWhereTheToldScreensSeeItAndBesideIt) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  EXPECT_EQ(window->Avviso.Text(), "Qso registrato: 1  DK5AB  JN48QT  490 punti");
  EXPECT_THAT(Stored(), ElementsAre("7|DK5AB|1|12|JN48QT|SSB|489|489|"));
  EXPECT_THAT(Beside(), ElementsAre("  2 m|1|07/09/2024 14:00:30|490||0"));
  EXPECT_THAT(Rows("Select Nome,Call,Locator,Banda from Contest"),
              ElementsAre("IARU Region 1 145 MHz|IK4ABC|JN54MN|  2 m"));
  EXPECT_EQ(window->Totale.Text(), "1 QSO, 490 punti");
  EXPECT_EQ(window->Call.Text(), "");
  EXPECT_EQ(window->SerialeDato.Text(), "002");
}

TEST_F(GaraStation, EnterWalksToWhatIsMissing) {
  Begin(kIaru, "07/09/2024");
  Type(window->Call, "dk5ab");
  EXPECT_EQ(window->Call.Text(), "DK5AB");
  Lines();
  Event([&] { window->Call.TypeKey(forms::kEnter); });
  EXPECT_THAT(Lines(), ElementsAre("focus GaraContest.SerialeRicevuto"));
  Type(window->SerialeRicevuto, "7");
  Event([&] { window->SerialeRicevuto.TypeKey(forms::kEnter); });
  Type(window->Locator, "JN48");
  Event([&] { window->Locator.TypeKey(forms::kEnter); });
  EXPECT_EQ(window->Avviso.Text(), "Manca il locatore di sei lettere e cifre");
  EXPECT_THAT(Stored(), IsEmpty());
  Type(window->Locator, "jn48qt");
  Event([&] { window->Locator.TypeKey(forms::kEnter); });
  EXPECT_THAT(Stored(), SizeIs(1));
}

TEST_F(GaraStation, TheStatusFollowsEveryKey) {
  Exec("insert into Log (DataQso,Call,Locator) values ('01/01/2001 10:00','S51ZO','JN86DT')");
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Later(5);
  Type(window->Call, "dk5a");
  EXPECT_EQ(window->Stato.Text(), "Nuovo");
  EXPECT_EQ(window->Parziali.Text(), "DK5AB");
  Type(window->Call, "dk5ab/p");
  EXPECT_EQ(window->Stato.Text(), "Doppio: DK5AB alle 14:00, progressivo 1");
  EXPECT_EQ(window->Punti.Text(), "0");
  EXPECT_EQ(window->Storia.Text(), "locatore JN48QT (07/09/2024), il suo progressivo era 12");
  Type(window->Call, "s51zo");
  EXPECT_EQ(window->Storia.Text(), "locatore JN86DT (01/01/2001)");
  Press(*window, "cmAccetta");
  EXPECT_EQ(window->Locator.Text(), "JN86DT");
  EXPECT_EQ(window->Direzione.Text(), "56° 478 km");
  EXPECT_EQ(window->Punti.Text(), "479");
  Type(window->Locator, "JN76AA");
  EXPECT_THAT(window->Stato.Text(), HasSubstr("locatore diverso dal solito"));
  Type(window->Locator, "JN76");
  EXPECT_THAT(window->Direzione.Text(), HasSubstr("(dal quadrato)"));
  Type(window->Call, "dk5ac");
  EXPECT_EQ(window->Parziali.Text(), "una lettera: DK5AB");
}

TEST_F(GaraStation, ADuplicateStaysWithNoPointsAndItsMarker) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Work("DK5AB", "13", "JN48QT");
  EXPECT_THAT(Stored(), ElementsAre("7|DK5AB|1|12|JN48QT|SSB|489|489|",
                                    "7|DK5AB|2|13|JN48QT|SSB|489|0|Qso doppio (1) "));
  EXPECT_EQ(window->Totale.Text(), "1 QSO, 490 punti, doppi 1");
}

TEST_F(GaraStation, ACorrectionGivesPointsBackToWhatItMadeADuplicate) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Later(1);
  Work("DK5AB", "13", "JN48QT");
  Event([&] { window->Qso.SetCurrent(2, 0); });
  Press(*window, "cmCorreggi");
  EXPECT_EQ(window->Quando.Text(), "07/09/2024 14:00");
  Type(window->Call, "DK5AC");
  Press(*window, "cmInserisci");
  EXPECT_EQ(window->Avviso.Text(), "Qso corretto: 1  DK5AC  JN48QT  490 punti");
  EXPECT_EQ(window->Totale.Text(), "2 QSO, 980 punti");
  Press(*window, "cmVerifica");
  EXPECT_EQ(window->Avviso.Text(), "Verifica: errori 1, avvisi 2, note 1");  // the category
  EXPECT_THAT(Beside(), ElementsAre("  2 m|1|07/09/2024 14:00:30|490||0",
                                    "  2 m|2|07/09/2024 14:01:30|490||0"));
}

TEST_F(GaraStation, ASerialIsNeverUsedTwice) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Work("S51ZO", "3", "JN86DT");
  Event([&] { window->Qso.SetCurrent(1, 0); });
  machine.Messages().QueueAnswer(true);
  Press(*window, "cmCancella");
  EXPECT_EQ(window->Avviso.Text(), "Qso 2 con S51ZO cancellato");
  EXPECT_EQ(window->SerialeDato.Text(), "003");
  Reopen();
  EXPECT_EQ(window->SerialeDato.Text(), "003");
  EXPECT_EQ(window->Totale.Text(), "1 QSO, 490 punti");
}

TEST_F(GaraStation, SeveralBandsStandInOneWindowEachWithItsSerials) {
  machine.SetNow(base::DateTime::Of(2024, 10, 5, 17, 0, 0));
  Begin(kUhf, "05/10/2024");
  Work("DK5AB", "12", "JN48QT");
  Type(window->Call, "DK5AB");
  EXPECT_THAT(window->Cambi.Text(), StartsWith("già su 70cm, chiedi 23cm, 13cm"));
  Press(*window, "cmBanda");
  EXPECT_EQ(window->Banda.Text(), "23cm");
  EXPECT_EQ(window->Stato.Text(), "Nuovo");
  Work("DK5AB", "1", "JN48QT");
  EXPECT_THAT(Rows("Select Banda,ProgrDato from [Contest Qso] Order By Banda"),
              ElementsAre(" 23cm|1", " 70cm|1"));
  EXPECT_EQ(window->Totale.Text(),
            "2 QSO, 980 punti, 70cm: 1 QSO 490 punti, 23cm: 1 QSO 490 punti");
}

TEST_F(GaraStation, ASecondContestOnADayAndBandIsRefusedInWords) {
  Exec("insert into Contest (DataContest,Banda,Nome) values ('07/09/2024','  2 m','Prova')");
  Begin(kIaru, "07/09/2024");
  EXPECT_EQ(
      window->Avviso.Text(),
      "Il 07/09/2024 in 2 m c'è già un contest, Prova: in un giorno una banda ne ha uno solo");
  EXPECT_THAT(Rows("Select * from Gare"), IsEmpty());
}

TEST_F(GaraStation, WhatAnotherWindowWritesIsSeen) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  core::TypedContestQso typed{"8",      "01:05", "S51ZO", "59", "7",   "59", "4",
                              "JN86DT", "USB",   "",      "",   false, false};
  Event([&] {
    PutInto(session)({"07/09/2024", "  2 m", "", "JN54MN", false, false, false}, std::nullopt,
                     typed, {});
  });
  EXPECT_EQ(window->Totale.Text(), "2 QSO, 969 punti");
  EXPECT_EQ(window->SerialeDato.Text(), "008");
}

TEST_F(GaraStation, EscapeEmptiesTheEntryAndBringsItBack) {
  Begin(kIaru, "07/09/2024");
  Type(window->Call, "DK5AB");
  Type(window->Locator, "JN48QT");
  EXPECT_EQ(window->CancelCommand, &window->cmSvuota);
  Press(*window, "cmSvuota");
  EXPECT_EQ(window->Call.Text(), "");
  Press(*window, "cmSvuota");
  EXPECT_EQ(window->Call.Text(), "DK5AB");
  EXPECT_EQ(window->Locator.Text(), "JN48QT");
}

TEST_F(GaraStation, UndoBringsBackWhatWasEmptiedWhileItWasCorrected) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Event([&] { window->Qso.SetCurrent(1, 0); });
  Press(*window, "cmCorreggi");
  Type(window->Call, "DK5AC");
  Press(*window, "cmSvuota");
  Press(*window, "cmRimetti");
  Press(*window, "cmInserisci");
  EXPECT_THAT(Stored(), ElementsAre("7|DK5AC|1|12|JN48QT|SSB|489|489|"));
  EXPECT_FALSE(window->cmRimetti.Enabled());
}

TEST_F(GaraStation, EmptyingAllContestsEmptiesTheirEntriesUntilTheyAreTakenBack) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Work("S51ZO", "3", "JN86DT");
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraContest");
  EXPECT_THAT(window->Gara.Items(), IsEmpty());
  EXPECT_EQ(window->Totale.Text(), "");
  EXPECT_THAT(brenvo::RowsOf(window->Qso), IsEmpty());
  EXPECT_THAT(ReadEntries(session.Db), IsEmpty());
  const auto work = history::LastWork(session);
  ASSERT_TRUE(work);
  Event([&] { history::TakeBack(session, *work); });
  EXPECT_THAT(window->Gara.Items(), SizeIs(1));
  Event([&] { window->Gara.SetListIndex(0); });
  EXPECT_EQ(window->Totale.Text(), "2 QSO, 969 punti");
  EXPECT_EQ(window->SerialeDato.Text(), "003");
  EXPECT_THAT(Beside(), SizeIs(2));
}

TEST_F(GaraStation, AnEmptiedContestMakesRoomForAnotherOnItsDayAndGoesWithTheCompaction) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Work("S51ZO", "3", "JN86DT");
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraContest");
  Begin(kIaru, "07/09/2024");
  Work("OK1XYZ", "7", "JO70FC");
  EXPECT_THAT(Rows("Select Call,ProgrDato from [Contest Qso]"), ElementsAre("OK1XYZ|1"));
  EXPECT_THAT(Rows("Select ProgrDato from GareQso"), ElementsAre("1"));
  EXPECT_THAT(Rows("Select Count(*) from Gare"), ElementsAre("2"));
  Exec("Delete * from StoriaContestQso");
  Exec("Delete * from StoriaContest");
  Event([&] { window->Close(); });
  Event([&] { upkeep::CompattaDatabase(session); });
  EXPECT_THAT(Rows("Select Azzerata from Gare"), ElementsAre("0"));
  EXPECT_THAT(Rows("Select ProgrDato from GareQso"), ElementsAre("1"));
  EXPECT_THAT(Rows("Select UltimoProgr from GareBande"), ElementsAre("1"));
}

TEST_F(GaraStation, WhatIsEmptiedGoesWithTheCompactionOnceTheHistoryHasForgottenIt) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraContest");
  Event([&] { window->Close(); });
  Event([&] { upkeep::CompattaDatabase(session); });
  EXPECT_THAT(Rows("Select Count(*) from GareQso"), ElementsAre("1"));  // it can be taken back yet
  Exec("Delete * from StoriaContestQso");
  Exec("Delete * from StoriaContest");
  Event([&] { upkeep::CompattaDatabase(session); });
  for (const char* table : {"Gare", "GareBande", "GareQso"}) {
    EXPECT_THAT(Rows(fmt::format("Select * from {}", table)), IsEmpty()) << table;
  }
}

TEST_F(GaraStation, TakingBackTheFirstContactTakesItsHeaderBackToo) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  EXPECT_THAT(Rows("Select Nome from Contest"), SizeIs(1));
  Event([&] { history::TakeBackLast(session); });
  EXPECT_THAT(Stored(), IsEmpty());
  EXPECT_THAT(Rows("Select Nome from Contest"), IsEmpty());
  EXPECT_EQ(window->Totale.Text(), "0 QSO, 0 punti");
  // The serial was given all the same.
  EXPECT_EQ(window->SerialeDato.Text(), "002");
}

TEST_F(GaraStation, AHeaderStaysWhileContactsStandUnderIt) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  const auto first = history::LastWork(session);
  Work("S51ZO", "3", "JN86DT");
  Event([&] { history::TakeBack(session, *first); });
  EXPECT_THAT(Rows("Select Call from [Contest Qso]"), ElementsAre("S51ZO"));
  EXPECT_THAT(Rows("Select Nome from Contest"), SizeIs(1));
}

TEST_F(GaraStation, ACorrectionTakenBackBringsItsWorthBack) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Later(1);
  Work("DK5AB", "13", "JN48QT");
  Event([&] { window->Qso.SetCurrent(1, 0); });
  Press(*window, "cmCorreggi");
  Type(window->Call, "DK5AC");
  Press(*window, "cmInserisci");
  EXPECT_EQ(window->Totale.Text(), "2 QSO, 980 punti");
  Event([&] { history::TakeBackLast(session); });
  EXPECT_EQ(window->Totale.Text(), "1 QSO, 490 punti, doppi 1");
  EXPECT_THAT(Beside(), ElementsAre("  2 m|1|07/09/2024 14:00:30|490||0",
                                    "  2 m|2|07/09/2024 14:01:30|0||-1"));
  Press(*window, "cmVerifica");
  EXPECT_THAT(window->Avviso.Text(), StartsWith("Verifica: errori 1,"));  // the category
}

TEST_F(GaraStation, TheContestGoesOutAsAdifToo) {
  Begin(kIaru, "07/09/2024");
  Event([&] { window->Modo.SetText("CW"); });
  Work("DK5AB", "12", "JN48QT");
  Press(*window, "cmEsportaAdif");
  EXPECT_EQ(window->Avviso.Text(), "Scritto IARU-Region-1-145-MHz_2024.adi: 1 QSO");
  EXPECT_THAT(ReadBytes(directory.Path() / "IARU-Region-1-145-MHz_2024.adi"),
              HasSubstr("<CALL:5>DK5AB <QSO_DATE:8>20240907 <TIME_ON:6>140030 <BAND:2>2m "
                        "<MODE:2>CW <RST_SENT:3>599 <RST_RCVD:3>599 <STX:1>1 <SRX:2>12 "
                        "<GRIDSQUARE:6>JN48QT <CONTEST_ID:15>IARU R1 145 MHz"));
}

TEST_F(GaraStation, ALogInOrderIsWrittenAndReadBackTheSame) {
  Begin(kIaru, "07/09/2024");
  Event([&] { window->Categoria.SetText("SINGLE"); });
  Work("DK5AB", "12", "JN48QT");
  Later(11 * 60);
  Work("S51ZO", "3", "JN86DT");
  Press(*window, "cmEsportaEdi");
  EXPECT_EQ(window->Avviso.Text(), "Scritto IK4ABC_144MHz.edi: si manda a https://iaru.oevsv.at");
  const std::filesystem::path file = directory.Path() / "IK4ABC_144MHz.edi";
  const std::string bytes = ReadBytes(file);
  EXPECT_THAT(bytes,
              HasSubstr("[QSORecords;2]\r\n240907;1400;DK5AB;1;59;001;59;012;;JN48QT;490;;N;N;\r\n"
                        "240908;0100;S51ZO;1;59;002;59;003;;JN86DT;479;;N;N;\r\n"));
  // Once more the same; into an empty contest, out again: the same file.
  machine.Picks().Queue(file);
  Press(*window, "cmImportaEdi");
  EXPECT_EQ(window->Avviso.Text(), "Letti 2 QSO: importati 0, già presenti 2, avvisi 0");
  for (const char* table : {"[Contest Qso]", "Contest", "GareQso", "GareBande", "Gare"}) {
    Exec(fmt::format("delete * from {}", table));
  }
  Reopen();
  Begin(kIaru, "07/09/2024");
  Event([&] { window->Categoria.SetText("SINGLE"); });
  machine.Picks().Queue(file);
  Press(*window, "cmImportaEdi");
  EXPECT_EQ(window->Avviso.Text(), "Letti 2 QSO: importati 2, già presenti 0, avvisi 0");
  std::filesystem::remove(file);
  Press(*window, "cmEsportaEdi");
  EXPECT_EQ(ReadBytes(file), bytes);
}

TEST_F(GaraStation, NothingIsWrittenWhileAnErrorStandsUnlessTheOperatorSaysSo) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  machine.Messages().QueueAnswer(false);
  Press(*window, "cmEsportaEdi");
  EXPECT_EQ(window->Avviso.Text(), "Log non scritto: errori 1");
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "IK4ABC_144MHz.edi"));
  machine.Messages().QueueAnswer(true);
  Press(*window, "cmEsportaEdi");
  EXPECT_TRUE(std::filesystem::exists(directory.Path() / "IK4ABC_144MHz.edi"));
}

TEST_F(GaraStation, RulesThatAreOpenMayBeTriedButNotSent) {
  Begin("Marconi Memorial Contest VHF (da completare)", "02/11/2024");
  Work("DK5AB", "12", "JN48QT");
  Press(*window, "cmEsportaEdi");
  EXPECT_EQ(window->Avviso.Text(),
            "Le regole sono da completare: si può provare, ma il log non si scrive");
}

TEST_F(GaraStation, TheCheckLeadsToTheContact) {
  Begin(kIaru, "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Work("DK5AC", "13", "JN48QT");
  Press(*window, "cmVerifica");
  EXPECT_THAT(brenvo::RowsOf(window->Verifiche),
              ElementsAre("Errore||Manca la categoria", "Avviso||Manca la mail (RHBBS)",
                          "Avviso|2 m 2 DK5AC|DK5AC e DK5AB differiscono di una lettera",
                          "Nota||Il log scade mercoledì 11/09/2024 alle 23:59 UTC, fra 4 g 9 h"));
  Event([&] { window->Verifiche.SetCurrent(3, 0); });
  Press(*window, "cmVaiAlQso");
  EXPECT_EQ(window->Call.Text(), "DK5AC");
  EXPECT_EQ(window->SerialeDato.Text(), "002");
}

TEST_F(GaraStation, TheLogGetsModeDateSerialsAndExchange) {
  Exec("insert into Valori (Nome,Valore) values ('Ora','UTC')");
  Begin(kIaru, "07/09/2024");
  Event([&] { window->Modo.SetText("CW"); });
  Later(11 * 60);
  Work("DK5AB", "12", "JN48QT");
  Press(*window, "cmNelLog");
  EXPECT_EQ(window->Avviso.Text(), "Nel log: nuovi 1, già presenti 0");
  EXPECT_THAT(
      Rows("Select DataQso,Call,Banda,Modo,QrkDato,QrkRicevuto,Locator,Country,Note from Log"),
      ElementsAre("08/09/2024 01:00:30|DK5AB|  2 m|CW|599001|599012|JN48QT|DL|"
                  "IARU Region 1 145 MHz"));
  EXPECT_THAT(Rows("Select Campo,Valore from LogAdif Order By Campo"),
              ElementsAre("CONTEST_ID|IARU R1 145 MHz", "SRX|12", "STX|1"));
  Press(*window, "cmNelLog");
  EXPECT_EQ(window->Avviso.Text(), "Nel log: nuovi 0, già presenti 0");
}

TEST_F(GaraStation, AnOperatorsBrokenFileIsTold) {
  std::ofstream(directory.Path() / "Contest" / "mio.json") << "{\n\"formato\": 1,\n\"nome\": 3}";
  Reopen();
  EXPECT_THAT(window->Avviso.Text(), StartsWith("Regole che non si leggono: mio.json: riga 1"));
}

TEST_F(GaraStation, AKeyAndAContactAskTheStoreTheSameHoweverManyThereAre) {
  Begin(kIaru, "07/09/2024");
  int next = 0;
  const auto work = [&] {
    ++next;
    Work(fmt::format("DL{}{}{}X", next % 10, static_cast<char>('A' + next / 10 % 26),
                     static_cast<char>('A' + next / 260 % 26)),
         "7", "JN48QT");
  };
  struct Cost {
    std::int64_t statements, rows;
    bool operator==(const Cost&) const = default;
  };
  const auto costOf = [&](const std::function<void()>& event) {
    const engine::EngineCounters before = session.Db.Counters();
    event();
    const engine::EngineCounters after = session.Db.Counters();
    return Cost{after.statements - before.statements, after.rowsStepped - before.rowsStepped};
  };
  const auto key = [&] { Type(window->Call, "OZ"); };
  const auto empty = [&] {
    Press(*window, "cmSvuota");
    Event([&] { window->Locator.SetText(""); });
  };
  for (int i = 0; i < 5; ++i) work();
  const Cost few = costOf(work), keyOfFew = costOf(key);
  empty();
  for (int i = 0; i < 30; ++i) work();
  const Cost many = costOf(work), keyOfMany = costOf(key);
  EXPECT_EQ(many.statements, few.statements);
  EXPECT_EQ(many.rows, few.rows);
  EXPECT_EQ(keyOfMany.statements, keyOfFew.statements);
  EXPECT_EQ(keyOfMany.rows, keyOfFew.rows);
}

TEST_F(GaraStation, FiveHundredContactsWithCorrectionsScoreAsTheSlowRecount) {
  machine.SetNow(base::DateTime::Of(2024, 10, 5, 16, 0, 0));
  Begin(kUhf, "05/10/2024");
  std::mt19937 random(7);
  for (int i = 0; i < 500; ++i) {
    Later(1);
    const std::string call =
        fmt::format("DL{}A{}{}", random() % 10, static_cast<char>('A' + random() % 8),
                    static_cast<char>('A' + random() % 4));
    const std::string locator =
        fmt::format("JN{}{}{}{}", random() % 10, random() % 10,
                    static_cast<char>('A' + random() % 24), static_cast<char>('A' + random() % 24));
    if (i % 150 == 149) Press(*window, "cmBanda");
    Work(call, std::to_string(i + 1), locator);
    if (i % 50 == 49) {
      Event([&] { window->Qso.SetCurrent(1 + static_cast<std::int64_t>(random() % 20), 0); });
      Press(*window, "cmCorreggi");
      Type(window->Call, fmt::format("OK1X{}", static_cast<char>('A' + random() % 26)));
      Press(*window, "cmInserisci");
    }
  }
  EXPECT_THAT(Rows("Select Count(*) from [Contest Qso]"), ElementsAre("500"));
  const auto entries = ReadEntries(session.Db);
  ASSERT_EQ(entries.size(), 1u);
  const auto qsos = ReadQsos(session, entries[0]);
  std::vector<Contact> contacts;
  for (const StoredQso& each : qsos) contacts.push_back(each.contact);
  const Rule rule = DeliveredRule("iaru-uhf-microonde");
  const Recounted again = brenvo::gara::Recount(rule, {"IK4ABC", "JN54MN", "", {}}, contacts);
  EXPECT_GT(again.score.duplicates, 50);
  EXPECT_THAT(
      window->Totale.Text(),
      StartsWith(fmt::format("{} QSO, {} punti", 500 - again.score.duplicates, again.score.total)));
  for (std::size_t i = 0; i < qsos.size(); ++i) {
    EXPECT_EQ(qsos[i].worth.points, again.worths[i].points);
    EXPECT_EQ(qsos[i].worth.duplicateOf.has_value(), again.worths[i].duplicateOf.has_value());
  }
  // The serials of each band are whole.
  std::map<std::string, std::set<std::int64_t>> serials;
  for (const Contact& each : contacts) serials[each.band].insert(each.serialSent);
  for (const auto& [band, given] : serials) EXPECT_EQ(*given.rbegin(), std::ssize(given)) << band;
}

}  // namespace
}  // namespace brenvo::gara
