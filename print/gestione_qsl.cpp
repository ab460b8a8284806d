#include "print/gestione_qsl.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "card_labels.h"
#include "card_list.h"
#include "core/confirmations.h"
#include "core/log_contact.h"
#include "core/open_in_log.h"
#include "core/prefix.h"
#include "history/take_back.h"
#include "label_settings.h"
#include "worked/load_rules.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kViews[] = {"Da inviare", "Inviate", "Ricevute", "Attese"};
// "bureau 03/02/2001"; the rows that are shown first have none.
constexpr base::Twips kCardWidth(2100);
constexpr std::string_view kAllWays = "Tutte", kNoWay = "Non nota";
constexpr std::string_view kOutOfDate = "Il log è cambiato: F5 lo legge di nuovo";

std::string NumberText(std::int64_t number) {
  return base::FormatNumber(static_cast<double>(number), "#,##0");
}

std::string Counted(std::int64_t count, std::string_view one, std::string_view many) {
  return fmt::format("{} {}", NumberText(count), count == 1 ? one : many);
}

std::string WayName(core::CardWay way) {
  const std::string_view name = core::FactsOf(way).name;
  return std::string(name.empty() ? kNoWay : name);
}

// "sì" for a card of which nothing else is known.
std::string CardsText(bool flag, const core::QslCards& cards) {
  const std::string text = core::ShownCards(cards);
  return text.empty() && flag ? "sì" : text;
}

std::string DayOfLatest(const core::QslCards& cards) {
  const core::QslCard* const latest = core::LatestCard(cards);
  return latest != nullptr && latest->day ? base::DateText(*latest->day) : "";
}

std::optional<base::DateTime> DayIn(const forms::DatePicker& field) {
  const auto date = base::ParseDate(field.Text());
  return date ? std::optional(date->DatePart()) : std::nullopt;
}

core::KeyedRows::Row CellsOf(const ListedContact& each) {
  return {std::to_string(each.qsoNr),
          base::DateTimeText(each.DataQso),
          each.Call,
          each.Manager,
          each.Country,
          each.Banda,
          each.Modo,
          CardsText(each.sent, each.cards.sent),
          DayOfLatest(each.cards.sent),
          CardsText(each.received, each.cards.received),
          DayOfLatest(each.cards.received),
          each.reason};
}

std::vector<LabelContact> ReadLabels(core::Session& session,
                                     const std::vector<std::int64_t>& keys) {
  const auto rows = session.Db.OpenTable("Log");
  std::vector<LabelContact> contacts;
  for (const std::int64_t qsoNr : keys) {
    try {
      rows->SetBookmark({qsoNr});
    } catch (const engine::DatabaseError& failure) {
      if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
      continue;
    }
    const core::LogContact contact = core::ReadContact(*rows);
    contacts.push_back({qsoNr,
                        {base::Trim(contact.Call), contact.QrkDato, contact.Banda, contact.Modo,
                         contact.Note, contact.DataQso, contact.Frequenza,
                         contact.QslRicevuta && !core::IsBoxOfService(session.Db, qsoNr)},
                        contact.Manager});
  }
  return contacts;
}

std::shared_ptr<const worked::Rules> ModesOf(core::Session& session, std::string& fault) {
  return worked::LoadRules(session, [&](const std::string& text) {
    if (fault.empty()) fault = text;
  });
}

}  // namespace

GestioneQsl::GestioneQsl(core::Session& session)
    : core::ArrangedWindow(session, "GestioneQsl", "Gestione Qsl", base::Twips(16200),
                           base::Twips(8400)) {
  ShowCommands({&cmLeggi, &cmApri, &cmInviata, &cmRicevuta, &menuTogli, &cmEtichette, &cmAnnulla});
  DefaultCommand = &cmApri;
  Mostra.SetItems({std::begin(kViews), std::end(kViews)});
  Mostra.SetListIndex(0);
  std::vector<std::string> ways, filters = {std::string(kAllWays)};
  for (const core::CardWayFacts& each : core::CardWays()) {
    ways.push_back(WayName(each.way));
    filters.push_back(WayName(each.way));
  }
  Via.SetItems(std::move(filters));
  Via.SetListIndex(0);
  ViaCartolina.SetItems(std::move(ways));
  ViaCartolina.SetListIndex(static_cast<int>(core::CardWay::kBureau));
  Dal.MayBeEmpty = Al.MayBeEmpty = DataCartolina.MayBeEmpty = true;
  DataCartolina.SetText(base::DateText(session.Now()));
  Mostra.OnChange = Via.OnChange = [this] { ReadLog(); };
  // Not while a date is half typed.
  Dal.OnChange = Al.OnChange = [this] {
    if (std::pair(DayIn(Dal), DayIn(Al)) != days_) ReadLog();
  };
  stored_ = session.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (!ownWork_ && change.table == core::ContactTable::kLog) Say(kOutOfDate);
  });
  closing_ = session.Closing.Subscribe([this] { Say(kOutOfDate); });
}

GestioneQsl::~GestioneQsl() = default;

void GestioneQsl::Load() {
  core::ArrangedWindow::Load();
  using enum core::ColumnKind;
  ArrangeTable(rows_, {{"Qso nr", kNumber, false},
                       {"Data", kDate},
                       {"Call"},
                       {"Manager"},
                       {"Country"},
                       {"Banda"},
                       {"Modo"},
                       {.heading = "Inviata", .width = kCardWidth},
                       {"Inviata il", kDate, false},
                       {.heading = "Ricevuta", .width = kCardWidth},
                       {"Ricevuta il", kDate, false},
                       {"Motivo"}});
  ReadLog();
}

