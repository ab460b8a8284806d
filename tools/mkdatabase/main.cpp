#include <cstdio>
#include <exception>
#include <string_view>

#include "mkdatabase/database_maker.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs(
        "usage: mkdatabase SCHEMA_SQL DATA_DIR OUT.mdb\n"
        "       mkdatabase --complete SCHEMA_SQL FILE.mdb\n",
        stderr);
    return 2;
  }
  try {
    if (std::string_view(argv[1]) == "--complete") {
      for (const std::string& name : brenvo::mkdatabase::CompleteDatabase(argv[2], argv[3])) {
        std::printf("added to the database: %s\n", name.c_str());
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
