#include "contact_reading.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

#include "core/quoted.h"

namespace brenvo::list {
namespace {

using core::ColumnKind;

// Rows between the looks whether to go on.
constexpr unsigned kRowsBetweenLooks = 4096;

void Remember(ColumnMemory& memory, ColumnKind kind, Slot slot, engine::Reader::Row& row,
              std::size_t at) {
  switch (kind) {
    case ColumnKind::kDate:
      memory.Set(slot, row.Date(at));
      break;
    case ColumnKind::kYesNo:
      memory.Set(slot, row.Bool(at) ? "Sì" : "No");
      break;
    case ColumnKind::kNumber:
      if (row.Number(at) != 0) memory.Set(slot, row.Text(at));
      break;
    case ColumnKind::kText:
      memory.Set(slot, row.Text(at));
      break;
  }
}

}  // namespace

KnownContacts::KnownContacts(std::vector<std::int64_t> keys)
    : keys_(std::move(keys)), byKey_(keys_.size()) {
  std::iota(byKey_.begin(), byKey_.end(), Slot{0});
  std::ranges::sort(byKey_, {}, [this](Slot slot) { return keys_[slot]; });
}

std::optional<Slot> KnownContacts::SlotOf(std::int64_t key) const {
  const auto at =
      std::ranges::lower_bound(byKey_, key, {}, [this](Slot slot) { return keys_[slot]; });
  if (at == byKey_.end() || keys_[*at] != key) return std::nullopt;
  return *at;
}

template <class See>
void ContactReading::Each(const std::string& select, const See& see) {
  const bool whole = reader->ForEach(select, [&](engine::Reader::Row& row) {
    see(row);
    return ++rows_ % kRowsBetweenLooks != 0 || (*goOn_)();
  });
  stopped = stopped || !whole;
}

// Both come by number: nobody is looked for.
template <class Take>
void ContactReading::EachKnown(const std::string& select, const Take& take) {
  auto slot = known->ByKey().begin();
  const auto end = known->ByKey().end();
  Each(select, [&](engine::Reader::Row& row) {
    const std::int64_t key = row.Integer(0);
    while (slot != end && known->KeyOf(*slot) < key) ++slot;
    if (slot != end && known->KeyOf(*slot) == key) take(*slot, row);
  });
}

void ContactReading::Run(const std::function<bool()>& goOn) {
  goOn_ = &goOn;
  try {
    if (keys) ReadKeys();
    std::vector<std::size_t> ofLog;
    for (const std::size_t field : fields) {
      const ContactColumn& column = columns[field];
      ColumnMemory& memory = memories.emplace(field, column.kind).first->second;
      memory.Resize(known->Size());
      switch (column.source) {
        case ContactColumn::Source::kLog:
          ofLog.push_back(field);
          break;
        case ContactColumn::Source::kNumber:
          ReadNumbers(memory);
          break;
        case ContactColumn::Source::kUuid:
          ReadUuids(memory);
          break;
        case ContactColumn::Source::kStation:
          ReadStations(memory);
          break;
        case ContactColumn::Source::kSentCards:
          ReadCards(core::CardSide::kSent, memory);
          break;
        case ContactColumn::Source::kReceivedCards:
          ReadCards(core::CardSide::kReceived, memory);
          break;
        case ContactColumn::Source::kKept:
          ReadKept(column.heading, memory);
          break;
      }
    }
    if (!ofLog.empty()) ReadLogColumns(ofLog);
    for (const auto& [field, memory] : memories) memory.Prepare();
  } catch (...) {
    failure = std::current_exception();
  }
}

void ContactReading::ReadKeys() {
  std::vector<std::int64_t> found;
  Each(std::string(kNewestFirst), [&](auto& row) {
    const std::int64_t key = row.Integer(0);
    if (!selection || std::ranges::binary_search(*selection, key)) found.push_back(key);
  });
  known = std::make_shared<const KnownContacts>(std::move(found));
}

// All in one pass.
void ContactReading::ReadLogColumns(const std::vector<std::size_t>& ofLog) {
  std::string names;
  std::vector<std::pair<ColumnKind, ColumnMemory*>> read;
  for (const std::size_t field : ofLog) {
    names += fmt::format(",[{}]", columns[field].heading);
    read.emplace_back(columns[field].kind, &memories.at(field));
  }
  EachKnown(fmt::format("Select QsoNr{} from Log Order By QsoNr", names),
            [&](Slot slot, engine::Reader::Row& row) {
              std::size_t at = 0;
              for (const auto& [kind, memory] : read) Remember(*memory, kind, slot, row, ++at);
            });
}

void ContactReading::ReadNumbers(ColumnMemory& memory) {
  for (Slot slot = 0; slot < known->Size(); ++slot) {
    memory.Set(slot, std::to_string(known->KeyOf(slot)));
  }
}

void ContactReading::ReadUuids(ColumnMemory& memory) {
  EachKnown("Select QsoNr,Uuid from LogOrigine Order By QsoNr",
            [&](Slot slot, auto& row) { memory.Set(slot, row.Text(1)); });
}

void ContactReading::ReadStations(ColumnMemory& memory) {
  std::map<std::int64_t, std::string> names;
  Each("Select Stazione,Nome from Stazioni",
       [&](auto& row) { names[row.Integer(0)] = row.Text(1); });
  EachKnown("Select QsoNr,Stazione from LogOrigine Order By QsoNr",
            [&](Slot slot, auto& row) { memory.Set(slot, names[row.Integer(1)]); });
}

void ContactReading::ReadCards(core::CardSide side, ColumnMemory& memory) {
  std::optional<Slot> last;
  core::QslCards cards;
  EachKnown(fmt::format("Select QsoNr,Via,Data from LogQsl where Verso='{}' Order By QsoNr",
                        core::LetterOf(side)),
            [&](Slot slot, auto& row) {
              if (last != slot) cards.clear();
              last = slot;
              const auto card = core::CardOfRow(row.Text(1), row.Date(2));
              if (!card) return;
              cards.insert(std::ranges::upper_bound(cards, card->way, {}, &core::QslCard::way),
                           *card);
              memory.Set(slot, core::ShownCards(cards));
            });
}

void ContactReading::ReadKept(const std::string& field, ColumnMemory& memory) {
  EachKnown(fmt::format("Select QsoNr,Valore from LogAdif where Campo={} Order By QsoNr",
                        core::Quoted(field)),
            [&](Slot slot, auto& row) { memory.Set(slot, row.Text(1)); });
}

}  // namespace brenvo::list
