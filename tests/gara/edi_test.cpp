#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "base/text.h"
#include "gara/log_file.h"
#include "tests/gara/rules.h"

namespace brenvo::gara {
namespace {

using base::DateTime;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

LogHead SampleHead() {
  LogHead head;
  head.contest = "IARU Region 1 145 MHz";
  head.begin = DateTime::Of(2024, 9, 7);
  head.end = DateTime::Of(2024, 9, 8);
  head.call = "IK4ABC/P";
  head.locator = "JN54MN";
  head.category = "SINGLE";
  head.address1 = "Monte Cimone";
  head.name = "Nicolò Forlì";
  head.ownCall = "IK4ABC";
  head.street = "Via Roma 1; int. 2";
  head.mail = "ik4abc@example.org";
  head.transmitter = "IC-9700";
  head.power = "50";
  head.antenna = "9 el.";
  head.height = "10";
  head.above = "2165";
  head.remarks = {"Vento così forte", "[non è una parte]"};
  return head;
}

std::vector<LogRow> LogRowsOf(const Rule& rule, const OwnEntry& own,
                              std::vector<Contact> contacts) {
  Count count(rule, own);
  count.Reset(contacts);
  std::vector<LogRow> rows;
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    rows.push_back({std::move(contacts[i]), count.Worths()[i]});
  }
  return rows;
}

std::vector<LogRow> SampleRows(const Rule& rule) {
  std::vector<Contact> contacts = {Made("2 m", "DK5AB", "JN48QT"),
                                   Made("2 m", "S51ZO", "JN86DT", "CW"),
                                   Made("2 m", "DK5AB/P", "JN48QT")};
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    contacts[i].serialSent = static_cast<std::int64_t>(i + 1);
    contacts[i].serialReceived = static_cast<std::int64_t>(10 * i + 7);
    contacts[i].time = contacts[i].time.Later(static_cast<std::int64_t>(i) * 11 * 3600);
  }
  contacts[1].reportSent = contacts[1].reportReceived = "599";
  contacts[0].place = {"DL", "EU"};
  contacts[1].place = {"S5", "EU"};
  contacts[2].place = {"DL", "EU"};
  return LogRowsOf(rule, {"IK4ABC/P", "JN54MN", "", {"I", "EU"}}, std::move(contacts));
}

TEST(Edi, TheFileIsTheOneOfTheHandbook) {
  const Rule rule = DeliveredRule("iaru-145");
  const WrittenLog written = WriteEdi(rule, SampleHead(), "2 m", SampleRows(rule));
  EXPECT_EQ(written.bytes,
            "[REG1TEST;1]\r\n"
            "TName=IARU Region 1 145 MHz\r\n"
            "TDate=20240907;20240908\r\n"
            "PCall=IK4ABC/P\r\n"
            "PWWLo=JN54MN\r\n"
            "PExch=\r\n"
            "PAdr1=Monte Cimone\r\n"
            "PAdr2=\r\n"
            "PSect=SINGLE\r\n"
            "PBand=144 MHz\r\n"
            "PClub=\r\n"
            "RName=Nicolo Forli\r\n"
            "RCall=IK4ABC\r\n"
            "RAdr1=Via Roma 1, int. 2\r\n"
            "RAdr2=\r\n"
            "RPoCo=\r\n"
            "RCity=\r\n"
            "RCoun=\r\n"
            "RPhon=\r\n"
            "RHBBS=ik4abc@example.org\r\n"
            "MOpe1=\r\n"
            "MOpe2=\r\n"
            "STXEq=IC-9700\r\n"
            "SPowe=50\r\n"
            "SRXEq=\r\n"
            "SAnte=9 el.\r\n"
            "SAntH=10;2165\r\n"
            "CQSOs=2;1\r\n"
            "CQSOP=969\r\n"
            "CWWLs=2;0;1\r\n"
            "CWWLB=0\r\n"
            "CExcs=0;0;1\r\n"
            "CExcB=0\r\n"
            "CDXCs=2;0;1\r\n"
            "CDXCB=0\r\n"
            "CToSc=969\r\n"
            "CODXC=DK5AB;JN48QT;489\r\n"
            "[Remarks]\r\n"
            "Vento cosi forte\r\n"
            " [non e una parte]\r\n"
            "[QSORecords;3]\r\n"
            "240907;1400;DK5AB;1;59;001;59;007;;JN48QT;490;;N;N;\r\n"
            "240908;0100;S51ZO;2;599;002;599;017;;JN86DT;479;;N;N;\r\n"
            "240908;1200;DK5AB/P;1;59;003;59;027;;JN48QT;0;;;;D\r\n");
}

