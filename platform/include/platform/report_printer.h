// Prints a layout file against the rows of the staging table.
#pragma once

#include <filesystem>

#include "platform/device_error.h"

namespace brenvo::platform {

class ReportPrinter {
 public:
  virtual ~ReportPrinter() = default;
  // DeviceError when there is no printer; std::runtime_error when the layout cannot be read.
  virtual void Print(const std::filesystem::path& layout) = 0;
};

}  // namespace brenvo::platform
