#include "adif/repeated_contacts.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>

#include "base/text.h"

namespace brenvo {
namespace {

constexpr std::int64_t kMinute = 60;
// Keys held in memory at a time.
constexpr std::int64_t kMostKeys = 200'000;

DateTime MinuteOf(DateTime time) {
  return DateTime::FromSeconds(time.Seconds() - ((time.Seconds() % kMinute) + kMinute) % kMinute);
}

}  // namespace

RepeatedInLog::RepeatedInLog(Session& session) : table_(session.Db.OpenTable("Log")) {
  table_->SetIndex("Unico");
}

void RepeatedInLog::Stored(const LogContact& contact) {
  if (contact.DataQso < emptyFrom_ || contact.DataQso >= emptyTo_) return;
  emptyFrom_ = MinuteOf(contact.DataQso) + DateTime::FromSeconds(kMinute);
}

bool RepeatedInLog::Find(const LogContact& contact) {
  const DateTime minute = MinuteOf(contact.DataQso);
  const DateTime end = minute + DateTime::FromSeconds(kMinute);
  if (minute >= emptyFrom_ && end <= emptyTo_) return false;
  table_->Seek(SeekComparison::kGreaterOrEqual, {minute});
  emptyFrom_ = minute;
  emptyTo_ = DateTime::Of(9999, 12, 31);
  if (table_->NoMatch()) return false;
  for (; !table_->EOF_(); table_->MoveNext()) {
    // Another tool may have made it unreadable, and it stands somewhere between the others.
    const std::optional<DateTime> at = table_->Field("DataQso").ReadableDate();
    if (!at) continue;
    if (*at >= end) {
      emptyTo_ = *at;
      return false;
    }
    emptyFrom_ = end;
    if (SameText(RTrim(table_->Field("Call").Text()), RTrim(contact.Call)) &&
        SameText(RTrim(table_->Field("Banda").Text()), RTrim(contact.Banda))) {
      emptyTo_ = end;  // nothing is known of what follows
      return true;
    }
  }
  return false;
}

RepeatedInFile::RepeatedInFile() : keys_(std::tmpfile()) {
  if (keys_ == nullptr) throw std::runtime_error("Non si puo' scrivere un file temporaneo");
}

RepeatedInFile::~RepeatedInFile() { std::fclose(keys_); }

std::uint64_t RepeatedInFile::KeyOf(const LogContact& contact) {
  // FNV-1a, then mixed so that every bit depends on every character.
  std::uint64_t key = 14695981039346656037u;
  const auto add = [&](std::string_view text) {
    for (const char c : text) key = (key ^ static_cast<unsigned char>(c)) * 1099511628211u;
    key = (key ^ 0xFFu) * 1099511628211u;
  };
  add(UpperAscii(RTrim(contact.Call)));
  add(UpperAscii(RTrim(contact.Banda)));
  add(std::to_string(MinuteOf(contact.DataQso).Seconds()));
  key ^= key >> 33;
  key *= 0xff51afd7ed558ccdu;
  return key ^ (key >> 33);
}

void RepeatedInFile::Add(const LogContact& contact) {
  const std::uint64_t key = KeyOf(contact);
  if (std::fwrite(&key, sizeof key, 1, keys_) != 1) {
    throw std::runtime_error("Non si puo' scrivere un file temporaneo");
  }
  ++added_;
}

std::int64_t RepeatedInFile::Count() {
  const auto parts = static_cast<std::uint64_t>(added_ / kMostKeys + 1);
  std::int64_t repeated = 0;
  for (std::uint64_t part = 0; part < parts; ++part) {
    std::rewind(keys_);
    std::unordered_set<std::uint64_t> seen;
    std::uint64_t key = 0;
    while (std::fread(&key, sizeof key, 1, keys_) == 1) {
      if (key % parts == part && !seen.insert(key).second) ++repeated;
    }
  }
  std::fseek(keys_, 0, SEEK_END);
  return repeated;
}

}  // namespace brenvo
