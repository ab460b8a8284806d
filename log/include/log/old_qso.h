// The browsers beside the log: earlier contacts with the same call, or with the same square.
#pragma once

#include <string_view>

#include "core/data_source.h"
#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/grid.h"

namespace brenvo::log {

// In what the two browsers differ.
struct OldQsoKind {
  std::string_view name, caption, settingsKey;
  core::FeedWindow* core::OpenWindows::*handle;  // by which the log finds the open one
};
extern const OldQsoKind kOldQsoByCall;
extern const OldQsoKind kOldQsoByLocator;

// Opens empty, and is fed by the log.
class OldQso : public core::FeedWindow {
 public:
  OldQso(core::Session& session, const OldQsoKind& kind);

  void Load() override;
  void Unload() override;
  void SetRecordSource(std::string_view select) override;

  forms::Panel PanelGriglia{*this, "PanelGriglia"};
  forms::DataGrid DataGrid1{*this, "DataGrid1"};
  core::DataSource DataLog;

 private:
  // The contact of the current row, in the log.
  void ShowInLog();

  core::Session& session_;
  const OldQsoKind& kind_;
  forms::Subscription changes_;
};

// Both browsers, known to the session by their names.
void KnowOldQsoBrowsers(core::Session& session);

}  // namespace brenvo::log
