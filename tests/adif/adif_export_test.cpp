#include "adif/adif_export.h"

#include "base/text.h"
#include "tests/adif/adif_station.h"
#include "tests/support/adif_samples.h"
#include "tools/mklog/log_maker.h"

namespace brenvo::adif {
namespace {

using testing::HasSubstr;
using testing::Not;

class AdifExportTest : public AdifStation {
 protected:
  // Export, import into an empty log, export again.
  void ExpectRoundTrip(AdifLetters letters = AdifLetters::kUtf8) {
    const std::string first = ExportIn(letters);
    const auto file = Write("again.adi", first);
    EmptyTheLog();
    const ImportCounts counts = Import(file);
    EXPECT_EQ(counts.refused + counts.repeated, 0) << Report;
    const std::string second = ExportIn(letters);
    EXPECT_TRUE(first == second) << first.substr(0, 3000) << "\n-- again --\n"
                                 << second.substr(0, 3000);
  }
  std::string ExportIn(AdifLetters letters) {
    const auto file = directory.Path() / "out.adi";
    ExportContacts(
        session, kAllContacts, file, [](std::int64_t) { return true; }, letters);
    return ReadBytes(file);
  }
  void Insert(std::string_view columns, std::string_view values) {
    session.Db.Execute("insert into Log (" + std::string(columns) + ") values (" +
                       std::string(values) + ")");
  }
};

TEST_F(AdifExportTest, TheFileIsAsItWasReadAndFoundRight) {
  for (const char* sample : {"wsjtx.adi", "hrd.adi", "log4om.adi", "standard.adi"}) {
    Import(Sample(sample));
  }
  ExpectGolden("adif/golden/samples.adi", Export());
}

TEST_F(AdifExportTest, ChosenContactsGoOutInTheOrderTheyWereChosenIn) {
  Insert("DataQso,Call,Banda,Modo", "'01/01/2024 10:00','IK3AAA','  2 m','SSB'");
  Insert("DataQso,Call,Banda,Modo", "'01/01/2024 10:01','IK3BBB','  2 m','SSB'");
  Insert("DataQso,Call,Banda,Modo", "'01/01/2024 10:02','IK3CCC','  2 m','SSB'");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (1,'MINE','x')");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (2,'THEIRS','x')");
  const auto file = directory.Path() / "chosen.adi";
  // 99 is gone.
  const auto counts = ExportKeys(session, {3, 99, 1}, file, [](std::int64_t) { return true; });
  ASSERT_TRUE(counts);
  EXPECT_EQ(counts->written, 2);
  const std::string written = ReadBytes(file);
  ASSERT_THAT(written, HasSubstr("IK3AAA"));
  EXPECT_LT(written.find("IK3CCC"), written.find("IK3AAA"));
  EXPECT_THAT(written, Not(HasSubstr("IK3BBB")));
  // The header declares what these records tell, and no more.
  EXPECT_THAT(written, HasSubstr("MINE"));
  EXPECT_THAT(written, Not(HasSubstr("THEIRS")));
  EXPECT_FALSE(ExportKeys(session, {1}, file, [](std::int64_t) { return false; }));
  EXPECT_EQ(ReadBytes(file), written);
}

TEST_F(AdifExportTest, EverySampleComesBackAsItWasExported) {
  for (const auto& entry : std::filesystem::directory_iterator(Sample(""))) {
    EmptyTheLog();
    Import(entry.path(), {{true, true, true}, false});
    SCOPED_TRACE(entry.path());
    ExpectRoundTrip();
  }
}

TEST_F(AdifExportTest, ContactsOfALogFileComeBackAsTheyWere) {
  const std::int64_t contacts = Thoroughly(600, 100'000);
  const auto file = directory.Path() / "a.adi";
  {
    std::ofstream out(file, std::ios::binary);
    for (std::int64_t i = 0; i < contacts; ++i) out << GeneratedRecord(i);
  }
  EXPECT_EQ(Import(file).fresh, contacts);
  ExpectRoundTrip();
}

TEST_F(AdifExportTest, ContactsOfOneMinuteInSeveralModesComeBackAsTheyWere) {
  std::string text;
  for (const char* mode : {"HELL", "THRB", "OLIVIA", "SSB"}) {
    for (const char* time : {"0234", "", "023430"}) {
      text += Tagged("CALL", "I1ABC") + Tagged("QSO_DATE", "20010203") + Tagged("TIME_ON", time) +
              Tagged("BAND", "20m") + Tagged("MODE", mode) + "<EOR>";
    }
  }
  EXPECT_EQ(Import(Write("a.adi", text)).moved, 6);
  const Texts before = Rows("Select DataQso,Modo from Log order by DataQso");
  ASSERT_EQ(before.size(), 8u);
  ExpectRoundTrip();
  EXPECT_EQ(Rows("Select DataQso,Modo from Log order by DataQso"), before);
}

TEST_F(AdifExportTest, ContactsOfDecadesComeBackAsTheyWere) {
  mklog::MakeLog(directory.Path() / "Brenvo.mdb", Thoroughly(400, 100'000));
  ExpectRoundTrip();
}

TEST_F(AdifExportTest, WhatTheStandardHasNoWordsForComesBackAllTheSame) {
  Insert("DataQso,Call,Banda,Modo,Country,Note",
         "'01/01/2001 10:00:00','IK3ABC','VHF','Piccione','','[E.S.] <eor> riga'");
  Insert("DataQso,Call,Banda,Frequenza,Modo,Locator,Qrb,Prefisso,[Zona CQ]",
         "'01/01/2001','IK3ABD','  2 m',0,'Satellite','JN65AA12BC',0,'IK3  ',99");
  Insert("DataQso,Call,Banda,Modo,Note,QslDaInviare,QslInviata,Propagazione,Potenza,Qra",
         "'01/01/2001 10:02:00','IK3ABE',' 70cm','Satellite','[QO-100/SX/SSB]',true,true,"
         "'Troposcatter',-5,'Łódź Ã¨ \\ fine '");
  Insert("DataQso,Call,Provincia,Qrb", "'01/01/2001 10:03:07','ik3abf','XX',-7");
  Insert("DataQso,Call", "'01/01/2001 10:04:00','IK3ABG'");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (1,'MY_CITY','Łódź')");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (1,'CQZ','77')");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (2,'SOCIO','è 12')");
  const Texts before = Rows("Select * from Log order by DataQso,QsoNr");
  const Texts kept = Rows("Select Campo,Valore from LogAdif order by Campo");
  ExpectRoundTrip();
  const Texts after = Rows("Select * from Log order by DataQso,QsoNr");
  ASSERT_EQ(after.size(), before.size());
  const auto withoutNumber = [](const std::string& row) { return row.substr(row.find('|')); };
  // Null columns come back empty, or 0.
  const auto withoutZeros = [&](std::string row) {
    row = withoutNumber(row);
    for (std::size_t at = 0; (at = row.find("|0", at)) != std::string::npos; ++at) {
      if (at + 2 == row.size() || row[at + 2] == '|') row.erase(at + 1, 1);
    }
    return row;
  };
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(withoutZeros(after[i]), withoutZeros(before[i]));
  }
  EXPECT_EQ(Rows("Select Campo,Valore from LogAdif order by Campo"), kept);
}

TEST_F(AdifExportTest, EveryLetterGoesOutWithItsLengthInBytes) {
  Insert("DataQso,Call,Banda,Modo,Qra,Qth,Note",
         "'01/01/2001 10:00:00','IK3ABC','  2 m','SSB','Łukasz','Київ','5 € … 東京'");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (1,'MY_CITY','Forlì')");
  const std::string file = Export();
  for (const char* field :
       {"<NAME:7>Łukasz ", "<QTH:8>Київ ", "<COMMENT:16>5 € … 東京 ", "<MY_CITY:6>Forlì "}) {
    EXPECT_THAT(file, HasSubstr(field));
  }
  EXPECT_THAT(file, Not(HasSubstr("APP_BRENVO_QRA")));
  ExpectRoundTrip();
  EXPECT_EQ(Rows("Select Qra,Qth,Note from Log"), Texts{"Łukasz|Київ|5 € … 東京"});
}

TEST_F(AdifExportTest, InAsciiLettersLoseTheirMarksForOthersButNotForUs) {
  Insert("DataQso,Call,Banda,Modo,Qra,Qth",
         "'01/01/2001 10:00:00','IK3ABC','  2 m','SSB','Łukasz','Città di Łódź'");
  Insert("DataQso,Call,Banda,Modo,Qra", "'01/01/2001 10:01:00','IK3ABD','  2 m','SSB','Mario'");
  session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (1,'MY_CITY','Forlì')");
  const auto counts = ExportContacts(
      session, kAllContacts, directory.Path() / "out.adi", [](std::int64_t) { return true; },
      AdifLetters::kAscii);
  EXPECT_EQ(counts->changed, 6);
  EXPECT_EQ(counts->changedContacts, 1);
  const std::string file = ReadBytes(directory.Path() / "out.adi");
  for (const char* field : {"<NAME:6>Lukasz ", "<QTH:13>Citta di Lodz ", "<MY_CITY:5>Forli "}) {
    EXPECT_THAT(file, HasSubstr(field));
  }
  EXPECT_TRUE(base::IsAscii(file));
  ExpectRoundTrip(AdifLetters::kAscii);
  EXPECT_EQ(Rows("Select Qra,Qth from Log order by DataQso"),
            (Texts{"Łukasz|Città di Łódź", "Mario|"}));
  EXPECT_EQ(Rows("Select Campo,Valore from LogAdif"), Texts{"MY_CITY|Forlì"});
}

TEST_F(AdifExportTest, EverySampleComesBackFromAsciiToo) {
  for (const auto& entry : std::filesystem::directory_iterator(Sample(""))) {
    EmptyTheLog();
    Import(entry.path());
    SCOPED_TRACE(entry.path());
    const Texts before = Rows("Select * from Log order by DataQso,Call");
    ExpectRoundTrip(AdifLetters::kAscii);
    const auto withoutNumber = [](Texts rows) {
      for (std::string& row : rows) row.erase(0, row.find('|'));
      return rows;
    };
    EXPECT_EQ(withoutNumber(Rows("Select * from Log order by DataQso,Call")),
              withoutNumber(before));
  }
}

// As the file was written by a program that had no place for all letters.
TEST_F(AdifExportTest, AFileOfWindows1252WithItsLettersBesideIsReadWhole) {
  Import(Write("a.adi",
               "<CALL:6>IK3ABC <QSO_DATE:8>20010203 <NAME:6>?ukasz <QTH:5>Forl\xEC "
               "<APP_BRENVO_QRA:11>\\u0141ukasz <EOR>"));
  EXPECT_EQ(Rows("Select Qra,Qth from Log"), Texts{"Łukasz|Forlì"});
  EXPECT_EQ(Rows("Select Campo,Valore from LogAdif"), Texts{});
  EXPECT_THAT(Export(), HasSubstr("<NAME:7>Łukasz <QTH:6>Forlì "));
}

TEST_F(AdifExportTest, AContactWithoutCallOrDateIsLeftOutAndCounted) {
  Insert("DataQso,Call", "'01/01/2001 10:04:00',''");
  Insert("Call", "'IK3ABC'");
  Insert("DataQso,Call", "'01/01/2001 10:04:00','IK3ABD'");
  Insert("DataQso,Call", "'01/01/2001 10:05:00','IK3ŁA'");
  const auto counts = ExportContacts(session, kAllContacts, directory.Path() / "out.adi",
                                     [](std::int64_t) { return true; });
  EXPECT_EQ(counts->written, 1);
  EXPECT_EQ(counts->leftOut, 3);
  EXPECT_THAT(ExportIn(AdifLetters::kAscii), Not(HasSubstr("IK3LA"))) << "that is another call";
}

TEST_F(AdifExportTest, WhatTheOperatorChangedSinceIsTold) {
  Import(Sample("hrd.adi"));
  EXPECT_THAT(Export(), HasSubstr("<TX_PWR:4>12.5 "));
  session.Db.Execute("UPDATE Log SET Potenza=50");
  EXPECT_THAT(Export(), HasSubstr("<TX_PWR:2>50 "));
  EXPECT_THAT(Export(), Not(HasSubstr("12.5")));
}

TEST_F(AdifExportTest, ACardThatCameSinceIsTold) {
  Import(Write("a.adi", Tagged("CALL", "I1A") + Tagged("QSO_DATE", "20010203") +
                            Tagged("QSL_RCVD", "R") + "<EOR>"));
  EXPECT_THAT(Export(), HasSubstr("<QSL_RCVD:1>R "));
  session.Db.Execute("UPDATE Log SET QslRicevuta=true");
  EXPECT_THAT(Export(), HasSubstr("<QSL_RCVD:1>Y "));
}

TEST_F(AdifExportTest, AnExportThatIsStoppedLeavesTheOldFile) {
  Import(Sample("hrd.adi"));
  const auto file = Write("old.adi", "old <EOH>");
  EXPECT_FALSE(ExportContacts(session, kAllContacts, file, [](std::int64_t) { return false; }));
  EXPECT_EQ(ReadBytes(file), "old <EOH>");
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "old.adi.new"));
}

