// Rules for tests: those that are delivered, and small ones of their own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "gara/count.h"
#include "gara/rule.h"
#include "tests/support/places.h"

namespace brenvo::gara {

inline std::string BytesOfFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline std::filesystem::path DeliveredRules() { return SourceDir() / "data/contests"; }

inline Rule DeliveredRule(std::string_view name) {
  ReadRule read = ReadRuleText(BytesOfFile(DeliveredRules() / (std::string(name) + ".json")));
  for (const RuleFault& fault : read.faults) ADD_FAILURE() << name << ": " << fault.Text();
  read.rule.file = name;
  return std::move(read.rule);
}

inline Contact Made(std::string band, std::string call, std::string locator,
                    std::string mode = "SSB", std::string exchange = "") {
  Contact contact;
  contact.band = std::move(band);
  contact.call = std::move(call);
  contact.locator = std::move(locator);
  contact.mode = std::move(mode);
  contact.exchange = std::move(exchange);
  contact.reportSent = contact.reportReceived = "59";
  contact.time = base::DateTime::Of(2024, 9, 7, 14, 0, 0);
  return contact;
}

}  // namespace brenvo::gara
