#include <cstdio>
#include <exception>
#include <string>

#include "mklog/log_maker.h"

int main(int argc, char** argv) {
  try {
    if (argc < 3 || argc > 4) throw std::invalid_argument("usage");
    const std::uint64_t seed = argc == 4 ? std::stoull(argv[3]) : 1;
    brenvo::mklog::MakeLog(argv[1], std::stoll(argv[2]), seed);
  } catch (const std::invalid_argument&) {
    std::fputs("usage: mklog Brenvo.mdb CONTACTS [SEED]\n", stderr);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mklog: %s\n", error.what());
    return 1;
  }
  return 0;
}
