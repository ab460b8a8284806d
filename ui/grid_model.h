// A grid's cells as the toolkit asks for them.
#pragma once

#include <optional>
#include <QAbstractTableModel>
#include <QColor>
#include <string>

#include "forms/grid.h"
#include "view_context.h"

namespace brenvo::ui {

// Fetches a cell when it is shown, never before. The grid's heading row is the model's heading, so
// the model's row 0 is the grid's row 1. A grid that can be edited has an empty row at its end.
class GridModel : public QAbstractTableModel {
 public:
  GridModel(forms::Grid& grid, ViewContext& context, QObject* parent);

  // Takes over what the grid has now; a failure of its rows is reported, and the grid is then
  // empty.
  void Refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  QVariant Content(std::int64_t row, int column, int role) const;
  QString Text(std::int64_t row, int column) const;
  void Tell(const std::exception& failure) const;

  forms::Grid& grid_;
  ViewContext& context_;
  int rows_ = 0, columns_ = 0;
  mutable bool failed_ = false;
};

}  // namespace brenvo::ui
