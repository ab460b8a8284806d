// The main frame: the station's menu, the map behind it, and the session's life.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "core/log_time.h"
#include "core/session.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"
#include "frame/desktop.h"
#include "upkeep/backup.h"
#include "upkeep/converti_ora.h"
#include "upkeep/maintenance.h"
#include "worked/keeper.h"

namespace brenvo::frame {

// A command whose window does not exist does nothing. One without an action is a room's further up,
// which attaches it (OnClick); until then it does nothing.
class MainFrame : public forms::Window, public core::MapDoor {
 public:
  explicit MainFrame(core::Session& session);
  ~MainFrame() override;

  // Opens the session; throws what fails, and the start is then over.
  void Load() override;
  // Closes every child in the order of loading; false as soon as one refuses, which then comes to
  // the front.
  bool QueryUnload() override;
  void Unload() override;

  // The request shown last; writing another one shows that.
  forms::TextField HDisplayMappa{*this, "HDisplayMappa"};
  void DisplayMap(std::string_view request) override;
  // The day's copy of the database in work. Null until the frame has loaded.
  std::unique_ptr<upkeep::DailyBackup> Backup;
  // What is worked and confirmed. Null until the frame has loaded.
  std::unique_ptr<worked::Keeper> Worked;
  // What rooms further up keep at work as long as the session is open.
  std::vector<std::shared_ptr<void>> Services;
  // What the station has to say by itself.
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};
  // What to do first, on the empty map, as long as the profile is the delivered one.
  forms::Label PrimoPasso{*this, "PrimoPasso"};
  // The station that new contacts belong to.
  forms::Label Stazione{*this, "Stazione"};
  // The time in UTC and here; empty when the operator does not want it.
  forms::Label Orologi{*this, "Orologi"};
  // The rectangle that the operator drew on the map, viewport pixels.
  void MapRectangleDrawn(int left, int top, int width, int height);

  forms::Command cmLog{
      *this, "cmLog", "&Log", {.shortcut = "Ctrl+L", .run = [this] { OpenNew("LogForm"); }}};
  forms::Command cmContest{*this, "cmContest", "&Contest", {.shortcut = "Ctrl+K", .run = [this] {
                                                              OpenNew("Contest");
                                                            }}};

  forms::Command cmGaraContest{*this, "cmGaraContest", "Contest con le regole...", {.run = [this] {
                                 OpenSingle("GaraContest");
                               }}};

  forms::Menu menuStatistiche{
      *this,
      "menu0",
      "&Statistiche",
      {&cmSField, &cmSQuare, &cmSPrefissi, &cmContinenti, &cmZone, &cmSCountry, &cmSProvincie,
       &cmSNote, &cmHrd, &cmHrdMode, &cmOldQso, &cmOldQsoLocator, &cmCorrispondente, &cmDiplomi}};
  forms::Command cmSField{
      *this, "cmSField", "&Field", {.run = [this] { OpenSelected("SField", "FIELD"); }}};
  forms::Command cmSQuare{
      *this, "cmSQuare", "&Square", {.run = [this] { OpenSelected("SSQuare", "SQUARE"); }}};
  forms::Command cmSPrefissi{*this, "cmSPrefissi", "Pre&fissi (WPX)", {.run = [this] {
                               OpenSelected("SPrefissi", "PREFISSI");
                             }}};
  forms::Command cmContinenti{*this, "cmContinenti", "Con&tinenti (WAC)", {.run = [this] {
                                OpenSelected("SContinenti", "CONTINENTI");
                              }}};
  forms::Command cmZone{
      *this, "cmZone", "&Zone CQ (WAZ)", {.run = [this] { OpenSelected("SZone", "ZONE"); }}};
  forms::Command cmSCountry{*this, "cmSCountry", "&Country (DXCC)", {.run = [this] {
                              OpenSelected("SCountry", "COUNTRY", true);
                            }}};
  forms::Command cmSProvincie{*this, "cmSProvincie", "&Provincie", {.run = [this] {
                                OpenSelected("SProvincie", "PROVINCIE", true);
                              }}};
  forms::Command cmSNote{*this, "cmSNote", "Personalizzata con &Note", {.run = [this] {
                           OpenSelected("SNote", "NOTE");
                         }}};
  forms::Command cmHrd{*this, "cmHrd", "Worked by Band", {.shortcut = "Ctrl+B", .run = [this] {
                                                            OpenSingle("Hrd");
                                                          }}};
  forms::Command cmHrdMode{*this,
                           "cmHrdMode",
                           "Worked by Mode",
                           {.shortcut = "Ctrl+M", .run = [this] { OpenSingle("HrdMode"); }}};
  forms::Command cmOldQso{*this, "cmOldQso", "Old Qso", {.shortcut = "Ctrl+O", .run = [this] {
                                                           OpenSingle("OldQsoForm");
                                                         }}};
  forms::Command cmOldQsoLocator{
      *this, "cmOldQsoLocator", "Old Qso con Locator", {.shortcut = "Ctrl+Shift+O", .run = [this] {
                                                          OpenSingle("OldQsoLocator");
                                                        }}};
  forms::Command cmCorrispondente{
      *this, "cmCorrispondente", "Corrispondente...", {.shortcut = "Ctrl+I", .run = [this] {
                                                         OpenSingle("Corrispondente");
                                                       }}};

