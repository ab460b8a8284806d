#include <cstdio>
#include <exception>

#include "derive_prefixes/derive.h"
#include "measure_prefixes/call_list.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: derive_prefixes COUNTRY_FILE CALL_LIST > Prefissi.csv\n", stderr);
    return 2;
  }
  try {
    const auto rows =
        brenvo::derive_prefixes::DerivePrefixes(brenvo::measure_prefixes::CtyFile::Read(argv[1]),
                                                brenvo::measure_prefixes::ReadCalls(argv[2]));
    std::puts("Prefisso,Country,Zona CQ,Zona ITU,Continente");
    for (const auto& [prefix, tells] : rows) {
      std::printf("%s,%s,%d,%d,%s\n", prefix.c_str(), tells.Country.c_str(), tells.ZoneCq,
                  tells.ZoneItu, tells.Continent.c_str());
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "derive_prefixes: %s\n", error.what());
    return 1;
  }
  return 0;
}
