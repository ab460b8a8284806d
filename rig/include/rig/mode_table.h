// Which mode of a transceiver is which mode of the log, and the other way round. All of it is read
// from tables (data/rules/ModiRtx.csv says how).
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "core/session.h"

namespace brenvo::rig {

inline constexpr std::string_view kDeliveredModes = "ModiRtx.csv", kOwnModes = "ModiRtx propri.csv";

struct ModeRule {
  bool toRig = false;  // else from it
  std::string mode, becomes;
  // Where it holds; nothing for no limit.
  std::optional<base::Khz> from{}, to{};
  friend bool operator==(const ModeRule&, const ModeRule&) = default;
};

class ModeTable {
 public:
  // Ours, with the operator's own rows in place of those that are alike, and before the others.
  // A missing file of his own is none. std::runtime_error, in Italian and with file and line, for
  // what cannot be understood and for an example that does not hold.
  static ModeTable Read(const std::filesystem::path& ours, const std::filesystem::path& own);

  // The contact's mode; empty where the transceiver's says nothing of it.
  std::string ToLog(std::string_view mode, base::Hz at) const;
  // The transceiver's; empty where nobody knows, and it stays as it is.
  std::string ToRig(std::string_view modo, base::Hz at) const;
  const std::vector<ModeRule>& Rules() const { return rules_; }

 private:
  std::string Find(bool toRig, std::string_view mode, base::Hz at) const;

  std::vector<ModeRule> rules_;
};

// Those of the station's directory; ours alone where his own cannot be understood, and none where
// ours cannot: `tell` gets why.
ModeTable LoadModes(core::Session& session, const std::function<void(const std::string&)>& tell);
// Writes a row of the operator's own into his file, in place of one that is alike.
// std::runtime_error when the file cannot be read or written; it is then as it was.
void StoreOwnMode(core::Session& session, const ModeRule& rule);

}  // namespace brenvo::rig
