#include "diplomi/diplomi.h"

#include <gmock/gmock.h>

#include "core/history.h"
#include "core/transaction.h"
#include "history/take_back.h"
#include "tests/diplomi/diplomi_station.h"

namespace brenvo::diplomi {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class DiplomiTest : public AwardStation {
 protected:
  Diplomi& OpenIt() { return Open<Diplomi>("Diplomi"); }
  void Later() { machine.Advance(1000); }
};

TEST_F(DiplomiTest, ACardALotwRecordAndACreditAreReadFromTheTablesBeside) {
  Add("K1A", " 20 m", "K", "QslRicevuta=True");
  Field(Add("JA1A", " 15 m", "JA"), "LOTW_QSL_RCVD", "Y");
  Field(Add("VK1A", " 15 m", "VK"), "CREDIT_GRANTED", "DXCC:LOTW,DXCC_BAND:LOTW");
  Field(Add("ZL1A", " 15 m", "ZL"), "EQSL_QSL_RCVD", "Y");
  Diplomi& window = OpenIt();
  EXPECT_EQ(window.Diploma.Text(), "DXCC (da completare)");
  EXPECT_EQ(LetterOf(window, "K"), "C");
  EXPECT_EQ(LetterOf(window, "JA"), "C");
  EXPECT_EQ(LetterOf(window, "VK"), "A");
  EXPECT_EQ(LetterOf(window, "ZL"), "L");
  EXPECT_EQ(LetterOf(window, "I"), "");
  EXPECT_THAT(window.Totali.Text(), StartsWith("Lavorati 4, confermati 3, accreditati 1 su 340\n"));
}

TEST_F(DiplomiTest, ABoxThatAServiceHasTickedIsNoCard) {
  const std::int64_t key = Add("K1A", " 20 m", "K", "QslRicevuta=True");
  Exec("insert into LogConferme (QsoNr,Servizio,Spunta) values (" + std::to_string(key) +
       ",'eQSL',True)");
  const std::int64_t other = Add("JA1A", " 20 m", "JA", "QslRicevuta=True");
  Exec("insert into LogConferme (QsoNr,Servizio,Spunta) values (" + std::to_string(other) +
       ",'eQSL',True)");
  Exec("insert into LogQsl (QsoNr,Verso,Via) values (" + std::to_string(other) + ",'R','B')");
  Diplomi& window = OpenIt();
  EXPECT_EQ(LetterOf(window, "K"), "L");
  EXPECT_EQ(LetterOf(window, "JA"), "C");
}

TEST_F(DiplomiTest, FollowsAContactThatComesChangesAndGoes) {
  Diplomi& window = OpenIt();
  EXPECT_EQ(LetterOf(window, "K"), "");
  const std::int64_t key = Add("K1A", " 20 m", "K");
  Later();
  EXPECT_EQ(LetterOf(window, "K"), "L");
  const auto row = session.Db.OpenDynaset("select * from Log where QsoNr=" + std::to_string(key));
  session.Contacts.Change(core::ContactTable::kLog, *row, [](engine::EditableRecordset& change) {
    change.Set("Country", "JA");
    change.Set("QslRicevuta", true);
  });
  Later();
  EXPECT_EQ(LetterOf(window, "K"), "");
  EXPECT_EQ(LetterOf(window, "JA"), "C");
  session.Contacts.Delete(core::ContactTable::kLog, *row);
  Later();
  EXPECT_EQ(LetterOf(window, "JA"), "");
}

TEST_F(DiplomiTest, FollowsAWorkOfManyAndWhatIsTakenBack) {
  Add("K1A", " 20 m", "K");
  Diplomi& window = OpenIt();
  EXPECT_EQ(LetterOf(window, "K"), "L");
  session.Contacts.ChangeMany("prova", {core::ContactTable::kLog}, [&] {
    core::Transaction transaction(session);
    session.Contacts.Past().Keep(1);
    session.Db.Execute("update Log set QslRicevuta=True where QsoNr=1");
    transaction.Commit();
    return true;
  });
  EXPECT_EQ(LetterOf(window, "K"), "C");
  EXPECT_TRUE(history::TakeBackLast(session));
  EXPECT_EQ(LetterOf(window, "K"), "L");
}

TEST_F(DiplomiTest, ACreditWithoutAContactIsCountedAndToldAsSuch) {
  Exec(
      "insert into ConfermeRecord (Servizio,Record,Stato,Call,Banda,Gruppo,Dxcc,Crediti) values "
      "('LoTW','r1','C','VK9A','20M','CW',150,'DXCC:CARD,DXCC_BAND:CARD')");
  Exec(
      "insert into ConfermeRecord (Servizio,Record,Stato,Call,Banda,Gruppo,Dxcc,Crediti) values "
      "('LoTW','r2','I','JA9A','20M','CW',339,'DXCC:CARD')");
  Diplomi& window = OpenIt();
  EXPECT_EQ(LetterOf(window, "VK"), "A");
  EXPECT_EQ(LetterOf(window, "JA"), "");
  ClickUnit(window, "VK");
  EXPECT_EQ(window.Casella.Text(), "VK Australia: accreditato, senza un Qso nel log (VK9A 20M)");
  EXPECT_FALSE(window.cmApri.Enabled());
  // Nobody tells of it when the operator lets one go: it is looked at when the window comes back.
  Exec("update ConfermeRecord set Stato='C' where Record='r2'");
  Event([&] { window.Activate(); });
  EXPECT_EQ(LetterOf(window, "JA"), "A");
}

TEST_F(DiplomiTest, ACellSaysWhichContactFillsItAndWhatWouldRaiseIt) {
  Add("K1A", " 20 m", "K");
  Field(Add("K1B", " 20 m", "K"), "LOTW_QSL_SENT", "Y");
  const std::int64_t sent = Add("JA1A", " 15 m", "JA", "QslInviata=True");
  Field(sent, "LOTW_QSL_SENT", "Y");
  Field(sent, "LOTW_QSLSDATE", "20010202");
  Field(Add("VK1A", " 15 m", "VK"), "LOTW_QSL_RCVD", "Y");
  Diplomi& window = OpenIt();
  ClickUnit(window, "K");
  EXPECT_EQ(window.Casella.Text(),
            "K Stati Uniti d'America: lavorato con K1A 01/01/2001 10:01:00 20 m CW (Qso 1). Per "
            "alzarla: si può chiedere la cartolina; si può inviare a LoTW");
  EXPECT_THAT(window.Contatti.Items(), ElementsAre("1: K1A 01/01/2001 10:01:00 20 m CW, lavorato",
                                                   "2: K1B 01/01/2001 10:02:00 20 m CW, lavorato"));
  ClickUnit(window, "JA");
  EXPECT_THAT(window.Casella.Text(),
              HasSubstr("Per alzarla: la cartolina è andata, si aspetta la risposta; a LoTW è "
                        "inviato il 02/02/2001, si aspetta il corrispondente"));
  ClickUnit(window, "VK");
  EXPECT_EQ(window.Casella.Text(),
            "VK Australia: confermato da LoTW con VK1A 01/01/2001 10:04:00 15 m CW (Qso 4); va "
            "nella lista per la domanda");
  ClickUnit(window, "I");
  EXPECT_THAT(window.Casella.Text(), HasSubstr("I Italia: da lavorare"));
  EXPECT_THAT(window.Contatti.Items(), IsEmpty());
}

TEST_F(DiplomiTest, TheRecordsSquareCountsAndNotTheLogs) {
  const std::int64_t key = Add("DK1A", "  2 m", "DL", "Locator='JN48AA'");
  Field(key, "LOTW_QSL_RCVD", "Y");
  Exec("insert into LogConferme (QsoNr,Servizio,Locator) values (" + std::to_string(key) +
       ",'LoTW','JN49AA')");
  Diplomi& window = OpenIt();
  Choose(window, "VUCC");
  EXPECT_EQ(LetterOf(window, "JN48"), "L");
  EXPECT_EQ(LetterOf(window, "JN49"), "C");
  ClickUnit(window, "JN48");
  EXPECT_THAT(window.Casella.Text(),
              HasSubstr("LoTW ha confermato, ma il suo record non dice questo"));
}

TEST_F(DiplomiTest, WhatIsShownFollowsTheColumnThatIsLookedAt) {
  Add("K1A", " 20 m", "K", "QslRicevuta=True");
  Add("JA1A", " 15 m", "JA");
  Diplomi& window = OpenIt();
  Event([&] { window.Mostra.Pick(2); });
  EXPECT_EQ(LetterOf(window, "JA"), "L");
  EXPECT_EQ(LetterOf(window, "K"), "?");
  Event([&] { window.Mostra.Pick(3); });
  EXPECT_EQ(LetterOf(window, "K"), "C");
  EXPECT_EQ(window.Tabella.Rows(), 2);
  const auto& bands = window.Banda.Items();
  Event([&] {
    window.Banda.Pick(static_cast<int>(std::ranges::find(bands, "15 m") - bands.begin()));
  });
  EXPECT_EQ(window.Tabella.Rows(), 1);
  Event([&] { window.Mostra.Pick(1); });
  EXPECT_EQ(LetterOf(window, "K"), "C");
  EXPECT_EQ(LetterOf(window, "JA"), "?");
}

TEST_F(DiplomiTest, TheListForAnApplicationHoldsWhatIsConfirmedAndNotCredited) {
  Field(Add("K1A", " 20 m", "K"), "LOTW_QSL_RCVD", "Y");
  Field(Add("K1B", " 15 m", "K"), "LOTW_QSL_RCVD", "Y");
  Add("JA1A", " 15 m", "JA");
  Field(Add("VK1A", " 15 m", "VK"), "CREDIT_GRANTED", "DXCC,DXCC_BAND");
  Diplomi& window = OpenIt();
  machine.Picks().Queue(directory.Path() / "domanda.csv");
  Press(window, "cmDomanda");
  EXPECT_EQ(window.Avviso.Text(), "2 Qso in domanda.csv");
  EXPECT_EQ(BytesOf(directory.Path() / "domanda.csv"),
            "Nr,Unità,Nome,Call,Data e ora,Banda,Modo,Confermato da\r\n"
            "1,K,Stati Uniti d'America,K1A,01/01/2001 10:01:00,20 m,CW,LoTW\r\n"
            "2,K,Stati Uniti d'America,K1B,01/01/2001 10:02:00,15 m,CW,LoTW\r\n");
  Choose(window, "Quadrati");
  Press(window, "cmDomanda");
  EXPECT_EQ(window.Avviso.Text(), "Nessun Qso confermato che non sia già accreditato");
}

TEST_F(DiplomiTest, AnOwnAwardStandsBesideOursAndAFaultIsToldWithItsLine) {
  std::ofstream(directory.Path() / "Diplomi/mio.json") << SmallAward();
  std::string broken = SmallAward();
  broken.replace(broken.find("\"formato\": 1"), 12, "\"formato\": 3");
  std::ofstream(directory.Path() / "Diplomi/rotto.json") << broken;
  Diplomi& window = OpenIt();
  EXPECT_EQ(window.Avviso.Text(),
            "Regole che non si leggono: rotto.json: riga 2, formato: questo programma conosce il "
            "formato 1");
  EXPECT_THAT(window.Diploma.Items(), testing::Contains("Prova"));
}

}  // namespace
}  // namespace brenvo::diplomi
