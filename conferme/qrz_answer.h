// The answer of QRZ's logbook, "RESULT=OK&COUNT=2&ADIF=&lt;call:6&gt;...", as the log file in it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "conferme/report.h"

namespace brenvo::conferme {

class QrzAnswer {
 public:
  explicit QrzAnswer(ReportSource source) : source_(std::move(source)) {}
  // Whether the first bytes are those of such an answer.
  static bool Is(std::string_view first);

  // The bytes of the log file. Throws ReportError for an answer that is a refusal, as soon as it
  // says so.
  std::size_t Read(char* buffer, std::size_t size);
  // Once all was read: the number of records that the answer tells; nothing where it tells none.
  std::optional<std::int64_t> Count() const;

 private:
  static constexpr std::size_t kLongestEntity = 10, kLongestRest = 65536;
  bool Fill(std::size_t size);
  void PassBeginning();
  void TakeParameters(std::string_view text);
  bool IsNextParameter() const;

  ReportSource source_;
  std::string held_;  // read, and not given yet
  std::size_t at_ = 0;
  bool ended_ = false, begun_ = false, over_ = false;
  std::string result_, reason_, count_;
};

}  // namespace brenvo::conferme