TEST(Edi, WhatTheFileWritesOtherwiseIsTold) {
  const Rule rule = DeliveredRule("iaru-145");
  std::vector<std::string> told;
  for (const WrittenOtherwise& each : WriteEdi(rule, SampleHead(), "2 m", {}).changes) {
    told.push_back(fmt::format("{}: {} -> {}", each.field, each.before, each.after));
  }
  EXPECT_THAT(told, ElementsAre("RName: Nicolò Forlì -> Nicolo Forli",
                                "RAdr1: Via Roma 1; int. 2 -> Via Roma 1, int. 2",
                                "Remarks: Vento così forte -> Vento cosi forte",
                                "Remarks: [non è una parte] -> [non e una parte]"));
}

TEST(Edi, AMultiplierCountsInTheBandsScore) {
  const Rule rule = DeliveredRule("veneto");
  const std::string bytes = WriteEdi(rule, SampleHead(), "2 m", SampleRows(rule)).bytes;
  EXPECT_THAT(bytes, HasSubstr("CToSc=" + std::to_string((490 + 2 * 479) * 2) + "\r\n"));
}

TEST(Edi, WrittenReadAndWrittenAgainItIsTheSame) {
  const Rule rule = DeliveredRule("iaru-145");
  LogHead head = SampleHead();
  const std::string bytes = WriteEdi(rule, head, "2 m", SampleRows(rule)).bytes;
  const ReadContestLog read = ReadEdi(bytes);
  EXPECT_THAT(read.notes, IsEmpty());
  EXPECT_EQ(read.call, "IK4ABC/P");
  EXPECT_EQ(read.locator, "JN54MN");
  EXPECT_EQ(read.band, "2 m");
  ASSERT_EQ(read.contacts.size(), 3u);
  std::vector<Contact> contacts;
  for (const ReadContact& each : read.contacts) contacts.push_back(each.contact);
  contacts[0].place = contacts[2].place = {"DL", "EU"};
  contacts[1].place = {"S5", "EU"};
  EXPECT_EQ(WriteEdi(rule, head, "2 m",
                     LogRowsOf(rule, {read.call, read.locator, "", {}}, std::move(contacts)))
                .bytes,
            bytes);
}

TEST(Edi, TheFileOfTheOldExportIsReadWhole) {
  // Dates of eight digits, no mode, a duplicate's "D" without its line's end, counts that are
  // wrong.
  const ReadContestLog read = ReadEdi(
      "[REG1TEST;1]\r\nTName=Prova\r\nPCall=ik4abc\r\nPBand=145 MHz\r\n"
      "CWWLs=1;0;1\r\nCWWLs=1;0;1\r\n[QSORecords;7]\r\n"
      "20240907;1400;DK5AB;;59;001;59;007;;JN48QT;490;;N;N;\r\n"
      "20240907;1401;DK5AB;;59;002;59;008;;JN48QT;0;;;;D20240907;1402;S51ZO;;59;003;59;009;;JN86DT;"
      "443;;;N;\r\n");
  ASSERT_EQ(read.contacts.size(), 3u);
  EXPECT_TRUE(read.contacts[1].isDuplicate);
  EXPECT_EQ(read.contacts[2].contact.call, "S51ZO");
  EXPECT_EQ(base::IsoText(read.contacts[2].contact.time), "2024-09-07 14:02:00");
  std::vector<std::string> notes;
  for (const ReadNote& note : read.notes)
    notes.push_back(fmt::format("{} {}", note.line, note.text));
  EXPECT_THAT(notes, ElementsAre("6 CWWLS= c'è due volte: vale la prima", "9 due QSO su una riga",
                                 "0 [QSORecords] dice 7 QSO, le righe sono 3",
                                 "0 le date sono di otto cifre"));
}

