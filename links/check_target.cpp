#include "check_target.h"

#include "base/text.h"
#include "core/shared_windows.h"

namespace brenvo::links {
namespace {

constexpr std::size_t kWholeLocator = 6;

void Search(core::Session& session, forms::TextField core::MatrixWindow::*field,
            std::string_view wanted) {
  const platform::BusyPointer busy(session.Host());
  if (!session.HrdOpen()) {
    if (forms::Window* window = session.Windows.LoadSingle("Hrd")) session.Windows.Show(*window);
  }
  if (!session.HrdOpen()) return;
  core::MatrixWindow& matrix = *session.Hrd;
  const std::string text = base::Upper(wanted);
  (matrix.*field).SetText(text);
  // Searched for last time too: the operator may have asked for another one since.
  if (matrix.AutoSearch.Text() == text) {
    matrix.Search();
  } else {
    matrix.AutoSearch.SetText(text);
  }
}

}  // namespace

void ShowCheck(core::Session& session, std::string_view call) {
  Search(session, &core::MatrixWindow::CallQso, call);
}

void ShowLocatorCheck(core::Session& session, std::string_view locator) {
  const bool whole = base::Len(locator) >= kWholeLocator;
  Search(session, &core::MatrixWindow::Locator,
         whole ? std::string(locator) : base::Trim(locator) + "*");
}

}  // namespace brenvo::links
