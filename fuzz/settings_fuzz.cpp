// Links: station recorder database_maker
// Arbitrary texts in the settings store, a line each: the windows that read them open with them at
// a place and with values that they can have, print what there is, and store no others.
#include <cstdint>
#include <set>
#include <sstream>

#include "base/number.h"
#include "base/text.h"
#include "fuzz/station.h"
#include "print/stampa_qsl.h"

namespace {

using namespace brenvo;
using namespace brenvo::fuzz;

struct Key {
  const char *section, *key;
};
constexpr Key kKeys[] = {
    {"StampaQsl", "AltezzaEtichette"},
    {"StampaQsl", "LarghezzaEtichette"},
    {"StampaQsl", "SpaziaturaOrizzontale"},
    {"StampaQsl", "SpaziaturaVerticale"},
    {"StampaQsl", "MargineSuperiore"},
    {"StampaQsl", "MargineSinistro"},
    {"StampaQsl", "EtichettePerFila"},
    {"HrdMode", "BandaUsata"},
    {"HrdMode", "ModiUsati"},
    {"Log", "DisplayMappa"},
    {"Log", "LookupWorked"},
    {"Log", "ManagerZX9TOK"},
    {"StampaQsl", "X"},
    {"HrdMode", "W"},
    {"Log", "Y"},
    {"Log", "H"},
};

// The window that reads a section.
std::string_view WindowOf(std::string_view section) {
  return section == "Log" ? "LogForm" : section;
}

FuzzStation& Station() {
  static FuzzStation station;
  static const bool filled = [] {
    for (const char* call : {"IK2AAA", "DL1ABC", "F5XYZ"}) {
      station.session.Db.Execute(
          "insert into Log (DataQso,Call,Banda,Modo,Frequenza,QslDaInviare) values "
          "(DateValue('03/02/2001'),'" +
          std::string(call) + "',' 20 m','SSB',14.2,True)");
    }
    return true;
  }();
  static_cast<void>(filled);
  return station;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzStation& station = Station();
  std::istringstream lines(
      base::ValidUtf8(std::string_view(reinterpret_cast<const char*>(data), size)));
  // A window that finds nothing of its own opens as for every other input.
  std::set<std::string_view> windows;
  for (const Key& key : kKeys) {
    std::string value;
    std::getline(lines, value);
    if (!value.empty()) windows.insert(WindowOf(key.section));
    station.session.SaveSetting(key.section, key.key, value);
  }
  for (const std::string_view name : windows) {
    forms::Window* const window = station.Open(name);
    fuzz::Require(window != nullptr);
    Require(window->Width() > base::Twips(-1000000) && window->Width() < base::Twips(1000000));
    if (auto* labels = dynamic_cast<print::StampaQsl*>(window)) {
      station.Event([&] {
        labels->DatiQso.SetState(forms::CheckState::kOn);
        labels->DatiStazione.SetState(forms::CheckState::kOn);
        labels->cmPrint.Press();
        labels->cmUpdate.Press();
      });
    }
  }
  station.CloseAll();
  for (const Key& key : kKeys) {
    if (std::string_view(key.section) != "StampaQsl") continue;
    const double stored = base::Val(station.session.GetSetting(key.section, key.key, ""));
    fuzz::Require(stored > -1e6 && stored < 1e6);
  }
  return 0;
}
