// What the two terminals to a DX cluster have in common: the screen, its menus, and the engine
// behind the text.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/command.h"
#include "forms/rich_text.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"
#include "links/menu_file.h"
#include "links/spot_engine.h"

namespace brenvo::links {

class ClusterTerminal : public forms::Window {
 public:
  forms::RichText Received{*this, "Received"};
  forms::TextField Sended{*this, "Sended", {.caption = "Invio"}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};
  // How it stands with the line to the cluster, and why it does not stand.
  forms::Label Collegamento{*this, "Collegamento"};
  // Who the last spot's station is today; empty where no rule knows it.
  forms::Label Entita{*this, "Entita"};

  forms::Command cmConnect{*this, "cmConnect", "Connect", [this] { Connect(); }};
  forms::EntryArray CMI{*this, "CMI"};
  forms::Menu cmCM{*this, "cmCM", "Menu configurabile", {&CMI}};
  forms::Command cmCommandMode{*this, "cmCommandMode", "Command Mode", [this] { CommandMode(); }};
  forms::Command cmCheckCall{*this, "cmCheckCall", "Check Call", [this] { CheckCall(); }};
  forms::Command cmCheckLocator{*this, "cmCheckLocator", "Check Locator",
                                [this] { CheckLocator(); }};
  forms::Command cmDX{*this, "cmDX", "DX", [this] { AnnounceDX(); }};
  forms::Menu S70{*this,
                  "S70",
                  "Comandi TNC",
                  {&cmConnect, &cmCM, &cmCommandMode, &cmCheckCall, &cmCheckLocator, &cmDX}};

  // A key alone: the transceiver goes where the spot is that the cursor stands in, or else where
  // the last one is.
  forms::Command cmRtx{*this,
                       "cmRtx",
                       "Sintonizza l'rtx sullo spot",
                       {.tip = "L'rtx va sulla frequenza dello spot",
                        .shortcut = "F11",
                        .run = [this] { TuneRig(); }}};
  forms::Command cmAutoSpelling{*this, "cmAutoSpelling", "Spelling Call"};
  forms::Command cmAutoCheck{*this, "cmAutoCheck", "Check Call"};
  forms::Menu S54{*this, "S54", "Automatismi", {&cmAutoSpelling, &cmAutoCheck}};

  // Entry 0 lets every band through, the others one band each.
  forms::EntryArray Banda{*this, "Banda"};
  forms::Menu MB{*this, "MB", "Bande", {&Banda}};

  MenuCommands Comandi;  // behind the entries of CMI

 protected:
  // The monitor marks are those of the deriving terminal, null where there is none.
  ClusterTerminal(core::Session& session, std::string name, std::string caption,
                  const SpotPolicy& policy, forms::Command* cmMDX, forms::Command* cmMAnnounce,
                  forms::Command* cmMTutto);
  ~ClusterTerminal() override;

  // The line to the cluster. Bytes are Latin-1.
  virtual void Send(std::string_view bytes) = 0;
  virtual std::string TakeBytes(std::size_t most) = 0;
  virtual void Connect() = 0;
  virtual void CommandMode() = 0;
  // What ends a typed line; every command ends in CR LF.
  virtual std::string_view TypedLineEnd() const = 0;

  void SendConnect();
  // Fills CMI and Banda; throws what fails, with what was filled until then.
  void FillMenus();
  // Feeds the engine with all that waits; a failure is told and ends no more than its line.
  void ReceiveWaiting();

  core::Session& session_;
  SpotEngine engine_;

 private:
  SpotOutside Outside();
  std::optional<SpotBand> FindBand(base::Khz frequency);
  void TellEntity(std::string_view call);
  std::optional<char32_t> TakeCharacter();
  void SendText(std::string_view text, std::string_view lineEnd);
  void SendTyped();
  void SendEntry(int entry);
  void CheckCall();
  void CheckLocator();
  void AnnounceDX();
  void TuneRig();

  std::unique_ptr<platform::WavePlayer> annuncioDX_;
  std::string input_;  // taken from the line and not yet fed
  std::size_t inputAt_ = 0;
  bool receiving_ = false;
  bool checked_ = false;  // a call, since the operator was listened to
};

}  // namespace brenvo::links
