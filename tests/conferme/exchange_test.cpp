// Reports asked of services, and contacts sent to them, in the window.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "conferme/conferme.h"
#include "core/log_time.h"
#include "core/own_values.h"
#include "history/take_back.h"
#include "tests/conferme/reports.h"
#include "tests/support/station.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ExchangeTest : public StationTest {
 protected:
  ExchangeTest() {
    Know<Conferme>("Conferme");
    core::StoreLogTime(session, core::LogTime::kUtc);
    Exec("update [User] set Call='IK0XYZ'");
    for (const char* call : {"CT7AAA", "DL3CCC", "ZS1AB"}) {
      session.Contacts.Add(
          core::ContactTable::kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
            row.Set(core::column::kDataQso, base::DateTime::Of(2001, 1, 1, 22, 14, 0));
            row.Set(core::column::kCall, call);
            row.Set(core::column::kBanda, " 20 m");
            row.Set(core::column::kModo, "CW");
          });
    }
    machine.TakeLines();
  }
  Conferme& OpenOf(Service service) {
    Conferme& window = Open<Conferme>("Conferme");
    Event([&] { window.Servizio.SetListIndex(static_cast<int>(service) + 1); });
    machine.TakeLines();
    return window;
  }
  void Answer(int status, const std::string& body, const std::string& failure = "") {
    Event([&] { machine.Web().Queue({status, body, failure}); });
  }
  std::vector<std::string> Asked() {
    std::vector<std::string> asked;
    for (const std::string& line : machine.TakeLines()) {
      if (line.starts_with("http") || line.starts_with("forget")) asked.push_back(line);
    }
    return asked;
  }
  std::vector<std::string> FieldsNow() {
    return Rows("select QsoNr,Campo,Valore from LogAdif order by QsoNr,Campo");
  }
  static std::string LotwText(const std::string& record, const std::string& mark) {
    return fmt::format("<PROGRAMID:4>LoTW<{}:19>2001-02-02 11:00:00<APP_LoTW_NUMREC:1>{}<eoh>\r\n",
                       mark, record.empty() ? 0 : 1) +
           record + "<APP_LoTW_EOF>\r\n";
  }
  static std::string Confirmed() {
    return LotwText(LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400"), "APP_LoTW_LASTQSL");
  }
  static std::string Accepted() {
    return LotwText(RecordOf({{"CALL", "DL3CCC"},
                              {"BAND", "20M"},
                              {"MODE", "CW"},
                              {"QSO_DATE", "20010101"},
                              {"TIME_ON", "221400"},
                              {"QSL_RCVD", "N"}}),
                    "APP_LoTW_LASTQSORX");
  }
};

TEST_F(ExchangeTest, LotwIsAskedForConfirmationsThenForWhatItHas) {
  Conferme& window = OpenOf(Service::kLotw);
  Answer(200, Confirmed());
  Answer(200, Accepted());
  Press(window, "cmScarica");
  EXPECT_THAT(
      Asked(),
      ElementsAre(
          "http GET \"https://lotw.arrl.org/lotwuser/lotwreport.adi?login=ik0xyz&password=(LoTW "
          "ik0xyz)&qso_query=1&qso_qsl=yes&qso_qslsince=1945-01-01&qso_withown=yes&qso_qsldetail="
          "yes\"",
          "http GET \"https://lotw.arrl.org/lotwuser/lotwreport.adi?login=ik0xyz&password=(LoTW "
          "ik0xyz)&qso_query=1&qso_qsl=no&qso_qsorxsince=1945-01-01&qso_withown=yes\""));
  EXPECT_THAT(FieldsNow(),
              ElementsAre("1|APP_LOTW_RXQSO|Y", "1|LOTW_QSL_RCVD|Y", "1|LOTW_QSL_SENT|Y",
                          "1|LOTW_QSLRDATE|20010201", "2|APP_LOTW_RXQSO|Y", "2|LOTW_QSL_SENT|Y"));
  EXPECT_EQ(core::OwnValue(session.Db, "Conferme LoTW"), "2001-02-02 11:00:00");
  EXPECT_EQ(core::OwnValue(session.Db, "Accolti LoTW"), "2001-02-02 11:00:00");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("rapporto LoTW: record 1, abbinati 1"));
}

