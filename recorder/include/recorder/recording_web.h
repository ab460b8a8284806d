// Services on the net that nobody asks.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/web_client.h"
#include "recorder/fake_clock.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// A question is `http GET "address?name=value&..."`, or `http POST "address" "name=value&..."` with
// the size of a file in place of its content and (NAME) in place of a secret; one that is stopped,
// `http-stop`; a secret that is to be forgotten, `forget "NAME"`. Outlives its clients.
class RecordingWeb {
 public:
  RecordingWeb(LineSink sink, FakeClock& clock) : sink_(std::move(sink)), clock_(clock) {}

  std::unique_ptr<platform::WebClient> Make();

  struct Answer {
    int status = 200;
    std::string body;
    std::string failure;  // empty for a whole answer
  };
  // The answer to the question that waits, or to the next one. Its header `date` is the clock's.
  void Queue(Answer answer);
  bool IsAsked() const;
  // Answers that no question has come for.
  std::size_t Unused() const { return queued_.size(); }

 private:
  class Recorded;
  void Give(Recorded& client, const Answer& answer);

  LineSink sink_;
  FakeClock& clock_;
  std::vector<Recorded*> all_;
  std::deque<Answer> queued_;
};

}  // namespace brenvo::recorder
