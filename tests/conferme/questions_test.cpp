#include "conferme/questions.h"

#include <gmock/gmock.h>

#include "conferme/report.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string ValueIn(const platform::WebQuestion& question, std::string_view name) {
  for (const platform::WebField& field : question.fields) {
    if (field.name == name) return field.value;
  }
  return "(none)";
}

TEST(Questions, GoToTheServicesByHttpsAlone) {
  const Addresses addresses;
  const Account account{Service::kLotw, "ik0xyz", "IK0XYZ"};
  for (const platform::WebQuestion& each :
       {AskLotw(addresses, account, true, ""), AskEqslInbox(addresses, account, ""),
        AskQrz(addresses, account, "", 0), AskClubLog(addresses, account, ""),
        SendEqsl(addresses, account, "x"), SendQrz(addresses, account, "x"),
        SendClubLog(addresses, account, "x")}) {
    EXPECT_TRUE(each.address.starts_with("https://")) << each.address;
    EXPECT_GT(each.limit, 0);
    EXPECT_GT(each.patience, 0);
    // Every one of them has who asks, by the name of a secret and no value.
    int secrets = 0;
    for (const platform::WebField& field : each.fields) {
      if (field.secret.empty()) continue;
      ++secrets;
      EXPECT_THAT(field.value, IsEmpty());
    }
    EXPECT_GE(secrets, 1) << each.address;
  }
}

TEST(Questions, GoOnFromTheDateThatTheServiceTold) {
  const Addresses addresses;
  const Account account{Service::kLotw, "ik0xyz", "IK0XYZ"};
  EXPECT_EQ(ValueIn(AskLotw(addresses, account, true, "2001-02-01 10:00:00"), "qso_qslsince"),
            "2001-02-01 10:00:00");
  EXPECT_EQ(ValueIn(AskLotw(addresses, account, false, "2001-02-01 10:00:00"), "qso_qsorxsince"),
            "2001-02-01 10:00:00");
  // Where LoTW has told none, all of it is asked for in so many words.
  EXPECT_EQ(ValueIn(AskLotw(addresses, account, true, ""), "qso_qslsince"), "1945-01-01");
  EXPECT_EQ(ValueIn(AskEqslInbox(addresses, account, "2001-02-01"), "RcvdSince"), "20010201");
  EXPECT_THAT(ValueIn(AskQrz(addresses, account, "2001-02-01", 7), "OPTION"),
              HasSubstr("AFTERLOGID:7,MODSINCE:2001-02-01"));
  EXPECT_EQ(ValueIn(AskClubLog(addresses, account, "2001-02-01"), "startday"), "1");
}

TEST(Questions, TakeOfAnInboxTheLinkOfTheSameHostAlone) {
  const std::string eqsl = "https://www.eQSL.cc";
  const auto page = [](const std::string& link) {
    return "<html><a href=\"" + link + "\">.ADI file</a></html>";
  };
  EXPECT_EQ(FileOfInbox(page("/downloadedfiles/IK0XYZ.adi"), eqsl),
            eqsl + "/downloadedfiles/IK0XYZ.adi");
  EXPECT_EQ(FileOfInbox(page("../downloadedfiles/A.adi"), eqsl), eqsl + "/downloadedfiles/A.adi");
  EXPECT_EQ(FileOfInbox(page(eqsl + "/downloadedfiles/A.adi"), eqsl),
            eqsl + "/downloadedfiles/A.adi");
  for (const char* link :
       {"http://www.eQSL.cc/a.adi", "https://elsewhere.example/a.adi", "//elsewhere.example/a.adi",
        "/a/../../b", "javascript:x", "", "https://www.eQSL.cc.example/a.adi", "/a.adi?x=1"}) {
    EXPECT_THROW((void)FileOfInbox(page(link), eqsl), ReportError) << link;
  }
  EXPECT_EQ(FileOfInbox("<html>You have no log entries</html>", eqsl), std::nullopt);
  EXPECT_THROW((void)FileOfInbox("Error: No such Username/Password found", eqsl), LoginError);
  EXPECT_THROW((void)FileOfInbox("<html>Down for maintenance</html>", eqsl), ReportError);
}

