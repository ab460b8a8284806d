#include "own_fields.h"

#include <vector>

#include "base/text.h"
#include "core/log_contact.h"

namespace brenvo::adif {

const std::string& OwnField(const core::LogColumn& column) {
  static const auto kNames = [] {
    std::vector<std::string> names;
    for (const core::LogColumn& each : core::LogColumns()) {
      std::string name = std::string(kOwnFieldPrefix) + base::Upper(each.name);
      std::erase(name, ' ');
      names.push_back(std::move(name));
    }
    return names;
  }();
  return kNames[static_cast<std::size_t>(&column - core::LogColumns().data())];
}

}  // namespace brenvo::adif
