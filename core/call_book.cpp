#include "core/call_book.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/long_run.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kTitle = "Nominativi conosciuti";

struct PlaceColumns {
  std::string_view locator, seen, times;
};
constexpr PlaceColumns kPlaces[kMostPlaces] = {{"Locator", "Visto", "Volte"},
                                               {"Locator2", "Visto2", "Volte2"}};

KnownCall ReadKnown(engine::Recordset& row) {
  KnownCall known{.call = row.Field("Call").Text(),
                  .sources = static_cast<int>(row.Field("Fonti").Integer())};
  for (const PlaceColumns& each : kPlaces) {
    const std::string locator = row.Field(each.locator).Text();
    if (locator.empty()) continue;
    const engine::Value seen = row.Field(each.seen);
    known.places.push_back({locator, seen.IsNull() ? std::nullopt : seen.ReadableDate(),
                            row.Field(each.times).Integer()});
  }
  return known;
}

void WriteKnown(engine::EditableRecordset& row, const KnownCall& known) {
  for (std::size_t i = 0; i < kMostPlaces; ++i) {
    const bool there = i < known.places.size();
    row.Set(kPlaces[i].locator, there ? engine::Value(known.places[i].locator) : engine::Value());
    row.Set(kPlaces[i].seen,
            there && known.places[i].seen ? engine::Value(*known.places[i].seen) : engine::Value());
    row.Set(kPlaces[i].times, there ? engine::Value(known.places[i].times) : engine::Value());
  }
  row.Set("Fonti", known.sources);
}

}  // namespace

std::vector<PlaceOfCall> PlacesTogether(std::vector<PlaceOfCall> some,
                                        const std::vector<PlaceOfCall>& others) {
  for (const PlaceOfCall& each : others) {
    const auto same = std::ranges::find(some, each.locator, &PlaceOfCall::locator);
    if (same == some.end()) {
      some.push_back(each);
    } else {
      same->times += each.times;
      same->seen = std::max(same->seen, each.seen);
    }
  }
  std::ranges::stable_sort(some, [](const PlaceOfCall& a, const PlaceOfCall& b) {
    return a.seen != b.seen ? b.seen < a.seen : b.times < a.times;
  });
  if (some.size() > kMostPlaces) some.resize(kMostPlaces);
  return some;
}

std::optional<KnownCall> FindKnownCall(engine::Database& database, std::string_view call) {
  const auto rows = database.OpenTable("Nominativi");
  rows->SetIndex("PrimaryKey");
  rows->Seek("=", {call});
  return rows->NoMatch() ? std::nullopt : std::optional(ReadKnown(*rows));
}

std::vector<std::string> AllKnownCalls(engine::Database& database) {
  std::vector<std::string> calls;
  const auto rows = database.OpenSnapshot("Select Call from Nominativi");
  for (; !rows->EOF_(); rows->MoveNext()) calls.push_back(rows->Field(std::size_t{0}).Text());
  std::ranges::sort(calls);
  return calls;
}

LearnedCalls LearnCalls(Session& session, const std::vector<KnownCall>& calls, std::int64_t most) {
  LearnedCalls learned;
  const auto rows = session.Db.OpenTable("Nominativi");
  rows->SetIndex("PrimaryKey");
  std::int64_t count =
      session.Db.OpenSnapshot("Select Count(*) from Nominativi")->Field(std::size_t{0}).Integer();
  LongRun run(session, kTitle, std::ssize(calls));  // what is written last it commits at its end
  for (const KnownCall& each : calls) {
    if (each.call.empty() || each.call.size() > kLongestKnownCall) continue;
    if (!run.Next()) {
      learned.stopped = true;
      break;
    }
    rows->Seek("=", {each.call});
    if (!rows->NoMatch()) {
      KnownCall known = ReadKnown(*rows);
      known.places = PlacesTogether(std::move(known.places), each.places);
      known.sources |= each.sources;
      rows->Edit();
      WriteKnown(*rows, known);
      rows->Update();
      ++learned.known;
      continue;
    }
    if (count >= most) {
      ++learned.beyond;
      continue;
    }
    rows->AddNew();
    rows->Set("Call", each.call);
    KnownCall fresh = each;
    fresh.places = PlacesTogether({}, each.places);
    WriteKnown(*rows, fresh);
    rows->Update();
    ++learned.fresh;
    ++count;
  }
  return learned;
}

}  // namespace brenvo::core
