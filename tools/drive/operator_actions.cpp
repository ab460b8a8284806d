#include "drive/operator_actions.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "drive/numbers.h"
#include "forms/field_visit.h"
#include "recorder/refused.h"

namespace brenvo::drive {
namespace {

// Every kind of field has its action here.
using namespace forms;

[[noreturn]] void Refuse(const Field& field, const std::string& why) {
  throw recorder::Refused{field.Owner().Name() + '.' + field.Name() + ' ' + why};
}

void WantEnabled(const Field& field) {
  if (!field.Enabled()) Refuse(field, "is disabled");
}

// `number` as an index below `count`.
int Index(const Field& field, std::int64_t number, std::int64_t count, const char* what) {
  if (number < 0 || number >= count) {
    Refuse(field, std::string("has no ") + what + ' ' + std::to_string(number));
  }
  return static_cast<int>(number);
}

template <class Kind>
Kind& As(Field& field, const char* what) {
  auto* as = FieldAs<Kind>(field);
  if (as == nullptr) Refuse(field, std::string("is no ") + what);
  return *as;
}

bool IsOnWord(const Field& field, std::string_view state) {
  if (state == "on") return true;
  if (state == "off") return false;
  Refuse(field, "cannot be " + std::string(state));
}

CheckState StateOf(const CheckBox& box, std::string_view state) {
  if (state == "grey" && box.ThreeStates()) return CheckState::kGrey;
  return IsOnWord(box, state) ? CheckState::kOn : CheckState::kOff;
}

// The entry that equals a text, else the one that equals it but for blanks around both.
int FindEntry(const Field& field, const std::vector<std::string>& entries, std::string_view text) {
  auto at = std::find(entries.begin(), entries.end(), text);
  if (at == entries.end()) {
    at = std::find_if(entries.begin(), entries.end(),
                      [wanted = base::Trim(text)](const std::string& each) {
                        return base::Trim(each) == wanted;
                      });
  }
  if (at == entries.end()) Refuse(field, "has no entry \"" + std::string(text) + '"');
  return static_cast<int>(at - entries.begin());
}

void SetList(ListField& list, std::string_view text) {
  const auto& items = list.Items();
  if (list.Style() == ListStyle::kCombo &&
      std::find(items.begin(), items.end(), text) == items.end()) {
    list.SetText(text);
    return;
  }
  const bool none = text.empty() && std::none_of(items.begin(), items.end(), [](const auto& item) {
                      return base::Trim(item).empty();
                    });
  if (none && list.Style() != ListStyle::kMulti) {
    list.SetListIndex(-1);
    return;
  }
  const int entry = FindEntry(list, items, text);
  if (list.Style() != ListStyle::kMulti || !list.Selected(entry)) list.Pick(entry);
}

int EntryOf(const ListField& list, std::int64_t n) {
  return Index(list, n, static_cast<std::int64_t>(list.Items().size()), "entry");
}

int EntryOf(const EntryArray& entries, std::int64_t n) {
  return Index(entries, n, static_cast<std::int64_t>(entries.Entries().size()), "entry");
}

int EntryOf(const OptionGroup& group, std::int64_t n) {
  return Index(group, n, static_cast<std::int64_t>(group.Captions().size()), "entry");
}

struct GridPlace {
  std::int64_t row;
  int column;
};

char32_t KeyCharacter(const Field& field, std::string_view key) {
  if (key == "enter") return kEnter;
  if (key == "backspace") return kBackspace;
  if (base::Len(key) != 1) Refuse(field, "has no use for the key " + std::string(key));
  return base::Characters(key).front();
}

void OpenContextMenu(Field& field) {
  const auto open = [](const std::function<void()>& handler) {
    if (handler) handler();
  };
  VisitField(
      field, [&](OneOf<Grid, DataGrid> auto& grid) { open(grid.OnContextMenu); },
      [&](ListField& list) { open(list.OnContextMenu); },
      [](OneOf<CheckBox, Command, DatePicker, EntryArray, Gauge, Label, MaskedField, Menu,
               OptionButton, OptionGroup, Panel, PictureBox, RichText, Slider, StatusBar, TabStrip,
               TextField, ToolBar> auto& other) { Refuse(other, "has no menu"); });
}

GridPlace PlaceIn(Grid& grid, std::int64_t n, std::optional<std::int64_t> m) {
  Index(grid, n, grid.Rows(), "row");
  return {n, m || grid.Columns() > 0 ? Index(grid, m.value_or(0), grid.Columns(), "column") : 0};
}

}  // namespace

void SetValue(Field& field, std::string_view value) {
  VisitField(
      field,
      [&](ListField& list) {
        WantEnabled(list);
        SetList(list, value);
      },
      [&](OneOf<TextField, MaskedField, DatePicker> auto& text) { text.SetText(value); },
      [&](RichText& rich) { rich.SetText(value); }, [&](Label& label) { label.SetText(value); },
      [&](CheckBox& box) { box.SetState(StateOf(box, value)); },
      [&](OptionButton& option) { option.SetOn(IsOnWord(option, value)); },
      [&](OneOf<OptionGroup, TabStrip> auto& group) {
        group.SetIndex(EntryOf(group, WholeNumber(value)));
      },
      [&](Slider& slider) { slider.SetValue(static_cast<int>(WholeNumber(value))); },
      [](OneOf<Command, DataGrid, EntryArray, Gauge, Grid, Menu, Panel, PictureBox, StatusBar,
               ToolBar> auto& other) { Refuse(other, "takes no value"); });
}

void TypeText(Field& field, std::string_view text,
              const std::function<void(const std::function<void()>&)>& runEvent) {
  auto& typed = As<TextField>(field, "field to type into");
  WantEnabled(field);
  field.Focus();
  for (const char32_t key : base::Characters(text)) {
    if (runEvent) {
      runEvent([&] { typed.TypeKey(key); });
    } else {
      typed.TypeKey(key);
    }
  }
}

void PressKey(Field& field, std::string_view key) {
  WantEnabled(field);
  if (key == "menu") {
    OpenContextMenu(field);
    return;
  }
  if (auto* grid = FieldAs<Grid>(field)) {
    grid->TypeKey(KeyCharacter(field, key));
    return;
  }
  auto* text = FieldAs<TextField>(field);
  Command* const pressed = key == "enter"    ? field.Owner().DefaultCommand
                           : key == "escape" ? field.Owner().CancelCommand
                                             : nullptr;
  const bool takesEnter = text != nullptr && text->OnEnter && !text->ReadOnly;
  if (pressed != nullptr && !(key == "enter" && takesEnter)) {
    Press(*pressed);
  } else if (text == nullptr || key == "escape") {
    Refuse(field, "has no use for the key " + std::string(key));
  } else {
    text->TypeKey(KeyCharacter(field, key));
  }
}

void Press(Field& field) {
  WantEnabled(field);
  VisitField(
      field, [](OneOf<Command, CheckBox, OptionButton> auto& key) { key.Press(); },
      [](OneOf<DataGrid, DatePicker, EntryArray, Gauge, Grid, Label, ListField, MaskedField, Menu,
               OptionGroup, Panel, PictureBox, RichText, Slider, StatusBar, TabStrip, TextField,
               ToolBar> auto& other) { other.Click(); });
}

void ClickAt(Field& field, std::optional<std::int64_t> n, std::optional<std::int64_t> m) {
  if (!n) {
    Press(field);
    return;
  }
  WantEnabled(field);
  VisitField(
      field,
      [&](OneOf<Grid, DataGrid> auto& grid) {
        const GridPlace place = PlaceIn(grid, *n, m);
        grid.ClickCell(place.row, place.column);
      },
      [&](OneOf<ListField, EntryArray> auto& list) { list.Pick(EntryOf(list, *n)); },
      [&](OneOf<OptionGroup, TabStrip> auto& group) { group.Press(EntryOf(group, *n)); },
      [](OneOf<CheckBox, Command, DatePicker, Gauge, Label, MaskedField, Menu, OptionButton, Panel,
               PictureBox, RichText, Slider, StatusBar, TextField, ToolBar> auto& other) {
        Refuse(other, "has no entries");
      });
}

void DoubleClickAt(Field& field, std::optional<std::int64_t> n, std::optional<std::int64_t> m) {
  WantEnabled(field);
  if (!n) {
    field.DoubleClick();
  } else if (auto* grid = FieldAs<Grid>(field)) {
    const GridPlace place = PlaceIn(*grid, *n, m);
    grid->DoubleClickCell(place.row, place.column);
  } else {
    ClickAt(field, n, m);
    field.DoubleClick();
  }
}

void ClickHeading(Field& field, std::int64_t column) {
  auto& grid = As<Grid>(field, "grid");
  WantEnabled(field);
  grid.ClickCell(0, Index(field, column, grid.Columns(), "column"));
}

namespace {

struct Arranged {
  Grid& grid;
  GridArranger& arranger;
};

Arranged ArrangedOf(Field& field) {
  auto& grid = As<Grid>(field, "grid");
  WantEnabled(field);
  if (grid.Arranger() == nullptr) Refuse(field, "is no table that is arranged");
  return {grid, *grid.Arranger()};
}

int ColumnOf(Grid& grid, std::string_view heading) {
  for (int column = 0; column < grid.Columns(); ++column) {
    const std::string cell = grid.Cell(0, column);
    if (cell.substr(0, std::min(cell.find(" ▲"), cell.find(" ▼"))) == heading) return column;
  }
  Refuse(grid, "has no column \"" + std::string(heading) + '"');
}

}  // namespace

void SortTable(Field& field, std::string_view heading, bool add) {
  const auto [grid, arranger] = ArrangedOf(field);
  const int column = ColumnOf(grid, heading);
  if (add) {
    arranger.SortBy(column, true);
  } else {
    grid.ClickCell(0, column);
  }
}

void FilterTable(Field& field, std::string_view heading, std::string_view text,
                 const std::function<void(const std::function<void()>&)>& runEvent) {
  const auto [grid, arranger] = ArrangedOf(field);
  const int column = ColumnOf(grid, heading);
  const auto write = [&, &table = arranger](const std::u32string& written) {
    const std::string now = base::FromCharacters(written);
    if (runEvent) {
      runEvent([&] { table.SetFilterText(column, now); });
    } else {
      table.SetFilterText(column, now);
    }
  };
  std::u32string written;
  write(written);
  for (const char32_t key : base::Characters(text)) write(written += key);
}

void MoveTableColumn(Field& field, std::string_view heading, std::string_view where) {
  const auto [grid, arranger] = ArrangedOf(field);
  arranger.MoveColumn(ColumnOf(grid, heading), ColumnOf(grid, where));
}

void DrawColumn(Field& field, std::string_view heading, std::int64_t twips) {
  constexpr std::int64_t kWidest = 1000000;
  const auto [grid, arranger] = ArrangedOf(field);
  arranger.SetColumnWidth(ColumnOf(grid, heading),
                          base::Twips(Index(field, twips, kWidest, "column of width")));
}

void ToggleMark(Field& field, std::int64_t row) {
  const auto [grid, arranger] = ArrangedOf(field);
  if (row == 0) Refuse(field, "keeps its heading");
  Index(field, row, grid.Rows(), "row");
  arranger.Mark(row, row, !arranger.IsMarked(row));
}

void Tick(Field& field, std::string_view state) {
  WantEnabled(field);
  VisitField(
      field,
      [&](CheckBox& box) {
        const CheckState wanted = StateOf(box, state);
        for (int presses = 0; box.State() != wanted; ++presses) {
          if (presses == 3) Refuse(box, "does not become " + std::string(state));
          box.Press();
        }
      },
      [&](OptionButton& option) {
        if (option.IsOn() == IsOnWord(option, state)) return;
        if (option.IsOn()) Refuse(option, "goes off when another option is pressed");
        option.Press();
      },
      [&](Command& command) {
        if (!command.Toggle) Refuse(command, "is no toggle");
        if (command.Down() != IsOnWord(command, state)) command.Press();
      },
      [](OneOf<DataGrid, DatePicker, EntryArray, Gauge, Grid, Label, ListField, MaskedField, Menu,
               OptionGroup, Panel, PictureBox, RichText, Slider, StatusBar, TabStrip, TextField,
               ToolBar> auto& other) { Refuse(other, "is no check box, option or toggle"); });
}

void TickEntry(Field& field, std::int64_t entry, std::string_view state) {
  WantEnabled(field);
  const bool wanted = IsOnWord(field, state);
  VisitField(
      field,
      [&](ListField& list) {
        if (list.Style() != ListStyle::kMulti) Refuse(list, "is no list of several choices");
        const int index = EntryOf(list, entry);
        if (list.Selected(index) != wanted) list.Pick(index);
      },
      [&](EntryArray& entries) {
        const int index = EntryOf(entries, entry);
        if (entries.Entries()[static_cast<std::size_t>(index)].checked != wanted) {
          entries.Pick(index);
        }
      },
      [&](OneOf<OptionGroup, TabStrip> auto& group) {
        const int index = EntryOf(group, entry);
        if ((group.Index() == index) == wanted) return;
        if (!wanted) Refuse(group, "goes off when another option is pressed");
        group.Press(index);
      },
      [](OneOf<CheckBox, Command, DataGrid, DatePicker, Gauge, Grid, Label, MaskedField, Menu,
               OptionButton, Panel, PictureBox, RichText, Slider, StatusBar, TextField,
               ToolBar> auto& other) { Refuse(other, "is no list of several choices"); });
}

void TurnWheel(Field& field, std::int64_t character, std::string_view way) {
  auto& text = As<TextField>(field, "field to type into");
  WantEnabled(field);
  if (!text.OnStep) Refuse(field, "has no use for the wheel");
  if (way != "up" && way != "down") Refuse(field, "turns up or down alone");
  const auto length = static_cast<std::int64_t>(base::Len(text.Text()));
  text.OnStep(static_cast<std::size_t>(Index(field, character, length, "character")),
              way == "up" ? 1 : -1);
}

void SelectText(Field& field, std::int64_t start, std::int64_t length) {
  if (start < 0 || length < 0) Refuse(field, "has no such piece");
  const auto from = static_cast<std::size_t>(start);
  const auto count = static_cast<std::size_t>(length);
  if (auto* rich = FieldAs<RichText>(field)) {
    rich->Select(from, count);
  } else {
    As<TextField>(field, "text").Select(from, count);
  }
}

void EditGridCell(Field& field, std::int64_t row, std::int64_t column, std::string_view text) {
  auto& grid = As<Grid>(field, "grid");
  WantEnabled(field);
  if (!grid.Editable) Refuse(field, "cannot be edited");
  if (row == 0) Refuse(field, "keeps its heading");
  Index(field, row, grid.Rows() + 1, "row");
  grid.EditCell(row, Index(field, column, grid.Columns(), "column"), text);
}

void RemoveGridRow(Field& field, std::int64_t row) {
  auto& grid = As<Grid>(field, "grid");
  WantEnabled(field);
  if (!grid.Editable) Refuse(field, "cannot be edited");
  if (row == 0) Refuse(field, "keeps its heading");
  Index(field, row, grid.Rows(), "row");
  grid.RemoveRow(row);
}

}  // namespace brenvo::drive
