// The programs of digital modes that are at work, what they hear, and what is answered to them.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/units.h"
#include "core/session.h"
#include "core/told_contact.h"
#include "digital/datagrams.h"
#include "digital/needs.h"
#include "platform/udp_socket.h"
#include "worked/keeper.h"

namespace brenvo::adif {
struct AdifRecord;
class StationTables;
}  // namespace brenvo::adif

namespace brenvo::digital {

class CallPlaces;
class CallProvinces;
class ContactIntake;

// One that sends, by its address without the port, and its id. Its answers go where it last sent
// from.
struct Program {
  platform::UdpAddress address;
  Header header;
  std::string version;
  std::optional<Status> status;
  std::int64_t heard = 0;  // seconds of the clock, of its last datagram
  bool gone = false;       // it has been silent for too long
};

struct HeardDecode {
  std::int64_t number = 0;  // rising
  platform::UdpAddress address;
  Header header;
  Decode decode;
  base::DateTime moment;  // of it, in UTC
  std::string call, locator, country,
      title;                          // of the sender; his country that day, its description
  std::string banda, modo;            // as contacts have them
  double distance = 0;                // km, 0 where it is not known
  bool isCq = false, isMine = false;  // calls all; names the own call
  std::optional<std::size_t> need;    // of Needs()
};

struct DatagramCounts {
  std::int64_t heard = 0, foreign = 0, damaged = 0, unknown = 0, flooded = 0;
};

// Lives as long as the main frame. It listens while a window wants it to, or as long as the
// operator has chosen so. Whatever comes in is bounded: programs, decodes, datagrams a second.
class Programs {
 public:
  static constexpr std::size_t kMostPrograms = 16, kMostDecodes = 1000, kMostHighlights = 100;
  // Datagrams a second that are looked at, and in one event.
  static constexpr int kMostPerSecond = 1000, kMostPerEvent = 200;
  // Seconds of silence after which a program is gone.
  static constexpr std::int64_t kSilence = 50;
  // Milliseconds between two looks at who is silent.
  static constexpr int kLook = 5000;

  // Valid as long as the session and the keeper.
  Programs(core::Session& session, worked::Keeper& worked);
  ~Programs();
  Programs(const Programs&) = delete;
  Programs& operator=(const Programs&) = delete;

  // Reads the choices, and listens where it is to.
  void Start();
  void WindowOpened(bool open);
  bool Listens() const;
  // Why it does not listen, or not to all; empty when it does as it should.
  const std::string& Fault() const { return fault_; }

  const std::vector<Program>& All() const { return programs_; }
  // The newest first.
  const std::deque<HeardDecode>& Decodes() const { return decodes_; }
  const HeardDecode* FindDecode(std::int64_t number) const;
  const std::vector<Need>& Needs() const { return needs_; }
  // The colour of a need, by its place.
  static base::Colour ColourOf(std::size_t need);
  const DatagramCounts& Counts() const { return counts_; }
  // In words: the contacts that wait to be stored, and why; empty for none.
  std::string WaitingText() const;
  // What became of the last contact; empty until there was one.
  const std::string& LastNews() const { return news_; }
  const ContactIntake& Intake() const { return *intake_; }

  // Answers a decode as if it had been clicked in its program. False when that is gone.
  [[nodiscard]] bool Answer(std::int64_t number);
  // No program sends any more; those that can send again what they have decoded.
  void HaltAll();
  void ReplayAll();
  void ForgetDecodes();
  void TryAgain();

  // Takes a contact for the log of an open contest, where the operator wants that; false when there
  // is none for it. May be empty.
  std::function<bool(const core::ToldContact& told)> ToContest;

  // Programs, contacts, counts or faults have changed; decodes have come; all decodes are others.
  forms::Signal<> Changed, Decoded, DecodesChanged;

 private:
  void ReadChoices();
  std::string FaultOfStoredNeeds() const;
  void Listen();
  void Deafen();
  void Hear(platform::UdpSocket& socket, bool isAdif);
  void Take(const platform::UdpDatagram& datagram);
  void TakeMessage(Program& program, const Message& message);
  void TakeDecode(Program& program, const Decode& decode);
  void Forward(const platform::UdpDatagram& datagram);
  Program& ProgramOf(const platform::UdpDatagram& datagram, const Header& header);
  void Send(const Program& program, const Message& message);
  void Judge(HeardDecode& heard) const;
  void JudgeAll();
  void Highlight(const HeardDecode& heard, Program& program);
  void Sound(const HeardDecode& heard);
  void LookForSilent();
  void ReadTables();
  base::DateTime MomentOf(const TimeOfDay& time) const;
  bool GoesToContest(const adif::AdifRecord& record);

  core::Session& session_;
  worked::Keeper& worked_;
  std::unique_ptr<platform::UdpSocket> wsjtx_, adif_;
  std::unique_ptr<platform::Timer> look_;
  std::unique_ptr<platform::WavePlayer> player_;
  std::unique_ptr<adif::StationTables> tables_;
  std::unique_ptr<CallPlaces> places_;
  std::unique_ptr<CallProvinces> provinces_;  // null while no need asks for them
  std::unique_ptr<ContactIntake> intake_;
  forms::Subscription choiceChanged_, closing_, reopened_, renewed_, profileStored_, rulesChanged_;

  bool windowOpen_ = false;
  std::vector<Need> needs_;
  std::string fault_, news_;
  std::vector<Program> programs_;
  std::deque<HeardDecode> decodes_;
  std::int64_t lastNumber_ = 0;
  DatagramCounts counts_;
  std::int64_t second_ = 0;
  int inSecond_ = 0;
  std::vector<platform::UdpAddress> forwards_;
  std::deque<std::pair<std::int64_t, std::size_t>> forwarded_;  // second and hash
  struct Painted {
    platform::UdpAddress address;
    Header header;
    std::string call;
    std::size_t need = 0;
  };
  std::deque<Painted> painted_;
  std::set<std::string> sounded_;
  bool decoded_ = false, changed_ = false;  // by the event in work
};

}  // namespace brenvo::digital
