#include "adif/adif_reader.h"

#include <algorithm>
#include <cstring>

#include "adif/adif_names.h"
#include "adif/plain_name.h"
#include "base/encoding.h"
#include "base/text.h"

namespace brenvo {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 18;
constexpr std::size_t kLongestTag = 128;
// With room behind it for any length: what is kept of a record is written, and read again.
constexpr std::size_t kLongestName = 112;
// Of a record too long to be held.
constexpr std::size_t kShown = 4096;
// How far behind a value the next tag is looked for.
constexpr std::size_t kLookAhead = 512;

constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0'; }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }
constexpr bool IsNameCharacter(char c) {
  return c != '<' && c != '>' && c != ':' && static_cast<unsigned char>(c) > ' ';
}

bool HoldsTag(std::string_view bytes, std::string_view tag) {
  const auto found =
      std::search(bytes.begin(), bytes.end(), tag.begin(), tag.end(), [](char a, char b) {
        return SameText({&a, 1}, {&b, 1});
      });
  return found != bytes.end();
}

// A tag with a length, or one of the two without.
bool HoldsAnyTag(std::string_view bytes) {
  for (std::size_t at = bytes.find('<'); at != std::string_view::npos;
       at = bytes.find('<', at + 1)) {
    std::size_t end = at + 1;
    while (end < bytes.size() && IsNameCharacter(bytes[end])) ++end;
    if (end == at + 1 || end + 1 >= bytes.size()) continue;
    if (bytes[end] == ':' && IsDigit(bytes[end + 1])) return true;
  }
  return HoldsTag(bytes, "<EOR>");
}

}  // namespace

