// A bar that shows how far long work has come.
#pragma once

#include <QProgressDialog>
#include <string_view>

#include "platform/progress.h"

namespace brenvo {

class QtProgress : public Progress {
 public:
  QtProgress(std::string_view title, std::int64_t total);
  bool Advance(std::int64_t done) override;

 private:
  QProgressDialog dialog_;
  std::int64_t total_;
};

}  // namespace brenvo
