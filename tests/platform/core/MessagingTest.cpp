#include "KSL/Exception.h"
#include "KSL/Listener.h"
#include "KSL/Message.h"
#include "KSL/StationUtils.h"
#include "PlatformTestSupport.h"
#include "zelcore/threads/AsyncCallFromMainThread.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

namespace {

using platform_test::RecordingListener;
using platform_test::RunPostedWork;
using testing::ElementsAre;

struct PingMessage : KSL::MessageOf<PingMessage> {
    static constexpr const char* kTypeName = "test::PingMessage";
    explicit PingMessage(int v = 0)
        : value(v) {}
    int value;
};

struct PongMessage : KSL::MessageOf<PongMessage> {
    static constexpr const char* kTypeName = "test::PongMessage";
};

const KSL::StationID kStation("test.station");

// Appends its own tag to a shared log on every message, then runs a reaction.
class TaggedListener : public KSL::Listener {
public:
    TaggedListener(std::string* log, char tag)
        : log_(log)
        , tag_(tag) {}
    std::function<void()> reaction;

protected:
    bool HandleMessage(const KSL::Message&) override {
        *log_ += tag_;
        if (reaction) {
            reaction();
        }
        return true;
    }

private:
    std::string* log_;
    char tag_;
};

TEST(MessageIDTest, IsTheFnv1aHashOfTheTypeName) {
    // Published FNV-1a test vectors: the ids must not change between builds.
    EXPECT_EQ(KSL::HashMessageTypeNameToMessageID(""), 0x811c9dc5u);
    EXPECT_EQ(KSL::HashMessageTypeNameToMessageID("a"), 0xe40c292cu);
    EXPECT_EQ(KSL::HashMessageTypeNameToMessageID("foobar"), 0xbf9cf968u);
    EXPECT_EQ(PingMessage::ID(), KSL::HashMessageTypeNameToMessageID("test::PingMessage"));
    EXPECT_NE(PingMessage::ID(), PongMessage::ID());
}

TEST(MessageIDTest, MessageCarriesItsClassIdAndDowncastsOnlyToIt) {
    const PingMessage ping(7);
    const KSL::Message& message = ping;
    EXPECT_EQ(message.GetMessageID(), PingMessage::ID());
    ASSERT_NE(message.As<PingMessage>(), nullptr);
    EXPECT_EQ(message.As<PingMessage>()->value, 7);
    EXPECT_EQ(message.As<PongMessage>(), nullptr);
}

TEST(BroadcastTest, DeliversInAdditionOrderAndIgnoresDuplicateAdds) {
    std::string log;
    TaggedListener a(&log, 'a'), b(&log, 'b'), c(&log, 'c');
    KSL::StationUtils::AddListener(kStation, &b);
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::AddListener(kStation, &c);
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "bac");
    EXPECT_EQ(KSL::StationUtils::CountListeners(kStation), 3u);
}

TEST(BroadcastTest, OtherStationsAndRemovedListenersReceiveNothing) {
    std::string log;
    TaggedListener a(&log, 'a'), b(&log, 'b');
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::AddListener("test.other", &b);
    KSL::StationUtils::RemoveListener(kStation, &b); // not there: no effect
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    KSL::StationUtils::RemoveListener(kStation, &a);
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "a");
    EXPECT_FALSE(KSL::StationUtils::HasListener(kStation, &a));
    EXPECT_TRUE(KSL::StationUtils::HasListener("test.other", &b));
}

TEST(BroadcastTest, ListenerRemovedDuringDeliveryGetsNoMoreOfIt) {
    std::string log;
    TaggedListener a(&log, 'a'), b(&log, 'b'), c(&log, 'c');
    a.reaction = [&] {
        KSL::StationUtils::RemoveListener(kStation, &b);
    };
    for (auto* l : {&a, &b, &c}) {
        KSL::StationUtils::AddListener(kStation, l);
    }
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "ac");
    EXPECT_EQ(KSL::StationUtils::CountListeners(kStation), 2u);
}

TEST(BroadcastTest, ListenerAddedDuringDeliveryGetsOnlyLaterMessages) {
    std::string log;
    TaggedListener a(&log, 'a'), late(&log, 'L');
    a.reaction = [&] {
        KSL::StationUtils::AddListener(kStation, &late);
    };
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "a");
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "aaL");
}

TEST(BroadcastTest, RemovedAndReaddedDuringDeliveryMovesToTheEnd) {
    std::string log;
    TaggedListener a(&log, 'a'), b(&log, 'b');
    a.reaction = [&] {
        KSL::StationUtils::RemoveListener(kStation, &a);
        KSL::StationUtils::AddListener(kStation, &a);
    };
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::AddListener(kStation, &b);
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    a.reaction = nullptr;
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "abba");
    EXPECT_EQ(KSL::StationUtils::CountListeners(kStation), 2u);
}

TEST(BroadcastTest, ListenerDestroyedDuringDeliveryIsSkipped) {
    std::string log;
    TaggedListener a(&log, 'a');
    auto doomed = std::make_unique<TaggedListener>(&log, 'd');
    a.reaction = [&] {
        doomed.reset();
    };
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::AddListener(kStation, doomed.get());
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "a");
    EXPECT_EQ(KSL::StationUtils::CountListeners(kStation), 1u);
}

TEST(BroadcastTest, DestroyedListenerLeavesEveryStation) {
    std::string log;
    {
        TaggedListener a(&log, 'a');
        KSL::StationUtils::AddListener(kStation, &a);
        KSL::StationUtils::AddListener("test.other", &a);
    }
    EXPECT_EQ(KSL::StationUtils::CountListeners(kStation), 0u);
    EXPECT_EQ(KSL::StationUtils::CountListeners("test.other"), 0u);
}

