// The headings of a table that the operator arranges, with a line of filters under them.
#pragma once

#include <QHeaderView>
#include <QLineEdit>
#include <vector>

#include "forms/grid.h"
#include "view_context.h"

namespace brenvo::ui {

class TableHeader : public QHeaderView {
  Q_OBJECT
 public:
  TableHeader(forms::GridArranger& arranger, ViewContext& context, QWidget* parent);

  // Takes over what stands in the filters by now.
  void Refresh();
  // The keyboard goes to the filter of a column.
  void FocusFilter(int column);
  QSize sizeHint() const override;

 signals:
  // The operator is through with a filter.
  void Left();

 protected:
  void updateGeometries() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* MakeFilter(int column);
  void Place();
  int FilterHeight() const;
  void SectionMoved(int column, int from, int to);

  forms::GridArranger& arranger_;
  ViewContext& context_;
  std::vector<QLineEdit*> filters_;  // a column each
  bool moving_ = false, following_ = false;
};

}  // namespace brenvo::ui
