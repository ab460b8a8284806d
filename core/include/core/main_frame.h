// The main frame: the station's menu, the map behind it, and the session's life.
#pragma once

#include <functional>
#include <string_view>

#include "core/desktop.h"
#include "core/maintenance.h"
#include "core/session.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// A command whose window does not exist does nothing. One without an action is a room's further up,
// which attaches it (OnClick); until then it does nothing.
class MainFrame : public Window {
 public:
  explicit MainFrame(Session& session);
  ~MainFrame() override;

  // Opens the session; throws what fails, and the start is then over.
  void Load() override;
  // Closes every child in the order of loading; false as soon as one refuses, which then comes to
  // the front.
  bool QueryUnload() override;
  void Unload() override;

  // The map's door: its change runs the map viewer.
  TextField HDisplayMappa{*this, "HDisplayMappa"};
  // What the station has to say by itself.
  StatusBar StatusBar1{*this, "StatusBar1", 1};
  // What to do first, on the empty map, as long as the profile is the delivered one.
  Label PrimoPasso{*this, "PrimoPasso"};
  // The rectangle that the operator drew on the map, viewport pixels.
  void MapRectangleDrawn(int left, int top, int width, int height);

  Command cmLog{
      *this, "cmLog", "&Log", {.shortcut = "Ctrl+L", .run = [this] { OpenNew("LogForm"); }}};
  Command cmContest{*this, "cmContest", "&Contest", {.shortcut = "Ctrl+K", .run = [this] {
                                                       OpenNew("Contest");
                                                     }}};

  Menu menuStatistiche{*this,
                       "menu0",
                       "&Statistiche",
                       {&cmSField, &cmSQuare, &cmSPrefissi, &cmContinenti, &cmZone, &cmSCountry,
                        &cmSProvincie, &cmSNote, &cmHrd, &cmHrdMode, &cmOldQso, &cmOldQsoLocator}};
  Command cmSField{
      *this, "cmSField", "&Field", {.run = [this] { OpenSelected("SField", "FIELD"); }}};
  Command cmSQuare{
      *this, "cmSQuare", "&Square", {.run = [this] { OpenSelected("SSQuare", "SQUARE"); }}};
  Command cmSPrefissi{*this, "cmSPrefissi", "Pre&fissi (WPX)", {.run = [this] {
                        OpenSelected("SPrefissi", "PREFISSI");
                      }}};
  Command cmContinenti{*this, "cmContinenti", "Con&tinenti (WAC)", {.run = [this] {
                         OpenSelected("SContinenti", "CONTINENTI");
                       }}};
  Command cmZone{
      *this, "cmZone", "&Zone CQ (WAZ)", {.run = [this] { OpenSelected("SZone", "ZONE"); }}};
  Command cmSCountry{*this, "cmSCountry", "&Country (DXCC)", {.run = [this] {
                       OpenSelected("SCountry", "COUNTRY", true);
                     }}};
  Command cmSProvincie{*this, "cmSProvincie", "&Provincie", {.run = [this] {
                         OpenSelected("SProvincie", "PROVINCIE", true);
                       }}};
  Command cmSNote{*this, "cmSNote", "Personalizzata con &Note", {.run = [this] {
                    OpenSelected("SNote", "NOTE");
                  }}};
  Command cmHrd{*this, "cmHrd", "Worked by Band", {.shortcut = "Ctrl+B", .run = [this] {
                                                     OpenSingle("Hrd");
                                                   }}};
  Command cmHrdMode{*this, "cmHrdMode", "Worked by Mode", {.shortcut = "Ctrl+M", .run = [this] {
                                                             OpenSingle("HrdMode");
                                                           }}};
  Command cmOldQso{*this, "cmOldQso", "Old Qso", {.shortcut = "Ctrl+O", .run = [this] {
                                                    OpenSingle("OldQsoForm");
                                                  }}};
  Command cmOldQsoLocator{
      *this, "cmOldQsoLocator", "Old Qso con Locator", {.shortcut = "Ctrl+Shift+O", .run = [this] {
                                                          OpenSingle("OldQsoLocator");
                                                        }}};

  Menu menuQsl{*this, "menu1", "&Qsl", {&cmQslStampa, &cmQslAggiorna}};
  Command cmQslStampa{*this, "cmQslStampa", "&Stampa", {.shortcut = "Ctrl+Shift+Q", .run = [this] {
                                                          OpenModal("StampaQsl");
                                                        }}};
  Command cmQslAggiorna{*this, "cmQslAggiorna", "&Aggiorna Log"};

  Menu menuStampe{*this,
                  "menu2",
                  "Stam&pe",
                  {&cmPLog, &cmPSquare, &cmPPrefissi, &cmPContinenti, &cmPZone, &cmPCountry,
                   &cmPProvincie, &cmPNote}};
  Command cmPLog{*this, "cmPLog", "&Log", {.shortcut = "Ctrl+Shift+P"}};
  Command cmPSquare{*this, "cmPSquare", "Square"};
  Command cmPPrefissi{*this, "cmPPrefissi", "Pre&fissi (WPX)"};
  Command cmPContinenti{*this, "cmPContinenti", "Con&tinenti (WAC)"};
  Command cmPZone{*this, "cmPZone", "&Zone (WAZ)"};
  Command cmPCountry{*this, "cmPCountry", "&Country (DXCC)"};
  Command cmPProvincie{*this, "cmPProvincie", "&Provincie"};
  Command cmPNote{*this, "cmPNote", "Personalizzata con &Note"};

