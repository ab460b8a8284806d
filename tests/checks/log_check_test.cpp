#include "checks/log_check.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace brenvo::checks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kModes =
    "Regola,Nome,Vale,Campo,Valori,Non per\nModo,SSB,Fonia,,,\nModo,FM,Fonia,,,\nModo,CW,CW,,,\n"
    "Satellite,Satellite,,Propagazione,,\n";

class LogCheckTest : public testing::Test {
 protected:
  LogCheckTest() {
    facts.now = base::DateTime::Of(2001, 2, 3, 4, 5);
    facts.rules = std::make_shared<const worked::Rules>(worked::ParseRules(kModes));
    facts.extents = CountryExtents::Parse(
        "Country,Sud,Nord,Ovest,Est\nI,36,49,4,22\nDL,46,56,2,18\nDL,53,57,6,12\n");
    facts.bands = {{"2 M", {{144, 146}, {144, 148}}}, {"40 M", {{7, 7.2}, {7, 7.3}}}, {"X", {}}};
    facts.countries = {{"I", "Italia"}, {"DL", "Germania"}, {"K", "Stati Uniti"}};
    facts.provinces = {"I|PD", "I|VE"};
    facts.withProvinces = {"I"};
    facts.prefixes = {{"IK3", {"I"}},  {"DL1", {"DL"}},     {"K1", {"K"}},
                      {"UB5", {"UA"}}, {"W3", {"K", "KL"}}, {"IS0", {"IS0"}}};
  }

  static CheckedContact Contact(std::int64_t qsoNr, std::string_view call, int minute = 0) {
    CheckedContact contact;
    contact.qsoNr = qsoNr;
    contact.Call = call;
    contact.DataQso = base::DateTime::Of(2001, 1, 1, 10).Later(minute * 60);
    contact.Banda = "  2 m";
    contact.Modo = "SSB";
    return contact;
  }
  std::vector<std::string> Findings(const std::vector<CheckedContact>& contacts,
                                    std::size_t most = 100) {
    LogCheck check(facts, most);
    for (const CheckedContact& each : contacts) check.See(each);
    std::vector<std::string> told;
    for (const Finding& each : check.Finish()) {
      told.push_back(std::to_string(each.qsoNr) + "|" + std::string(each.rule) + "|" + each.reason);
    }
    count = check.Count();
    return told;
  }
  std::vector<std::string> FindingsOf(const std::function<void(CheckedContact&)>& change,
                                      std::string_view call = "IK3ABC") {
    CheckedContact contact = Contact(1, call);
    change(contact);
    return Findings({contact});
  }

  CheckFacts facts;
  std::int64_t count = 0;
};

TEST_F(LogCheckTest, FindsNothingInAContactThatIsAsItShouldBe) {
  EXPECT_THAT(FindingsOf([](CheckedContact& contact) {
                contact.Country = "I";
                contact.Provincia = "PD ";
                contact.Locator = "JN65aa";
                contact.Frequenza = 144.3;
              }),
              IsEmpty());
  EXPECT_THAT(Findings({CheckedContact()}), IsEmpty());
}

TEST_F(LogCheckTest, FindsAStationWorkedAgainWithinTenMinutesInTheSameKindOfMode) {
  CheckedContact fm = Contact(3, "ik3abc ", 14);
  fm.Modo = "FM";
  EXPECT_THAT(Findings({Contact(1, "IK3ABC", 0), Contact(2, "IK3ABC", 4), fm}),
              ElementsAre("2|Ripetuto|4 minuti dopo il Qso 1, stessa banda e stesso modo",
                          "3|Ripetuto|10 minuti dopo il Qso 2, stessa banda e stesso modo"));
  EXPECT_THAT(Findings({Contact(1, "IK3ABC", 0), Contact(2, "IK3ABC", 0), Contact(3, "IK3ABC", 1)}),
              ElementsAre("2|Ripetuto|nello stesso minuto del Qso 1, stessa banda e stesso modo",
                          "3|Ripetuto|un minuto dopo il Qso 2, stessa banda e stesso modo"));
}

