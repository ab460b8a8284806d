#include "adif/repeated_contacts.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "adif/adif_names.h"
#include "adif/record_to_contact.h"
#include "adif/adif_values.h"
#include "base/text.h"
#include "core/log_contact.h"
#include "core/note_tag.h"
#include "kept_fields.h"

namespace brenvo::adif {
namespace {

constexpr int kMinute = 60;
// Contacts held in memory at a time.
constexpr std::int64_t kMostContacts = 200'000;

base::DateTime MinuteOf(base::DateTime time) { return AtSecond(time, 0); }

// FNV-1a.
class Hash {
 public:
  void Add(std::string_view text) {
    for (const char c : text) hash_ = (hash_ ^ static_cast<unsigned char>(c)) * kPrime;
    hash_ = (hash_ ^ 0xFFu) * kPrime;
  }
  // So that every bit depends on every character.
  std::uint64_t Mixed() const {
    const std::uint64_t mixed = (hash_ ^ (hash_ >> 33)) * 0xff51afd7ed558ccdu;
    return mixed ^ (mixed >> 33);
  }

 private:
  static constexpr std::uint64_t kPrime = 1099511628211u;
  std::uint64_t hash_ = 14695981039346656037u;
};

// Never 0, and within the bits that a packed contact has for it.
constexpr int kModeBits = 28;
std::uint32_t NumberOf(std::string_view word) {
  if (word.empty()) return 0;
  Hash hash;
  hash.Add(base::UpperAscii(word));
  return static_cast<std::uint32_t>(hash.Mixed() & ((1u << kModeBits) - 1)) | 1u;
}

bool IsModeGroup(std::string_view word) {
  constexpr std::string_view kGroups[] = {"PHONE", "DATA", "DIGITAL", "DIGI", "IMAGE"};
  return std::any_of(std::begin(kGroups), std::end(kGroups),
                     [&](std::string_view group) { return base::SameText(group, word); });
}

// Second, whether it is told, whether the log has it, mode and submode: 6, 1, 1, 28 and 28 bits.
std::uint64_t Packed(const InMinute& contact, bool inLog) {
  return static_cast<std::uint64_t>(contact.second) | (contact.tellsSeconds ? 1u << 6 : 0u) |
         (inLog ? 1u << 7 : 0u) | static_cast<std::uint64_t>(contact.mode.mode) << 8 |
         static_cast<std::uint64_t>(contact.mode.submode) << (8 + kModeBits);
}

InMinute Unpacked(std::uint64_t packed) {
  constexpr std::uint64_t kMode = (1u << kModeBits) - 1;
  InMinute contact;
  contact.second = static_cast<int>(packed & 63u);
  contact.tellsSeconds = (packed >> 6 & 1u) != 0;
  contact.mode.mode = static_cast<std::uint32_t>(packed >> 8 & kMode);
  contact.mode.submode = static_cast<std::uint32_t>(packed >> (8 + kModeBits) & kMode);
  return contact;
}

bool IsInLog(std::uint64_t packed) { return (packed >> 7 & 1u) != 0; }

}  // namespace

ModeKey ModeKeyOf(const core::LogContact& contact) {
  std::string word = base::Trim(contact.Modo);
  if (word == kSatellite) word = core::ParseSatelliteNote(contact.Note).mode;
  if (word.empty() || IsModeGroup(word)) return {};
  const auto mode = FindAdifMode(AdifWordOf(word));
  return mode ? ModeKey{NumberOf(mode->mode), NumberOf(mode->submode)} : ModeKey{NumberOf(word), 0};
}

bool IsSameMode(ModeKey a, ModeKey b) {
  if (a.mode == 0 || b.mode == 0) return true;
  return a.mode == b.mode && (a.submode == 0 || b.submode == 0 || a.submode == b.submode);
}

int SecondOf(base::DateTime time) {
  return static_cast<int>((time.Seconds() % kMinute + kMinute) % kMinute);
}

base::DateTime AtSecond(base::DateTime time, int second) {
  return base::DateTime::FromSeconds(time.Seconds() - SecondOf(time) + second);
}

InMinute InMinuteOf(const core::LogContact& contact) {
  const int second = SecondOf(contact.DataQso);
  return {second, ModeKeyOf(contact), second != 0};
}

Placement PlaceInMinute(const std::vector<InMinute>& present, const InMinute& contact) {
  const auto found = [&](const auto& is) {
    const auto at = std::find_if(present.begin(), present.end(), is);
    return static_cast<std::size_t>(at - present.begin());
  };
  const auto repeats = [&](std::size_t of) {
    return Placement{Placement::Kind::kRepeated, present[of].second, of};
  };
  const std::size_t exact = found([&](const InMinute& each) {
    return each.second == contact.second && IsSameMode(each.mode, contact.mode);
  });
  if (exact < present.size()) return repeats(exact);
  const std::size_t untold = found([&](const InMinute& each) {
    return IsSameMode(each.mode, contact.mode) && !(each.tellsSeconds && contact.tellsSeconds);
  });
  if (untold < present.size()) return repeats(untold);
  for (int step = 0; step < kMinute; ++step) {
    const int second = (contact.second + step) % kMinute;
    const std::size_t there = found([&](const InMinute& each) { return each.second == second; });
    if (there == present.size()) return {Placement::Kind::kNew, second, 0};
    if (IsSameMode(present[there].mode, contact.mode)) return repeats(there);
  }
  return {Placement::Kind::kFull, 0, 0};
}

RepeatedInLog::RepeatedInLog(core::Session& session)
    : times_(session), table_(session.Db.OpenTable("Log")) {
  table_->SetIndex("Unico");
  kept_ = session.Db.OpenTable(KeptFields::kTable);
  kept_->SetIndex("PrimaryKey");
}

void RepeatedInLog::Stored(const core::LogContact& contact) {
  if (contact.DataQso < emptyFrom_ || contact.DataQso >= emptyTo_) return;
  emptyFrom_ = AtSecond(contact.DataQso, kMinute);
}

// What its file told of the time is kept beside a contact that was moved.
bool RepeatedInLog::WasToldWithoutSeconds(std::int64_t qsoNr, base::DateTime stored) {
  if (!kept_) return false;
  kept_->Seek(engine::SeekComparison::kEqual, {qsoNr, "TIME_ON"});
  const auto told = kept_->NoMatch() ? std::nullopt : TimeIn(kept_->Field("Valore").Text());
  return told && SecondOf(*told) == 0 && *told == MinuteOf(times_.ToUtc(stored)).TimePart();
}

Placement RepeatedInLog::Find(const core::LogContact& contact) {
  const base::DateTime minute = MinuteOf(contact.DataQso);
  const base::DateTime end = AtSecond(minute, kMinute);
  present_.clear();
  numbers_.clear();
  const Placement free{Placement::Kind::kNew, SecondOf(contact.DataQso), 0};
  if (minute >= emptyFrom_ && end <= emptyTo_) return free;
  table_->Seek(engine::SeekComparison::kGreaterOrEqual, {minute});
  emptyFrom_ = minute;
  emptyTo_ = base::DateTime::Of(9999, 12, 31);
  if (table_->NoMatch()) return free;
  InMinute wanted;
  for (; !table_->EOF_(); table_->MoveNext()) {
    // Another tool may have made it unreadable, and it stands somewhere between the others.
    const std::optional<base::DateTime> at = table_->Field(core::column::kDataQso).ReadableDate();
    if (!at) continue;
    if (*at >= end) {
      emptyTo_ = *at;
      break;
    }
    emptyFrom_ = end;
    if (!base::SameText(base::RTrim(table_->Field(core::column::kCall).Text()),
                        base::RTrim(contact.Call)) ||
        !base::SameText(base::RTrim(table_->Field(core::column::kBanda).Text()),
                        base::RTrim(contact.Banda))) {
      continue;
    }
    if (present_.empty()) wanted = InMinuteOf(contact);
    core::LogContact there;
    there.DataQso = *at;
    there.Modo = table_->Field(core::column::kModo).Text();
    if (there.Modo == kSatellite) there.Note = table_->Field(core::column::kNote).Text();
    present_.push_back(InMinuteOf(there));
    numbers_.push_back(table_->Field(core::column::kQsoNr).Integer());
    const InMinute& found = present_.back();
    if (IsSameMode(found.mode, wanted.mode) &&
        (!wanted.tellsSeconds || found.second == wanted.second)) {
      emptyTo_ = end;  // nothing is known of what follows
      return {Placement::Kind::kRepeated, found.second, present_.size() - 1};
    }
  }
  return present_.empty() ? free : AmongOthers(wanted, minute);
}

Placement RepeatedInLog::AmongOthers(const InMinute& wanted, base::DateTime minute) {
  for (std::size_t i = 0; i < present_.size(); ++i) {
    if (!present_[i].tellsSeconds) continue;
    const base::DateTime at = AtSecond(minute, present_[i].second);
    present_[i].tellsSeconds = !WasToldWithoutSeconds(numbers_[i], at);
  }
  const Placement placement = PlaceInMinute(present_, wanted);
  if (placement.kind == Placement::Kind::kRepeated) {
    table_->Seek(engine::SeekComparison::kGreaterOrEqual, {AtSecond(minute, placement.second)});
    while (!table_->EOF_() &&
           table_->Field(core::column::kQsoNr).Integer() != numbers_[placement.of]) {
      table_->MoveNext();
    }
  }
  return placement;
}

Placement PlacedContacts::Place(std::uint64_t key, const InMinute& contact) {
  const auto [first, isNew] = first_.try_emplace(key, Packed(contact, false));
  if (isNew) return {Placement::Kind::kNew, contact.second, 0};
  auto several = several_.find(key);
  std::vector<InMinute> alone;
  if (several == several_.end()) alone = {Unpacked(first->second)};
  const Placement placement =
      PlaceInMinute(several == several_.end() ? alone : several->second, contact);
  if (placement.kind == Placement::Kind::kNew) {
    if (several == several_.end()) several = several_.emplace(key, std::move(alone)).first;
    // As the log will have it: there the full minute tells none, whoever was sent there.
    const bool tells = contact.tellsSeconds && placement.second != 0;
    several->second.push_back({placement.second, contact.mode, tells});
  }
  return placement;
}

void PlacedContacts::Put(std::uint64_t key, const InMinute& present) {
  const auto [first, isNew] = first_.try_emplace(key, Packed(present, true));
  if (isNew) return;
  auto& several = several_[key];
  if (several.empty()) several.push_back(Unpacked(first->second));
  const bool there = std::any_of(several.begin(), several.end(), [&](const InMinute& each) {
    return each.second == present.second;
  });
  if (!there) several.push_back(present);
}

RepeatedInFile::RepeatedInFile() : keys_(std::tmpfile()) {
  if (keys_ == nullptr) throw std::runtime_error("Non si può scrivere un file temporaneo");
}

RepeatedInFile::~RepeatedInFile() { std::fclose(keys_); }

std::uint64_t RepeatedInFile::KeyOf(const core::LogContact& contact) {
  Hash hash;
  hash.Add(base::UpperAscii(base::RTrim(contact.Call)));
  hash.Add(base::UpperAscii(base::RTrim(contact.Banda)));
  hash.Add(std::to_string(MinuteOf(contact.DataQso).Seconds()));
  return hash.Mixed();
}

void RepeatedInFile::Write(std::uint64_t key, std::uint64_t packed) {
  const std::uint64_t entry[] = {key, packed};
  if (std::fwrite(entry, sizeof entry, 1, keys_) != 1) {
    throw std::runtime_error("Non si può scrivere un file temporaneo");
  }
  ++added_;
}

void RepeatedInFile::Add(const core::LogContact& contact, const std::vector<InMinute>& inLog) {
  const std::uint64_t key = KeyOf(contact);
  for (const InMinute& each : inLog) Write(key, Packed(each, true));
  Write(key, Packed(InMinuteOf(contact), false));
}

RepeatedInFile::Counts RepeatedInFile::Count() {
  const auto parts = static_cast<std::uint64_t>(added_ / kMostContacts + 1);
  Counts counts;
  for (std::uint64_t part = 0; part < parts; ++part) {
    std::rewind(keys_);
    PlacedContacts placed;
    std::uint64_t entry[2];
    while (std::fread(entry, sizeof entry, 1, keys_) == 1) {
      if (entry[0] % parts != part) continue;
      const InMinute contact = Unpacked(entry[1]);
      if (IsInLog(entry[1])) {
        placed.Put(entry[0], contact);
        continue;
      }
      const Placement placement = placed.Place(entry[0], contact);
      counts.repeated += placement.kind == Placement::Kind::kRepeated;
      counts.full += placement.kind == Placement::Kind::kFull;
      counts.moved += placement.kind == Placement::Kind::kNew && placement.second != contact.second;
    }
  }
  std::fseek(keys_, 0, SEEK_END);
  return counts;
}

}  // namespace brenvo::adif
