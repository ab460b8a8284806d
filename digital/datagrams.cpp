#include "digital/datagrams.h"

#include <bit>
#include <limits>
#include <type_traits>

namespace brenvo::digital {
namespace {

constexpr std::uint32_t kMagic = 0xADBCCBDA;
constexpr std::uint32_t kNoLength = 0xFFFFFFFF;
constexpr std::uint32_t kMillisecondsPerDay = 24u * 60 * 60 * 1000;
constexpr std::int64_t kSecondsPerDay = 24 * 60 * 60;
// The Julian day of 30/12/1899, day zero of the station's own dates.
constexpr std::int64_t kJulianDayZero = 2415019;
constexpr std::int64_t kLastJulianDay = 5373484;   // 31/12/9999
constexpr std::int64_t kFirstJulianDay = 1721426;  // 1/1/1
constexpr std::uint16_t kOpaque = 0xFFFF;
constexpr std::uint16_t kWide = 257;  // of eight bits makes sixteen
constexpr std::uint8_t kNoColour = 0, kRgbColour = 1;

// The fields of each message, in their order, once for reading and for writing. What stands behind
// Rest may be missing.
template <class F>
void Fields(F& f, Heartbeat& m) {
  f.Rest();
  f(m.newestSchema), f(m.version), f(m.revision);
}
template <class F>
void Fields(F& f, Status& m) {
  f(m.dial), f(m.mode), f(m.dxCall), f(m.report), f(m.txMode), f(m.txEnabled), f(m.transmitting),
      f(m.decoding);
  f.Rest();
  f(m.rxDf), f(m.txDf), f(m.deCall), f(m.deGrid), f(m.dxGrid), f(m.txWatchdog), f(m.subMode),
      f(m.fastMode);
  f(m.specialOperation), f(m.tolerance), f(m.period), f(m.configuration), f(m.txMessage);
}
template <class F>
void Fields(F& f, Decode& m) {
  f(m.isNew), f.Time(m.time), f(m.snr), f(m.dtBits), f(m.df), f(m.mode), f(m.message);
  f.Rest();
  f(m.lowConfidence), f(m.offAir);
}
template <class F>
void Fields(F& f, Clear& m) {
  f.Rest();
  f.Optional(m.window);
}
template <class F>
void Fields(F& f, Reply& m) {
  f.Time(m.time), f(m.snr), f(m.dtBits), f(m.df), f(m.mode), f(m.message);
  f.Rest();
  f(m.lowConfidence), f(m.modifiers);
}
template <class F>
void Fields(F& f, QsoLogged& m) {
  f.When(m.off), f(m.dxCall), f(m.dxGrid), f(m.frequency), f(m.mode), f(m.reportSent),
      f(m.reportReceived), f(m.power), f(m.comments), f(m.name), f.When(m.on);
  f.Rest();
  f(m.operatorCall), f(m.myCall), f(m.myGrid), f(m.exchangeSent), f(m.exchangeReceived),
      f(m.propagation), f(m.satellite), f(m.satelliteMode), f(m.rxFrequency);
}
template <class F>
void Fields(F&, CloseProgram&) {}
template <class F>
void Fields(F&, Replay&) {}
template <class F>
void Fields(F& f, HaltTx& m) {
  f(m.autoOnly);
}
template <class F>
void Fields(F& f, FreeText& m) {
  f(m.text), f(m.send);
}
template <class F>
void Fields(F& f, WsprDecode& m) {
  f(m.isNew), f.Time(m.time), f(m.snr), f(m.dtBits), f(m.frequency), f(m.drift), f(m.call),
      f(m.grid), f(m.dbm);
  f.Rest();
  f(m.offAir);
}
template <class F>
void Fields(F& f, Location& m) {
  f(m.grid);
}
template <class F>
void Fields(F& f, LoggedAdif& m) {
  f(m.adif);
}
template <class F>
void Fields(F& f, Highlight& m) {
  f(m.call), f.Colour(m.background), f.Colour(m.foreground);
  f.Rest();
  f(m.lastPeriodOnly);
}
template <class F>
void Fields(F& f, SwitchConfiguration& m) {
  f(m.name);
}
template <class F>
void Fields(F& f, Configure& m) {
  f(m.mode), f(m.tolerance), f(m.subMode), f(m.fastMode), f(m.period), f(m.rxDf), f(m.dxCall),
      f(m.dxGrid), f(m.generateMessages);
}
template <class F>
void Fields(F& f, Annotation& m) {
  f(m.dxCall), f(m.hasOrder), f(m.order);
}
template <class F>
void Fields(F& f, SetTxDf& m) {
  f(m.df);
}
template <class F>
void Fields(F& f, TriggerCq& m) {
  f(m.direction), f(m.txPeriod), f(m.send);
}

// The number of each kind of message, in the order of the variant.
constexpr std::uint32_t kTypes[] = {0,  1,  2,  3,  4,  5,  6,  7,  8, 9,
                                    10, 11, 12, 13, 14, 15, 16, 50, 51};
static_assert(std::size(kTypes) == std::variant_size_v<Message>);

// Once a field has not been there whole, none that follows is read.
class FieldReader {
 public:
  explicit FieldReader(std::string_view bytes) : bytes_(bytes) {}

