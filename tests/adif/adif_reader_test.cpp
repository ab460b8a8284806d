#include "adif/adif_reader.h"

#include <gmock/gmock.h>

#include "adif/adif_writer.h"
#include "tests/adif/reader_support.h"

namespace brenvo::adif {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

std::vector<std::string> AllTold(const std::string& text) {
  std::vector<std::string> told;
  for (const AdifRecord& record : ReadAll(text)) told.push_back(Told(record));
  return told;
}

using Texts = std::vector<std::string>;

TEST(AdifReaderTest, AFileWithoutAHeaderBeginsWithItsFirstRecord) {
  EXPECT_EQ(AllTold("<CALL:5>I3ABC<BAND:2>2m<EOR>"), Texts{"CALL=I3ABC|BAND=2m"});
}

TEST(AdifReaderTest, AHeaderIsNoRecord) {
  AdifReader reader(SourceOf("words <ADIF_VER:5>3.1.4 more\n<eoh>\n<call:5>I3ABC<eor>"));
  AdifRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(Told(record), "CALL=I3ABC");
  EXPECT_EQ(reader.Header(), (std::vector<AdifField>{{"ADIF_VER", "3.1.4"}}));
  EXPECT_FALSE(reader.Next(record));
}

TEST(AdifReaderTest, TagsAreReadInAnyCaseAndWithATypeBehindTheLength) {
  EXPECT_EQ(AllTold("<Call:5>I3ABC <qso_DATE:8:D>20010203 <Eor>"),
            Texts{"CALL=I3ABC|QSO_DATE=20010203"});
}

TEST(AdifReaderTest, ATextThatHoldsTagsIsAText) {
  EXPECT_EQ(AllTold("<COMMENT:15>a <eor> b <x:5><CALL:5>I3ABC<EOR>"),
            Texts{"COMMENT=a <eor> b <x:5>|CALL=I3ABC"});
}

TEST(AdifReaderTest, LengthsCountBytesOrCharactersOfUtf8) {
  EXPECT_EQ(AllTold("<NAME:7>Nicol\xC3\xB2<CALL:5>I3ABC<EOR>"),
            Texts{"NAME=Nicol\xC3\xB2|CALL=I3ABC"});
  EXPECT_EQ(AllTold("<NAME:6>Nicol\xC3\xB2<CALL:5>I3ABC<EOR>"),
            Texts{"NAME=Nicol\xC3\xB2|CALL=I3ABC"});
  EXPECT_EQ(AllTold("<QTH:5>\xC3\xA8 \xC3\xA0 x <CALL:5>I3ABC<EOR>"),
            Texts{"QTH=\xC3\xA8 \xC3\xA0 x|CALL=I3ABC"});
}

TEST(AdifReaderTest, LineEndsCountAsTwoCharactersOrAsOne) {
  EXPECT_EQ(AllTold("<NOTES:4>a\r\nb<CALL:5>I3ABC<EOR>"), Texts{"NOTES=a\r\nb|CALL=I3ABC"});
  EXPECT_EQ(AllTold("<NOTES:3>a\r\nb<CALL:5>I3ABC<EOR>"), Texts{"NOTES=a\r\nb|CALL=I3ABC"});
  EXPECT_EQ(AllTold("<NOTES:3>a\nb<CALL:5>I3ABC<EOR>"), Texts{"NOTES=a\nb|CALL=I3ABC"});
  EXPECT_EQ(AllTold("<NOTES:4>a\nb<CALL:5>I3ABC<EOR>"), Texts{"NOTES=a\nb|CALL=I3ABC"});
  EXPECT_EQ(AllTold("<NOTES:7>\xC3\xA0\nb\nc\n<CALL:5>I3ABC<EOR>"),
            Texts{"NOTES=\xC3\xA0\nb\nc|CALL=I3ABC"});
}

TEST(AdifReaderTest, BytesThatAreNoUtf8AreWindows1252) {
  EXPECT_EQ(AllTold("<NAME:6>Nicol\xF2<EOR>"), Texts{"NAME=Nicol\xC3\xB2"});
}

TEST(AdifReaderTest, WordsBehindAValueCountForNothing) {
  EXPECT_EQ(AllTold("<STATE:2>CT // Connecticut\n<CALL:5>I3ABC\n<EOR>"),
            Texts{"STATE=CT|CALL=I3ABC"});
}

TEST(AdifReaderTest, TagsWithoutALengthCountForNothing) {
  EXPECT_EQ(AllTold("<CALL:5>I3ABC<eor>\n<APP_LoTW_EOF>\n"), Texts{"CALL=I3ABC"});
}

TEST(AdifReaderTest, ANameIsOnlyReadWhereAnyLengthHasRoomBehindIt) {
  const std::string longest(112, 'X');
  EXPECT_EQ(AllTold("<" + longest + ":6>I3ABC1<EOR>"), Texts{longest + "=I3ABC1"});
  EXPECT_EQ(ReadAll(AdifLine({{longest, std::string(100000, 'a')}})).front().fields.size(), 1u);
  EXPECT_EQ(AllTold("<CALL:5>I3ABC <" + longest + "X:1>1<EOR>"), Texts{"CALL=I3ABC"});
}

TEST(AdifReaderTest, ANameIsOnlyReadWhereItCanBeWritten) {
  const std::string written(56, '\xE8');  // Windows-1252: twice as long in UTF-8
  const auto records = ReadAll("<" + written + ":2>ab<CALL:5>I3ABC<EOR>");
  ASSERT_THAT(records.front().fields, SizeIs(2));
  EXPECT_EQ(Told(ReadAll(AdifLine(records.front().fields)).front()), Told(records.front()));
  EXPECT_EQ(AllTold("<CALL:5>I3ABC <" + written + "\xE8:2>ab<EOR>"), Texts{"CALL=I3ABC"});
}

TEST(AdifReaderTest, AnEmptyRecordIsNone) {
  EXPECT_EQ(AllTold("<EOH><EOR><EOR><CALL:5>I3ABC<EOR><EOR>"), Texts{"CALL=I3ABC"});
}

TEST(AdifReaderTest, AHeaderEndsWhereItSaysSoWhateverItsLengthsSay) {
  const std::string contacts = "<CALL:5>I3AAA<EOR><CALL:5>I3BBB<EOR>";
  for (const char* header :
       {"<PROGRAMVERSION:5>Version 5.668 <EOH>", "<ADIF_VER:4>3.0.4<EOH>", "<ADIF_VER:9>3.0.4<EOH>",
        "<PROGRAMID:200>Log <EOH>", "<PROGRAMID:9999999>Log <EOH>", "Log <PROGRAMID:3>Log\r\n<EOH>",
        "<APP_X:2:S>long text of theirs\n<eoh >", "<EOH>"}) {
    EXPECT_EQ(AllTold(header + contacts), (Texts{"CALL=I3AAA", "CALL=I3BBB"})) << header;
    EXPECT_EQ(AllTold(contacts + header + contacts),
              (Texts{"CALL=I3AAA", "CALL=I3BBB", "CALL=I3AAA", "CALL=I3BBB"}))
        << "between two files put together: " << header;
  }
}

TEST(AdifReaderTest, AWordOfTheFirstRecordThatLooksLikeTheEndOfAHeaderIsNone) {
  EXPECT_EQ(AllTold("<CALL:5>I3AAA<COMMENT:10>my <eoh> x<EOR><CALL:5>I3BBB<EOR>"),
            (Texts{"CALL=I3AAA|COMMENT=my <eoh> x", "CALL=I3BBB"}));
  EXPECT_EQ(AllTold("<CALL:5>I3AAA<COMMENT:7>my <eoh> x<EOR><CALL:5>I3BBB<EOR>"),
            (Texts{"CALL=I3AAA|COMMENT=my", "CALL=I3BBB"}));
}

// What was told and read of each field that was repaired, "NAME 4:5".
std::string Repaired(const std::string& text) {
  std::string repaired;
  for (const AdifRecord& record : ReadAll(text)) {
    for (const AdifRepair& repair : record.repairs) {
      repaired += (repaired.empty() ? "" : ", ") + record.fields[repair.field].name + " " +
                  std::to_string(repair.told) + ":" + std::to_string(repair.read);
    }
  }
  return repaired;
}

TEST(AdifReaderTest, AWrongLengthIsRepairedAtTheNextTag) {
  const struct {
    const char *field, *read, *repaired;
  } kCases[] = {
      {"<ADDRESS:34>Via Giuseppe Garibaldi 12 int. 4 Este", "Via Giuseppe Garibaldi 12 int. 4 Este",
       "ADDRESS 34:37"},
      {"<COMMENT:9> 54", "54", "COMMENT 9:3"},
      {"<COMMENT:9> 54\r\n", "54", "COMMENT 9:3"},
      {"<PROP_MODE:2>SAT", "SAT", "PROP_MODE 2:3"},
      {"<NAME:0>Mario ", "Mario", "NAME 0:5"},
      {"<NAME:8>", "", "NAME 8:0"},
      {"<NAME:6>Mario", "Mario", "NAME 6:5"},
      {"<NAME:13>Mario", "Mario", "NAME 13:5"},
      {"<NAME:6>Mario Rossi", "Mario Rossi", "NAME 6:11"},
      {"<NAME:2>a < b <3 c>\n", "a < b <3 c>", "NAME 2:11"},
      {"<NAME:99999>Mario", "Mario", "NAME 99999:5"},
      {"<NAME:123456789012>Mario", "Mario", "NAME 123456789012:5"},
      {"<NAME:4>Nicol\xC3\xB2", "Nicol\xC3\xB2", "NAME 4:7"},
      {"<NAME:4>Nicol\xF2", "Nicol\xC3\xB2", "NAME 4:6"},
      {"<NAME:4>I \xF0\x9F\x93\xBB", "I \xF0\x9F\x93\xBB", "NAME 4:6"},
  };
  for (const auto& [field, read, repaired] : kCases) {
    for (const char* next : {"<QTH:4>Este<EOR>", "<eor>"}) {
      const std::string text =
          "<EOH><CALL:5>I3AAA" + std::string(field) + next + "\n<CALL:5>I3BBB<EOR>";
      const auto records = ReadAll(text);
      ASSERT_EQ(records.size(), 2u) << text;
      EXPECT_EQ(records[0].fault, "") << text;
      EXPECT_EQ(records[0].fields.at(1).value, read) << text;
      EXPECT_EQ(records[0].fields.size(), *next == '<' && next[1] == 'Q' ? 3u : 2u) << text;
      EXPECT_EQ(Told(records[1]), "CALL=I3BBB") << text;
      EXPECT_EQ(Repaired(text), repaired) << text;
    }
  }
}

TEST(AdifReaderTest, AWrongLengthInTheLastRecordDoesNotSwallowItsEnd) {
  for (const int length : {4, 6, 9, 10, 11, 12, 50}) {
    const std::string text = "<CALL:5>I3AAA<NAME:" + std::to_string(length) + ">Mario<EOR>\n";
    EXPECT_EQ(AllTold(text), Texts{"CALL=I3AAA|NAME=Mario"}) << text;
  }
}

TEST(AdifReaderTest, AWrongLengthThatHappensToLeadIntoTheNextRecordDoesNotSwallowIt) {
  const std::string call = "<CALL:5>I3AAA<BAND:2>2m", next = "<CALL:5>I3BBB<BAND:2>2m<EOR>";
  for (const int length : {4, 5, 6, 10, 11, 24}) {
    const std::string text =
        call + "<NAME:" + std::to_string(length) + ">Mario<EOR>\n" + next + next;
    EXPECT_EQ(AllTold(text),
              (Texts{"CALL=I3AAA|BAND=2m|NAME=Mario", "CALL=I3BBB|BAND=2m", "CALL=I3BBB|BAND=2m"}))
        << text;
  }
}

TEST(AdifReaderTest, SoundLengthsAreNotRepaired) {
  for (const char* text :
       {"<COMMENT:15>a <eor> b <x:5><CALL:5>I3ABC<EOR>", "<NAME:6>Nicol\xC3\xB2<CALL:5>I3ABC<EOR>",
        "<NOTES:7>\xC3\xA0\nb\nc\n<CALL:5>I3ABC<EOR>", "<COMMENT:15>\xC3\xA8 <eor> b <x:5><EOR>",
        "<STATE:2>CT // Connecticut\n<CALL:5>I3ABC\n<EOR>"}) {
    EXPECT_EQ(Repaired(text), "") << text;
  }
}

TEST(AdifReaderTest, ALengthBehindWhichNoTagFollowsIsAFault) {
  const std::string text(300'000, 'x');
  EXPECT_EQ(AllTold("<CALL:4>" + text + text + "<EOR><CALL:5>I3BBB<EOR>"),
            (Texts{"!la lunghezza del campo CALL non corrisponde al testo", "CALL=I3BBB"}));
  EXPECT_EQ(AllTold("<CALL:999999>" + text + text + "<EOR><CALL:5>I3BBB<EOR>"),
            (Texts{"!la lunghezza del campo CALL non è possibile", "CALL=I3BBB"}));
  EXPECT_EQ(AllTold("<CALL:5>I3AAA<QSO_DATE:8>2001"),
            Texts{"CALL=I3AAA!il campo QSO_DATE va oltre la fine del file"});
}

TEST(AdifReaderTest, AFileThatEndsWithinARecordSaysSo) {
  AdifReader reader(SourceOf("<CALL:5>I3AAA<EOR><CALL:5>I3BBB<QSO_DA"));
  AdifRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_FALSE(reader.EndsEarly());
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(Told(record), "CALL=I3BBB!il file finisce prima della fine del record");
  EXPECT_TRUE(reader.EndsEarly());
  EXPECT_FALSE(reader.Next(record));
}

TEST(AdifReaderTest, RecordsTellTheirLineAndTheirBytes) {
  AdifReader reader(SourceOf("head\n<EOH>\n\n<CALL:5>I3AAA\n<EOR>\n<CALL:5>I3BBB<EOR>\n"));
  AdifRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.line, 4);
  EXPECT_EQ(reader.RecordBytes(), "<CALL:5>I3AAA\n<EOR>");
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.line, 6);
  EXPECT_EQ(reader.RecordBytes(), "<CALL:5>I3BBB<EOR>");
}

