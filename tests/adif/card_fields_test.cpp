#include "adif/card_fields.h"

#include "tests/adif/adif_station.h"

namespace brenvo::adif {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string CardRecord(const std::string& fields) {
  return "<CALL:6>DL1ABC <QSO_DATE:8>20010203 <TIME_ON:4>1015 <BAND:2>2m <MODE:3>SSB " + fields +
         " <EOR>\r\n";
}

class CardFieldsTest : public AdifStation {
 protected:
  void Read(const std::string& fields, const ImportOptions& options = {}) {
    Import(Write("cards.adi", CardRecord(fields)), options);
  }
  Texts Cards() { return Rows("select Verso,Via,Data from LogQsl order by Verso,Via"); }
  // The file, read into an empty log, gives the same cards, fields and file.
  void ExpectSameAgain() {
    const Texts cards = Cards(), kept = Kept("DL1ABC");
    const std::string file = Export();
    EmptyTheLog();
    Import(Write("again.adi", file));
    EXPECT_EQ(Cards(), cards);
    EXPECT_EQ(Kept("DL1ABC"), kept);
    EXPECT_EQ(Export(), file);
  }
};

TEST_F(CardFieldsTest, WayAndDayOfCardsSentAndReceivedComeAndGoInTheStandardsFields) {
  Read(
      "<QSL_SENT:1>Y <QSL_SENT_VIA:1>b <QSLSDATE:8>20010301 <QSL_RCVD:1>Y <QSL_RCVD_VIA:1>D "
      "<QSLRDATE:8>20020405");
  EXPECT_THAT(Cards(), ElementsAre("I|B|01/03/2001", "R|D|05/04/2002"));
  EXPECT_THAT(Kept("DL1ABC"), IsEmpty());
  const std::string file = Export();
  for (const char* field : {"<QSLSDATE:8>20010301 ", "<QSL_SENT_VIA:1>B ", "<QSLRDATE:8>20020405 ",
                            "<QSL_RCVD_VIA:1>D "}) {
    EXPECT_THAT(file, HasSubstr(field));
  }
  EXPECT_THAT(file, Not(HasSubstr("_CARDS")));
  ExpectSameAgain();
}

TEST_F(CardFieldsTest, AWayWithoutADayAndADayWithoutAWayAreCardsToo) {
  Read("<QSL_SENT:1>Y <QSL_SENT_VIA:1>E <QSL_RCVD:1>V <QSLRDATE:8>20020405");
  EXPECT_THAT(Cards(), ElementsAre("I|E|", "R||05/04/2002"));
  ExpectSameAgain();
}

TEST_F(CardFieldsTest, WhatIsNoCardThatWentOutOrCameStaysAsTheFileSaidIt) {
  for (const char* fields :
       {"<QSL_SENT:1>R <QSL_SENT_VIA:1>B", "<QSL_SENT:1>N <QSLSDATE:8>20010203",
        "<QSL_SENT_VIA:1>D", "<QSL_SENT:1>Y <QSL_SENT_VIA:1>B <QSLSDATE:8>20010231",
        "<QSL_SENT:1>Y <QSL_SENT_VIA:1>O", "<QSL_RCVD:1>Y <QSL_RCVD_VIA:2>BD"}) {
    SCOPED_TRACE(fields);
    EmptyTheLog();
    Read(fields);
    EXPECT_THAT(Cards(), IsEmpty());
    EXPECT_THAT(Kept("DL1ABC"), Not(IsEmpty()));
    ExpectSameAgain();
  }
}

TEST_F(CardFieldsTest, ACardIsReceivedOnlyWhereTheImportTakesCardsAsConfirmations) {
  Read("<QSL_RCVD:1>Y <QSLRDATE:8>20020405", {{.card = false}, false});
  EXPECT_THAT(Cards(), IsEmpty());
  EXPECT_THAT(Kept("DL1ABC"), Contains("QSLRDATE|20020405"));
}

TEST_F(CardFieldsTest, WhatTheStandardCannotSayGoesOutBesideIt) {
  for (const core::QslCards& sent :
       {core::QslCards{{core::CardWay::kManager, base::DateTime::Of(2001, 2, 3)}},
        {{core::CardWay::kOqrs, std::nullopt}},
        {{core::CardWay::kUnknown, std::nullopt}},
        {{core::CardWay::kBureau, base::DateTime::Of(2001, 2, 3)},
         {core::CardWay::kDirect, base::DateTime::Of(2002, 2, 3)}}}) {
    SCOPED_TRACE(core::TextOfCards(sent));
    EmptyTheLog();
    Read("<QSL_SENT:1>Y");
    const std::int64_t qsoNr = Count("select QsoNr from Log");
    core::StoreCards(session.Db, qsoNr, core::CardSide::kSent, sent);
    EXPECT_THAT(Export(), HasSubstr("APP_BRENVO_QSL_SENT_CARDS"));
    ExpectSameAgain();
  }
  const std::string file = Export();
  EXPECT_THAT(file, HasSubstr("<QSLSDATE:8>20020203 "));
  EXPECT_THAT(file, HasSubstr("<QSL_SENT_VIA:1>D "));
}

TEST_F(CardFieldsTest, ACardWhoseColumnSaysNoIsNotToldToOthersAndComesBack) {
  Read("<QSL_SENT:1>Y <QSLSDATE:8>20010301");
  Exec("update Log set QslInviata=False");
  EXPECT_THAT(Export(), Not(HasSubstr("<QSLSDATE")));
  ExpectSameAgain();
  EXPECT_THAT(Cards(), ElementsAre("I||01/03/2001"));
}

TEST_F(CardFieldsTest, ACardMarkedLaterHoldsBeforeTheWordsInWhichTheContactCame) {
  Read("<QSL_SENT:1>R <QSL_SENT_VIA:1>D <QSL_RCVD:1>N <LOTW_QSL_RCVD:1>Y");
  const std::int64_t qsoNr = Count("select QsoNr from Log");
  const core::QslCard card{core::CardWay::kBureau, base::DateTime::Of(2001, 3, 1)};
  core::MarkCards(session, "a", {qsoNr}, core::CardSide::kSent, card);
  core::MarkCards(session, "b", {qsoNr}, core::CardSide::kReceived, card);
  const std::string file = Export();
  for (const char* field : {"<QSL_SENT:1>Y ", "<QSL_SENT_VIA:1>B ", "<QSL_RCVD:1>Y "}) {
    EXPECT_THAT(file, HasSubstr(field));
  }
  EmptyTheLog();
  Import(Write("again.adi", file));
  EXPECT_THAT(Cards(), ElementsAre("I|B|01/03/2001", "R|B|01/03/2001"));
}

TEST_F(CardFieldsTest, ARepeatedContactGetsTheCardsThatItHasNotAndKeepsItsOwn) {
  Read("<QSL_SENT:1>Y <QSLSDATE:8>20010301");
  Read("<QSL_SENT:1>Y <QSLSDATE:8>20050505 <QSL_RCVD:1>Y <QSL_RCVD_VIA:1>B", {{}, true});
  EXPECT_THAT(Cards(), ElementsAre("I||01/03/2001", "R|B|"));
  EXPECT_THAT(Kept("DL1ABC"), IsEmpty());
  EXPECT_THAT(Rows("select Campo from StoriaCampi"), ElementsAre("(Qsl ricevute)"));
}

}  // namespace
}  // namespace brenvo::adif