TEST(Questions, KnowWhatEqslSaysOfAnUpload) {
  const SendOutcome well = OutcomeOfEqsl(
      "<html>Warning: Y=2001 M=01 D=01 F3ABC 20M SSB Bad record: Duplicate<br>\n"
      "Result: 2 out of 3 records added<br></html>");
  EXPECT_TRUE(well.taken);
  EXPECT_EQ(well.told, "Result: 2 out of 3 records added, 1 che aveva già");
  EXPECT_THAT(well.wrong, IsEmpty());
  const SendOutcome partly = OutcomeOfEqsl(
      "Warning: Y=2001 M=01 D=01 F3ABC 20M XXX Bad record: Invalid mode\nResult: 1 out of 2 "
      "records "
      "added");
  EXPECT_TRUE(partly.taken);
  EXPECT_THAT(partly.wrong, ElementsAre(HasSubstr("F3ABC 20M XXX Bad record: Invalid mode")));
  EXPECT_FALSE(OutcomeOfEqsl("Error: Bad file").taken);
  EXPECT_TRUE(OutcomeOfEqsl("Error: No match on eQSL_User/eQSL_Pswd").login);
  EXPECT_FALSE(OutcomeOfEqsl("<html>Welcome</html>").taken);
}

TEST(Questions, KnowWhatQrzAndClubLogSayOfAnUpload) {
  EXPECT_TRUE(OutcomeOfQrz("RESULT=OK&LOGID=1&COUNT=1").taken);
  EXPECT_TRUE(OutcomeOfQrz("RESULT=REPLACE&LOGID=1").taken);
  EXPECT_TRUE(OutcomeOfQrz("STATUS=FAIL&REASON=Unable to add QSO: duplicate&RESULT=FAIL").taken);
  EXPECT_TRUE(OutcomeOfQrz("RESULT=AUTH&REASON=invalid api key").login);
  const SendOutcome refused = OutcomeOfQrz("RESULT=FAIL&REASON=outside date range\n&EXTENDED=");
  EXPECT_FALSE(refused.taken);
  EXPECT_EQ(refused.told, "QRZ: outside date range");
  EXPECT_FALSE(OutcomeOfQrz("<html>").taken);
  EXPECT_TRUE(OutcomeOfClubLog(200, "OK").taken);
  EXPECT_TRUE(OutcomeOfClubLog(403, "").login);
  EXPECT_FALSE(OutcomeOfClubLog(500, "").taken);
}

TEST(Questions, TellWhyAStatusIsNoAnswer) {
  const auto fault = [](int status, const std::string& after = "") {
    return FaultOfStatus(Service::kLotw, {status, {{"retry-after", after}}, ""});
  };
  EXPECT_EQ(fault(200), "");
  EXPECT_THAT(fault(401), HasSubstr("non ha accettato nome o parola d'ordine"));
  EXPECT_EQ(fault(429), "LoTW chiede di aspettare");
  EXPECT_EQ(fault(429, "120"), "LoTW chiede di aspettare 120 secondi");
  EXPECT_EQ(fault(429, "x\ny"), "LoTW chiede di aspettare");
  EXPECT_THAT(fault(503), HasSubstr("guasto (503)"));
  EXPECT_EQ(fault(404), "LoTW ha risposto 404");
  EXPECT_EQ(fault(302), "LoTW ha risposto 302");
  EXPECT_EQ(FaultOfStatus(Service::kQrz, {200, {}, "la risposta è troncata"}),
            "QRZ: la risposta è troncata");
}

TEST(Questions, ReadTheDayOfAServicesClock) {
  EXPECT_EQ(DayOfHeader("Sat, 03 Feb 2001 04:05:06 GMT"), "2001-02-03");
  for (const char* none : {"", "03 Feb 2001", "Sat, 99 Feb 2001 04:05:06 GMT",
                           "Sat, 03 ebM 2001 04:05:06 GMT", "Sat, xx Feb 2001 04:05:06 GMT"}) {
    EXPECT_EQ(DayOfHeader(none), "") << none;
  }
  EXPECT_EQ(DaysBefore("2001-03-01", 2), "2001-02-27");
  EXPECT_EQ(DaysBefore("", 2), "");
}

}  // namespace
}  // namespace brenvo::conferme
