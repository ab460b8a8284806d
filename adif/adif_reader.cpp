#include "adif/adif_reader.h"

#include <algorithm>
#include <cstring>

#include "adif/adif_names.h"
#include "base/encoding.h"
#include "base/text.h"
#include "plain_name.h"

namespace brenvo::adif {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 18;
// Of a record too long to be held.
constexpr std::size_t kShown = 4096;
// How far behind a value the next tag is looked for.
constexpr std::size_t kLookAhead = 512;
// A value that holds what is likely a tag is counted in other ways only up to this length: lengths
// that mean nothing shall not cost more than a look.
constexpr std::size_t kLongestRecounted = 1024;

constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0'; }
constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

bool IsContactsOwn(std::string_view name) {
  return base::SameText(name, "CALL") || base::SameText(name, "QSO_DATE");
}

}  // namespace

std::string TextOfBytes(std::string_view bytes) {
  if (base::IsAscii(bytes)) return std::string(bytes);
  std::string text = base::ValidUtf8(bytes);
  return text == bytes ? text : base::FromWindows1252(bytes);
}

const std::string* AdifRecord::Find(std::string_view name) const {
  for (const AdifField& field : fields) {
    if (field.name == name && !field.value.empty()) return &field.value;
  }
  return nullptr;
}

AdifReader::AdifReader(Source source) : source_(std::move(source)) {}

void AdifReader::CountTo(std::size_t position) {
  if (counted_ >= position) return;
  line_ += std::count(buffer_.begin() + static_cast<std::ptrdiff_t>(counted_),
                      buffer_.begin() + static_cast<std::ptrdiff_t>(position), '\n');
  counted_ = position;
}

void AdifReader::DropTo(std::size_t position) {
  if (position == 0) return;
  CountTo(position);
  buffer_.erase(0, position);
  at_ -= position;
  counted_ -= position;
  begin_ = begin_ > position ? begin_ - position : 0;
  end_ = end_ > position ? end_ - position : 0;
  bytesBefore_ += static_cast<std::int64_t>(position);
}

bool AdifReader::Have(std::size_t size) {
  while (buffer_.size() - at_ < size && !sourceEnded_) {
    // What stands before the record is not needed any more.
    if (begin_ >= kChunk) DropTo(begin_);
    const std::size_t filled = buffer_.size();
    buffer_.resize(filled + kChunk);
    const std::size_t got = source_(buffer_.data() + filled, kChunk);
    buffer_.resize(filled + got);
    if (got == 0) sourceEnded_ = true;
  }
  return buffer_.size() - at_ >= size;
}

bool AdifReader::FindTag() {
  while (true) {
    const std::size_t found = buffer_.find('<', at_);
    at_ = std::min(found, buffer_.size());
    if (place_ == Place::kBetween) begin_ = at_;
    if (found != std::string::npos) return true;
    if (at_ - begin_ > kLongestRecord) {
      if (place_ == Place::kInside) return true;
      Shorten();
    }
    if (!Have(1)) return false;
  }
}

// Of a record that is passed over the beginning stays, to be shown.
void AdifReader::Shorten() {
  const std::size_t keep = begin_ + kShown;
  CountTo(at_);
  bytesBefore_ += static_cast<std::int64_t>(at_ - keep);
  buffer_.erase(keep, at_ - keep);
  at_ = counted_ = keep;
}

bool AdifReader::ReadTag(AdifTag& tag) {
  Have(kLongestAdifTag);
  return ReadAdifTag(std::string_view(buffer_).substr(at_), tag);
}

