#include "publisher.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Event
{
    const void* source;
    long first;
    long second;
    std::string text;
};

class Recorder : public Subscriber<long, long>
{
public:
    void OnPublish(Publisher<long, long>* source, long first, long second, const char* text) override
    {
        events.push_back({source, first, second, text});
        if (onEvent)
            onEvent();
    }
    std::vector<Event> events;
    std::function<void()> onEvent;
};

TEST(PublisherTest, DeliversBothValuesTheTextAndTheSourceToEverySubscriberInOrder)
{
    Publisher<long, long> page;
    Recorder dialog, other;
    std::vector<const Recorder*> order;
    dialog.onEvent = [&] { order.push_back(&dialog); };
    other.onEvent = [&] { order.push_back(&other); };
    page.Subscribe(&dialog);
    page.Subscribe(&other);
    page.Publish(2, 40001, "ORG-B");
    ASSERT_EQ(1u, dialog.events.size());
    EXPECT_EQ(&page, dialog.events[0].source);
    EXPECT_EQ(2, dialog.events[0].first);
    EXPECT_EQ(40001, dialog.events[0].second);
    EXPECT_EQ("ORG-B", dialog.events[0].text);
    ASSERT_EQ(2u, order.size());
    EXPECT_EQ(&dialog, order[0]);
    EXPECT_EQ(&other, order[1]);
}

TEST(PublisherTest, SubscribingTwiceDeliversOnceAndUnsubscribingStopsDelivery)
{
    Publisher<long, long> page;
    Recorder dialog;
    page.Subscribe(&dialog);
    page.Subscribe(&dialog);
    EXPECT_EQ(1, page.GetSubscriberCount());
    page.Publish(1, 0);
    EXPECT_EQ(1u, dialog.events.size());
    EXPECT_EQ("", dialog.events[0].text);
    page.Unsubscribe(&dialog);
    page.Publish(1, 0);
    EXPECT_EQ(1u, dialog.events.size());
    EXPECT_FALSE(page.IsSubscribed(&dialog));
}

TEST(PublisherTest, EitherSideMayGoFirst)
{
    Recorder survivor;
    {
        Publisher<long, long> page;
        page.Subscribe(&survivor);
        auto* gone = new Recorder;
        page.Subscribe(gone);
        delete gone;
        EXPECT_EQ(1, page.GetSubscriberCount());
        page.Publish(3, 0);
    }
    // The publisher went first: the subscriber's destructor must not touch it.
    EXPECT_EQ(1u, survivor.events.size());
}

TEST(PublisherTest, ASubscriberLeavingDuringDeliveryIsNotCalledAfterwards)
{
    Publisher<long, long> page;
    Recorder first, second;
    first.onEvent = [&] { page.Unsubscribe(&second); };
    page.Subscribe(&first);
    page.Subscribe(&second);
    page.Publish(1, 0);
    EXPECT_EQ(1u, first.events.size());
    EXPECT_TRUE(second.events.empty());
}

} // namespace
