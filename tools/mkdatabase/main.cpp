#include <algorithm>
#include <cstdio>
#include <ctime>
#include <exception>
#include <string_view>

#include "mkdatabase/database_maker.h"

namespace {

brenvo::base::DateTime Now() {
  const std::time_t now = std::time(nullptr);
  const std::tm& local = *std::localtime(&now);
  return brenvo::base::DateTime::Of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                    local.tm_hour, local.tm_min, std::min(local.tm_sec, 59));
}

}  // namespace

int main(int argc, char** argv) {
  const bool completes = argc == 3 && std::string_view(argv[1]) == "--complete";
  if (argc != 4 && !completes) {
    std::fputs(
        "usage: mkdatabase SCHEMA_SQL DATA_DIR OUT.mdb\n"
        "       mkdatabase --complete APPLICATION_DIR\n",
        stderr);
    return 2;
  }
  try {
    if (completes) {
      for (const std::string& step : brenvo::mkdatabase::CompleteDatabase(argv[2], Now())) {
        std::printf("added to the database: %s\n", step.c_str());
      }
      return 0;
    }
    brenvo::mkdatabase::MakeDatabase(argv[1], argv[2], argv[3]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mkdatabase: %s\n", error.what());
    return 1;
  }
  return 0;
}
