// Logs of contests as files: EDI (REG1TEST as the VHF handbook has it) and Cabrillo 3.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gara/count.h"
#include "gara/rule.h"

namespace brenvo::gara {

// A band by its names: the log's without blanks around it, those of both kinds of files.
struct BandName {
  std::string_view log, edi, cabrillo;
  double mhz;  // where it begins
};
std::span<const BandName> BandNames();
// Null for a band that contests do not know.
const BandName* FindBand(std::string_view log);
// By what a file may write: "144 MHz", "145", "1,3 GHz", "432MHZ", a frequency in kHz or MHz.
const BandName* BandOfText(std::string_view text);

// Who sends a log in, and from where. Texts may be empty.
struct LogHead {
  std::string contest;        // name of the contest, or of one of a series
  base::DateTime begin, end;  // the contest's days
  std::string call, locator, exchange, category;
  std::string address1, address2;  // of the place worked from
  std::string club, name, ownCall, street, postCode, city, country, phone, mail;
  std::string operators, transmitter, power, receiver, antenna;
  std::string height, above;  // of the antenna: over ground, over sea; m
  std::vector<std::string> remarks;
};

struct LogRow {
  Contact contact;
  Worth worth;
};

// A text that a file had to write otherwise.
struct WrittenOtherwise {
  std::string field, before, after;
};
struct WrittenLog {
  std::string bytes;
  std::vector<WrittenOtherwise> changes;
};

// The rows are those of one band, in the order of their serials.
WrittenLog WriteEdi(const Rule& rule, const LogHead& head, std::string_view band,
                    std::span<const LogRow> rows);
// Of all bands.
WrittenLog WriteCabrillo(const Rule& rule, const LogHead& head, std::span<const LogRow> rows,
                         std::int64_t score);
// All contacts as a log of ADI, whatever they are worth: for programs that know no contest.
std::string WriteAdif(const Rule& rule, const LogHead& head, std::span<const LogRow> rows);
// The name that the rules give to the file; always a plain name.
std::string LogFileName(const Rule& rule, const LogHead& head, std::string_view band);
// Whether a file can hold the text as it stands.
bool FitsEdi(std::string_view text);

struct ReadContact {
  int line = 0;
  Contact contact;
  bool isDuplicate = false;  // as the file says
  std::int64_t points = 0;   // likewise
};
struct ReadNote {
  int line = 0;  // 0: of the file as a whole
  std::string text;
};
struct ReadContestLog {
  std::vector<std::pair<std::string, std::string>> head;  // as it stands, names in capitals
  std::vector<std::string> remarks;
  std::string call, locator, exchange, contest, band;  // out of the head
  std::vector<ReadContact> contacts;
  std::vector<ReadNote> notes;  // what was repaired, and the lines that make no contact
  std::string Head(std::string_view name) const;
};

inline constexpr std::size_t kMostLogBytes = 32 << 20;

// Any bytes. Each line of a contact becomes one, or is told with its line and why it does not.
ReadContestLog ReadEdi(std::string_view bytes);
ReadContestLog ReadCabrillo(std::string_view bytes);
// Whichever it is.
ReadContestLog ReadLogFile(std::string_view bytes);

}  // namespace brenvo::gara
