// Alt and a letter that several have: the window in front comes before the main menu.
#pragma once

#include <QMdiArea>
#include <QObject>

namespace brenvo {

// Left alone, the toolkit gives such a key to each in turn, whatever stands in front. One button of
// that window with the letter is pressed; where it has several, the keyboard goes to the next.
class LetterKeys : public QObject {
 public:
  explicit LetterKeys(QMdiArea& area);  // lives as long as the area

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QMdiArea& area_;
};

}  // namespace brenvo
