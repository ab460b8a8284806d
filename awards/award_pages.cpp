#include "awards/award_pages.h"

#include <fmt/format.h>

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/text.h"
#include "core/log_contact.h"
#include "core/texts.h"
#include "core/transaction.h"
#include "engine/database_error.h"
#include "html_page.h"

namespace brenvo::awards {
namespace {

constexpr std::string_view kByDate = "Per data";

// clang-format off
constexpr std::array<AwardPage, 7> kPages = {{
    // window       command            caption          template              page                      key            descr. flag   newest staged by
    {"SCountry",   "cmByCountry",     "Per country",   "\\Country.html",     "\\OUT_Country.html",     "[COUNTRY]",   true,  true,  false, ""},
    {"SCountry",   "cmByDate",        kByDate,         "\\Country.html",     "\\OUT_Country.html",     "[COUNTRY]",   true,  true,  false, "Country"},
    {"SProvincie", "cmByProvince",    "Per provincia", "\\Provincie.html",   "\\OUT_Provincie.html",   "[PROVINCIA]", true,  false, false, ""},
    {"SProvincie", "cmByDate",        kByDate,         "\\Provincie.html",   "\\OUT_Provincie.html",   "[PROVINCIA]", true,  true,  false, "Provincia"},
    {"SSQuare",    "cmBySquare",      "Per square",    "\\Square.html",      "\\OUT_Square.html",      "[SQUARE]",    false, false, true,  ""},
    {"SSQuare",    "cmByDate",        kByDate,         "\\Square.html",      "\\OUT_Square.html",      "[SQUARE]",    false, false, false, "Locator"},
    // One command more has no menu above it.
    {"SZone",      "cmGeneraHTML",    "Genera HTML",   "\\Zone.html",        "\\OUT_Zone.html",        "[ZONA]",      false, false, true,  ""},
}};
// clang-format on

// A text file of the application directory, read whole.
std::string ReadText(core::Session& session, std::string_view name) {
  std::ifstream file(session.File(name), std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file) throw std::runtime_error(fmt::format("File non leggibile: {}", name.substr(1)));
  return text;
}

// A page being written; every line ends in CR LF.
class PageFile {
 public:
  explicit PageFile(const std::filesystem::path& file)
      : name_(file.filename().string()), stream_(file, std::ios::binary | std::ios::trunc) {
    Check();
  }
  void WriteLine(std::string_view text) { stream_ << text << "\r\n"; }
  void Close() {
    stream_.close();
    Check();
  }

 private:
  void Check() const {
    if (!stream_) throw std::runtime_error(fmt::format("File non scrivibile: {}", name_));
  }

