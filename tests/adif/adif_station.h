// A station that imports and exports log files.
#pragma once

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "adif/adif_export.h"
#include "adif/adif_import.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"

namespace brenvo::adif {

using Texts = std::vector<std::string>;

class AdifStation : public StationTest {
 protected:
  static std::filesystem::path Sample(std::string_view name) {
    return SourceDir() / "tests/data/adif" / name;
  }
  std::filesystem::path Write(std::string_view name, std::string_view content) {
    const auto file = directory.Path() / name;
    std::ofstream(file, std::ios::binary) << content;
    return file;
  }
  // Without being stopped; the report is in Report.
  ImportCounts Import(const std::filesystem::path& file, const ImportOptions& options = {}) {
    std::ostringstream out;
    const auto counts = ImportContacts(
        session, file, options, [](std::int64_t) { return true; }, out);
    Report = out.str();
    return counts.value_or(ImportCounts());
  }
  ImportPreview Preview(const std::filesystem::path& file) {
    return PreviewImport(session, file, {}, [](std::int64_t) { return true; })
        .value_or(ImportPreview());
  }
  std::string Export(std::string_view select = kAllContacts) {
    const auto file = directory.Path() / "out.adi";
    ExportContacts(session, select, file, [](std::int64_t) { return true; });
    return ReadBytes(file);
  }
  // Stops when it is asked for the `stopAt`-th time whether to go on; true when nothing came of it.
  bool ImportStoppedAt(const std::filesystem::path& file, int stopAt) {
    std::ostringstream out;
    int asked = 0;
    return !ImportContacts(
        session, file, {}, [&](std::int64_t) { return ++asked < stopAt; }, out);
  }
  void EmptyTheLog() {
    session.Db.Execute("DELETE * FROM Log");
    session.Db.Execute("DELETE * FROM LogAdif");
    session.Db.Execute("DELETE * FROM LogQsl");
  }
  std::int64_t Count(std::string_view select) {
    return session.Db.OpenSnapshot(select)->Field(0).Integer();
  }
  static std::string Told(const ImportCounts& counts) {
    return std::to_string(counts.read) + " = " + std::to_string(counts.fresh) + " + " +
           std::to_string(counts.repeated) + " + " + std::to_string(counts.refused);
  }
  Texts Kept(std::string_view call) {
    return Rows(
        "Select Campo,Valore from LogAdif where QsoNr in (select QsoNr from Log where "
        "Call='" +
        std::string(call) + "') order by Campo");
  }

  std::string Report;
};

}  // namespace brenvo::adif
