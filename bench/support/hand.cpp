#include "bench/support/hand.h"

#include <stdexcept>

namespace brenvo::bench {

void RunByHand(sqlite3* file, const char* sql) {
  if (sqlite3_exec(file, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return;
  throw std::runtime_error(std::string(sql) + ": " + sqlite3_errmsg(file));
}

Hand::Hand(sqlite3* file, std::string_view sql) {
  if (sqlite3_prepare_v3(file, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                         &statement_, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string(sql) + ": " + sqlite3_errmsg(file));
  }
}

Hand::~Hand() { sqlite3_finalize(statement_); }

Hand& Hand::Text(int at, std::string_view text) {
  sqlite3_bind_text(statement_, at, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
  return *this;
}

Hand& Hand::Number(int at, std::int64_t number) {
  sqlite3_bind_int64(statement_, at, number);
  return *this;
}

void Hand::Ask(std::initializer_list<std::string_view> texts) {
  sqlite3_reset(statement_);
  int at = 0;
  for (const std::string_view text : texts) Text(++at, text);
}

bool Hand::Step() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW || code == SQLITE_DONE) return code == SQLITE_ROW;
  throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
}

bool Hand::Finds(std::initializer_list<std::string_view> texts) {
  Ask(texts);
  const bool found = Step();
  if (!found) Done();
  return found;
}

std::int64_t Hand::ReadAll() {
  std::int64_t rows = 0;
  for (; Step(); ++rows) Touch();
  Done();
  return rows;
}

std::string Hand::Cell(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  return text == nullptr ? std::string() : text;
}

std::string_view Hand::View(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

void Hand::Touch() const {
  volatile const void* last = nullptr;
  for (int i = 0; i < sqlite3_column_count(statement_); ++i) {
    last = sqlite3_column_text(statement_, i);
  }
  static_cast<void>(last);
}

}  // namespace brenvo::bench
