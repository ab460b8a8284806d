// Contacts for other logging programs.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "engine/recordset.h"

namespace brenvo::log {

// Words the contacts of one record set over Log, which outlives it.
class AdifWriter {
 public:
  explicit AdifWriter(engine::Recordset& contacts);

  // The lines of the current record in the ADIF manner, ended by CR LF and closed by "<eor>", in
  // the bytes of the file: Windows-1252, so that each length counts characters and bytes alike. A
  // Null column has length 0 and an empty value. They stand until the next call.
  const std::string& Contact();
  // Of the contacts so far, those whose date is unreadable; it went out empty.
  int Undated() const { return undated_; }

 private:
  engine::Recordset& contacts_;
  std::vector<std::size_t> places_;  // of each tag's column
  std::string lines_;
  int undated_ = 0;
};

}  // namespace brenvo::log
