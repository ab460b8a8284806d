// Builds a window's inside from its fields and its layout.
#pragma once

#include <map>
#include <memory>
#include <QMenuBar>
#include <QWidget>

#include "command_widgets.h"
#include "forms/window.h"
#include "layout.h"
#include "view_context.h"

namespace brenvo::ui {

class WindowBuilder {
 public:
  WindowBuilder(forms::Window& window, ViewContext& context, QWidget& owner);

  // The inside: menu bar, tool bars, the layout, status bar. The main frame brings a menu bar of
  // its own.
  QWidget* Build(const Piece& layout, QMenuBar* menuBar = nullptr);
  // The widget of a field; null when it has none.
  QWidget* WidgetOf(forms::Field& field) const;
  // The first field to work in that the keyboard reaches; null when there is none.
  QWidget* FirstField() const;

 private:
  QWidget* Make(const Piece& piece, QWidget* parent);
  QWidget* MakeField(const Piece& piece, QWidget* parent);
  QWidget* MakeRow(const Piece& piece, QWidget* parent, bool vertical);
  QWidget* MakeForm(const Piece& piece, QWidget* parent);
  QWidget* MakeFrame(const Piece& piece, QWidget* parent);
  QWidget* MakeEither(const Piece& piece, QWidget* parent);
  QWidget* MakeSplit(const Piece& piece, QWidget* parent);
  // The width of a text, 0 for all there is.
  int Characters(const Piece& piece) const;
  // What stands before a field or a line; empty for nothing.
  std::string LabelOf(const Piece& piece) const;
  // The label before a field, tied to it; null when it wants none.
  QWidget* MakeLabelOf(const Piece& piece, QWidget& widget, QWidget* parent);
  bool Grows(const Piece& piece) const;
  bool Exists(const Piece& piece) const;
  void AddPopups();
  void SetTabOrder();

  forms::Window& window_;
  ViewContext& context_;
  QWidget& owner_;
  CommandWidgets commands_;
  std::map<forms::Field*, QWidget*> widgets_;
};

// A decent layout for a window that has none of its own: its fields in the order of their
// declaration.
Piece LayoutOf(const forms::Window& window);

}  // namespace brenvo::ui
