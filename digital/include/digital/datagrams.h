// The datagrams that programs of digital modes exchange with a logbook, read and written byte for
// byte: big-endian numbers, texts with their length in bytes before them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/date.h"

namespace brenvo::digital {

// How the other side forms its fields. Version 1 is no form that can be relied on, and what comes
// after the last one is not known.
inline constexpr std::uint32_t kOldestSchema = 2, kNewestSchema = 3;

// Some of its fields are of its own kind.
bool IsJtdx(std::string_view id);

// A number that says "not told" or "no change".
inline constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

// What begins every datagram. The id names the program, and which one where several of a kind run.
struct Header {
  std::uint32_t schema = kOldestSchema;
  std::string id;
  friend bool operator==(const Header&, const Header&) = default;
};

// Milliseconds since midnight UTC; nothing when the program told none.
using TimeOfDay = std::optional<std::uint32_t>;

// A moment as the program wrote it. Nothing of an invalid one.
struct Moment {
  enum class Basis : std::uint8_t { kLocal, kUtc, kOffset };
  base::DateTime time;  // to the second
  Basis basis = Basis::kUtc;
  std::int32_t offset = 0;  // seconds ahead of UTC, with kOffset
  friend bool operator==(const Moment&, const Moment&) = default;
};

// Fields that a program does not send stand at what they are here.
struct Heartbeat {
  std::uint32_t newestSchema = kOldestSchema;
  std::string version{}, revision{};
  friend bool operator==(const Heartbeat&, const Heartbeat&) = default;
};

struct Status {
  std::uint64_t dial = 0;  // Hz
  std::string mode{}, dxCall{}, report{}, txMode{};
  bool txEnabled = false, transmitting = false, decoding = false;
  std::uint32_t rxDf = 0, txDf = 0;  // Hz
  std::string deCall{}, deGrid{}, dxGrid{};
  bool txWatchdog = false;
  std::string subMode{};
  bool fastMode = false;
  std::uint8_t specialOperation = 0;    // one of kEuVhf ...
  std::uint32_t tolerance = kNoNumber;  // Hz
  std::uint32_t period = kNoNumber;     // seconds
  std::string configuration{}, txMessage{};
  friend bool operator==(const Status&, const Status&) = default;
};
inline constexpr std::uint8_t kEuVhf = 2;

struct Decode {
  bool isNew = true;
  TimeOfDay time{};
  std::int32_t snr = 0;      // dB
  std::uint64_t dtBits = 0;  // the seconds of DtOf, as they came: an answer gives them back
  std::uint32_t df = 0;      // Hz
  std::string mode{};        // one character
  std::string message{};
  bool lowConfidence = false;
  bool offAir = false;  // from a recording
  friend bool operator==(const Decode&, const Decode&) = default;
};
double DtOf(const Decode& decode);

struct Clear {
  std::optional<std::uint8_t> window{};  // told to a program alone: 0 band, 1 own, 2 both
  friend bool operator==(const Clear&, const Clear&) = default;
};

struct Reply {
  TimeOfDay time{};
  std::int32_t snr = 0;
  std::uint64_t dtBits = 0;
  std::uint32_t df = 0;
  std::string mode{}, message{};
  bool lowConfidence = false;
  std::uint8_t modifiers = 0;
  friend bool operator==(const Reply&, const Reply&) = default;
};
// What answers a decode, exactly as it came.
Reply ReplyTo(const Decode& decode);

struct QsoLogged {
  std::optional<Moment> off{};
  std::string dxCall{}, dxGrid{};
  std::uint64_t frequency = 0;  // Hz
  std::string mode{}, reportSent{}, reportReceived{}, power{}, comments{}, name{};
  std::optional<Moment> on{};
  std::string operatorCall{}, myCall{}, myGrid{}, exchangeSent{}, exchangeReceived{}, propagation{};
  std::string satellite{}, satelliteMode{}, rxFrequency{};  // MHz
  friend bool operator==(const QsoLogged&, const QsoLogged&) = default;
};

struct CloseProgram {
  friend bool operator==(const CloseProgram&, const CloseProgram&) = default;
};
struct Replay {
  friend bool operator==(const Replay&, const Replay&) = default;
};
struct HaltTx {
  bool autoOnly = false;
  friend bool operator==(const HaltTx&, const HaltTx&) = default;
};
struct FreeText {
  std::string text{};
  bool send = false;
  friend bool operator==(const FreeText&, const FreeText&) = default;
};

struct WsprDecode {
  bool isNew = true;
  TimeOfDay time{};
  std::int32_t snr = 0;
  std::uint64_t dtBits = 0;
  std::uint64_t frequency = 0;  // Hz
  std::int32_t drift = 0;       // Hz
  std::string call{}, grid{};
  std::int32_t dbm = 0;
  bool offAir = false;
  friend bool operator==(const WsprDecode&, const WsprDecode&) = default;
};

struct Location {
  std::string grid{};
  friend bool operator==(const Location&, const Location&) = default;
};

// The text of a log file with one record; its letters are UTF-8 or Latin-1.
struct LoggedAdif {
  std::string adif{};
  friend bool operator==(const LoggedAdif&, const LoggedAdif&) = default;
};

struct Rgb {
  std::uint8_t red = 0, green = 0, blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};
// Without colours it is taken back.
struct Highlight {
  std::string call{};
  std::optional<Rgb> background{}, foreground{};
  bool lastPeriodOnly = false;
  friend bool operator==(const Highlight&, const Highlight&) = default;
};

struct SwitchConfiguration {
  std::string name{};
  friend bool operator==(const SwitchConfiguration&, const SwitchConfiguration&) = default;
};
// An empty text and kNoNumber change nothing.
struct Configure {
  std::string mode{};
  std::uint32_t tolerance = kNoNumber;
  std::string subMode{};
  bool fastMode = false;
  std::uint32_t period = kNoNumber, rxDf = kNoNumber;
  std::string dxCall{}, dxGrid{};
  bool generateMessages = false;
  friend bool operator==(const Configure&, const Configure&) = default;
};
struct Annotation {
  std::string dxCall{};
  bool hasOrder = false;
  std::uint32_t order = kNoNumber;
  friend bool operator==(const Annotation&, const Annotation&) = default;
};
// JTDX alone.
struct SetTxDf {
  std::uint32_t df = 0;
  friend bool operator==(const SetTxDf&, const SetTxDf&) = default;
};
struct TriggerCq {
  std::string direction{};
  bool txPeriod = false, send = false;
  friend bool operator==(const TriggerCq&, const TriggerCq&) = default;
};

using Message = std::variant<Heartbeat, Status, Decode, Clear, Reply, QsoLogged, CloseProgram,
                             Replay, HaltTx, FreeText, WsprDecode, Location, LoggedAdif, Highlight,
                             SwitchConfiguration, Configure, Annotation, SetTxDf, TriggerCq>;

struct Datagram {
  Header header;
  Message message;
  friend bool operator==(const Datagram&, const Datagram&) = default;
};

// Why a datagram says nothing.
enum class Unread {
  kForeign,      // no datagram of this kind
  kSchema,       // of a form that is not known
  kUnknownType,  // to be passed over in silence
  kDamaged       // ends within a field that has to be there, or lies about a length
};

// Bytes behind the fields that are known count for nothing; fields that may be missing at the end
// are as if they had not been sent. Takes no more memory than the datagram has bytes, whatever its
// lengths say.
std::variant<Datagram, Unread> ReadDatagram(std::string_view bytes);

// All fields, in the form of the header.
std::string WriteDatagram(const Datagram& datagram);

}  // namespace brenvo::digital
