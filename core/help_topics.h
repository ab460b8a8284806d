// The topics of the help file, a page a window.
#pragma once

namespace brenvo {

enum HelpTopic : int {
  kHelpLog = 100,
  kHelpLogSearch = 110,
  kHelpContest = 200,
  kHelpImportaAdif = 730,
  kHelpEsportaAdif = 740,
};

}  // namespace brenvo
