// What services have confirmed, how far contacts have gone with them, and the records that mean no
// contact for sure.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "conferme/download.h"
#include "conferme/sending.h"
#include "conferme/taking.h"
#include "conferme/upload.h"
#include "core/table_rows.h"
#include "core/table_window.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"

namespace brenvo::conferme {

// The table holds the records that have no contact: doubtful ones with their candidates, those that
// the log has no contact for, credits, and what the operator ignores. Below stand the stages of
// each service, and the candidates of the marked record, of which one can be given to it.
class Conferme : public core::TableWindow {
 public:
  explicit Conferme(core::Session& session, const Addresses& addresses = {});
  void Load() override;

  forms::ListField Servizio{
      *this,
      "Servizio",
      forms::ListStyle::kDropDown,
      {.caption = "Servizio", .hint = "Mostra solo i record di questo", .characters = 12}};
  forms::ListField Stadio{
      *this,
      "Stadio",
      forms::ListStyle::kDropDown,
      {.caption = "Stadio", .hint = "Mostra solo i record così", .characters = 20}};
  forms::CheckBox SoloDubbi{
      *this,
      "SoloDubbi",
      {.caption = "Solo i dubbi", .hint = "Mostra solo chi ha più contatti possibili"}};
  core::TableGrid Tabella{*this, {.hint = "Invio abbina il record al candidato scelto sotto"}};
  // The contacts that the marked record may mean; one of them goes to it.
  forms::ListField Candidati{*this,
                             "Candidati",
                             forms::ListStyle::kDropDown,
                             {.caption = "Candidati",
                              .hint = "Il contatto a cui abbinare il record segnato",
                              .characters = 50}};
  // Or any other one, by its number.
  forms::TextField QsoNr{*this,
                         "QsoNr",
                         {.caption = "o il Qso nr",
                          .hint = "Il numero di un altro contatto del log",
                          .characters = 9}};
  // A line a service: how many contacts stand where.
  forms::Label Stadi{*this, "Stadi"};

  forms::Command cmLeggi{*this,
                         "cmLeggi",
                         "Leggi un file...",
                         {.tip = "Legge un rapporto LoTW, eQSL, QRZ, Club Log o un file ADIF con "
                                 "conferme, e lo abbina al log",
                          .shortcut = "F5",
                          .run = [this] { ReadFile(); }}};
  forms::Command cmAbbina{*this,
                          "cmAbbina",
                          "Abbina a mano",
                          {.tip = "Il record segnato va al candidato scelto; il prossimo rapporto "
                                  "non lo chiede più",
                           .shortcut = "F6",
                           .run = [this] { MatchChosen(); },
                           .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmIgnora{*this,
                          "cmIgnora",
                          "Ignora",
                          {.tip = "Il record segnato non si mostra più, finché non lo si chiede; "
                                  "su uno ignorato lo rimette, un Qso rifiutato si invia di nuovo",
                           .shortcut = "F7",
                           .run = [this] { IgnoreChosen(); },
                           .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il candidato scelto nella finestra Log",
                         .shortcut = "F8",
                         .run = [this] { OpenCandidate(); },
                         .enabled = [this] { return CandidateChosen().has_value(); }}};

  forms::Command cmPrepara{*this,
                           "cmPrepara",
                           "File da inviare...",
                           {.tip = "Scrive i Qso che il servizio scelto non ha ancora in un file "
                                   "ADIF da caricare sul suo sito",
                            .shortcut = "F9",
                            .run = [this] { WriteUnsent(); },
                            .enabled = [this] { return Servizio.ListIndex() > 0; }}};
  forms::Command cmScarica{*this,
                           "cmScarica",
                           "Scarica",
                           {.tip = "Chiede al servizio scelto che cosa ha confermato dall'ultima "
                                   "volta, e lo abbina al log",
                            .run = [this] { FetchReport(); },
                            .enabled = [this] { return Servizio.ListIndex() > 0 && !IsAtWork(); }}};
  forms::Command cmInvia{
      *this,
      "cmInvia",
      "Invia i Qso",
      {.tip = "Invia al servizio scelto i Qso nuovi e quelli cambiati; a LoTW li "
              "firma tqsl",
       .run = [this] { SendContacts(); },
       .enabled = [this] { return Servizio.ListIndex() > 0 && !IsAtWork(); }}};
  forms::Command cmFerma{*this,
                         "cmFerma",
                         "Ferma",
                         {.tip = "Ferma quello che si scarica o si invia; quello che è già fatto "
                                 "resta",
                          .shortcut = "Esc",
                          .run = [this] { StopExchange(); },
                          .enabled = [this] { return IsExchanging(); }}};
  forms::Command cmTqsl{*this,
                        "cmTqsl",
                        "Firma e invia a LoTW",
                        {.tip = "tqsl firma i Qso non ancora inviati e li manda a LoTW, con la "
                                "località che ha il nome della stazione",
                         .run = [this] { SignAndSend(); },
                         .enabled = [this] { return !IsAtWork(); }}};

 protected:
  void RowChosen() override;

 private:
  void ReadFile();
  void TakeFile(const std::filesystem::path& file);
  // False when it was stopped.
  bool Take(Report& report, const std::string& name, const std::string& title, const Mark& mark);
  bool TakeDownloaded(const Downloaded& downloaded);
  void FetchReport();
  void SendContacts();
  void StopExchange();
  void CloseExchange(const std::string& said);
  bool IsExchanging() const { return download_.IsAtWork() || upload_.IsAtWork(); }
  bool IsAtWork() const { return IsExchanging() || signing_.IsAtWork(); }
  const ServiceFacts& ChosenService() const;
  // Where a file tells of cards too, the operator says whether they are paper.
  void OfferCards(const Report& report, const std::string& name);
  void MatchChosen();
  void IgnoreChosen();
  void OpenCandidate();
  void WriteUnsent();
  void SignAndSend();
  void Renew();
  void FillTable();
  void ShowStages();
  void ShowCandidates();
  bool IsWanted(const OpenRecord& record) const;
  // Null while no row is marked.
  const OpenRecord* Chosen();
  // By its number where one is written, else of the list.
  std::optional<std::int64_t> CandidateChosen();

  std::vector<OpenRecord> open_;
  bool hasContradictions_ = false;  // among these: looked for when they are wanted
  core::KeyedRows rows_;
  std::vector<std::int64_t> listed_;  // a number a candidate
  Signing signing_;
  Download download_;
  Upload upload_;
  base::DateTime lastAsked_;  // of eQSL
  std::string asked_;         // what came of the reports that were asked for
  forms::Subscription changed_, reopened_;
};

// Follows the operator's choices which services tick QslRicevuta. Lives as long as the main frame.
class BoxKeeper {
 public:
  explicit BoxKeeper(core::Session& session);

 private:
  forms::Subscription changed_;
};

}  // namespace brenvo::conferme
