#include "print/report_runner.h"

#include <fstream>
#include <iterator>
#include <memory>

#include "core/station_profile.h"
#include "report_engine.h"

namespace brenvo::print {

void RunReport(core::Session& session, const std::filesystem::path& layout) {
  std::ifstream file(layout, std::ios::binary);
  if (!file) throw std::runtime_error("Manca il formato di stampa " + layout.filename().string());
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const ReportLayout parsed = ParseReportLayout(text);
  const ReportTexts texts = {{"call", core::ProfileText(session, "Call")},
                             {"qra", core::ProfileText(session, "Qra")},
                             {"data", base::DateText(session.Now())}};
  // Not before the first rows: the printer's dialog must not stand behind it.
  std::unique_ptr<platform::Progress> progress;
  PrintRows(session.Db, parsed, texts, session.Machine.GetPrinter(),
            [&](std::int64_t done, std::int64_t total) {
              if (done == total) {
                // Nor over the preview that shows what is printed.
                progress.reset();
                return true;
              }
              if (!progress) progress = session.Machine.ShowProgress("Stampa", total);
              return progress->Advance(done);
            });
}

}  // namespace brenvo::print