bool GestioneQsl::ReadLog() {
  if (Rows() == nullptr) return false;
  CardQuestion question;
  question.view = static_cast<CardView>(std::max(0, Mostra.ListIndex()));
  Via.SetEnabled(question.view != CardView::kDue);
  if (question.view != CardView::kDue && Via.ListIndex() > 0) {
    question.way = core::CardWays()[static_cast<std::size_t>(Via.ListIndex() - 1)].way;
  }
  days_ = {DayIn(Dal), DayIn(Al)};
  question.from = days_.first;
  question.to = days_.second;
  std::string fault;
  const auto modes = ModesOf(session_, fault);
  const CardRules rules = LoadCardRules(session_, *modes, fault);
  auto list = ListCards(session_, rules, *modes, question);
  if (!list) {
    Say("Lettura interrotta: l'elenco resta com'era");
    return false;
  }
  const auto key = ChosenKey();
  std::vector<core::KeyedRows::Keyed> rows;
  rows.reserve(list->contacts.size());
  for (const ListedContact& each : list->contacts) rows.push_back({each.qsoNr, CellsOf(each)});
  ForgetMarks();
  rows_.SetKeyed(std::move(rows));
  ShowRows(key);
  std::string told = fmt::format("{}: {} Qso", Mostra.Text(), NumberText(list->found));
  if (list->found > CardList::kMost) {
    told += fmt::format("; si vedono i {} più recenti", NumberText(CardList::kMost));
  }
  if (!fault.empty()) told += "; " + fault;
  Say(told);
  return true;
}

void GestioneQsl::ReadAfter(std::string_view done) {
  if (!ReadLog()) return Say(fmt::format("{}; {}", done, kOutOfDate));
  Say(fmt::format("{}; {}", done, Avviso.Text()));
}

void GestioneQsl::OpenInLog() {
  if (const auto key = ChosenKey()) core::OpenInLog(session_, *key);
}

core::QslCard GestioneQsl::ChosenCard() const {
  const auto way = static_cast<std::size_t>(std::max(0, ViaCartolina.ListIndex()));
  return {core::CardWays()[way].way, DayIn(DataCartolina)};
}

void GestioneQsl::MarkChosen(core::CardSide side) {
  const std::vector<std::int64_t> keys = MarkedKeys();
  const std::string card = core::ShownCard(ChosenCard());
  const std::string title =
      fmt::format("Qsl {} {}", side == core::CardSide::kSent ? "inviata" : "ricevuta", card);
  const bool done = DoneHere(
      [&] { return core::MarkCards(session_, base::Trim(title), keys, side, ChosenCard()); });
  if (!done) return Say("Interrotto: il log è rimasto com'era");
  ReadAfter(
      fmt::format("{}: {}", base::Trim(title), Counted(std::ssize(keys), "contatto", "contatti")));
}

void GestioneQsl::ForgetChosen(core::CardSide side) {
  const std::vector<std::int64_t> keys = MarkedKeys();
  const std::string_view title =
      side == core::CardSide::kSent ? "Qsl non inviata" : "Qsl non ricevuta";
  const bool done = DoneHere([&] { return core::ForgetCards(session_, title, keys, side); });
  if (!done) return Say("Interrotto: il log è rimasto com'era");
  ReadAfter(fmt::format("{}: {}", title, Counted(std::ssize(keys), "contatto", "contatti")));
}

void GestioneQsl::PrintLabels() {
  const std::vector<LabelContact> contacts = ReadLabels(session_, MarkedOrShownKeys());
  if (contacts.empty()) return Say("Nessun contatto da stampare");
  std::string fault;
  const auto modes = ModesOf(session_, fault);
  const CardRules rules = LoadCardRules(session_, *modes, fault);
  platform::Printer& printer = session_.Machine.GetPrinter();
  std::vector<CardLabel> labels;
  {
    const forms::BusyPointer busy(Host());
    const LabelSheet* const sheet = StoredSheet(session_);
    const LaidLabels laid =
        sheet == nullptr ? LaidLabels{StoredGeometry(session_)} : LaidOn(printer, *sheet);
    labels = LabelsFor(contacts, rules, HomeOf(rules, HomeCountry(session_)),
                       CardLinesOn(laid.geometry.height, laid.scale), [&](const std::string& call) {
                         return core::ResolvePrefix(session_, call).Country;
                       });
    LabelGrid grid(laid.geometry);
    for (const CardLabel& label : labels) {
      if (&label != &labels.front()) grid.Next(printer);
      DrawCardLabel(printer, grid.X(), grid.Y(), label, laid.scale);
    }
    printer.EndDocument();
  }
  const std::string printed =
      fmt::format("{} per {}", Counted(std::ssize(labels), "etichetta", "etichette"),
                  Counted(std::ssize(contacts), "contatto", "contatti"));
  const core::QslCard card = ChosenCard();
  const std::string text = core::ShownCard(card);
  if (!session_.Messages().AskYesNo(Caption(),
                                    fmt::format("Stampate {}.\nSegnare come inviate{}{}?", printed,
                                                text.empty() ? "" : ": ", text))) {
    return Say("Stampate " + printed);
  }
  std::vector<std::int64_t> keys;
  for (const LabelContact& each : contacts) keys.push_back(each.qsoNr);
  const bool done = DoneHere([&] {
    return core::MarkCards(session_, base::Trim("Etichette Qsl inviate " + text), keys,
                           core::CardSide::kSent, card);
  });
  if (!done) return Say(fmt::format("Stampate {}; non segnate come inviate", printed));
  ReadAfter(fmt::format("Stampate {}, segnate come inviate", printed));
}

void GestioneQsl::TakeBack() {
  const auto last = DoneHere([&] { return history::TakeBackLast(session_); });
  if (!last) return Say("Niente da riprendere");
  ReadAfter(history::Told(last->work, last->result));
}

}  // namespace brenvo::print
