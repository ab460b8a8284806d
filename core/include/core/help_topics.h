// The topics of the help file, a page a window.
#pragma once

#include <string_view>
#include <utility>

namespace brenvo::core {

enum HelpTopic : int {
  kHelpFirstDay = 1,
  kHelpLog = 100,
  kHelpLogSearch = 110,
  kHelpContest = 200,
  kHelpImportaAdif = 770,
  kHelpEsportaAdif = 780,
};

// The page of each window.
inline constexpr std::pair<std::string_view, int> kWindowTopics[] = {
    {"Brenvo", kHelpFirstDay},
    {"LogForm", kHelpLog},
    {"LogSearch", kHelpLogSearch},
    {"OldQsoForm", 130},
    {"OldQsoLocator", 140},
    {"Elenco", 150},
    {"Corrispondente", 160},
    {"VerificaLog", 170},
    {"VerificaEntita", 175},
    {"Colonne", 152},
    {"CambiaColonna", 155},
    {"ContaQso", 158},
    {"Contest", kHelpContest},
    {"ContestSearch", 205},
    {"ContestQso", 210},
    {"ContestNewQso", 220},
    {"CheckCallContest", 230},
    {"StatContest", 240},
    {"GaraContest", 250},
    {"StatSel", 300},
    {"SField", 310},
    {"SSQuare", 315},
    {"SPrefissi", 320},
    {"SContinenti", 325},
    {"SZone", 330},
    {"SCountry", 335},
    {"SProvincie", 340},
    {"SNote", 345},
    {"Hrd", 350},
    {"HrdMode", 360},
    {"Diplomi", 365},
    {"MappaSquare", 410},
    {"StampaQsl", 500},
    {"GestioneQsl", 505},
    {"Conferme", 507},
    {"TNC", 600},
    {"TNCtelnet", 605},
    {"WWConv", 610},
    {"FT736", 620},
    {"DX", 630},
    {"Digitale", 640},
    {"Rtx", 650},
    {"Modelli", 655},
    {"User", 700},
    {"TabellaPrefissi", 710},
    {"TabellaCountry", 720},
    {"TabellaProvincie", 730},
    {"TabellaNote", 740},
    {"Help", 750},
    {"RipristinaBackup", 760},
    {"ImportaAdif", kHelpImportaAdif},
    {"EsportaAdif", kHelpEsportaAdif},
    {"Preferenze", 790},
    {"Tasti", 791},
    {"OraDelLog", 792},
    {"ConvertiOra", 794},
    {"Stazioni", 796},
    {"Storia", 798},
    {"Palette", 799}};

// The first page for a window without one.
constexpr int HelpTopicOf(std::string_view window) {
  for (const auto& [name, topic] : kWindowTopics) {
    if (name == window) return topic;
  }
  return kHelpFirstDay;
}

}  // namespace brenvo::core
