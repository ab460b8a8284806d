#include "card_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "base/text.h"
#include "core/prefix.h"
#include "core/station_profile.h"
#include "due_cards.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kColumns =
    "QsoNr,DataQso,Call,Manager,Prefisso,Country,Banda,Modo,QslDaInviare,QslInviata,QslRicevuta";
// In the order of these.
enum Column : std::size_t {
  kQsoNr,
  kDataQso,
  kCall,
  kManager,
  kPrefisso,
  kCountry,
  kBanda,
  kModo,
  kQslDaInviare,
  kQslInviata,
  kQslRicevuta
};

using CardsByContact = std::unordered_map<std::int64_t, core::ContactCards>;

CardsByContact AllCards(engine::Reader& reader) {
  CardsByContact all;
  reader.ForEach(
      "select QsoNr,Verso,Via,Data from LogQsl order by QsoNr,Verso,Via", [&](auto& row) {
        const auto card = core::CardOfRow(row.Text(2), row.Date(3));
        if (!card) return true;
        const bool sent =
            base::SameText(base::Trim(row.Text(1)), core::LetterOf(core::CardSide::kSent));
        all[row.Integer(0)]
            .Of(sent ? core::CardSide::kSent : core::CardSide::kReceived)
            .push_back(*card);
        return true;
      });
  return all;
}

// Contacts whose boxes services have ticked.
std::unordered_set<std::int64_t> TickedByServices(engine::Reader& reader) {
  std::unordered_set<std::int64_t> ticked;
  reader.ForEach("select QsoNr from LogConferme where Spunta", [&](auto& row) {
    ticked.insert(row.Integer(0));
    return true;
  });
  return ticked;
}

// A card that came by post: of one that is known to have come another way nobody waits for ours.
bool CanBeAnswered(bool received, bool byService, const core::ContactCards* cards) {
  if (!received) return false;
  if (cards == nullptr || cards->received.empty()) return !byService;
  return std::ranges::any_of(cards->received, [](const core::QslCard& card) {
    return card.way != core::CardWay::kElectronic;
  });
}

bool IsWithin(const CardQuestion& question, const std::optional<base::DateTime>& day) {
  if (!question.from && !question.to) return true;
  return day && (!question.from || *day >= *question.from) &&
         (!question.to || *day <= *question.to);
}

bool IsAskedFor(const CardQuestion& question, const core::QslCards& cards) {
  if (!question.way && !question.from && !question.to) return true;
  // A flag alone tells of a card of which neither way nor day is known.
  if (cards.empty()) return question.way == core::CardWay::kUnknown && IsWithin(question, {});
  return std::ranges::any_of(cards, [&](const core::QslCard& card) {
    return (!question.way || card.way == *question.way) && IsWithin(question, card.day);
  });
}

// A pass through the log that the operator can stop.
class Passes {
 public:
  Passes(core::Session& session, int passes) : session_(session), busy_(session.Host()) {
    const auto count = session.Db.OpenSnapshot("select count(*) from Log");
    progress_ =
        session.Machine.ShowProgress("Lettura delle Qsl", count->Field(0).Integer() * passes);
  }
  template <class See>
  bool Run(std::string_view order, const See& see) {
    return session_.Db.OpenReader()->ForEach(
        fmt::format("select {} from Log order by {}", kColumns, order), [&](auto& row) {
          see(row);
          return progress_->Advance(++done_);
        });
  }

 private:
  core::Session& session_;
  forms::BusyPointer busy_;
  std::unique_ptr<platform::Progress> progress_;
  std::int64_t done_ = 0;
};

}  // namespace

std::string HomeCountry(core::Session& session) {
  return core::ResolvePrefix(session, core::ProfileText(session, "Call")).Country;
}

std::optional<CardList> ListCards(core::Session& session, const CardRules& rules,
                                  const worked::Rules& modes, const CardQuestion& question) {
  const bool dueOnes = question.view == CardView::kDue;
  Passes passes(session, dueOnes ? 2 : 1);
  const CardsByContact all = AllCards(*session.Db.OpenReader());
  const auto ticked = TickedByServices(*session.Db.OpenReader());
  const auto cardsOf = [&](std::int64_t qsoNr) {
    const auto at = all.find(qsoNr);
    return at == all.end() ? nullptr : &at->second;
  };

  std::unordered_map<std::int64_t, std::string_view> due;
  if (dueOnes) {
    DueCards cards(rules, modes, HomeCountry(session));
    const bool whole = passes.Run("DataQso,QsoNr", [&](auto& row) {
      CardContact contact{row.Integer(kQsoNr),
                          row.Date(kDataQso).value_or(base::DateTime()),
                          std::string(row.Text(kCall)),
                          std::string(row.Text(kManager)),
                          std::string(row.Text(kPrefisso)),
                          std::string(row.Text(kCountry)),
                          std::string(row.Text(kBanda)),
                          std::string(row.Text(kModo)),
                          row.Bool(kQslDaInviare),
                          row.Bool(kQslInviata),
                          false};
      contact.received = CanBeAnswered(row.Bool(kQslRicevuta), ticked.contains(contact.qsoNr),
                                       cardsOf(contact.qsoNr));
      cards.See(contact);
    });
    if (!whole) return std::nullopt;
    due = cards.Finish();
  }

  static const core::ContactCards kNone;
  CardList list;
  const bool whole = passes.Run("DataQso desc,QsoNr desc", [&](auto& row) {
    const std::int64_t qsoNr = row.Integer(kQsoNr);
    const core::ContactCards* const known = cardsOf(qsoNr);
    const core::ContactCards& cards = known == nullptr ? kNone : *known;
    const bool sent = row.Bool(kQslInviata), received = row.Bool(kQslRicevuta);
    const auto reason = due.find(qsoNr);
    bool fits = false;
    switch (question.view) {
      case CardView::kDue:
        fits = reason != due.end() &&
               IsWithin(question, row.Date(kDataQso).value_or(base::DateTime()).DatePart());
        break;
      case CardView::kSent:
        fits = sent && IsAskedFor(question, cards.sent);
        break;
      case CardView::kReceived:
        fits = received && IsAskedFor(question, cards.received);
        break;
      case CardView::kAwaited:
        fits = sent && !received && IsAskedFor(question, cards.sent);
        break;
    }
    if (!fits || ++list.found > CardList::kMost) return;
    list.contacts.push_back({qsoNr, row.Date(kDataQso).value_or(base::DateTime()),
                             base::Trim(row.Text(kCall)), base::Trim(row.Text(kManager)),
                             base::Trim(row.Text(kCountry)), base::Trim(row.Text(kBanda)),
                             base::Trim(row.Text(kModo)), sent, received, cards,
                             dueOnes ? std::string(reason->second) : std::string()});
  });
  return whole ? std::optional(std::move(list)) : std::nullopt;
}

}  // namespace brenvo::print
