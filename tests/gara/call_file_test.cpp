#include "gara/call_file.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "gara/call_list.h"
#include "tests/gara/gara_station.h"
#include "tests/support/golden.h"

namespace brenvo::gara {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> Told(const ReadCallFile& read) {
  std::vector<std::string> lines;
  for (const core::KnownCall& each : read.calls) {
    std::string line = each.call;
    for (const core::PlaceOfCall& place : each.places) {
      line += fmt::format(" {}x{}{}", place.locator, place.times,
                          place.seen ? "@" + base::DateText(*place.seen) : "");
    }
    lines.push_back(line);
  }
  return lines;
}
std::vector<std::string> Noted(const ReadCallFile& read) {
  std::vector<std::string> lines;
  for (const ReadNote& each : read.notes)
    lines.push_back(fmt::format("{}: {}", each.line, each.text));
  return lines;
}

TEST(CallFile, ALogOfAnybodyTellsWhereHisStationsAndHeHimselfWere) {
  const ReadCallFile read = ReadCallFileBytes(
      "[REG1TEST;1]\r\nPCall=OK1XYZ\r\nPWWLo=JO70FC\r\nPBand=144 MHz\r\n[QSORecords;3]\r\n"
      "240907;1400;DK5AB;1;59;001;59;012;;JN48QT;490;;N;N;\r\n"
      "240908;0900;DK5AB;1;59;002;59;099;;JN48QU;490;;N;N;\r\n"
      "240908;0901;S51ZO;1;59;003;59;099;;JN8;490;;N;N;\r\n");
  EXPECT_EQ(read.kind, "log di contest");
  EXPECT_EQ(read.lines, 3);
  EXPECT_THAT(Told(read), ElementsAre("DK5AB JN48QUx1@08/09/2024 JN48QTx1@07/09/2024",
                                      "OK1XYZ JO70FCx1@08/09/2024", "S51ZO"));
}

TEST(CallFile, ALineTellsTheOrderOfTheColumns) {
  const ReadCallFile read = ReadCallFileBytes(
      "# a comment\n!!Order!!,Call,Loc1,UserText,Loc2\nIK4ABC,JN54MN,ciao,JN63AA\n"
      "dk5ab,JN48QT\n!!Order!!\nnonsense row\nI1XYZ;JN45AA;;\n");
  EXPECT_EQ(read.kind, "storia di nominativi");
  EXPECT_THAT(Told(read),
              ElementsAre("DK5AB JN48QTx1", "I1XYZ JN45AAx1", "IK4ABC JN54MNx1 JN63AAx1"));
  EXPECT_THAT(Noted(read), ElementsAre("6: \"nonsense row\" non è un nominativo"));
}

TEST(CallFile, WithoutThatLineTheUsualOrderCountsOrALocatorBehindTheCall) {
  const ReadCallFile read = ReadCallFileBytes(
      "IK4ABC,Nicolo,JN54MN\r\n// a list's own remark\r\nSM5BSZ,JO89IJ,EME,,,,,01/02\r\n"
      "DL1ABC,B34\r\nZZZZZZ\r\n");
  EXPECT_THAT(Told(read), ElementsAre("DL1ABC", "IK4ABC JN54MNx1", "SM5BSZ JO89IJx1"));
}

TEST(CallFile, AListOfCallsTellsItsVersionAsNoCall) {
  const ReadCallFile read =
      ReadCallFileBytes("# Release 2023.05.02\r\nIK4ABC\r\nVER20230502\r\nW1AW\r\n*\r\n");
  EXPECT_EQ(read.kind, "lista di nominativi");
  EXPECT_THAT(Told(read), ElementsAre("IK4ABC", "W1AW"));
  EXPECT_EQ(read.calls[0].sources, core::kFromSuperCheck);
  EXPECT_THAT(Noted(read), ElementsAre("5: \"*\" non è un nominativo"));
}

TEST(CallFile, AnAdiFileTellsCallLocatorAndDay) {
  const ReadCallFile read = ReadCallFileBytes(
      "x <EOH>\n<CALL:6>IK4ABC<GRIDSQUARE:8>jn54mn12<QSO_DATE:8>20240102<EOR>\n"
      "<CALL:1>!<EOR>\n");
  EXPECT_EQ(read.kind, "file ADIF");
  EXPECT_THAT(Told(read), ElementsAre("IK4ABC JN54MNx1@02/01/2024"));
  EXPECT_THAT(Noted(read), ElementsAre("3: \"!\" non è un nominativo"));
}

TEST(CallFile, HostileFilesEndAndAreTold) {
  EXPECT_THAT(Noted(ReadCallFileBytes(std::string(kMostCallFileBytes + 1, 'A'))),
              ElementsAre(HasSubstr("non è stato letto")));
  const ReadCallFile commas = ReadCallFileBytes("IK4ABC" + std::string(100000, ',') + "\n");
  EXPECT_THAT(Noted(commas), ElementsAre("1: 100001 campi sono troppi"));
  std::string nonsense;
  for (int i = 0; i < 5000; ++i) nonsense += "????\n";
  EXPECT_THAT(ReadCallFileBytes(nonsense).notes, SizeIs(201));
  EXPECT_THAT(ReadCallFileBytes(std::string("\0\xFF\xFE,;\n\0", 8)).calls, IsEmpty());
  EXPECT_THAT(ReadCallFileBytes("").calls, IsEmpty());
}

TEST(Calls, PartsAndNeighboursAreFoundAsByLookingAtEachOfThem) {
  std::vector<std::string> calls;
  std::uint32_t state = 7;
  const auto next = [&](std::uint32_t below) {
    state = state * 1664525 + 1013904223;
    return (state >> 16) % below;
  };
  constexpr std::string_view kLetters = "AIKDLS0149/X";
  for (int i = 0; i < 3000; ++i) {
    std::string call;
    for (std::uint32_t n = 3 + next(5); n > 0; --n) call += kLetters[next(kLetters.size())];
    calls.push_back(call);
  }
  const CallList list(calls);
  std::ranges::sort(calls);
  calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
  EXPECT_EQ(list.Size(), calls.size());
  for (int i = 0; i < 300; ++i) {
    std::string text;
    for (std::uint32_t n = 2 + next(5); n > 0; --n) text += kLetters[next(kLetters.size())];
    std::vector<std::string> holding, near;
    for (const std::string& call : calls) {
      if (call != text && call.find(text) != std::string::npos) holding.push_back(call);
      if (text.size() >= 3 && DifferByOne(call, text)) near.push_back(call);
    }
    EXPECT_EQ(list.Holding(text, 10000), holding) << text;
    EXPECT_EQ(list.Near(text, 10000), near) << text;
    EXPECT_EQ(list.Contains(text), std::ranges::binary_search(calls, text));
  }
  EXPECT_THAT(list.Holding("A", 10), IsEmpty());
  EXPECT_THAT(list.Holding("à?", 10), IsEmpty());
  EXPECT_THAT(CallList().Holding("IK", 10), IsEmpty());
  EXPECT_THAT(CallList().Near("IK4ABC", 10), IsEmpty());
}

TEST_F(GaraStation, AFileTeachesCallsAndLocatorsThatTheEntryThenKnows) {
  const std::filesystem::path file = directory.Path() / "amico.edi";
  std::ofstream(file) << "[REG1TEST;1]\r\nPCall=OK1XYZ\r\nPWWLo=JO70FC\r\nPBand=144 MHz\r\n"
                         "[QSORecords;1]\r\n240706;1400;DK5AB;1;59;001;59;012;;JN48QT;490;;N;N;\r\n"
                         "240706;niente\r\n";
  Begin("IARU Region 1 145 MHz", "07/09/2024");
  machine.Picks().Queue(file);
  Press(*window, "cmImportaNominativi");
  EXPECT_EQ(window->Avviso.Text(),
            "amico.edi, log di contest: 1 righe, nominativi nuovi 2, già conosciuti 0, "
            "osservazioni 1");
  EXPECT_THAT(brenvo::RowsOf(window->Verifiche)[0], HasSubstr("riga 7"));
  Type(window->Call, "dk5ab");
  EXPECT_EQ(window->Storia.Text(), "locatore JN48QT (06/07/2024)");
  Press(*window, "cmAccetta");
  EXPECT_EQ(window->Locator.Text(), "JN48QT");
  Type(window->Locator, "JN58AA");
  EXPECT_THAT(window->Stato.Text(), HasSubstr("locatore diverso dal solito"));
  Type(window->Call, "ok1x");
  EXPECT_EQ(window->Parziali.Text(), "OK1XYZ");
  Type(window->Call, "ok1xyy");
  EXPECT_EQ(window->Parziali.Text(), "una lettera: OK1XYZ");
  // Once more: nothing is new.
  machine.Picks().Queue(file);
  Press(*window, "cmImportaNominativi");
  EXPECT_THAT(window->Avviso.Text(), HasSubstr("nominativi nuovi 0, già conosciuti 2"));
}

TEST_F(GaraStation, TheCheckDoubtsLocatorsAndCallsThatHistoryKnowsOtherwise) {
  core::LearnCalls(session, {{"DK5AB", {{"JN58AA", {}, 1}}, core::kFromHistory},
                             {"S51ZO", {}, core::kFromSuperCheck}});
  Begin("IARU Region 1 145 MHz", "07/09/2024");
  Work("DK5AB", "12", "JN48QT");
  Work("S51ZA", "13", "JN86DT");
  Press(*window, "cmVerifica");
  const auto rows = brenvo::RowsOf(window->Verifiche);
  EXPECT_THAT(rows, ::testing::Contains("Avviso|2 m 1 DK5AB|Locatore diverso dal solito: JN58AA"));
  EXPECT_THAT(rows, ::testing::Contains(
                        "Nota|2 m 2 S51ZA|S51ZA non è fra i nominativi conosciuti, S51ZO sì"));
}

TEST_F(GaraStation, TheLogsOwnCallsCountAmongTheParts) {
  Exec("insert into Log (DataQso,Call) values ('01/01/2001 10:00','IW9XYZ')");
  Begin("IARU Region 1 145 MHz", "07/09/2024");
  Type(window->Call, "iw9");
  EXPECT_EQ(window->Parziali.Text(), "IW9XYZ");
  Type(window->Call, "*");
  EXPECT_EQ(window->Parziali.Text(), "");
}

}  // namespace
}  // namespace brenvo::gara
