#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "gara/log_file.h"
#include "log_reader.h"
#include "plain_line.h"

namespace brenvo::gara {
namespace {

// Which tag a word of a category belongs to.
struct TagWords {
  std::string_view tag;
  std::vector<std::string_view> words;
};
const std::vector<TagWords>& CategoryTags() {
  static const std::vector<TagWords> kTags = {
      {"CATEGORY-OPERATOR", {"SINGLE-OP", "MULTI-OP", "CHECKLOG"}},
      {"CATEGORY-ASSISTED", {"ASSISTED", "NON-ASSISTED"}},
      {"CATEGORY-BAND",
       {"ALL", "160M", "80M", "40M", "20M", "15M", "10M", "6M", "2M", "222", "432", "1.2G"}},
      {"CATEGORY-MODE", {"CW", "DIGI", "FM", "RTTY", "SSB", "MIXED"}},
      {"CATEGORY-POWER", {"HIGH", "LOW", "QRP"}},
      {"CATEGORY-STATION",
       {"FIXED", "MOBILE", "PORTABLE", "ROVER", "EXPEDITION", "HQ", "SCHOOL", "DISTRIBUTED"}},
      {"CATEGORY-TRANSMITTER", {"ONE", "TWO", "LIMITED", "UNLIMITED", "SWL"}},
      {"CATEGORY-TIME", {"6-HOURS", "8-HOURS", "12-HOURS", "24-HOURS"}},
      {"CATEGORY-OVERLAY",
       {"CLASSIC", "ROOKIE", "TB-WIRES", "YOUTH", "NOVICE-TECH", "YL", "OVER-50"}}};
  return kTags;
}

struct ModeCode {
  std::string_view code, family;
};
constexpr ModeCode kModes[] = {
    {"CW", "CW"}, {"PH", "SSB"}, {"FM", "FM"}, {"RY", "RTTY"}, {"DG", "DIGI"}};

std::string_view CodeOf(std::string_view mode) {
  const std::string_view family = ModeFamily(mode);
  if (family == "AM") return "PH";
  for (const ModeCode& each : kModes) {
    if (each.family == family) return each.code;
  }
  return "DG";
}

// What one side sends, but the report, in the order of the rules; a part that is not there leaves
// a dash, so that columns stay columns.
std::string SentBy(const Rule& rule, std::int64_t serial, std::string_view exchange,
                   std::string_view locator) {
  std::string all;
  const auto add = [&](std::string_view part) {
    if (!all.empty()) all += ' ';
    all += part.empty() ? "-" : part;
  };
  bool either = false;  // a province or a serial, whichever a station sends
  for (const ExchangePart& part : rule.exchange) {
    switch (part.kind) {
      case PartKind::kReport:
        break;
      case PartKind::kSerial:
        if (part.mayLack && rule.Part(PartKind::kProvince) != nullptr) {
          either = true;
        } else {
          add(serial > 0 ? fmt::format("{:03}", serial) : "");
        }
        break;
      case PartKind::kLocator:
        add(base::UpperAscii(locator));
        break;
      case PartKind::kProvince:
      case PartKind::kOwn: {
        std::string text = base::UpperAscii(exchange);
        std::ranges::replace(text, ' ', '-');
        const ExchangePart* const number = rule.Part(PartKind::kSerial);
        if (text.empty() && number != nullptr && number->mayLack && serial > 0) {
          text = fmt::format("{:03}", serial);
        }
        add(text);
        break;
      }
    }
  }
  if (all.empty() && either) add(serial > 0 ? fmt::format("{:03}", serial) : "");
  return all;
}

class CabrilloReader : public LogReader {
  void Finish() override {
    if (log_.Head("START-OF-LOG").empty()) Note(0, "manca START-OF-LOG");
    if (!ended_) Note(0, "manca END-OF-LOG: forse il file non è intero");
    log_.call = base::UpperAscii(log_.Head("CALLSIGN"));
    log_.contest = log_.Head("CONTEST");
    log_.locator = base::UpperAscii(log_.Head("GRID-LOCATOR"));
  }

