// mkflags FLAGS COUNTRY.CSV DIR: writes the flag that each row of the country table names,
// "flag_it.png", into DIR, scaled from the directory FLAGS of one picture a country ("it.png").
// A flag that is not there is told on the standard error and left out.
#include <QtCore/QCoreApplication>
#include <QtGui/QImage>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "base/csv.h"

namespace {

// Three pixels for one of a list's row, so that screens with fine pixels have something to show.
constexpr int kWidth = 84, kHeight = 63;

constexpr std::string_view kPrefix = "flag_", kSuffix = ".png";

// Where the package has no flag of its own, or calls it otherwise.
const std::map<std::string_view, std::string_view> kOtherNames = {
    {"gb-eng", "gb"}, {"gb-nir", "gb"}, {"gb-sct", "_scotland"}, {"gb-wls", "_wales"},
    {"sh-ac", "sh"},  {"sh-hl", "sh"},  {"sh-ta", "sh"},         {"un", "_united_nations"}};

int MakeFlags(const std::filesystem::path& from, const std::filesystem::path& table,
              const std::filesystem::path& to) {
  const brenvo::base::CsvTable countries = brenvo::base::ReadCsv(table);
  const std::size_t flag = countries.Column("Flag");
  std::set<std::string> names;
  for (const auto& row : countries.Rows) {
    if (!row.Cells[flag].empty()) names.insert(row.Cells[flag]);
  }
  int missing = 0;
  for (const std::string& name : names) {
    if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix)) {
      std::fprintf(stderr, "mkflags: not a name of a flag: %s\n", name.c_str());
      return 1;
    }
    std::string_view country(name);
    country.remove_prefix(kPrefix.size());
    country.remove_suffix(kSuffix.size());
    const auto other = kOtherNames.find(country);
    if (other != kOtherNames.end()) country = other->second;
    const std::filesystem::path source = from / (std::string(country) + ".png");
    QImage picture(QString::fromStdString(source.string()));
    if (picture.isNull()) {
      std::fprintf(stderr, "mkflags: no flag for %s\n", name.c_str());
      ++missing;
      continue;
    }
    picture = picture.scaled(kWidth, kHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const std::filesystem::path file = to / name;
    if (!picture.save(QString::fromStdString(file.string()))) {
      std::fprintf(stderr, "mkflags: cannot write %s\n", file.c_str());
      return 1;
    }
  }
  if (missing > 0) std::fprintf(stderr, "mkflags: %d flags are missing\n", missing);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 4) {
    std::fprintf(stderr, "mkflags FLAGS COUNTRY.CSV DIR\n");
    return 2;
  }
  try {
    return MakeFlags(argv[1], argv[2], argv[3]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "mkflags: %s\n", failure.what());
    return 1;
  }
}
