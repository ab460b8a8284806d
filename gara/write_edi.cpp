#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "base/number.h"
#include "base/text.h"
#include "gara/log_file.h"
#include "plain_line.h"

namespace brenvo::gara {
namespace {

char ModeCode(std::string_view mode) {
  const std::string plain = base::UpperAscii(base::Trim(mode));
  if (plain == "SSB/CW") return '3';
  if (plain == "CW/SSB") return '4';
  if (plain == "SSTV") return '8';
  if (plain == "ATV") return '9';
  const std::string_view family = ModeFamily(plain);
  if (family == "SSB") return '1';
  if (family == "CW") return '2';
  if (family == "AM") return '5';
  if (family == "FM") return '6';
  if (family == "RTTY") return '7';
  return '0';
}

std::string Serial(std::int64_t serial) {
  return serial > 0 ? fmt::format("{:03}", serial) : std::string();
}

std::string LongDate(base::DateTime day) {
  return fmt::format("{:04}{:02}{:02}", day.Year(), day.Month(), day.Day());
}

// The values that are new with each row, of one kind.
class FirstTimes {
 public:
  bool Add(const std::string& value) { return !value.empty() && seen_.insert(value).second; }
  std::size_t size() const { return seen_.size(); }

 private:
  std::set<std::string> seen_;
};

struct Sums {
  std::int64_t valid = 0, points = 0, multipliers = 0;
  FirstTimes squares, exchanges, countries;
  const LogRow* farthest = nullptr;
  double farthestKm = 0;
};

}  // namespace

WrittenLog WriteEdi(const Rule& rule, const LogHead& head, std::string_view band,
                    std::span<const LogRow> rows) {
  WrittenLog written;
  const auto plain = [&](std::string_view field, std::string_view text) {
    return PlainLine(field, text, ';', written.changes);
  };
  Sums sums;
  std::string records;
  for (const LogRow& row : rows) {
    const Contact& contact = row.contact;
    const bool isDuplicate = row.worth.duplicateOf.has_value();
    const std::string locator = base::UpperAscii(base::Trim(contact.locator));
    const std::string exchange = plain("scambio", contact.exchange);
    const bool newSquare = !isDuplicate && sums.squares.Add(locator.substr(0, 4));
    const bool newExchange = !isDuplicate && sums.exchanges.Add(base::UpperAscii(exchange));
    const bool newCountry = !isDuplicate && sums.countries.Add(contact.place.country);
    const std::string call = plain("nominativo", base::UpperAscii(contact.call));
    records += fmt::format("{:02}{:02}{:02};{:02}{:02};{};{};{};{};{};{};{};{};{};{};{};{};{}\r\n",
                           contact.time.Year() % 100, contact.time.Month(), contact.time.Day(),
                           contact.time.Hour(), contact.time.Minute(), call, ModeCode(contact.mode),
                           plain("rapporto dato", contact.reportSent), Serial(contact.serialSent),
                           plain("rapporto ricevuto", contact.reportReceived),
                           Serial(contact.serialReceived), exchange, plain("locatore", locator),
                           row.worth.points, newExchange ? "N" : "", newSquare ? "N" : "",
                           newCountry ? "N" : "", isDuplicate ? "D" : "");
    if (isDuplicate) continue;
    ++sums.valid;
    sums.points += row.worth.points;
    sums.multipliers += std::ssize(row.worth.multipliers);
    const auto km = DistanceKm(head.locator, locator, rule.points.kmPerDegree);
    if (km && (sums.farthest == nullptr || *km > sums.farthestKm)) {
      sums.farthest = &row;
      sums.farthestKm = *km;
    }
  }

  std::string& out = written.bytes;
  const auto line = [&](std::string_view name, std::string_view value) {
    out += fmt::format("{}={}\r\n", name, value);
  };
  const auto text = [&](std::string_view name, std::string_view value) {
    line(name, plain(name, value));
  };
  const BandName* const known = FindBand(band);
  out += "[REG1TEST;1]\r\n";
  text("TName", head.contest);
  line("TDate", LongDate(head.begin) + ';' + LongDate(head.end));
  text("PCall", base::UpperAscii(head.call));
  text("PWWLo", base::UpperAscii(head.locator));
  text("PExch", head.exchange);
  text("PAdr1", head.address1);
  text("PAdr2", head.address2);
  text("PSect", head.category);
  line("PBand", known == nullptr ? plain("PBand", band) : std::string(known->edi));
  text("PClub", head.club);
  text("RName", head.name);
  text("RCall", base::UpperAscii(head.ownCall));
  text("RAdr1", head.street);
  line("RAdr2", "");
  text("RPoCo", head.postCode);
  text("RCity", head.city);
  text("RCoun", head.country);
  text("RPhon", head.phone);
  text("RHBBS", head.mail);
  text("MOpe1", head.operators);
  line("MOpe2", "");
  text("STXEq", head.transmitter);
  text("SPowe", head.power);
  text("SRXEq", head.receiver);
  text("SAnte", head.antenna);
  line("SAntH", plain("SAntH", head.height) + ';' + plain("SAntH", head.above));
  line("CQSOs", fmt::format("{};1", sums.valid));
  line("CQSOP", fmt::format("{}", sums.points));
  line("CWWLs", fmt::format("{};0;1", sums.squares.size()));
  line("CWWLB", "0");
  line("CExcs", fmt::format("{};0;1", sums.exchanges.size()));
  line("CExcB", "0");
  line("CDXCs", fmt::format("{};0;1", sums.countries.size()));
  line("CDXCB", "0");
  line("CToSc",
       fmt::format("{}", rule.multipliers.empty() ? sums.points : sums.points * sums.multipliers));
  line("CODXC",
       sums.farthest == nullptr
           ? std::string(";;")
           : fmt::format("{};{};{}", plain("CODXC", base::UpperAscii(sums.farthest->contact.call)),
                         base::UpperAscii(base::Trim(sums.farthest->contact.locator)),
                         static_cast<std::int64_t>(sums.farthestKm)));
  out += "[Remarks]\r\n";
  for (const std::string& remark : head.remarks) {
    const std::string told = PlainLine("Remarks", remark, kNoParting, written.changes);
    // A line in brackets would begin another part of the file.
    out += (told.starts_with('[') ? " " + told : told) + "\r\n";
  }
  out += fmt::format("[QSORecords;{}]\r\n", rows.size());
  out += records;
  return written;
}

}  // namespace brenvo::gara
