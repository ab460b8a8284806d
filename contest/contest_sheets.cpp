#include "contest_sheets.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/number.h"

namespace brenvo::contest {
namespace {

// Millimetres throughout.

constexpr std::string_view kFont = "Times New Roman";
constexpr double kLargeSize = 14, kMiddleSize = 12, kSmallSize = 10;
constexpr int kRowsPerSheet = 40;
constexpr double kRowHeight = 4, kRowsTop = 50;

struct Words {
  double x, y;
  std::string_view text;
};

struct Stroke {
  double x1, y1, x2, y2;
};

constexpr Words kTitles[] = {
    {1, 0, "ITALY   CONTEST"}, {95, 0, "YEAR"},
    {132, 0, "MONTH"},         {20, 7, "VHF   UHF   SHF   EHF"},
    {90, 7, "FIXED"},          {90, 12, "PORT."},
    {120, 7, "SING. OP."},     {120, 12, "MULT. OP."},
    {163, 7, "CATEGORY"},
};

struct Selection {
  Stroke corners;
  bool (*holds)(const ContestHeader&);
};

constexpr Selection kSelections[] = {
    {{24, 13, 27, 16}, [](const ContestHeader& h) { return h.Banda == "  2 m"; }},
    {{38, 13, 41, 16}, [](const ContestHeader& h) { return h.Banda == " 70cm"; }},
    {{51, 13, 54, 16}, [](const ContestHeader& h) { return h.Banda == " 23cm"; }},
    {{65, 13, 68, 16}, [](const ContestHeader& h) { return h.Banda == " 13cm"; }},
    {{108, 8, 111, 11}, [](const ContestHeader& h) { return h.Fisso; }},
    {{108, 14, 111, 17}, [](const ContestHeader& h) { return !h.Fisso; }},
    {{147, 8, 150, 11}, [](const ContestHeader& h) { return h.Singolo; }},
    {{147, 14, 150, 17}, [](const ContestHeader& h) { return !h.Singolo; }},
};

constexpr Words kLabels[] = {
    {20, 20, "Name"},
    {118, 20, "CALL"},
    {20, 24, "Home address"},
    {155, 24, "Prov."},
    {20, 28, "Location of station"},
    {117, 28, "Prov."},
    {155, 28, "Asl(m)"},
    {20, 32, "Equipment"},
    {80, 32, "Final tx"},
    {117, 32, "W(out)"},
    {155, 32, "Aerial"},
    {20, 36, "Call of other operators"},
};

constexpr Stroke kTable = {0, 43, 195, 217};
constexpr Stroke kTableHeadLine = {0, 53, 195, 53};
constexpr double kTableColumns[] = {8, 22, 54, 77, 100, 116, 130, 165, 179};

constexpr Words kHeadings[] = {
    {1, 47, "Day"},       {11, 45, "Time"}, {11, 48, "GMT"},     {34, 47, "CALL"},
    {60, 44, "Control"},  {62, 48, "Sent"}, {82, 44, "Control"}, {82, 48, "Received"},
    {102, 47, "Locator"}, {119, 47, "Mod"}, {143, 47, "Note"},   {168, 47, "QRB"},
    {182, 47, "Points"},
};

constexpr Words kSheetNumber = {177, 260, "sheet "};
constexpr double kLogoX = 3, kLogoY = 10, kSignX = 135, kSignY = 227;

struct HeadValue {
  double x, y, size;
  std::string (*text)(const ContestHeader&);
};

constexpr HeadValue kHeadValues[] = {
    {46, 1, kSmallSize, [](const ContestHeader& h) { return h.NomeContest; }},
    {110, 1, kMiddleSize,
     [](const ContestHeader& h) { return base::PlainNumber(h.DataContest.Year()); }},
    {153, 1, kMiddleSize,
     [](const ContestHeader& h) { return std::string(base::MonthName(h.DataContest.Month())); }},
    {174, 12, kSmallSize, [](const ContestHeader& h) { return h.Categoria; }},
    {31, 20, kSmallSize, [](const ContestHeader& h) { return h.Qra; }},
    {130, 20, kSmallSize, [](const ContestHeader& h) { return h.CallContest; }},
    {43, 24, kSmallSize, [](const ContestHeader& h) { return h.Indirizzo; }},
    {165, 24, kSmallSize, [](const ContestHeader& h) { return h.Provincia; }},
    {50, 28, kSmallSize, [](const ContestHeader& h) { return h.SQTH; }},
    {126, 28, kSmallSize, [](const ContestHeader& h) { return h.SProvincia; }},
    {167, 28, kSmallSize, [](const ContestHeader& h) { return h.Altezza; }},
    {38, 32, kSmallSize, [](const ContestHeader& h) { return h.RTX; }},
    {128, 32, kSmallSize, [](const ContestHeader& h) { return h.Potenza; }},
    {166, 32, kSmallSize, [](const ContestHeader& h) { return h.Antenna; }},
};

std::string Formatted(double value, std::string_view pattern) {
  return base::FormatNumber(value, pattern);
}

std::string Serial(std::int64_t serial) { return Formatted(static_cast<double>(serial), "####"); }

struct RowValue {
  double x;
  bool right;
  std::string (*text)(const Contact&);
};

std::string HoursAndMinutes(const Contact& c) { return base::TimeText(c.Qtr).substr(0, 5); }

constexpr RowValue kRowValues[] = {
    {2, false, [](const Contact& c) { return std::to_string(c.Giorno); }},
    {11, false, HoursAndMinutes},
    {23, false, [](const Contact& c) { return c.Call; }},
    {55, false, [](const Contact& c) { return c.QrkDato; }},
    {72, true, [](const Contact& c) { return Serial(c.ProgrDato); }},
    {78, false, [](const Contact& c) { return c.QrkRicevuto; }},
    {94, true, [](const Contact& c) { return Serial(c.ProgrRicevuto); }},
    {101, false, [](const Contact& c) { return c.Locator; }},
    {120, false, [](const Contact& c) { return c.Modo; }},
    {131, false, [](const Contact& c) { return c.Note.value_or(""); }},
    {168, false, [](const Contact& c) { return Formatted(c.Qrb, "####,###"); }},
    {182, false, [](const Contact& c) { return Formatted(c.Punti, "####,###"); }},
};

constexpr Stroke kSheetTotalLines[] = {
    {165, 217, 165, 223}, {165, 223, 195, 223}, {195, 217, 195, 223}, {179, 217, 179, 223}};
constexpr Words kSheetTotal = {148, 218, "sheet score"};
constexpr double kSheetQrbX = 168, kSheetPuntiX = 182;

constexpr double kTotalsLeft = 10, kTotalsRight = 139;
constexpr double kTotalsRows[] = {241, 247, 253, 260};
constexpr double kTotalsColumns[] = {10, 38, 58, 95, 115, 126, 139};
constexpr Words kTotalsWords[] = {
    {17, 242, "QTH LOC."}, {40, 242, "TOT. QSO"}, {65, 242, "TOTAL SCORE"},
    {97, 242, "MAX QRB"},  {115, 242, "country"}, {127, 242, "squares"},
    {4, 248, "fill"},      {0, 253, " res."},     {1, 256, "check"},
};
constexpr double kTotalsValuesY = 248;
constexpr double kLocatorX = 17, kTotaleQsoX = 40, kTotalePuntiX = 60, kMaxQrbX = 99;

class Sheets {
 public:
  Sheets(platform::Printer& printer, const ContestHeader& header, const std::filesystem::path& logo,
         const std::optional<std::filesystem::path>& sign)
      : printer_(printer), header_(header), logo_(logo), sign_(sign) {}

