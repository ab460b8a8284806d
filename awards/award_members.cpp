#include "awards/award_members.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

namespace brenvo::awards {
namespace {

using base::Twips;

using enum ConditionJoin;
using enum EntryText;

// clang-format off
constexpr std::array<AwardMember, 8> kMembers = {{
    {"SField",      "Fields -",     "Locator<>''",    kAnd,
     "Field",      "Left(Locator,2)", "Left(Locator,2) as Field,QslRicevuta",  "Left(Locator,2),QslRicevuta", "",
     " And left(Locator,2)= '", "'", {{{"Square"}, {"Qsl", Twips(2000)}}}, 2, 1, 1,
     "Confermato", " confermati su", kNothing, "", "", {}},

    {"SSQuare",     "Square -",     "Locator<>''",    kAnd,
     "Square",     "Left(Locator,4)", "Left(Locator,4) as Square,QslRicevuta", "Left(Locator,4),QslRicevuta", "",
     " And left(Locator,4)= '", "'", {{{"Square", Twips(700)}, {"Qsl", Twips(1200)}}}, 2, 1, 1,
     "Confermato", " confermati su", kNothing, "", "", {}},

    {"SPrefissi",   "Prefissi -",   "Prefisso<>''",   kWhereOrAnd,
     "Prefisso",   "Prefisso",        "Prefisso,QslRicevuta,Country",          "Prefisso,QslRicevuta,Country", "Country",
     " And Prefisso='",         "'", {{{"Prefisso", Twips(700)}, {"Country", Twips(3000)}, {"Qsl", Twips(1200)}}}, 3, 2, 2,
     "Confermato", " confermati su", kCountryOfGroup, "", "", {.firstQslUnread = true}},

    {"SContinenti", "Continenti -", "Continente<>''", kWhereOrAnd,
     "Continente", "Continente",      "Continente,QslRicevuta",                "Continente,QslRicevuta", "",
     " And Continente='",       "'", {{{"Continente", Twips(1000)}, {"Qsl", Twips(1200)}}}, 2, 1, 1,
     "Confermato", " confermati su", kNothing, "", "", {}},

    {"SZone",       "Zone -",       "[Zona CQ]<>0",   kWhereOrAnd,
     "Zona CQ",    "[Zona CQ]",       "[Zona CQ],QslRicevuta",                 "[Zona CQ],QslRicevuta", "",
     " And [Zona CQ]=",         "",  {{{"Zona", Twips(700)}, {"Qsl", Twips(1200)}}}, 2, 1, 1,
     "Confermata", " confermate su", kNothing, "", "", {}},

    {"SCountry",    "Country -",    "Country<>''",    kWhereOrAnd,
     "Country",    "Country",         "Country,QslRicevuta",                   "Country,QslRicevuta", "",
     " And Country='",          "'", {{{"Country", Twips(750)}, {"", Twips(3000)}, {"Qsl", Twips(1200)}, {"", Twips(600)}, {"", Twips(0)}}}, 5, 2, 3,
     "Confermato", " confermati su", kCountryOfKey,
     "SELECT Country,Descrizione FROM Country ORDER BY Country", "",
     {.flags = true, .whiteWhenNot = true}},

    // Grouped in the order of the list, which the index on Provincia has; the country comes last.
    {"SProvincie",  "Provincie -",  "Provincia<>''",  kAnd,
     "Provincia",  "Provincia",       "Country,Provincia,QslRicevuta",         "Provincia,QslRicevuta,Country", "Country",
     " And Provincia='",        "'", {{{"Provincie", Twips(900)}, {"", Twips(3000)}, {"Qsl", Twips(1200)}}}, 3, 2, 2,
     "Confermata", " confermate su", kProvinceOfKey,
     "SELECT Provincia,Descrizione FROM Provincie WHERE Country='", "' ORDER BY Provincia",
     {.whiteWhenNot = true}},

    {"SNote",       "Custom -",     "",               kNone,
     "Note",       "Note",            "Note,QslRicevuta",                      "Note,QslRicevuta", "",
     "",                        "",  {{{"", Twips(750)}, {"", Twips(3000)}, {"Qsl", Twips(1200)}}}, 3, 2, 2,
     "Confermato", " confermati su", kSplitKey, "", "", {.staged = true}},
}};
// clang-format on

}  // namespace

const std::array<AwardMember, 8>& AwardMembers() { return kMembers; }

const AwardMember& AwardMemberOf(std::string_view window) {
  const auto at = std::find_if(kMembers.begin(), kMembers.end(),
                               [&](const AwardMember& each) { return each.window == window; });
  if (at == kMembers.end()) throw std::out_of_range("no award of that name");
  return *at;
}

std::string SelectionOf(const AwardMember& member, std::string_view selection) {
  if (member.join == kNone) return std::string(selection);
  const bool opens = member.join == kWhereOrAnd && selection.empty();
  return fmt::format("{}{}{}", selection, opens ? "WHERE " : " AND ", member.condition);
}

std::string GroupedQuery(const AwardMember& member, std::string_view ownSelection) {
  const std::string from = member.traits.staged ? "SNote" : fmt::format("Log {}", ownSelection);
  return fmt::format("SELECT {} FROM {} GROUP BY {} ORDER BY {},QslRicevuta", member.columns, from,
                     member.groups, member.expression);
}

}  // namespace brenvo::awards