TEST_F(ExchangeTest, TheNextQuestionGoesOnFromTheDateThatWasTold) {
  Conferme& window = OpenOf(Service::kLotw);
  Answer(200, Confirmed());
  Answer(200, Accepted());
  Press(window, "cmScarica");
  machine.TakeLines();
  Press(window, "cmScarica");
  EXPECT_THAT(Asked(), ElementsAre(HasSubstr("qso_qslsince=2001-02-02 11:00:00")));
  Press(window, "cmFerma");
}

TEST_F(ExchangeTest, WhoTakesTheReportBackIsToldTheSameAgain) {
  Conferme& window = OpenOf(Service::kLotw);
  Answer(200, Confirmed());
  Answer(500, "");
  Press(window, "cmScarica");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("LoTW ha un guasto (500)"));
  EXPECT_EQ(core::OwnValue(session.Db, "Conferme LoTW"), "2001-02-02 11:00:00");
  EXPECT_EQ(core::OwnValue(session.Db, "Accolti LoTW"), std::nullopt);
  Event([&] { history::TakeBackLast(session); });
  EXPECT_THAT(FieldsNow(), IsEmpty());
  EXPECT_EQ(core::OwnValue(session.Db, "Conferme LoTW"), std::nullopt);
}

TEST_F(ExchangeTest, AReportThatIsCutShortOrLiesChangesNothing) {
  Conferme& window = OpenOf(Service::kLotw);
  const std::string whole = Confirmed();
  const std::string lying = "<PROGRAMID:4>LoTW<APP_LoTW_NUMREC:1>7<eoh>" +
                            LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400") +
                            "<APP_LoTW_EOF>";
  for (const auto& [body, told] :
       {std::pair<std::string, std::string>(whole.substr(0, whole.size() - 40), "è troncato"),
        {lying, "dice di avere 7 record e ne ha 1"},
        {"<!DOCTYPE html><html>Busy</html>", "è una pagina HTML"},
        {"", "è vuoto"}}) {
    Answer(200, body);
    Press(window, "cmScarica");
    EXPECT_THAT(window.Avviso.Text(), HasSubstr(told));
    EXPECT_THAT(FieldsNow(), IsEmpty());
    EXPECT_EQ(core::OwnValue(session.Db, "Conferme LoTW"), std::nullopt);
    EXPECT_FALSE(window.cmFerma.Enabled());
  }
}

TEST_F(ExchangeTest, AnAnswerThatDoesNotEndWellIsToldAndLeavesNoFile) {
  Conferme& window = OpenOf(Service::kLotw);
  Answer(200, Confirmed().substr(0, 100), "la risposta è troncata");
  Press(window, "cmScarica");
  EXPECT_EQ(window.Avviso.Text(), "LoTW: la risposta è troncata");
  EXPECT_FALSE(exists(session.File("\\LoTW.scaricato.parte")));
  EXPECT_FALSE(exists(session.File("\\LoTW.scaricato")));
  EXPECT_THAT(FieldsNow(), IsEmpty());
}

TEST_F(ExchangeTest, ASecretThatIsNotAcceptedIsForgotten) {
  Conferme& window = OpenOf(Service::kLotw);
  Answer(200, "<html>Username/password incorrect</html>");
  Press(window, "cmScarica");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("non ha accettato nome o parola d'ordine"));
  EXPECT_THAT(Asked(), ElementsAre(HasSubstr("http GET"), "forget \"LoTW ik0xyz\""));
  Answer(401, "");
  Press(window, "cmScarica");
  EXPECT_THAT(Asked(), ElementsAre(HasSubstr("http GET"), "forget \"LoTW ik0xyz\""));
}

TEST_F(ExchangeTest, TheWindowStaysUsableAndEscStops) {
  Conferme& window = OpenOf(Service::kLotw);
  EXPECT_FALSE(window.cmFerma.Enabled());
  Press(window, "cmScarica");
  EXPECT_TRUE(window.cmFerma.Enabled());
  EXPECT_EQ(window.cmFerma.Shortcut(), "Esc");
  EXPECT_FALSE(window.cmScarica.Enabled());
  Event([&] { window.Servizio.SetListIndex(0); });
  Event([&] { window.SoloDubbi.SetOn(true); });
  machine.TakeLines();
  Press(window, "cmFerma");
  EXPECT_THAT(Asked(), ElementsAre("http-stop"));
  EXPECT_EQ(window.Avviso.Text(), "Interrotto: quello che non è finito non cambia nulla");
  EXPECT_FALSE(window.cmFerma.Enabled());
}

