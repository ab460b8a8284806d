// A station whose links are known, with a matrix that only writes down what it is asked.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/shared_windows.h"
#include "links/dx_dialog.h"
#include "links/ft736.h"
#include "links/tnc.h"
#include "links/tnc_telnet.h"
#include "links/wwconv.h"
#include "tests/support/station.h"

namespace brenvo::links {

using Texts = std::vector<std::string>;

// Stands where the worked-by-band screen stands.
class FakeHrd : public core::MatrixWindow {
 public:
  FakeHrd(core::Session& session, Texts& searches)
      : core::MatrixWindow(session.Host(), "Hrd", "", base::Twips(100), base::Twips(100)),
        session_(session),
        searches_(searches) {
    AutoSearch.OnChange = [this] { Search(); };
  }
  void Load() override {
    session_.Opened.Hrd = this;
    searches_.push_back("open");
  }
  void Unload() override { session_.Opened.Hrd = nullptr; }
  bool Fails = false;
  void Search() override {
    if (Fails) throw std::runtime_error("no");
    searches_.push_back(CallQso.Text() + "|" + Locator.Text() +
                        (static_cast<recorder::RecordingHost&>(Host()).Busy() ? "|busy" : ""));
  }

 private:
  core::Session& session_;
  Texts& searches_;
};

class LinksTest : public StationTest {
 protected:
  LinksTest() {
    machine.GetClock().SetGuard([this](const auto& event) { Event(event); });
    Know<TNC>("TNC");
    Know<TNCtelnet>("TNCtelnet");
    Know<WWConv>("WWConv");
    Know<FT736>("FT736");
    Know<DxDialog>("DX");
    session.Windows.Register("Hrd",
                             [this] { return std::make_unique<FakeHrd>(session, searches); });
    WriteFile("tnc.mnu", "\"Ultimi DX\",sh/dx 10\r\n\"Meteo, sole\",sh/wwv\r\n");
    WriteFile("wwconv.mnu", "Chi c'è,/who\r\nPrivato,/msg # ciao\r\n");
    Profile(
        "ClusterNode='IK4GRO-6', TelnetCluster='dxc.example.org:7300', "
        "TelnetWWConv='chat.example.org:3600'");
  }
  void WriteFile(std::string_view name, std::string_view text) {
    std::ofstream(directory.Path() / name, std::ios::binary) << text;
  }
  // Changes the station's profile, as its window does.
  void Profile(std::string_view assignments) {
    session.Db.Execute("UPDATE [User] SET " + std::string(assignments));
    session.Tables.TbUser->MoveFirst();
  }
  void Receive(std::string_view window, std::string_view bytes) {
    Event([&] {
      if (window == "TNC") {
        machine.Serial().Receive(1, bytes);
      } else {
        machine.Tcp().Receive(window, bytes);
      }
    });
  }
  static Texts Captions(const forms::EntryArray& entries) {
    Texts captions;
    for (const auto& entry : entries.Entries()) captions.push_back(entry.caption);
    return captions;
  }
  static void TypeLine(forms::TextField& field, std::string_view text) {
    field.SetText(text);
    field.TypeKey(forms::kEnter);
  }
  // The lines that begin so.
  static Texts LinesOf(const Texts& lines, std::string_view beginning) {
    Texts found;
    for (const std::string& line : lines) {
      if (line.starts_with(beginning)) found.push_back(line);
    }
    return found;
  }

  Texts searches;  // what the matrix was asked
};

}  // namespace brenvo::links
