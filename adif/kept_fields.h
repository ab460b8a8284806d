// What log files say of a contact beyond the columns of Log: table LogAdif, by number and name.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "adif/adif_reader.h"
#include "engine/database.h"

namespace brenvo::adif {

class KeptFields {
 public:
  static constexpr std::string_view kTable = "LogAdif";

  explicit KeptFields(engine::Database& database);

  // By name.
  std::vector<AdifField> Of(std::int64_t qsoNr);
  // The same of many contacts, in the order of their numbers.
  std::vector<std::vector<AdifField>> OfEach(std::span<const std::int64_t> keys);
  // Of a new contact.
  void Add(std::int64_t qsoNr, const std::vector<AdifField>& fields);
  // Those of `fields` that the contact does not have.
  std::vector<AdifField> MissingOf(std::int64_t qsoNr, const std::vector<AdifField>& fields);

 private:
  engine::Database& database_;
  std::unique_ptr<engine::Table> table_;
  std::unique_ptr<engine::RowAppender> new_;
};

}  // namespace brenvo::adif