TEST_F(ExchangeTest, AWindowThatClosesStopsWhatItAsked) {
  Conferme& window = OpenOf(Service::kLotw);
  Press(window, "cmScarica");
  machine.TakeLines();
  Event([&] { window.Close(); });
  EXPECT_THAT(Asked(), ElementsAre("http-stop"));
  EXPECT_FALSE(machine.Web().IsAsked());
}

TEST_F(ExchangeTest, EqslGivesAPageThenItsFileAndWaitsTenSecondsBetween) {
  Conferme& window = OpenOf(Service::kEqsl);
  Answer(200, "<html><A HREF=\"/downloadedfiles/X1.adi\">.ADI file</A></html>");
  Answer(200,
         "Received eQSLs for IK0XYZ\r\n<PROGRAMID:4>eQSL<EOH>\r\n<CALL:6>DL3CCC<QSO_DATE:8>20010101"
         "<TIME_ON:4>2214<BAND:3>20M<MODE:2>CW<QSL_SENT:1>Y<QSL_SENT_VIA:1>E<EOR>\r\n");
  Press(window, "cmScarica");
  EXPECT_THAT(Asked(),
              ElementsAre("http GET \"https://www.eQSL.cc/qslcard/DownloadInBox.cfm?UserName="
                          "IK0XYZ&Password=(eQSL IK0XYZ)\"",
                          "http GET \"https://www.eQSL.cc/downloadedfiles/X1.adi\""));
  EXPECT_THAT(FieldsNow(), ElementsAre("2|EQSL_QSL_RCVD|Y", "2|EQSL_QSLRDATE|20010203"));
  EXPECT_EQ(core::OwnValue(session.Db, "Conferme eQSL"), "2001-02-03");
  Press(window, "cmScarica");
  EXPECT_EQ(window.Avviso.Text(), "eQSL vuole 10 secondi tra una richiesta e l'altra");
  EXPECT_THAT(Asked(), IsEmpty());
  machine.Advance(11000);
  Answer(200, "<html>You have no log entries</html>");
  Press(window, "cmScarica");
  EXPECT_THAT(Asked(), ElementsAre(HasSubstr("RcvdSince=20010201")));
  EXPECT_EQ(window.Avviso.Text(), "eQSL: niente di nuovo");
}

TEST_F(ExchangeTest, QrzIsAskedPageByPageUntilOneBringsNothingNew) {
  Conferme& window = OpenOf(Service::kQrz);
  const auto page = [](int from, int count) {
    std::string text = fmt::format("RESULT=OK&COUNT={}&ADIF=", count);
    for (int i = from; i < from + count; ++i) {
      const std::string call = i == 3 ? "ZS1AB" : fmt::format("IK1A{}", i);
      const std::string id = std::to_string(i);
      text += fmt::format(
          "&lt;call:{}&gt;{}&lt;band:3&gt;20m&lt;mode:2&gt;CW&lt;qso_date:8&gt;"
          "20010101&lt;time_on:4&gt;2214&lt;app_qrzlog_logid:{}&gt;{}&lt;"
          "app_qrzlog_status:1&gt;C&lt;eor&gt;\n",
          call.size(), call, id.size(), id);
    }
    return text;
  };
  Answer(200, page(1, 250));
  Answer(200, page(250, 3));
  Press(window, "cmScarica");
  const auto asked = Asked();
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_THAT(asked[0], HasSubstr("KEY=(QRZ IK0XYZ)&ACTION=FETCH"));
  EXPECT_THAT(asked[1], HasSubstr("AFTERLOGID:250"));
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("logbook QRZ: record 252, abbinati 1"));
  EXPECT_EQ(core::OwnValue(session.Db, "Conferme QRZ"), "2001-02-03");
}

TEST_F(ExchangeTest, QrzWithoutAnythingNewIsNoFailure) {
  Conferme& window = OpenOf(Service::kQrz);
  Answer(200, "RESULT=FAIL&COUNT=0");
  Press(window, "cmScarica");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("record 0"));
  Answer(200, "RESULT=AUTH&REASON=invalid api key");
  Press(window, "cmScarica");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("non ha accettato la chiave"));
  EXPECT_THAT(Asked(), testing::Contains("forget \"QRZ IK0XYZ\""));
}

