// A station with the delivered awards and the window.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/log_time.h"
#include "diplomi/diplomi.h"
#include "tests/diplomi/awards.h"
#include "tests/support/station.h"

namespace brenvo::diplomi {

class AwardStation : public StationTest {
 protected:
  AwardStation() {
    machine.SetNow(base::DateTime::Of(2026, 11, 23, 10, 15));
    const std::filesystem::path folder = directory.Path() / kAwardFolder;
    std::filesystem::create_directory(folder);
    for (const auto& entry : std::filesystem::directory_iterator(DeliveredAwards())) {
      std::filesystem::copy_file(entry.path(), folder / entry.path().filename());
    }
    core::StoreLogTime(session, core::LogTime::kUtc);
    Know<Diplomi>("Diplomi");
  }

  std::int64_t Add(const std::string& call, const std::string& band, const std::string& country,
                   const std::string& more = "") {
    const auto when = base::DateTime::Of(2001, 1, 1, 10, 0, 0).Later(60 * ++minutes_);
    session.Contacts.Add(core::ContactTable::kLog, *session.Tables.TbLog,
                         [&](engine::EditableRecordset& row) {
                           row.Set("DataQso", when);
                           row.Set("Call", call);
                           row.Set("Banda", band);
                           row.Set("Modo", "CW");
                           row.Set("Country", country);
                         });
    const auto last = session.Db.OpenSnapshot("select max(QsoNr) from Log");
    const std::int64_t key = last->Field(std::size_t{0}).Integer();
    last->Close();
    if (!more.empty()) {
      session.Db.Execute("update Log set " + more + " where QsoNr=" + std::to_string(key));
    }
    return key;
  }
  void Field(std::int64_t key, const std::string& field, const std::string& value) {
    session.Db.Execute("insert into LogAdif (QsoNr,Campo,Valore) values (" + std::to_string(key) +
                       ",'" + field + "','" + value + "')");
  }
  // "K|Stati Uniti|C||L" of each row that is shown.
  std::vector<std::string> Shown(Diplomi& window) {
    std::vector<std::string> rows;
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      std::string text;
      for (int column = 0; column < window.Tabella.Columns(); ++column) {
        text += (column == 0 ? "" : "|") + window.Tabella.Cell(row, column);
      }
      rows.push_back(text);
    }
    return rows;
  }
  void Choose(Diplomi& window, const std::string& award) {
    const auto& items = window.Diploma.Items();
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (items[i].starts_with(award)) {
        Event([&] { window.Diploma.Pick(static_cast<int>(i)); });
        return;
      }
    }
    ADD_FAILURE() << "no award " << award;
  }
  // The state of a unit, on all bands together: "C"; "?" where it is not shown.
  std::string LetterOf(Diplomi& window, const std::string& unit, int column = 2) {
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      if (window.Tabella.Cell(row, 0) == unit) return window.Tabella.Cell(row, column);
    }
    return "?";
  }
  void ClickUnit(Diplomi& window, const std::string& unit, int column = 2) {
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      if (window.Tabella.Cell(row, 0) == unit) {
        Event([&] { window.Tabella.ClickCell(row, column); });
        return;
      }
    }
    ADD_FAILURE() << "no row " << unit;
  }

  std::int64_t minutes_ = 0;
};

}  // namespace brenvo::diplomi
