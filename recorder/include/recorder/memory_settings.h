// A settings store in memory.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "platform/settings_store.h"

namespace brenvo::recorder {

class MemorySettings : public platform::SettingsStore {
 public:
  // By section and key.
  using Values = std::map<std::pair<std::string, std::string>, std::string>;
  const Values& All() const { return values_; }
  void SetAll(Values values) { values_ = std::move(values); }

  std::string GetSetting(std::string_view section, std::string_view key,
                         std::string_view defaultValue) override {
    const auto at = values_.find({std::string(section), std::string(key)});
    return at == values_.end() ? std::string(defaultValue) : at->second;
  }
  void SaveSetting(std::string_view section, std::string_view key,
                   std::string_view value) override {
    values_[{std::string(section), std::string(key)}] = value;
  }

 private:
  Values values_;
};

}  // namespace brenvo::recorder
