#include "bench/support/bench_station.h"

#include <string>

#include "bench/support/hand.h"
#include "station/station.h"
#include "tests/support/places.h"
#include "tools/mklog/log_maker.h"

namespace brenvo::bench {
namespace {

std::filesystem::path LogOf(std::int64_t contacts) {
  const std::filesystem::path build = BuildDir();
  const auto kept = build / "logs" / (std::to_string(contacts) + ".mdb");
  if (!std::filesystem::exists(kept)) {
    std::filesystem::create_directories(kept.parent_path());
    auto unfinished = kept;
    unfinished += ".new";
    std::filesystem::copy_file(build / "delivered" / "Brenvo.mdb", unfinished,
                               std::filesystem::copy_options::overwrite_existing);
    mklog::MakeLog(unfinished, contacts);
    std::filesystem::rename(unfinished, kept);
  }
  return kept;
}

}  // namespace

BenchDirectory::BenchDirectory(std::int64_t contacts) {
  for (const auto& each : std::filesystem::directory_iterator(BuildDir() / "delivered")) {
    if (each.path().filename() == "Brenvo.mdb") continue;
    std::filesystem::create_symlink(each.path(), Path() / each.path().filename());
  }
  std::filesystem::copy_file(LogOf(contacts), File());
}

BenchStation::BenchStation(std::int64_t size) : contacts(size), directory(size) {
  machine.SetNow(base::DateTime::Of(2025, 6, 1, 10, 30));
  frame = station::StartStation(session);
  if (frame == nullptr) throw std::runtime_error("the station does not start");
  sqlite3_open_v2(directory.File().c_str(), &file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                  nullptr);
  RunByHand(file, "PRAGMA synchronous=FULL; PRAGMA cache_size=-32768");
  sqlite3_busy_timeout(file, 2000);
}

BenchStation::~BenchStation() {
  station::StopStation(session);
  sqlite3_close(file);
}

}  // namespace brenvo::bench