TEST_F(AdifExportTest, AFileOfAnotherKindIsNotReplaced) {
  Import(Sample("hrd.adi"));
  const auto database = session.File("\\Brenvo.mdb");
  const std::string before = ReadBytes(database);
  try {
    ExportContacts(session, kAllContacts, database, [](std::int64_t) { return true; });
    ADD_FAILURE() << "the database is replaced";
  } catch (const std::runtime_error& failure) {
    EXPECT_STREQ(failure.what(), "Brenvo.mdb è un database: scegliere un altro nome");
  }
  EXPECT_TRUE(ReadBytes(database) == before);
}

TEST_F(AdifExportTest, AnEmptyFileIsReplaced) {
  Import(Sample("hrd.adi"));
  const auto file = Write("empty.adi", "");
  ExportContacts(session, kAllContacts, file, [](std::int64_t) { return true; });
  EXPECT_THAT(ReadBytes(file), HasSubstr("<EOR>"));
}

TEST_F(AdifExportTest, OnlyUserFieldsOfTheSelectionAreDeclared) {
  Import(Sample("standard.adi"));
  EXPECT_THAT(Export("SELECT * FROM Log WHERE Call='ON4UN' ORDER BY DataQso"),
              HasSubstr("<USERDEF1:8:M>QRP_ARCI\r\n<EOH>"));
  EXPECT_THAT(Export(), HasSubstr("<USERDEF3:11:M>SWEATERSIZE\r\n<EOH>"));
}

}  // namespace
}  // namespace brenvo::adif