std::string TextOfBytes(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string text = ValidUtf8(bytes);
  return text == bytes ? text : FromWindows1252(bytes);
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

bool AdifReader::ReadTag(Tag& tag) {
  Have(kLongestTag);
  const std::string_view rest =
      std::string_view(buffer_).substr(at_, std::min(kLongestTag, buffer_.size() - at_));
  std::size_t at = 1;
  while (at < rest.size() && IsNameCharacter(rest[at])) ++at;
  tag.name = rest.substr(1, at - 1);
  if (tag.name.empty() || tag.name.size() > kLongestName || at >= rest.size()) return false;
  tag.hasLength = rest[at] == ':' && at + 1 < rest.size() && IsDigit(rest[at + 1]);
  tag.length = 0;
  if (tag.hasLength) {
    for (++at; at < rest.size() && IsDigit(rest[at]); ++at) {
      if (tag.length <= kLongestValue) {
        tag.length = tag.length * 10 + static_cast<std::size_t>(rest[at] - '0');
      }
    }
  }
  if (at < rest.size() && rest[at] == ':') {  // the type of the data, or no length at all
    ++at;
    while (at < rest.size() && rest[at] != '>' && rest[at] != '<') ++at;
  }
  while (at < rest.size() && rest[at] == ' ') ++at;
  if (at >= rest.size() || rest[at] != '>') return false;
  tag.size = at + 1;
  return true;
}

// Only white space up to the next tag, or to the end of the file.
bool AdifReader::LeadsToTag(std::size_t size) const {
  std::size_t at = at_ + size;
  const std::size_t limit = std::min(buffer_.size(), at + kLookAhead);
  while (at < limit && IsSpace(buffer_[at])) ++at;
  if (at >= limit) return true;
  return buffer_[at] == '<' && at + 1 < buffer_.size() && IsNameCharacter(buffer_[at + 1]);
}

bool AdifReader::LeadsToSpace(std::size_t size) const {
  const std::size_t at = at_ + size;
  return at >= buffer_.size() || IsSpace(buffer_[at]);
}

// The bytes of a value of this length, npos when no way of counting leads on.
std::size_t AdifReader::ValueSize(std::size_t length) {
  const auto fits = [&](std::size_t size) {
    return at_ + size <= buffer_.size() && LeadsToTag(size);
  };
  if (fits(length)) return length;
  // In characters, or with line ends counted as one character where the file has two, or as two
  // where it has one.
  enum class Ends { kAsTheyAre, kTwoAreOne, kOneIsTwo };
  constexpr std::pair<bool, Ends> kWays[] = {{true, Ends::kAsTheyAre},
                                             {true, Ends::kTwoAreOne},
                                             {false, Ends::kTwoAreOne},
                                             {true, Ends::kOneIsTwo},
                                             {false, Ends::kOneIsTwo}};
  std::size_t inCharacters = std::string::npos;
  for (const auto& [characters, ends] : kWays) {
    std::size_t at = at_;
    for (std::size_t left = length; left > 0 && at < buffer_.size(); --left) {
      const bool two = buffer_[at] == '\r' && at + 1 < buffer_.size() && buffer_[at + 1] == '\n';
      if (two && ends == Ends::kTwoAreOne) ++at;
      const bool one = buffer_[at] == '\n' && (at == at_ || buffer_[at - 1] != '\r');
      if (one && ends == Ends::kOneIsTwo && left > 1) --left;
      ++at;
      while (characters && at < buffer_.size() && IsContinuation(buffer_[at])) ++at;
    }
    if (characters && ends == Ends::kAsTheyAre) inCharacters = at - at_;
    if (fits(at - at_)) return at - at_;
  }
  for (const std::size_t size : {length, inCharacters}) {
    const bool split = at_ + size < buffer_.size() && IsContinuation(buffer_[at_ + size]);
    if (at_ + size > buffer_.size() || split || !LeadsToSpace(size)) continue;
    // Words follow that belong to no field; but a value that holds a tag was given too long.
    if (!HoldsAnyTag(std::string_view(buffer_).substr(at_, size))) return size;
  }
  return std::string::npos;
}

bool AdifReader::TakeValue(const Tag& tag, AdifField& field, std::string& fault) {
  field.name = UpperAscii(TextOfBytes(tag.name));  // before the buffer moves
  at_ += tag.size;
  if (tag.length > kLongestValue) {
    fault = "la lunghezza del campo " + field.name + " non e' possibile";
    return false;
  }
  // Four bytes a character at the most, and a look beyond.
  Have(tag.length * 4 + kLookAhead);
  if (buffer_.size() - at_ < tag.length) {
    fault = "il campo " + field.name + " va oltre la fine del file";
    return false;
  }
  const std::size_t size = ValueSize(tag.length);
  if (size == std::string::npos) {
    fault = "la lunghezza del campo " + field.name + " non corrisponde al testo";
    return false;
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
    Tag tag;
    if (ReadTag(tag) && !tag.hasLength && SameText(tag.name, "EOR")) {
      at_ += tag.size;
      return true;
    }
    ++at_;
  }
  return false;
}

bool AdifReader::Next(AdifRecord& record) {
  if (at_ >= kChunk) DropTo(at_);
  record.fields.clear();
  record.fault.clear();
  place_ = Place::kBetween;
  bool closed = false;
  while (!closed && FindTag()) {
    if (place_ == Place::kInside && at_ - begin_ > kLongestRecord) {
      record.fault = "il record non finisce mai";
      closed = SkipRecord();
      break;
    }
    Tag tag;
    if (!ReadTag(tag)) {
      ++at_;
      continue;
    }
    if (!tag.hasLength) {
      const bool endOfHeader = SameText(tag.name, "EOH");
      closed = place_ == Place::kInside && SameText(tag.name, "EOR");
      at_ += tag.size;
      if (endOfHeader) {
        header_ = std::move(record.fields);
        record.fields.clear();
        place_ = Place::kBetween;
      }
      continue;
    }
    if (place_ == Place::kBetween) {
      place_ = Place::kInside;
      CountTo(begin_);
      record.line = line_;
    }
    AdifField field;
    const std::size_t data = at_ + tag.size - begin_;
    if (TakeValue(tag, field, record.fault)) {
      record.fields.push_back(std::move(field));
      continue;
    }
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
  firstBytes = WithoutByteOrderMark(firstBytes);
  const std::string_view text = Stripped(firstBytes);
  if (text.empty()) return "un file vuoto";
  for (const Kind& kind : kKinds) {
    const bool binary = kind.begins.front() < ' ' || kind.begins.front() > '~';
    const std::string_view begin = (binary ? firstBytes : text).substr(0, kind.begins.size());
    if (SameText(begin, kind.begins)) return std::string(kind.what);
  }
  for (std::size_t at = firstBytes.find('<'); at != std::string_view::npos;
       at = firstBytes.find('<', at + 1)) {
    for (const std::string_view known : kKnown) {
      if (SameText(firstBytes.substr(at, known.size()), known)) return {};
    }
  }
  return "un file di un altro tipo";
}

}  // namespace brenvo