  forms::Command cmDiplomi{
      *this, "cmDiplomi", "&Diplomi...", {.run = [this] { OpenSingle("Diplomi"); }}};

  forms::Menu menuQsl{
      *this, "menu1", "&Qsl", {&cmQslStampa, &cmQslAggiorna, &cmGestioneQsl, &cmConferme}};
  forms::Command cmQslStampa{
      *this, "cmQslStampa", "&Stampa", {.shortcut = "Ctrl+Shift+Q", .run = [this] {
                                          OpenModal("StampaQsl");
                                        }}};
  forms::Command cmQslAggiorna{*this, "cmQslAggiorna", "&Aggiorna Log"};
  forms::Command cmGestioneQsl{
      *this, "cmGestioneQsl", "&Gestione Qsl...", {.run = [this] { OpenSingle("GestioneQsl"); }}};
  forms::Command cmConferme{
      *this, "cmConferme", "&Conferme...", {.run = [this] { OpenSingle("Conferme"); }}};

  forms::Menu menuStampe{*this,
                         "menu2",
                         "Stam&pe",
                         {&cmPLog, &cmPSquare, &cmPPrefissi, &cmPContinenti, &cmPZone, &cmPCountry,
                          &cmPProvincie, &cmPNote}};
  forms::Command cmPLog{*this, "cmPLog", "&Log", {.shortcut = "Ctrl+Shift+P"}};
  forms::Command cmPSquare{*this, "cmPSquare", "Square"};
  forms::Command cmPPrefissi{*this, "cmPPrefissi", "Pre&fissi (WPX)"};
  forms::Command cmPContinenti{*this, "cmPContinenti", "Con&tinenti (WAC)"};
  forms::Command cmPZone{*this, "cmPZone", "&Zone (WAZ)"};
  forms::Command cmPCountry{*this, "cmPCountry", "&Country (DXCC)"};
  forms::Command cmPProvincie{*this, "cmPProvincie", "&Provincie"};
  forms::Command cmPNote{*this, "cmPNote", "Personalizzata con &Note"};

