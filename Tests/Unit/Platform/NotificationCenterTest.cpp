#include "Platform/NotificationCenter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace KorvaniPlatform {
namespace {

const std::string kName = "NavigationGraphCreatedNotification";
const std::string kOther = "OtherNotification";

class NotificationCenterTest : public testing::Test {
 protected:
  using Observer = std::shared_ptr<int>;

  static Observer observer() { return std::make_shared<int>(0); }

  NotificationCenter::Handler note(char letter) {
    return [this, letter](const Notification&) { log_ += letter; };
  }

  NotificationCenter center_;
  std::string log_;
};

struct Waiting {
  void graphCreationFinished() { ++calls; }
  int calls = 0;
};

struct WaitingLonger : Waiting {};

TEST_F(NotificationCenterTest, TheDefaultOneIsTheSameAlways) {
  EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

TEST_F(NotificationCenterTest, PostingWithoutObserversDoesNothing) {
  center_.post(kName);
  EXPECT_EQ(center_.observerCount(kName), 0u);
}

TEST_F(NotificationCenterTest, DeliversBeforePostReturnsOnThePostingThread) {
  const Observer someone = observer();
  std::thread::id where;
  center_.addObserver(someone, kName,
                      [&where](const Notification&) { where = std::this_thread::get_id(); });
  center_.post(kName);
  EXPECT_EQ(where, std::this_thread::get_id());
  std::thread::id other;
  std::thread([&] {
    other = std::this_thread::get_id();
    center_.post(kName);
  }).join();
  EXPECT_EQ(where, other);
}

TEST_F(NotificationCenterTest, DeliversInTheOrderOfRegistration) {
  const Observer a = observer();
  const Observer b = observer();
  const Observer c = observer();
  center_.addObserver(c, kName, note('c'));
  center_.addObserver(a, kName, note('a'));
  center_.addObserver(b, kName, note('b'));
  center_.post(kName);
  EXPECT_EQ(log_, "cab");
}

TEST_F(NotificationCenterTest, DeliversOnlyWhatHasTheName) {
  const Observer someone = observer();
  center_.addObserver(someone, kName, note('a'));
  center_.addObserver(someone, kOther, note('b'));
  center_.post(kOther);
  center_.post("navigationGraphCreatedNotification");
  EXPECT_EQ(log_, "b");
}

TEST_F(NotificationCenterTest, DeliversTwiceToWhoRegisteredTwice) {
  const Observer someone = observer();
  center_.addObserver(someone, kName, note('a'));
  center_.addObserver(someone, kName, note('a'));
  EXPECT_EQ(center_.observerCount(kName), 2u);
  center_.post(kName);
  EXPECT_EQ(log_, "aa");
}

TEST_F(NotificationCenterTest, HandsOverNameObjectAndUserInfo) {
  const Observer someone = observer();
  const auto sender = std::make_shared<const int>(7);
  std::vector<Notification> received;
  center_.addObserver(someone, kName,
                      [&received](const Notification& got) { received.push_back(got); });
  center_.post(kName, sender, {{"latitude", 48.1372}, {"level", 2}});
  center_.post(kName);
  ASSERT_EQ(received.size(), 2u);
  EXPECT_EQ(received[0].name, kName);
  EXPECT_EQ(received[0].object, sender);
  EXPECT_EQ(received[0].userInfo, (Dictionary{{"latitude", 48.1372}, {"level", 2}}));
  EXPECT_EQ(received[1].object, nullptr);
  EXPECT_TRUE(received[1].userInfo.empty());
}

TEST_F(NotificationCenterTest, DeliversOnlyFromTheSenderThatWasAskedFor) {
  const Observer someone = observer();
  const auto mine = std::make_shared<int>(1);
  const auto other = std::make_shared<int>(1);
  center_.addObserver(someone, kName, note('m'), mine.get());
  center_.addObserver(someone, kName, note('x'));
  center_.post(kName, other);
  center_.post(kName);
  EXPECT_EQ(log_, "xx");
  center_.post(kName, mine);
  EXPECT_EQ(log_, "xxmx");
}

TEST_F(NotificationCenterTest, CallsSelectorsOfTheObserver) {
  const auto waiting = std::make_shared<Waiting>();
  const auto longer = std::make_shared<WaitingLonger>();
  center_.addObserver(waiting, &Waiting::graphCreationFinished, kName);
  center_.addObserver(longer, &Waiting::graphCreationFinished, kName);
  center_.addObserver(longer, &WaitingLonger::graphCreationFinished, kName);
  center_.post(kName);
  EXPECT_EQ(waiting->calls, 1);
  EXPECT_EQ(longer->calls, 2);
}

TEST_F(NotificationCenterTest, DoesNotKeepObserversAlive) {
  auto waiting = std::make_shared<Waiting>();
  const std::weak_ptr<Waiting> watch = waiting;
  center_.addObserver(waiting, &Waiting::graphCreationFinished, kName);
  EXPECT_EQ(waiting.use_count(), 1);
  waiting.reset();
  EXPECT_TRUE(watch.expired());
}

TEST_F(NotificationCenterTest, ObserversThatAreGoneHaveLeftByThemselves) {
  Observer gone = observer();
  const Observer stays = observer();
  center_.addObserver(gone, kName, note('g'));
  center_.addObserver(stays, kName, note('s'));
  gone.reset();
  EXPECT_EQ(center_.observerCount(kName), 1u);
  center_.post(kName);
  EXPECT_EQ(log_, "s");
}

TEST_F(NotificationCenterTest, HandlersOfGoneObserversAreReleasedByTheNextPostOrRegistration) {
  auto captured = std::make_shared<int>(0);
  for (const bool byPost : {true, false}) {
    Observer gone = observer();
    center_.addObserver(gone, kName, [captured](const Notification&) { ++*captured; });
    gone.reset();
    EXPECT_EQ(captured.use_count(), 2);
    if (byPost) {
      center_.post(kName);
    } else {
      center_.addObserver(observer(), kName, note('x'));
    }
    EXPECT_EQ(captured.use_count(), 1);
  }
  EXPECT_EQ(*captured, 0);
}

TEST_F(NotificationCenterTest, KeepsAnObserverAliveWhileItsHandlerRuns) {
  Observer someone = observer();
  const std::weak_ptr<int> watch = someone;
  bool aliveInside = false;
  center_.addObserver(someone, kName, [&](const Notification&) {
    someone.reset();
    aliveInside = !watch.expired();
  });
  center_.post(kName);
  EXPECT_TRUE(aliveInside);
  EXPECT_TRUE(watch.expired());
}

TEST_F(NotificationCenterTest, RegistersNothingForANullObserverOrAnEmptyHandler) {
  center_.addObserver(std::shared_ptr<void>(), kName, note('a'));
  const Observer someone = observer();
  center_.addObserver(someone, kName, NotificationCenter::Handler());
  EXPECT_EQ(center_.observerCount(kName), 0u);
  center_.post(kName);
  EXPECT_EQ(log_, "");
}

TEST_F(NotificationCenterTest, RemovesAnObserverUnderAllNames) {
  const Observer leaves = observer();
  const Observer stays = observer();
  center_.addObserver(leaves, kName, note('a'));
  center_.addObserver(stays, kName, note('b'));
  center_.addObserver(leaves, kName, note('c'));
  center_.addObserver(leaves, kOther, note('d'));
  center_.removeObserver(leaves.get());
  EXPECT_EQ(center_.observerCount(kName), 1u);
  EXPECT_EQ(center_.observerCount(kOther), 0u);
  center_.post(kName);
  center_.post(kOther);
  EXPECT_EQ(log_, "b");
}

TEST_F(NotificationCenterTest, RemovesAnObserverUnderOneName) {
  const Observer someone = observer();
  center_.addObserver(someone, kName, note('a'));
  center_.addObserver(someone, kOther, note('b'));
  center_.removeObserver(someone.get(), kName);
  center_.post(kName);
  center_.post(kOther);
  EXPECT_EQ(log_, "b");
}

TEST_F(NotificationCenterTest, RemovingStrangersIsIgnored) {
  const Observer someone = observer();
  const Observer stranger = observer();
  center_.addObserver(someone, kName, note('a'));
  center_.removeObserver(stranger.get());
  center_.removeObserver(stranger.get(), kName);
  center_.removeObserver(someone.get(), "never heard of");
  center_.removeObserver(nullptr);
  center_.post(kName);
  EXPECT_EQ(log_, "a");
}

TEST_F(NotificationCenterTest, DestructorsMayRemoveTheirObject) {
  struct Leaving {
    explicit Leaving(NotificationCenter& where) : center(where) {}
    ~Leaving() { center.removeObserver(this); }
    NotificationCenter& center;
  };
  auto leaving = std::make_shared<Leaving>(center_);
  auto captured = std::make_shared<int>(0);
  center_.addObserver(leaving, kName, [captured](const Notification&) { ++*captured; });
  leaving.reset();
  EXPECT_EQ(captured.use_count(), 1);
  center_.post(kName);
  EXPECT_EQ(*captured, 0);
}

TEST_F(NotificationCenterTest, ARemovedObserverMayRegisterAgain) {
  const Observer someone = observer();
  center_.addObserver(someone, kName, note('a'));
  center_.removeObserver(someone.get());
  center_.addObserver(someone, kName, note('b'));
  center_.post(kName);
  EXPECT_EQ(log_, "b");
}

TEST_F(NotificationCenterTest, OneThatIsRemovedWhilePostingIsSkipped) {
  const Observer first = observer();
  const Observer second = observer();
  const Observer third = observer();
  center_.addObserver(first, kName, [&](const Notification&) {
    log_ += 'a';
    center_.removeObserver(second.get());
    center_.removeObserver(first.get());
  });
  center_.addObserver(second, kName, note('b'));
  center_.addObserver(third, kName, note('c'));
  center_.post(kName);
  EXPECT_EQ(log_, "ac");
  center_.post(kName);
  EXPECT_EQ(log_, "acc");
}

TEST_F(NotificationCenterTest, OneThatIsDestroyedWhilePostingIsSkipped) {
  const Observer first = observer();
  Observer second = observer();
  center_.addObserver(first, kName, [&](const Notification&) {
    log_ += 'a';
    second.reset();
  });
  center_.addObserver(second, kName, note('b'));
  center_.post(kName);
  EXPECT_EQ(log_, "a");
}

TEST_F(NotificationCenterTest, OneThatIsAddedWhilePostingWaitsForTheNextPost) {
  const Observer first = observer();
  const Observer second = observer();
  center_.addObserver(first, kName, [&](const Notification&) {
    log_ += 'a';
    if (log_.size() == 1) center_.addObserver(second, kName, note('b'));
  });
  center_.post(kName);
  EXPECT_EQ(log_, "a");
  center_.post(kName);
  EXPECT_EQ(log_, "aab");
}

TEST_F(NotificationCenterTest, HandlersMayPost) {
  const Observer first = observer();
  const Observer second = observer();
  center_.addObserver(first, kName, [&](const Notification&) {
    log_ += 'a';
    center_.post(kOther);
    log_ += 'c';
  });
  center_.addObserver(second, kOther, note('b'));
  center_.post(kName);
  EXPECT_EQ(log_, "abc");
}

TEST_F(NotificationCenterTest, ThreadsMayRegisterPostAndLeaveAtATime) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 500;
  std::atomic<int> heard{0};
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        const Observer mine = observer();
        center_.addObserver(mine, kName, [&heard](const Notification&) { ++heard; });
        center_.post(kName);
        if (round % 2 == 0) center_.removeObserver(mine.get());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_GE(heard, kThreads * kRounds);
  EXPECT_EQ(center_.observerCount(kName), 0u);
}

}  // namespace
}  // namespace KorvaniPlatform
