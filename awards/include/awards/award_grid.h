// How far the operator has come in an award: a list of its entries and a score.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "awards/award_members.h"
#include "awards/award_pages.h"
#include "core/session.h"
#include "forms/command.h"
#include "forms/grid.h"

namespace brenvo::awards {

// One window for all eight awards. It reads the session's selection once, at load, and does not
// follow the log afterwards. Whatever fails while it loads is passed over without a word; stopped
// by the operator, it closes.
class AwardGrid : public forms::Window {
 public:
  AwardGrid(core::Session& session, const AwardMember& member);

  void Load() override;
  void Unload() override;

  // Row 0 is the heading; fills the window.
  forms::CellGrid Spread1{*this, "Spread1"};

  // Which contacts are listed, in words.
  forms::Label Selezione{*this, "Selezione"};

  // The selection of the moment of loading, with the award's own condition.
  const std::string& Selection() const { return selection_; }

 private:
  // The group being read.
  struct Group {
    std::string key, second;
    bool confirmed = false;
  };
  // What the tables of countries and provinces say of a group; a province has no flag.
  struct Described {
    std::string text, flag;
  };

  void MakeCommands();
  void ShowMap(std::string_view mapFile, std::string_view word);
  void ShowEntryInLog();

  void ShowHeadings();
  void ListEntries();
  void ListReferenceTable(const Group& first);
  void ListEntry(const Group& group);
  void WriteKey(std::int64_t row, const Group& group);
  std::optional<Described> Find(const Group& group);
  void ShowFlag(std::int64_t row, std::string_view flag);
  void Paint(std::int64_t row, bool confirmed);
  void NextRow();

  core::Session& session_;
  const AwardMember& member_;
  std::vector<std::unique_ptr<forms::Command>> commands_;
  std::unique_ptr<forms::Menu> pagesMenu_;

  std::string selection_;
  std::unique_ptr<engine::Snapshot> groups_;
  int confirmed_ = 0, total_ = 0;
  int nextRow_ = 1;
  // "Elenca tutto": the rows that stand in the list already, by their key as the file engine
  // compares it.
  bool listsAll_ = false;
  std::map<std::string, std::int64_t, std::less<>> rowOfKey_;
};

}  // namespace brenvo::awards
