// Following what happens to a widget, without a class of its own.
#pragma once

#include <functional>
#include <initializer_list>
#include <QEvent>
#include <QObject>
#include <QWidget>

namespace brenvo::ui {

// Runs `work` soon after each event of these types that the widget gets, as long as the owner
// lives.
void WatchWidget(QWidget& widget, std::initializer_list<QEvent::Type> types, QObject& owner,
                 std::function<void()> work);

// Runs `fit` when the desktop's letters have another size.
void FollowLetters(QWidget& widget, std::function<void()> fit);

}  // namespace brenvo::ui
