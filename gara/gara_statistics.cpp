// The contest's statistics, as a page and on paper.
#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "contest_log.h"
#include "gara/gara_contest.h"
#include "read_bytes.h"
#include "statistics.h"

namespace brenvo::gara {
namespace {

std::vector<Contact> ContactsOf(const std::vector<StoredQso>& qsos) {
  std::vector<Contact> contacts;
  contacts.reserve(qsos.size());
  for (const StoredQso& each : qsos) contacts.push_back(each.contact);
  return contacts;
}

}  // namespace

Statistics GaraContest::CountStatistics() {
  const std::vector<Contact> contacts = ContactsOf(qsos_);
  const WorkedContest mine{entry_->name, entry_->begin, entry_->end, Own(), contacts};
  // The last one before it by the same rules, of the same name where there is such.
  const Entry* before = nullptr;
  for (const Entry& each : entries_) {
    if (each.rules != entry_->rules || !(each.begin < entry_->begin)) continue;
    const bool better =
        before == nullptr || std::pair(each.name == entry_->name, each.begin) >
                                 std::pair(before->name == entry_->name, before->begin);
    if (better) before = &each;
  }
  if (before == nullptr) return MakeStatistics(rule_, mine, nullptr);
  std::vector<Contact> earlier = ContactsOf(ReadQsos(session_, *before));
  for (Contact& each : earlier) each.place = PlaceOf(each);
  OwnEntry own{before->call, before->locator, before->exchange, {}};
  Contact self;
  self.call = before->call;
  self.time = before->begin;
  own.place = PlaceOf(self);
  const WorkedContest other{before->name, before->begin, before->end, own, earlier};
  return MakeStatistics(rule_, mine, &other);
}

void GaraContest::ShowStatistics() {
  const std::string name =
      fmt::format("Statistiche-{}-{:04}{:02}{:02}.html", entry_->rules, entry_->begin.Year(),
                  entry_->begin.Month(), entry_->begin.Day());
  const std::filesystem::path file = session_.File("\\" + name);
  WriteBytesTo(file, StatisticsPage(CountStatistics()));
  session_.Machine.Open(file, 0);
  Say("Scritto " + name);
}

void GaraContest::PrintStatistics() {
  PrintPages(CountStatistics(), session_.Machine.GetPrinter());
  Say("Statistiche stampate");
}

}  // namespace brenvo::gara
