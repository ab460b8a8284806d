// What the parts of the window say alike.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/number.h"

namespace brenvo::conferme {

inline constexpr std::string_view kTitle = "Conferme";
inline constexpr std::string_view kNothingChanged = "Interrotto: nulla è cambiato";

// "12.345".
inline std::string Number(std::int64_t number) {
  return base::FormatNumber(static_cast<double>(number), "#,##0");
}

// 0 where it cannot be told.
inline std::int64_t SizeOf(const std::filesystem::path& file) {
  std::error_code error;
  const auto size = std::filesystem::file_size(file, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

}  // namespace brenvo::conferme
