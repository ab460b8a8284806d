// Fills the empty log of an application directory: demonstrate STATION COUNT.
#include <cstdio>
#include <cstdlib>

#include "core/session.h"
#include "demonstration/demonstration.h"
#include "recorder/recording_platform.h"

int main(int argc, char** argv) {
  const int contacts = argc == 3 ? std::atoi(argv[2]) : 0;
  if (contacts <= 0) {
    std::fprintf(stderr, "demonstrate STATION COUNT\n");
    return 2;
  }
  try {
    brenvo::recorder::RecordingPlatform machine;
    brenvo::core::Session session(machine, argv[1]);
    session.Open();
    if (!session.Db.OpenSnapshot("select Call from Log")->EOF_()) {
      std::fprintf(stderr, "demonstrate: the log of %s is not empty\n", argv[1]);
      return 1;
    }
    brenvo::demonstration::FillDemonstration(session, contacts);
    session.CloseTables();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "demonstrate: %s\n", failure.what());
    return 1;
  }
  return 0;
}
