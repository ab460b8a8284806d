#include <cstdio>
#include <exception>

#include "tools/mkdatabase/database_maker.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: mkdatabase SCHEMA_SQL DATA_DIR OUT.mdb\n", stderr);
    return 2;
  }
  try {
    brenvo::MakeDatabase(argv[1], argv[2], argv[3]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mkdatabase: %s\n", error.what());
    return 1;
  }
  return 0;
}
