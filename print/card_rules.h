// Which cards are to be sent, and in which order a bureau wants them: rules as data, in the words
// of data/rules/QslDaInviare.csv.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "core/session.h"
#include "worked/rules.h"

namespace brenvo::print {

// A contact as the rules see it.
struct CardContact {
  std::int64_t qsoNr = 0;
  base::DateTime DataQso;
  std::string Call, Manager, Prefisso, Country, Banda, Modo;
  bool wanted = false;    // QslDaInviare
  bool sent = false;      // QslInviata
  bool received = false;  // a card that can be answered
};

enum class CardField : std::uint8_t {
  kCall,
  kManager,
  kPrefisso,
  kCountry,
  kBanda,
  kModo,
  kGruppo
};

// Texts compare without regard to case and to blanks at their ends. Among countries the word "Casa"
// is the station's own, with those that have one bureau with it.
class CardRules {
 public:
  // Cards that are never sent, whoever asks for them.
  struct Never {
    std::string name;
    CardField field = CardField::kCall;
    std::vector<std::string> values;  // in capitals; with "*" at the end all that begin so
  };
  // Why a card is due, the first reason that fits: a column of the log that asks for it, or because
  // no earlier contact is the same in these fields and no card has gone out for any that is.
  struct Reason {
    enum class Kind : std::uint8_t { kWanted, kReceived, kFirst } kind = Kind::kFirst;
    std::string name;
    std::vector<CardField> fields;
    std::vector<std::string> only, except;  // countries; empty `only` means all
  };

  std::vector<Never> never;
  std::vector<Reason> reasons;
  // Countries whose cards a bureau sorts by the digit of the call.
  std::vector<std::string> byDigit;
  // Countries that have one bureau together.
  std::vector<std::vector<std::string>> oneBureau;
};

// The countries that are home to a station of this one, in capitals.
std::vector<std::string> HomeOf(const CardRules& rules, std::string_view country);
// Whether a country is in such a list.
bool IsInCountries(const std::vector<std::string>& countries, std::string_view country,
                   const std::vector<std::string>& home);

inline constexpr std::string_view kDeliveredCardRules = "QslDaInviare.csv",
                                  kOwnCardRules = "QslDaInviare proprie.csv";

// The rules of a text, and of a second one whose rows take the place of those of the same rule and
// name; examples are tried. Throws std::runtime_error, with file, line and what is wrong with it in
// Italian, for the first row that cannot be understood and the first example that does not hold.
CardRules ParseCardRules(const worked::Rules& modes, std::string_view delivered,
                         std::string_view own = "");

// Of the station's directory: ours and the operator's own, ours alone where his cannot be
// understood, and none where ours cannot. `fault` gets why, or stays.
CardRules LoadCardRules(core::Session& session, const worked::Rules& modes, std::string& fault);

}  // namespace brenvo::print