// A header's lengths are not to be trusted: it ends where it says so. What stands behind a
// contact's own field is no header but a text that the first record holds.
void AdifReader::PassHeader() {
  started_ = true;
  Have(kLongestRecord + kLongestAdifTag);
  std::size_t end = std::string::npos;
  AdifTag tag;
  for (std::size_t at = buffer_.find('<'); at < kLongestRecord && end == std::string::npos;
       at = buffer_.find('<', at + 1)) {
    if (!ReadAdifTag(std::string_view(buffer_).substr(at), tag)) continue;
    if (tag.hasLength ? IsContactsOwn(tag.name) : base::SameText(tag.name, "EOR")) return;
    if (!tag.hasLength && base::SameText(tag.name, "EOH")) end = at;
  }
  if (end == std::string::npos) return;
  const std::string_view header = std::string_view(buffer_).substr(0, end);
  for (std::size_t at = FindLikelyTag(header, 0, end); at != header.npos;
       at = FindLikelyTag(header, at, end)) {
    ReadAdifTag(header.substr(at), tag);
    at += tag.size;
    const std::size_t next = std::min(FindLikelyTag(header, at, end), end);
    const std::string_view value = header.substr(at, std::min(tag.length, next - at));
    header_.push_back({base::UpperAscii(TextOfBytes(tag.name)), TextOfBytes(Stripped(value))});
  }
  ReadAdifTag(std::string_view(buffer_).substr(end), tag);
  at_ = end + tag.size;
}

// Only white space up to the next tag, or to the end of the file unless a tag is passed over.
bool AdifReader::Fits(std::size_t size) const {
  std::size_t at = at_ + size;
  if (at > buffer_.size()) return false;
  const std::size_t limit = std::min(buffer_.size(), at + kLookAhead);
  while (at < limit && IsSpace(buffer_[at])) ++at;
  if (at >= buffer_.size()) return !HoldsTag(size);
  if (at >= limit) return true;
  return buffer_[at] == '<' && at + 1 < buffer_.size() && IsAdifNameCharacter(buffer_[at + 1]);
}

bool AdifReader::LeadsToSpace(std::size_t size) const {
  const std::size_t at = at_ + size;
  return at >= buffer_.size() || IsSpace(buffer_[at]);
}

bool AdifReader::HoldsTag(std::size_t size) const {
  return FindLikelyTag(buffer_, at_, at_ + size) != std::string::npos;
}

// The bytes of a value of this length counted in characters, or with line ends counted as one
// character where the file has two, or as two where it has one; npos when none of these leads on.
std::size_t AdifReader::Recounted(std::size_t length, std::size_t& inCharacters) const {
  enum class Ends { kAsTheyAre, kTwoAreOne, kOneIsTwo };
  constexpr std::pair<bool, Ends> kWays[] = {{true, Ends::kAsTheyAre},
                                             {true, Ends::kTwoAreOne},
                                             {false, Ends::kTwoAreOne},
                                             {true, Ends::kOneIsTwo},
                                             {false, Ends::kOneIsTwo}};
  for (const auto& [characters, ends] : kWays) {
    std::size_t at = at_, left = length;
    for (; left > 0 && at < buffer_.size(); --left) {
      const bool two = buffer_[at] == '\r' && at + 1 < buffer_.size() && buffer_[at + 1] == '\n';
      if (two && ends == Ends::kTwoAreOne) ++at;
      const bool one = buffer_[at] == '\n' && (at == at_ || buffer_[at - 1] != '\r');
      if (one && ends == Ends::kOneIsTwo && left > 1) --left;
      ++at;
      while (characters && at < buffer_.size() && IsContinuation(buffer_[at])) ++at;
    }
    if (left > 0) continue;
    if (characters && ends == Ends::kAsTheyAre) inCharacters = at - at_;
    if (Fits(at - at_)) return at - at_;
  }
  return std::string::npos;
}

