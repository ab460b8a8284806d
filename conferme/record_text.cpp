#include <fmt/format.h>

#include <charconv>

#include "base/text.h"
#include "conferme/taking.h"

namespace brenvo::conferme {
namespace {

constexpr char kBetween = '\t';
constexpr std::string_view kYes = "1", kNo = "0";

class Writer {
 public:
  void Put(std::string_view text) {
    if (!text_.empty()) text_ += kBetween;
    const std::size_t from = text_.size();
    text_ += text.empty() ? " " : text;
    for (std::size_t i = from; i < text_.size(); ++i) {
      if (static_cast<unsigned char>(text_[i]) < ' ') text_[i] = ' ';
    }
  }
  void Put(bool yes) { Put(yes ? kYes : kNo); }
  void Put(int number) { Put(std::string_view(std::to_string(number))); }
  void Put(std::optional<base::DateTime> time) {
    Put(time ? std::string_view(base::IsoText(*time)) : std::string_view());
  }
  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

// Each piece once, in the order in which they were put.
class Pieces {
 public:
  explicit Pieces(std::string_view text) : rest_(text) {}
  void Get(std::string& text) { text = base::Trim(Next()); }
  void Get(bool& yes) { yes = Next() == kYes; }
  void Get(int& number) {
    const std::string_view piece = Next();
    std::from_chars(piece.data(), piece.data() + piece.size(), number);
  }
  void Get(std::optional<base::DateTime>& time) { time = base::ParseIso(base::Trim(Next())); }
  void Get(base::DateTime& time) {
    time = base::ParseIso(base::Trim(Next())).value_or(base::DateTime());
  }
  bool Whole() const { return !missing_ && ended_; }

 private:
  std::string_view Next() {
    if (ended_) {
      missing_ = true;
      return {};
    }
    const std::size_t end = rest_.find(kBetween);
    const std::string_view piece = rest_.substr(0, end);
    ended_ = end == rest_.npos;
    if (!ended_) rest_.remove_prefix(end + 1);
    return piece;
  }
  std::string_view rest_;
  bool ended_ = false, missing_ = false;
};

// The record's members, one after another, for both directions.
template <class Record, class See>
void EachMember(Record& record, const See& see) {
  see(record.id);
  see(record.credit);
  see(record.confirmed);
  see(record.call);
  see(record.ownCall);
  see(record.band);
  see(record.mode);
  see(record.submode);
  see(record.modeGroup);
  see(record.satellite);
  see(record.bySatellite);
  see(record.when);
  see(record.hasDay);
  see(record.hasTime);
  see(record.hasSeconds);
  see(record.day);
  see(record.credits);
  see(record.locator);
  see(record.state);
  see(record.iota);
  see(record.inferred);
  see(record.partnerMode);
  see(record.dxcc);
  see(record.zoneCq);
  see(record.zoneItu);
  see(record.authentic);
}

}  // namespace

std::string TextOfRecord(const ReportRecord& record) {
  Writer writer;
  writer.Put(FactsOf(record.service).name);
  EachMember(record, [&](const auto& member) { writer.Put(member); });
  return writer.Take();
}

std::optional<ReportRecord> RecordOfText(std::string_view text) {
  Pieces pieces(text);
  ReportRecord record;
  std::string service;
  pieces.Get(service);
  EachMember(record, [&](auto& member) { pieces.Get(member); });
  const auto named = ServiceNamed(service);
  if (!named || !pieces.Whole()) return std::nullopt;
  record.service = *named;
  return record;
}

}  // namespace brenvo::conferme