  // What follows may be missing.
  void Rest() {
    if (!ended_) mayEnd_ = true;
  }
  // A field that has to be there is not.
  bool Damaged() const { return ended_ && !mayEnd_; }
  bool Lies() const { return lies_; }

  template <class Number>
  requires std::is_integral_v<Number>
  void operator()(Number& number) { Take(number); }
  void operator()(bool& yes) {
    std::uint8_t byte = 0;
    if (Take(byte)) yes = byte != 0;
  }
  void operator()(std::string& text) {
    std::uint32_t length = 0;
    if (!Take(length)) return;
    text.clear();
    if (length == kNoLength) return;
    if (length > bytes_.size()) {
      ended_ = lies_ = true;
      return;
    }
    text = bytes_.substr(0, length);
    bytes_.remove_prefix(length);
  }
  void Optional(std::optional<std::uint8_t>& number) {
    std::uint8_t byte = 0;
    if (Take(byte)) number = byte;
  }
  void Time(TimeOfDay& time) {
    std::uint32_t milliseconds = 0;
    if (!Take(milliseconds)) return;
    time.reset();
    if (milliseconds < kMillisecondsPerDay) time = milliseconds;
  }
  void When(std::optional<Moment>& moment) {
    std::int64_t day = 0;
    TimeOfDay time;
    std::uint8_t form = 0;
    Moment read;
    if (!Take(day)) return;
    Time(time);
    if (!Take(form)) return;
    constexpr std::uint8_t kOffset = static_cast<std::uint8_t>(Moment::Basis::kOffset);
    if (form == kOffset && !Take(read.offset)) return;
    if (form > kOffset) {  // a zone by name has no length of its own
      ended_ = lies_ = true;
      return;
    }
    moment.reset();
    if (day < kFirstJulianDay || day > kLastJulianDay || !time) return;
    read.basis = static_cast<Moment::Basis>(form);
    read.time = base::DateTime::FromSeconds((day - kJulianDayZero) * kSecondsPerDay + *time / 1000);
    moment = read;
  }
  void Colour(std::optional<Rgb>& colour) {
    std::uint8_t form = 0;
    std::uint16_t alpha = 0, red = 0, green = 0, blue = 0, pad = 0;
    if (!Take(form) || !Take(alpha) || !Take(red) || !Take(green) || !Take(blue) || !Take(pad)) {
      return;
    }
    colour.reset();
    if (form != kRgbColour) return;
    colour = Rgb{static_cast<std::uint8_t>(red >> 8), static_cast<std::uint8_t>(green >> 8),
                 static_cast<std::uint8_t>(blue >> 8)};
  }

 private:
  template <class Number>
  bool Take(Number& number) {
    if (ended_) return false;
    if (bytes_.size() < sizeof(Number)) {
      // Less than a field that is due is no field that is missing.
      if (!bytes_.empty()) lies_ = true;
      ended_ = true;
      return false;
    }
    std::make_unsigned_t<Number> read = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
      read = static_cast<std::make_unsigned_t<Number>>((static_cast<std::uint64_t>(read) << 8) |
                                                       static_cast<unsigned char>(bytes_[i]));
    }
    bytes_.remove_prefix(sizeof(Number));
    number = static_cast<Number>(read);
    return true;
  }

  std::string_view bytes_;
  bool ended_ = false, mayEnd_ = false, lies_ = false;
};

class FieldWriter {
 public:
  explicit FieldWriter(std::string& bytes) : bytes_(bytes) {}

