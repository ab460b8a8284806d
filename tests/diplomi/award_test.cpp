#include "diplomi/award.h"

#include <gmock/gmock.h>

#include "tests/diplomi/awards.h"

namespace brenvo::diplomi {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The first fault of a small award in which one piece stands otherwise.
std::string FaultOf(std::string_view piece, std::string_view instead) {
  std::string text = SmallAward();
  const std::size_t at = text.find(piece);
  EXPECT_NE(at, std::string::npos) << piece;
  text.replace(at, piece.size(), instead);
  const ReadAward read = ReadAwardText(text);
  return read.faults.empty() ? "" : read.faults.front().Text();
}

TEST(AwardFile, ASmallOneHasNoFault) {
  const ReadAward read = ReadAwardText(SmallAward());
  for (const AwardFault& fault : read.faults) ADD_FAILURE() << fault.Text();
  EXPECT_EQ(read.award.name, "Prova");
  EXPECT_EQ(read.award.unit, UnitKind::kCqZone);
  EXPECT_THAT(read.award.bands, ElementsAre("20 m", "15 m"));
}

TEST(AwardFile, WhatIsWrongIsToldWithItsLineAndField) {
  EXPECT_EQ(FaultOf("\"zona CQ\",", "\"zona\","),
            "riga 4, unità: \"zona\" non c'è: si scrive \"country\", \"country WAE\", \"zona CQ\", "
            "\"continente\", \"prefisso\", \"provincia\", \"quadrato\", \"campo\", "
            "\"riferimento\"");
  EXPECT_EQ(FaultOf("\"nome\": \"Prova\",", ""), "riga 1, nome: manca");
  EXPECT_EQ(FaultOf("\"dal\": \"1990-01-01\"", "\"dal\": \"1/1/1990\""),
            "riga 6, dal: la data si scrive come 1948-06-02");
  EXPECT_EQ(FaultOf("{\"servizio\": \"LoTW\"}", "{\"servizio\": \"LoTW\", \"del record\": true}"),
            "riga 7, conferme[1].del record: con questa unità non serve");
  EXPECT_EQ(FaultOf("{\"servizio\": \"LoTW\"}", "{\"servizio\": \"LoTW\", \"solo con\": \"X\"}"),
            "riga 7, conferme[1].solo con: si scrive CAMPO=valore");
  EXPECT_EQ(FaultOf("[10, 20]", "[20, 10]"),
            "riga 8, traguardi[1].quanti: qui ci vogliono numeri interi crescenti");
  EXPECT_EQ(FaultOf("\"formato\": 1", "\"formato\": 2"),
            "riga 2, formato: questo programma conosce il formato 1");
  EXPECT_EQ(FaultOf("\"nome\": \"Prova\",", "\"nome\": \"Prova\", \"pippo\": 1,"),
            "riga 3, pippo: campo sconosciuto");
  EXPECT_THAT(FaultOf("{", "["), HasSubstr("non è JSON"));
}

TEST(AwardFile, ReferencesAreFoundByTheirPattern) {
  EXPECT_THAT(ReferencesIn("Isola: eu-025, poi AF-019!", "LL-NNN"),
              ElementsAre("EU-025", "AF-019"));
  EXPECT_THAT(ReferencesIn("XEU-025 EU-0251 EU-25", "LL-NNN"), IsEmpty());
  EXPECT_THAT(ReferencesIn("[DCI/MI001/Castello Sforzesco]", "LLNNN"), ElementsAre("MI001"));
  EXPECT_THAT(ReferencesIn("RIF-7 RIF-12A", "RIF-N*"), ElementsAre("RIF-7", "RIF-12A"));
  EXPECT_THAT(ReferencesIn("MI001 MI001", "LLNNN"), ElementsAre("MI001"));
  EXPECT_THAT(ReferencesIn("", "LLNNN"), IsEmpty());
  EXPECT_THAT(ReferencesIn("US-1, us-2;;US-3 ", ""), ElementsAre("US-1", "US-2", "US-3"));
}

TEST(AwardFile, AListOfReferencesIsATableWithNames) {
  EXPECT_THAT(ReadReferences("Riferimento,Nome\neu-025,Sicilia\nAF-019,\"Pelagie, isole\"\n"),
              ElementsAre(ListedReference{"EU-025", "Sicilia"},
                          ListedReference{"AF-019", "Pelagie, isole"}));
  const auto fault = [](std::string_view text) {
    try {
      (void)ReadReferences(text);
    } catch (const std::runtime_error& failure) {
      return std::string(failure.what());
    }
    return std::string();
  };
  EXPECT_EQ(fault("Rif,Nome\n"), "riga 1: le prime due colonne sono Riferimento,Nome");
  EXPECT_EQ(fault("Riferimento,Nome\nA,1\na,2\n"), "riga 3: A c'è già");
  EXPECT_EQ(fault("Riferimento,Nome\n,2\n"), "riga 2: manca il riferimento");
  EXPECT_EQ(fault("Riferimento,Nome\n\"A,2\n"), "non è una tabella con le virgole");
}

}  // namespace
}  // namespace brenvo::diplomi
