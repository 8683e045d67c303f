// Synchronous events with any number of listeners.
#pragma once

#include <algorithm>
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
///
/// An event that nobody listens to is one null pointer: objects of which there are many may have several.
template <class... Args>
class Event {
 public:
  using Listener = std::function<void(Args...)>;

  Connection Connect(Listener listener) {
    if (!mState) mState = std::make_unique<State>();
    mState->Sweep();
    auto connected = std::make_shared<bool>(true);
    mState->slots.push_back(std::make_shared<Slot>(Slot{connected, std::move(listener)}));
    return Connection(connected);
  }

  void Raise(Args... args) const {
    if (!mState) return;
    const auto count = mState->slots.size();
    const Guard guard(mState->raising);
    for (std::size_t i = 0; i < count; ++i) {
      const auto slot = mState->slots[i];  // held, so that the list may grow while the listener runs
      if (*slot->connected) slot->listener(args...);
    }
  }

  [[nodiscard]] bool HasListeners() const noexcept {
    return mState &&
           std::any_of(mState->slots.begin(), mState->slots.end(), [](const auto& s) { return *s->connected; });
  }

 private:
  struct Slot {
    std::shared_ptr<bool> connected;
    Listener listener;
  };
  struct State {
    std::vector<std::shared_ptr<Slot>> slots;
    int raising = 0;

    void Sweep() {
      if (raising == 0) std::erase_if(slots, [](const auto& slot) { return !*slot->connected; });
    }
  };
  class Guard {
   public:
    explicit Guard(int& raising) : mRaising(raising) { ++mRaising; }
    ~Guard() { --mRaising; }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

   private:
    int& mRaising;
  };

  std::unique_ptr<State> mState;
};

}  // namespace quillbook
