// The list of contacts, all or any selection of them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/arranged_window.h"
#include "core/contacts_later.h"
#include "core/log_contact.h"

namespace brenvo::list {

class ContactRows;
struct Sheet;

class Elenco : public core::ArrangedWindow {
 public:
  explicit Elenco(core::Session& session);
  ~Elenco() override;
  void Load() override;
  void Activate() override;
  void Unload() override;

  // Shows the contacts of these numbers, newest first, under that title; those that come later are
  // none of them. Without filters, order and marks.
  void ShowSelection(std::string_view title, std::vector<std::int64_t> keys);

  core::TableGrid Tabella{*this, {.hint = "Invio apre il contatto nel log, spazio lo segna"}};
  // What is shown where it is not the whole log.
  forms::Label Titolo{*this, "Titolo"};
  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il contatto nella finestra Log",
                         .run = [this] { OpenInLog(); },
                         .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmTutti{*this,
                         "cmTutti",
                         "Tutto il log",
                         {.tip = "Lascia la selezione e mostra tutti i contatti",
                          .run = [this] { ShowWholeLog(); },
                          .enabled = [this] { return !Titolo.Text().empty(); }}};

  forms::Command cmSoloSegnati{*this,
                               "cmSoloSegnati",
                               "Solo i segnati",
                               {.tip = "Mostra solo i contatti segnati, come selezione",
                                .run = [this] { ShowMarked(); },
                                .enabled = [this] { return HasMarks(); }}};
  forms::Command cmDelLog{
      *this,
      "cmDelLog",
      "Selezione del log",
      {.tip = "Mostra i contatti scelti con la ricerca della finestra Log",
       .run = [this] { ShowSelectionOfLog(); },
       .enabled = [this] { return session_.Opened.CurrentLogForm != nullptr; }}};
  // For the marked contacts, or the chosen one.
  forms::Command cmCambia{*this,
                          "cmCambia",
                          "Cambia colonna...",
                          {.tip = "Cambia una colonna di tutti i contatti segnati",
                           .shortcut = "F4",
                           .run = [this] { ChangeColumnOfMarked(); },
                           .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmDaInviare{*this,
                             "cmDaInviare",
                             "Qsl da inviare",
                             {.tip = "Qsl da inviare ai segnati; se lo sono tutti, toglie il segno",
                              .shortcut = "F5",
                              .run = [this] { SetFlag(core::column::kQslDaInviare); }}};
  forms::Command cmInviata{*this,
                           "cmInviata",
                           "Qsl inviata",
                           {.tip = "Qsl inviata ai segnati; se lo sono tutti, toglie il segno",
                            .shortcut = "F6",
                            .run = [this] { SetFlag(core::column::kQslInviata); }}};
  forms::Command cmRicevuta{*this,
                            "cmRicevuta",
                            "Qsl ricevuta",
                            {.tip = "Qsl ricevuta dai segnati; se lo sono tutti, toglie il segno",
                             .shortcut = "F7",
                             .run = [this] { SetFlag(core::column::kQslRicevuta); }}};
  // For the marked contacts, or all that are shown.
  forms::Command cmConta{*this,
                         "cmConta",
                         "Conta...",
                         {.tip = "Conta i segnati, o tutti i mostrati, per una colonna",
                          .shortcut = "F9",
                          .run = [this] { CountMarked(); }}};
  forms::Command cmAdif{
      *this,
      "cmAdif",
      "In un file ADIF...",
      {.tip = "Esporta i segnati, o tutti i mostrati", .run = [this] { ExportAdif(); }}};
  forms::Command cmCsv{*this,
                       "cmCsv",
                       "In un file CSV...",
                       {.tip = "Le colonne mostrate dei segnati, o di tutti i mostrati",
                        .run = [this] { ExportCsv(); }}};
  forms::Command cmXlsx{*this,
                        "cmXlsx",
                        "In un foglio di calcolo...",
                        {.tip = "Le colonne mostrate dei segnati, o di tutti i mostrati",
                         .run = [this] { ExportXlsx(); }}};
  forms::Command cmStampa{*this,
                          "cmStampa",
                          "Stampa",
                          {.tip = "Stampa le colonne mostrate dei segnati, o di tutti i mostrati",
                           .run = [this] { Print(); }}};
  forms::Menu menuMostra{*this, "menuMostra", "Mostra", {&cmTutti, &cmSoloSegnati, &cmDelLog}};
  forms::Menu menuQsl{*this, "menuQsl", "Qsl", {&cmDaInviare, &cmInviata, &cmRicevuta}};
  forms::Menu menuEsporta{*this, "menuEsporta", "Esporta", {&cmAdif, &cmCsv, &cmXlsx, &cmStampa}};

 protected:
  void BeforeChoosing() override;

 private:
  void OpenInLog();
  void ChangeColumnOfMarked();
  void SetFlag(std::string_view column);
  void CountMarked();
  void ExportAdif();
  void ExportCsv();
  void ExportXlsx();
  void Print();
  // Asks for the file, of that ending; `write` gives what came of it, nothing when it was stopped.
  void Export(std::string_view what, std::string_view ending,
              const std::function<std::optional<std::string>(
                  const std::filesystem::path& file, const std::vector<std::int64_t>& keys,
                  const std::function<bool(std::int64_t done)>& progress)>& write);
  Sheet SheetOf(const std::vector<std::int64_t>& keys);
  void ShowWholeLog();
  void ShowMarked();
  void ShowSelectionOfLog();
  void ReadAnew();
  void Follow(const std::vector<core::OneContact>& changes);

  std::unique_ptr<ContactRows> rows_;
  core::ContactsLater stored_;
  forms::Subscription closing_, reopened_;
};

// Opens the window, or brings it forward, with a selection as ShowSelection has it.
void ShowInElenco(core::Session& session, std::string_view title, std::vector<std::int64_t> keys);

}  // namespace brenvo::list
