#include "check_target.h"

#include "base/text.h"
#include "core/shared_windows.h"

namespace brenvo::links {
namespace {

constexpr std::size_t kWholeLocator = 6;

void Search(core::Session& session, forms::TextField core::MatrixWindow::*field,
            std::string_view wanted) {
  const forms::BusyPointer busy(session.Host());
  if (!session.Opened.HrdOpen()) {
    if (forms::Window* window = session.Windows.LoadSingle("Hrd")) session.Windows.Show(*window);
  }
  if (!session.Opened.HrdOpen()) return;
  core::MatrixWindow& matrix = *session.Opened.Hrd;
  // Searched for last time or not: the operator may have asked for another one since.
  matrix.SearchFor(matrix.*field, base::Upper(wanted));
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
