#include "awards/award_grid.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <limits>

#include "base/number.h"
#include "base/text.h"
#include "contacts_in_log.h"
#include "core/entry.h"
#include "core/entry_key.h"
#include "core/long_run.h"
#include "core/places.h"
#include "core/texts.h"
#include "note_staging.h"
#include "selection_words.h"

namespace brenvo::awards {
namespace {

constexpr std::int64_t kRowsWhileLoading = 9999;
constexpr int kMaxRow = std::numeric_limits<std::int16_t>::max();
constexpr base::Twips kFlagRowHeight(360);
constexpr int kFlagColumn = 3;

struct AwardMap {
  std::string_view window, command, caption;
  std::string_view mapFile, word;  // both empty: the square map, a window of its own
};
constexpr AwardMap kMaps[] = {
    {"SField", "cmMappa", "Mappa del mondo", "fieldmap.jpg", "FIELD"},
    {"SSQuare", "cmMappa", "Mappa d'Europa", "", ""},
    {"SSQuare", "cmMappaMondo", "Mappa del mondo", "wm.jpg", "SQUARE"},
    {"SZone", "cmMappa", "Mappa Zone CQ", "wazmap.jpg", "WAZ"},
    {"SProvincie", "cmMappa", "Mappa dell' Italia", "italia.jpg", "ITALIA"},
};

// Runs a step of the load; a failure ends the step and nothing else.
template <class Step>
void Try(Step step) {
  try {
    step();
  } catch (const std::exception&) {
  }
}

// A tag of up to three parts between slashes: the two behind the first slash, when they are there.
std::pair<std::string, std::string> SplitNoteKey(std::string key) {
  const std::size_t first = base::InStr(key, "/");
  if (first == 0) return {key, ""};
  key = base::Mid(key, first + 1);
  // From as far into the rest as the first slash stood in the whole: a second part that is
  // shorter than the first one is not cut off.
  const std::size_t second = base::InStr(first + 1, key, "/");
  if (second == 0) return {key, ""};
  return {base::Left(key, second - 1), base::Mid(key, second + 1)};
}

}  // namespace

AwardGrid::AwardGrid(core::Session& session, const AwardMember& member)
    : forms::Window(session.Host(), std::string(member.window), std::string(member.caption),
                    base::Twips(6600), base::Twips(7200)),
      session_(session),
      member_(member) {
  MakeCommands();
  if (!member_.contacts.empty()) Spread1.OnDoubleClick = [this] { ShowEntryInLog(); };
}

void AwardGrid::MakeCommands() {
  const auto add = [this](std::string_view name, std::string_view caption,
                          std::function<void()> action) -> forms::Command* {
    commands_.push_back(std::make_unique<forms::Command>(*this, std::string(name),
                                                         std::string(caption), std::move(action)));
    return commands_.back().get();
  };
  std::vector<forms::MenuItem> pages;
  for (const AwardPage& page : AwardPages()) {
    if (page.window != member_.window) continue;
    pages.emplace_back(add(page.command, page.caption, [this, &page] {
      WriteAwardPage(session_, page, {member_, selection_, Spread1});
    }));
  }
  if (pages.size() > 1) {
    pagesMenu_ = std::make_unique<forms::Menu>(*this, "menuHTML", "Genera HTML", std::move(pages));
    MenuBar.emplace_back(pagesMenu_.get());
  } else {
    MenuBar = std::move(pages);
  }
  for (const AwardMap& map : kMaps) {
    if (map.window != member_.window) continue;
    MenuBar.emplace_back(
        add(map.command, map.caption, [this, &map] { ShowMap(map.mapFile, map.word); }));
  }
}

void AwardGrid::ShowMap(std::string_view mapFile, std::string_view word) {
  if (mapFile.empty()) {
    if (forms::Window* map = session_.Windows.LoadNew("MappaSquare")) session_.Windows.Show(*map);
    return;
  }
  session_.Map.Pointer_X = 0;
  session_.Handed.QueryText = selection_;
  session_.Map.MapFile = mapFile;
  session_.DisplayMap(word);
}

void AwardGrid::ShowEntryInLog() {
  if (Spread1.Row() < 1) return;
  OpenLogIfNone(session_);
  ShowContacts(session_, fmt::format("Select * from Log {}{}{}{}", selection_, member_.contacts,
                                     Spread1.Cell(Spread1.Row(), 0), member_.quote));
}

void AwardGrid::Load() {
  const core::LongStatement watched(session_, member_.caption);
  if (member_.traits.staged) {
    Try([&] { SetCaption("Note - " + StageNotes(session_, session_.Handed.QueryText)); });
  }
  Try([&] { ShowHeadings(); });
  Try([&] {
    Selezione.SetText("Selezione: " + SelectionInWords(session_, session_.Handed.QueryText));
  });
  selection_ = SelectionOf(member_, session_.Handed.QueryText);
  Try([&] { groups_ = session_.Db.OpenSnapshot(GroupedQuery(member_, selection_)); });
  if (groups_) Try([&] { ListEntries(); });
  // Half a score would be read as a whole one.
  if (watched.Stopped()) {
    Close();
    return;
  }
  Spread1.SetRows(nextRow_);
  SetCaption(fmt::format("{}{}{}{}", member_.caption, base::Str(confirmed_), member_.score,
                         base::Str(total_)));
}

void AwardGrid::Unload() { groups_.reset(); }

void AwardGrid::ShowHeadings() {
  Spread1.SetColumns(member_.headingCount);
  Spread1.SetRows(kRowsWhileLoading);
  for (int column = 0; column < member_.headingCount; ++column) {
    const AwardColumn& heading = member_.headings[static_cast<std::size_t>(column)];
    Spread1.SetCell(0, column, heading.heading);
    if (heading.width != forms::kOwnSize) Spread1.SetColumnWidth(column, heading.width);
  }
}

void AwardGrid::ListEntries() {
  if (groups_->EOF_()) return;
  const auto read = [this] {
    Group group;
    group.key = groups_->Field(member_.key).Text();
    group.confirmed = groups_->Field("QslRicevuta").Bool();
    if (!member_.second.empty()) group.second = groups_->Field(member_.second).Text();
    return group;
  };
  Group current = read();
  if (member_.traits.firstQslUnread) current.confirmed = false;
  if (session_.Handed.ElencaTutto == 1 && !member_.reference.empty()) {
    Try([&] { ListReferenceTable(current); });
  }
  // True sorts first, so the first row of a key tells whether any of its contacts is confirmed.
  Try([&] {
    for (groups_->MoveNext(); !groups_->EOF_(); groups_->MoveNext()) {
      Group next = read();
      if (core::SameEntry(next.key, current.key)) continue;
      ListEntry(current);
      current = std::move(next);
    }
  });
  ListEntry(current);
}

void AwardGrid::ListReferenceTable(const Group& first) {
  listsAll_ = true;
  std::string select(member_.reference);
  if (!member_.referenceEnd.empty()) {
    select += first.second;
    select += member_.referenceEnd;
  }
  const auto rows = session_.Db.OpenSnapshot(select);
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::string key = rows->Field(std::size_t{0}).Text();
    Try([&] {
      Spread1.SetCell(nextRow_, 0, key);
      Spread1.SetCell(nextRow_, 1, core::FieldText(*rows, "Descrizione"));
      if (member_.traits.flags) Spread1.SetRowHeight(nextRow_, kFlagRowHeight);
      rowOfKey_.emplace(core::ComparedKey(key), nextRow_);
    });
    NextRow();
  }
}

