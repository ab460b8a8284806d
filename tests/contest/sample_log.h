// A small contest log for the routines that need no database.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "contest/contact.h"
#include "contest/contest_header.h"
#include "contest/score.h"

namespace brenvo::contest {

inline Contact MakeContact(std::int64_t serial, std::string_view call, std::string_view locator,
                           double km, std::string_view note = "") {
  Contact contact;
  contact.ProgrDato = serial;
  contact.ProgrRicevuto = serial + 100;
  contact.Giorno = 7;
  contact.Qtr = base::DateTime::FromSeconds((14 * 60 + serial) * 60);
  contact.Call = call;
  contact.QrkDato = contact.QrkRicevuto = "59";
  contact.Locator = locator;
  contact.Modo = "USB";
  contact.Qrb = km;
  contact.Note = std::string(note);
  contact.Punti = IsDuplicate(contact) ? 0 : km;
  return contact;
}

inline ContestHeader SampleHeader() {
  ContestHeader header;
  header.DataContest = base::DateTime::Of(2024, 9, 7);
  header.Banda = "  2 m";
  header.NomeContest = "IARU VHF";
  header.Categoria = "01";
  header.CallContest = "I4ABC";
  header.Qra = "Mario Rossi";
  header.Qth = "Parma";
  header.Indirizzo = "Via Emilia 1";
  header.Provincia = "PR";
  header.SQTH = "Monte Cimone";
  header.SProvincia = "MO";
  header.Altezza = "2165";
  header.Locator = "JN54IE";
  header.RTX = "FT-736R";
  header.Antenna = "2x17 el.";
  header.Potenza = "100";
  header.Note = "Buon contest";
  return header;
}

// Countries by the first letter of the call: two that are known.
inline std::string SampleCountry(std::string_view call) {
  if (call.starts_with("I")) return "I";
  if (call.starts_with("D")) return "DL";
  return "";
}

// Four contacts: three squares, two countries, two exchanges.
inline std::vector<Contact> SampleLog() {
  return {MakeContact(1, "IK3ABC/P", "JN65AB", 120, "[Exc=VE]"),
          MakeContact(2, "DL1XYZ", "JO62QM", 950, "ottimo segnale"),
          MakeContact(3, "I5DEF", "JN53KS", 80, "[Exc=FI]"),
          MakeContact(4, "IK4GHI", "JN53AA", 60, "[Exc=VE]a presto")};
}

}  // namespace brenvo::contest
