// A directory of its own for a test, with a fresh Brenvo.mdb in it.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "file/database_file.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/unsynced_files.h"

namespace brenvo {

// A scratch directory with an empty database of the program's schema, which is built once a
// process.
class ScratchDatabase {
 public:
  ScratchDatabase() {
    LeaveFilesUnsynced();
    std::filesystem::copy_file(Fresh(), File());
  }

  const std::filesystem::path& Path() const { return directory_.Path(); }
  std::filesystem::path File() const { return Path() / "Brenvo.mdb"; }
  engine::Database Open() const { return file::OpenDatabaseFile(File()); }
  // Runs SQL as another tool would, with nothing of the engine.
  void Sql(const std::string& sql) const { Run(File(), sql); }

 private:
  static void Run(const std::filesystem::path& file, const std::string& sql) {
    sqlite3* handle = nullptr;
    char* message = nullptr;
    int code = sqlite3_open(file.c_str(), &handle);
    if (code == SQLITE_OK) code = sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, &message);
    const std::string error = message == nullptr ? "sqlite" : message;
    sqlite3_free(message);
    sqlite3_close(handle);
    if (code != SQLITE_OK) throw std::runtime_error(error);
  }

  static std::filesystem::path Fresh() {
    static const ScratchDirectory directory;
    static const std::filesystem::path file = [] {
      const std::filesystem::path made = directory.Path() / "Fresh.mdb";
      std::ifstream schema(SourceDir() / "data/schema.sql");
      std::ostringstream text;
      text << schema.rdbuf();
      Run(made, text.str());
      return made;
    }();
    return file;
  }

  ScratchDirectory directory_;
};

}  // namespace brenvo