  forms::Menu menuComunication{
      *this,
      "menu3",
      "Comunication",
      {&cmFT736, &cmTNC, &cmDXClusterTelnet, &cmWWConv, &cmDigitale, &cmRtx}};
  forms::Command cmFT736{
      *this, "cmFT736", "FT-736R", {.shortcut = "Ctrl+F", .run = [this] { OpenSingle("FT736"); }}};
  forms::Command cmTNC{*this, "cmTNC", "DX cluster radio", {.shortcut = "Ctrl+R", .run = [this] {
                                                              OpenTerminal();
                                                            }}};
  forms::Command cmDXClusterTelnet{
      *this, "cmDXClusterTelnet", "DX cluster telnet", {.shortcut = "Ctrl+T", .run = [this] {
                                                          OpenSingle("TNCtelnet");
                                                        }}};
  forms::Command cmWWConv{*this,
                          "cmWWConv",
                          "&WWConv telnet",
                          {.shortcut = "Ctrl+Shift+T", .run = [this] { OpenSingle("WWConv"); }}};
  forms::Command cmDigitale{
      *this, "cmDigitale", "Programmi digitali...", {.run = [this] { OpenSingle("Digitale"); }}};

  forms::Command cmRtx{*this, "cmRtx", "Rtx e rotore...", {.run = [this] { OpenSingle("Rtx"); }}};

  forms::Menu menuUtility{
      *this,
      "menu4",
      "&Utility",
      {&Propagazione, &cmLoadDesktop,   &cmSaveDesktop,      &cmPrefissi,    &cmCountry,
       &cmProvincie,  &cmNoteHelp,      &cmUtente,           &cmCompatta,    &cmAssegnaPrefissi,
       &cmAzzeraLog,  &cmAzzeraContest, &cmRipristinaBackup, &cmImportaAdif, &cmEsportaAdif,
       &cmPreferenze, &cmOraDelLog,     &cmConvertiOra,      &cmStazioni,    &cmStoria,
       &cmElenco,     &cmVerificaLog,   &cmPalette,          &cmTasti,       &cmVerificaEntita,
       &cmGaraContest}};
  forms::Command Propagazione{*this, "Propagazione", "propagazione"};
  forms::Command cmLoadDesktop{*this,
                               "cmLoadDesktop",
                               "&Load Desktop",
                               {.shortcut = "Ctrl+D", .run = [this] { LoadDesktop(session_); }}};
  forms::Command cmSaveDesktop{
      *this, "cmSaveDesktop", "&Save Desktop", {.shortcut = "Ctrl+Shift+D", .run = [this] {
                                                  SaveDesktop(session_);
                                                }}};
  forms::Command cmPrefissi{
      *this, "cmPrefissi", "Tabella &Prefissi", {.run = [this] { OpenSingle("TabellaPrefissi"); }}};
  forms::Command cmCountry{
      *this, "cmCountry", "Tabella &Country", {.run = [this] { OpenSingle("TabellaCountry"); }}};
  forms::Command cmProvincie{*this, "cmProvincie", "Tabella &Provincie", {.run = [this] {
                               OpenSingle("TabellaProvincie");
                             }}};
  forms::Command cmNoteHelp{
      *this, "cmNoteHelp", "Tabella &Note", {.run = [this] { OpenSingle("TabellaNote"); }}};
  forms::Command cmUtente{*this,
                          "cmUtente",
                          "Tabella &Utente",
                          {.shortcut = "Ctrl+U", .run = [this] { OpenSingle("User"); }}};
  forms::Command cmCompatta{*this, "cmCompatta", "Compatta Database", {.run = [this] {
                              upkeep::CompattaDatabase(session_);
                            }}};
  forms::Command cmAssegnaPrefissi{
      *this, "cmAssegnaPrefissi", "Assegna Prefissi", {.run = [this] { AssignPrefixes(); }}};
  forms::Command cmAzzeraLog{
      *this, "cmAzzeraLog", "Azzera Log", {.run = [this] { upkeep::AzzeraLog(session_); }}};
  forms::Command cmAzzeraContest{*this, "cmAzzeraContest", "Azzera Contest", {.run = [this] {
                                   upkeep::AzzeraContest(session_);
                                 }}};
  forms::Command cmRipristinaBackup{
      *this, "cmRipristinaBackup", "Ripristina backup...", {.run = [this] { PutBackACopy(); }}};
  forms::Command cmImportaAdif{*this, "cmImportaAdif", "Importa ADIF..."};
  forms::Command cmEsportaAdif{*this, "cmEsportaAdif", "Esporta ADIF...", {.run = [this] {
                                 if (core::AskLogTime(session_)) OpenModal("EsportaAdif");
                               }}};

