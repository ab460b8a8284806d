#include "core/history.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <span>

#include "core/confirmations.h"
#include "core/countries_by_date.h"
#include "core/own_values.h"
#include "core/quoted.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kConfirmed = "(Conferma ";
constexpr std::size_t kTogether = 1000;  // contacts that one statement keeps

}  // namespace

void History::Begin(std::string_view title, base::DateTime when, std::int64_t takesBack) {
  title_ = title;
  when_ = when;
  takesBack_ = takesBack;
  number_ = touched_ = kept_ = 0;
  written_ = hasHeader_ = committed_ = false;
  runs_.clear();
  flushedRuns_ = committedRuns_ = 0;
}

void History::End() {
  number_ = 0;
  runs_.clear();
}

std::int64_t History::Number() {
  if (next_ == 0) {
    const auto rows = database_.OpenTable("Storia");
    rows->MoveLast();
    next_ = rows->EOF_() ? 1 : rows->Field("Lavoro").Integer() + 1;
  }
  if (number_ == 0) number_ = next_++;
  return number_;
}

engine::RowAppender& History::Rows(std::unique_ptr<engine::RowAppender>& rows,
                                   std::string_view table) {
  if (rows == nullptr) rows = database_.OpenAppender(table);
  return *rows;
}

bool History::HasBrought(std::int64_t qsoNr) const {
  const auto behind = std::ranges::upper_bound(runs_, qsoNr, {}, &Run::from);
  return behind != runs_.begin() && qsoNr <= std::prev(behind)->to;
}

void History::Brought(std::int64_t qsoNr) {
  written_ = true;
  ++touched_;
  const bool goesOn = runs_.size() > flushedRuns_ && runs_.back().to + 1 == qsoNr;
  if (goesOn) {
    runs_.back().to = qsoNr;
  } else {
    runs_.push_back({qsoNr, qsoNr});
  }
}

void History::KeepRows(std::string_view statement) {
  written_ = true;
  touched_ += database_.Execute(statement);
}

void History::CameBack(std::string_view from) {
  KeepRows(fmt::format("INSERT INTO StoriaNuovi SELECT {},QsoNr,QsoNr{}", Number(), from));
}

void History::Keep(std::int64_t qsoNr) {
  if (qsoNr == kept_ || HasBrought(qsoNr)) return;
  KeepRows(fmt::format("INSERT INTO StoriaLog SELECT {},Log.* FROM Log WHERE QsoNr={}", Number(),
                       qsoNr));
  kept_ = qsoNr;
}

void History::KeepAll(const std::vector<std::int64_t>& qsoNrs) {
  std::vector<std::int64_t> keys = qsoNrs;
  std::erase_if(keys, [&](std::int64_t key) { return HasBrought(key); });
  for (std::size_t from = 0; from < keys.size(); from += kTogether) {
    const auto block = std::span(keys).subspan(from, std::min(kTogether, keys.size() - from));
    KeepRows(fmt::format("INSERT INTO StoriaLog SELECT {},Log.* FROM Log WHERE QsoNr IN ({})",
                         Number(), fmt::join(block, ",")));
  }
}

void History::KeepBeside(std::int64_t qsoNr, std::string_view name, const engine::Value& present) {
  if (HasBrought(qsoNr)) return;
  written_ = true;
  Rows(fields_, "StoriaCampi").Append({Number(), qsoNr, name, present});
}

void History::KeepWhere(std::string_view where) {
  KeepRows(fmt::format("INSERT INTO StoriaLog SELECT {},Log.* FROM Log{}", Number(), where));
}

void History::KeepContestQsos(std::string_view where) {
  KeepRows(
      fmt::format("INSERT INTO StoriaContestQso SELECT {},False,[Contest Qso].* FROM "
                  "[Contest Qso]{}",
                  Number(), where));
}

void History::KeepContests(std::string_view where) {
  KeepRows(fmt::format("INSERT INTO StoriaContest SELECT {},False,Contest.* FROM Contest{}",
                       Number(), where));
}

void History::BroughtContestQso(base::DateTime date, std::string_view band, std::int64_t serial) {
  KeepRows(
      fmt::format("INSERT INTO StoriaContestQso (Lavoro,Nuovo,DataContest,Banda,ProgrDato) VALUES "
                  "({},True,{},{},{})",
                  Number(), Quoted(base::DateTimeText(date)), Quoted(band), serial));
}

void History::BroughtContest(base::DateTime date, std::string_view band) {
  KeepRows(fmt::format(
      "INSERT INTO StoriaContest (Lavoro,Nuovo,DataContest,Banda) VALUES ({},True,{},{})", Number(),
      Quoted(base::DateTimeText(date)), Quoted(band)));
}

void History::KeepCampo(std::int64_t qsoNr, std::string_view name, const engine::Value& value) {
  written_ = true;
  const auto there = database_.OpenSnapshot(
      fmt::format("Select Lavoro from StoriaCampi where Lavoro={} and QsoNr={} and Campo={}",
                  Number(), qsoNr, Quoted(name)));
  if (there->EOF_()) Rows(fields_, "StoriaCampi").Append({Number(), qsoNr, name, value});
}

