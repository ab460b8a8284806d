#include "worked/keeper.h"

#include <chrono>
#include <exception>
#include <thread>
#include <utility>

#include "build.h"
#include "core/log_contact.h"
#include "kept_services.h"
#include "worked/load_rules.h"

namespace brenvo::worked {
namespace {

// Milliseconds: before the log is read at the start, so that the station stands first; between the
// looks whether it is read; between the looks for what other programs have written.
constexpr int kFirstPause = 300, kBetweenLooks = 20, kBetweenOthers = 2000;

}  // namespace

struct Keeper::Kept {
  WorkedIndex index;
  KeptServices services;
};

// What both threads see, one after the other.
struct Keeper::Job {
  std::unique_ptr<engine::Reader> reader;
  std::shared_ptr<const Rules> rules;
  std::optional<Built> built;
  std::exception_ptr failure;
};

Keeper::Keeper(core::Session& session, std::function<void(const std::string& text)> tell)
    : session_(session),
      tell_(std::move(tell)),
      reading_(session.Machine.MakeTimer()),
      watching_(session.Machine.MakeTimer()),
      rules_(std::make_shared<const Rules>()) {
  reading_->OnTick = [this] {
    session_.Windows.RunEvent([this] { job_ == nullptr ? Begin() : LookWhetherRead(); });
  };
  watching_->SetInterval(kBetweenOthers);
  watching_->OnTick = [this] { session_.Windows.RunEvent([this] { LookForOthers(); }); };
  contacts_ = session.Contacts.Subscribe([this](const auto& change) { Heard(change); });
  closing_ = session.Closing.Subscribe([this] { Stop(); });
  reopened_ = session.Reopened.Subscribe([this] { Start(); });
}

Keeper::~Keeper() = default;

void Keeper::Start() {
  rules_ = LoadRules(session_, tell_);
  reading_->SetInterval(kFirstPause);
  reading_->SetEnabled(true);
  watching_->SetEnabled(true);
}

void Keeper::Stop() {
  reading_->SetEnabled(false);
  watching_->SetEnabled(false);
  work_.reset();
  job_.reset();
  during_.clear();
  due_ = false;
  kept_.reset();
}

const WorkedIndex* Keeper::Index() const { return kept_ == nullptr ? nullptr : &kept_->index; }

void Keeper::Heard(const core::ContactsChanged& announced) {
  if (announced.table != core::ContactTable::kLog) return;
  if (const auto* one = std::get_if<core::OneContact>(&announced.which)) {
    Count(*one);
  } else {
    ReadAnew();
  }
}

void Keeper::Count(const core::OneContact& change) {
  if (job_ != nullptr) during_.push_back(change);
  if (kept_ == nullptr) return;
  if (!Apply(change)) ReadAnew();
  Renewed();
}

// What is kept beside a contact may have changed unannounced; what was counted of it is remembered.
bool Keeper::Apply(const core::OneContact& change) {
  auto& [index, services] = *kept_;
  if (const auto& before = change.before) {
    const Contact counted = ContactOf(before->contact, services.Of(before->key), *rules_);
    if (!index.Remove(counted)) return false;
  }
  if (const auto& after = change.after) {
    try {
      services.Set(after->key, ReadKeptServices(session_.Db, *rules_, after->key));
    } catch (const engine::DatabaseError&) {
      return false;
    }
    index.Add(ContactOf(after->contact, services.Of(after->key), *rules_));
  }
  return true;
}

// What is under way is finished first: a log that never stands still has an index too.
void Keeper::ReadAnew() {
  due_ = true;
  if (job_ == nullptr && watching_->Enabled()) Begin();
}

void Keeper::Begin() {
  auto job = std::make_shared<Job>();
  job->rules = rules_;
  try {
    dataVersion_ = session_.Db.DataVersion();
    // Whatever is announced from here on is not in what the reader sees, and all that was before
    // is.
    job->reader = session_.Db.OpenReader();
  } catch (const engine::DatabaseError&) {
    // A database that is at work answers later; what else is wrong with it others tell.
    reading_->SetInterval(kBetweenOthers);
    reading_->SetEnabled(true);
    return;
  }
  due_ = false;
  during_.clear();
  job_ = job;
  work_ = session_.Machine.RunInBackground([job](const std::stop_token& stop) {
    try {
      job->built = BuildIndex(*job->reader, job->rules, stop);
    } catch (...) {
      job->failure = std::current_exception();
    }
    job->reader.reset();
  });
  reading_->SetInterval(kBetweenLooks);
  reading_->SetEnabled(true);
}

void Keeper::LookWhetherRead() {
  if (!work_->HasEnded()) return;
  reading_->SetEnabled(false);
  work_.reset();
  const std::shared_ptr<Job> job = std::exchange(job_, nullptr);
  TakeOver(*job);
}

void Keeper::TakeOver(Job& job) {
  if (job.failure) {
    // What cannot be read is not vouched for.
    kept_.reset();
    try {
      std::rethrow_exception(job.failure);
    } catch (const std::exception& failure) {
      tell_(std::string("Lavorati e confermati non si possono leggere: ") + failure.what());
    }
    return;
  }
  if (!job.built) return;  // it was stopped
  Built& built = *job.built;
  kept_ = std::make_unique<Kept>(Kept{std::move(built.index), std::move(built.kept)});
  for (const core::OneContact& change : std::exchange(during_, {})) due_ = !Apply(change) || due_;
  const LogRead read{std::move(built.withoutOrigin), std::move(built.withoutContact)};
  if (due_) Begin();
  Read(read);
  Renewed();
}

void Keeper::LookForOthers() {
  try {
    const std::int64_t version = session_.Db.DataVersion();
    if (version == dataVersion_) return;
    dataVersion_ = version;
  } catch (const engine::DatabaseError&) {
    return;  // one that is at work answers the next time
  }
  if (kept_ != nullptr || job_ != nullptr) ReadAnew();
}

void Keeper::WaitUntilRead() {
  constexpr std::chrono::milliseconds kPause{1};
  if (!watching_->Enabled()) return;
  LookForOthers();
  if (job_ == nullptr && (kept_ == nullptr || due_)) Begin();
  while (job_ != nullptr) {
    while (!work_->HasEnded()) std::this_thread::sleep_for(kPause);
    LookWhetherRead();
  }
}

}  // namespace brenvo::worked