TEST(Edi, ALineThatMakesNoContactIsTold) {
  const ReadContestLog read = ReadEdi(
      "[REG1TEST;1]\nPBand=144 MHz\n[QSORecords;4]\n"
      "240230;1400;DK5AB;1;59;001;59;007;;JN48QT;494;;;;\n"
      "240907;2560;DK5AB;1;59;001;59;007;;JN48QT;494;;;;\n"
      "240907;1400;ERROR;1;59;001;59;007;;JN48QT;494;;;;\n"
      "che cosa\n"
      "240907;1400;DK5AB;1;59\n");
  std::vector<std::string> notes;
  for (const ReadNote& note : read.notes)
    notes.push_back(fmt::format("{} {}", note.line, note.text));
  EXPECT_THAT(notes,
              ElementsAre("4 QSO non letto: la data \"240230\"", "5 QSO non letto: l'ora \"2560\"",
                          "6 QSO non letto: il nominativo \"ERROR\"", "7 la riga non è un QSO",
                          "8 5 campi invece di 15"));
  EXPECT_EQ(read.contacts.size(), 1u);
}

TEST(Edi, LettersOfAnyKindAreRead) {
  const ReadContestLog utf = ReadEdi("\xEF\xBB\xBF[REG1TEST;1]\nRName=Nicolò\n");
  const ReadContestLog windows = ReadEdi("[REG1TEST;1]\nRName=Nicol\xF2\n");
  EXPECT_EQ(utf.Head("RNAME"), "Nicolò");
  EXPECT_EQ(windows.Head("RNAME"), "Nicolò");
}

TEST(Edi, ABandIsKnownByWhatFilesCallIt) {
  const std::pair<const char*, const char*> kCases[] = {
      {"144 MHz", "2 m"}, {"145 MHz", "2 m"},  {"144", "2 m"},      {"432 MHz", "70cm"},
      {"435MHz", "70cm"}, {"1,3 GHz", "23cm"}, {"1.3 GHz", "23cm"}, {"1296 MHz", "23cm"},
      {"10 GHz", "3cm"},  {"50 MHz", "6 m"},   {"70 MHz", "4 m"},   {"14025", "20 m"},
      {"3525", "80 m"},   {"1.2G", "23cm"},    {"24 GHz", "24GHz"}, {"2m", "2 m"},
      {"28400", "10 m"},  {"47 GHz", "47GHz"}};
  for (const auto& [text, band] : kCases) {
    const BandName* const found = BandOfText(text);
    EXPECT_EQ(found == nullptr ? "" : found->log, band) << text;
  }
  for (const char* none : {"", "LIGHT", "99999", "0", "MHz"})
    EXPECT_EQ(BandOfText(none), nullptr) << none;
}

// A log with every sin that its kind knows: the contacts that it holds, and the line of each.
struct SinfulLog {
  std::string bytes;
  std::vector<std::pair<int, std::string>> calls;  // line and call of each record
};

