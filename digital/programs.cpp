#include "digital/programs.h"

#include <fmt/format.h>

#include <algorithm>

#include "adif/adif_names.h"
#include "adif/record_to_contact.h"
#include "adif/station_tables.h"
#include "base/number.h"
#include "base/text.h"
#include "call_places.h"
#include "call_provinces.h"
#include "contact_intake.h"
#include "core/files.h"
#include "core/network_address.h"
#include "decode_text.h"
#include "platform/device_error.h"
#include "words.h"

namespace brenvo::digital {
namespace {

namespace choice = core::choice;

constexpr double kHzPerMhz = 1e6;
// Longer ones no program sends.
constexpr std::size_t kLongestMessage = 80, kLongestId = 80;
// Seconds in which the same bytes are forwarded once: a loop of relays ends there.
constexpr std::int64_t kSameAgain = 2;
constexpr std::size_t kMostForwarded = 500, kMostSounded = 5000;
constexpr std::uint32_t kMillisecondsPerHour = 3600 * 1000;
constexpr std::string_view kWave = "bisogno.wav";

constexpr base::Colour kColours[] = {{255, 120, 120}, {255, 180, 90},  {255, 225, 90},
                                     {190, 235, 110}, {120, 225, 170}, {130, 205, 250},
                                     {190, 180, 255}, {240, 170, 235}};

bool IsSame(const Program& program, const platform::UdpAddress& address, std::string_view id) {
  return program.address.host == address.host && program.header.id == id;
}

Rgb RgbOf(base::Colour colour) {
  return {static_cast<std::uint8_t>(colour.red), static_cast<std::uint8_t>(colour.green),
          static_cast<std::uint8_t>(colour.blue)};
}

}  // namespace

base::Colour Programs::ColourOf(std::size_t need) {
  return kColours[std::min(need, std::size(kColours) - 1)];
}

Programs::Programs(core::Session& session, worked::Keeper& worked)
    : session_(session),
      worked_(worked),
      wsjtx_(session.Machine.MakeUdpSocket("WSJTX")),
      adif_(session.Machine.MakeUdpSocket("ADIF")),
      look_(session.Machine.MakeTimer()),
      player_(session.Machine.MakeWavePlayer()),
      places_(std::make_unique<CallPlaces>(session)),
      intake_(std::make_unique<ContactIntake>(session, [this](const std::string& text) {
        news_ = text;
        Changed();
      })) {
  session.Choices.FaultOfNeeds = [](std::string_view needs) { return ParseNeeds(needs).fault; };
  intake_->Divert = [this](const adif::AdifRecord& record) { return GoesToContest(record); };
  wsjtx_->OnData = [this] { Hear(*wsjtx_, false); };
  adif_->OnData = [this] { Hear(*adif_, true); };
  look_->SetInterval(kLook);
  look_->OnTick = [this] { LookForSilent(); };
  choiceChanged_ = session.Choices.Changed.Subscribe([this](const core::Choice& changed) {
    if (changed.section == choice::kDigitalListens.section) ReadChoices();
  });
  closing_ = session.Closing.Subscribe([this] { tables_.reset(); });
  reopened_ = session.Reopened.Subscribe([this] { ReadTables(); });
  profileStored_ = session.Station.ProfileStored.Subscribe([this] { ReadTables(); });
  rulesChanged_ = session.ByDate.Changed.Subscribe([this] { JudgeAll(); });
  renewed_ = worked.Renewed.Subscribe([this] { JudgeAll(); });
}

Programs::~Programs() = default;

void Programs::Start() { ReadChoices(); }

void Programs::WindowOpened(bool open) {
  windowOpen_ = open;
  const bool wanted = open || session_.Choices.Get<choice::kDigitalListens>();
  if (wanted != look_->Enabled()) ReadChoices();
}

bool Programs::Listens() const { return wsjtx_->IsOpen(); }

void Programs::ReadChoices() {
  const core::Preferences& choices = session_.Choices;
  needs_ = ParseNeeds(choices.Get<choice::kDigitalNeeds>()).needs;
  const bool needsProvinces = std::ranges::any_of(
      needs_, [](const Need& each) { return each.kind == worked::Kind::kProvincia; });
  if (!needsProvinces) {
    provinces_.reset();
  } else if (!provinces_) {
    provinces_ = std::make_unique<CallProvinces>(session_, [this] { JudgeAll(); });
  }
  forwards_.clear();
  for (const core::NetworkTarget& each : core::TargetsOf(choices.Get<choice::kDigitalForwards>())) {
    // What it sends to itself would come from itself.
    const bool isOwn = each.port == choices.Get<choice::kDigitalPort>() &&
                       (each.host.starts_with("127.") || each.host == "0.0.0.0" ||
                        each.host == choices.Get<choice::kDigitalAddress>());
    if (!isOwn) forwards_.push_back({each.host, each.port});
  }
  Deafen();
  if (windowOpen_ || choices.Get<choice::kDigitalListens>()) Listen();
  if (fault_.empty()) fault_ = FaultOfStoredNeeds();
  if (look_->Enabled()) ReadTables();
  JudgeAll();
  Changed();
}

// Preferenze refuses what cannot be read; the settings may have been written otherwise.
std::string Programs::FaultOfStoredNeeds() const {
  const std::string stored =
      session_.GetSetting(choice::kDigitalNeeds.section, choice::kDigitalNeeds.key, "");
  const std::string fault = stored.empty() ? "" : ParseNeeds(stored).fault;
  return fault.empty() ? "" : "Bisogni in Preferenze: " + fault;
}

void Programs::Listen() {
  const core::Preferences& choices = session_.Choices;
  const std::string address = choices.Get<choice::kDigitalAddress>();
  platform::UdpListening where{
      {address, choices.Get<choice::kDigitalPort>()}, choices.Get<choice::kDigitalGroup>(), {}};
  const std::string interfaces = choices.Get<choice::kDigitalInterfaces>();
  for (const std::string_view each : WordsOf(interfaces)) where.interfaces.emplace_back(each);
  look_->SetEnabled(true);
  try {
    wsjtx_->Open(where);
    const int adifPort = choices.Get<choice::kDigitalAdifPort>();
    if (adifPort != 0) adif_->Open({{address, adifPort}, {}, {}});
  } catch (const platform::DeviceError& failure) {
    fault_ = failure.what();
  }
}

void Programs::Deafen() {
  fault_.clear();
  look_->SetEnabled(false);
  wsjtx_->Close();
  adif_->Close();
}

void Programs::ReadTables() {
  if (!session_.IsOpen()) return;
  tables_ = std::make_unique<adif::StationTables>(session_);
  session_.ByDate.Rules();  // read before a decode waits for them
  places_->Read();
}

void Programs::Hear(platform::UdpSocket& socket, bool isAdif) {
  decoded_ = changed_ = false;
  const std::int64_t now = session_.Machine.GetClock().UtcNow().Seconds();
  for (int i = 0; i < kMostPerEvent; ++i) {
    const std::optional<platform::UdpDatagram> datagram = socket.Receive();
    if (!datagram) break;
    ++counts_.heard;
    if (now != second_) second_ = now, inSecond_ = 0;
    if (++inSecond_ > kMostPerSecond) {
      ++counts_.flooded;
      changed_ = changed_ || inSecond_ == kMostPerSecond + 1;
      continue;
    }
    if (!isAdif) {
      Forward(*datagram);
      Take(*datagram);
    } else if (!intake_->TakeAdif(datagram->bytes)) {
      ++counts_.foreign;
      changed_ = true;
    }
  }
  if (decoded_) Decoded();
  if (changed_) Changed();
}

void Programs::Take(const platform::UdpDatagram& datagram) {
  const auto read = ReadDatagram(datagram.bytes);
  const auto* told = std::get_if<Datagram>(&read);
  if (told == nullptr || told->header.id.size() > kLongestId) {
    const Unread why = told == nullptr ? std::get<Unread>(read) : Unread::kDamaged;
    if (why == Unread::kUnknownType) {
      ++counts_.unknown;
    } else if (why == Unread::kDamaged) {
      ++counts_.damaged;
    } else {
      ++counts_.foreign;
    }
    changed_ = true;
    return;
  }
  // What is told to programs is nothing to a logbook.
  const bool fromProgram = std::visit(
      [](const auto& message) {
        using Kind = std::decay_t<decltype(message)>;
        return std::is_same_v<Kind, Heartbeat> || std::is_same_v<Kind, Status> ||
               std::is_same_v<Kind, Decode> || std::is_same_v<Kind, Clear> ||
               std::is_same_v<Kind, QsoLogged> || std::is_same_v<Kind, CloseProgram> ||
               std::is_same_v<Kind, WsprDecode> || std::is_same_v<Kind, LoggedAdif>;
      },
      told->message);
  if (!fromProgram) {
    ++counts_.unknown;
    return;
  }
  TakeMessage(ProgramOf(datagram, told->header), told->message);
}

Program& Programs::ProgramOf(const platform::UdpDatagram& datagram, const Header& header) {
  auto at = std::find_if(programs_.begin(), programs_.end(), [&](const Program& each) {
    return IsSame(each, datagram.from, header.id);
  });
  const std::int64_t now = session_.Machine.GetClock().UtcNow().Seconds();
  if (at == programs_.end()) {
    if (programs_.size() >= kMostPrograms) {
      programs_.erase(
          std::min_element(programs_.begin(), programs_.end(),
                           [](const Program& a, const Program& b) { return a.heard < b.heard; }));
    }
    programs_.push_back({datagram.from, header, {}, {}, now, true});
    at = std::prev(programs_.end());
  }
  const bool isBack = std::exchange(at->gone, false);
  at->address = datagram.from;
  at->header.schema = std::max(at->header.schema, header.schema);
  at->heard = now;
  if (isBack) {
    changed_ = true;
    // It learns from this that somebody is there, and which form he reads.
    Send(*at, Heartbeat{kNewestSchema, "Brenvo", ""});
  }
  return *at;
}

void Programs::TakeMessage(Program& program, const Message& message) {
  if (const auto* heartbeat = std::get_if<Heartbeat>(&message)) {
    changed_ = changed_ || program.version != heartbeat->version;
    program.version = base::Left(base::ValidUtf8(heartbeat->version), kLongestId);
    program.header.schema =
        std::max(program.header.schema, std::min(heartbeat->newestSchema, kNewestSchema));
  } else if (const auto* status = std::get_if<Status>(&message)) {
    changed_ = changed_ || program.status != *status;
    program.status = *status;
  } else if (const auto* decode = std::get_if<Decode>(&message)) {
    TakeDecode(program, *decode);
  } else if (const auto* logged = std::get_if<QsoLogged>(&message)) {
    intake_->TakeLogged(*logged, IsJtdx(program.header.id));
  } else if (const auto* text = std::get_if<LoggedAdif>(&message)) {
    if (!intake_->TakeAdif(text->adif)) ++counts_.damaged;
  } else if (std::holds_alternative<CloseProgram>(message)) {
    changed_ = true;
    std::erase_if(programs_, [&](const Program& each) { return &each == &program; });
  }
}

void Programs::TakeDecode(Program& program, const Decode& decode) {
  if (decode.message.size() > kLongestMessage || decode.mode.size() > kLongestId) {
    ++counts_.damaged;
    return;
  }
  const bool again = std::any_of(decodes_.begin(), decodes_.end(), [&](const HeardDecode& each) {
    return each.decode.time == decode.time && each.decode.df == decode.df &&
           each.decode.message == decode.message && each.header.id == program.header.id;
  });
  if (again) return;
  HeardDecode heard;
  heard.number = ++lastNumber_;
  heard.address = program.address;
  heard.header = program.header;
  heard.decode = decode;
  heard.moment = MomentOf(decode.time);
  const DecodeText text = ReadDecode(decode.message);
  heard.call = text.call;
  heard.locator = text.locator;
  heard.isCq = text.isCq;
  const std::string own = program.status ? program.status->deCall : std::string();
  if (!own.empty()) {
    for (std::string_view word : WordsOf(decode.message)) {
      if (word == own || word == '<' + own + '>') heard.isMine = text.call != own;
    }
  }
  if (program.status && tables_) {
    const auto mode = adif::FindAdifMode(program.status->mode);
    heard.modo = tables_->ModoOf(mode ? mode->mode : program.status->mode,
                                 mode ? mode->submode : std::string());
    heard.banda =
        tables_->BandaAt(base::Mhz(static_cast<double>(program.status->dial) / kHzPerMhz));
  }
  // Until the program has said where it listens, it listens where the transceiver does.
  const auto& rig = session_.Rig.Now();
  if (heard.banda.empty() && rig) heard.banda = rig->banda;
  if (tables_ && !heard.locator.empty()) heard.distance = tables_->Distance(heard.locator);
  Judge(heard);
  decodes_.push_front(std::move(heard));
  if (decodes_.size() > kMostDecodes) decodes_.pop_back();
  decoded_ = true;
  const HeardDecode& kept = decodes_.front();
  if (!kept.need || !decode.isNew) return;
  Highlight(kept, program);
  if (!decode.offAir) Sound(kept);
}

// The moment of a time of day that is not far from now.
base::DateTime Programs::MomentOf(const TimeOfDay& time) const {
  const base::DateTime now = session_.Machine.GetClock().UtcNow();
  if (!time) return now;
  constexpr std::int64_t kSecondsPerDay = 24 * 60 * 60;
  const bool isAhead = static_cast<int>(*time / kMillisecondsPerHour) > now.Hour() + 12;
  return now.DatePart().Later(*time / 1000 - (isAhead ? kSecondsPerDay : 0));
}

void Programs::Judge(HeardDecode& heard) const {
  heard.need.reset();
  if (heard.call.empty() || !session_.IsOpen()) return;
  const core::CallPlace place = places_->Of(heard.call, heard.moment);
  heard.country = place.Country;
  heard.title = places_->TitleOf(place.Country);
  const worked::WorkedIndex* const index = worked_.Index();
  if (index == nullptr) return;
  const Heard asked{
      .call = heard.call,
      .prefisso = place.Prefisso,
      .country = place.Country,
      .continente = place.Continente,
      .provincia = provinces_ ? provinces_->Of(heard.call, place.Country) : std::string_view(),
      .locator = heard.locator,
      .zonaCQ = place.ZonaCQ,
      .zonaITU = place.ZonaITU,
      .banda = heard.banda,
      .modo = heard.modo};
  heard.need = FirstNeed(needs_, *index, asked);
}

void Programs::JudgeAll() {
  for (HeardDecode& each : decodes_) Judge(each);
  // What is no need any more, or another one, loses its colour in its program.
  for (auto at = painted_.begin(); at != painted_.end();) {
    const bool stays = std::any_of(decodes_.begin(), decodes_.end(), [&](const auto& each) {
      return each.header.id == at->header.id && each.call == at->call && each.need == at->need;
    });
    if (stays) {
      ++at;
      continue;
    }
    wsjtx_->Send(at->address,
                 WriteDatagram({at->header, digital::Highlight{at->call, {}, {}, true}}));
    at = painted_.erase(at);
  }
  DecodesChanged();
}

void Programs::Highlight(const HeardDecode& heard, Program& program) {
  if (!session_.Choices.Get<choice::kDigitalColours>() || IsJtdx(program.header.id)) return;
  std::erase_if(painted_, [&](const Painted& each) {
    return each.call == heard.call && each.header.id == heard.header.id;
  });
  if (painted_.size() >= kMostHighlights) {
    const Painted& oldest = painted_.front();
    wsjtx_->Send(oldest.address,
                 WriteDatagram({oldest.header, digital::Highlight{oldest.call, {}, {}, true}}));
    painted_.pop_front();
  }
  painted_.push_back({program.address, program.header, heard.call, *heard.need});
  Send(program, digital::Highlight{heard.call, RgbOf(ColourOf(*heard.need)), Rgb{0, 0, 0}, true});
}

void Programs::Sound(const HeardDecode& heard) {
  const Need& need = needs_[*heard.need];
  if (!need.sounds || !session_.Choices.Get<choice::kDigitalSound>()) return;
  if (sounded_.size() >= kMostSounded) sounded_.clear();
  const std::string once =
      fmt::format("{}|{}|{}|{}", heard.call, heard.banda, heard.modo, need.words);
  if (!sounded_.insert(once).second) return;
  player_->Start(core::PlayedFileIn(session_.AppPath, kWave));
}

void Programs::Forward(const platform::UdpDatagram& datagram) {
  if (forwards_.empty()) return;
  const auto isTarget = [&](const platform::UdpAddress& address) {
    return std::find(forwards_.begin(), forwards_.end(), address) != forwards_.end();
  };
  if (isTarget(datagram.from)) return;
  const std::size_t hash = std::hash<std::string_view>()(datagram.bytes);
  while (!forwarded_.empty() &&
         (second_ - forwarded_.front().first >= kSameAgain || second_ < forwarded_.front().first ||
          forwarded_.size() >= kMostForwarded)) {
    forwarded_.pop_front();
  }
  for (const auto& [when, what] : forwarded_) {
    if (what == hash) return;
  }
  forwarded_.emplace_back(second_, hash);
  for (const platform::UdpAddress& each : forwards_) wsjtx_->Send(each, datagram.bytes);
}

void Programs::Send(const Program& program, const Message& message) {
  wsjtx_->Send(program.address, WriteDatagram({program.header, message}));
}

const HeardDecode* Programs::FindDecode(std::int64_t number) const {
  // Numbers fall from the first one on.
  const auto at = std::lower_bound(
      decodes_.begin(), decodes_.end(), number,
      [](const HeardDecode& each, std::int64_t wanted) { return each.number > wanted; });
  return at == decodes_.end() || at->number != number ? nullptr : &*at;
}

bool Programs::Answer(std::int64_t number) {
  const HeardDecode* const heard = FindDecode(number);
  if (heard == nullptr) return false;
  const auto at = std::find_if(programs_.begin(), programs_.end(), [&](const Program& each) {
    return IsSame(each, heard->address, heard->header.id);
  });
  if (at == programs_.end() || at->gone) return false;
  Send(*at, ReplyTo(heard->decode));
  return true;
}

void Programs::HaltAll() {
  for (const Program& each : programs_) Send(each, HaltTx{false});
}

void Programs::ReplayAll() {
  for (const Program& each : programs_) Send(each, Replay());
}

void Programs::ForgetDecodes() {
  decodes_.clear();
  DecodesChanged();
}

void Programs::TryAgain() {
  intake_->TryAgain();
  Changed();
}

std::string Programs::WaitingText() const {
  const auto& waiting = intake_->Waiting();
  if (waiting.empty()) return {};
  return fmt::format("In attesa {} Qso: {}", waiting.size(), waiting.front().reason);
}

bool Programs::GoesToContest(const adif::AdifRecord& record) {
  if (!ToContest || !tables_ || !session_.Choices.Get<choice::kDigitalContest>()) return false;
  adif::MappedRecord mapped;
  adif::MapColumns(record, {}, *tables_, mapped);
  if (!mapped.refusal.empty()) return false;
  const auto serial = [&](std::string_view field) {
    const std::string* const text = record.Find(field);
    return text == nullptr ? std::int64_t{0} : static_cast<std::int64_t>(base::Val(*text));
  };
  const core::LogContact& contact = mapped.contact;
  core::ToldContact told{contact.DataQso,     contact.Call,  contact.Locator,
                         contact.Banda,       contact.Modo,  contact.QrkDato,
                         contact.QrkRicevuto, serial("STX"), serial("SRX")};
  if (!ToContest(told)) return false;
  news_ = told.serialSent == 0 ? told.call + " è già nel log del contest"
                               : fmt::format("{} è nel log del contest, con il progressivo {}",
                                             told.call, told.serialSent);
  Changed();
  return true;
}

void Programs::LookForSilent() {
  // A port that another program had may be free by now.
  if (!fault_.empty() && !wsjtx_->IsOpen()) ReadChoices();
  const std::int64_t now = session_.Machine.GetClock().UtcNow().Seconds();
  bool changed = false;
  for (Program& each : programs_) {
    const bool gone = now - each.heard > kSilence;
    changed = changed || gone != each.gone;
    each.gone = gone;
  }
  if (changed) Changed();
}

}  // namespace brenvo::digital
