// Writes the manual as HTML: manual HELPFILE HTMLFILE.
#include <cstdio>
#include <fstream>
#include <sstream>

#include "tools/manual/page_to_html.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "manual HELPFILE HTMLFILE\n");
    return 2;
  }
  std::ifstream in(argv[1], std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  std::ofstream out(argv[2], std::ios::binary);
  out << brenvo::ManualToHtml(brenvo::ParseHelp(text.str()), "Brenvo: il manuale");
  out.flush();
  if (in && out) return 0;
  std::fprintf(stderr, "manual: %s cannot be read or %s cannot be written\n", argv[1], argv[2]);
  return 1;
}
