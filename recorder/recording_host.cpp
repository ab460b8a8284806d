#include "recorder/recording_host.h"

#include <algorithm>

#include "forms/field_visit.h"
#include "forms/window.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {
namespace {

// Keeps the list of waiting dialogs true, whatever way a wait ends.
class Waiting {
 public:
  Waiting(std::vector<forms::Window*>& modals, forms::Window& window) : modals_(modals) {
    modals_.push_back(&window);
  }
  ~Waiting() { modals_.pop_back(); }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  std::vector<forms::Window*>& modals_;
};

std::string CircleLine(const forms::PictureBox::Circle& circle) {
  std::string line = "circle";
  for (const int number : {circle.x.Value(), circle.y.Value(), circle.radius.Value(),
                           circle.colour.red, circle.colour.green, circle.colour.blue}) {
    line += ' ' + std::to_string(number);
  }
  return line;
}

}  // namespace

void RecordingHost::Show(forms::Window& window) {
  Bring(window);
  FollowPictures(window);
}

void RecordingHost::ShowModal(forms::Window& window) {
  Bring(window);
  FollowPictures(window);
  if (!InModal) throw Refused{"nobody is there to use the dialog " + window.Name()};
  const Waiting waiting(modals_, window);
  InModal(window);
  if (window.Visible()) throw Refused{"nobody closes the dialog " + window.Name()};
}

void RecordingHost::Forget(forms::Window& window) {
  std::erase(shown_, &window);
  followed_.erase(&window);
}

void RecordingHost::MoveFocus(forms::Field& field) {
  const forms::Window& window = field.Owner();
  sink_("focus " + (NameOf ? NameOf(window) : window.Name()) + '.' + field.Name());
  field.Focus();
}

void RecordingHost::ReportFailure(std::string_view text) { sink_("error " + Quoted(text)); }

void RecordingHost::EndProgram() {
  sink_("end-program");
  throw forms::ProgramEnded();
}

forms::Window* RecordingHost::FindShown(std::string_view name) const {
  const auto at = std::find_if(shown_.begin(), shown_.end(),
                               [&](const forms::Window* window) { return window->Name() == name; });
  return at == shown_.end() ? nullptr : *at;
}

void RecordingHost::Bring(forms::Window& window) {
  std::erase(shown_, &window);
  shown_.push_back(&window);
}

void RecordingHost::FollowPictures(forms::Window& window) {
  const auto [at, first] = followed_.try_emplace(&window);
  if (!first) return;
  for (forms::Field* field : window.Fields()) {
    auto* box = forms::FieldAs<forms::PictureBox>(*field);
    if (box == nullptr) continue;
    // What the window drew while it loaded comes first.
    for (const forms::PictureBox::Circle& circle : box->Circles()) sink_(CircleLine(circle));
    at->second.push_back(box->Drawn.Subscribe(
        [sink = sink_](const forms::PictureBox::Circle& circle) { sink(CircleLine(circle)); }));
  }
}

}  // namespace brenvo::recorder
