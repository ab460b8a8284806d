#include "adif_export.h"

#include <fmt/format.h>

#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

#include "adif/adif_names.h"
#include "adif/adif_reader.h"
#include "base/plain_letters.h"
#include "card_fields.h"
#include "contact_to_fields.h"
#include "core/confirmations.h"
#include "core/log_contact.h"
#include "core/quoted.h"
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

// Contacts that go out one after another, and what stands beside each in own tables is read for all
// of them at once.
constexpr std::size_t kTogether = 1000;
struct Block {
  std::vector<std::int64_t> keys;
  std::vector<core::LogContact> contacts;
};

// The contacts to be written, from the first one each time they are opened.
struct Contacts {
  // The contacts after the others; none behind the last.
  using Next = std::function<void(Block& block)>;
  bool whole = false;  // the whole log
  std::function<Next()> open;
};

Contacts OfSelect(engine::Database& database, std::string_view select) {
  const auto open = [&database, select]() -> Contacts::Next {
    auto rows = std::shared_ptr<engine::Dynaset>(database.OpenDynaset(select));
    return [rows](Block& block) {
      for (; block.keys.size() < kTogether && !rows->EOF_(); rows->MoveNext()) {
        block.keys.push_back(rows->Field(std::size_t{0}).Integer());
        block.contacts.push_back(core::ReadContact(*rows));
      }
    };
  };
  return {select == kAllContacts, open};
}

Contacts OfKeys(engine::Database& database, const std::vector<std::int64_t>& keys) {
  const auto open = [&database, &keys]() -> Contacts::Next {
    auto rows = std::shared_ptr<engine::Table>(database.OpenTable("Log"));
    return [rows, &keys, at = std::size_t{0}](Block& block) mutable {
      while (block.keys.size() < kTogether && at < keys.size()) {
        const std::int64_t key = keys[at++];
        try {
          rows->SetBookmark({key});
        } catch (const engine::DatabaseError& failure) {
          if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
          continue;
        }
        block.contacts.push_back(core::ReadContact(*rows));
        block.keys.push_back(key);
      }
    };
  };
  return {false, open};
}

// False when `see` wanted no further one.
bool ForEachBlock(const Contacts& contacts, const std::function<bool(const Block& block)>& see) {
  const Contacts::Next next = contacts.open();
  for (;;) {
    Block block;
    next(block);
    if (block.keys.empty()) return true;
    if (!see(block)) return false;
  }
}

bool IsOfSomeContact(engine::Database& database, std::string_view name) {
  return !database
              .OpenSnapshot(fmt::format("Select Campo from LogAdif where Campo={} and QsoNr in "
                                        "(Select QsoNr from Log)",
                                        core::Quoted(name)))
              ->EOF_();
}

// The header stands first and declares what only the records tell: such names are few, and are
// looked for among the selected contacts alone.
std::vector<std::string> UserFields(engine::Database& database, const Contacts& contacts) {
  std::set<std::string> names;
  const auto all = database.OpenSnapshot("Select Campo from LogAdif Group By Campo");
  for (; !all->EOF_(); all->MoveNext()) {
    const std::string name = all->Field(0).Text();
    if (NeedsDeclaration(name) && IsOfSomeContact(database, name)) names.insert(name);
  }
  if (names.empty() || contacts.whole) return {names.begin(), names.end()};
  std::set<std::string> used;
  KeptFields kept(database);
  ForEachBlock(contacts, [&](const Block& block) {
    for (const std::vector<AdifField>& fields : kept.OfEach(block.keys)) {
      for (const AdifField& field : fields) {
        if (names.contains(field.name)) used.insert(field.name);
      }
    }
    return used.size() < names.size();
  });
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

std::optional<ExportCounts> Export(core::Session& session, const Contacts& contacts,
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
  core::CardTable cards(session.Db);
  ContactOrigins origins(session.Db);
  StationTables tables(session);
  out << AdifHeader(UserFields(session.Db, contacts), letters);
  ExportCounts counts;
  const auto write = [&](const Block& block) {
    std::vector<std::vector<AdifField>> beside = kept.OfEach(block.keys),
                                        others = origins.OfEach(block.keys);
    const std::vector<core::ContactCards> ofCards = cards.OfEach(block.keys);
    const std::vector<bool> ofServices = core::BoxesOfServices(session.Db, block.keys);
    for (std::size_t i = 0; i < block.keys.size(); ++i) {
      const std::int64_t done = counts.written + counts.leftOut;
      if (done % kProgressStep == 0 && !progress(done)) return false;
      core::LogContact contact = block.contacts[i];
      // Whoever reads the file takes it for a card.
      if (ofServices[i]) contact.QslRicevuta = false;
      for (AdifField& field : CardFields(ofCards[i], contact, beside[i])) {
        others[i].push_back(std::move(field));
      }
      const auto fields =
          FileFields(contact, std::move(beside[i]), std::move(others[i]), tables, letters);
      if (fields.empty()) {
        ++counts.leftOut;
        continue;
      }
      out << AdifLine(fields, letters);
      ++counts.written;
      if (letters == AdifLetters::kAscii) CountChanged(fields, counts);
    }
    return true;
  };
  if (!ForEachBlock(contacts, write)) return std::nullopt;
  out.close();
  if (!out) throw fail();
  std::error_code error;
  std::filesystem::rename(unfinished, file, error);
  if (error) throw fail();
  return counts;
}

}  // namespace

std::optional<ExportCounts> ExportContacts(core::Session& session, std::string_view select,
                                           const std::filesystem::path& file,
                                           const ExportProgress& progress, AdifLetters letters) {
  return Export(session, OfSelect(session.Db, select), file, progress, letters);
}

std::optional<ExportCounts> ExportKeys(core::Session& session,
                                       const std::vector<std::int64_t>& keys,
                                       const std::filesystem::path& file,
                                       const ExportProgress& progress) {
  return Export(session, OfKeys(session.Db, keys), file, progress, AdifLetters::kUtf8);
}

}  // namespace brenvo::adif
