// Keys of buttons: pressed at once, and those of the window in front before the main menu's.
#pragma once

#include <QMdiArea>
#include <QObject>

namespace brenvo::ui {

// The toolkit shows a button pressed by its key for a tenth of a second before the command runs:
// what a quick hand types meanwhile would go into the fields of the contact before.
//
// A key that the window in front has a command for is that command's, where the main menu has it
// too. Alt and a letter that several have the toolkit gives to each in turn, whatever stands in
// front. One button of that window with the letter is pressed; where it has several, the keyboard
// goes to the next.
class LetterKeys : public QObject {
 public:
  explicit LetterKeys(QMdiArea& area);  // lives as long as the area

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QMdiArea& area_;
};

}  // namespace brenvo::ui