TEST_F(LogCheckTest, LetsAStationBeWorkedAgainLaterOnAnotherBandInAnotherModeOrBySatellite) {
  EXPECT_THAT(Findings({Contact(1, "IK3ABC", 0), Contact(2, "IK3ABC", 11)}), IsEmpty());
  CheckedContact band = Contact(2, "IK3ABC", 1), mode = Contact(3, "IK3ABC", 2),
                 satellite = Contact(4, "IK3ABC", 3), unknown = Contact(5, "IK3ABC", 4);
  band.Banda = " 70cm";
  mode.Modo = "CW";
  satellite.Propagazione = "Satellite";
  unknown.Modo = "SSTV";
  EXPECT_THAT(Findings({Contact(1, "IK3ABC", 0), band, mode, satellite, unknown,
                        Contact(6, "IK3ABC/P", 5)}),
              IsEmpty());
}

TEST_F(LogCheckTest, ForgetsRepeatedContactsOnlyOnceTheyAreOldEnough) {
  std::vector<std::string> calls;
  for (int i = 0; i < 10000; ++i) calls.push_back("DL" + std::to_string(i) + "A");
  std::vector<CheckedContact> contacts = {Contact(1, "IK3ABC", 0)};
  for (const std::string& call : calls) contacts.push_back(Contact(2, call, 5));
  contacts.push_back(Contact(3, "IK3ABC", 9));
  EXPECT_THAT(Findings(contacts),
              ElementsAre("3|Ripetuto|9 minuti dopo il Qso 1, stessa banda e stesso modo"));
}

class SimilarCallTest : public LogCheckTest {
 protected:
  // Five contacts with one station, days apart, and one with another.
  SimilarCallTest() {
    for (int i = 0; i < 5; ++i) {
      contacts.push_back(Contact(i + 1, "IK3ABC", i * 1440));
      Describe(contacts.back());
    }
    contacts.push_back(Contact(6, "IK3ABD", 10000));
    Describe(contacts.back());
  }
  static void Describe(CheckedContact& contact) {
    contact.Qra = "Mario";
    contact.Qth = "Padova";
    contact.Locator = "JN65AA";
  }
  CheckedContact& Once() { return contacts.back(); }
  std::vector<CheckedContact> contacts;
};

TEST_F(SimilarCallTest, IsFoundWithTheReasonThatItIsTheSameStation) {
  EXPECT_THAT(Findings(contacts),
              ElementsAre("6|Call simile|forse IK3ABC, collegato spesso: una lettera cambiata, "
                          "stesso locator"));
  Once().Locator = "";
  EXPECT_THAT(Findings(contacts),
              ElementsAre("6|Call simile|forse IK3ABC, collegato spesso: una lettera cambiata, "
                          "stesso nome e Qth"));
  Once().Qra = Once().Qth = "";
  EXPECT_THAT(Findings(contacts), IsEmpty());
  Once().DataQso = contacts[4].DataQso.Later(120);
  EXPECT_THAT(Findings(contacts),
              ElementsAre("6|Call simile|forse IK3ABC, collegato spesso: una lettera cambiata, "
                          "collegati a pochi minuti"));
}