TEST(BroadcastTest, NestedBroadcastIsDeliveredDepthFirst) {
    std::string log;
    TaggedListener a(&log, 'a'), b(&log, 'b');
    int depth = 0;
    a.reaction = [&] {
        if (depth++ == 0) {
            KSL::StationUtils::BroadcastMessage(kStation, PongMessage());
        }
    };
    KSL::StationUtils::AddListener(kStation, &a);
    KSL::StationUtils::AddListener(kStation, &b);
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "aabb");
}

TEST(BroadcastTest, HandlerExceptionStopsDeliveryAndLeavesStationConsistent) {
    std::string log;
    TaggedListener a(&log, 'a'), b(&log, 'b'), c(&log, 'c');
    b.reaction = [&] {
        KSL::StationUtils::RemoveListener(kStation, &a);
        throw KSL::Exception("refused");
    };
    for (auto* l : {&a, &b, &c}) {
        KSL::StationUtils::AddListener(kStation, l);
    }
    EXPECT_THROW(KSL::StationUtils::BroadcastMessage(kStation, PingMessage()), KSL::Exception);
    EXPECT_EQ(log, "ab");
    b.reaction = nullptr;
    KSL::StationUtils::BroadcastMessage(kStation, PingMessage());
    EXPECT_EQ(log, "abbc");
    EXPECT_EQ(KSL::StationUtils::CountListeners(kStation), 2u);
}

TEST(PostTest, PostedMessageArrivesAfterTheCurrentEventReturns) {
    RecordingListener listener;
    KSL::StationUtils::AddListener(kStation, &listener);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(), false);
    EXPECT_TRUE(listener.received.empty());
    RunPostedWork();
    EXPECT_THAT(listener.received, ElementsAre(PingMessage::ID()));
}

TEST(PostTest, GoesToListenersPresentAtDeliveryTime) {
    RecordingListener early, late;
    KSL::StationUtils::AddListener(kStation, &early);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(), false);
    KSL::StationUtils::RemoveListener(kStation, &early);
    KSL::StationUtils::AddListener(kStation, &late);
    RunPostedWork();
    EXPECT_TRUE(early.received.empty());
    EXPECT_EQ(late.received.size(), 1u);
}

TEST(PostTest, PostsAndAsyncCallsRunInPostingOrder) {
    std::string log;
    TaggedListener listener(&log, 'm');
    KSL::StationUtils::AddListener(kStation, &listener);
    zelcore::threads::AsyncCallFromMainThread([&] { log += '1'; }, 0);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(), false);
    zelcore::threads::AsyncCallFromMainThread([&] { log += '2'; }, 0);
    EXPECT_EQ(log, "");
    RunPostedWork();
    EXPECT_EQ(log, "1m2");
}

TEST(PostTest, ReplacePendingDeliversTheLatestContentOnceInTheFirstPlace) {
    std::vector<int> values;
    RecordingListener listener;
    listener.onMessage = [&](const KSL::Message& m) {
        if (const auto* ping = m.As<PingMessage>()) {
            values.push_back(ping->value);
        } else {
            values.push_back(-1);
        }
    };
    KSL::StationUtils::AddListener(kStation, &listener);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(1), true);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PongMessage>(), true);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(2), true);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(3), false);
    RunPostedWork();
    EXPECT_THAT(values, ElementsAre(2, -1, 3));
    // Once delivered, a replacing post queues anew.
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(4), true);
    RunPostedWork();
    EXPECT_THAT(values, ElementsAre(2, -1, 3, 4));
}

TEST(PostTest, PostFromWorkerThreadIsDeliveredOnTheUIThread) {
    QThread* deliveredOn = nullptr;
    RecordingListener listener;
    listener.onMessage = [&](const KSL::Message&) {
        deliveredOn = QThread::currentThread();
    };
    KSL::StationUtils::AddListener(kStation, &listener);
    std::thread worker([] {
        KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(), false);
    });
    worker.join();
    RunPostedWork();
    EXPECT_EQ(deliveredOn, QCoreApplication::instance()->thread());
}

TEST(PostTest, ResetMessagingCancelsEverythingPending) {
    RecordingListener listener;
    KSL::StationUtils::AddListener(kStation, &listener);
    int calls = 0;
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PingMessage>(), false);
    KSL::StationUtils::PostMessageToUIThread(kStation, std::make_shared<PongMessage>(), true);
    zelcore::threads::AsyncCallFromMainThread([&] { ++calls; }, 0);
    zelcore::threads::AsyncCallFromMainThread([&] { ++calls; }, 5);
    KSL::ResetMessaging();
    KSL::StationUtils::AddListener(kStation, &listener);
    platform_test::RunEventLoopFor(std::chrono::milliseconds(30));
    EXPECT_TRUE(listener.received.empty());
    EXPECT_EQ(calls, 0);
}

TEST(PostTest, DelayedCallWaitsAtLeastItsDelay) {
    QElapsedTimer clock;
    clock.start();
    qint64 ranAfterMs = -1;
    zelcore::threads::AsyncCallFromMainThread([&] { ranAfterMs = clock.elapsed(); }, 40);
    RunPostedWork();
    EXPECT_EQ(ranAfterMs, -1);
    platform_test::RunEventLoopFor(std::chrono::milliseconds(120));
    EXPECT_GE(ranAfterMs, 40);
}

TEST(PostTest, ThrowingCallDoesNotStopLaterOnes) {
    int calls = 0;
    zelcore::threads::AsyncCallFromMainThread([] { throw KSL::Exception("boom"); }, 0);
    zelcore::threads::AsyncCallFromMainThread([&] { ++calls; }, 0);
    RunPostedWork();
    EXPECT_EQ(calls, 1);
}

} // namespace
