// Writes the manual as HTML: manual HELPFILE HTMLFILE.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <QGuiApplication>
#include <string>

#include "manual/page_to_html.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "manual HELPFILE HTMLFILE\n");
    return 2;
  }
  // The reader of Markdown asks for the desktop's fonts, which needs no desktop.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  std::ifstream in(argv[1], std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  if (!in) {
    std::fprintf(stderr, "manual: %s cannot be read\n", argv[1]);
    return 1;
  }
  std::ofstream out(argv[2], std::ios::binary);
  out << brenvo::manual::ManualToHtml(brenvo::frame::ParseHelp(text), "Brenvo: il manuale");
  out.close();
  if (!out) {
    std::fprintf(stderr, "manual: %s cannot be written\n", argv[2]);
    return 1;
  }
  return 0;
}