TEST_F(SimilarCallTest, IsAnotherStationWhenSomethingSpeaksAgainstIt) {
  const auto with = [&](const std::function<void()>& change) {
    const auto before = contacts;
    change();
    const auto found = Findings(contacts);
    contacts = before;
    return found;
  };
  EXPECT_THAT(with([&] { Once().Qra = "Luigi"; }), IsEmpty());
  EXPECT_THAT(with([&] { Once().Locator = "JN65BB"; }), IsEmpty());
  EXPECT_THAT(with([&] { Once().QslRicevuta = true; }), IsEmpty());
  EXPECT_THAT(with([&] { Once().Call = "IK3ADD"; }), IsEmpty());
  EXPECT_THAT(with([&] { Once().Call = "IK3ABC/P"; }), IsEmpty());
  EXPECT_THAT(with([&] { Once().Call = "IS0ABC"; }), IsEmpty()) << "another country";
  EXPECT_THAT(with([&] { contacts.erase(contacts.begin()); }), IsEmpty()) << "four times";
  EXPECT_THAT(with([&] { contacts.push_back(Contact(7, "IK3ABD", 20000)); }), IsEmpty())
      << "worked twice";
  facts.confirmedBeside = [](std::int64_t qsoNr) { return qsoNr == 6; };
  EXPECT_THAT(Findings(contacts), IsEmpty());
}

TEST_F(LogCheckTest, FindsTheOneLocatorThatIsFarFromAllOthersOfTheCall) {
  std::vector<CheckedContact> contacts;
  for (int i = 0; i < 4; ++i) {
    contacts.push_back(Contact(i + 1, "IK3ABC", i * 1440));
    contacts.back().Locator = i == 0 ? "JN45AA" : i % 2 == 1 ? "JN55AA" : "JN56CC";
  }
  contacts[0].Locator = "JN83AA";
  EXPECT_THAT(Findings(contacts),
              ElementsAre("1|Altro locator|JN83AA è a 528 km da JN55AA, dato in altri "
                          "collegamenti"));
}

TEST_F(LogCheckTest, LetsAStationMoveTravelAndBePortable) {
  const auto found = [&](std::vector<std::string_view> locators, std::string_view call = "IK3ABC") {
    std::vector<CheckedContact> contacts;
    for (const std::string_view locator : locators) {
      const auto number = std::ssize(contacts) + 1;
      contacts.push_back(Contact(number, call, static_cast<int>(number) * 1440));
      contacts.back().Locator = locator;
    }
    return Findings(contacts);
  };
  EXPECT_THAT(found({"JN65AA", "JN65AA", "JN83AA", "JN83AB"}), IsEmpty());
  EXPECT_THAT(found({"JN65AA", "JN83AA", "JM68AA", "JN45AA", "JN65AA"}), IsEmpty());
  EXPECT_THAT(found({"JN65AA", "JN83AA"}, "IK3ABC/P"), IsEmpty());
  EXPECT_THAT(found({"JN65AA", "JN54AA", "JN65", "", "JN83"}), IsEmpty());
  EXPECT_THAT(found({"JN65AA", "JN83AA"}), testing::SizeIs(1));
}

TEST_F(LogCheckTest, FindsALocatorOutsideTheCountryAndATextThatIsNone) {
  const auto found = [&](std::string_view locator, std::string_view country,
                         std::string_view call = "IK3ABC") {
    return FindingsOf(
        [&](CheckedContact& contact) {
          contact.Locator = locator;
          contact.Country = country;
        },
        call);
  };
  EXPECT_THAT(found("JO65AA", "I"), ElementsAre("1|Locator|JO65AA è fuori da I Italia"));
  EXPECT_THAT(found("JN65AAA", "I"), ElementsAre("1|Locator|\"JN65AAA\" non è un locator"));
  EXPECT_THAT(found("JO65AA", "I", "IK3ABC/MM"), IsEmpty());
  EXPECT_THAT(found("JO65AA", "9H", "9H1AA"), IsEmpty()) << "nothing is known of it";
  EXPECT_THAT(found("JO65AA", ""), IsEmpty());
}

