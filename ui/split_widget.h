// Areas one below the other, with borders between them that the operator drags.
#pragma once

#include <QSplitter>

namespace brenvo::ui {

// Each area that shows has its equal share, anew whenever the widget is resized or an area comes or
// goes; none gets lower than 500 twips.
class SplitWidget : public QSplitter {
 public:
  explicit SplitWidget(QWidget* parent);
  void Add(QWidget& area);

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  int ShownAreas() const;
  void Share();

  int shared_ = 0;  // the areas among which the height was shared last
};

}  // namespace brenvo::ui
