// The countries of the DXCC list by the numbers that log files give them.
#pragma once

#include <string_view>

namespace brenvo::adif {

struct DxccEntity {
  int number;
  std::string_view country;  // code of table Country
  std::string_view name;     // English
};

struct DxccZones {
  std::string_view country;  // code of table Country
  int cq, itu;               // 0 when there are several
  std::string_view continent;
};

// Of the countries that no prefix tells of; null for others.
const DxccZones* FindDxccZones(std::string_view country);

// Deleted countries included; null when there is none.
const DxccEntity* FindDxccEntity(int number);
const DxccEntity* FindDxccEntityOf(std::string_view country);
// By the English name, letters and digits alone, without regard to case.
const DxccEntity* FindDxccEntityNamed(std::string_view name);

}  // namespace brenvo::adif