TEST(AdifReaderTest, HoweverTheBytesComeTheRecordsAreTheSame) {
  std::string text = "head<EOH>";
  for (int i = 0; i < 50; ++i) {
    text += "<CALL:5>I3ABC<NAME:6>Nicol\xC3\xB2<COMMENT:9>x <eor> y <EOR>\n";
  }
  const auto whole = ReadAll(text);
  ASSERT_THAT(whole, SizeIs(50));
  for (const std::size_t piece : {1, 2, 7, 64}) {
    const auto pieces = ReadAll(text, piece);
    ASSERT_EQ(pieces.size(), whole.size()) << piece;
    for (std::size_t i = 0; i < whole.size(); ++i) {
      EXPECT_EQ(Told(pieces[i]), Told(whole[i]));
      EXPECT_EQ(pieces[i].line, whole[i].line);
    }
  }
}

TEST(AdifReaderTest, ARecordWithoutAnEndIsPassedOverInBoundedMemory) {
  // Fields without end, then one that is whole.
  std::int64_t left = 300'000;
  AdifReader reader([&](char* buffer, std::size_t size) {
    const std::string piece = left > 0 ? "<X:4>abcd" : left == 0 ? "<EOR><CALL:5>I3ABC<EOR>" : "";
    --left;
    EXPECT_LE(piece.size(), size);
    return piece.copy(buffer, size);
  });
  AdifRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.fault, "il record non finisce mai");
  EXPECT_LE(reader.RecordBytes().size(), AdifReader::kLongestRecord);
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(Told(record), "CALL=I3ABC");
}