  forms::Command cmPreferenze{*this,
                              "cmPreferenze",
                              "Preferenze...",
                              {.shortcut = "Ctrl+,", .run = [this] { OpenSingle("Preferenze"); }}};

  forms::Command cmStazioni{
      *this, "cmStazioni", "Stazioni...", {.run = [this] { OpenSingle("Stazioni"); }}};
  forms::Command cmStoria{*this,
                          "cmStoria",
                          "Storia...",
                          {.shortcut = "Ctrl+Shift+Z", .run = [this] { OpenSingle("Storia"); }}};
  forms::Command cmElenco{*this, "cmElenco", "Elenco...", {.shortcut = "Ctrl+E", .run = [this] {
                                                             OpenSingle("Elenco");
                                                           }}};
  forms::Command cmPalette{
      *this, "cmPalette", "Comandi...", {.shortcut = "Ctrl+P", .run = [this] { ShowPalette(); }}};
  forms::Command cmTasti{*this, "cmTasti", "Tasti...", {.run = [this] { OpenSingle("Tasti"); }}};
  forms::Command cmVerificaLog{
      *this, "cmVerificaLog", "Verifica log...", {.run = [this] { OpenSingle("VerificaLog"); }}};
  forms::Command cmVerificaEntita{*this, "cmVerificaEntita", "Verifica entità...", {.run = [this] {
                                    OpenSingle("VerificaEntita");
                                  }}};
  forms::Command cmOraDelLog{
      *this, "cmOraDelLog", "Ora del log...", {.run = [this] { OpenModal("OraDelLog"); }}};
  forms::Command cmConvertiOra{*this, "cmConvertiOra", "Converti ora...", {.run = [this] {
                                 upkeep::ConvertiOraDelLog(session_);
                               }}};

  forms::Menu menuMappa{*this,
                        "menu5",
                        "Mappa",
                        {&cmZoom150, &cmZoom1, &cmZoom50, &cmFitWindow, &cmPrint, &cmCoordinate}};
  forms::Command cmZoom150{*this, "cmZoom150", "Zoom +", {.shortcut = "Ctrl++"}};
  forms::Command cmZoom1{*this, "cmZoom1", "Zoom 1:1", {.shortcut = "Ctrl+1"}};
  forms::Command cmZoom50{*this, "cmZoom50", "Zoom -", {.shortcut = "Ctrl+-"}};
  forms::Command cmFitWindow{*this, "cmFitWindow", "Come finestra", {.shortcut = "Ctrl+0"}};
  forms::Command cmPrint{*this, "cmPrint", "Print"};
  forms::Command cmCoordinate{*this, "cmCoordinate", "Leggi coordinate", {.toggle = true}};

  // Attached by the rooms that they belong to.
  std::function<void(std::string_view request)> OnDisplayMap;
  std::function<void(int left, int top, int width, int height)> OnMapRectangle;

 private:
  // A fresh window at each press; the one window, brought forward when it is open; the one window
  // as a dialog.
  void OpenNew(std::string_view window);
  void OpenSingle(std::string_view window);
  void OpenModal(std::string_view window);
  // The selection of contacts under a mode word, then a fresh window on what it gave.
  void OpenSelected(std::string_view window, std::string_view word, bool takesElenca = false);
  void OpenTerminal();
  void ShowPalette();
  void AssignPrefixes();
  void PutBackACopy();
  void FollowProfile();
  void ShowStation();
  void BringUpToDate();
  void ShowFirstStep();
  void ShowClocks();

  core::Session& session_;
  forms::Subscription logRead_, reopened_, stationChanged_, profileStored_, choiceChanged_,
      windowLoading_;
  std::unique_ptr<platform::Timer> clockTimer_;
};

}  // namespace brenvo::frame
