#include "print/card_rules.h"

#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

#include "print/due_cards.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"
#include "tests/support/station.h"

namespace brenvo::print {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

const std::string kCardHead = "Regola,Nome,Campi,Valori,Solo per,Non per\n";

worked::Rules Modes() {
  return worked::ReadRules(SourceDir() / "data/rules/Lavorati.csv", "no such file");
}
std::string DeliveredText() { return ReadBytes(SourceDir() / "data/rules/QslDaInviare.csv"); }

std::string CardRefusal(const std::string& delivered, const std::string& own = "") {
  try {
    ParseCardRules(Modes(), delivered, own);
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "";
}

CardContact Contact(std::int64_t qsoNr, std::string call, std::string country, std::string band,
                    std::string mode) {
  CardContact contact;
  contact.qsoNr = qsoNr;
  contact.Call = std::move(call);
  contact.Country = std::move(country);
  contact.Banda = std::move(band);
  contact.Modo = std::move(mode);
  return contact;
}

TEST(DeliveredCardRules, AreReadAndTheirExamplesHold) {
  const CardRules rules = ParseCardRules(Modes(), DeliveredText());
  std::vector<std::string> names;
  for (const CardRules::Reason& reason : rules.reasons) names.push_back(reason.name);
  EXPECT_THAT(names, ElementsAre("Segnata nel log", "Chiesta da loro", "Nuovo country",
                                 "Nuovo per banda e modo", "Stazione di casa"));
  EXPECT_THAT(rules.never, IsEmpty());
  EXPECT_THAT(rules.byDigit, ElementsAre("CASA", "K"));
}

TEST(CardRules, GiveTheFirstReasonThatFits) {
  const CardRules rules = ParseCardRules(Modes(), DeliveredText());
  const worked::Rules modes = Modes();
  DueCards cards(rules, modes, "I");
  cards.See(Contact(1, "DL1ABC", "DL", " 20 m", "CW"));
  cards.See(Contact(2, "dl1abc ", "DL", " 20 m", "SSB"));
  CardContact answered = Contact(3, "DL2ABC", "DL", " 20 m", "SSB");
  answered.received = true;
  cards.See(answered);
  EXPECT_THAT(cards.Finish(),
              UnorderedElementsAre(Pair(1, "Nuovo country"), Pair(2, "Nuovo per banda e modo"),
                                   Pair(3, "Chiesta da loro")));
}

TEST(CardRules, NeverIsStrongerThanWhoeverAsks) {
  const CardRules rules =
      ParseCardRules(Modes(), kCardHead +
                                  "Mai,Senza,Call,dl1*; DL2ABC,,\nMai,Paesi,Country,EA; casa,,\n"
                                  "Chiesta,Segnate,QslDaInviare,,,\nPrima,Tutte,Call,,,\n");
  const worked::Rules modes = Modes();
  DueCards cards(rules, modes, "I");
  std::int64_t qsoNr = 0;
  for (const char* call : {"DL1XYZ", "DL2ABC", "DL2ABD", "EA1ABC", "IK3ABC"}) {
    CardContact contact = Contact(++qsoNr, call,
                                  call[0] == 'D'   ? "DL"
                                  : call[0] == 'E' ? "EA"
                                                   : "I",
                                  "20m", "CW");
    contact.wanted = true;
    cards.See(contact);
  }
  EXPECT_THAT(cards.Finish(), UnorderedElementsAre(Pair(3, "Segnate")));
}

TEST(CardRules, HomeIsTheStationsOwnCountry) {
  const CardRules rules =
      ParseCardRules(Modes(), kCardHead + "Prima,Casa,Call,,Casa,\nPrima,Fuori,Country,,,CASA\n");
  const worked::Rules modes = Modes();
  DueCards cards(rules, modes, "DL");
  cards.See(Contact(1, "DL1ABC", "DL", "20m", "CW"));
  cards.See(Contact(2, "IK3ABC", "I", "20m", "CW"));
  EXPECT_THAT(cards.Finish(), UnorderedElementsAre(Pair(1, "Casa"), Pair(2, "Fuori")));
}

TEST(CardRules, HomeAreTheCountriesOfOneBureau) {
  const CardRules rules = ParseCardRules(Modes(), DeliveredText());
  EXPECT_TRUE(IsInCountries({"CASA"}, "is0 ", HomeOf(rules, "I")));
  EXPECT_TRUE(IsInCountries({"CASA"}, "I", HomeOf(rules, "IS0")));
  EXPECT_FALSE(IsInCountries({"CASA"}, "IS0", HomeOf(rules, "DL")));
  EXPECT_TRUE(IsInCountries({"CASA"}, "DL", HomeOf(rules, "DL")));
}

TEST(CardRules, TheOperatorsRowsTakeThePlaceOfOursAndOneWithoutFieldsTakesARuleAway) {
  const CardRules rules =
      ParseCardRules(Modes(), DeliveredText(),
                     kCardHead +
                         "Prima,nuovo country,,,,\nPrima,Nuovo per banda e modo,Call,,,\n"
                         "Esempio,Una sola,DL1ABC DL 20m CW; DL1ABC DL 40m CW,sì no,,\n");
  std::vector<std::string> names;
  for (const CardRules::Reason& reason : rules.reasons) names.push_back(reason.name);
  EXPECT_THAT(names, ElementsAre("Segnata nel log", "Chiesta da loro", "Stazione di casa",
                                 "Nuovo per banda e modo"));
}

TEST(CardRules, SayWhichLineIsWrongAndWhy) {
  const std::pair<const char*, const char*> cases[] = {
      {"Mai,a\n", "riga 2: non sono sei celle"},
      {"Maai,a,,,,\n", "riga 2: la regola \"Maai\" non esiste"},
      {"Nota,a,,,,\nMai,,Call,a,,\n", "riga 3: manca il nome"},
      {"Prima,a,Call,,,\nPrima,A,Call,,,\n", "riga 3: Prima A è già scritto"},
      {"Prima,a,Cal,,,\n",
       "riga 2: \"Cal\" non è tra Call; Manager; Prefisso; Country; Banda; "
       "Modo; Gruppo"},
      {"Prima,a,Call,x,,\n", "riga 2: Chiesta e Prima non hanno valori"},
      {"Mai,a,Call; Banda,x,,\n", "riga 2: Mai ha un campo solo"},
      {"Mai,a,Call,,,\n", "riga 2: mancano i valori"},
      {"Mai,a,Call,x,I,\n", "riga 2: solo Chiesta e Prima hanno Solo per e Non per"},
      {"Chiesta,a,Call,,,\n", "riga 2: il campo di Chiesta è QslDaInviare o QslRicevuta"},
      {"Cifra,a,Call,K,,\n", "riga 2: il campo di Cifra e di Bureau è Country"},
      {"Esempio,a,DL1ABC DL 20m,no,,\n", "riga 2: un qso di esempio è Call Country Banda Modo"},
      {"Esempio,a,DL1ABC DL 20m CW persa,no,,\n",
       "riga 2: \"persa\" non è segnata, ricevuta o inviata"},
      {"Esempio,a,DL1ABC DL 20m CW,sì,,\n",
       "riga 2: l'esempio dice \"sì\", le regole danno \"no\""}};
  for (const auto& [row, reason] : cases) {
    EXPECT_THAT(CardRefusal(kCardHead + row), HasSubstr("QslDaInviare.csv, ")) << row;
    EXPECT_THAT(CardRefusal(kCardHead + row), HasSubstr(reason)) << row;
    EXPECT_THAT(CardRefusal(kCardHead, kCardHead + row), HasSubstr("QslDaInviare proprie.csv, "));
  }
  EXPECT_THAT(CardRefusal("Regola,Nome\n"), HasSubstr("riga 1: le colonne sono"));
}

class LoadedCardRulesTest : public StationTest {
 protected:
  void Own(const std::string& text) {
    std::ofstream(directory.Path() / kOwnCardRules, std::ios::binary) << text;
  }
};

TEST_F(LoadedCardRulesTest, AreOursAloneWhereTheOperatorsCannotBeUnderstood) {
  std::string fault;
  EXPECT_EQ(LoadCardRules(session, Modes(), fault).reasons.size(), 5u);
  EXPECT_EQ(fault, "");
  Own(kCardHead + "Prima,Ogni qso,Call; Banda; Modo,,,\n");
  EXPECT_EQ(LoadCardRules(session, Modes(), fault).reasons.size(), 6u);
  Own(kCardHead + "Prima,a,b,,,\n");
  EXPECT_EQ(LoadCardRules(session, Modes(), fault).reasons.size(), 5u);
  EXPECT_THAT(fault, HasSubstr("QslDaInviare proprie.csv, riga 2"));
}

TEST_F(LoadedCardRulesTest, AreNoneWithoutOurs) {
  std::filesystem::remove(directory.Path() / kDeliveredCardRules);
  std::string fault;
  EXPECT_THAT(LoadCardRules(session, Modes(), fault).reasons, IsEmpty());
  EXPECT_THAT(fault, HasSubstr("QslDaInviare.csv"));
}

}  // namespace
}  // namespace brenvo::print
