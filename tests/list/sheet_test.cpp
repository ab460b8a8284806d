#include "list/sheet.h"

#include <zlib.h>
#include <fstream>
#include <iterator>

#include "core/log_time.h"
#include "list/conta_qso.h"
#include "tests/list/list_station.h"

namespace brenvo::list {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// A file out of an archive, by the archive's list of contents at its end.
std::string Unpacked(const std::string& archive, std::string_view name) {
  const auto number = [&](std::size_t at, int bytes) {
    std::size_t value = 0;
    for (int i = bytes - 1; i >= 0; --i) {
      value = value << 8 | static_cast<unsigned char>(archive.at(at + static_cast<std::size_t>(i)));
    }
    return value;
  };
  const std::size_t end = archive.rfind("PK\x05\x06");
  if (end == std::string::npos) return "no archive";
  std::size_t at = number(end + 16, 4);
  for (std::size_t left = number(end + 10, 2); left > 0; --left) {
    const std::size_t length = number(at + 28, 2);
    if (archive.substr(at + 46, length) == name) {
      const std::size_t header = number(at + 42, 4), packed = number(at + 20, 4);
      const std::size_t data = header + 30 + number(header + 26, 2) + number(header + 28, 2);
      std::string content(number(at + 24, 4), '\0');
      z_stream stream{};
      inflateInit2(&stream, -MAX_WBITS);
      std::string in = archive.substr(data, packed);
      stream.next_in = reinterpret_cast<Bytef*>(in.data());
      stream.avail_in = static_cast<uInt>(in.size());
      stream.next_out = reinterpret_cast<Bytef*>(content.data());
      stream.avail_out = static_cast<uInt>(content.size());
      inflate(&stream, Z_FINISH);
      inflateEnd(&stream);
      return content;
    }
    at += 46 + length + number(at + 30, 2) + number(at + 32, 2);
  }
  return "no such file";
}

class SheetTest : public ListStation {
 protected:
  SheetTest() {
    Know<ContaQso>("ContaQso");
    session.SaveSetting("Elenco", "Colonne", "DataQso:,Call:,Frequenza:,QslInviata:,Note:");
    Add("IK3AAA", 1, "  2 m", [](auto& row) {
      row.Set("Frequenza", 144.3);
      row.Set("Note", "a, \"b\" <c> à");
    });
    Add("IK3BBB", 2, " 20 m", [](auto& row) { row.Set("QslInviata", true); });
    Add("IK3CCC", 3, " 20 m");
    core::StoreLogTime(session, core::LogTime::kUtc);
  }
  void Pick(const char* name) { machine.Picks().Queue(directory.Path() / name); }
  std::string Written(const char* name) { return ContentOf(directory.Path() / name); }
};

TEST_F(SheetTest, CommaSeparatedTextHoldsTheShownColumnsOfTheMarkedContacts) {
  Elenco& list = Open<Elenco>("Elenco");
  Mark(list.Tabella, 2, 3);
  Pick("due.csv");
  Press(list, "cmCsv");
  EXPECT_EQ(list.Avviso.Text(), "Scritti 2 Qso in due.csv");
  EXPECT_EQ(Written("due.csv"),
            "DataQso,Call,Frequenza,QslInviata,Note\r\n"
            "03/02/2001 10:02,IK3BBB,,Sì,\r\n"
            "03/02/2001 10:01,IK3AAA,144.3,No,\"a, \"\"b\"\" <c> à\"\r\n");
}

TEST_F(SheetTest, WithoutMarksAllThatIsShownGoesOut) {
  Elenco& list = Open<Elenco>("Elenco");
  Filter(list.Tabella, "Call", "ccc");
  Pick("uno");  // the ending is ours
  Press(list, "cmCsv");
  EXPECT_EQ(Written("uno.csv"),
            "DataQso,Call,Frequenza,QslInviata,Note\r\n03/02/2001 10:03,IK3CCC,,No,\r\n");
}

TEST_F(SheetTest, AFilePickedByMistakeIsNotLost) {
  Elenco& list = Open<Elenco>("Elenco");
  const auto size = std::filesystem::file_size(directory.Path() / "Brenvo.mdb");
  Pick("Brenvo.mdb");
  Press(list, "cmCsv");
  EXPECT_GE(std::filesystem::file_size(directory.Path() / "Brenvo.mdb"), size);
  EXPECT_EQ(list.Avviso.Text(), "Scritti 3 Qso in Brenvo.mdb.csv");
}

TEST_F(SheetTest, AStoppedOrImpossibleExportLeavesNoFile) {
  Elenco& list = Open<Elenco>("Elenco");
  machine.StopProgressAt(1);
  for (const auto& [command, name] : {std::pair{"cmCsv", "a.csv"}, {"cmXlsx", "a.xlsx"}}) {
    Pick(name);
    Press(list, command);
    EXPECT_EQ(list.Avviso.Text(), "Esportazione interrotta: il file non è stato scritto");
    EXPECT_FALSE(std::filesystem::exists(directory.Path() / name));
    EXPECT_FALSE(std::filesystem::exists(directory.Path() / (std::string(name) + ".new")));
  }
  machine.StopProgressAt(-1);
  Lines();
  Pick("nessuna/a.csv");
  Press(list, "cmCsv");
  Pick("nessuna/a.xlsx");
  Press(list, "cmXlsx");
  EXPECT_THAT(Lines(),
              ElementsAre("message critical \"Esporta CSV\" \"Il file a.csv non si scrive\"",
                          "message critical \"Esporta foglio di calcolo\" \"Il file a.xlsx non si "
                          "scrive\""));
  machine.Picks().Queue(std::nullopt);
  Press(list, "cmCsv");
}

TEST_F(SheetTest, ASpreadsheetHoldsNumbersAndDatesAsSuch) {
  Elenco& list = Open<Elenco>("Elenco");
  Pick("tre.xlsx");
  Press(list, "cmXlsx");
  EXPECT_EQ(list.Avviso.Text(), "Scritti 3 Qso in tre.xlsx");
  const std::string page = Unpacked(Written("tre.xlsx"), "xl/worksheets/sheet1.xml");
  EXPECT_THAT(page, HasSubstr("<t>Frequenza</t>"));
  EXPECT_THAT(page, HasSubstr("<c r=\"C4\"><v>144.3"));
  // 03/02/2001 10:01 in days since 1900.
  EXPECT_THAT(page, HasSubstr("<v>36925.417361"));
  EXPECT_THAT(page, HasSubstr("a, \"b\" &lt;c&gt; à"));
  EXPECT_THAT(page, HasSubstr("<t>Sì</t>"));
  EXPECT_THAT(Unpacked(Written("tre.xlsx"), "docProps/core.xml"), HasSubstr("Elenco dei contatti"));
  // The same contacts at the same time are the same file.
  const std::string first = page;
  Pick("tre.xlsx");
  Press(list, "cmXlsx");
  EXPECT_EQ(Unpacked(Written("tre.xlsx"), "xl/worksheets/sheet1.xml"), first);
}

TEST_F(SheetTest, WhateverLettersACellHasTheSpreadsheetIsWhole) {
  Exec("delete * from Log");
  Add("IK3XXX", 1, "  2 m", [](auto& row) {
    row.Set("Note", std::string("\x01\x02\xff\xfe|") + std::string(40000, 'x'));
    row.Set("DataQso", base::DateTime::Of(1850, 1, 1));
  });
  Elenco& list = Open<Elenco>("Elenco");
  Pick("x.xlsx");
  Press(list, "cmXlsx");
  const std::string page = Unpacked(Written("x.xlsx"), "xl/worksheets/sheet1.xml");
  EXPECT_THAT(page, HasSubstr("</worksheet>"));
  EXPECT_THAT(page, HasSubstr("01/01/1850"));
  EXPECT_THAT(page, Not(HasSubstr("\x01")));
  EXPECT_THAT(page, Not(HasSubstr("\xff")));
}

TEST_F(SheetTest, ALogFileHoldsTheMarkedContactsInTheirOrder) {
  Elenco& list = Open<Elenco>("Elenco");
  Mark(list.Tabella, 1, 1);
  Mark(list.Tabella, 3, 3);
  Sort(list.Tabella, "Call");
  Pick("due.adi");
  Press(list, "cmAdif");
  EXPECT_EQ(list.Avviso.Text(), "Scritti 2 Qso in due.adi");
  const std::string written = Written("due.adi");
  const std::size_t first = written.find("IK3AAA"), second = written.find("IK3CCC");
  ASSERT_NE(first, std::string::npos);
  ASSERT_NE(second, std::string::npos);
  EXPECT_LT(first, second);
  EXPECT_EQ(written.find("IK3BBB"), std::string::npos);
}

TEST_F(SheetTest, PagesHaveTheTitleTheHeadingsAndARowAContact) {
  Elenco& list = Open<Elenco>("Elenco");
  Mark(list.Tabella, 3, 3);
  Lines();
  Press(list, "cmStampa");
  EXPECT_EQ(list.Avviso.Text(), "Stampati 1 Qso");
  const std::vector<std::string> lines = Lines();
  EXPECT_THAT(lines, Contains(HasSubstr("\"Elenco dei contatti\"")));
  EXPECT_THAT(lines, Contains(HasSubstr("\"1 di 1\"")));
  EXPECT_THAT(lines, Contains(HasSubstr("\"Frequenza\"")));
  EXPECT_THAT(lines, Contains(HasSubstr("\"IK3AAA\"")));
  EXPECT_THAT(lines, Contains(HasSubstr("\"03/02/2001 10:01\"")));
  EXPECT_THAT(lines, Not(Contains(HasSubstr("\"IK3BBB\""))));
  EXPECT_EQ(lines.back(), "print end");
}

TEST_F(SheetTest, ManyContactsFillSeveralPagesAndAStoppedPrintIsNotEnded) {
  FillLog(7);
  Elenco& list = Open<Elenco>("Elenco");
  Lines();
  Press(list, "cmStampa");
  std::vector<std::string> lines = Lines();
  EXPECT_THAT(lines, Contains("print newpage"));
  EXPECT_EQ(lines.back(), "print end");
  machine.StopProgressAt(20);
  Press(list, "cmStampa");
  EXPECT_EQ(list.Avviso.Text(), "Stampa interrotta");
  EXPECT_THAT(Lines(), Not(Contains("print end")));
}

TEST_F(SheetTest, APrinterThatFailsIsTold) {
  Elenco& list = Open<Elenco>("Elenco");
  machine.GetPrinter().FailNext();
  Lines();
  Press(list, "cmStampa");
  EXPECT_THAT(Lines(), Contains(testing::StartsWith("error ")));
}

TEST_F(SheetTest, ContactsAreCountedByAnyColumnAndARowNarrowsTheList) {
  Elenco& list = Open<Elenco>("Elenco");
  ClickRow(list.Tabella, 1);
  InDialogs([&](forms::Window& dialog) {
    auto& count = static_cast<ContaQso&>(dialog);
    EXPECT_EQ(count.Colonna.Text(), "DataQso");
    EXPECT_THAT(Column(count.Tabella, "Valore"), ElementsAre("03/02/2001"));
    Event([&] { count.Colonna.SetText("Banda"); });
    EXPECT_THAT(Column(count.Tabella, "Valore"), ElementsAre(" 20 m", "  2 m"));
    EXPECT_THAT(Column(count.Tabella, "Qso"), ElementsAre("2", "1"));
    EXPECT_THAT(Column(count.Tabella, "%"), ElementsAre("66.7", "33.3"));
    EXPECT_EQ(count.Avviso.Text(), "3 Qso, 2 valori");
    Event([&] { count.Colonna.SetText("Note"); });
    EXPECT_THAT(Column(count.Tabella, "Valore"), ElementsAre("(vuoto)", "a, \"b\" <c> à"));
    Event([&] { count.Tabella.DoubleClickCell(1, 0); });
  });
  Press(list, "cmConta");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3CCC", "IK3BBB"));
  Press(list, "cmTogliFiltri");
  // A column that was not shown comes with its filter.
  InDialogs([&](forms::Window& dialog) {
    Event([&] { static_cast<ContaQso&>(dialog).Colonna.SetText("Banda"); });
    Event([&] { static_cast<ContaQso&>(dialog).Tabella.DoubleClickCell(2, 0); });
  });
  Press(list, "cmConta");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
  EXPECT_EQ(list.Tabella.Cell(0, 5), "Banda");
  Press(list, "cmTogliFiltri");
  InDialogs([&](forms::Window& dialog) {
    Event([&] { static_cast<ContaQso&>(dialog).Tabella.DoubleClickCell(1, 0); });
  });
  Press(list, "cmConta");
  EXPECT_EQ(list.Tabella.Rows(), 4);
}

}  // namespace
}  // namespace brenvo::list
