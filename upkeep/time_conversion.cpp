#include "upkeep/time_conversion.h"

#include <fmt/format.h>

#include <set>
#include <tuple>
#include <unordered_map>

#include "base/text.h"
#include "core/history.h"
#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/texts.h"
#include "core/transaction.h"

namespace brenvo::upkeep {
namespace {

namespace column = core::column;

constexpr std::string_view kTitle = "Converti ora";
constexpr std::int64_t kProgressStep = 250;
constexpr std::int64_t kDay = 24 * 60 * 60;
// Out of every log's way: 4000 years of 365 days.
constexpr std::int64_t kAside = 4000 * 365 * kDay;

// Nothing for what is no moment: no date, only a time of day, or what another tool has spoilt.
std::optional<base::DateTime> TimeOf(engine::Recordset& row) {
  const auto time = row.Field(column::kDataQso).ReadableDate();
  return time && time->Seconds() >= kDay ? time : std::nullopt;
}

DoubtfulTime Doubt(engine::Recordset& row, base::DateTime time) {
  DoubtfulTime doubt;
  doubt.qsoNr = row.Field(column::kQsoNr).Integer();
  doubt.call = core::FieldText(row, column::kCall);
  doubt.banda = core::FieldText(row, column::kBanda);
  doubt.local = time;
  return doubt;
}

// What a log file has told of a contact stays beside it: which of the two moments it was.
void TakeTheMomentTold(core::Session& session, TimeConversion& plan) {
  const auto kept = session.Db.OpenTable("LogAdif");
  kept->SetIndex("PrimaryKey");
  for (DoubtfulTime& each : plan.doubtful) {
    if (!each.other) continue;
    kept->Seek(engine::SeekComparison::kEqual, {each.qsoNr, "TIME_ON"});
    if (kept->NoMatch()) continue;
    const std::string hourAndMinute =
        fmt::format("{:02}{:02}", each.other->Hour(), each.other->Minute());
    if (core::FieldText(*kept, "Valore").starts_with(hourAndMinute))
      std::swap(each.utc, *each.other);
  }
}

// Only a time that no clock has shown can become another contact's moment.
void KeepApart(core::Session& session, const core::LocalTime& local, TimeConversion& plan) {
  const auto log = session.Db.OpenTable("Log");
  log->SetIndex("Unico");
  std::set<std::tuple<base::DateTime, std::string, std::string>> taken;
  for (DoubtfulTime& each : plan.doubtful) {
    if (each.kind != DoubtfulTime::Kind::kMissing) continue;
    const std::string call = base::UpperAscii(base::RTrim(each.call));
    const std::string banda = base::UpperAscii(base::RTrim(each.banda));
    const auto isTaken = [&] {
      if (taken.contains({each.utc, call, banda})) return true;
      log->Seek(engine::SeekComparison::kEqual, {local.OfUtc(each.utc), each.call, each.banda});
      return !log->NoMatch();
    };
    while (isTaken()) {
      each.utc = each.utc.Later(1);
      each.kind = DoubtfulTime::Kind::kMoved;
    }
    taken.insert({each.utc, call, banda});
  }
}

class Converter {
 public:
  Converter(core::Session& session, const TimeConversion& plan, const ConversionProgress& progress)
      : session_(session), local_(session), progress_(progress) {
    for (const DoubtfulTime& each : plan.doubtful) chosen_[each.qsoNr] = each.utc;
  }

  // A time goes where the ones gone through before have left: no two contacts meet on the way.
  bool RunInOrder(bool latestFirst) {
    return Run(latestFirst ? " desc" : "",
               [this](std::int64_t qsoNr, base::DateTime time) { return UtcOf(qsoNr, time); });
  }

  // Where some times become earlier and others later, all go out of the way first.
  bool RunAside() {
    return Run("", [](std::int64_t, base::DateTime time) { return time.Later(kAside); }) &&
           Run("", [this](std::int64_t qsoNr, base::DateTime time) {
             return UtcOf(qsoNr, time.Later(-kAside));
           });
  }

 private:
  base::DateTime UtcOf(std::int64_t qsoNr, base::DateTime time) const {
    const auto at = chosen_.find(qsoNr);
    return at != chosen_.end() ? at->second : local_.ToUtc(time);
  }

  bool Run(const char* order,
           const std::function<base::DateTime(std::int64_t, base::DateTime)>& become) {
    const auto rows =
        session_.Db.OpenDynaset(std::string("Select * from Log order by DataQso") + order);
    for (std::int64_t done = 0; !rows->EOF_(); rows->MoveNext(), ++done) {
      if (done % kProgressStep == 0 && !progress_(done)) return false;
      const auto time = TimeOf(*rows);
      if (!time) continue;
      const base::DateTime wanted = become(rows->Field(column::kQsoNr).Integer(), *time);
      if (wanted == *time) continue;
      session_.Contacts.Change(
          core::ContactTable::kLog, *rows,
          [&](engine::EditableRecordset& row) { row.Set(column::kDataQso, wanted); });
    }
    return true;
  }

  core::Session& session_;
  core::LocalTime local_;
  const ConversionProgress& progress_;
  std::unordered_map<std::int64_t, base::DateTime> chosen_;
};

}  // namespace

std::optional<TimeConversion> PlanConversion(core::Session& session,
                                             const ConversionProgress& progress) {
  const core::LocalTime local(session);
  TimeConversion plan;
  const auto log = session.Db.OpenTable("Log");
  log->SetIndex("DataQso");
  log->MoveFirst();
  for (std::int64_t done = 0; !log->EOF_(); log->MoveNext(), ++done) {
    if (done % kProgressStep == 0 && !progress(done)) return std::nullopt;
    const auto time = TimeOf(*log);
    if (!time) continue;
    ++plan.contacts;
    if (!plan.first || *time < *plan.first) plan.first = time;
    if (!plan.last || *time > *plan.last) plan.last = time;
    const std::vector<base::DateTime> moments = local.AllUtc(*time);
    const base::DateTime utc = moments.empty() ? local.ToUtc(*time) : moments.front();
    plan.earlier = plan.earlier || utc < *time;
    plan.later = plan.later || utc > *time;
    if (moments.size() == 1) continue;
    DoubtfulTime doubt = Doubt(*log, *time);
    doubt.utc = utc;
    if (!moments.empty()) {
      doubt.kind = DoubtfulTime::Kind::kTwice;
      doubt.other = moments.back();
    }
    plan.doubtful.push_back(std::move(doubt));
  }
  TakeTheMomentTold(session, plan);
  KeepApart(session, local, plan);
  return plan;
}

bool ConvertLog(core::Session& session, const TimeConversion& plan,
                const ConversionProgress& progress) {
  return session.Contacts.ChangeMany(kTitle, {core::ContactTable::kLog}, [&] {
    core::Transaction transaction(session);
    Converter converter(session, plan, progress);
    const bool whole =
        plan.earlier && plan.later ? converter.RunAside() : converter.RunInOrder(plan.later);
    if (!whole) return false;
    session.Contacts.Past().KeepValue(core::kLogTimeValue);
    core::StoreLogTime(session, core::LogTime::kUtc);
    transaction.Commit();
    return true;
  });
}

}  // namespace brenvo::upkeep