  void Rest() {}
  template <class Number>
  requires std::is_integral_v<Number>
  void operator()(Number number) {
    for (std::size_t i = sizeof(Number); i-- > 0;) {
      bytes_ += static_cast<char>(
          (static_cast<std::uint64_t>(static_cast<std::make_unsigned_t<Number>>(number)) >> 8 * i) &
          0xFF);
    }
  }
  void operator()(bool yes) { (*this)(static_cast<std::uint8_t>(yes ? 1 : 0)); }
  void operator()(const std::string& text) {
    (*this)(static_cast<std::uint32_t>(text.size()));
    bytes_ += text;
  }
  void Optional(const std::optional<std::uint8_t>& number) {
    if (number) (*this)(*number);
  }
  void Time(const TimeOfDay& time) { (*this)(time.value_or(kNoNumber)); }
  void When(const std::optional<Moment>& moment) {
    if (!moment) {
      (*this)(std::numeric_limits<std::int64_t>::min());
      Time({});
      (*this)(std::uint8_t{0});
      return;
    }
    const std::int64_t seconds = moment->time.Seconds();
    std::int64_t day = seconds / kSecondsPerDay, ofDay = seconds % kSecondsPerDay;
    if (ofDay < 0) --day, ofDay += kSecondsPerDay;
    (*this)(day + kJulianDayZero);
    Time(static_cast<std::uint32_t>(ofDay * 1000));
    (*this)(static_cast<std::uint8_t>(moment->basis));
    if (moment->basis == Moment::Basis::kOffset) (*this)(moment->offset);
  }
  void Colour(const std::optional<Rgb>& colour) {
    (*this)(colour ? kRgbColour : kNoColour);
    (*this)(kOpaque);
    const Rgb shown = colour.value_or(Rgb());
    for (const std::uint8_t part : {shown.red, shown.green, shown.blue}) {
      (*this)(static_cast<std::uint16_t>(part * kWide));
    }
    (*this)(std::uint16_t{0});
  }

 private:
  std::string& bytes_;
};

template <std::size_t kIndex = 0>
std::variant<Datagram, Unread> ReadMessage(std::uint32_t type, Header header, FieldReader& fields) {
  if constexpr (kIndex == std::variant_size_v<Message>) {
    return Unread::kUnknownType;
  } else {
    if (type != kTypes[kIndex]) return ReadMessage<kIndex + 1>(type, std::move(header), fields);
    std::variant_alternative_t<kIndex, Message> message;
    Fields(fields, message);
    if (fields.Damaged() || fields.Lies()) return Unread::kDamaged;
    if constexpr (std::is_same_v<decltype(message), Status>) {
      // It ends with whether it sends first, where others have their special operation.
      if (IsJtdx(header.id)) message.specialOperation = 0;
    }
    return Datagram{std::move(header), std::move(message)};
  }
}

}  // namespace

bool IsJtdx(std::string_view id) { return id.starts_with("JTDX"); }

double DtOf(const Decode& decode) { return std::bit_cast<double>(decode.dtBits); }

Reply ReplyTo(const Decode& decode) {
  return {decode.time, decode.snr,     decode.dtBits,        decode.df,
          decode.mode, decode.message, decode.lowConfidence, 0};
}

std::variant<Datagram, Unread> ReadDatagram(std::string_view bytes) {
  FieldReader fields(bytes);
  std::uint32_t magic = 0, schema = 0, type = 0;
  Header header;
  fields(magic);
  if (magic != kMagic) return Unread::kForeign;
  fields(schema), fields(type), fields(header.id);
  if (fields.Damaged() || fields.Lies()) return Unread::kDamaged;
  if (schema < kOldestSchema || schema > kNewestSchema) return Unread::kSchema;
  header.schema = schema;
  return ReadMessage(type, std::move(header), fields);
}

std::string WriteDatagram(const Datagram& datagram) {
  std::string bytes;
  FieldWriter fields(bytes);
  fields(kMagic), fields(datagram.header.schema), fields(kTypes[datagram.message.index()]);
  fields(datagram.header.id);
  // The fields are told once, for both ways, and so of what may be changed.
  Message message = datagram.message;
  std::visit([&](auto& each) { Fields(fields, each); }, message);
  return bytes;
}

}  // namespace brenvo::digital
