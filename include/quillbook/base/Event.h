// Synchronous events with any number of listeners.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quillbook {

/// Keeps a listener connected for as long as it lives; outliving the event is harmless.
class [[nodiscard]] Connection {
 public:
  Connection() = default;
  explicit Connection(std::weak_ptr<bool> connected) : mConnected(std::move(connected)) {}
  Connection(Connection&&) noexcept = default;
  Connection& operator=(Connection&& other) noexcept {
    Disconnect();
    mConnected = std::move(other.mConnected);
    return *this;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { Disconnect(); }

  void Disconnect() noexcept {
    if (auto connected = mConnected.lock()) *connected = false;
    mConnected.reset();
  }

 private:
  std::weak_ptr<bool> mConnected;
};

/// An event. `Raise` calls the listeners on the caller's thread, in the order of connecting. A listener may connect
/// and disconnect during delivery: a new one hears from the next event on, a disconnected one hears nothing more.
/// A failure in a listener comes back out of `Raise`, and later listeners don't hear that event.
template <class... Args>
class Event {
 public:
  using Listener = std::function<void(Args...)>;

  Connection Connect(Listener listener) {
    Sweep();
    auto connected = std::make_shared<bool>(true);
    mSlots.push_back(std::make_shared<Slot>(Slot{connected, std::move(listener)}));
    return Connection(connected);
  }

  void Raise(Args... args) const {
    const auto count = mSlots.size();
    ++mRaising;
    const Guard guard{mRaising};
    for (std::size_t i = 0; i < count; ++i) {
      const auto slot = mSlots[i];  // held, so that the list may grow while the listener runs
      if (*slot->connected) slot->listener(args...);
    }
  }

  [[nodiscard]] bool HasListeners() const noexcept {
    for (const auto& slot : mSlots)
      if (*slot->connected) return true;
    return false;
  }

 private:
  struct Slot {
    std::shared_ptr<bool> connected;
    Listener listener;
  };
  struct Guard {
    int& raising;
    ~Guard() { --raising; }
  };
  void Sweep() {
    if (mRaising == 0) std::erase_if(mSlots, [](const auto& slot) { return !*slot->connected; });
  }

  std::vector<std::shared_ptr<Slot>> mSlots;
  mutable int mRaising = 0;
};

}  // namespace quillbook