  void Print(const std::vector<Contact>& contacts) {
    for (auto at = contacts.begin(); at != contacts.end();) {
      if (++foglio_ > 1) printer_.NewPage();
      DrawForm();
      FillHead();
      qrbFoglio_ = puntiFoglio_ = 0;
      for (int riga = 1; at != contacts.end() && riga <= kRowsPerSheet; ++riga, ++at) {
        PrintRow(*at, riga * kRowHeight + kRowsTop);
      }
      DrawSheetTotal();
      totalePunti_ += puntiFoglio_;
    }
    if (foglio_ > 0) DrawTotals();
    printer_.EndDocument();
  }

 private:
  template <class Table>
  void Write(const Table& table) {
    for (const Words& words : table) Write(words.x, words.y, words.text);
  }
  void Write(double x, double y, std::string_view text) {
    printer_.Text(base::Mm(x), base::Mm(y), text);
  }
  void Draw(const Stroke& s) {
    printer_.Line(base::Mm(s.x1), base::Mm(s.y1), base::Mm(s.x2), base::Mm(s.y2));
  }
  void Frame(const Stroke& s, bool filled) {
    printer_.Box(base::Mm(s.x1), base::Mm(s.y1), base::Mm(s.x2), base::Mm(s.y2), filled);
  }