SinfulLog MakeSinfulLog(std::mt19937& random) {
  const auto one = [&](int of) { return random() % static_cast<unsigned>(of) == 0; };
  SinfulLog log;
  int line = 1;
  const char* const kEnds[] = {"\r\n", "\n", "\r"};
  const std::string end = kEnds[random() % 3];
  const auto put = [&](const std::string& text) {
    log.bytes += text + end;
    ++line;
  };
  if (one(4)) log.bytes += "\xEF\xBB\xBF";
  if (!one(6)) put(one(3) ? "[reg1test;1]" : "[REG1TEST;1]");
  put("TName=Contest d\xE8i prova");
  put(one(3) ? "PBand= 145 MHz" : "PBand=144 MHz");
  if (one(3)) put("PCall=ik4abc");
  if (one(4)) put("una riga che non c'entra");
  if (one(3)) put("[Remarks]"), put("note; con; tanti; segni; in; mezzo; ma; non; un; qso");
  if (!one(5)) put(one(3) ? "[QSORecords]" : fmt::format("[QSORecords;{}]", random() % 100));
  const int count = static_cast<int>(random() % 30);
  for (int i = 0; i < count; ++i) {
    if (one(15)) put("");
    if (one(25)) put("; riga ; rotta ;");
    std::string call =
        fmt::format("IK{}{}{}", random() % 10, static_cast<char>('A' + random() % 26),
                    static_cast<char>('A' + random() % 26));
    std::string date = one(3) ? "20240907" : "240907";
    if (one(30)) date = "249907";
    std::string time = fmt::format("{:02}{:02}", random() % 24, random() % 60);
    if (one(30)) time = "2575";
    if (one(20)) time.insert(2, ":");
    std::string locator = one(10) ? "" : one(10) ? "jn54mn" : one(10) ? "JN54" : "JN54MN";
    std::string shown = one(10) ? base::Lower(call) : call;
    if (one(40)) shown = call = "??";
    std::string record = fmt::format("{};{};{};{};{};{:03};{};{};{};{};{};;;;", date, time, shown,
                                     one(5)    ? ""
                                     : one(10) ? "SSB"
                                               : "1",
                                     one(10) ? "" : "59", i + 1, "59",
                                     one(10)   ? ""
                                     : one(15) ? "x1"
                                               : "012",
                                     one(5) ? "b\xE0" : "", locator, 12);
    if (one(6)) record += "D";
    if (one(15)) record += ";";
    if (one(15)) record.resize(record.find_last_not_of(";D") + 1);
    if (one(30)) record = "  " + record + "  ";
    log.calls.emplace_back(line, base::UpperAscii(call));
    // Without its line's end the next one stands on the same line.
    const bool isWhole = std::ranges::count(record, ';') == 14 && !record.ends_with(' ');
    if (isWhole && one(12) && i + 1 < count) {
      log.bytes += record;
    } else {
      put(record);
    }
  }
  if (one(4)) log.bytes += std::string(1, '\0');
  return log;
}

TEST(Edi, OfTwoThousandSinfulFilesNoContactIsLostUnseen) {
  std::mt19937 random(2026);
  int contacts = 0, refused = 0;
  for (int file = 0; file < 2000; ++file) {
    const SinfulLog log = MakeSinfulLog(random);
    const ReadContestLog read = ReadEdi(log.bytes);
    std::multimap<std::pair<int, std::string>, int> found;
    for (const ReadContact& each : read.contacts)
      found.emplace(std::pair(each.line, each.contact.call), 0);
    std::multiset<int> told;
    for (const ReadNote& note : read.notes) {
      if (note.text.starts_with("QSO non letto")) told.insert(note.line);
    }
    for (const auto& [line, call] : log.calls) {
      if (const auto at = found.find(std::pair(line, call)); at != found.end()) {
        found.erase(at);
        ++contacts;
      } else if (const auto note = told.find(line); note != told.end()) {
        told.erase(note);
        ++refused;
      } else {
        FAIL() << "file " << file << ", line " << line << ", " << call << "\n" << log.bytes;
      }
    }
    EXPECT_THAT(found, IsEmpty()) << log.bytes;
  }
  EXPECT_GT(contacts, 20000);
  EXPECT_GT(refused, 500);
}

