#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "gara/log_file.h"
#include "log_reader.h"
#include "plain_line.h"

namespace brenvo::gara {
namespace {

constexpr std::size_t kFields = 15;

constexpr std::string_view kModes[] = {"",   "SSB", "CW",   "SSB/CW", "CW/SSB",
                                       "AM", "FM",  "RTTY", "SSTV",   "ATV"};

// The day in six or eight digits; nothing when it is none.
std::optional<base::DateTime> DayOf(std::string_view digits) {
  if (!IsNumber(digits, 8) || (digits.size() != 6 && digits.size() != 8)) return std::nullopt;
  std::int64_t year = NumberOf(digits.substr(0, digits.size() - 4));
  if (digits.size() == 6) year += year < 70 ? 2000 : 1900;
  const std::string text = fmt::format("{:04}-{}-{}", year, digits.substr(digits.size() - 4, 2),
                                       digits.substr(digits.size() - 2));
  return base::ParseIso(text);
}

// Minutes of the day, of "1405", "14:05", "905" and "140512".
std::optional<int> MinutesOf(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (c != ':' && c != '.' && c != ' ') digits += c;
  }
  if (digits.size() == 3) digits.insert(0, "0");
  if (digits.size() == 6) digits.resize(4);
  if (digits.size() != 4 || !IsNumber(digits, 4)) return std::nullopt;
  const int hour = static_cast<int>(NumberOf(std::string_view(digits).substr(0, 2)));
  const int minute = static_cast<int>(NumberOf(std::string_view(digits).substr(2)));
  if (hour > 23 || minute > 59) return std::nullopt;
  return hour * 60 + minute;
}

class EdiReader : public LogReader {
  enum class Part { kHead, kRemarks, kRecords };

  void Line(std::string_view whole) override {
    const std::string line = base::Trim(whole);
    if (line.empty()) return;
    if (line[0] == '[') {
      Section(line);
    } else if (LooksLikeRecord(line)) {
      if (part_ != Part::kRecords) {
        if (!told_) Note(line_, "manca [QSORecords]: i QSO cominciano qui");
        told_ = true;
      }
      Records(line);
    } else if (part_ == Part::kHead) {
      HeadLine(line);
    } else if (part_ == Part::kRemarks) {
      log_.remarks.push_back(line);
    } else {
      Note(line_, "la riga non è un QSO");
    }
  }

  void Section(const std::string& line) {
    const std::string upper = base::UpperAscii(line);
    if (upper.starts_with("[REG1TEST")) {
      ++heads_;
      if (heads_ > 1)
        Note(line_, "qui comincia un secondo log: le sue righe sono lette come le altre");
      part_ = Part::kHead;
    } else if (upper.starts_with("[REMARKS")) {
      part_ = Part::kRemarks;
    } else if (upper.starts_with("[QSORECORDS")) {
      part_ = Part::kRecords;
      const std::size_t from = upper.find(';');
      const std::size_t to = upper.find(']');
      const std::string count = from == std::string::npos || to == std::string::npos || to < from
                                    ? std::string()
                                    : base::Trim(upper.substr(from + 1, to - from - 1));
      if (IsNumber(count, 9)) {
        announced_ = announced_.value_or(0) + NumberOf(count);
      } else {
        Note(line_, "manca il numero dei QSO");
      }
      // A line may go on behind the bracket.
      if (to != std::string::npos && to + 1 < line.size()) Line(line.substr(to + 1));
    } else if (upper.starts_with("[END")) {
      part_ = Part::kRemarks;
    } else if (part_ == Part::kRemarks) {
      log_.remarks.push_back(line);
    } else {
      Note(line_, "parte sconosciuta del log");
    }
  }

  void HeadLine(const std::string& line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) {
      Note(line_, "la riga non è della testata");
      return;
    }
    std::string name = base::UpperAscii(base::Trim(line.substr(0, equals)));
    const std::string value = base::Trim(line.substr(equals + 1));
    if (!log_.Head(name).empty())
      Note(line_, fmt::format("{}= c'è due volte: vale la prima", name));
    log_.head.emplace_back(std::move(name), value);
  }

  // A record has its date first; whatever else is wrong with it.
  bool LooksLikeRecord(std::string_view line) const {
    const std::size_t signs = static_cast<std::size_t>(std::ranges::count(line, ';'));
    if (part_ == Part::kRecords) return signs >= 2;
    const std::string first = base::Trim(line.substr(0, line.find(';')));
    return signs >= 8 && IsNumber(first, 8) && first.size() >= 6;
  }

