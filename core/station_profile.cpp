#include "core/station_profile.h"

#include <algorithm>

#include "base/text.h"
#include "core/log_contact.h"
#include "core/session.h"
#include "core/texts.h"

namespace brenvo::core {
namespace {

// Modes by their beginnings, in capitals. Their reports have a tone...
constexpr std::string_view kWithTone[] = {"CW",    "PCW",  "RTTY", "PSK",     "QPSK",   "8PSK",
                                          "BPSK",  "MFSK", "HELL", "OLIVIA",  "PACTOR", "PAC",
                                          "AMTOR", "TOR",  "ASCI", "CONTESTI"};
// ...or are decibels and the like, which no one knows beforehand.
constexpr std::string_view kMeasured[] = {"FT8",   "FT4",  "FT2",   "FST4",   "JT",
                                          "JS8",   "Q65",  "QRA64", "MSK144", "FSK441",
                                          "ISCAT", "WSPR", "OPERA", "ROS",    "VARA"};

bool BeginsWithOne(std::string_view mode, std::span<const std::string_view> beginnings) {
  return std::ranges::any_of(beginnings,
                             [&](std::string_view each) { return mode.starts_with(each); });
}

}  // namespace

std::string ProfileText(Session& session, std::string_view column) {
  session.Tables.TbUser->MoveFirst();
  return FieldText(*session.Tables.TbUser, column);
}

std::optional<BandProfile> FindBandProfile(Session& session, std::string_view band) {
  engine::Table& row = *session.Tables.TbUserRTX;
  row.Seek("=", {band});
  if (row.NoMatch()) return std::nullopt;
  return BandProfile{FieldText(row, "RST"),     FieldText(row, "Modo"), FieldText(row, "RTX"),
                     FieldText(row, "Antenna"), row.Field("Frequenza"), row.Field("Potenza")};
}

std::string UsualReport(std::string_view mode, const std::optional<BandProfile>& profile) {
  const std::string name = base::UpperAscii(base::Trim(mode));
  if (name.empty()) return {};
  if (profile && base::UpperAscii(base::Trim(profile->Modo)) == name) return profile->RST;
  if (BeginsWithOne(name, kMeasured)) return {};
  return BeginsWithOne(name, kWithTone) ? "599" : "59";
}

}  // namespace brenvo::core