// A value that leads on to a tag may have swallowed the end of its record and a part of the next:
// then the record has a field of that name already.
bool AdifReader::HoldsRecordsEnd(std::size_t size, const AdifRecord& record) const {
  const std::string_view bytes(buffer_);
  if (bytes.substr(at_, size).find('<') == bytes.npos) return false;
  AdifTag tag;
  bool end = false;
  for (std::size_t at = FindLikelyTag(bytes, at_, at_ + size); at != bytes.npos && !end;
       at = FindLikelyTag(bytes, at + 1, at_ + size)) {
    ReadAdifTag(bytes.substr(at), tag);
    end = !tag.hasLength && base::SameText(tag.name, "EOR");
  }
  if (!end) return false;
  const std::size_t next = bytes.substr(0, at_ + size + kLookAhead).find('<', at_ + size);
  if (next == bytes.npos || !ReadAdifTag(bytes.substr(next), tag)) return false;
  return std::any_of(record.fields.begin(), record.fields.end(),
                     [&](const AdifField& field) { return base::SameText(field.name, tag.name); });
}

// The bytes of a value of this length, npos when no way of counting leads on.
std::size_t AdifReader::ValueSize(std::size_t length) const {
  if (length > kLongestValue) return std::string::npos;
  if (Fits(length)) return length;
  if (length > kLongestRecounted && HoldsTag(length)) return std::string::npos;
  std::size_t inCharacters = length;
  const std::size_t recounted = Recounted(length, inCharacters);
  if (recounted != std::string::npos) return recounted;
  for (const std::size_t size : {length, inCharacters}) {
    const bool split = at_ + size < buffer_.size() && IsContinuation(buffer_[at_ + size]);
    if (at_ + size > buffer_.size() || split || !LeadsToSpace(size)) continue;
    // Words follow that belong to no field; but a value that holds a tag was given too long.
    if (!HoldsTag(size)) return size;
  }
  return std::string::npos;
}

// Up to the first likely tag, however far it is from where it is due; npos when there is none.
std::size_t AdifReader::RepairedSize(std::size_t length) {
  const std::size_t due = std::min(length, kLongestValue);
  std::size_t looked = 0;
  while (true) {
    // A tag that may not be there whole yet is looked at again.
    const bool all = !Have(std::max(due, looked) + kChunk);
    const std::size_t end = all ? buffer_.size() - at_ : buffer_.size() - at_ - kLongestAdifTag;
    const std::size_t found = FindLikelyTag(buffer_, at_ + looked, at_ + end);
    if (found != std::string::npos) {
      return found - at_ <= due + kLongestValue ? found - at_ : std::string::npos;
    }
    looked = end;
    if (all || looked > due + kLongestValue) return std::string::npos;
  }
}

bool AdifReader::TakeValue(const AdifTag& tag, AdifRecord& record) {
  AdifField& field = record.fields.emplace_back();
  field.name = base::UpperAscii(TextOfBytes(tag.name));  // before the buffer moves
  at_ += tag.size;
  // Four bytes a character at the most, and a look beyond.
  Have(std::min(tag.length, kLongestValue) * 4 + kLookAhead + kLongestAdifTag);
  const bool beyond = buffer_.size() - at_ < tag.length;
  std::size_t size = ValueSize(tag.length);
  if (size == std::string::npos || HoldsRecordsEnd(size, record)) {
    size = RepairedSize(tag.length);
    if (size == std::string::npos) {
      record.fault =
          tag.length > kLongestValue ? "la lunghezza del campo " + field.name + " non è possibile"
          : beyond                   ? "il campo " + field.name + " va oltre la fine del file"
                   : "la lunghezza del campo " + field.name + " non corrisponde al testo";
      record.fields.pop_back();
      return false;
    }
    std::size_t read = size;
    while (read > 0 && IsSpace(buffer_[at_ + read - 1])) --read;
    record.repairs.push_back({record.fields.size() - 1, tag.length, read});
  }
  field.value = TextOfBytes(Stripped(std::string_view(buffer_).substr(at_, size)));
  at_ += size;
  return true;
}

// To behind the next "<EOR>"; false when the file ends before.
bool AdifReader::SkipRecord() {
  place_ = Place::kSkipping;
  while (FindTag()) {
    if (at_ - begin_ > kLongestRecord) Shorten();
    AdifTag tag;
    if (ReadTag(tag) && !tag.hasLength && base::SameText(tag.name, "EOR")) {
      at_ += tag.size;
      return true;
    }
    ++at_;
  }
  return false;
}

