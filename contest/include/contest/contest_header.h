// A contest as its window shows it: what the exported file and the printed sheets are made from.
#pragma once

#include <string>

#include "base/date.h"

namespace brenvo::contest {

// The texts of the fields as they stand.
struct ContestHeader {
  base::DateTime DataContest;
  std::string Banda, NomeContest, Categoria, CallContest, Qra, Qth, Indirizzo, Provincia, SQTH,
      SProvincia, Altezza, Locator, RTX, Antenna, Potenza, Note;
  bool Fisso = true;                     // otherwise portable
  bool Singolo = true;                   // otherwise several operators
  bool Square = false, Country = false;  // multipliers
};

}  // namespace brenvo::contest