void History::KeepField(std::int64_t qsoNr, std::string_view field) {
  if (HasBrought(qsoNr)) return;
  Keep(qsoNr);
  const auto present = database_.OpenSnapshot(
      fmt::format("Select Valore from LogAdif where QsoNr={} and Campo={}", qsoNr, Quoted(field)));
  KeepCampo(qsoNr, field, present->EOF_() ? engine::Value() : present->Field(std::size_t{0}));
}

void History::KeepCards(std::int64_t qsoNr, CardSide side) {
  if (HasBrought(qsoNr)) return;
  Keep(qsoNr);
  const std::string present = TextOfCards(CardsOf(database_, qsoNr, side));
  KeepCampo(qsoNr, side == CardSide::kSent ? kSentField : kReceivedField,
            present.empty() ? engine::Value() : engine::Value(present));
}

void History::KeepTold(std::int64_t qsoNr) {
  if (HasBrought(qsoNr)) return;
  Keep(qsoNr);
  const std::optional<int> present = EntityKeptOf(database_, qsoNr).told;
  KeepCampo(qsoNr, kToldField, present ? engine::Value(std::to_string(*present)) : engine::Value());
}

void History::KeepConfirmation(std::int64_t qsoNr, std::string_view service) {
  if (HasBrought(qsoNr)) return;
  Keep(qsoNr);
  const auto present = ConfirmationOf(database_, qsoNr, service);
  KeepCampo(qsoNr, ConfirmationField(service),
            present ? engine::Value(TextOfConfirmation(*present)) : engine::Value());
}

std::string History::ConfirmationField(std::string_view service) {
  return fmt::format("{}{})", kConfirmed, service);
}

std::string_view History::ServiceOf(std::string_view field) {
  if (!field.starts_with(kConfirmed) || !field.ends_with(')')) return {};
  return field.substr(kConfirmed.size(), field.size() - kConfirmed.size() - 1);
}

std::optional<CardSide> History::SideOf(std::string_view field) {
  if (field == kSentField) return CardSide::kSent;
  if (field == kReceivedField) return CardSide::kReceived;
  return std::nullopt;
}

void History::KeepStation(std::int64_t qsoNr) {
  if (HasBrought(qsoNr)) return;
  Keep(qsoNr);
  const auto present =
      database_.OpenSnapshot(fmt::format("Select Stazione from LogOrigine where QsoNr={}", qsoNr));
  KeepCampo(qsoNr, kStationField,
            present->EOF_() ? engine::Value() : present->Field(std::size_t{0}));
}

void History::KeepValue(std::string_view name) {
  const auto value = OwnValue(database_, name);
  KeepCampo(0, name, value ? engine::Value(*value) : engine::Value());
}

void History::Flush() {
  if (!written_) return;
  if (hasHeader_) {
    database_.Execute(
        fmt::format("UPDATE Storia SET Qso=Qso+{} WHERE Lavoro={}", touched_, Number()));
  } else {
    const engine::Value none;
    const bool brings = flushedRuns_ < runs_.size();
    const Run run = brings ? runs_[flushedRuns_++] : Run();
    Rows(works_, "Storia")
        .Append({Number(), when_, title_, touched_, brings ? engine::Value(run.from) : none,
                 brings ? engine::Value(run.to) : none,
                 takesBack_ == 0 ? none : engine::Value(takesBack_), none});
  }
  for (; flushedRuns_ < runs_.size(); ++flushedRuns_) {
    const Run& run = runs_[flushedRuns_];
    Rows(brought_, "StoriaNuovi").Append({Number(), run.from, run.to});
  }
  hasHeader_ = true;
  written_ = false;
  touched_ = 0;
}

void History::Committed() {
  committed_ = hasHeader_;
  committedRuns_ = flushedRuns_;
}

void History::RolledBack() {
  written_ = false;
  touched_ = kept_ = 0;
  hasHeader_ = committed_;
  flushedRuns_ = committedRuns_;
  runs_.resize(flushedRuns_);
}

void History::Close() {
  works_.reset();
  brought_.reset();
  fields_.reset();
  next_ = 0;
}

void ThinHistory(engine::Database& database, base::DateTime now, std::int64_t days,
                 std::int64_t contacts) {
  constexpr std::int64_t kSecondsOfDay = 24 * 60 * 60;
  const base::DateTime oldest = now.Later(-days * kSecondsOfDay);
  const auto works =
      database.OpenSnapshot("Select Lavoro,Quando,Qso from Storia Order By Lavoro Desc");
  if (works->EOF_()) return;
  std::int64_t kept = works->Field(2).Integer();
  for (works->MoveNext(); !works->EOF_(); works->MoveNext()) {
    kept += works->Field(2).Integer();
    const auto when = works->Field(1).ReadableDate();
    if (kept > contacts || (when && *when < oldest)) break;
  }
  if (works->EOF_()) return;
  const std::int64_t last = works->Field(std::size_t{0}).Integer();
  works->Close();
  for (const std::string_view table :
       {"Storia", "StoriaNuovi", "StoriaLog", "StoriaCampi", "StoriaContestQso", "StoriaContest"}) {
    database.Execute(fmt::format("DELETE * FROM {} WHERE Lavoro<={}", table, last));
  }
}

}  // namespace brenvo::core
