#include "worked/load_rules.h"

#include <filesystem>
#include <stdexcept>

namespace brenvo::worked {

std::shared_ptr<const Rules> LoadRules(core::Session& session,
                                       const std::function<void(const std::string& text)>& tell) {
  const auto ours = session.File(kDeliveredRules), own = session.File(kOwnRules);
  for (const auto& each : {own, std::filesystem::path()}) {
    try {
      return std::make_shared<const Rules>(ReadRules(ours, each));
    } catch (const std::runtime_error& failure) {
      tell(failure.what());
    }
  }
  return std::make_shared<const Rules>();
}

}  // namespace brenvo::worked
