// The settings that outlive the program, by section and key.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::platform {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  // `defaultValue` when nothing was saved there.
  virtual std::string GetSetting(std::string_view section, std::string_view key,
                                 std::string_view defaultValue) = 0;
  virtual void SaveSetting(std::string_view section, std::string_view key,
                           std::string_view value) = 0;
};

}  // namespace brenvo::platform