  void DrawForm() {
    printer_.SetFont(kFont, kLargeSize, true);
    printer_.Picture(logo_, base::Mm(kLogoX), base::Mm(kLogoY));
    Write(kTitles);
    for (const Selection& each : kSelections) Frame(each.corners, each.holds(header_));
    printer_.SetFontSize(kSmallSize);
    Write(kLabels);
    Frame(kTable, false);
    Draw(kTableHeadLine);
    for (const double x : kTableColumns) Draw({x, kTable.y1, x, kTable.y2});
    Write(kHeadings);
    Write(kSheetNumber.x, kSheetNumber.y, std::string(kSheetNumber.text) + base::Str(foglio_));
    if (sign_) printer_.Picture(*sign_, base::Mm(kSignX), base::Mm(kSignY));
  }

  void FillHead() {
    printer_.SetBold(false);
    for (const HeadValue& value : kHeadValues) {
      printer_.SetFontSize(value.size);
      Write(value.x, value.y, value.text(header_));
    }
    printer_.SetFontSize(kSmallSize);
  }

  void PrintRow(const Contact& contact, double y) {
    for (const RowValue& value : kRowValues) {
      if (value.right) {
        printer_.TextRight(base::Mm(value.x), base::Mm(y), value.text(contact));
      } else {
        Write(value.x, y, value.text(contact));
      }
    }
    qrbFoglio_ += contact.Qrb;
    puntiFoglio_ += contact.Punti;
    maxQrb_ = std::max(maxQrb_, contact.Qrb);
    ++totaleQso_;
  }

  void DrawSheetTotal() {
    for (const Stroke& line : kSheetTotalLines) Draw(line);
    printer_.SetBold(true);
    Write(kSheetTotal.x, kSheetTotal.y, kSheetTotal.text);
    printer_.SetBold(false);
    Write(kSheetQrbX, kSheetTotal.y, Formatted(qrbFoglio_, "#######"));
    Write(kSheetPuntiX, kSheetTotal.y, Formatted(puntiFoglio_, "####,###"));
  }

  void DrawTotals() {
    for (const double y : kTotalsRows) Draw({kTotalsLeft, y, kTotalsRight, y});
    for (const double x : kTotalsColumns) {
      Draw({x, std::begin(kTotalsRows)[0], x, std::end(kTotalsRows)[-1]});
    }
    printer_.SetBold(true);
    Write(kTotalsWords);
    printer_.SetBold(false);
    Write(kLocatorX, kTotalsValuesY, header_.Locator);
    Write(kTotaleQsoX, kTotalsValuesY, Formatted(totaleQso_, "#####"));
    Write(kTotalePuntiX, kTotalsValuesY, Formatted(totalePunti_, "####,###,###"));
    Write(kMaxQrbX, kTotalsValuesY, Formatted(maxQrb_, "####,###"));
  }

  platform::Printer& printer_;
  const ContestHeader& header_;
  const std::filesystem::path& logo_;
  const std::optional<std::filesystem::path>& sign_;
  int foglio_ = 0;
  int totaleQso_ = 0;
  double qrbFoglio_ = 0, puntiFoglio_ = 0;  // of the sheet in work
  double totalePunti_ = 0, maxQrb_ = 0;
};

}  // namespace

void PrintContestSheets(platform::Printer& printer, const ContestHeader& header,
                        const std::vector<Contact>& contacts, const std::filesystem::path& logo,
                        const std::optional<std::filesystem::path>& sign) {
  Sheets(printer, header, logo, sign).Print(contacts);
}

}  // namespace brenvo::contest
