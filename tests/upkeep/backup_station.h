// A station of which copies are made.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "tests/support/station.h"
#include "upkeep/backup.h"

namespace brenvo::upkeep {

class BackupStation : public StationTest {
 protected:
  std::filesystem::path BackupDirectory() const { return directory.Path() / "Backup"; }
  void Store(std::string_view call) {
    session.Db.Execute("insert into Log (DataQso, Call, Banda) values ('2001-02-03 04:05:00', '" +
                       std::string(call) + "', '  2 m')");
  }
  // Long enough for a small database.
  void LetTheCopyBeMade() { machine.Advance(20000); }
  void Damage(const std::filesystem::path& file) {
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    bytes.seekp(static_cast<std::streamoff>(std::filesystem::file_size(file) / 2));
    for (int i = 0; i < 4096 * 10; ++i) bytes.put('\x5A');
  }
};

}  // namespace brenvo::upkeep
