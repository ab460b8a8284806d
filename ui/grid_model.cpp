#include "grid_model.h"

#include <algorithm>
#include <limits>
#include <QBrush>
#include <QFont>
#include <QPixmap>
#include <QPixmapCache>
#include <stdexcept>

#include "forms/window.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr int kMostRows = std::numeric_limits<int>::max() / 64;

Qt::Alignment AlignmentOf(forms::CellAlignment alignment) {
  switch (alignment) {
    case forms::CellAlignment::kCentre:
      return Qt::AlignCenter;
    case forms::CellAlignment::kRight:
      return Qt::AlignRight | Qt::AlignVCenter;
    case forms::CellAlignment::kLeft:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

// Room between a picture and the lines of its row, pixels.
constexpr int kPictureMargin = 4;

// A picture higher than its row shows smaller, with all its pixels where the screen has them.
QVariant PictureOf(const std::string& file, base::Twips rowHeight) {
  if (file.empty()) return {};
  const QString path = ToQt(file);
  QPixmap picture;
  if (!QPixmapCache::find(path, &picture)) {
    picture.load(path);
    QPixmapCache::insert(path, picture);
  }
  if (picture.isNull()) return {};
  const int height = rowHeight.Pixels() - kPictureMargin;
  if (height > 0 && picture.height() > height) {
    picture.setDevicePixelRatio(static_cast<double>(picture.height()) / height);
  }
  return picture;
}

}  // namespace

GridModel::GridModel(forms::Grid& grid, ViewContext& context, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid), context_(context) {}

void GridModel::Refresh() {
  if (!context_.Alive()) return;
  failed_ = false;
  int rows = 0, columns = 0;
  try {
    const std::int64_t below = std::max<std::int64_t>(grid_.Rows() - 1, 0);
    rows =
        static_cast<int>(std::min<std::int64_t>(below + (grid_.WritesCells() ? 1 : 0), kMostRows));
    columns = grid_.Columns();
  } catch (const std::exception& failure) {
    Tell(failure);
  }
  if (columns != columns_) {
    beginResetModel();
    rows_ = rows;
    columns_ = columns;
    endResetModel();
    return;
  }
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  if (rows_ == 0 || columns_ == 0) return;
  emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
  emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  return Content(index.row() + 1, index.column(), role);
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  return role == Qt::BackgroundRole || role == Qt::ForegroundRole ? QVariant()
                                                                  : Content(0, section, role);
}

QVariant GridModel::Content(std::int64_t row, int column, int role) const {
  if (failed_ || !context_.Alive()) return {};
  try {
    switch (role) {
      case Qt::DisplayRole:
        return Text(row, column).trimmed();
      case Qt::EditRole:
        return Text(row, column);
      case Qt::TextAlignmentRole:
        return QVariant(AlignmentOf(grid_.Alignment(row, column)));
      case Qt::DecorationRole:
        return PictureOf(grid_.CellPicture(row, column), grid_.RowHeight(row));
      case Qt::FontRole:
        if (grid_.Bold(row, column)) {
          QFont bold;
          bold.setBold(true);
          return bold;
        }
        return {};
      // White is the paper, whatever colour the desktop gives it.
      case Qt::BackgroundRole:
        if (const base::Colour back = grid_.BackColour(row, column); back != base::kWhite) {
          return QBrush(QColor(back.red, back.green, back.blue));
        }
        return {};
      case Qt::ForegroundRole:
        if (grid_.BackColour(row, column) != base::kWhite) return QBrush(Qt::black);
        return {};
      default:
        return {};
    }
  } catch (const std::exception& failure) {
    Tell(failure);
  }
  return {};
}

QString GridModel::Text(std::int64_t row, int column) const {
  return ToQt(grid_.Cell(row, column));
}

// Painting asks for many cells: one failure is reported once, and not in the midst of the painting.
void GridModel::Tell(const std::exception& failure) const {
  failed_ = true;
  context_.Later(const_cast<GridModel*>(this),
                 [words = std::string(failure.what())] { throw std::runtime_error(words); });
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (context_.Alive() && grid_.WritesCells()) flags |= Qt::ItemIsEditable;
  return flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || !context_.Alive()) return false;
  const QString text = value.toString();
  if (text == Text(index.row() + 1, index.column())) return false;
  // The editor closes first: the edit may ask the operator something.
  context_.Later(this, [this, row = index.row() + 1, column = index.column(),
                        words = FromQt(InOneLine(text))] { grid_.EditCell(row, column, words); });
  return true;
}

}  // namespace brenvo::ui
