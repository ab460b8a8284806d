// Something that happens, and who has subscribed to it.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace brenvo::forms {

// Where a Subscription leads, whatever the signal's arguments.
class SubscriberList {
 public:
  virtual ~SubscriberList() = default;
  virtual void Remove(std::uint64_t subscriber) = 0;
};

// One subscription: ends when the handle goes. The signal may go first.
class Subscription {
 public:
  Subscription() = default;
  Subscription(std::weak_ptr<SubscriberList> list, std::uint64_t subscriber)
      : list_(std::move(list)), subscriber_(subscriber) {}
  ~Subscription() { Unsubscribe(); }
  Subscription(Subscription&& other) noexcept
      : list_(std::exchange(other.list_, {})), subscriber_(other.subscriber_) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      Unsubscribe();
      list_ = std::exchange(other.list_, {});
      subscriber_ = other.subscriber_;
    }
    return *this;
  }

  void Unsubscribe() {
    if (const auto list = list_.lock()) list->Remove(subscriber_);
    list_.reset();
  }

 private:
  std::weak_ptr<SubscriberList> list_;
  std::uint64_t subscriber_ = 0;
};

// Subscribers run in the order of their subscription. Who subscribes while the signal runs is
// called from the next time on; who has left is not called any more. The signal itself may go
// while it runs: the subscribers are called all the same.
template <class... Args>
class Signal {
 public:
  Signal() = default;
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;

  [[nodiscard]] Subscription Subscribe(std::function<void(Args...)> work) {
    if (!subscribers_) subscribers_ = std::make_shared<Subscribers>();
    return {subscribers_, subscribers_->Add(std::move(work))};
  }

  // False while nobody has subscribed: what would be reported need not be made.
  bool IsHeard() const { return subscribers_ != nullptr && !subscribers_->IsEmpty(); }

  void operator()(Args... args) const {
    if (!subscribers_) return;
    const std::shared_ptr<Subscribers> kept = subscribers_;
    kept->Run(args...);
  }

 private:
  class Subscribers : public SubscriberList {
   public:
    std::uint64_t Add(std::function<void(Args...)> work) {
      all_.push_back({++last_, std::move(work)});
      return last_;
    }

    bool IsEmpty() const { return all_.empty(); }

    void Remove(std::uint64_t subscriber) override {
      for (auto at = all_.begin(); at != all_.end(); ++at) {
        if (at->number != subscriber) continue;
        // One that leaves in the midst of its own work is still needed until that ends.
        at->number = kLeft;
        left_ = true;
        Sweep();
        return;
      }
    }

    void Run(Args... args) {
      const std::uint64_t newest = last_;
      const Running running(*this);
      for (auto& [number, work] : all_) {
        if (number != kLeft && number <= newest) work(args...);
      }
    }

   private:
    static constexpr std::uint64_t kLeft = 0;
    struct Subscriber {
      std::uint64_t number;
      std::function<void(Args...)> work;
    };
    struct Running {
      explicit Running(Subscribers& list) : of(list) { ++of.depth_; }
      ~Running() {
        --of.depth_;
        of.Sweep();
      }
      Running(const Running&) = delete;
      Running& operator=(const Running&) = delete;
      Subscribers& of;
    };

    void Sweep() {
      if (depth_ > 0 || !left_) return;
      left_ = false;
      all_.remove_if([](const Subscriber& each) { return each.number == kLeft; });
    }

    std::list<Subscriber> all_;  // keeps its places while it grows
    std::uint64_t last_ = kLeft;
    int depth_ = 0;
    bool left_ = false;
  };

  std::shared_ptr<Subscribers> subscribers_;
};

}  // namespace brenvo::forms