bool AdifReader::Next(AdifRecord& record) {
  if (!started_) PassHeader();
  if (at_ >= kChunk) DropTo(at_);
  record.fields.clear();
  record.repairs.clear();
  record.fault.clear();
  place_ = Place::kBetween;
  bool closed = false;
  while (!closed && FindTag()) {
    if (place_ == Place::kInside && at_ - begin_ > kLongestRecord) {
      record.fault = "il record non finisce mai";
      closed = SkipRecord();
      break;
    }
    AdifTag tag;
    if (!ReadTag(tag)) {
      ++at_;
      continue;
    }
    if (!tag.hasLength) {
      const bool endOfHeader = base::SameText(tag.name, "EOH") && record.Find("CALL") == nullptr;
      closed = place_ == Place::kInside && base::SameText(tag.name, "EOR");
      at_ += tag.size;
      if (endOfHeader) {
        header_ = std::move(record.fields);
        record.fields.clear();
        record.repairs.clear();
        place_ = Place::kBetween;
      }
      continue;
    }
    if (place_ == Place::kBetween) {
      place_ = Place::kInside;
      CountTo(begin_);
      record.line = line_;
    }
    const std::size_t data = at_ + tag.size - begin_;
    if (TakeValue(tag, record)) continue;
    at_ = begin_ + data;
    closed = SkipRecord();
    break;
  }
  end_ = at_;
  if (place_ == Place::kBetween) return false;
  if (!closed) {
    endsEarly_ = true;
    if (record.fault.empty()) record.fault = "il file finisce prima della fine del record";
  }
  return true;
}

std::string_view AdifReader::RecordBytes() const {
  return std::string_view(buffer_).substr(begin_, end_ - begin_);
}

std::string OtherThanAdif(std::string_view firstBytes) {
  struct Kind {
    std::string_view begins, what;
  };
  constexpr Kind kKinds[] = {
      {"<?xml", "un file XML (ADX)"},
      {"<ADX", "un file XML (ADX)"},
      {"<html", "una pagina HTML"},
      {"<!DOCTYPE", "una pagina HTML"},
      {"START-OF-LOG:", "un log Cabrillo"},
      {"[REG1TEST", "un log REG1TEST"},
      {"PK\x03\x04", "un archivio ZIP"},
      {"\x1F\x8B", "un archivio compresso"},
      {"%PDF", "un documento PDF"},
      {"SQLite format 3", "un database"},
      {std::string_view("\0\1\0\0Standard", 12), "un database"},
      {"\xFF\xFE", "un testo UTF-16"},
      {"\xFE\xFF", "un testo UTF-16"},
  };
  constexpr std::string_view kKnown[] = {"<CALL:",     "<QSO_DATE:",  "<EOR>",  "<EOH>",
                                         "<ADIF_VER:", "<PROGRAMID:", "<BAND:", "<FREQ:",
                                         "<MODE:",     "<TIME_ON:"};
  firstBytes = base::WithoutByteOrderMark(firstBytes);
  const std::string_view text = Stripped(firstBytes);
  if (text.empty()) return "un file vuoto";
  for (const Kind& kind : kKinds) {
    const bool binary = kind.begins.front() < ' ' || kind.begins.front() > '~';
    const std::string_view begin = (binary ? firstBytes : text).substr(0, kind.begins.size());
    if (base::SameText(begin, kind.begins)) return std::string(kind.what);
  }
  for (std::size_t at = firstBytes.find('<'); at != std::string_view::npos;
       at = firstBytes.find('<', at + 1)) {
    for (const std::string_view known : kKnown) {
      if (base::SameText(firstBytes.substr(at, known.size()), known)) return {};
    }
  }
  return "un file di un altro tipo";
}

}  // namespace brenvo::adif
