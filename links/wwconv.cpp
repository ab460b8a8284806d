#include "links/wwconv.h"

#include "base/encoding.h"
#include "chat_chunk.h"
#include "core/station_profile.h"
#include "core/window_place.h"
#include "received_text.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kGoodbye = "/q";
// The radio terminal's file is named here too, although this window reads its own.
constexpr std::string_view kMenuHint = "Comandi personalizzabili tramite tnc.mnu";

}  // namespace

WWConv::WWConv(core::Session& session)
    : forms::Window(session.Host(), "WWConv", "WWConv (telnet)", base::Twips(9000),
                    base::Twips(6000)),
      session_(session),
      winsock1_(session.Machine.MakeTcpClient("WWConv")),
      connection_(session, *this, Collegamento, *winsock1_) {
  MenuBar = {&cmCM, &CMO};
  CMI.Add("-");
  cmMessaggiPersonali.Toggle = true;
  cmMessaggiPersonali.SetDown(true);

  Sended.OnEnter = [this] { SendTyped(); };
  CMI.OnPick = [this](int entry) { PickEntry(entry); };
  winsock1_->OnData = [this] { ReceiveChunk(); };
}

void WWConv::Load() {
  core::RestoreWindow(session_, *this, "WWConv");
  session_.Opened.WWConvOpen = true;
  try {
    Open();
  } catch (const std::exception&) {
    // The operator sees a window that stays silent.
  }
}

void WWConv::Open() {
  FillMenuFromFile(session_.File("\\wwconv.mnu"), CMI, Comandi);
  connection_.Connect(core::ProfileText(session_, "TelnetWWConv"));
}

void WWConv::Unload() {
  core::SaveWindow(session_, *this, "WWConv");
  session_.Opened.WWConvOpen = false;
  if (!winsock1_->IsConnected()) return;
  send(kGoodbye);
  winsock1_->Close();
}

void WWConv::send(std::string_view text) {
  winsock1_->Send(base::ToLatin1(text));
  Received.Append(text);
}

void WWConv::ReceiveChunk() {
  const std::size_t waiting = winsock1_->BytesWaiting();
  if (waiting == 0) return;
  const std::string chunk = base::FromLatin1(winsock1_->Read(waiting));
  TrimReceived(Received);
  const ChatChunk split = SplitChatChunk(chunk);
  forms::RichText& area = split.Personal ? ReceivedPersonal : Received;
  if (split.Speaker.empty()) {
    area.Append(split.Words);
    return;
  }
  area.Append(split.Speaker, base::kDarkRed);
  area.Append(split.Words, base::kBlack);
}

void WWConv::SendTyped() {
  send(Sended.Text() + std::string(kLineEnd));
  Sended.SetText("");
}

void WWConv::PickEntry(int entry) {
  const std::string& command = Comandi.at(static_cast<std::size_t>(entry));
  if (command.find('#') != std::string::npos) {
    Sended.SetText(command);
  } else {
    send(command + std::string(kLineEnd));
  }
  StatusBar1.SetPanel(1, kMenuHint);
}

void WWConv::ShowPersonal() { ReceivedPersonal.SetVisible(cmMessaggiPersonali.Down()); }

}  // namespace brenvo::links
