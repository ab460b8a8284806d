// Log files tell UTC; the log has its own time.
#include "adif/importa_adif.h"
#include "core/log_time.h"
#include "tests/adif/adif_station.h"

namespace brenvo::adif {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kFile =
    "<eoh>"
    "<call:6>IK3AAA <qso_date:8>20240115 <time_on:4>0000 <band:3>20m <mode:2>CW <eor>"
    "<call:6>IK3BBB <qso_date:8>20240701 <time_on:6>233015 <time_off:6>234530 "
    "<qso_date_off:8>20240701 <band:3>20m <mode:3>SSB <eor>"
    "<call:6>IK3CCC <qso_date:8>20240115 <time_on:6>000000 <band:3>20m <mode:2>CW <eor>"
    "<call:6>IK3DDD <qso_date:8>20240115 <band:3>20m <mode:2>CW <eor>";

class AdifTime : public AdifStation {
 protected:
  void KeepIn(core::LogTime time) { core::StoreLogTime(session, time); }
  Texts Times() {
    Texts texts;
    const auto rows = session.Db.OpenSnapshot("select Call,DataQso from Log order by Call");
    for (; !rows->EOF_(); rows->MoveNext()) {
      texts.push_back(rows->Field(0).Text() + ' ' + base::IsoText(rows->Field(1).Date()));
    }
    return texts;
  }
};

TEST_F(AdifTime, MidnightAndSecondsAndTheTimeOfTheEndAreKept) {
  KeepIn(core::LogTime::kUtc);
  EXPECT_EQ(Import(Write("a.adi", kFile)).fresh, 4);
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-01-15 00:00:00", "IK3BBB 2024-07-01 23:30:15",
                                   "IK3CCC 2024-01-15 00:00:00", "IK3DDD 2024-01-15 00:00:00"));
  EXPECT_THAT(Kept("IK3BBB"), ElementsAre("QSO_DATE_OFF|20240701", "TIME_OFF|234530"));
  EXPECT_THAT(Export(), HasSubstr("<TIME_OFF:6>234530"));
}

TEST_F(AdifTime, ALogThatNobodyWasAskedAboutTakesTheFilesTimes) {
  Import(Write("a.adi", kFile));
  EXPECT_EQ(Times()[1], "IK3BBB 2024-07-01 23:30:15");
}

TEST_F(AdifTime, ALogInLocalTimeHasItsOwnTimesAndTheFileItsUtc) {
  KeepIn(core::LogTime::kLocal);
  EXPECT_EQ(Import(Write("a.adi", kFile)).fresh, 4);
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-01-15 01:00:00", "IK3BBB 2024-07-02 01:30:15",
                                   "IK3CCC 2024-01-15 01:00:00", "IK3DDD 2024-01-15 01:00:00"));
  const std::string file = Export();
  EXPECT_THAT(file, HasSubstr("<CALL:6>IK3AAA <QSO_DATE:8>20240115 <TIME_ON:6>000000"));
  EXPECT_THAT(file, HasSubstr("<CALL:6>IK3BBB <QSO_DATE:8>20240701 <TIME_ON:6>233015"));
  EXPECT_THAT(file, HasSubstr("<TIME_OFF:6>234530"));
}

TEST_F(AdifTime, TheFileThatGoesOutIsTheSameWhicheverTimeTheLogIsIn) {
  KeepIn(core::LogTime::kUtc);
  Import(Write("a.adi", kFile));
  const std::string inUtc = Export();
  EmptyTheLog();
  KeepIn(core::LogTime::kLocal);
  Import(Write("b.adi", inUtc));
  EXPECT_EQ(Times()[1], "IK3BBB 2024-07-02 01:30:15");
  EXPECT_EQ(Export(), inUtc);
}

TEST_F(AdifTime, ThePreviewAndTheRepeatedContactsAreInTheLogsTime) {
  KeepIn(core::LogTime::kLocal);
  const auto file = Write("a.adi", kFile);
  const ImportPreview before = Preview(file);
  EXPECT_EQ(base::IsoText(*before.last), "2024-07-02 01:30:15");
  EXPECT_EQ(before.counts.fresh, 4);
  Import(file);
  EXPECT_EQ(Preview(file).counts.repeated, 4);
  EXPECT_EQ(Import(file).repeated, 4);
}

