#include "rig/modelli.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "core/network_address.h"

namespace brenvo::rig {
namespace {

constexpr int kListLimit = 10000;  // milliseconds
constexpr std::int64_t kElsewhereRow = 0;

}  // namespace

Modelli::Modelli(core::Session& session)
    : core::TableWindow(session, "Modelli", "Scelta dell'apparato", base::Twips(9000),
                        base::Twips(7200)),
      lister_(session.Machine.MakeProcess()) {
  ShowCommands({&cmCollega});
  DefaultCommand = &cmCollega;
  lister_->OnEnd = [this](const platform::ProgramEnd& end) { TakeList(end); };
  Velocita.SetItems({"", "1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"});
}

void Modelli::Load() {
  core::TableWindow::Load();
  ShowTable(rows_, {"Costruttore", "Modello", "Numero", "Stato"});
}

void Modelli::Ask(const DeviceKind& kind) {
  kind_ = &kind;
  chosen_ = false;
  setUp_ = ReadSetUp(session_, kind);
  SetCaption(fmt::format("{}: scelta del modello", kind.title));
  Porta.SetText(setUp_.device);
  Velocita.SetText(setUp_.speed == 0 ? "" : std::to_string(setUp_.speed));
  Indirizzo.SetText(setUp_.address);
  Cerca.HoldText("");
  models_.clear();
  Fill();
  Say("Scrivere il nome in Cerca, scegliere la porta, poi Invio sul modello");
  try {
    lister_->Start({std::string(kind.lister), {"-l"}, kListLimit});
  } catch (const platform::DeviceError&) {
    Say(fmt::format("Manca {}: installare il pacchetto libhamlib-utils", kind.lister));
  }
}

void Modelli::TakeList(const platform::ProgramEnd& end) {
  models_ = ReadModels(end.output);
  if (models_.empty()) Say(fmt::format("{} non dice i suoi modelli", kind_->lister));
  Fill();
}

void Modelli::Fill() {
  std::vector<core::MemoryRows::Row> rows;
  rows.push_back(
      {fmt::format("({} già al lavoro)", kind_->program), "all'indirizzo qui sotto", "", ""});
  for (const Model& each : models_) {
    rows.push_back({each.maker, each.name, std::to_string(each.number), each.state});
  }
  rows_.SetRows(std::move(rows));
  const auto at = std::ranges::find(models_, setUp_.model, &Model::number);
  const bool known = !setUp_.isElsewhere && at != models_.end();
  ShowRows(known ? 1 + (at - models_.begin()) : kElsewhereRow);
}

void Modelli::Take() {
  const auto key = ChosenKey();
  if (!key) return;
  SetUp wanted;
  wanted.isElsewhere = *key == kElsewhereRow;
  wanted.device = base::Trim(Porta.Text());
  wanted.speed = static_cast<int>(std::clamp(base::Val(Velocita.Text()), 0.0, 10000000.0));
  wanted.address = base::Trim(Indirizzo.Text());
  if (const std::string fault = core::FaultOfTargets(wanted.address);
      !fault.empty() || core::TargetsOf(wanted.address).size() != 1) {
    Say("L'indirizzo si scrive come 127.0.0.1:" + std::to_string(kind_->port));
    Host().MoveFocus(Indirizzo);
    return;
  }
  if (!wanted.isElsewhere) {
    const Model& model = models_.at(static_cast<std::size_t>(*key - 1));
    wanted.model = model.number;
    wanted.name = base::Trim(model.maker + ' ' + model.name);
  }
  StoreSetUp(session_, *kind_, wanted);
  chosen_ = true;
  Close();
}

}  // namespace brenvo::rig
