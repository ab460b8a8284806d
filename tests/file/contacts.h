// Contacts for the engine's tests.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/error_of.h"
#include "tests/support/scratch_database.h"

namespace brenvo::file {

using Cells = std::initializer_list<std::pair<const char*, engine::Value>>;

// Adds one row, and returns its bookmark.
inline engine::Bookmark Add(engine::Database& database, const char* table, Cells cells) {
  const auto rows = database.OpenTable(table);
  rows->AddNew();
  for (const auto& [column, value] : cells) rows->Set(column, value);
  rows->Update();
  return rows->LastModified();
}

// A contact at a minute of 3 February 2001.
inline engine::Bookmark AddContact(engine::Database& database, int minute, const char* call,
                                   const char* band = "  2 m", const char* locator = "JN65FR",
                                   bool confirmed = false) {
  return Add(database, "Log",
             {{"DataQso", base::DateTime::Of(2001, 2, 3, minute / 60, minute % 60)},
              {"Call", call},
              {"Banda", band},
              {"Locator", locator},
              {"QslRicevuta", confirmed}});
}

// All values of one column, as texts.
inline std::vector<std::string> Texts(engine::Recordset& rows, std::string_view column) {
  std::vector<std::string> texts;
  for (; !rows.EOF_(); rows.MoveNext()) texts.push_back(rows.Field(column).Text());
  return texts;
}

// The first column of a SELECT, as texts.
inline std::vector<std::string> Select(engine::Database& database, std::string_view select) {
  const auto rows = database.OpenSnapshot(select);
  std::vector<std::string> texts;
  for (; !rows->EOF_(); rows->MoveNext()) texts.push_back(rows->Field(0).Text());
  return texts;
}

}  // namespace brenvo::file