  Menu menuComunication{
      *this, "menu3", "Comunication", {&cmFT736, &cmTNC, &cmDXClusterTelnet, &cmWWConv}};
  Command cmFT736{
      *this, "cmFT736", "FT-736R", {.shortcut = "Ctrl+F", .run = [this] { OpenSingle("FT736"); }}};
  Command cmTNC{*this, "cmTNC", "DX cluster radio", {.shortcut = "Ctrl+R", .run = [this] {
                                                       OpenTerminal();
                                                     }}};
  Command cmDXClusterTelnet{*this,
                            "cmDXClusterTelnet",
                            "DX cluster telnet",
                            {.shortcut = "Ctrl+T", .run = [this] { OpenSingle("TNCtelnet"); }}};
  Command cmWWConv{*this, "cmWWConv", "&WWConv telnet", {.shortcut = "Ctrl+Shift+T", .run = [this] {
                                                           OpenSingle("WWConv");
                                                         }}};

  Menu menuUtility{
      *this,
      "menu4",
      "&Utility",
      {&Propagazione, &cmLoadDesktop, &cmSaveDesktop, &cmPrefissi, &cmCountry, &cmProvincie,
       &cmNoteHelp, &cmUtente, &cmCompatta, &cmAssegnaPrefissi, &cmAzzeraLog, &cmAzzeraContest,
       &cmRipristinaBackup, &cmImportaAdif, &cmEsportaAdif}};
  Command Propagazione{*this, "Propagazione", "propagazione"};
  Command cmLoadDesktop{*this,
                        "cmLoadDesktop",
                        "&Load Desktop",
                        {.shortcut = "Ctrl+D", .run = [this] { LoadDesktop(session_); }}};
  Command cmSaveDesktop{*this,
                        "cmSaveDesktop",
                        "&Save Desktop",
                        {.shortcut = "Ctrl+Shift+D", .run = [this] { SaveDesktop(session_); }}};
  Command cmPrefissi{
      *this, "cmPrefissi", "Tabella &Prefissi", {.run = [this] { OpenSingle("TabellaPrefissi"); }}};
  Command cmCountry{
      *this, "cmCountry", "Tabella &Country", {.run = [this] { OpenSingle("TabellaCountry"); }}};
  Command cmProvincie{*this, "cmProvincie", "Tabella &Provincie", {.run = [this] {
                        OpenSingle("TabellaProvincie");
                      }}};
  Command cmNoteHelp{
      *this, "cmNoteHelp", "Tabella &Note", {.run = [this] { OpenSingle("TabellaNote"); }}};
  Command cmUtente{*this, "cmUtente", "Tabella &Utente", {.shortcut = "Ctrl+U", .run = [this] {
                                                            OpenSingle("User");
                                                          }}};
  Command cmCompatta{
      *this, "cmCompatta", "Compatta Database", {.run = [this] { CompattaDatabase(session_); }}};
  Command cmAssegnaPrefissi{
      *this, "cmAssegnaPrefissi", "Assegna Prefissi", {.run = [this] { AssignPrefixes(); }}};
  Command cmAzzeraLog{*this, "cmAzzeraLog", "Azzera Log", {.run = [this] { AzzeraLog(session_); }}};
  Command cmAzzeraContest{
      *this, "cmAzzeraContest", "Azzera Contest", {.run = [this] { AzzeraContest(session_); }}};
  Command cmRipristinaBackup{
      *this, "cmRipristinaBackup", "Ripristina backup...", {.run = [this] { PutBackACopy(); }}};
  Command cmImportaAdif{*this, "cmImportaAdif", "Importa ADIF..."};
  Command cmEsportaAdif{
      *this, "cmEsportaAdif", "Esporta ADIF...", {.run = [this] { OpenModal("EsportaAdif"); }}};

  Menu menuMappa{*this,
                 "menu5",
                 "Mappa",
                 {&cmZoom150, &cmZoom1, &cmZoom50, &cmFitWindow, &cmPrint, &cmCoordinate}};
  Command cmZoom150{*this, "cmZoom150", "Zoom +", {.shortcut = "Ctrl++"}};
  Command cmZoom1{*this, "cmZoom1", "Zoom 1:1", {.shortcut = "Ctrl+1"}};
  Command cmZoom50{*this, "cmZoom50", "Zoom -", {.shortcut = "Ctrl+-"}};
  Command cmFitWindow{*this, "cmFitWindow", "Come finestra", {.shortcut = "Ctrl+0"}};
  Command cmPrint{*this, "cmPrint", "Print"};
  Command cmCoordinate{*this, "cmCoordinate", "Leggi coordinate", {.toggle = true}};

  // Attached by the rooms that they belong to.
  std::function<void()> OnDisplayMap;
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
  void AssignPrefixes();
  void PutBackACopy();
  void ShowFirstStep();

  Session& session_;
};

}  // namespace brenvo
