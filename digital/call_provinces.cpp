#include "call_provinces.h"

#include <fmt/format.h>

#include <utility>

#include "base/text.h"
#include "core/quoted.h"
#include "engine/reader.h"

namespace brenvo::digital {
namespace {

constexpr int kBetweenLooks = 50;  // milliseconds

std::string KeyOf(std::string_view call) { return base::UpperAscii(base::Trim(call)); }

}  // namespace

// What both threads see, one after the other.
struct CallProvinces::Reading {
  std::unique_ptr<engine::Reader> reader;
  ByCall byCall;
  bool failed = false;
};

CallProvinces::CallProvinces(core::Session& session, std::function<void()> read)
    : session_(session), read_(std::move(read)), watching_(session.Machine.MakeTimer()) {
  watching_->SetInterval(kBetweenLooks);
  watching_->OnTick = [this] { LookWhetherRead(); };
  contacts_ = session.Contacts.Subscribe(
      [this](const core::ContactsChanged& announced) { Heard(announced); });
  closing_ = session.Closing.Subscribe([this] {
    watching_->SetEnabled(false);
    work_.reset();  // waits until it has ended: the database is about to be closed
    reading_.reset();
  });
  reopened_ = session.Reopened.Subscribe([this] { Read(); });
  Read();
}

CallProvinces::~CallProvinces() = default;

std::string_view CallProvinces::Of(std::string_view call, std::string_view country) const {
  const auto found = byCall_.find(KeyOf(call));
  if (found == byCall_.end() || !base::SameText(found->second.country, base::Trim(country))) {
    return {};
  }
  return found->second.code;
}

void CallProvinces::Read() {
  if (!session_.IsOpen()) return;
  due_ = reading_ != nullptr;
  if (due_) return;
  during_.clear();
  auto reading = std::make_shared<Reading>();
  reading->reader = session_.Db.OpenReader();
  reading_ = reading;
  work_ = session_.Machine.RunInBackground([reading](const std::stop_token& stop) {
    try {
      reading->reader->ForEach(
          "select Call,Country,Provincia from Log where Provincia<>'' order by DataQso,QsoNr",
          [&](engine::Reader::Row& row) {
            reading->byCall.insert_or_assign(
                KeyOf(row.Text(0)), Province{base::Trim(row.Text(1)), base::Trim(row.Text(2))});
            return !stop.stop_requested();
          });
    } catch (const std::exception&) {
      reading->failed = true;
    }
    reading->reader.reset();
  });
  watching_->SetEnabled(true);
}

void CallProvinces::LookWhetherRead() {
  if (!work_->HasEnded()) return;
  watching_->SetEnabled(false);
  work_.reset();
  const std::shared_ptr<Reading> reading = std::exchange(reading_, nullptr);
  if (std::exchange(due_, false)) {
    Read();
    return;
  }
  if (reading->failed) return;  // whoever keeps what is worked has told it
  byCall_ = std::move(reading->byCall);
  for (const std::string& call : std::exchange(during_, {})) LookAt(call);
  read_();
}

void CallProvinces::Heard(const core::ContactsChanged& announced) {
  if (announced.table != core::ContactTable::kLog) return;
  const auto* const one = std::get_if<core::OneContact>(&announced.which);
  if (one == nullptr) {
    Read();
    return;
  }
  for (const auto* side : {&one->before, &one->after}) {
    if (!*side) continue;
    const std::string call = KeyOf((*side)->contact.Call);
    if (reading_ != nullptr) during_.push_back(call);
    LookAt(call);
  }
}

void CallProvinces::LookAt(const std::string& call) {
  const auto rows = session_.Db.OpenSnapshot(
      fmt::format("Select Country,Provincia from Log where Call={} and Provincia<>'' Order By "
                  "DataQso Desc,QsoNr Desc",
                  core::Quoted(call)));
  if (rows->EOF_()) {
    byCall_.erase(call);
  } else {
    byCall_.insert_or_assign(call, Province{base::Trim(rows->Field(std::size_t{0}).Text()),
                                            base::Trim(rows->Field(1).Text())});
  }
}

}  // namespace brenvo::digital