TEST_F(ExchangeTest, ClubLogNeedsTheAddressByWhichItKnowsTheStation) {
  Conferme& window = OpenOf(Service::kClubLog);
  Press(window, "cmScarica");
  EXPECT_EQ(window.Avviso.Text(), "Scrivere in Preferenze la posta elettronica di Club Log");
  Press(window, "cmInvia");
  EXPECT_EQ(window.Avviso.Text(), "Scrivere in Preferenze la posta elettronica di Club Log");
  EXPECT_THAT(Asked(), IsEmpty());
  ASSERT_EQ(session.Choices.Set(core::choice::kClubLogUser, "op@example.org"), "");
  Answer(200, R"([["CT7AAA","2001-01-01 22:14:00",20,"CW"]])");
  Press(window, "cmScarica");
  EXPECT_THAT(Asked(),
              ElementsAre("http GET \"https://clublog.org/getmatches.php?api=(Club Log (chiave "
                          "API))&email=op@example.org&password=(Club Log op@example.org)&callsign="
                          "IK0XYZ\""));
  EXPECT_THAT(FieldsNow(), ElementsAre("1|APP_BRENVO_CLUBLOG_MATCH|Y"));
}

TEST_F(ExchangeTest, WhatEqslTakesIsMarkedAndWhatItRefusesIsListed) {
  Conferme& window = OpenOf(Service::kEqsl);
  Answer(200,
         "Warning: Y=2001 M=01 D=01 DL3CCC 20M CW Bad record: Invalid mode<br>\n"
         "Warning: Y=2001 M=01 D=01 ZS1AB 20M CW Bad record: Duplicate<br>\n"
         "Result: 1 out of 3 records added<br>");
  Press(window, "cmInvia");
  const auto asked = Asked();
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_THAT(asked[0], HasSubstr("http POST \"https://www.eQSL.cc/qslcard/ImportADIF.cfm\" "
                                  "\"eqsl_user=IK0XYZ&eqsl_pswd=(eQSL IK0XYZ)&Filename=log.adi ["));
  EXPECT_EQ(
      window.Avviso.Text(),
      "Inviati a eQSL: 2 Qso, rifiutati 1; Result: 1 out of 3 records added, 1 che aveva già");
  EXPECT_THAT(FieldsNow(), ElementsAre("1|EQSL_QSL_SENT|Y", "1|EQSL_QSLSDATE|20010203",
                                       "3|EQSL_QSL_SENT|Y", "3|EQSL_QSLSDATE|20010203"));
  EXPECT_THAT(window.Stadi.Text(), HasSubstr("eQSL: da inviare 0, inviati 2, rifiutati 1"));
  // It stands in the table, goes out no more as it is, and does where the operator says so.
  Press(window, "cmInvia");
  EXPECT_EQ(window.Avviso.Text(), "Nessun Qso da inviare a eQSL");
  Event([&] { window.Stadio.SetListIndex(5); });
  Event([&] { window.Tabella.ClickCell(1, 0); });
  Press(window, "cmAbbina");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("Il servizio non ha preso il Qso"));
  Press(window, "cmIgnora");
  EXPECT_EQ(window.Avviso.Text(), "DL3CCC si invia di nuovo");
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), ElementsAre(2));
}

TEST_F(ExchangeTest, ARefusedContactGoesOutAgainOnceItWasCorrected) {
  KeepRefusals(session, Service::kEqsl, {{2, "Bad record"}});
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), ElementsAre(1, 3));
  Exec("update Log set Modo='SSB' where QsoNr=2");
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), ElementsAre(1, 2, 3));
  EXPECT_THAT(RefusalsOf(session, Service::kEqsl), IsEmpty());
}

TEST_F(ExchangeTest, AContactThatWasChangedSinceItWasSentGoesOutAgain) {
  MarkSent(session, Service::kEqsl, {1, 2, 3});
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), IsEmpty());
  Exec("update Log set Qra='UGO' where QsoNr=1");  // nothing that a service looks at
  Exec("update Log set Banda=' 40 m' where QsoNr=2");
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), ElementsAre(2));
  EXPECT_EQ(ChangedSince(session, Service::kEqsl), 1);
  EXPECT_THAT(UnsentTo(session, Service::kQrz), ElementsAre(1, 2, 3));
  machine.SetNow(base::DateTime::Of(2001, 3, 4, 5, 6, 7));
  EXPECT_EQ(MarkSent(session, Service::kEqsl, {2}), 1);
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), IsEmpty());
  EXPECT_THAT(Rows("select Valore from LogAdif where QsoNr=2 and Campo='EQSL_QSLSDATE'"),
              ElementsAre("20010304"));
  // Nor one that the operator does not want to send any more.
  Exec("update Log set Banda=' 15 m' where QsoNr=2");
  Exec("update LogAdif set Valore='N' where QsoNr=2 and Campo='EQSL_QSL_SENT'");
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), IsEmpty());
}

