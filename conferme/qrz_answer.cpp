#include "qrz_answer.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "base/text.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kLog = "ADIF=";
constexpr std::size_t kChunk = 65536, kLongestReason = 200;
constexpr std::pair<std::string_view, char> kEntities[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&#39;", '\''}};

}  // namespace

bool QrzAnswer::Is(std::string_view first) {
  const std::string_view beginning = first.substr(0, kChunk);
  for (const std::string_view name : {"RESULT=", "STATUS=", "COUNT=", "LOGIDS=", "ADIF="}) {
    if (beginning.starts_with(name)) return true;
  }
  return false;
}

// At least so many bytes behind at_, unless the answer ends.
bool QrzAnswer::Fill(std::size_t size) {
  while (held_.size() - at_ < size && !ended_) {
    held_.erase(0, at_);
    at_ = 0;
    const std::size_t filled = held_.size();
    held_.resize(filled + kChunk);
    const std::size_t got = source_(held_.data() + filled, kChunk);
    held_.resize(filled + got);
    if (got == 0) ended_ = true;
  }
  return held_.size() - at_ >= size;
}

void QrzAnswer::TakeParameters(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('&'), text.size());
    const std::string_view parameter = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::size_t is = parameter.find('=');
    if (is == parameter.npos) continue;
    const std::string_view name = parameter.substr(0, is), value = parameter.substr(is + 1);
    if (name == "RESULT" || (name == "STATUS" && result_.empty())) {
      result_ = base::Trim(value.substr(0, kLongestReason));
      while (!result_.empty() && static_cast<unsigned char>(result_.back()) <= ' ') {
        result_.pop_back();
      }
    } else if (name == "REASON") {
      reason_ = base::Left(base::ValidUtf8(value), kLongestReason);
      std::ranges::replace_if(
          reason_, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    } else if (name == "COUNT") {
      count_ = value.substr(0, kLongestReason);
    }
  }
  if (result_.empty() || result_ == "OK") return;
  if (result_ == "AUTH") {
    throw LoginError("QRZ non ha accettato la chiave del logbook; nulla è cambiato");
  }
  // Nothing that it was asked for.
  if (count_ == "0" && reason_.empty()) return;
  throw ReportError(fmt::format("QRZ ha risposto con un errore{}; nulla è cambiato",
                                reason_.empty() ? "" : ": " + base::Trim(reason_)));
}

void QrzAnswer::PassBeginning() {
  begun_ = true;
  std::size_t found = std::string::npos;
  for (std::size_t size = kChunk;; size += kChunk) {
    const bool more = Fill(size);
    found = held_.find(kLog);
    if (found != std::string::npos || !more || size > kLongestRest) break;
  }
  TakeParameters(std::string_view(held_).substr(0, std::min(found, held_.size())));
  if (found != std::string::npos) {
    at_ = found + kLog.size();
    return;
  }
  std::int64_t count = -1;
  std::from_chars(count_.data(), count_.data() + count_.size(), count);
  // An answer without contacts has no log file.
  if (result_.empty() || count != 0) {
    throw ReportError("La risposta di QRZ non ha contatti (manca ADIF=); nulla è cambiato");
  }
  over_ = true;
}

// "&LOGIDS=" behind the log file: in it a "&" is written as an entity.
bool QrzAnswer::IsNextParameter() const {
  constexpr std::size_t kLongestName = 9;
  const std::string_view rest = std::string_view(held_).substr(at_ + 1, kLongestName);
  const std::size_t letters =
      std::min(rest.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_"), rest.size());
  return letters > 0 && letters < rest.size() && rest[letters] == '=';
}

std::size_t QrzAnswer::Read(char* buffer, std::size_t size) {
  if (!begun_) PassBeginning();
  std::size_t given = 0;
  while (given < size && !over_) {
    Fill(kLongestEntity);
    if (at_ == held_.size()) {
      over_ = true;
      break;
    }
    if (held_[at_] != '&') {
      const std::size_t next = std::min(held_.find('&', at_), held_.size());
      const std::size_t count = std::min(next - at_, size - given);
      std::copy_n(held_.data() + at_, count, buffer + given);
      at_ += count;
      given += count;
      continue;
    }
    const auto entity = std::ranges::find_if(kEntities, [&](const auto& each) {
      return std::string_view(held_).substr(at_, each.first.size()) == each.first;
    });
    if (entity == std::end(kEntities) && IsNextParameter()) {
      over_ = true;
      while (Fill(held_.size() - at_ + 1) && held_.size() - at_ < kLongestRest) {
      }
      TakeParameters(std::string_view(held_).substr(at_ + 1));
      break;
    }
    buffer[given++] = entity == std::end(kEntities) ? '&' : entity->second;
    at_ += entity == std::end(kEntities) ? 1 : entity->first.size();
  }
  return given;
}

std::optional<std::int64_t> QrzAnswer::Count() const {
  std::int64_t count = 0;
  const auto [end, error] = std::from_chars(count_.data(), count_.data() + count_.size(), count);
  if (error != std::errc()) return std::nullopt;
  return count;
}

}  // namespace brenvo::conferme
