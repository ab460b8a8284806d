#include "reg1test.h"

#include <fmt/format.h>

#include <cmath>
#include <string_view>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"

namespace brenvo::contest {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string YearMonthDay(base::DateTime date) {
  return fmt::format("{:04}{:02}{:02}", date.Year(), date.Month(), date.Day());
}

std::string YearMonth(base::DateTime date) { return YearMonthDay(date).substr(0, 6); }

std::string TrimmedNumber(std::string_view field) { return base::PlainNumber(base::Val(field)); }

class Lines {
 public:
  void Add(std::string_view label, std::string_view value = "") {
    text_.append(label).append(value).append(kLineEnd);
  }
  // Stays on the line.
  void Begin(std::string_view text) { text_ += text; }
  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

void AddHead(Lines& lines, const ContestHeader& header, std::optional<double> bandMhz,
             std::int64_t lastDay) {
  lines.Add("[REG1TEST;1]");
  lines.Add("TName=", header.NomeContest);
  // A contest over the end of a month keeps its first month.
  lines.Add("TDate=", YearMonthDay(header.DataContest) + ";" + YearMonth(header.DataContest) +
                          std::to_string(lastDay));
  lines.Add("PCall=", header.CallContest);
  lines.Add("PWWLo=", header.Locator);
  lines.Add("PExch=");
  lines.Add("PAdr1=", header.SQTH + " (" + header.SProvincia + ")");
  lines.Add("PAdr2=");
  lines.Add("PSect=", header.Categoria);
  lines.Begin("PBand=");
  // Without the band its line does not end, and the next label follows on it.
  if (bandMhz) lines.Add(base::PlainNumber(std::floor(*bandMhz)), " MHz");
  lines.Add("PClub=");
  lines.Add("RName=", header.CallContest);
  lines.Add("RAdr1=", header.Indirizzo);
  lines.Add("RAdr2=");
  lines.Add("RPoCo=26010");
  lines.Add("RCity=", header.Qth);
  lines.Add("RCoun=Italy");
  for (const char* label : {"RPhon=", "RHBBS=", "MOpe1=", "MOpe2="}) lines.Add(label);
  lines.Add("STXEq=", header.RTX);
  lines.Add("SPowe=", TrimmedNumber(header.Potenza));
  lines.Add("SRXEq=", header.RTX);
  lines.Add("SAnte=", header.Antenna);
  lines.Add("SAntH=", TrimmedNumber(header.Altezza));
}

void AddSummary(Lines& lines, const ContestHeader& header, const Tally& tally) {
  // Squares follow the country switch, exchanges the square switch, and exchanges bear the label
  // of squares.
  struct Multiplier {
    std::string_view label, bonus;
    std::size_t count;
    bool counts;
  };
  const Multiplier multipliers[] = {
      {"CWWLs=", "CWWLB=0", tally.Squares.Count(), header.Country},
      {"CWWLs=", "CExcB=0", tally.Exchanges.Count(), header.Square},
      {"CDXCs=", "CDXCB=0", tally.Countries.Count(), header.Country},
  };
  lines.Add("CQSOs=", std::to_string(tally.QsoValidi) + ";1");
  lines.Add("CQSOP=", base::PlainNumber(tally.TotalePunti));
  std::size_t sum = 0;
  for (const Multiplier& each : multipliers) {
    lines.Add(each.label, fmt::format("{};0;{}", each.count, each.counts ? each.count : 1));
    lines.Add(each.bonus);
    if (each.counts) sum += each.count;
  }
  lines.Add("CToSc=",
            base::PlainNumber(static_cast<double>(sum == 0 ? 1 : sum) * tally.TotalePunti));
  lines.Add("CODXC=",
            tally.CallMaxQrb + ";" + tally.LocatorMaxQrb + ";" + base::PlainNumber(tally.MaxQrb));
  lines.Add("[Remarks]");
  lines.Add(base::Trim(header.Note));
  lines.Add("[QSORecords;", std::to_string(tally.TotaleQso) + "]");
}

void AddRecords(Lines& lines, const ContestHeader& header, const std::vector<Contact>& contacts,
                const CountryOfCall& countryOf) {
  const std::string month = YearMonth(header.DataContest);
  DistinctTexts exchanges, squares, countries;
  const auto newMark = [](DistinctTexts& seen, std::string_view text) {
    return !text.empty() && seen.Add(text) ? "N;" : ";";
  };
  for (const Contact& contact : contacts) {
    const std::string exchange = ExchangeOf(contact).value_or("");
    const auto number = [](std::int64_t value, std::string_view pattern) {
      return base::FormatNumber(static_cast<double>(value), pattern);
    };
    std::string record = month + number(contact.Giorno, "00") + ";";
    record += fmt::format("{:02}{:02};", contact.Qtr.Hour(), contact.Qtr.Minute());
    record += contact.Call + ";;";  // the mode code stays empty
    record += base::Trim(contact.QrkDato) + ";" + number(contact.ProgrDato, "0000") + ";";
    record += base::Trim(contact.QrkRicevuto) + ";" + number(contact.ProgrRicevuto, "0000") + ";";
    record += exchange + ";" + contact.Locator + ";" + base::PlainNumber(contact.Punti) + ";";
    record += newMark(exchanges, exchange);
    // A contact without a locator still counts the empty square once.
    record += squares.Add(SquareOf(contact)) ? "N;" : ";";
    record += newMark(countries, countryOf(contact.Call));
    // A duplicate leaves its line open, and the next record follows on it.
    if (IsDuplicate(contact)) {
      lines.Begin(record + "D");
    } else {
      lines.Add(record);
    }
  }
}

}  // namespace

std::string Reg1Test(const ContestHeader& header, std::optional<double> bandMhz,
                     const std::vector<Contact>& contacts, const Tally& tally,
                     const CountryOfCall& countryOf) {
  Lines lines;
  AddHead(lines, header, bandMhz, contacts.back().Giorno);
  AddSummary(lines, header, tally);
  AddRecords(lines, header, contacts, countryOf);
  return base::ToWindows1252(lines.Take());
}

}  // namespace brenvo::contest
