#include "core/prefix.h"

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

struct Case {
  const char* call;
  const char* candidate;
};

TEST(PrefixCandidate, IsEverythingUpToTheFirstRunOfDigitsBehindTheFirstCharacter) {
  const Case cases[] = {{"IK3ABC", "IK3"},   {"4U1ITU", "4U1"},     {"9A2AA", "9A2"},
                        {"OE20XYZ", "OE20"}, {"DL/K1ABC", "DL/K1"}, {"IW1A", "IW1"},
                        {"3A2MW", "3A2"},    {"K1ABC2", "K1"},      {"IK33A", "IK33"}};
  for (const Case& c : cases) EXPECT_EQ(PrefixCandidate(c.call), c.candidate) << c.call;
}

TEST(PrefixCandidate, IsNothingWithoutADigitOrWhenTheCallEndsWithIt) {
  for (const char* call : {"", "I", "I1", "IW1", "3A", "IK33", "ABC", "1", "11", "1A"}) {
    EXPECT_EQ(PrefixCandidate(call), "") << call;
  }
}

using PrefixTest = StationTest;

TEST_F(PrefixTest, ACallResolvesThroughTheFirstRowOfItsPrefix) {
  engine::Table& prefissi = *session.Tables.TbPrefissi;
  EXPECT_EQ(ResolvePrefix(session, "IK3ABC").Country, "I");
  EXPECT_EQ(prefissi.Field("Zona CQ").Integer(), 15);
  EXPECT_EQ(ResolvePrefix(session, "IK3ABC").Prefisso, "IK3");
  EXPECT_EQ(ResolvePrefix(session, "DL/K1ABC").Prefisso, "");
  EXPECT_EQ(ResolvePrefix(session, "IK3ZZZ999ZZ").Prefisso, "IK3");
}

TEST_F(PrefixTest, ACandidateBehindEveryPrefixFindsNothing) {
  EXPECT_EQ(ResolvePrefix(session, "ŽŽ9A").Prefisso, "");
}

TEST_F(PrefixTest, ACandidateThatBeginsALongerPrefixIsNotThatPrefix) {
  session.Db.Execute("delete * from Prefissi where Prefisso like 'DL1*'");
  session.Db.Execute("insert into Prefissi values ('DL10','DL',14,28,'EU')");
  EXPECT_EQ(ResolvePrefix(session, "DL1ABC").Prefisso, "");
  EXPECT_EQ(ResolvePrefix(session, "DL10ABC").Prefisso, "DL10");
}

TEST_F(PrefixTest, OfSeveralRowsOfAPrefixTheLowestZonesComeFirst) {
  session.Db.Execute("insert into Prefissi values ('QQ1','A',20,30,'EU')");
  session.Db.Execute("insert into Prefissi values ('QQ1','B',15,40,'EU')");
  session.Db.Execute("insert into Prefissi values ('QQ1','C',15,28,'EU')");
  EXPECT_EQ(ResolvePrefix(session, "QQ1A").Country, "C");
}

TEST_F(PrefixTest, ARowWithoutAZoneIsNotTheFirstOfItsPrefix) {
  session.Db.Execute("insert into Prefissi (Prefisso,Country) values ('QQ1','A')");
  EXPECT_EQ(ResolvePrefix(session, "QQ1A").Prefisso, "");
  session.Db.Execute("insert into Prefissi values ('QQ1','B',0,0,'EU')");
  EXPECT_EQ(ResolvePrefix(session, "QQ1A").Country, "B");
}

TEST_F(PrefixTest, ACountryOfNullResolvesToAnEmptyText) {
  session.Db.Execute(
      "insert into Prefissi (Prefisso,[Zona CQ],[Zona ITU],Continente) values "
      "('QQ1',1,1,'EU')");
  const ResolvedPrefix resolved = ResolvePrefix(session, "QQ1A");
  EXPECT_EQ(resolved.Prefisso, "QQ1");
  EXPECT_EQ(resolved.Country, "");
}

TEST_F(PrefixTest, TheAnswerHoldsZonesAndContinentWhereverTheTableIsLedMeanwhile) {
  const ResolvedPrefix resolved = ResolvePrefix(session, "IK3ABC");
  ResolvePrefix(session, "K1ABC");
  EXPECT_EQ(resolved.ZonaCQ.Integer(), 15);
  EXPECT_EQ(resolved.ZonaITU.Integer(), 28);
  EXPECT_EQ(resolved.Continente.Text(), "EU");
  const ResolvedPrefix none = ResolvePrefix(session, "ŽŽ9A");
  EXPECT_TRUE(none.ZonaCQ.IsNull() && none.ZonaITU.IsNull() && none.Continente.IsNull());
}

}  // namespace
}  // namespace brenvo::core
