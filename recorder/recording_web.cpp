#include "recorder/recording_web.h"

#include <fmt/format.h>

#include <algorithm>

#include "recorder/quote.h"

namespace brenvo::recorder {
namespace {

// Pieces in which an answer comes, so that whoever takes it takes it in pieces.
constexpr std::size_t kPiece = 1000;

std::string FieldsOf(const platform::WebQuestion& question) {
  std::string text;
  for (const platform::WebField& field : question.fields) {
    if (!text.empty()) text += '&';
    text += field.name + '=';
    if (!field.secret.empty()) {
      text += '(' + field.secret + ')';
    } else if (!field.file.empty()) {
      text += fmt::format("{} [{} byte]", field.file, field.value.size());
    } else {
      text += field.value;
    }
  }
  return text;
}

// "Sat, 03 Feb 2001 04:05:06 GMT".
std::string DateOf(base::DateTime utc) {
  constexpr std::string_view kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  constexpr std::int64_t kDay = 24 * 60 * 60, kSunday = 5;
  const std::int64_t days = (utc.Seconds() - base::DateTime::Of(2001, 1, 2).Seconds()) / kDay;
  return fmt::format("{}, {:02} {} {:04} {:02}:{:02}:{:02} GMT",
                     kDays[static_cast<std::size_t>(((days - kSunday) % 7 + 7) % 7)], utc.Day(),
                     kMonths[static_cast<std::size_t>(utc.Month() - 1)], utc.Year(), utc.Hour(),
                     utc.Minute(), utc.Second());
}

}  // namespace

class RecordingWeb::Recorded : public platform::WebClient {
 public:
  explicit Recorded(RecordingWeb& web) : web_(web) { web_.all_.push_back(this); }
  ~Recorded() override {
    Recorded::Stop();
    std::erase(web_.all_, this);
  }

  void Ask(const platform::WebQuestion& question) override {
    Stop();
    const std::string fields = FieldsOf(question);
    if (question.form == platform::WebForm::kQuery) {
      web_.sink_("http GET " + Quoted(question.address + (fields.empty() ? "" : "?" + fields)));
    } else {
      web_.sink_("http POST " + Quoted(question.address) + ' ' + Quoted(fields));
    }
    asking_ = true;
    most_ = question.most;
    if (web_.queued_.empty()) return;
    const Answer answer = std::move(web_.queued_.front());
    web_.queued_.pop_front();
    web_.Give(*this, answer);
  }
  bool IsAsking() const override { return asking_; }
  void Stop() override {
    if (!asking_) return;
    asking_ = false;
    web_.sink_("http-stop");
  }
  void Forget(std::string_view secret) override { web_.sink_("forget " + Quoted(secret)); }

  void Take(const Answer& answer, const std::string& date) {
    platform::WebEnd end{answer.status, {{"date", date}}, answer.failure};
    std::string_view rest = answer.body;
    if (rest.size() > most_) {
      rest = rest.substr(0, most_);
      end.failure = "la risposta è troppo lunga";
    }
    // Its owner may stop it, or go, with what it does.
    while (!rest.empty() && asking_) {
      const auto data = OnData;
      if (data) data(rest.substr(0, kPiece));
      rest.remove_prefix(std::min(kPiece, rest.size()));
    }
    if (!asking_) return;
    asking_ = false;
    const auto handler = OnEnd;
    if (handler) handler(end);
  }

 private:
  RecordingWeb& web_;
  bool asking_ = false;
  std::size_t most_ = 0;
};

std::unique_ptr<platform::WebClient> RecordingWeb::Make() {
  return std::make_unique<Recorded>(*this);
}

bool RecordingWeb::IsAsked() const { return std::ranges::any_of(all_, &Recorded::IsAsking); }

void RecordingWeb::Queue(Answer answer) {
  const auto waiting = std::ranges::find_if(all_, &Recorded::IsAsking);
  if (waiting == all_.end()) return queued_.push_back(std::move(answer));
  Give(**waiting, answer);
}

void RecordingWeb::Give(Recorded& client, const Answer& answer) {
  client.Take(answer, DateOf(clock_.UtcNow()));
}

}  // namespace brenvo::recorder
