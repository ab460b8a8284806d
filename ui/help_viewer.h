// Shows the help: its pages on the left, the chosen one on the right.
#pragma once

#include <filesystem>
#include <QDialog>
#include <vector>

#include "frame/help_file.h"

class QListWidget;
class QTextBrowser;

namespace brenvo::ui {

class HelpViewer : public QDialog {
 public:
  // Pictures of the pages are looked for below `directory`.
  HelpViewer(std::vector<frame::HelpPage> pages, QWidget* parent, const QString& directory = {});
  // The page of a topic, the first one where the topic is 0 or has no page.
  void ShowTopic(int topic);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FitPictures();

  std::vector<frame::HelpPage> pages_;
  QListWidget* contents_;
  QTextBrowser* text_;
};

// Opens the help over the active window, so that it can be read beside a dialog. Throws
// std::runtime_error when the file is not there.
void ShowHelp(const std::filesystem::path& file, int topic);

}  // namespace brenvo::ui
