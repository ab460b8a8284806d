#include "card_fields.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "adif/adif_values.h"
#include "base/text.h"

namespace brenvo::adif {
namespace {

struct SideNames {
  core::CardSide side;
  bool core::LogContact::*column;
  std::string_view flag, day, way, own;
  std::string_view yes;  // the letters of the flag that mean a card
};
constexpr SideNames kSides[] = {
    {core::CardSide::kSent, &core::LogContact::QslInviata, "QSL_SENT", "QSLSDATE", "QSL_SENT_VIA",
     "APP_BRENVO_QSL_SENT_CARDS", "Y"},
    {core::CardSide::kReceived, &core::LogContact::QslRicevuta, "QSL_RCVD", "QSLRDATE",
     "QSL_RCVD_VIA", "APP_BRENVO_QSL_RCVD_CARDS", "YV"},
};

const AdifField* Find(const std::vector<AdifField>& fields, std::string_view name) {
  const auto at = std::ranges::find(fields, name, &AdifField::name);
  return at == fields.end() ? nullptr : &*at;
}

bool IsYes(const SideNames& names, std::string_view flag) {
  return flag.size() == 1 && names.yes.find(base::UpperAscii(flag)) != std::string_view::npos;
}

// Nothing where the standard's fields tell of no card, or not clearly.
std::optional<core::QslCard> ToldCard(const SideNames& names, const AdifRecord& record,
                                      const std::vector<AdifField>& kept) {
  const std::string* flag = record.Find(names.flag);
  if (flag == nullptr || !IsYes(names, *flag)) return std::nullopt;
  const AdifField* day = Find(kept, names.day);
  const AdifField* way = Find(kept, names.way);
  if (day == nullptr && way == nullptr) return std::nullopt;
  core::QslCard card;
  if (day != nullptr) {
    card.day = DateIn(day->value);
    if (!card.day) return std::nullopt;
  }
  if (way != nullptr) {
    constexpr std::string_view kLetters = "BDEM";
    const auto known = way->value.size() == 1 ? core::CardWayOf(way->value) : std::nullopt;
    if (!known || kLetters.find(core::FactsOf(*known).letter) == kLetters.npos) return std::nullopt;
    card.way = *known;
  }
  return card;
}

// The standard lets files tell of these.
bool IsWayOfFiles(core::CardWay way) {
  return way == core::CardWay::kBureau || way == core::CardWay::kDirect ||
         way == core::CardWay::kElectronic;
}

std::vector<AdifField> StandardFields(const SideNames& names, const core::QslCards& cards,
                                      const core::LogContact& contact) {
  const core::QslCard* const latest = core::LatestCard(cards);
  std::vector<AdifField> fields;
  if (latest == nullptr || !(contact.*names.column)) return fields;
  if (latest->day) {
    std::string day = base::IsoText(*latest->day).substr(0, 10);
    std::erase(day, '-');
    fields.push_back({std::string(names.day), day});
  }
  if (IsWayOfFiles(latest->way)) {
    fields.push_back({std::string(names.way), std::string(core::FactsOf(latest->way).letter)});
  }
  return fields;
}

bool IsSideField(const SideNames& names, const AdifField& field) {
  return field.name == names.day || field.name == names.way;
}

void AddFields(const SideNames& names, const core::QslCards& cards, const core::LogContact& contact,
               std::vector<AdifField>& kept, std::vector<AdifField>& fields) {
  if (cards.empty()) return;
  const std::vector<AdifField> standard = StandardFields(names, cards, contact);
  std::erase_if(kept, [&](const AdifField& field) {
    const bool isNo = field.name == names.flag && !IsYes(names, field.value);
    return (isNo && contact.*names.column) || Find(standard, field.name) != nullptr;
  });
  fields.insert(fields.end(), standard.begin(), standard.end());
  const core::QslCard& first = cards.front();
  const bool whole =
      cards.size() == 1 && !standard.empty() &&
      (IsWayOfFiles(first.way) || first.way == core::CardWay::kUnknown) &&
      std::ranges::none_of(kept, [&](const AdifField& field) { return IsSideField(names, field); });
  if (!whole) fields.push_back({std::string(names.own), core::TextOfCards(cards)});
}

}  // namespace

core::ContactCards TakeCards(const AdifRecord& record, const core::LogContact& contact,
                             std::vector<AdifField>& kept) {
  core::ContactCards cards;
  for (const SideNames& names : kSides) {
    core::QslCards& ofSide = cards.Of(names.side);
    const std::string* own = record.Find(names.own);
    const auto told = own == nullptr ? std::nullopt : core::CardsOfText(*own);
    if (told) {
      ofSide = *told;
      for (const AdifField& said : StandardFields(names, ofSide, contact)) std::erase(kept, said);
    } else if (contact.*names.column) {
      if (const auto card = ToldCard(names, record, kept)) {
        ofSide = {*card};
        std::erase_if(kept, [&](const AdifField& field) { return IsSideField(names, field); });
      }
    }
  }
  return cards;
}

std::vector<AdifField> CardFields(const core::ContactCards& cards, const core::LogContact& contact,
                                  std::vector<AdifField>& kept) {
  std::vector<AdifField> fields;
  for (const SideNames& names : kSides) {
    AddFields(names, cards.Of(names.side), contact, kept, fields);
  }
  return fields;
}

}  // namespace brenvo::adif
