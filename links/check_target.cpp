#include "check_target.h"

#include "base/text.h"
#include "core/shared_windows.h"

namespace brenvo {
namespace {

constexpr std::size_t kWholeLocator = 6;

void Search(Session& session, TextField MatrixWindow::*field, std::string_view wanted) {
  const BusyPointer busy(session.Host());
  if (!session.HrdOpen()) {
    if (Window* window = session.Windows.LoadSingle("Hrd")) session.Windows.Show(*window);
  }
  if (!session.HrdOpen()) return;
  MatrixWindow& matrix = *session.Hrd;
  const std::string text = Upper(wanted);
  (matrix.*field).SetText(text);
  // Searched for last time too: the operator may have asked for another one since.
  if (matrix.AutoSearch.Text() == text) {
    matrix.Search();
  } else {
    matrix.AutoSearch.SetText(text);
  }
}

}  // namespace

void ShowCheck(Session& session, std::string_view call) {
  Search(session, &MatrixWindow::CallQso, call);
}

void ShowLocatorCheck(Session& session, std::string_view locator) {
  const bool whole = Len(locator) >= kWholeLocator;
  Search(session, &MatrixWindow::Locator, whole ? std::string(locator) : Trim(locator) + "*");
}

}  // namespace brenvo