TEST(AdifReaderTest, GarbageHoldsNoRecord) {
  std::int64_t left = 100;
  AdifReader reader([&](char* buffer, std::size_t size) {
    if (left-- <= 0) return std::size_t{0};
    for (std::size_t i = 0; i < size; ++i)
      buffer[i] = static_cast<char>((i * 7919 + i / 13) % 60 + 1);
    return size;
  });
  AdifRecord record;
  EXPECT_FALSE(reader.Next(record));
  EXPECT_GT(reader.BytesRead(), 20'000'000);
}

struct Other {
  std::string begin;
  std::string what;
};

TEST(AdifReaderTest, AnotherKindOfFileIsCalledByItsName) {
  const Other kOthers[] = {{"", "un file vuoto"},
                           {"  \r\n", "un file vuoto"},
                           {"<?xml version=\"1.0\"?><ADX>", "un file XML (ADX)"},
                           {"START-OF-LOG: 3.0\n", "un log Cabrillo"},
                           {"[REG1TEST;1]\n", "un log REG1TEST"},
                           {"PK\x03\x04 <CALL:5>", "un archivio ZIP"},
                           {"\xFF\xFE<\0C", "un testo UTF-16"},
                           {"<html><body>", "una pagina HTML"},
                           {"caro diario", "un file di un altro tipo"},
                           {"a < b <x:3>abc", "un file di un altro tipo"}};
  for (const Other& other : kOthers) EXPECT_EQ(OtherThanAdif(other.begin), other.what);
  EXPECT_EQ(OtherThanAdif("words <eoh>"), "");
  EXPECT_EQ(OtherThanAdif("\xEF\xBB\xBF<Call:5>I3ABC<eor>"), "");
}

}  // namespace
}  // namespace brenvo::adif
