#pragma once

// Publisher / Subscriber: a page tells whoever listens that something changed,
// without knowing who that is. An event is two values (typically a kind and a
// detail) and an optional text (the changed value as typed), delivered
// synchronously, in subscription order, on the publishing thread.
//
// Either side may be destroyed first: each forgets the other on destruction.
// A subscriber that unsubscribes (or is destroyed) while an event is being
// delivered is not called afterwards; one that subscribes during delivery
// gets the next event only.

#include <algorithm>
#include <vector>

template <class T1, class T2>
class Subscriber;

template <class T1, class T2>
class Publisher
{
public:
    Publisher() = default;
    Publisher(const Publisher&) = delete;
    Publisher& operator=(const Publisher&) = delete;
    ~Publisher()
    {
        for (Subscriber<T1, T2>* s : m_subscribers)
            s->Forget(this);
    }

    // A subscriber is added once, however often it subscribes.
    void Subscribe(Subscriber<T1, T2>* subscriber)
    {
        if (!subscriber || IsSubscribed(subscriber))
            return;
        m_subscribers.push_back(subscriber);
        subscriber->Remember(this);
    }
    void Unsubscribe(Subscriber<T1, T2>* subscriber)
    {
        if (!IsSubscribed(subscriber))
            return;
        Drop(subscriber);
        subscriber->Forget(this);
    }
    bool IsSubscribed(const Subscriber<T1, T2>* subscriber) const
    {
        return std::find(m_subscribers.begin(), m_subscribers.end(), subscriber) != m_subscribers.end();
    }
    int GetSubscriberCount() const { return static_cast<int>(m_subscribers.size()); }

    // text, when given, is valid for the duration of the call only.
    void Publish(T1 first, T2 second, const char* text = "")
    {
        const std::vector<Subscriber<T1, T2>*> now = m_subscribers;
        for (Subscriber<T1, T2>* s : now)
            if (IsSubscribed(s))
                s->OnPublish(this, first, second, text ? text : "");
    }

private:
    friend class Subscriber<T1, T2>;
    void Drop(Subscriber<T1, T2>* subscriber)
    {
        m_subscribers.erase(std::remove(m_subscribers.begin(), m_subscribers.end(), subscriber),
                            m_subscribers.end());
    }

    std::vector<Subscriber<T1, T2>*> m_subscribers;
};

template <class T1, class T2>
class Subscriber
{
public:
    Subscriber() = default;
    Subscriber(const Subscriber&) = delete;
    Subscriber& operator=(const Subscriber&) = delete;
    virtual ~Subscriber()
    {
        for (Publisher<T1, T2>* p : m_publishers)
            p->Drop(this);
    }

    // One event from source.
    virtual void OnPublish(Publisher<T1, T2>* source, T1 first, T2 second, const char* text) = 0;

private:
    friend class Publisher<T1, T2>;
    void Remember(Publisher<T1, T2>* p) { m_publishers.push_back(p); }
    void Forget(Publisher<T1, T2>* p)
    {
        m_publishers.erase(std::remove(m_publishers.begin(), m_publishers.end(), p), m_publishers.end());
    }

    std::vector<Publisher<T1, T2>*> m_publishers;
};
