#include "adif_export.h"

#include <fmt/format.h>

#include <fstream>
#include <set>
#include <stdexcept>

#include "adif/adif_names.h"
#include "adif/adif_reader.h"
#include "base/plain_letters.h"
#include "contact_to_fields.h"
#include "core/log_contact.h"
#include "kept_fields.h"
#include "record_origin.h"

namespace brenvo::adif {
namespace {

constexpr std::int64_t kProgressStep = 250;

bool NeedsDeclaration(std::string_view name) {
  return !IsAdifField(name) && !IsApplicationField(name);
}

// A name picked by mistake costs no database, page or letter.
void RequireReplaceable(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::string first(AdifReader::kLongestRecord, '\0');
  in.read(first.data(), static_cast<std::streamsize>(first.size()));
  first.resize(static_cast<std::size_t>(in.gcount()));
  if (first.empty()) return;
  const std::string other = OtherThanAdif(first);
  if (other.empty()) return;
  throw std::runtime_error(
      fmt::format("{} è {}: scegliere un altro nome", file.filename().string(), other));
}

// The header stands first and declares what only the records tell: such names are few, and are
// looked for among the selected contacts alone.
std::vector<std::string> UserFields(engine::Database& database, std::string_view select) {
  std::set<std::string> names;
  const auto all = database.OpenSnapshot(
      "Select Campo from LogAdif where QsoNr in (Select QsoNr from Log) Group By Campo");
  for (; !all->EOF_(); all->MoveNext()) {
    const std::string name = all->Field(0).Text();
    if (NeedsDeclaration(name)) names.insert(name);
  }
  if (names.empty() || select == kAllContacts) return {names.begin(), names.end()};
  std::set<std::string> used;
  KeptFields kept(database);
  const auto rows = database.OpenDynaset(select);
  for (; !rows->EOF_() && used.size() < names.size(); rows->MoveNext()) {
    for (const AdifField& field : kept.Of(rows->Field(std::size_t{0}).Integer())) {
      if (names.contains(field.name)) used.insert(field.name);
    }
  }
  return {used.begin(), used.end()};
}

void CountChanged(const std::vector<AdifField>& fields, ExportCounts& counts) {
  std::int64_t changed = 0;
  for (const AdifField& field : fields) {
    changed += base::ToPlainLetters(field.name).changed + base::ToPlainLetters(field.value).changed;
  }
  counts.changed += changed;
  counts.changedContacts += changed > 0;
}

}  // namespace

std::optional<ExportCounts> ExportContacts(core::Session& session, std::string_view select,
                                           const std::filesystem::path& file,
                                           const ExportProgress& progress, AdifLetters letters) {
  RequireReplaceable(file);
  std::filesystem::path unfinished = file;
  unfinished += ".new";
  const auto fail = [&] {
    return std::runtime_error(fmt::format("Il file {} non si scrive", file.filename().string()));
  };
  struct Remove {
    const std::filesystem::path& file;
    ~Remove() {
      std::error_code ignored;
      std::filesystem::remove(file, ignored);
    }
  };
  const Remove leftover{unfinished};
  std::ofstream out(unfinished, std::ios::binary | std::ios::trunc);
  if (!out) throw fail();

  session.Contacts.AdoptOthers();  // each contact goes out with its name
  KeptFields kept(session.Db);
  ContactOrigins origins(session.Db);
  StationTables tables(session);
  out << AdifHeader(UserFields(session.Db, select), letters);
  ExportCounts counts;
  const auto rows = session.Db.OpenDynaset(select);
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::int64_t done = counts.written + counts.leftOut;
    if (done % kProgressStep == 0 && !progress(done)) return std::nullopt;
    const std::int64_t qsoNr = rows->Field(std::size_t{0}).Integer();
    const std::vector<AdifField> beside = kept.Of(qsoNr);
    const std::vector<AdifField> fields =
        FileFields(core::ReadContact(*rows), beside, origins.Of(qsoNr), tables, letters);
    if (fields.empty()) {
      ++counts.leftOut;
      continue;
    }
    out << AdifLine(fields, letters);
    ++counts.written;
    if (letters == AdifLetters::kAscii) CountChanged(fields, counts);
  }
  out.close();
  if (!out) throw fail();
  std::error_code error;
  std::filesystem::rename(unfinished, file, error);
  if (error) throw fail();
  return counts;
}

}  // namespace brenvo::adif
