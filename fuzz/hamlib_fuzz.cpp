// Links: rig
// Arbitrary bytes from the programs that lead a transceiver or a rotator, and from those that are
// served: an answer is never longer than what came, and the same in one piece or byte by byte; what
// is served ends in one line more than it has, and wishes nothing beyond a frequency and a mode.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "rig/bands.h"
#include "rig/replies.h"
#include "rig/rig_server.h"

namespace {

using namespace brenvo::rig;

void Read(const Request& request, std::string_view bytes) {
  ReplyReader whole, parts;
  whole.Expect(request);
  parts.Expect(request);
  whole.Feed(bytes);
  for (const char& each : bytes) parts.Feed(std::string_view(&each, 1));
  if (whole.IsBroken() != parts.IsBroken()) std::abort();
  const auto reply = whole.Take(), same = parts.Take();
  if (reply.has_value() != same.has_value()) std::abort();
  if (!reply) return;
  if (reply->lines != same->lines || reply->code != same->code) std::abort();
  std::size_t length = 0;
  for (const auto& line : reply->lines) length += line.size();
  if (length > bytes.size()) std::abort();
  static_cast<void>(reply->Number("Frequency"));
  if (const auto limits = ReadLimits(*reply)) {
    for (const double direction : {0.0, 45.0, 360.0}) {
      const auto angle = AngleFor(direction, limits->minAzimuth, *limits);
      if (angle && (*angle < limits->minAzimuth - 1e-6 || *angle > limits->maxAzimuth)) {
        std::abort();
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (const Request& request :
       {Request::WantsVfo(), Request::Frequency(), Request::RotatorState(), Request::Position()}) {
    Read(request, bytes);
  }
  if (ReadModels(bytes).size() > 2000) std::abort();
  static_cast<void>(TextOf(ReadTransverters(bytes)));
  static_cast<void>(ReadFrequency(bytes.substr(0, 30), Bands()));
  ServedWish wish;
  const ServedRig rig{brenvo::base::Hz(14250000), "USB"};
  static_cast<void>(AnswerTo(bytes.substr(0, bytes.find('\n')), rig, wish));
  if (wish.frequency && !(wish.frequency->Value() >= 1 && wish.frequency->Value() <= 1e12)) {
    std::abort();
  }
  if (!wish.mode.empty() && !Request::SetMode(wish.mode)) std::abort();
  return 0;
}
