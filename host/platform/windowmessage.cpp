#include "windowmessage.h"

#include <QCoreApplication>
#include <QPointer>

#include <map>
#include <mutex>
#include <set>
#include <string>

namespace {

struct Registry
{
    std::mutex mutex;
    std::map<std::string, UINT> byName;
    std::set<UINT> ids;
};

Registry& registry()
{
    static Registry r;
    return r;
}

class MessageHandlerFilter : public QObject
{
public:
    MessageHandlerFilter(QObject* parent, UINT msg, std::function<LRESULT(WPARAM, LPARAM)> handler)
        : QObject(parent), m_msg(msg), m_handler(std::move(handler)) {}

    bool eventFilter(QObject* watched, QEvent* e) override
    {
        if (watched == parent()) {
            if (RegisteredMessageEvent* m = RegisteredMessageEvent::From(e); m && m->Message() == m_msg) {
                m->SetResult(m_handler(m->WParam(), m->LParam()));
                return true;
            }
        }
        return false;
    }

private:
    UINT m_msg;
    std::function<LRESULT(WPARAM, LPARAM)> m_handler;
};

} // namespace

UINT RegisterWindowMessage(const char* name)
{
    if (!name || !*name)
        return 0;
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    const auto it = r.byName.find(name);
    if (it != r.byName.end())
        return it->second;
    const int type = QEvent::registerEventType();
    if (type < 0)
        return 0; // Qt's event-type space is exhausted
    const UINT id = static_cast<UINT>(type);
    r.byName.emplace(name, id);
    r.ids.insert(id);
    return id;
}

bool IsRegisteredWindowMessage(UINT msg)
{
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    return r.ids.count(msg) > 0;
}

RegisteredMessageEvent::RegisteredMessageEvent(UINT msg, WPARAM wParam, LPARAM lParam)
    : QEvent(static_cast<QEvent::Type>(msg)), m_msg(msg), m_wParam(wParam), m_lParam(lParam)
{
}

RegisteredMessageEvent::~RegisteredMessageEvent() = default;

RegisteredMessageEvent* RegisteredMessageEvent::From(QEvent* e)
{
    if (!e || e->type() < QEvent::User)
        return nullptr;
    return dynamic_cast<RegisteredMessageEvent*>(e);
}

LRESULT SendMessage(CWnd* target, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (!target || !IsRegisteredWindowMessage(msg))
        return 0;
    RegisteredMessageEvent e(msg, wParam, lParam);
    QCoreApplication::sendEvent(target, &e);
    return e.Result();
}

void InstallMessageHandler(CWnd* target, UINT msg, std::function<LRESULT(WPARAM, LPARAM)> handler)
{
    if (!target || !handler)
        return;
    target->installEventFilter(new MessageHandlerFilter(target, msg, std::move(handler)));
}