  void Line(std::string_view whole) override {
    const std::string line = base::Trim(whole);
    if (line.empty()) return;
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
      Note(line_, "la riga non ha i due punti");
      return;
    }
    std::string tag = base::UpperAscii(base::Trim(line.substr(0, colon)));
    const std::string value = base::Trim(line.substr(colon + 1));
    if (tag == "QSO") {
      Qso(value);
    } else if (tag == "X-QSO") {
      Note(line_, "X-QSO: un QSO che non conta");
    } else if (tag == "END-OF-LOG") {
      ended_ = true;
    } else if (tag == "SOAPBOX") {
      log_.remarks.push_back(value);
    } else {
      log_.head.emplace_back(std::move(tag), value);
    }
  }

  void Qso(const std::string& value) {
    std::vector<std::string> words;
    for (const std::string_view each : Split(value, ' ')) {
      for (const std::string_view word : Split(each, '\t')) {
        if (!word.empty()) words.emplace_back(word);
      }
    }
    const auto refuse = [&](std::string_view why) {
      Note(line_, fmt::format("QSO non letto: {}", why));
    };
    if (words.size() < 8) return refuse("mancano dei campi");
    ReadContact read;
    read.line = line_;
    Contact& contact = read.contact;
    const BandName* const band = BandOfText(words[0]);
    if (band == nullptr) return refuse(fmt::format("la frequenza \"{}\"", words[0]));
    contact.band = band->log;
    const std::string mode = base::UpperAscii(words[1]);
    const auto code = std::ranges::find(kModes, mode, &ModeCode::code);
    contact.mode = code == std::end(kModes) ? mode : std::string(code->family);
    if (code == std::end(kModes)) Note(line_, fmt::format("il modo è scritto \"{}\"", words[1]));
    const auto day = words[2].size() == 10 ? base::ParseIso(words[2]) : std::nullopt;
    if (!day) return refuse(fmt::format("la data \"{}\"", words[2]));
    if (!IsNumber(words[3], 4) || words[3].size() != 4) {
      return refuse(fmt::format("l'ora \"{}\"", words[3]));
    }
    const std::int64_t hhmm = NumberOf(words[3]);
    if (hhmm / 100 > 23 || hhmm % 100 > 59) return refuse(fmt::format("l'ora \"{}\"", words[3]));
    contact.time = day->DatePart().Later((hhmm / 100 * 60 + hhmm % 100) * 60);
    std::vector<std::string> sides(words.begin() + 4, words.end());
    if (sides.size() % 2 != 0 && (sides.back() == "0" || sides.back() == "1")) sides.pop_back();
    std::size_t theirs = sides.size() / 2;
    if (sides.size() % 2 != 0) {
      // Halves of different lengths: theirs begins with a call that has a report behind it.
      theirs = 0;
      for (std::size_t i = 2; i + 1 < sides.size() && theirs == 0; ++i) {
        if (LooksLikeCall(sides[i]) && !IsLocator(sides[i], 6) && IsNumber(sides[i + 1], 3)) {
          theirs = i;
        }
      }
      if (theirs == 0) return refuse("non si capisce dove comincia il corrispondente");
      Note(line_, "i due scambi hanno lunghezze diverse");
    }
    const std::vector<std::string> mine(sides.begin(),
                                        sides.begin() + static_cast<std::ptrdiff_t>(theirs));
    const std::vector<std::string> other(sides.begin() + static_cast<std::ptrdiff_t>(theirs),
                                         sides.end());
    contact.call = base::UpperAscii(other[0]);
    if (!LooksLikeCall(contact.call)) return refuse(fmt::format("il nominativo \"{}\"", other[0]));
    std::string ignored, own;
    contact.reportSent = mine.size() > 1 ? mine[1] : "";
    contact.reportReceived = other.size() > 1 ? other[1] : "";
    Parts(mine, contact.serialSent, own, ignored);
    Parts(other, contact.serialReceived, contact.exchange, contact.locator);
    if (log_.exchange.empty()) log_.exchange = own;
    log_.contacts.push_back(std::move(read));
  }