TEST_F(LogCheckTest, FindsAFrequencyOutsideItsBandAndNamesTheOtherOne) {
  const auto found = [&](double mhz, std::string_view band) {
    return FindingsOf([&](CheckedContact& contact) {
      contact.Frequenza = mhz;
      contact.Banda = band;
    });
  };
  EXPECT_THAT(found(432.2, "  2 m"), ElementsAre("1|Banda|432.2 MHz non è nei 2 m, ma nei 70cm"));
  EXPECT_THAT(found(14200, "  2 m"), ElementsAre("1|Banda|14200 MHz non è nei 2 m"));
  for (const double mhz : {0.0, 144.0, 146.0, 148.0}) EXPECT_THAT(found(mhz, "2 M"), IsEmpty());
  EXPECT_THAT(found(7.25, " 40 m"), IsEmpty()) << "of another region";
  EXPECT_THAT(found(14.2, " 20 m"), IsEmpty()) << "a band that nobody knows";
  EXPECT_THAT(found(14.2, "X"), IsEmpty());
}

TEST_F(LogCheckTest, FindsADateToCome) {
  EXPECT_THAT(FindingsOf([](CheckedContact& contact) {
                contact.DataQso = base::DateTime::Of(2001, 2, 3, 4, 6);
              }),
              ElementsAre("1|Data|03/02/2001 04:06:00 deve ancora venire"));
  EXPECT_THAT(FindingsOf([this](CheckedContact& contact) { contact.DataQso = facts.now; }),
              IsEmpty());
}

TEST_F(LogCheckTest, FindsAProvinceThatTheCountryHasNot) {
  const auto found = [&](std::string_view country, std::string_view province) {
    return FindingsOf([&](CheckedContact& contact) {
      contact.Country = country;
      contact.Provincia = province;
    });
  };
  EXPECT_THAT(found("I", "XX"), ElementsAre("1|Provincia|XX non è una provincia di I Italia"));
  EXPECT_THAT(found("I", "pd"), IsEmpty());
  EXPECT_THAT(FindingsOf(
                  [&](CheckedContact& contact) {
                    contact.Country = "DL";
                    contact.Provincia = "XX";
                  },
                  "DL1ABC"),
              IsEmpty())
      << "no provinces of it are known";
}

TEST_F(LogCheckTest, FindsACountryThatIsNotThatOfThePrefix) {
  const auto found = [&](std::string_view call, std::string_view country) {
    return FindingsOf([&](CheckedContact& contact) { contact.Country = country; }, call);
  };
  EXPECT_THAT(found("IK3ABC", "DL"),
              ElementsAre("1|Country|IK3ABC è un nominativo di I Italia, non di DL Germania"));
  EXPECT_THAT(found("DL1ABC", "DL"), IsEmpty());
  EXPECT_THAT(found("DL1ABC/I", "I"), IsEmpty());
  EXPECT_THAT(found("XX1ABC", "I"), IsEmpty()) << "a prefix that nobody knows";
  EXPECT_THAT(found("W3ABC", "KL"), IsEmpty()) << "a further row of the prefix";
  EXPECT_THAT(found("K1ABC", "KH6"), IsEmpty()) << "who moves there keeps his call";
  EXPECT_THAT(found("UB5ABC", "UR"), IsEmpty()) << "one country once";
  EXPECT_THAT(found("K1ABC", "UA"), testing::SizeIs(1));
  EXPECT_THAT(found("DL1ABC", "CE9"), IsEmpty()) << "a base in the Antarctic";
  facts.deleted = {"Y2"};
  EXPECT_THAT(found("DL1ABC", "Y2"), IsEmpty());
}

TEST_F(LogCheckTest, KeepsTheFirstFindingsAndCountsAll) {
  std::vector<CheckedContact> contacts;
  for (int i = 1; i <= 5; ++i) contacts.push_back(Contact(i, "IK3ABC", i));
  EXPECT_THAT(Findings(contacts, 2), testing::SizeIs(2));
  EXPECT_EQ(count, 4);
}

TEST(Rules, HaveNamesOfTheirOwn) {
  for (const Rule& each : Rules()) {
    EXPECT_EQ(std::ranges::count(Rules(), each.name, &Rule::name), 1) << each.name;
    EXPECT_FALSE(each.name.empty());
  }
}

}  // namespace
}  // namespace brenvo::checks
