// Awards published as web pages, from a template that the operator designs.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "awards/award_members.h"
#include "core/session.h"
#include "forms/grid.h"

namespace brenvo::awards {

// One command of an award window.
struct AwardPage {
  std::string_view window, command, caption;
  std::string_view design;  // the template's file
  std::string_view page;    // the file written
  std::string_view keyToken;
  bool description;  // "[DESCRIZIONE]" is served
  bool flag;         // "[FLAG]" is served
  // The contact that documents an entry: the newest one instead of the oldest.
  bool newest;
  // The column of SLog that takes the key where entries are listed by the date of their contact,
  // newest first; empty where they are listed as in the grid.
  std::string_view stagedKey;
};

std::span<const AwardPage> AwardPages();

// An award's list as it stands in its window.
struct AwardList {
  const AwardMember& member;
  const std::string& selection;  // with the award's own condition
  forms::CellGrid& grid;
};

// Writes the page and shows it to the operator, who sees how far a long one is and may stop it. A
// template that cannot be cut gives an empty page; that, and a page that was stopped, is not shown.
// Throws when a file fails, and DatabaseError 3021 at an entry without a contact; the page then
// holds what came before.
void WriteAwardPage(core::Session& session, const AwardPage& page, const AwardList& list);

}  // namespace brenvo::awards