  // Behind call and report: a number, a locator, and what is left.
  static void Parts(const std::vector<std::string>& side, std::int64_t& serial,
                    std::string& exchange, std::string& locator) {
    for (std::size_t i = 2; i < side.size(); ++i) {
      const std::string part = base::UpperAscii(side[i]);
      if (part == "-") continue;
      if (IsNumber(part, 6) && serial == 0) {
        serial = NumberOf(part);
      } else if (IsLocator(part, 6) && locator.empty()) {
        locator = part;
      } else {
        exchange += (exchange.empty() ? "" : " ") + part;
      }
    }
  }

  bool ended_ = false;
};

}  // namespace

WrittenLog WriteCabrillo(const Rule& rule, const LogHead& head, std::span<const LogRow> rows,
                         std::int64_t score) {
  WrittenLog written;
  std::string& out = written.bytes;
  const auto plain = [&](std::string_view field, std::string_view text) {
    return PlainLine(field, text, kNoParting, written.changes);
  };
  const auto tag = [&](std::string_view name, std::string_view value) {
    const std::string told = plain(name, value);
    if (!told.empty()) out += fmt::format("{}: {}\r\n", name, told);
  };
  tag("START-OF-LOG", "3.0");
  tag("CALLSIGN", base::UpperAscii(head.call));
  tag("CONTEST", rule.contestId);
  for (const std::string_view word : Split(head.category, ' ')) {
    for (const TagWords& each : CategoryTags()) {
      if (std::ranges::find(each.words, word) != each.words.end()) tag(each.tag, word);
    }
  }
  tag("CLAIMED-SCORE", fmt::format("{}", score));
  tag("OPERATORS", head.operators);
  tag("CLUB", head.club);
  tag("GRID-LOCATOR", base::UpperAscii(head.locator));
  tag("LOCATION", "DX");
  tag("NAME", head.name);
  tag("ADDRESS", head.street);
  tag("ADDRESS-CITY", head.city);
  tag("ADDRESS-POSTALCODE", head.postCode);
  tag("ADDRESS-COUNTRY", head.country);
  tag("EMAIL", head.mail);
  tag("CREATED-BY", "Brenvo");
  for (const std::string& remark : head.remarks) tag("SOAPBOX", remark);
  const ExchangePart* const number = rule.Part(PartKind::kSerial);
  const bool sendsSerial = number != nullptr && !number->mayLack;
  for (const LogRow& row : rows) {
    const Contact& contact = row.contact;
    const BandName* const band = FindBand(contact.band);
    const std::string mine = SentBy(rule, sendsSerial ? contact.serialSent : 0,
                                    plain("scambio dato", head.exchange), head.locator);
    const std::string theirs =
        SentBy(rule, contact.serialReceived, plain("scambio", contact.exchange), contact.locator);
    out += fmt::format(
        "QSO: {:>5} {} {:04}-{:02}-{:02} {:02}{:02} {:<13} {:>3} {:<6} {:<13} {:>3} {:<6}",
        band == nullptr ? std::string_view("?") : band->cabrillo, CodeOf(contact.mode),
        contact.time.Year(), contact.time.Month(), contact.time.Day(), contact.time.Hour(),
        contact.time.Minute(), base::UpperAscii(head.call),
        plain("rapporto dato", contact.reportSent), mine,
        plain("nominativo", base::UpperAscii(contact.call)),
        plain("rapporto ricevuto", contact.reportReceived), theirs);
    out.erase(out.find_last_not_of(' ') + 1);
    out += "\r\n";
  }
  out += "END-OF-LOG:\r\n";
  return written;
}

ReadContestLog ReadCabrillo(std::string_view bytes) { return CabrilloReader().Read(bytes); }

}  // namespace brenvo::gara
