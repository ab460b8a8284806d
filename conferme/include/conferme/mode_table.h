// Modes as the services of confirmations take them: which of theirs a mode of a log file is, and in
// which group it stands. Modes of one group confirm each other.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "worked/rules.h"

namespace brenvo::conferme {

enum class ModeGroup : std::uint8_t { kUnknown, kCw, kPhone, kData, kImage };
// "PHONE"; empty for the unknown one. And back, case aside.
std::string_view NameOf(ModeGroup group);
ModeGroup GroupNamed(std::string_view name);

struct ServiceMode {
  std::string mode;  // the service's; empty where it has none
  ModeGroup group = ModeGroup::kUnknown;
  friend bool operator==(const ServiceMode&, const ServiceMode&) = default;
};

inline constexpr std::string_view kModeRules = "ModiConferme.csv";

class ModeTable {
 public:
  // Throws std::runtime_error with the file, the line and what is wrong with it, in Italian, for a
  // row that cannot be understood and for an example that does not hold.
  static ModeTable Parse(std::string_view text);
  static ModeTable Read(const std::filesystem::path& file);

  // Of a mode and a submode as log files write them; a word of the log's own, and a submode that
  // stands as a mode, will do as well.
  ServiceMode Of(std::string_view mode, std::string_view submode) const;
  // A mode that the table does not have, by the group that it counts in as worked.
  ServiceMode Of(std::string_view mode, std::string_view submode, const worked::Rules& rules) const;

 private:
  std::map<std::pair<std::string, std::string>, ServiceMode> modes_;
  std::map<std::string, ServiceMode> bySubmode_;
};

}  // namespace brenvo::conferme