TEST(Cabrillo, TheFileIsTheOneOfTheStandard) {
  const Rule rule = DeliveredRule("ari-dx");
  LogHead head = SampleHead();
  head.call = "IK4ABC";
  head.locator = "";
  head.exchange = "BO";
  head.category = "SINGLE-OP CW HIGH";
  head.remarks = {"Bello"};
  std::vector<Contact> contacts = {Made("20 m", "DL1ABC", "", "CW"),
                                   Made("15 m", "K1AB", "", "USB")};
  contacts[0].serialReceived = 12;
  contacts[0].reportSent = contacts[0].reportReceived = "599";
  contacts[0].place = {"DL", "EU"};
  contacts[1].serialReceived = 1234;
  contacts[1].place = {"K", "NA"};
  const auto rows = LogRowsOf(rule, {"IK4ABC", "", "BO", {"I", "EU"}}, contacts);
  const WrittenLog written = WriteCabrillo(rule, head, rows, 8);
  EXPECT_EQ(written.bytes,
            "START-OF-LOG: 3.0\r\n"
            "CALLSIGN: IK4ABC\r\n"
            "CONTEST: ARI-DX\r\n"
            "CATEGORY-OPERATOR: SINGLE-OP\r\n"
            "CATEGORY-MODE: CW\r\n"
            "CATEGORY-POWER: HIGH\r\n"
            "CLAIMED-SCORE: 8\r\n"
            "LOCATION: DX\r\n"
            "NAME: Nicolo Forli\r\n"
            "ADDRESS: Via Roma 1; int. 2\r\n"
            "EMAIL: ik4abc@example.org\r\n"
            "CREATED-BY: Brenvo\r\n"
            "SOAPBOX: Bello\r\n"
            "QSO: 14000 CW 2024-09-07 1400 IK4ABC        599 BO     DL1ABC        599 012\r\n"
            "QSO: 21000 PH 2024-09-07 1400 IK4ABC         59 BO     K1AB           59 1234\r\n"
            "END-OF-LOG:\r\n");
  const ReadContestLog read = ReadLogFile(written.bytes);
  EXPECT_THAT(read.notes, IsEmpty());
  ASSERT_EQ(read.contacts.size(), 2u);
  EXPECT_EQ(read.call, "IK4ABC");
  EXPECT_EQ(read.exchange, "BO");
  EXPECT_EQ(read.contacts[0].contact.call, "DL1ABC");
  EXPECT_EQ(read.contacts[0].contact.serialReceived, 12);
  EXPECT_EQ(read.contacts[1].contact.mode, "SSB");
  EXPECT_EQ(read.contacts[1].contact.band, "15 m");
}

TEST(Cabrillo, WhatCannotBeReadIsToldWithItsLine) {
  const ReadContestLog read = ReadCabrillo(
      "START-OF-LOG: 3.0\nCALLSIGN: IK4ABC\n"
      "QSO: 14000 CW 2024-09-07 1400 IK4ABC 599 BO DL1ABC 599 012 0\n"
      "QSO: 14000 CW 2024-09-07 1400 IK4ABC 599 DL1ABC 599 012\n"
      "QSO: 99999 CW 2024-09-07 1400 IK4ABC 599 BO DL1ABC 599 012\n"
      "QSO: 14000 CW 2024-13-07 1400 IK4ABC 599 BO DL1ABC 599 012\n"
      "X-QSO: 14000 CW 2024-09-07 1400 IK4ABC 599 BO DL1ABC 599 012\n"
      "QSO: 14000\nche cosa\n");
  ASSERT_EQ(read.contacts.size(), 2u);
  EXPECT_EQ(read.contacts[1].contact.call, "DL1ABC");
  std::vector<std::string> notes;
  for (const ReadNote& note : read.notes)
    notes.push_back(fmt::format("{} {}", note.line, note.text));
  EXPECT_THAT(
      notes, ElementsAre("4 i due scambi hanno lunghezze diverse",
                         "5 QSO non letto: la frequenza \"99999\"",
                         "6 QSO non letto: la data \"2024-13-07\"", "7 X-QSO: un QSO che non conta",
                         "8 QSO non letto: mancano dei campi", "9 la riga non ha i due punti",
                         "0 manca END-OF-LOG: forse il file non è intero"));
}

TEST(LogFileName, IsPlainWhateverTheCallHolds) {
  const Rule rule = DeliveredRule("iaru-uhf-microonde");
  EXPECT_EQ(LogFileName(rule, SampleHead(), "23cm"), "IK4ABC-P_1,3GHz.edi");
  LogHead wicked = SampleHead();
  wicked.call = "../../x";
  EXPECT_EQ(LogFileName(rule, wicked, "2 m"), "log.edi");
  EXPECT_EQ(LogFileName(DeliveredRule("grosseto-50"), SampleHead(), "6 m"), "SINGLE_IK4ABC-P.edi");
}

}  // namespace
}  // namespace brenvo::gara