  // One line may hold several, where one ended without its line's end.
  void Records(std::string_view line) {
    std::vector<std::string_view> fields = Split(line, ';');
    while (fields.size() > kFields) {
      std::string_view last = fields[kFields - 1];
      std::string_view next = last;
      while (!next.empty() && (next[0] == 'D' || next[0] == 'd' || next[0] == ' ')) {
        next.remove_prefix(1);
      }
      if (!IsNumber(next, 8) || next.size() < 6) break;
      std::vector<std::string_view> one(fields.begin(), fields.begin() + kFields);
      one.back() = last.substr(0, last.size() - next.size());
      Note(line_, "due QSO su una riga");
      Record(one);
      std::vector<std::string_view> rest(fields.begin() + kFields - 1, fields.end());
      rest.front() = next;
      fields = std::move(rest);
    }
    Record(fields);
  }

  void Record(const std::vector<std::string_view>& fields) {
    ++records_;
    const auto field = [&](std::size_t at) {
      return at < fields.size() ? base::Trim(fields[at]) : std::string();
    };
    const auto refuse = [&](std::string_view why) {
      Note(line_, fmt::format("QSO non letto: {}", why));
      ++refused_;
    };
    const auto day = DayOf(field(0));
    if (!day) return refuse(fmt::format("la data \"{}\"", field(0)));
    const auto minutes = MinutesOf(field(1));
    if (!minutes) return refuse(fmt::format("l'ora \"{}\"", field(1)));
    ReadContact read;
    read.line = line_;
    Contact& contact = read.contact;
    contact.call = base::UpperAscii(field(2));
    if (!LooksLikeCall(contact.call)) return refuse(fmt::format("il nominativo \"{}\"", field(2)));
    contact.time = day->Later(*minutes * 60);
    if (field(0).size() == 8) longDates_ = true;
    const std::string mode = field(3);
    if (mode.size() == 1 && IsNumber(mode, 1)) {
      contact.mode = kModes[static_cast<std::size_t>(mode[0] - '0')];
    } else if (!mode.empty()) {
      contact.mode = base::UpperAscii(mode);
      Note(line_, fmt::format("il modo è scritto \"{}\"", mode));
    }
    contact.reportSent = field(4);
    contact.reportReceived = field(6);
    contact.serialSent = Serial(field(5), "dato");
    contact.serialReceived = Serial(field(7), "ricevuto");
    contact.exchange = base::UpperAscii(field(8));
    contact.locator = base::UpperAscii(field(9));
    if (!contact.locator.empty() && !IsLocator(contact.locator, 6)) {
      Note(line_, fmt::format("il locatore \"{}\" non è di sei lettere e cifre", contact.locator));
    }
    if (const std::string points = field(10); IsNumber(points, 9)) read.points = NumberOf(points);
    read.isDuplicate = base::UpperAscii(field(14)).starts_with('D');
    if (fields.size() < kFields) {
      Note(line_, fmt::format("{} campi invece di {}", fields.size(), kFields));
    } else if (fields.size() > kFields + 1 || (fields.size() > kFields && !field(15).empty())) {
      Note(line_, fmt::format("{} campi invece di {}", fields.size(), kFields));
    }
    log_.contacts.push_back(std::move(read));
  }

  std::int64_t Serial(const std::string& text, std::string_view which) {
    if (text.empty()) return 0;
    if (!IsNumber(text, 6)) {
      Note(line_, fmt::format("il progressivo {} \"{}\" non è un numero", which, text));
      return 0;
    }
    return NumberOf(text);
  }

  void Finish() override {
    log_.call = base::UpperAscii(log_.Head("PCALL"));
    log_.locator = base::UpperAscii(log_.Head("PWWLO"));
    log_.exchange = base::UpperAscii(log_.Head("PEXCH"));
    log_.contest = log_.Head("TNAME");
    const std::string band = log_.Head("PBAND");
    const BandName* const known = BandOfText(band);
    if (known != nullptr) log_.band = known->log;
    if (known == nullptr && !log_.contacts.empty()) {
      Note(0, fmt::format("la banda \"{}\" non si capisce", band));
    }
    if (heads_ == 0) Note(0, "manca [REG1TEST;1]");
    for (ReadContact& each : log_.contacts) each.contact.band = log_.band;
    if (announced_ && *announced_ != records_) {
      Note(0, fmt::format("[QSORecords] dice {} QSO, le righe sono {}", *announced_, records_));
    }
    if (longDates_) Note(0, "le date sono di otto cifre");
  }

  Part part_ = Part::kHead;
  int heads_ = 0;
  bool told_ = false, longDates_ = false;
  std::int64_t records_ = 0, refused_ = 0;
  std::optional<std::int64_t> announced_;
};

}  // namespace

ReadContestLog ReadEdi(std::string_view bytes) { return EdiReader().Read(bytes); }

ReadContestLog ReadLogFile(std::string_view bytes) {
  const std::string begin = base::UpperAscii(bytes.substr(0, 4096));
  const bool isCabrillo =
      begin.find("START-OF-LOG") != std::string::npos ||
      (begin.find("QSO:") != std::string::npos && begin.find("[REG1TEST") == std::string::npos);
  return isCabrillo ? ReadCabrillo(bytes) : ReadEdi(bytes);
}

}  // namespace brenvo::gara
