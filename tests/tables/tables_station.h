// A station for the tests of the tables' windows.
#pragma once

#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "forms/list_field.h"
#include "tests/support/station.h"

namespace brenvo::tables {

using Texts = std::vector<std::string>;

class TablesStation : public StationTest {
 protected:
  void Backspace(forms::TextField& field) {
    Event([&] { field.TypeKey(forms::kBackspace); });
  }
  // Clicks the entry of an open list.
  void Click(forms::ListField& list, std::string_view entry) {
    const int index = Place(list, entry);
    ASSERT_GE(index, 0) << entry;
    Event([&] { list.Pick(index); });
  }
  void DoubleClick(forms::ListField& list, std::string_view entry) {
    Click(list, entry);
    Event([&] { list.DoubleClick(); });
  }
  static int Place(const forms::ListField& list, std::string_view entry) {
    for (std::size_t i = 0; i < list.Items().size(); ++i) {
      if (list.Items()[i] == entry) return static_cast<int>(i);
    }
    return -1;
  }
  void WriteFile(std::string_view name) {
    std::ofstream(directory.Path() / name, std::ios::binary) << "x";
  }
  Texts Critical(std::string_view text) {
    return {"message critical \"\" \"" + std::string(text) + "\""};
  }
};

}  // namespace brenvo::tables
