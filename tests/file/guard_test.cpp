// What the engine refuses, and that a refused statement harms nothing.
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

class GuardTest : public ::testing::Test {
 protected:
  GuardTest() { AddContact(db_, 1, "I1AAA"); }
  ~GuardTest() override {
    EXPECT_EQ(Select(db_, "select count(*) from Log"), std::vector<std::string>{"1"});
  }

  int Open(const std::string& statement) {
    return ErrorOf([&] { db_.OpenSnapshot(statement); });
  }
  int Execute(const std::string& statement) {
    return ErrorOf([&] { db_.Execute(statement); });
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(GuardTest, WhatIsNoStatementIsASyntaxError) {
  for (const char* statement : {"",
                                " ",
                                ";",
                                "select",
                                "select *",
                                "select * from",
                                "select from Log",
                                "select * from Log where",
                                "select * from Log order by",
                                "select * from Log where Call=",
                                "select * from Log where Call='O'HARA'",
                                "select * from Log where Call='aperto",
                                "select * from Log where (Call='a'",
                                "select * from Log where Call='a')",
                                "select * from [Log",
                                "select * from []",
                                "select * from Log where Call=='a'",
                                "select * from Log where Call 'a'",
                                "select * from Log where 12abc=1",
                                "select * from Log where 1.2.3=1",
                                "select * from Log where Call like",
                                "select * from Log where Call in ()",
                                "select * from Log where Call in (select * from",
                                "select * from Log where Call between 'a'",
                                "select * from Log where Call is 'a'",
                                "select * from Log where Call not 'a'",
                                "select * from Log where @x=1",
                                "select * from Log where Call=?1",
                                "select * from Log where Call=:a",
                                "select * from Log where Call={d}",
                                "select * from Log group Call",
                                "select * from Log where Log.*=1",
                                "select Call, from Log",
                                "select * from Log,",
                                "select * from Log limit 1",
                                "select * from Log union select * from Log",
                                "select * from Log /* nota */",
                                "select * from Log where Call='a' collate binary",
                                "select max(max(QsoNr)) from Log",
                                "select * from Log where max(QsoNr)=1",
                                "select Left(Call) from Log",
                                "select Left(Call,1,2) from Log",
                                "select Call from Log where QsoNr=(select * from Log)",
                                "where  >=FrequenzaI",
                                "select Banda from UserRTX where  >=FrequenzaI and  <=FrequenzaF",
                                "selectt * from Log",
                                "explain select * from Log",
                                "with x as (select 1) select * from x"}) {
    EXPECT_EQ(Open(statement), 3075) << statement;
  }
}

TEST_F(GuardTest, AnUnfinishedWriteIsASyntaxError) {
  for (const char* statement : {"insert",
                                "insert into",
                                "insert into Modi",
                                "insert into Modi values",
                                "insert into Modi values (",
                                "insert into Modi values (1,'x'",
                                "update",
                                "update Log",
                                "update Log set",
                                "update Log set Call",
                                "update Log set Call=",
                                "update Log set Call='a',",
                                "delete",
                                "delete Log",
                                "delete * Log",
                                "delete from",
                                "delete from Log where",
                                "insert or replace into Modi values (1,'x')",
                                "insert into Modi default values",
                                "update Log set Call='a' from Modi",
                                "delete from Log limit 1",
                                "delete from Log returning *"}) {
    EXPECT_EQ(Execute(statement), 3075) << statement;
  }
}

TEST_F(GuardTest, TheFirstStatementIsTheOnlyOne) {
  EXPECT_EQ(Open("select * from Log; delete from Log"), 3142);
  EXPECT_EQ(Open("select * from Log where Call=''; delete * from Log; --'"), 3142);
  EXPECT_EQ(Execute("delete from Modi; delete from Log"), 3142);
  EXPECT_EQ(Open("select * from Log;;"), 3142);
  EXPECT_EQ(Open("select * from Log;"), 0);
}

TEST_F(GuardTest, ReadingAcceptsNothingThatWrites) {
  for (const char* statement :
       {"delete from Log", "update Log set Call='x'", "insert into Modi values (1,'x')"}) {
    EXPECT_EQ(Open(statement), 3219) << statement;
    EXPECT_EQ(ErrorOf([&] { db_.OpenDynaset(statement); }), 3219) << statement;
  }
}

TEST_F(GuardTest, ASelectIsNotExecuted) { EXPECT_EQ(Execute("select * from Log"), 3065); }

TEST_F(GuardTest, NothingButTheFourStatementsIsKnown) {
  for (const char* statement :
       {"drop table Log", "create table x (a)", "alter table Log rename to x", "attach 'x' as y",
        "detach main", "pragma journal_mode=off", "vacuum", "vacuum into 'x'", "begin", "commit",
        "rollback", "savepoint a", "replace into Modi values (1,'x')", "reindex", "analyze",
        "create trigger t after insert on Log begin delete from Log; end", "truncate table Log"}) {
    EXPECT_EQ(Execute(statement), 3075) << statement;
    EXPECT_EQ(Open(statement), 3075) << statement;
  }
}

TEST_F(GuardTest, TheFilesOwnTablesDoNotExist) {
  for (const char* table :
       {"sqlite_schema", "sqlite_master", "sqlite_sequence", "sqlite_temp_master",
        "pragma_table_info", "dbstat", "sqlite_stmt", "main.Log"}) {
    EXPECT_NE(Open(std::string("select * from ") + table), 0) << table;
    EXPECT_NE(Execute(std::string("delete from ") + table), 0) << table;
  }
}

TEST_F(GuardTest, OnlyTheDialectsFunctionsExist) {
  for (const char* call :
       {"load_extension('x')", "readfile('x')", "randomblob(9)", "zeroblob(9)", "printf('%s','x')",
        "dialect_store(1,'x')", "sqlite_version()", "fts3_tokenizer('x')", "substr('a',1,1)"}) {
    EXPECT_EQ(Open(std::string("select ") + call + " from Log"), 3085) << call;
  }
}

TEST_F(GuardTest, NamesThatAreNoColumnsOrTablesAreTold) {
  EXPECT_EQ(Open("SELECT * FROM Log  ORDER BY Qsl"), 3061);
  EXPECT_EQ(Open("select Nome from Log"), 3061);
  EXPECT_EQ(Open("select * from Log where Nome='x'"), 3061);
  EXPECT_EQ(Open("select rowid from Log"), 3061);
  EXPECT_EQ(Open("select Modi.Call from Log"), 3061);
  EXPECT_EQ(Open("select x.* from Log"), 3061);
  EXPECT_EQ(Open("select * from Registro"), 3078);
  EXPECT_EQ(Execute("delete from Registro"), 3078);
  EXPECT_EQ(Execute("update Log set Nome='x'"), 3061);
  EXPECT_EQ(Execute("insert into Modi (Nome) values ('x')"), 3061);
  EXPECT_EQ(Execute("insert into Modi values (1)"), 3346);
  EXPECT_EQ(Execute("insert into SNote select * from Log"), 3346);
  EXPECT_EQ(Open("select * from Log where Call like '['"), 93);
}

TEST_F(GuardTest, DescriptionsAreToldInItalianWithoutTheNumber) {
  try {
    db_.OpenSnapshot("select * from Log where Call='O'HARA'");
    FAIL();
  } catch (const engine::DatabaseError& error) {
    EXPECT_EQ(error.Description, "Errore di sintassi presso 'HARA''.");
  }
}

TEST_F(GuardTest, NestingWithoutEndIsASyntaxErrorAndNoMore) {
  for (const auto& [open, close] : {std::pair{"(", ")"},
                                    {"not (", ")"},
                                    {"Left(", ",1)"},
                                    {"-(", ")"},
                                    {"1 in (", ")"},
                                    {"exists (select * from Log where ", ")"}}) {
    std::string deep;
    for (int i = 0; i < 5000; ++i) deep += open;
    deep += "1";
    for (int i = 0; i < 5000; ++i) deep += close;
    EXPECT_EQ(Open("select * from Log where " + deep), 3075) << open;
    std::string unclosed;
    for (int i = 0; i < 9000; ++i) unclosed += open;
    EXPECT_EQ(Open("select * from Log where " + unclosed), 3075) << open;
  }
  for (const char* prefix : {"not ", "- ", "-"}) {
    std::string deep;
    for (int i = 0; i < 10000; ++i) deep += prefix;
    EXPECT_EQ(Open("select * from Log where " + deep + "1"), 3075) << prefix;
  }
  for (const char* link : {" and 1", " or 1", "+1", "*1", " & 1", "=1", " is null"}) {
    std::string chain = "1";
    for (int i = 0; i < 9000; ++i) chain += link;
    EXPECT_EQ(Open("select * from Log where " + chain), 3075) << link;
  }
}

TEST_F(GuardTest, AReasonableChainIsNoneTooLong) {
  std::string chain = "Call='x'";
  for (int i = 0; i < 200; ++i) chain += " or Call='x'";
  EXPECT_EQ(Open("select * from Log where " + chain), 0);
  std::string list = "'x'";
  for (int i = 0; i < 2000; ++i) list += ",'x'";
  EXPECT_EQ(Open("select * from Log where Call in (" + list + ")"), 0);
  std::string brackets(20, '(');
  EXPECT_EQ(Open("select * from Log where " + brackets + "1" + std::string(20, ')') + "=1"), 0);
}

TEST_F(GuardTest, AStatementWithoutEndIsRefused) {
  EXPECT_EQ(Open("select * from Log where Call='" + std::string(65536, 'x') + "'"), 3075);
}

TEST_F(GuardTest, ABlankTextOfAnySizeIsNotMade) {
  EXPECT_EQ(Open("select Space(1000000000) from Log"), 3421);
  EXPECT_EQ(Open("select Space(-1) from Log"), 3421);
}

TEST_F(GuardTest, BytesThatAreNoTextDoNoHarm) {
  EXPECT_EQ(Open("select * from Log where Call='\xFF\xC3'"), 0);
  EXPECT_EQ(Open(std::string("select * from Log where Call='a\0b'", 34)), 0);
  EXPECT_EQ(Open(std::string("select * from\0 Log", 18)), 3075);
  EXPECT_EQ(Open("select * from Log where \xC3=1"), 3061);
  EXPECT_EQ(Open(std::string("select * from Log as [a\0b]", 26)), 3075);
}

TEST_F(GuardTest, AnythingInAnOperatorsFieldStaysInItsLiteral) {
  for (const char* typed : {"*", "%", "_", "x\\", "--", "/*", "{", "?", "$1", "\"", "`", "\n"}) {
    EXPECT_EQ(Open(std::string("SELECT * FROM Log WHERE Note LIKE '*") + typed + "*'"), 0) << typed;
    EXPECT_EQ(Open(std::string("SELECT * FROM Log WHERE Call='") + typed + "'"), 0) << typed;
  }
}

TEST_F(GuardTest, TriggersAndViewsOfAForeignFileAreNotRun) {
  db_.Close();
  scratch_.Sql(
      "CREATE TRIGGER t AFTER INSERT ON Modi BEGIN DELETE FROM Log; END;"
      "CREATE VIEW Vista AS SELECT * FROM Log;");
  db_ = scratch_.Open();
  EXPECT_EQ(Execute("insert into Modi values (1,'x')"), 0);
  EXPECT_EQ(Open("select * from Vista"), 3078);
}

}  // namespace
}  // namespace brenvo::file