  std::string name_;
  std::ofstream stream_;
};

// The contact that documents an entry.
struct Contact {
  engine::Value dataQso, call, modo, propagazione;
};

Contact ContactOf(core::Session& session, const AwardPage& page, const AwardList& list,
                  std::string_view key, bool confirmed) {
  // Four columns and not all: what is selected is carried through the sorting.
  const auto rows = session.Db.OpenSnapshot(
      fmt::format("Select DataQso,Call,Modo,Propagazione from Log {}{}{}{} and QslRicevuta={} "
                  "order by DataQso{}",
                  list.selection, list.member.contacts, key, list.member.quote, confirmed,
                  page.newest ? " desc" : ""));
  // A date that another tool has made unreadable is none, on the page and to sort by.
  const engine::Value date = rows->Field(core::column::kDataQso);
  return {date.ReadableDate() ? date : engine::Value(), rows->Field(core::column::kCall),
          rows->Field(core::column::kModo), rows->Field(core::column::kPropagazione)};
}

struct Entry {
  std::string key, description, qsl, flag;
  Contact contact;
};

std::string FilledRow(const AwardPage& page, std::string row, const Entry& entry) {
  FillToken(row, page.keyToken, entry.key);
  if (page.description) FillToken(row, "[DESCRIZIONE]", entry.description);
  FillToken(row, "[QSL]", entry.qsl);
  if (page.flag) FillToken(row, "[FLAG]", fmt::format("<img alt src=\"{}\">", entry.flag));
  FillToken(row, "[DATA]", base::Trim(entry.contact.dataQso.Text()));
  FillToken(row, "[CALL]", entry.contact.call.Text());
  FillToken(row, "[MODO]", entry.contact.modo.Text());
  FillToken(row, "[PROP]", entry.contact.propagazione.Text());
  return row;
}

// One entry of the grid, made its current row.
Entry EntryAt(core::Session& session, const AwardPage& page, const AwardList& list,
              std::int64_t row) {
  forms::CellGrid& grid = list.grid;
  grid.SetCurrent(row, grid.Column());
  Entry entry;
  entry.key = grid.Cell(row, 0);
  if (page.description) entry.description = grid.Cell(row, 1);
  entry.qsl = grid.Cell(row, list.member.qslColumn);
  entry.flag = grid.Cell(row, kFlagFileColumn);
  const bool confirmed = entry.qsl == list.member.confirmed;
  entry.contact = ContactOf(session, page, list, entry.key, confirmed);
  return entry;
}

// SLog gets a row an entry, with the date of its contact to sort by; none, and false, when the
// operator stops it.
bool StageEntries(core::Session& session, const AwardPage& page, const AwardList& list,
                  platform::Progress& progress) {
  session.Db.Execute("delete from SLog");
  core::Transaction transaction(session.Db);
  const auto staged = session.Db.OpenDynaset("select * from SLog");
  for (std::int64_t row = 1; row < list.grid.Rows(); ++row) {
    if (!progress.Advance(row)) return false;
    Entry entry;
    try {
      entry = EntryAt(session, page, list, row);
    } catch (const engine::DatabaseError&) {
      // The rows before an entry without a contact stay.
      transaction.Commit();
      throw;
    }
    staged->AddNew();
    staged->Set(page.stagedKey, entry.key);
    if (page.description) staged->Set("Note", entry.description);
    staged->Set("QslRicevuta", entry.qsl == list.member.confirmed);
    if (list.member.traits.flags) staged->Set("Qra", entry.flag);
    staged->Set("DataQso", entry.contact.dataQso);
    staged->Set("Call", entry.contact.call);
    staged->Set("Modo", entry.contact.modo);
    staged->Set("Propagazione", entry.contact.propagazione);
    staged->Update();
  }
  staged->Close();
  transaction.Commit();
  return true;
}

Entry StagedEntry(const AwardPage& page, engine::Recordset& row) {
  Entry entry;
  entry.key = core::FieldText(row, page.stagedKey);
  entry.description = core::FieldText(row, "Note");
  // The masculine for provinces too, unlike in their grid.
  if (row.Field(core::column::kQslRicevuta).Bool()) entry.qsl = "Confermato";
  entry.flag = core::FieldText(row, "Qra");
  entry.contact = {row.Field(core::column::kDataQso), row.Field(core::column::kCall),
                   row.Field(core::column::kModo), row.Field(core::column::kPropagazione)};
  return entry;
}

// False when there is nothing to show: the template has no rows and the page is empty, or the
// operator has stopped it.
bool Write(core::Session& session, const AwardPage& page, const AwardList& list) {
  const bool byDate = !page.stagedKey.empty();
  const auto progress = session.Machine.ShowProgress("Genera HTML", list.grid.Rows());
  if (byDate && !StageEntries(session, page, list, *progress)) return false;
  const std::string design = ReadText(session, page.design);
  PageFile file(session.File(page.page));
  const auto pieces = CutTemplate(design);
  if (!pieces) return false;
  file.WriteLine(pieces->head);
  if (byDate) {
    const auto rows = session.Db.OpenSnapshot("select * from SLog order by DataQso desc");
    for (; !rows->EOF_(); rows->MoveNext()) {
      file.WriteLine(FilledRow(page, pieces->row, StagedEntry(page, *rows)));
    }
  } else {
    for (std::int64_t row = 1; row < list.grid.Rows(); ++row) {
      if (!progress->Advance(row)) return false;
      file.WriteLine(FilledRow(page, pieces->row, EntryAt(session, page, list, row)));
    }
  }
  file.WriteLine(pieces->tail);
  file.Close();
  return true;
}

}  // namespace

std::span<const AwardPage> AwardPages() { return kPages; }

void WriteAwardPage(core::Session& session, const AwardPage& page, const AwardList& list) {
  bool written = false;
  {
    const forms::BusyPointer busy(session.Host());
    written = Write(session, page, list);
  }
  if (written) session.Machine.Open(session.File(page.page), 0);
}

}  // namespace brenvo::awards
