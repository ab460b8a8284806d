#include "qt_keyring.h"

#include <qt6keychain/keychain.h>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

const QString kService = QStringLiteral("Brenvo");

// A job goes by itself when it is over.
template <class Job>
Job* JobFor(const std::string& name) {
  auto* const job = new Job(kService);
  job->setAutoDelete(true);
  // Nothing is written to a file where there is no keyring.
  job->setInsecureFallback(false);
  job->setKey(ToQt(name));
  return job;
}

std::string FailureOf(const QKeychain::Job& job) {
  if (job.error() == QKeychain::NoError || job.error() == QKeychain::EntryNotFound) return {};
  const std::string told = FromQt(InOneLine(job.errorString()));
  return told.empty() ? "errore " + std::to_string(job.error()) : told;
}

}  // namespace

void QtKeyring::Read(const std::string& name, Found found) {
  auto* const job = JobFor<QKeychain::ReadPasswordJob>(name);
  QObject::connect(job, &QKeychain::Job::finished, &guard_,
                   [job, found = std::move(found)](QKeychain::Job*) {
                     if (job->error() != QKeychain::NoError) {
                       return found(std::nullopt, FailureOf(*job));
                     }
                     found(FromQt(job->textData()), {});
                   });
  job->start();
}

void QtKeyring::Write(const std::string& name, const std::string& secret, Done done) {
  auto* const job = JobFor<QKeychain::WritePasswordJob>(name);
  job->setTextData(ToQt(secret));
  QObject::connect(job, &QKeychain::Job::finished, &guard_,
                   [job, done = std::move(done)](QKeychain::Job*) { done(FailureOf(*job)); });
  job->start();
}

void QtKeyring::Forget(const std::string& name) {
  JobFor<QKeychain::DeletePasswordJob>(name)->start();
}

}  // namespace brenvo::ui
