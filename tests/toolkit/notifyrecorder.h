#pragma once

// A parent window that records what its child controls tell it:
// toolkit notifications, registered messages and commands.

#include "cmenu.h"
#include "toolkitnotify.h"
#include "windowmessage.h"

#include <QWidget>

#include <vector>

struct RecordedNotify
{
    UINT idFrom = 0;
    UINT code = 0;
    int item = -2;
    int subItem = -2;
    UINT key = 0;
};

struct RecordedMessage
{
    UINT msg = 0;
    WPARAM wParam = 0;
};

class NotifyRecorder : public WithRegisteredMessages<QWidget>
{
public:
    explicit NotifyRecorder(QWidget* parent = nullptr) : WithRegisteredMessages<QWidget>(parent) { resize(800, 600); }

    std::vector<RecordedNotify> notifies;
    std::vector<RecordedMessage> messages;
    std::vector<UINT> commands;
    LRESULT notifyAnswer = 0;

    std::vector<RecordedNotify> NotifiesOf(UINT code) const
    {
        std::vector<RecordedNotify> out;
        for (const auto& n : notifies)
            if (n.code == code)
                out.push_back(n);
        return out;
    }
    std::vector<WPARAM> MessagesOf(UINT msg) const
    {
        std::vector<WPARAM> out;
        for (const auto& m : messages)
            if (m.msg == msg)
                out.push_back(m.wParam);
        return out;
    }

protected:
    LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam) override
    {
        if (NMHDR* hdr = NotifyHeaderFrom(msg, lParam)) {
            RecordedNotify r;
            r.idFrom = hdr->idFrom;
            r.code = hdr->code;
            if (hdr->code == NM_CLICK || hdr->code == NM_RCLICK || hdr->code == NM_DBLCLK ||
                hdr->code == LVN_COLUMNCLICK) {
                auto* lv = reinterpret_cast<NMLISTVIEW*>(hdr);
                r.item = lv->iItem;
                r.subItem = lv->iSubItem;
            } else {
                r.key = reinterpret_cast<NMKEY*>(hdr)->nVKey;
            }
            notifies.push_back(r);
            return notifyAnswer;
        }
        messages.push_back({msg, wParam});
        return 0;
    }
    bool event(QEvent* e) override
    {
        if (e->type() == CommandEvent::EventType()) {
            commands.push_back(static_cast<CommandEvent*>(e)->Id());
            e->accept();
            return true;
        }
        return WithRegisteredMessages<QWidget>::event(e);
    }
};
