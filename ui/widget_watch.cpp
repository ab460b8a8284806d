#include "widget_watch.h"

#include <algorithm>
#include <vector>

namespace brenvo::ui {
namespace {

class Watcher : public QObject {
 public:
  Watcher(QWidget& widget, std::initializer_list<QEvent::Type> types, QObject& owner,
          std::function<void()> work)
      : QObject(&owner), types_(types), work_(std::move(work)) {
    widget.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (std::find(types_.begin(), types_.end(), event->type()) == types_.end()) return false;
    if (asked_) return false;
    asked_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
          asked_ = false;
          work_();
        },
        Qt::QueuedConnection);
    return false;
  }

 private:
  std::vector<QEvent::Type> types_;
  std::function<void()> work_;
  bool asked_ = false;
};

}  // namespace

void WatchWidget(QWidget& widget, std::initializer_list<QEvent::Type> types, QObject& owner,
                 std::function<void()> work) {
  new Watcher(widget, types, owner, std::move(work));
}

void FollowLetters(QWidget& widget, std::function<void()> fit) {
  WatchWidget(widget, {QEvent::FontChange, QEvent::ApplicationFontChange}, widget, std::move(fit));
}

}  // namespace brenvo::ui
