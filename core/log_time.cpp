#include "core/log_time.h"

#include <fmt/format.h>

#include "base/text.h"

namespace brenvo::core {
namespace {

base::DateTime Later(base::DateTime time, int minutes) {
  return base::DateTime::FromSeconds(time.Seconds() + minutes * 60);
}

}  // namespace

base::DateTime LocalOfUtc(Session& session, base::DateTime utc) {
  const std::string zone = session.Choices.Get<choice::kZone>();
  return Later(utc, session.Machine.GetClock().OffsetOfUtc(utc, zone));
}

std::string ClocksText(Session& session, bool withSeconds) {
  const base::DateTime utc = session.Machine.GetClock().UtcNow();
  const auto text = [withSeconds](base::DateTime time) {
    return base::Left(base::TimeText(time), withSeconds ? 8 : 5);
  };
  return fmt::format("UTC {}   locale {}", text(utc), text(LocalOfUtc(session, utc)));
}

}  // namespace brenvo::core
