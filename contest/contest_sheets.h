// The contest log on the paper form of the national contest: up to 40 contacts a sheet, the form
// drawn along with them.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "contact.h"
#include "contest/contest_header.h"
#include "platform/printer.h"

namespace brenvo::contest {

// Prints every contact in the order given and ends the document; without contacts nothing is
// printed. `sign` is the operator's signature, if he has one. Throws what the printer throws.
void PrintContestSheets(platform::Printer& printer, const ContestHeader& header,
                        const std::vector<Contact>& contacts, const std::filesystem::path& logo,
                        const std::optional<std::filesystem::path>& sign);

}  // namespace brenvo::contest
