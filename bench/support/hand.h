// Statements by hand.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace brenvo::bench {

// Runs statements without an answer. Throws std::runtime_error with what SQLite says.
void RunByHand(sqlite3* file, const char* sql);

// One statement, compiled once.
class Hand {
 public:
  // Throws std::runtime_error with what SQLite says.
  Hand(sqlite3* file, std::string_view sql);
  ~Hand();
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  Hand& Text(int at, std::string_view text);
  Hand& Number(int at, std::int64_t number);
  // Begins anew with these texts for the first marks.
  void Ask(std::initializer_list<std::string_view> texts);
  bool Step();
  void Done() { sqlite3_reset(statement_); }
  // Whether there is a row; without one it is done.
  bool Finds(std::initializer_list<std::string_view> texts);
  // Steps through all rows, reading every cell; how many rows there were.
  std::int64_t ReadAll();

  std::int64_t Key(int column = 0) const { return sqlite3_column_int64(statement_, column); }
  std::string Cell(int column) const;
  // Valid until the next step.
  std::string_view View(int column) const;
  std::string_view Name(int column) const { return sqlite3_column_name(statement_, column); }
  // Reads every cell of the row.
  void Touch() const;

 private:
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace brenvo::bench
