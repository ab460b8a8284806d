#include "export.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

#include "core/session.h"
#include "core/station_profile.h"
#include "core/transaction.h"
#include "reg1test.h"
#include "score.h"
#include "staging.h"

namespace brenvo::contest {
namespace {

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("Impossibile scrivere il file " + path.filename().string());
}

std::optional<double> MhzOf(core::Session& session, std::string_view band) {
  const auto profile = core::FindBandProfile(session, band);
  if (!profile) return std::nullopt;
  return profile->Frequenza.Number();
}

}  // namespace

void WriteReg1Test(core::Session& session, const ContestHeader& header,
                   const std::vector<Contact>& contacts) {
  if (contacts.empty()) return;
  const CountryOfCall countryOf = CountriesOf(session);
  // Around the counting as well: each look into the prefix table would lock the file for itself.
  core::Transaction transaction(session.Db);
  const Tally tally = TallyOf(contacts, countryOf);
  // An empty exchange is counted, but the records do not mark it as new.
  std::vector<std::string> exchanges = tally.Exchanges.Texts();
  std::erase(exchanges, std::string());
  StageMultipliers(session.Db, tally.Squares.Texts(), tally.Countries.Texts(), exchanges);
  transaction.Commit();
  WriteFile(session.File("\\" + header.CallContest + ".txt"),
            Reg1Test(header, MhzOf(session, header.Banda), contacts, tally, countryOf));
}

}  // namespace brenvo::contest
