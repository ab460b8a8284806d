// The chat client: public talk in one area, personal messages in the other.
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
#include "links/told_connection.h"

namespace brenvo::links {

// Connects once, on opening, and closes when the server does. A step of the opening that fails
// opens no box.
class WWConv : public forms::Window {
 public:
  explicit WWConv(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::RichText Received{*this, "Received"};
  forms::RichText ReceivedPersonal{*this, "ReceivedPersonal"};
  forms::TextField Sended{*this, "Sended", {.caption = "Invio"}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};
  // How it stands with the line to the server, and why it does not stand.
  forms::Label Collegamento{*this, "Collegamento"};

  forms::EntryArray CMI{*this, "CMI"};
  forms::Menu cmCM{*this, "cmCM", "Menu configurabile", {&CMI}};
  forms::Command cmMessaggiPersonali{*this, "cmMessaggiPersonali", "Messaggi personali",
                                     [this] { ShowPersonal(); }};
  forms::Menu CMO{*this, "CMO", "Opzioni", {&cmMessaggiPersonali}};

  MenuCommands Comandi;  // behind the entries of CMI; one with a "#" is for completing

  // The one way out: the text goes to the server as it is, and into the public area.
  void send(std::string_view text);

 private:
  void Open();
  void ReceiveChunk();
  void SendTyped();
  void PickEntry(int entry);
  void ShowPersonal();

  core::Session& session_;
  std::unique_ptr<platform::TcpClient> winsock1_;
  ToldConnection connection_;
};

}  // namespace brenvo::links