void AwardGrid::ListEntry(const Group& group) {
  ++total_;
  std::int64_t row = nextRow_;
  if (listsAll_) {
    const auto listed = rowOfKey_.find(core::ComparedKey(group.key));
    if (listed == rowOfKey_.end()) return;
    row = listed->second;
  } else {
    Try([&] { WriteKey(row, group); });
  }
  std::optional<Described> described;
  Try([&] {
    described = Find(group);
    // The reference table's own row has its description already.
    if (described && !listsAll_) Spread1.SetCell(row, 1, described->text);
  });
  Try([&] { Spread1.SetCell(row, member_.qslColumn, group.confirmed ? member_.confirmed : ""); });
  if (group.confirmed) ++confirmed_;
  if (member_.traits.flags && described) Try([&] { ShowFlag(row, described->flag); });
  Try([&] { Paint(row, group.confirmed); });
  if (!listsAll_) NextRow();
}

void AwardGrid::WriteKey(std::int64_t row, const Group& group) {
  if (member_.text == EntryText::kSplitKey) {
    const auto [number, name] = SplitNoteKey(group.key);
    Spread1.SetCell(row, 0, number);
    Spread1.SetCell(row, 1, name);
    return;
  }
  Spread1.SetCell(row, 0, group.key);
  if (member_.traits.flags) Spread1.SetRowHeight(row, kFlagRowHeight);
}

std::optional<AwardGrid::Described> AwardGrid::Find(const Group& group) {
  const auto ofCountry = [this](std::string_view code) -> std::optional<Described> {
    const auto country = core::FindCountry(session_, code);
    if (!country) return std::nullopt;
    return Described{country->Descrizione, country->Flag};
  };
  switch (member_.text) {
    case EntryText::kNothing:
    case EntryText::kSplitKey:
      return std::nullopt;
    case EntryText::kCountryOfKey:
      return ofCountry(group.key);
    case EntryText::kCountryOfGroup:
      return ofCountry(base::Trim(group.second));
    case EntryText::kProvinceOfKey: {
      const auto province = core::FindProvince(session_, group.second, group.key);
      if (!province) return std::nullopt;
      return Described{province->Descrizione, ""};
    }
  }
  return std::nullopt;
}

void AwardGrid::ShowFlag(std::int64_t row, std::string_view flag) {
  if (core::IsEmptyField(flag)) return;
  const std::filesystem::path picture = session_.File(fmt::format("\\{}", flag));
  if (std::filesystem::exists(picture)) {
    Spread1.SetAlignment(row, kFlagColumn, forms::CellAlignment::kCentre);
    Spread1.SetCellPicture(row, kFlagColumn, picture.string());
  }
  Spread1.SetCell(row, kFlagFileColumn, flag);
}

void AwardGrid::Paint(std::int64_t row, bool confirmed) {
  if (!confirmed && !member_.traits.whiteWhenNot) return;
  for (int column = 1; column <= member_.lastGreen; ++column) {
    Spread1.SetBackColour(row, column, confirmed ? base::kGreen : base::kWhite);
  }
}

// A 16-bit count: it stops at its end.
void AwardGrid::NextRow() { nextRow_ = std::min(nextRow_ + 1, kMaxRow); }

}  // namespace brenvo::awards
