// Finds contacts that are there already.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "adif/log_contact.h"
#include "core/session.h"

namespace brenvo {

// The same call on the same band in the same minute, in Log.
class RepeatedInLog {
 public:
  explicit RepeatedInLog(Session& session);
  // Stands on the contact found, which can be edited.
  bool Find(const LogContact& contact);
  // Tells of a contact that was stored meanwhile.
  void Stored(const LogContact& contact);
  Table& Row() { return *table_; }

 private:
  std::unique_ptr<Table> table_;
  // No contact of the log is in these seconds. Files go on with time, mostly, and so need not be
  // looked up record by record.
  DateTime emptyFrom_, emptyTo_;
};

// The same among contacts that come one after the other, however many: they are counted on disk,
// a part of them at a time.
class RepeatedInFile {
 public:
  RepeatedInFile();
  ~RepeatedInFile();
  RepeatedInFile(const RepeatedInFile&) = delete;
  RepeatedInFile& operator=(const RepeatedInFile&) = delete;

  void Add(const LogContact& contact);
  // How many of those added repeat an earlier one.
  std::int64_t Count();
  // A number that is the same for repeated contacts, and hardly ever for others.
  static std::uint64_t KeyOf(const LogContact& contact);

 private:
  std::FILE* keys_;
  std::int64_t added_ = 0;
};

}  // namespace brenvo