TEST_F(ExchangeTest, WordsThatNameNoContactMarkNone) {
  Conferme& window = OpenOf(Service::kEqsl);
  Answer(200, "Warning: line 3 Bad record: Invalid mode\nResult: 2 out of 3 records added");
  Press(window, "cmInvia");
  EXPECT_THAT(FieldsNow(), IsEmpty());
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("Inviati a eQSL: 0 Qso, restano 3"));
}

TEST_F(ExchangeTest, QrzTakesOneAtATimeAndARefusalHoldsUpNoOther) {
  Conferme& window = OpenOf(Service::kQrz);
  Answer(200, "RESULT=OK&LOGID=1&COUNT=1");
  Answer(200, "RESULT=FAIL&REASON=outside date range");
  Answer(200, "RESULT=OK&LOGID=2&COUNT=1");
  Press(window, "cmInvia");
  const auto asked = Asked();
  ASSERT_EQ(asked.size(), 3U);
  EXPECT_THAT(asked[0], HasSubstr("http POST \"https://logbook.qrz.com/api\" \"KEY=(QRZ IK0XYZ)&"
                                  "ACTION=INSERT&OPTION=REPLACE&ADIF=<"));
  EXPECT_THAT(asked[0], HasSubstr("CT7AAA"));
  EXPECT_THAT(asked[0], Not(HasSubstr("DL3CCC")));
  EXPECT_EQ(window.Avviso.Text(), "Inviati a QRZ: 2 Qso, rifiutati 1");
  EXPECT_THAT(Rows("select QsoNr from LogAdif where Campo='QRZCOM_QSO_UPLOAD_STATUS' and "
                   "Valore='Y' order by QsoNr"),
              ElementsAre("1", "3"));
}

TEST_F(ExchangeTest, WhatWasTakenBeforeItIsStoppedIsMarked) {
  Conferme& window = OpenOf(Service::kQrz);
  Answer(200, "RESULT=OK&LOGID=1&COUNT=1");
  Press(window, "cmInvia");
  Press(window, "cmFerma");
  EXPECT_EQ(window.Avviso.Text(), "Inviati a QRZ: 1 Qso, restano 2; interrotto");
  EXPECT_THAT(UnsentTo(session, Service::kQrz), ElementsAre(2, 3));
}

TEST_F(ExchangeTest, EachStationsContactsGoOutUnderItsOwnCall) {
  Exec("insert into Stazioni (Nome,Tipo,Call) values ('Monte','Portatile','IK0XYZ/P')");
  Exec("update LogOrigine set Stazione=2 where QsoNr=3");
  Conferme& window = OpenOf(Service::kEqsl);
  Answer(200, "Result: 2 out of 2 records added");
  Answer(503, "");
  Press(window, "cmInvia");
  EXPECT_THAT(Asked(),
              ElementsAre(HasSubstr("eqsl_user=IK0XYZ&"), HasSubstr("eqsl_user=IK0XYZ/P&")));
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("eQSL ha un guasto (503)"));
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), ElementsAre(3));
}

TEST_F(ExchangeTest, ClubLogThatRefusesIsAskedNoFurther) {
  ASSERT_EQ(session.Choices.Set(core::choice::kClubLogUser, "op@example.org"), "");
  Conferme& window = OpenOf(Service::kClubLog);
  Answer(403, "Login rejected");
  Press(window, "cmInvia");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("(Login rejected)"));
  EXPECT_THAT(FieldsNow(), IsEmpty());
  EXPECT_THAT(Asked(), ElementsAre(HasSubstr("putlogs.php"), "forget \"Club Log op@example.org\""));
}

TEST_F(ExchangeTest, LotwIsSentWhatTqslSigns) {
  Conferme& window = OpenOf(Service::kLotw);
  machine.Processes().FailNext("tqsl");
  Press(window, "cmInvia");
  EXPECT_EQ(window.Avviso.Text(), "Manca tqsl: installare il pacchetto trustedqsl");
}

}  // namespace
}  // namespace brenvo::conferme
