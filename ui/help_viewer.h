// Shows the help: its pages on the left, the chosen one on the right, a search over all of them.
#pragma once

#include <filesystem>
#include <map>
#include <QDialog>
#include <QImage>
#include <vector>

#include "frame/help_file.h"

class QLabel;
class QLineEdit;
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
  void MakeSearch();
  void ShowPage(int row);
  void FitPictures();
  // As it is in its file.
  const QImage& PictureOf(const QString& name);
  // Leaves in the list the pages that hold what is sought, and goes to one of them.
  void Seek();
  // To the next place where it stands, on this page or a later one; from the last to the first.
  void SeekNext();
  // Marks what is sought on the page.
  void MarkFound();
  bool Holds(int row);

  std::vector<frame::HelpPage> pages_;
  std::vector<QString> words_;          // of each page, once something was sought
  std::map<QString, QImage> pictures_;  // of the page
  QString sought_;
  QListWidget* contents_;
  QTextBrowser* text_;
  QLineEdit* search_;
  QLabel* found_;
};

// Opens the help over the active window, so that it can be read beside a dialog. Throws
// std::runtime_error when the file is not there.
void ShowHelp(const std::filesystem::path& file, int topic);

}  // namespace brenvo::ui
