// What log files say of a contact beyond the columns of Log: table LogAdif, by number and name.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "adif/adif_reader.h"
#include "engine/database.h"

namespace brenvo::adif {

class KeptFields {
 public:
  static constexpr std::string_view kTable = "LogAdif";

  // DatabaseError 3078 when the database has no such table (it was delivered before there was one).
  explicit KeptFields(engine::Database& database);

  // By name.
  std::vector<AdifField> Of(std::int64_t qsoNr);
  // Of a new contact.
  void Add(std::int64_t qsoNr, const std::vector<AdifField>& fields);
  // Of one that may have some: those that it has stay as they are. Tells whether any was new.
  bool AddMissing(std::int64_t qsoNr, const std::vector<AdifField>& fields);

 private:
  std::unique_ptr<engine::Table> table_;
  std::unique_ptr<engine::RowAppender> new_;
};

}  // namespace brenvo::adif
