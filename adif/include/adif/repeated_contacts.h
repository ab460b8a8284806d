// Finds contacts that are there already, and a second for those that are not.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <unordered_map>
#include <vector>

#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/session.h"

namespace brenvo::adif {

// A mode as contacts compare by it: "USB" is "SSB", but not "LSB"; and one that is not told, or
// only as a group of modes ("DATA"), is any.
struct ModeKey {
  std::uint32_t mode = 0, submode = 0;  // 0 when it is not told
  friend bool operator==(const ModeKey&, const ModeKey&) = default;
};
ModeKey ModeKeyOf(const core::LogContact& contact);
bool IsSameMode(ModeKey a, ModeKey b);

// A contact in a minute that has others of the same call on the same band.
struct InMinute {
  int second = 0;  // 0-59
  ModeKey mode;
  // A contact at the full minute tells no seconds, nor does one that was moved away from there.
  bool tellsSeconds = false;
};

// What becomes of a contact in its minute.
struct Placement {
  enum class Kind {
    kNew,       // to be stored at `second`
    kRepeated,  // of the contact at `of`
    kFull       // new, but no second of the minute is left
  };
  Kind kind = Kind::kNew;
  int second = 0;
  std::size_t of = 0;
};
// Among contacts of the same call, band and minute: a contact repeats one of the same mode where
// either of them tells no seconds, or where the second is the same. Another mode in the same second
// sends it on to the next second that is free, from the last one back to the first; what stands
// with the same mode on the way is the same contact, sent on earlier.
Placement PlaceInMinute(const std::vector<InMinute>& present, const InMinute& contact);
InMinute InMinuteOf(const core::LogContact& contact);
int SecondOf(base::DateTime time);
// The same minute, at that second.
base::DateTime AtSecond(base::DateTime time, int second);

// The contacts of Log.
class RepeatedInLog {
 public:
  explicit RepeatedInLog(core::Session& session);
  // When it is repeated, Row() stands on the contact that it repeats.
  Placement Find(const core::LogContact& contact);
  // Those of the same call, band and minute, when the contact found last is new.
  const std::vector<InMinute>& InMinuteFound() const { return present_; }
  // Tells of a contact that was stored meanwhile.
  void Stored(const core::LogContact& contact);
  engine::Table& Row() { return *table_; }

 private:
  Placement AmongOthers(const InMinute& wanted, base::DateTime minute);
  bool WasToldWithoutSeconds(std::int64_t qsoNr, base::DateTime stored);

  core::LogTimes times_;
  std::unique_ptr<engine::Table> table_, kept_;
  std::vector<InMinute> present_;
  std::vector<std::int64_t> numbers_;  // of these
  // No contact of the log is in these seconds. Files go on with time, mostly, and so need not be
  // looked up record by record.
  base::DateTime emptyFrom_, emptyTo_;
};

// Contacts of a file, one after the other, as they would be stored. All are in memory.
class PlacedContacts {
 public:
  // `key` as by RepeatedInFile::KeyOf.
  Placement Place(std::uint64_t key, const InMinute& contact);
  // One that the log has.
  void Put(std::uint64_t key, const InMinute& present);

 private:
  std::unordered_map<std::uint64_t, std::uint64_t> first_;  // packed
  std::unordered_map<std::uint64_t, std::vector<InMinute>> several_;
};

// The same however many they are: they stand on disk, and are placed a part of them at a time.
class RepeatedInFile {
 public:
  struct Counts {
    std::int64_t repeated = 0, moved = 0, full = 0;
  };

  RepeatedInFile();
  ~RepeatedInFile();
  RepeatedInFile(const RepeatedInFile&) = delete;
  RepeatedInFile& operator=(const RepeatedInFile&) = delete;

  // `inLog` are the contacts of the log in the same minute.
  void Add(const core::LogContact& contact, const std::vector<InMinute>& inLog = {});
  // What becomes of those added.
  Counts Count();
  // A number that is the same for contacts of the same call, band and minute, and hardly ever for
  // others.
  static std::uint64_t KeyOf(const core::LogContact& contact);

 private:
  void Write(std::uint64_t key, std::uint64_t packed);

  std::FILE* keys_;
  std::int64_t added_ = 0;
};

}  // namespace brenvo::adif
