// Reads contacts out of a log file in the ADI form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "adif/adif_tags.h"

namespace brenvo::adif {

struct AdifField {
  std::string name;   // upper case
  std::string value;  // UTF-8, without white space at its ends
  friend bool operator==(const AdifField&, const AdifField&) = default;
};

// A field whose length told nothing that could be, and what was read of it all the same.
struct AdifRepair {
  std::size_t field = 0;  // its place among the record's fields
  std::size_t told = 0;   // the length in the file
  std::size_t read = 0;   // bytes read, without white space at the end
  friend bool operator==(const AdifRepair&, const AdifRepair&) = default;
};

struct AdifRecord {
  std::int64_t line = 0;            // of its first tag, from 1
  std::vector<AdifField> fields;    // in the order of the file
  std::vector<AdifRepair> repairs;  // likewise
  std::string fault;                // Italian: why it cannot be trusted; empty when it is sound
  // The value of the first field of that name that is not empty; null when there is none.
  const std::string* Find(std::string_view name) const;
};

// Takes bytes as they come and holds no more than the record in work, whatever the file holds.
//
// A tag is "<NAME:length>" or "<NAME:length:type>", its name in any case; "<EOR>" ends a record,
// "<EOH>" the header, where there is one, whatever lengths stand before it. Text between a value
// and the next tag counts for nothing.
// A length is taken in bytes, in characters of UTF-8, or with each line end as one character,
// whichever leads to the next tag. Where none does, the value is repaired: it ends before the first
// likely tag, whether the length goes beyond it or falls short of it. Where there is no such tag
// either, the record is faulty, and reading goes on behind the next "<EOR>". Values are UTF-8 where
// they can be, Windows-1252 otherwise.
class AdifReader {
 public:
  // Fills a buffer and tells how many bytes it gave; 0 at the end.
  using Source = std::function<std::size_t(char* buffer, std::size_t size)>;

  static constexpr std::size_t kLongestRecord = std::size_t{1} << 20;  // bytes
  static constexpr std::size_t kLongestValue = std::size_t{1} << 18;

  explicit AdifReader(Source source);

  // The next record; false at the end of the file. The record's strings are used again.
  bool Next(AdifRecord& record);
  // The last record's own bytes, until the next one is read; of a long faulty one the beginning.
  std::string_view RecordBytes() const;
  // What stood before "<EOH>".
  const std::vector<AdifField>& Header() const { return header_; }
  std::int64_t BytesRead() const { return bytesBefore_ + static_cast<std::int64_t>(at_); }
  // The file ends within a record.
  bool EndsEarly() const { return endsEarly_; }

 private:
  enum class Place { kBetween, kInside, kSkipping };

  // At least `size` bytes behind at_, unless the file ends.
  bool Have(std::size_t size);
  // To the next "<"; false at the end. Inside a record also true where it grows too long.
  bool FindTag();
  bool ReadTag(AdifTag& tag);
  void PassHeader();
  // False when the record cannot be trusted any more.
  bool TakeValue(const AdifTag& tag, AdifRecord& record);
  std::size_t ValueSize(std::size_t length) const;
  std::size_t Recounted(std::size_t length, std::size_t& inCharacters) const;
  std::size_t RepairedSize(std::size_t length);
  bool Fits(std::size_t size) const;
  bool LeadsToSpace(std::size_t size) const;
  bool HoldsTag(std::size_t size) const;
  bool HoldsRecordsEnd(std::size_t size, const AdifRecord& record) const;
  bool SkipRecord();
  void DropTo(std::size_t position);
  void CountTo(std::size_t position);
  void Shorten();

  Source source_;
  std::string buffer_;
  std::size_t at_ = 0;       // next byte to look at
  std::size_t begin_ = 0;    // of the record in work
  std::size_t end_ = 0;      // of the record read last
  std::size_t counted_ = 0;  // line ends are counted up to here
  std::int64_t line_ = 1;    // there
  std::int64_t bytesBefore_ = 0;
  Place place_ = Place::kBetween;
  bool started_ = false;
  bool sourceEnded_ = false;
  bool endsEarly_ = false;
  std::vector<AdifField> header_;
};

// The text that bytes of a file stand for: UTF-8 where they can be, Windows-1252 otherwise.
std::string TextOfBytes(std::string_view bytes);

// What a file is that is no log file, in Italian ("un file ADX (XML)"); empty when its first bytes
// (up to a megabyte) may be one.
std::string OtherThanAdif(std::string_view firstBytes);

}  // namespace brenvo::adif