TEST_F(AdifTime, TheHourThatComesTwiceGoesOutAsItCame) {
  KeepIn(core::LogTime::kLocal);
  Import(Write("a.adi",
               "<eoh><call:6>IK3AAA <qso_date:8>20241027 <time_on:4>0030 <band:3>20m <mode:2>CW "
               "<eor><call:6>IK3BBB <qso_date:8>20241027 <time_on:4>0130 <band:3>20m <mode:2>CW "
               "<eor>"));
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-10-27 02:30:00", "IK3BBB 2024-10-27 02:30:00"));
  EXPECT_THAT(Kept("IK3AAA"), IsEmpty());
  EXPECT_THAT(Kept("IK3BBB"), ElementsAre("TIME_ON|0130"));
  const std::string file = Export();
  EXPECT_THAT(file, HasSubstr("<CALL:6>IK3AAA <QSO_DATE:8>20241027 <TIME_ON:6>003000"));
  EXPECT_THAT(file, HasSubstr("<CALL:6>IK3BBB <QSO_DATE:8>20241027 <TIME_ON:4>0130"));
}

// A contact that was sent on within its minute keeps the time that the file has told.
TEST_F(AdifTime, ASecondModeInTheSameMinuteIsFoundAgainInALogInLocalTime) {
  KeepIn(core::LogTime::kLocal);
  const auto file =
      Write("a.adi",
            "<eoh><call:6>IK3AAA <qso_date:8>20240701 <time_on:4>2330 <band:3>20m <mode:2>CW <eor>"
            "<call:6>IK3AAA <qso_date:8>20240701 <time_on:4>2330 <band:3>20m <mode:3>SSB <eor>");
  const ImportCounts first = Import(file);
  EXPECT_EQ(first.fresh, 2);
  EXPECT_EQ(first.moved, 1);
  EXPECT_THAT(Kept("IK3AAA"), ElementsAre("TIME_ON|2330"));
  EXPECT_EQ(Import(file).repeated, 2);
  // Other seconds of the minute are the same contact: it tells none of its own.
  const auto again = Write(
      "b.adi",
      "<eoh><call:6>IK3AAA <qso_date:8>20240701 <time_on:6>233045 <band:3>20m <mode:3>SSB <eor>");
  EXPECT_EQ(Import(again).repeated, 1);
}

TEST_F(AdifTime, ATimeThatTheFileHasNotToldIsKeptInUtcWhereItWasSentOn) {
  KeepIn(core::LogTime::kLocal);
  Import(Write("a.adi",
               "<eoh><call:6>IK3AAA <qso_date:8>20240701 <band:3>20m <mode:2>CW <eor>"
               "<call:6>IK3AAA <qso_date:8>20240701 <band:3>20m <mode:3>SSB <eor>"));
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-07-01 02:00:00", "IK3AAA 2024-07-01 02:00:01"));
  EXPECT_THAT(Kept("IK3AAA"), ElementsAre("TIME_ON|000000"));
}

TEST_F(AdifTime, IsAskedBeforeTheImportBegins) {
  Know<ImportaAdif>("ImportaAdif");
  session.Windows.Register("OraDelLog", [this] {
    return std::make_unique<forms::Window>(session.Host(), "OraDelLog", "", base::Twips(100),
                                           base::Twips(100));
  });
  Texts dialogs;
  InDialogs([&](forms::Window& dialog) {
    dialogs.push_back(dialog.Name());
    dialog.Close();
  });
  Event([&] { ImportaFileAdif(session); });
  EXPECT_THAT(dialogs, ElementsAre("OraDelLog"));
  machine.Picks().Queue(Write("a.adi", kFile));
  InDialogs([&](forms::Window& dialog) {
    dialogs.push_back(dialog.Name());
    KeepIn(core::LogTime::kLocal);
    dialog.Close();
  });
  Event([&] { ImportaFileAdif(session); });
  EXPECT_THAT(dialogs, ElementsAre("OraDelLog", "OraDelLog", "ImportaAdif"));
}

}  // namespace
}  // namespace brenvo::adif
