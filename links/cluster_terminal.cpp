#include "links/cluster_terminal.h"

#include <fmt/format.h>

#include <utility>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"
#include "check_target.h"
#include "core/entry.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "links/dx_dialog.h"
#include "spelling.h"
#include "spot_line.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kSelectHint = "Selezionare il Call o il Locator ed eseguire il check";
constexpr std::string_view kMenuHint = "Comandi personalizzabili tramite tnc.mnu";
constexpr std::size_t kLongestLocator = 6;
constexpr std::size_t kBlock = 4096;
// Where the announcement opens, from the terminal's corner.
constexpr base::Twips kDialogOffset(10);

}  // namespace

ClusterTerminal::ClusterTerminal(core::Session& session, std::string name, std::string caption,
                                 const SpotPolicy& policy, forms::Command* cmMDX,
                                 forms::Command* cmMAnnounce, forms::Command* cmMTutto)
    : forms::Window(session.Host(), std::move(name), std::move(caption), base::Twips(9000),
                    base::Twips(6000)),
      session_(session),
      engine_(policy, Received, {Banda, cmAutoSpelling, cmAutoCheck, cmMDX, cmMAnnounce, cmMTutto},
              Outside()),
      annuncioDX_(session.Machine.MakeWavePlayer()) {
  cmRtx.SetVisible(false);
  cmAutoSpelling.Toggle = cmAutoCheck.Toggle = true;
  MenuBar = {&S70, &S54, &MB};
  CMI.Add("-");
  Banda.Add("Tutte", true);

  Sended.OnEnter = [this] { SendTyped(); };
  CMI.OnPick = [this](int entry) { SendEntry(entry); };
  Banda.OnPick = [this](int entry) { engine_.PickBand(entry); };
  Received.OnClick = Received.OnDoubleClick = [this] { StatusBar1.SetPanel(1, kSelectHint); };
}

ClusterTerminal::~ClusterTerminal() = default;

SpotOutside ClusterTerminal::Outside() {
  return {.FindBand = [this](base::Khz frequency) { return FindBand(frequency); },
          .PlayWave = [this](std::string_view name) { PlayWave(session_, *annuncioDX_, name); },
          .ShowCheck =
              [this](std::string_view call) {
                ShowCheck(session_, call);
                checked_ = true;
              },
          .Spotted = [this](std::string_view call) { TellEntity(call); },
          .Beep = [this] { session_.Machine.Beep(); },
          .TakeWaiting = [this] { return TakeCharacter(); }};
}

std::optional<SpotBand> ClusterTerminal::FindBand(base::Khz frequency) {
  const auto rows = session_.Db.OpenSnapshot(
      fmt::format("select Banda,AnnunceDX,FilenameDX from UserRTX where {0} >=FrequenzaI and {0} "
                  "<=FrequenzaF",
                  base::PlainNumber(frequency.Value())));
  if (rows->EOF_()) return std::nullopt;
  return SpotBand{core::FieldText(*rows, "Banda"), rows->Field("AnnunceDX").Bool(),
                  core::FieldText(*rows, "FilenameDX")};
}

// Who spots are is known in memory: no statement runs for it.
void ClusterTerminal::TellEntity(std::string_view call) {
  const entities::Answer today = session_.ByDate.Of(call, session_.Machine.GetClock().UtcNow());
  Entita.SetText(today.reason == entities::Reason::kUnknown ? std::string()
                                                            : entities::Explanation(call, today));
}

void ClusterTerminal::FillMenus() {
  FillMenuFromFile(session_.File("\\tnc.mnu"), CMI, Comandi);
  const auto bands = session_.Db.OpenSnapshot("select * from UserRTX");
  for (; !bands->EOF_(); bands->MoveNext()) Banda.Add(core::FieldText(*bands, "Banda"));
}

std::optional<char32_t> ClusterTerminal::TakeCharacter() {
  if (inputAt_ == input_.size()) {
    input_ = TakeBytes(kBlock);
    inputAt_ = 0;
    if (input_.empty()) return std::nullopt;
  }
  return static_cast<unsigned char>(input_[inputAt_++]);
}

void ClusterTerminal::ReceiveWaiting() {
  // A sound or a box in the middle of a line may let the next arrival through: the loop that is
  // at work takes it along.
  if (receiving_) return;
  session_.Windows.RunEvent([this] {
    struct Receiving {
      explicit Receiving(bool& state) : flag(state) { flag = true; }
      ~Receiving() { flag = false; }
      bool& flag;
    } receiving(receiving_);
    bool waiting = true;
    while (waiting) {
      // A failure is told, and costs no more than the line that it met.
      session_.Windows.RunEvent([this, &waiting] {
        // A line that cannot be read ends it all.
        while (std::exchange(waiting, false) && Loaded()) {
          const bool blockEnds = !input_.empty() && inputAt_ == input_.size();
          if (const auto character = TakeCharacter()) {
            waiting = true;
            // A burst must not hold the operator up, who may close the window meanwhile. A check
            // in the log takes as long as thousands of characters.
            if (std::exchange(checked_, false) || blockEnds) Host().ProcessEvents();
            if (Loaded()) engine_.FeedCharacter(*character);
          }
        }
      });
    }
  });
}

void ClusterTerminal::SendText(std::string_view text, std::string_view lineEnd) {
  Send(base::ToLatin1(text).append(lineEnd));
}

void ClusterTerminal::SendConnect() {
  SendText("c " + core::ProfileText(session_, "ClusterNode"), kLineEnd);
}

void ClusterTerminal::SendTyped() {
  SendText(Sended.Text(), TypedLineEnd());
  Sended.SetText("");
}

void ClusterTerminal::SendEntry(int entry) {
  SendText(Comandi.at(static_cast<std::size_t>(entry)), kLineEnd);
  StatusBar1.SetPanel(1, kMenuHint);
}

void ClusterTerminal::CheckCall() {
  const std::string selected = Received.SelText();
  if (core::IsEmptyField(selected)) {
    StatusBar1.SetPanel(1, kSelectHint);
  } else {
    ShowCheck(session_, selected);
  }
}

void ClusterTerminal::CheckLocator() {
  const std::string selected = Received.SelText();
  if (base::Len(selected) > kLongestLocator || core::IsEmptyField(selected)) {
    StatusBar1.SetPanel(1, kSelectHint);
  } else {
    ShowLocatorCheck(session_, selected);
  }
}

void ClusterTerminal::TuneRig() {
  const auto found = FindSpot(Received.Text(), Received.SelStart());
  const base::Khz frequency = found ? found->spot.SpotFrequenza : base::Khz(0);
  StatusBar1.SetPanel(1, frequency.Value() > 0
                             ? session_.Rig.Tune(base::ToHz(frequency), found->modo)
                             : "Nessuno spot da sintonizzare");
}

void ClusterTerminal::AnnounceDX() {
  auto* dialog = static_cast<DxDialog*>(session_.Windows.LoadSingle("DX"));
  if (dialog == nullptr) return;
  const forms::Bounds& own = GetBounds();
  dialog->Move(
      {own.left + kDialogOffset, own.top + kDialogOffset, dialog->Width(), dialog->Height()});
  session_.Windows.ShowModal(*dialog);
  const std::optional<std::string> command = dialog->Chosen();
  // Before the sending, which may fail: the next announcement starts empty all the same.
  session_.Windows.Unload(*dialog);
  if (command) SendText(*command, kLineEnd);
}

}  // namespace brenvo::links
