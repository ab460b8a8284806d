// QSL labels: what stands on a label, and where labels lie on the page.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/date.h"
#include "base/units.h"
#include "platform/printer.h"

namespace brenvo::print {

// The station's own data, as the profile holds them.
struct StationLabel {
  std::string Call, Qra, Locator, Indirizzo, Qth, Provincia;
};

// One contact, as the log holds it.
struct QsoLabel {
  std::string Call, QrkDato, Banda, Modo, Note;
  std::optional<base::DateTime> DataQso;  // nothing where it is unreadable: no date is printed
  double Frequenza = 0;                   // MHz
  bool QslRicevuta = false;
};

// Each draws one label with its top left corner at (x, y). A scale below 1 makes it smaller, its
// letters too.
void DrawStationLabel(platform::Printer& printer, base::Mm x, base::Mm y, const StationLabel& label,
                      double scale = 1);
// It sets no font name, and its first line keeps the size in use.
void DrawQsoLabel(platform::Printer& printer, base::Mm x, base::Mm y, const QsoLabel& label,
                  double scale = 1);

// Contacts on one card: with a station, or with all those whose cards go to one manager.
struct CardLabel {
  std::string to;  // whose card it is: the call, or the manager's
  bool manager = false;
  struct Line {
    QsoLabel qso;
    std::int64_t qsoNr = 0;
  };
  std::vector<Line> lines;
};
// How many lines stand on a label of this height, tenths of a millimetre; at least one.
int CardLinesOn(int height, double scale = 1);
// One label with as many lines as it has; those beyond CardLinesOn run out of it. Calls stand in
// the lines where they are not all the one that the card goes to.
void DrawCardLabel(platform::Printer& printer, base::Mm x, base::Mm y, const CardLabel& label,
                   double scale = 1);

// What a satellite contact shows for band and mode: of a note "[up/x/down]" the pieces "up" and
// "down"; band and mode themselves for any other mode, and where the note has no such form. The
// first piece is cut from the second character, the second up to the last but one.
std::pair<std::string, std::string> BandAndMode(const QsoLabel& label);

// The grid of labels on a page, in tenths of a millimetre: whole numbers, so that a row that ends
// exactly with the page is seen to.
struct LabelGeometry {
  int height = 0, width = 0, spaceAcross = 0, spaceDown = 0, marginTop = 0, marginLeft = 0;
  int perRow = 1;
  int rows = 0;  // on a page; 0 for as many as begin inside it
};

// Walks from label to label; a row that begins inside the page is printed, even over its edge,
// unless the geometry says how many rows a page has.
class LabelGrid {
 public:
  explicit LabelGrid(const LabelGeometry& geometry);
  base::Mm X() const { return base::Mm(posX_ / 10.0); }
  base::Mm Y() const { return base::Mm(posY_ / 10.0); }
  // To the next place, with a new page of the printer where one is due.
  void Next(platform::Printer& printer);

 private:
  LabelGeometry geometry_;
  int posX_, posY_, posYFila_;
  int colonna_ = 1, row_ = 1;
};

}  // namespace brenvo::print
