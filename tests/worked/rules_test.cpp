#include "worked/rules.h"

#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

#include "base/csv.h"
#include "tests/support/error_of.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"

namespace brenvo::worked {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string kHead = "Regola,Nome,Vale,Campo,Valori,Non per\n";

std::filesystem::path Delivered() {
  return SourceDir() / "data" / "rules" / std::string(kDeliveredRules);
}
Rules ReadDelivered() { return ReadRules(Delivered(), "no such file"); }

std::string Refusal(const std::string& delivered, const std::string& own = "") {
  try {
    ParseRules(delivered, own);
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "";
}

TEST(DeliveredRules, AreReadAndTheirExamplesHold) {
  const Rules rules = ReadDelivered();
  EXPECT_THAT(rules.Groups(), ElementsAre("", "CW", "Fonia", "Digitale", "Immagine"));
  EXPECT_THAT(rules.Services(), ElementsAre("Cartolina", "LoTW", "eQSL", "QRZ", "DCL", "Club Log"));
  EXPECT_THAT(rules.Fields(), ElementsAre("LOTW_QSL_RCVD", "EQSL_QSL_RCVD", "APP_QRZLOG_STATUS",
                                          "DCL_QSL_RCVD", "APP_BRENVO_CLUBLOG_MATCH"));
}

TEST(DeliveredRules, KnowTheGroupOfEveryModeOfTheDeliveredTable) {
  const Rules rules = ReadDelivered();
  const base::CsvTable modes = base::ReadCsv(SourceDir() / "data" / "Modi.csv");
  for (const base::CsvTable::Row& row : modes.Rows) {
    const ModeMeaning meaning = rules.MeaningOf(row.Cells[modes.Column("Modo")]);
    EXPECT_TRUE(meaning.satellite || meaning.group != kNoGroup) << row.Cells[1];
  }
}

TEST(Rules, TakeModesOfOneGroupForOneWhateverTheirCaseAndTheBlanksBehind) {
  const Rules rules = ParseRules(kHead + "Modo,SSB,Fonia,,,\nModo,AM,fonia,,,\nModo,CW,CW,,,\n");
  EXPECT_EQ(rules.MeaningOf("ssb  "), rules.MeaningOf("AM"));
  EXPECT_EQ(rules.FindGroup("FONIA "), rules.MeaningOf("SSB").group);
  EXPECT_NE(rules.MeaningOf("CW").group, rules.MeaningOf("SSB").group);
  EXPECT_EQ(rules.MeaningOf(" SSB").group, kNoGroup);
  EXPECT_EQ(rules.FindGroup("Digitale"), std::nullopt);
}

TEST(Rules, TakeTheLongestBeginningThatFitsAndAWholeNameBeforeAnyBeginning) {
  const Rules rules =
      ParseRules(kHead + "Modo,PSK*,a,,,\nModo,PSKAM*,b,,,\nModo,PSKAM31,c,,,\nModo,P,d,,,\n");
  const auto groupOf = [&](const char* mode) {
    return rules.Groups()[rules.MeaningOf(mode).group];
  };
  EXPECT_EQ(groupOf("psk31"), "a");
  EXPECT_EQ(groupOf("PSKAM10"), "b");
  EXPECT_EQ(groupOf("PSKAM31"), "c");
  EXPECT_EQ(groupOf("PS"), "");
}

TEST(Rules, LetAFieldConfirmByTheValuesThatTheyNameAndForAllButWhatTheyExcept) {
  const Rules rules = ParseRules(kHead +
                                 "Conferma,Carta,,QslRicevuta,,\n"
                                 "Conferma,Rete,,NET_RCVD,Y V,Country; Zona CQ\n"
                                 "Conferma,Rete,,APP_NET,C,\n");
  EXPECT_EQ(rules.ByCard(), 1);
  EXPECT_EQ(rules.ByField("net_rcvd ", "v"), 2);
  EXPECT_EQ(rules.ByField("APP_NET", " C "), 2);
  EXPECT_EQ(rules.ByField("NET_RCVD", "N"), 0);
  EXPECT_EQ(rules.ByField("NET_SENT", "Y"), 0);
  EXPECT_EQ(rules.CountingFor(Kind::kCall), 3);
  EXPECT_EQ(rules.CountingFor(Kind::kCountry), 1);
  EXPECT_EQ(rules.CountingFor(Kind::kZonaCQ), 1);
}

TEST(Rules, TheOperatorsRowsTakeThePlaceOfOursOfTheSameName) {
  const std::string ours = kHead +
                           "Modo,SSB,Fonia,,,\nModo,FT8,Digitale,,,\nProvincia,IS0,I,,,\n"
                           "Conferma,eQSL,,EQSL_QSL_RCVD,Y,Country\n"
                           "Conferma,LoTW,,LOTW_QSL_RCVD,Y,\n"
                           "Esempio,Country,lavorato,EQSL_QSL_RCVD,Y,\n";
  const Rules rules = ParseRules(ours, kHead +
                                           "Modo,ft8,FT,,,\nConferma,eQSL,,EQSL_QSL_RCVD,Y,\n"
                                           "Conferma,LoTW,,,,\nProvincia,IS0,IS0,,,\n"
                                           "Esempio,Country,confermato,EQSL_QSL_RCVD,Y,\n");
  EXPECT_EQ(rules.Groups()[rules.MeaningOf("FT8").group], "FT");
  EXPECT_EQ(rules.Groups()[rules.MeaningOf("SSB").group], "Fonia");
  EXPECT_THAT(rules.Services(), ElementsAre("eQSL"));
  EXPECT_EQ(rules.CountryOfProvinces("is0"), "IS0");
}

TEST(Rules, SayWhichLineIsWrongAndWhy) {
  EXPECT_THAT(Refusal("Regola,Nome\n"), HasSubstr("Lavorati.csv, riga 1: le colonne sono"));
  EXPECT_THAT(Refusal(kHead + "Modo,SSB\n"), HasSubstr("Lavorati.csv, riga 2: non sono sei celle"));
  EXPECT_EQ(Refusal(kHead + "Nota,a,,,,\nMode,SSB,Fonia,,,\n"),
            "Lavorati.csv, riga 3: la regola \"Mode\" non esiste");
  EXPECT_EQ(Refusal(kHead + "Modo,,Fonia,,,\n"), "Lavorati.csv, riga 2: manca il nome");
  EXPECT_EQ(Refusal(kHead + "Modo,SSB,a,,,\nModo,ssb,b,,,\n"),
            "Lavorati.csv, riga 3: il modo ssb è già scritto");
  EXPECT_EQ(Refusal(kHead + "Satellite,SAT,,Banda,,\n"),
            "Lavorati.csv, riga 2: il campo di un satellite è Modo o Propagazione");
  EXPECT_EQ(Refusal(kHead + "Provincia,IS0,,,,\n"),
            "Lavorati.csv, riga 2: manca il country per cui valgono le provincie");
  EXPECT_EQ(Refusal(kHead + "Conferma,a,,X,,\n"),
            "Lavorati.csv, riga 2: mancano i valori che confermano");
  EXPECT_EQ(Refusal(kHead + "Conferma,a,,QslRicevuta,Y,\n"),
            "Lavorati.csv, riga 2: QslRicevuta non ha valori");
  EXPECT_THAT(Refusal(kHead + "Conferma,a,,X,Y,Contry\n"),
              HasSubstr("Lavorati.csv, riga 2: \"Contry\" non è tra Call; Prefisso; Country"));
  EXPECT_THAT(Refusal(kHead + "Esempio,Contry,lavorato,X,Y,\n"),
              HasSubstr("Lavorati.csv, riga 2: un esempio è di"));
  EXPECT_EQ(Refusal(kHead, kHead + "\nModo,,a,,,\n"), "Lavorati propri.csv, riga 3: manca il nome");
}

TEST(Rules, AnExampleThatDoesNotHoldIsAnErrorThatTellsWhatComesOut) {
  EXPECT_EQ(Refusal(kHead + "Modo,SSB,Fonia,,,\nEsempio,Gruppo,CW,Modo,SSB,\n"),
            "Lavorati.csv, riga 3: l'esempio dice \"CW\", le regole danno \"Fonia\"");
  EXPECT_EQ(Refusal(kHead + "Esempio,Country,confermato,LOTW_QSL_RCVD,Y,\n"),
            "Lavorati.csv, riga 2: l'esempio dice \"confermato\", le regole danno \"lavorato\"");
  EXPECT_EQ(Refusal(kHead + "Esempio,Satellite,si,Propagazione,EME,\n"),
            "Lavorati.csv, riga 2: l'esempio dice \"si\", le regole danno \"no\"");
  EXPECT_EQ(Refusal(kHead + "Esempio,Provincie di,I,,IS0,\n"),
            "Lavorati.csv, riga 2: l'esempio dice \"I\", le regole danno \"IS0\"");
  EXPECT_EQ(Refusal(kHead + "Modo,SSB,Fonia,,,\n",
                    kHead + "Modo,SSB,Voce,,,\nEsempio,Gruppo,Fonia,Modo,SSB,\n"),
            "Lavorati propri.csv, riga 3: l'esempio dice \"Fonia\", le regole danno \"Voce\"");
}

TEST(Rules, HoldNoMoreGroupsAndServicesThanTheyCanTellApart) {
  std::string groups = kHead, services = kHead;
  for (int i = 1; i <= 8; ++i) {
    const std::string name = std::to_string(i);
    groups += "Modo,M" + name + ",G" + name + ",,,\n";
    services += "Conferma,S" + name + ",,F" + name + ",Y,\n";
  }
  EXPECT_EQ(Refusal(groups), "Lavorati.csv, riga 9: i gruppi di modi sono più di 7");
  EXPECT_EQ(Refusal(services), "");
  EXPECT_EQ(Refusal(services + "Conferma,S9,,F9,Y,\n"),
            "Lavorati.csv, riga 10: i servizi sono più di 8");
}

TEST(Rules, AreReadFromTheDirectoryTheOperatorsOwnBesideOurs) {
  ScratchDirectory directory;
  const auto ours = directory.Path() / "ours.csv", own = directory.Path() / "own.csv";
  std::ofstream(ours) << kHead + "Modo,SSB,Fonia,,,\n";
  EXPECT_EQ(ReadRules(ours, own).Groups().back(), "Fonia");
  std::ofstream(own) << kHead + "Modo,SSB,Voce,,,\n";
  EXPECT_EQ(ReadRules(ours, own).Groups().back(), "Voce");
  std::filesystem::remove(ours);
  EXPECT_THROW(ReadRules(ours, own), std::runtime_error);
}

}  // namespace
}  // namespace brenvo::worked
