// Awards for tests: those that are delivered, and small ones of their own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "diplomi/award.h"
#include "diplomi/count.h"
#include "tests/support/places.h"
#include "worked/rules.h"

namespace brenvo::diplomi {

inline std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline std::filesystem::path DeliveredAwards() { return SourceDir() / "data/awards"; }

inline Award DeliveredAward(std::string_view name) {
  ReadAward read = ReadAwardText(BytesOf(DeliveredAwards() / (std::string(name) + ".json")));
  for (const AwardFault& fault : read.faults) ADD_FAILURE() << name << ": " << fault.Text();
  read.award.file = name;
  return std::move(read.award);
}

inline worked::Rules DeliveredCounting() {
  return worked::ReadRules(SourceDir() / "data/rules" / worked::kDeliveredRules, "");
}

// One with a line for each of its parts.
inline std::string SmallAward() {
  return R"({
  "formato": 1,
  "nome": "Prova", "bande": ["20 m", "15 m"],
  "unità": "zona CQ",
  "modi": ["CW"],
  "dal": "1990-01-01",
  "conferme": [{"servizio": "LoTW"}, {"servizio": "eQSL", "solo con": "EQSL_AG=Y"}],
  "traguardi": [{"nome": "Prova", "di": "tutto", "quanti": [10, 20]}],
  "esempi": [{
    "qso": [
      {"quando": "2001-02-03 10:00:00", "nominativo": "K1AA", "zona CQ": 5, "banda": "20 m", "modo": "CW", "confermato da": ["LoTW"]},
      {"quando": "2001-02-03 11:00:00", "nominativo": "JA1AA", "zona CQ": 25, "banda": "15 m", "modo": "SSB", "confermato da": ["eQSL"]},
      {"quando": "2001-02-03 12:00:00", "nominativo": "VK1AA", "zona CQ": 30, "banda": "40 m", "modo": "CW"},
      {"quando": "1989-12-31 23:59:59", "nominativo": "ZL1AA", "zona CQ": 32, "banda": "20 m", "modo": "CW"}
    ],
    "conta": [{"unità": "05", "stato": "confermato"}, {"unità": "25", "banda": "15 m", "stato": "lavorato"}],
    "lavorati": 2, "confermati": 1
  }]
})";
}

}  // namespace brenvo::diplomi
