// What is to be sent for an award: the confirmed contacts that are not credited yet.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "core/session.h"
#include "diplomi/count.h"
#include "platform/printer.h"

namespace brenvo::diplomi {

struct ApplicationLine {
  std::string unit, name;
  std::string call, band, mode, by;
  std::string when;  // of the log's own time
};

struct Application {
  std::string title;     // "DXCC"
  std::string subtitle;  // whose it is, and of which day
  std::vector<ApplicationLine> lines;
};

// A contact for each unit that is confirmed and not credited: on that column; of column 0, where
// the award credits bands too, one for each band that is, so that no contact could be left out and
// none is there twice for the same.
std::vector<Cell> CellsToApplyFor(const Award& award, const Counted& counted, std::size_t column,
                                  std::vector<std::size_t>& units);

// As text in columns, as a page, or as comma-separated text, by the file's ending (.html, .csv,
// anything else). std::runtime_error with an Italian text where it cannot be written.
void WriteApplication(const Application& application, const std::filesystem::path& file);
std::string TextOfApplication(const Application& application);
std::string PageOfApplication(const Application& application);
std::string CsvOfApplication(const Application& application);

// On pages that stand. DeviceError as the printer has it.
void PrintApplication(const Application& application, platform::Printer& printer);

}  // namespace brenvo::diplomi
