#include "links/told_connection.h"

#include <fmt/format.h>

#include <stdexcept>

#include "base/text.h"
#include "link_address.h"

namespace brenvo::links {

ToldConnection::ToldConnection(core::Session& session, forms::Window& window, forms::Label& line,
                               platform::TcpClient& socket)
    : session_(session), window_(window), line_(line), socket_(socket) {
  socket_.OnConnected = [this] {
    stood_ = true;
    line_.SetText("Collegato a " + address_);
  };
  socket_.OnFail = [this](std::string_view reason) { Failed(reason); };
  socket_.OnPeerClose = [this] { PeerClosed(); };
}

void ToldConnection::Connect(std::string_view address) {
  address_ = base::Trim(address);
  line_.SetText("In connessione con " + address_ + "...");
  try {
    ConnectTo(socket_, address);
  } catch (const std::out_of_range& error) {
    Failed(error.what());
    throw;
  }
}

void ToldConnection::PeerClosed() {
  // The window goes, and its line with it.
  if (forms::Window* const frame = session_.Windows.Find("Brenvo")) {
    frame->ShowHint(fmt::format("{}: {} ha chiuso il collegamento", window_.Caption(), address_));
  }
  window_.Close();
}

void ToldConnection::Failed(std::string_view reason) {
  if (address_.empty()) {
    line_.SetText("Non collegato: manca l'indirizzo (Tabella Utente, Multimedia)");
  } else if (stood_) {
    line_.SetText(fmt::format("Collegamento con {} caduto: {}", address_, reason));
  } else {
    line_.SetText(fmt::format("Non collegato a {}: {}", address_, reason));
  }
  stood_ = false;
}

}  // namespace brenvo::links
