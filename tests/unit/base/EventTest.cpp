#include "quillbook/base/Event.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "quillbook/base/Failure.h"

namespace quillbook {
namespace {

TEST(Event, Listeners_HearInTheOrderOfConnecting) {
  Event<int> event;
  std::string heard;
  const auto first = event.Connect([&](int value) { heard += "a" + std::to_string(value); });
  const auto second = event.Connect([&](int value) { heard += "b" + std::to_string(value); });
  event.Raise(1);
  event.Raise(2);
  EXPECT_EQ(heard, "a1b1a2b2");
}

TEST(Event, WithoutListeners_NothingHappens) {
  const Event<> event;
  event.Raise();
  EXPECT_FALSE(event.HasListeners());
}

TEST(Event, AConnection_EndsWithItsLife) {
  Event<> event;
  int heard = 0;
  {
    const auto connection = event.Connect([&] { ++heard; });
    EXPECT_TRUE(event.HasListeners());
    event.Raise();
  }
  event.Raise();
  EXPECT_EQ(heard, 1);
  EXPECT_FALSE(event.HasListeners());
}

TEST(Event, AMovedConnection_StaysConnected_AndTheReplacedOneEnds) {
  Event<> event;
  std::string heard;
  auto kept = event.Connect([&] { heard += "a"; });
  auto other = event.Connect([&] { heard += "b"; });
  kept = std::move(other);
  event.Raise();
  EXPECT_EQ(heard, "b");
}

TEST(Event, AConnection_MayOutliveTheEvent) {
  std::optional<Event<>> event(std::in_place);
  auto connection = event->Connect([] {});
  event.reset();
  connection.Disconnect();
}

TEST(Event, DisconnectedDuringDelivery_HearsNothingMore) {
  Event<> event;
  std::string heard;
  Connection second;
  const auto first = event.Connect([&] {
    heard += "a";
    second.Disconnect();
  });
  second = event.Connect([&] { heard += "b"; });
  const auto third = event.Connect([&] { heard += "c"; });
  event.Raise();
  EXPECT_EQ(heard, "ac");
}

TEST(Event, ConnectedDuringDelivery_HearsFromTheNextEventOn) {
  Event<> event;
  std::string heard;
  std::vector<Connection> added;
  const auto first = event.Connect([&] {
    heard += "a";
    for (int i = 0; added.size() < 50 && i < 50; ++i) added.push_back(event.Connect([&] { heard += "n"; }));
  });
  event.Raise();
  EXPECT_EQ(heard, "a");
  event.Raise();
  EXPECT_EQ(heard, "aa" + std::string(50, 'n'));
}

TEST(Event, AListener_MayDisconnectItself) {
  Event<> event;
  int heard = 0;
  Connection own;
  own = event.Connect([&] {
    ++heard;
    own.Disconnect();
  });
  event.Raise();
  event.Raise();
  EXPECT_EQ(heard, 1);
}

TEST(Event, ANestedEvent_IsDeliveredAtOnce) {
  Event<int> event;
  std::string heard;
  const auto first = event.Connect([&](int depth) {
    heard += "a" + std::to_string(depth);
    if (depth == 0) event.Raise(1);
  });
  const auto second = event.Connect([&](int depth) { heard += "b" + std::to_string(depth); });
  event.Raise(0);
  EXPECT_EQ(heard, "a0a1b1b0");
}

TEST(Event, AFailureInAListener_ComesOut_AndLaterOnesHearTheNextEvent) {
  Event<> event;
  int heard = 0;
  bool fail = true;
  const auto first = event.Connect([&] {
    if (fail) throw Failure(FailureNumber::InvalidCall);
  });
  const auto second = event.Connect([&] { ++heard; });
  EXPECT_THROW(event.Raise(), Failure);
  EXPECT_EQ(heard, 0);
  fail = false;
  event.Raise();
  EXPECT_EQ(heard, 1);
}

TEST(Event, InOutArguments_ReachTheCaller) {
  Event<bool&> event;
  const auto connection = event.Connect([](bool& cancel) { cancel = true; });
  bool cancel = false;
  event.Raise(cancel);
  EXPECT_TRUE(cancel);
}

}  // namespace
}  // namespace quillbook
