// A window with a field of every kind, which writes down the events that they run.
#pragma once

#include <string>
#include <vector>

#include "base/text.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/rich_text.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::drive {

// Two rows of two texts, which can be changed.
class TwoRows : public forms::GridRows {
 public:
  std::int64_t RowCount() override { return static_cast<std::int64_t>(rows.size()); }
  std::string CellText(std::int64_t row, std::size_t field) override { return At(row)[field]; }
  void SetCellText(std::int64_t row, std::size_t field, std::string_view text) override {
    At(row)[field] = text;
  }
  void AddRow(std::size_t field, std::string_view text) override {
    rows.push_back({"", ""});
    rows.back()[field] = text;
  }
  void DeleteRow(std::int64_t row) override { rows.erase(rows.begin() + row); }
  std::vector<std::string>& At(std::int64_t row) { return rows[static_cast<std::size_t>(row)]; }

  std::vector<std::vector<std::string>> rows{{"a", "b"}, {"c\td", ""}};
};

// Remembers what it was asked for; the second row is marked to begin with.
class Arranging : public forms::GridArranger {
 public:
  void SortBy(int column, bool add) override {
    asked.push_back("sort " + std::to_string(column) + (add ? " add" : ""));
  }
  std::string FilterText(int) override { return {}; }
  void SetFilterText(int column, std::string_view text) override {
    asked.push_back("filter " + std::to_string(column) + " " + std::string(text));
  }
  std::string FilterHint(int) override { return {}; }
  std::string FilterFault(int) override { return {}; }
  void MoveColumn(int from, int to) override {
    asked.push_back("move " + std::to_string(from) + " " + std::to_string(to));
  }
  void SetColumnWidth(int column, base::Twips width) override {
    asked.push_back("width " + std::to_string(column) + " " + std::to_string(width.Value()));
  }
  bool IsMarked(std::int64_t row) override { return row == marked; }
  void Mark(std::int64_t from, std::int64_t to, bool mark) override {
    asked.push_back((mark ? "mark " : "unmark ") + std::to_string(from) + " " + std::to_string(to));
  }
  std::int64_t marked = 2;
  std::vector<std::string> asked;
};

class EveryField : public forms::Window {
 public:
  explicit EveryField(forms::WindowHost& host)
      : forms::Window(host, "W", "Every field", base::Twips(3000), base::Twips(1500)) {
    Band.SetItems({" 20 m", "  2 m", " 70cm"});
    Mode.SetItems({"", "CW", "SSB"});
    Free.SetItems({"one", "two"});
    Many.SetItems({"a", "b", "c"});
    Entries.Add("Tutte", true);
    Entries.Add(" 20 m");
    Entries.OnPick = [this](int entry) {
      Note("Entries pick " + std::to_string(entry));
      Entries.SetChecked(entry, !Entries.Entries()[static_cast<std::size_t>(entry)].checked);
    };
    cmToggle.Toggle = true;
    cmOff.SetEnabled(false);
    First.JoinWith(Second);
    Cells.SetRows(2);
    Cells.SetColumns(2);
    Cells.SetCell(0, 0, "Call");
    Cells.SetCell(1, 1, "a\tb");
    Cells.OnHeading = [this](int column) { Note("Cells heading " + std::to_string(column)); };
    Rows.SetSource(&source);
    Rows.SetColumnsOf({{"First", 0, forms::kOwnSize, {}}, {"Second", 1, forms::kOwnSize, {}}});
    Rows.Editable = true;
    Arranged.SetSource(&source);
    Arranged.SetColumnsOf(
        {{"First ▲", 0, forms::kOwnSize, {}}, {"Second", 1, forms::kOwnSize, {}}});
    Arranged.SetArranger(&arranging);
    Arranged.OnHeading = [this](int column) { arranging.SortBy(column, false); };
    for (forms::Field* field : Fields()) Watch(*field);
    Dial.HoldText("7.050");
    Dial.OnStep = [this](std::size_t character, int by) {
      Note("Dial step " + std::to_string(character) + (by > 0 ? " up" : " down"));
    };
    DefaultCommand = &cmOk;
    CancelCommand = &cmCancel;
  }

  std::vector<std::string> TakeEvents() { return std::exchange(events, {}); }
  void Note(std::string event) { events.push_back(std::move(event)); }

  std::vector<std::string> events;
  TwoRows source;
  forms::TextField Call{*this, "Call"};
  forms::TextField Dial{*this, "Dial"};
  forms::MaskedField Time{*this, "Time", "##:##"};
  forms::ListField Band{*this, "Band", forms::ListStyle::kDropDown};
  forms::ListField Mode{*this, "Mode", forms::ListStyle::kOpen};
  forms::ListField Free{*this, "Free", forms::ListStyle::kCombo};
  forms::ListField Many{*this, "Many", forms::ListStyle::kMulti};
  forms::CheckBox Check{*this, "Check"};
  forms::CheckBox Three{*this, "Three", {}, true};
  forms::OptionButton First{*this, "First"};
  forms::OptionButton Second{*this, "Second"};
  forms::OptionGroup Group{*this, "Group", {"a", "b"}};
  forms::Slider Tune{*this, "Tune", 0, 100, 50};
  forms::Gauge Meter{*this, "Meter", 20, 175};
  forms::Label Query{*this, "Query"};
  forms::RichText Received{*this, "Received"};
  forms::StatusBar Bar{*this, "Bar", 2};
  forms::CellGrid Cells{*this, "Cells"};
  forms::DataGrid Rows{*this, "Rows"};
  Arranging arranging;
  forms::DataGrid Arranged{*this, "Arranged"};
  forms::EntryArray Entries{*this, "Entries"};
  forms::Command cmOk{*this, "cmOk", "&Ok"};
  forms::Command cmCancel{*this, "cmCancel", "Cancel"};
  forms::Command cmToggle{*this, "cmToggle", "Toggle"};
  forms::Command cmOff{*this, "cmOff", "Off"};

 private:
  void Watch(forms::Field& field) {
    const auto noting = [this, &field](const char* event) {
      return [this, &field, event] { Note(field.Name() + ' ' + event); };
    };
    field.OnFocus = noting("focus");
    field.OnChange = noting("change");
    field.OnClick = noting("click");
    field.OnDoubleClick = noting("double");
  }
};

}  // namespace brenvo::drive
