#include "entities/read_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "entities/table_text.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"

namespace brenvo::entities {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const KnownEntities kKnown{.numberOf = [](std::string_view prefix) {
  return prefix == "I" ? 248 : prefix == "IS0" ? 225 : 0;
}};

constexpr std::string_view kItaly =
    "Italy:        15:  28:  EU:   42.82:   -12.58:    -1.0:  I:\r\n"
    "    I,=II0X(14)[29]{AF}<1.0/2.0>~3~,\r\n"
    "    =VER20260311;\r\n"
    "Sicily:       15:  28:  EU:   37.50:   -14.00:    -1.0:  *IT9:\r\n"
    "    IT9;\r\n"
    "Sardinia:     15:  28:  EU:   40.15:    -9.27:    -1.0:  IS:\r\n"
    "    IM0,IS;\r\n";

std::string FaultOf(std::string_view text) {
  try {
    (void)ReadTable(text, "prova", kKnown);
  } catch (const TableError& fault) {
    return fault.what();
  }
  return "no fault";
}

TEST(CountryFile, TellsPrefixesAndCallsWithWhatDiffers) {
  const Table table = ReadTable(kItaly, "cty.dat", kKnown);
  EXPECT_EQ(table.version, "VER20260311");
  EXPECT_EQ(table.format, "cty.dat");
  ASSERT_THAT(table.rules, SizeIs(5));
  EXPECT_EQ(table.rules[1].text, "II0X");
  EXPECT_EQ(table.rules[1].kind, RuleKind::kCall);
  EXPECT_EQ(table.rules[1].entity, 248);
  EXPECT_EQ(table.rules[1].cq, 14);
  EXPECT_EQ(table.rules[1].itu, 29);
  EXPECT_EQ(table.rules[1].continent, "AF");
  EXPECT_EQ(table.rules[2].text, "IT9");
  EXPECT_EQ(table.rules[2].area, "IT9");
  EXPECT_EQ(table.rules[2].entity, 248);
  EXPECT_EQ(table.rules[4].entity, 225);
  EXPECT_EQ(table.rules[4].line, 7);
  ASSERT_THAT(table.entities, SizeIs(2));
  EXPECT_EQ(table.entities[1].country, "IS0");
}

TEST(CountryFile, ItsFaultsAreToldWithTheirLine) {
  EXPECT_EQ(FaultOf("Italy: 15: 28: EU: 1: 2: 3: I:\n  I,\n  =A(41);\n"),
            "prova: riga 3: \"41\" non è una zona");
  EXPECT_EQ(FaultOf("Italy: 15: 28: EU: 1: 2: 3: I:\n  I,=A(4;\n"),
            "prova: riga 2: manca \")\" dietro A");
  EXPECT_EQ(FaultOf("Italy: 15: 28: EU: 1: 2: 3: I:\n  I,=A\n"),
            "prova: riga 1: il file finisce a metà di un country");
  EXPECT_THAT(FaultOf("\nNew: 15: 28: EU: 1: 2: 3: QQ:\n  QQ;\n"),
              HasSubstr("prova: riga 2: il country New (QQ) non è noto"));
  EXPECT_EQ(FaultOf("Italy: 15: 28: XX: 1: 2: 3: I:\n  I;\n"),
            "prova: riga 1: \"XX\" non è un continente");
  EXPECT_THAT(FaultOf("Italy: 15: 28: EU: 1: 2: 3: I:\n  I*;\n"),
              HasSubstr("riga 2: \"I*\" non è un prefisso"));
}

TEST(CountryFileWithNumbers, TellsTheSame) {
  const Table table = ReadTable(
      "I,Italy,248,EU,15,28,42.82,-12.58,-1.0,I =II0X(14);\n"
      "*IT9,Sicily,248,EU,15,28,37.50,-14.00,-1.0,IT9;\n"
      "9Z,Trinidad, Tobago,90,SA,9,11,10.38,61.28,4.0,9Y 9Z =VER20260611;\n",
      "cty.csv", {});
  EXPECT_EQ(table.version, "VER20260611");
  ASSERT_THAT(table.rules, SizeIs(5));
  EXPECT_EQ(table.rules[1].cq, 14);
  EXPECT_EQ(table.rules[2].area, "IT9");
  EXPECT_EQ(table.rules[4].entity, 90);
}

TEST(CountryFileWithNumbers, ItsFaultsAreToldWithTheirLine) {
  EXPECT_EQ(FaultOf("I,Italy,248,EU,15,28,4,-1,-1.0,I;\nI,Italy,xx,EU,15,28,4,-1,-1.0,I;\n"),
            "prova: riga 2: \"xx\" non è il numero di un country");
  EXPECT_EQ(FaultOf("I,Italy,248,EU,15,28,4,-1,-1.0,I;\nI,Italy,248,EU,15,28,4,-1,-1.0,I\n"),
            "prova: riga 2: manca \";\" alla fine");
}

TEST(BarTable, TellsPatternsWithTheirDays) {
  const Table table = ReadTable(
      "KG4% =KG4AB 3D2(C)|Stati Uniti|NA|5|1N|2W|8|5||R|1984/01/01-=291\n"
      "=IK0XYZ|Pirata|EU|-1|1N|2W|28;29|15||R|2020/02/03=0\n"
      "DM Y[2-9]|DDR|EU|-1|1N|2W|28|14|229|D|1973/09/17-1990/10/02\n",
      "x.tbl", {});
  ASSERT_THAT(table.rules, SizeIs(5));
  EXPECT_EQ(table.rules[0].kind, RuleKind::kPrefix);
  EXPECT_TRUE(table.rules[0].when.HasFrom());
  EXPECT_FALSE(table.rules[0].when.HasTo());
  EXPECT_EQ(table.rules[1].kind, RuleKind::kCall);
  EXPECT_EQ(table.rules[1].entity, 291);
  EXPECT_EQ(table.rules[2].kind, RuleKind::kInvalid);
  EXPECT_EQ(table.rules[2].itu, 0);
  EXPECT_EQ(SpanText(table.rules[2].when), "il 03/02/2020");
  EXPECT_TRUE(table.rules[4].deletedEntity);
  ASSERT_THAT(table.entities, SizeIs(1));
  EXPECT_EQ(table.entities[0].number, 229);
  EXPECT_EQ(table.faultCount, 0);
}

TEST(BarTable, SingleWrongLinesArePassedOverAndTold) {
  const Table table = ReadTable(
      "I1|a|EU|-1|1N|2W|28|15||R|=248\n"
      "I2|b|EU|-1|1N|2W|28|15||R|-200905/31=248\n"
      "I3|c|EU|-1|1N|2W|28|15||R|=248\n",
      "x.tbl", {});
  EXPECT_THAT(table.rules, SizeIs(2));
  EXPECT_EQ(table.faultCount, 1);
  EXPECT_THAT(table.faults, ElementsAre("riga 2: \"200905/31\" non è un giorno"));
}

TEST(BarTable, ManyWrongLinesAreNoTable) {
  std::string text = "I1|a|EU|-1|1N|2W|28|15||R|=248\n";
  for (int i = 0; i < 21; ++i) text += "I2|b|EU\n";
  EXPECT_EQ(FaultOf(text), "prova: 21 righe su 22 non si capiscono; riga 2: ha 3 colonne e non 11");
}

TEST(Exceptions, AFileWithEntitiesOfItsOwnIsRefused) {
  EXPECT_EQ(FaultOf("<?xml version=\"1.0\"?>\n<!DOCTYPE clublog [<!ENTITY a \"aaaa\">\n"
                    "<!ENTITY b \"&a;&a;&a;&a;\">]>\n<clublog date=\"&b;\"></clublog>"),
            "prova: riga 2: dichiara un DOCTYPE, che un tale file non ha");
}

TEST(Exceptions, TheirFaultsAreToldWithTheirLine) {
  const auto with = [](std::string_view inner) {
    return FaultOf("<clublog xmlns=\"x\" date=\"2026\">\n<exceptions>\n" + std::string(inner) +
                   "\n</exceptions></clublog>");
  };
  EXPECT_EQ(with("<exception><call>K1A</call><adif>abc</adif></exception>"),
            "prova: riga 3: \"abc\" non è un numero da 0 a 9999");
  EXPECT_EQ(with("<exception><call>K1A</call><adif>1</adif><start>ieri</start></exception>"),
            "prova: riga 3: \"ieri\" non è una data");
  EXPECT_THAT(with("<exception><call>K1A</exception>"), HasSubstr("prova: riga 3: non è XML"));
  EXPECT_EQ(with("<exception><call>" + std::string(300, 'A') + "</call></exception>"),
            "prova: riga 3: un valore troppo lungo");
  EXPECT_EQ(FaultOf("<html>\n</html>"),
            "prova: riga 1: comincia con \"html\", non è un elenco di eccezioni");
  EXPECT_THAT(FaultOf("<clublog><exceptions>"), HasSubstr("non è XML"));
}

TEST(Tables, WhatIsNoneIsRefusedInWords) {
  EXPECT_EQ(FaultOf(""), "prova: è vuoto");
  EXPECT_THAT(FaultOf("Caro amico,\nci vediamo"),
              HasSubstr("riga 1: \"Caro amico,\" non comincia"));
  EXPECT_EQ(FaultOf("\x1f\x8b\x08"), "prova: è compresso: va prima estratto");
  EXPECT_THAT(FaultOf(std::string("abc\0def", 7)), HasSubstr("non è un testo"));
  EXPECT_EQ(FaultOf("Tipo,Dxcc,Country,Nome,Continente,CQ,ITU,Area,Dal,Al,Testi\n"),
            "prova: nessuna regola");
}

TEST(Tables, AFileOf200MegabytesIsRefusedUnread) {
  const ScratchDirectory directory;
  const auto file = directory.Path() / "cty.dat";
  std::ofstream(file) << "Italy";
  std::filesystem::resize_file(file, 200u << 20);
  try {
    (void)ReadTableFile(file, kKnown);
    FAIL();
  } catch (const TableError& fault) {
    EXPECT_STREQ(fault.what(), "cty.dat: è più grande di 64 MB");
  }
}

TEST(Tables, MorePrefixesThanAnyWorldNeedsAreRefused) {
  std::string text = "I,Italy,248,EU,15,28,4,-1,-1.0,";
  for (std::size_t i = 0; i <= kMostPrefixes; ++i) text += "Q ";
  EXPECT_EQ(FaultOf(text + ";\n"), "prova: riga 1: più di 100000 prefissi");
}

TEST(OwnTable, WhatIsWrittenIsReadAgain) {
  const Table table = ReadTableFile(SourceDir() / "data/rules/Entita.csv", {});
  const Table again = ReadTable(OwnTableText(table), "Entita.csv", {});
  EXPECT_EQ(again.rules.size(), table.rules.size());
  EXPECT_EQ(again.entities.size(), table.entities.size());
  EXPECT_EQ(OwnTableText(again), OwnTableText(table));
}

TEST(OwnTable, KeepsAllThatAnotherFormatTells) {
  const Table xml = ReadTable(
      R"(<clublog xmlns="x" date="2026"><entities><entity><adif>344</adif><name>DPRK</name>)"
      R"(<cqz>25</cqz><cont>AS</cont><whitelist>TRUE</whitelist>)"
      R"(<whitelist_start>2000-01-01T00:00:00+00:00</whitelist_start></entity></entities>)"
      R"(<exceptions><exception record="1"><call>P5RS7</call><adif>344</adif>)"
      R"(<start>2025-01-01T12:00:00+00:00</start><end>2025-01-31T00:00:00+00:00</end>)"
      R"(</exception></exceptions><invalid_operations><invalid record="3"><call>IK0XYZ</call>)"
      R"(</invalid></invalid_operations><zone_exceptions><zone_exception record="4">)"
      R"(<call>W1AW</call><zone>3</zone></zone_exception></zone_exceptions></clublog>)",
      "cty.xml", {});
  const Table again = ReadTable(OwnTableText(xml), "cty.xml", {});
  ASSERT_THAT(again.entities, SizeIs(1));
  EXPECT_EQ(again.entities[0].listedOnly, xml.entities[0].listedOnly);
  ASSERT_THAT(again.rules, SizeIs(3));
  const auto ruleOf = [](const Table& table, std::string_view text) -> const Rule& {
    return *std::ranges::find(table.rules, text, &Rule::text);
  };
  for (const std::string_view call : {"P5RS7", "IK0XYZ", "W1AW"}) {
    EXPECT_EQ(ruleOf(again, call).kind, ruleOf(xml, call).kind) << call;
    EXPECT_EQ(ruleOf(again, call).when, ruleOf(xml, call).when) << call;
    EXPECT_EQ(ruleOf(again, call).cq, ruleOf(xml, call).cq) << call;
  }
  const Table bars = ReadTable("DM|DDR|EU|-1|1N|2W|28|14|229|D|1973/09/17-1990/10/02\n", "x", {});
  EXPECT_TRUE(ReadTable(OwnTableText(bars), "x", {}).rules.at(0).deletedEntity);
}

TEST(OwnTable, ItsFaultsAreToldWithTheirLine) {
  constexpr std::string_view kHead = "Tipo,Dxcc,Country,Nome,Continente,CQ,ITU,Area,Dal,Al,Testi\n";
  EXPECT_THAT(FaultOf(std::string(kHead) + "P,248,,,,,,,2020-01-02,2020-01-01,I\n"),
              HasSubstr("riga 2: finisce prima di cominciare"));
  EXPECT_THAT(FaultOf(std::string(kHead) + "Q,248,,,,,,,,,I\n"),
              HasSubstr("riga 2: \"Q\" in Tipo"));
  EXPECT_THAT(FaultOf(std::string(kHead) + "P,248\n"), HasSubstr("line 2"));
}

}  // namespace
}  // namespace brenvo::entities
