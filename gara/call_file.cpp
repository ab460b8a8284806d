#include "call_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "adif/adif_reader.h"
#include "adif/adif_values.h"
#include "base/text.h"
#include "plain_line.h"

namespace brenvo::gara {
namespace {

constexpr std::size_t kMostNotes = 200;
constexpr std::size_t kMostFields = 40;
constexpr std::string_view kOrder = "!!ORDER!!";

// The columns of a list that tells no order.
constexpr std::string_view kUsualOrder[] = {"CALL", "NAME", "LOC1", "LOC2"};

class CallFileReader {
 public:
  ReadCallFile Read(std::string_view bytes) {
    if (bytes.size() > kMostCallFileBytes) {
      read_.kind = "troppo lungo";
      Note(0, fmt::format("il file è più lungo di {} byte: non è stato letto", kMostCallFileBytes));
      return std::move(read_);
    }
    const std::string begin = base::UpperAscii(bytes.substr(0, 65536));
    const auto has = [&](std::string_view word) { return begin.find(word) != std::string::npos; };
    if (has("[REG1TEST") || has("START-OF-LOG")) {
      Log(bytes);
    } else if (has("<EOH>") || has("<CALL:")) {
      Adif(bytes);
    } else {
      Lines(TextOfBytes(bytes));
    }
    for (auto& [call, known] : calls_) {
      known.call = call;
      read_.calls.push_back(std::move(known));
    }
    return std::move(read_);
  }

 private:
  void Note(int line, std::string text) {
    if (read_.notes.size() < kMostNotes) {
      read_.notes.push_back({line, std::move(text)});
    } else if (read_.notes.size() == kMostNotes) {
      read_.notes.push_back({0, "altre osservazioni non sono scritte qui"});
    }
  }

  // False for what is no call.
  bool Learn(std::string_view written, const std::vector<std::string>& locators,
             std::optional<base::DateTime> seen, int source) {
    const std::string call = base::UpperAscii(base::Trim(written));
    if (!LooksLikeCall(call) || call.size() > core::kLongestKnownCall) return false;
    core::KnownCall& known = calls_[call];
    known.sources |= source;
    std::vector<core::PlaceOfCall> places;
    for (const std::string& each : locators) {
      const std::string locator = base::UpperAscii(base::Trim(each));
      if (IsLocator(locator, 6)) places.push_back({locator, seen, 1});
    }
    if (!places.empty()) {
      known.places = core::PlacesTogether(std::move(known.places), places);
    }
    return true;
  }

  void Log(std::string_view bytes) {
    const ReadContestLog log = ReadLogFile(bytes);
    read_.kind = "log di contest";
    read_.lines = std::ssize(log.contacts);
    for (const ReadNote& note : log.notes) Note(note.line, note.text);
    std::optional<base::DateTime> last;
    for (const ReadContact& each : log.contacts) {
      const base::DateTime day = each.contact.time.DatePart();
      last = std::max(last, std::optional(day));
      Learn(each.contact.call, {each.contact.locator}, day, core::kFromContestLog);
    }
    // Whoever sends the log was somewhere too.
    Learn(log.call, {log.locator}, last, core::kFromContestLog);
  }

  void Adif(std::string_view bytes) {
    read_.kind = "file ADIF";
    std::string_view left = bytes;
    adif::AdifReader reader([&left](char* buffer, std::size_t size) {
      const std::size_t part = left.copy(buffer, size);
      left.remove_prefix(part);
      return part;
    });
    for (adif::AdifRecord record; reader.Next(record);) {
      ++read_.lines;
      const auto field = [&](std::string_view name) {
        const std::string* const value = record.Find(name);
        return value == nullptr ? std::string() : *value;
      };
      const int line = static_cast<int>(std::min<std::int64_t>(record.line, 1 << 30));
      if (!record.fault.empty()) {
        Note(line, record.fault);
      } else if (!Learn(field("CALL"), {field("GRIDSQUARE").substr(0, 6)},
                        adif::DateIn(field("QSO_DATE")), core::kFromHistory)) {
        Refuse(line, field("CALL"));
      }
    }
  }

  // Lists of lines: what a line is, it shows itself.
  void Lines(const std::string& text) {
    std::vector<std::string> order(std::begin(kUsualOrder), std::end(kUsualOrder));
    bool ordered = false, columns = false;
    int number = 0;
    for (const std::string_view whole : LinesOf(text)) {
      ++number;
      const std::string line = base::Trim(whole);
      if (line.empty() || line[0] == '#' || line.starts_with("//")) continue;
      const char between = line.find(',') != std::string::npos   ? ','
                           : line.find(';') != std::string::npos ? ';'
                                                                 : '\0';
      if (base::UpperAscii(line.substr(0, kOrder.size())) == kOrder) {
        ordered = true;
        TakeOrder(line, between, order, number);
        continue;
      }
      ++read_.lines;
      if (between == '\0') {
        // A list of calls tells its own version as one more of them.
        if (line.starts_with("VER2") && line.size() == 11) {
          --read_.lines;
        } else if (!Learn(line, {}, {}, core::kFromSuperCheck)) {
          Refuse(number, line);
        }
        continue;
      }
      columns = true;
      const std::vector<std::string_view> fields = Split(line, between);
      if (fields.size() > kMostFields) {
        Note(number, fmt::format("{} campi sono troppi", fields.size()));
        continue;
      }
      std::string call;
      std::vector<std::string> locators;
      if (!ordered && fields.size() > 1 && IsLocator(base::Trim(fields[1]).substr(0, 4), 4)) {
        // Call, locator, and what else is known.
        call = fields[0];
        locators.emplace_back(fields[1]);
      } else {
        for (std::size_t i = 0; i < fields.size() && i < order.size(); ++i) {
          if (order[i] == "CALL") call = fields[i];
          if (order[i] == "LOC1" || order[i] == "LOC2") locators.emplace_back(fields[i]);
        }
      }
      if (call == "ZZZZZZ") {
        --read_.lines;  // the last line of some lists
      } else if (!Learn(call, locators, {}, core::kFromHistory)) {
        Refuse(number, call);
      }
    }
    read_.kind = ordered || columns ? "storia di nominativi" : "lista di nominativi";
  }

  void TakeOrder(const std::string& line, char between, std::vector<std::string>& order,
                 int number) {
    std::vector<std::string> told;
    if (between != '\0') {
      for (const std::string_view field : Split(line, between)) {
        if (told.size() == kMostFields) break;
        told.push_back(base::UpperAscii(base::Trim(field)));
      }
      told.erase(told.begin());
    }
    if (std::ranges::find(told, "CALL") == told.end()) {
      // One that stands alone leaves the order as it was.
      if (!told.empty()) Note(number, "l'ordine delle colonne non dice dov'è il nominativo");
      return;
    }
    order = std::move(told);
  }

  void Refuse(int number, std::string_view what) {
    Note(number, fmt::format("\"{}\" non è un nominativo", base::Left(std::string(what), 20)));
  }

  ReadCallFile read_;
  std::map<std::string, core::KnownCall> calls_;
};

}  // namespace

ReadCallFile ReadCallFileBytes(std::string_view bytes) { return CallFileReader().Read(bytes); }

}  // namespace brenvo::gara
