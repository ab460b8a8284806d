#include "core/log_time.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/own_values.h"

namespace brenvo::core {
namespace {

constexpr int kMinute = 60;  // seconds
constexpr std::int64_t kDay = 24 * 60 * kMinute;

}  // namespace

std::optional<LogTime> LogTimeOf(Session& session) {
  const auto word = OwnValue(session.Db, kLogTimeValue);
  if (word == kUtcWord) return LogTime::kUtc;
  if (word == kLocalWord) return LogTime::kLocal;
  return std::nullopt;
}

void StoreLogTime(Session& session, LogTime time) {
  StoreOwnValue(session.Db, kLogTimeValue,
                std::string(time == LogTime::kUtc ? kUtcWord : kLocalWord));
}

std::optional<LogTime> AskLogTime(Session& session) {
  if (const auto known = LogTimeOf(session)) return known;
  forms::Window* const dialog = session.Windows.LoadSingle("OraDelLog");
  if (dialog == nullptr) return std::nullopt;
  session.Windows.ShowModal(*dialog);
  return LogTimeOf(session);
}

LocalTime::LocalTime(Session& session)
    : clock_(session.Machine.GetClock()), zone_(session.Choices.Get<choice::kZone>()) {}

base::DateTime LocalTime::OfUtc(base::DateTime utc) const {
  return utc.Later(clock_.OffsetOfUtc(utc, zone_) * kMinute);
}

base::DateTime LocalTime::ToUtc(base::DateTime local) const {
  const std::vector<int> offsets = clock_.OffsetsOfLocal(local, zone_);
  if (!offsets.empty()) return local.Later(-offsets.front() * kMinute);
  return local.Later(-clock_.OffsetOfUtc(local.Later(-kDay), zone_) * kMinute);
}

std::vector<base::DateTime> LocalTime::AllUtc(base::DateTime local) const {
  std::vector<base::DateTime> all;
  for (const int offset : clock_.OffsetsOfLocal(local, zone_)) {
    all.push_back(local.Later(-offset * kMinute));
  }
  return all;
}

std::string ClocksText(Session& session, bool withSeconds) {
  const base::DateTime utc = session.Machine.GetClock().UtcNow();
  const auto text = [withSeconds](base::DateTime time) {
    return base::Left(base::TimeText(time), withSeconds ? 8 : 5);
  };
  return fmt::format("UTC {}   locale {}", text(utc), text(LocalTime(session).OfUtc(utc)));
}

}  // namespace brenvo::core
