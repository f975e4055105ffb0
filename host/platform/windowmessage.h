#pragma once

// Registered window messages. RegisterWindowMessage gives every distinct
// name its own id (a Qt event type registered once per name); the same name
// always gives the same id. SendMessage delivers synchronously as a
// RegisteredMessageEvent and returns the result the receiver set (0 when
// nobody handled it).
//
// Receiving:
//  - a CDialog overrides OnRegisteredMessage(msg, wParam, lParam);
//  - any other widget class derives from WithRegisteredMessages<QWidget-type>
//    and overrides the same function;
//  - or, without deriving, InstallMessageHandler(widget, msg, handler).

#include "bravik_platform_export.h"
#include "windefs.h"

#include <QEvent>
#include <QObject>

#include <functional>

BRAVIK_PLATFORM_EXPORT UINT RegisterWindowMessage(const char* name);
BRAVIK_PLATFORM_EXPORT bool IsRegisteredWindowMessage(UINT msg);

class BRAVIK_PLATFORM_EXPORT RegisteredMessageEvent : public QEvent
{
public:
    RegisteredMessageEvent(UINT msg, WPARAM wParam, LPARAM lParam);
    ~RegisteredMessageEvent() override;

    UINT Message() const { return m_msg; }
    WPARAM WParam() const { return m_wParam; }
    LPARAM LParam() const { return m_lParam; }
    LRESULT Result() const { return m_result; }
    void SetResult(LRESULT result) { m_result = result; }

    // The registered-message event behind e, or null.
    static RegisteredMessageEvent* From(QEvent* e);

private:
    UINT m_msg;
    WPARAM m_wParam;
    LPARAM m_lParam;
    LRESULT m_result = 0;
};

// Synchronous delivery to target; returns the receiver's result (0 for a null
// target or a message nobody handles).
BRAVIK_PLATFORM_EXPORT LRESULT SendMessage(CWnd* target, UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);

// Handles msg on target with handler (for widgets that do not derive from
// WithRegisteredMessages); the handler lives as long as the widget.
BRAVIK_PLATFORM_EXPORT void InstallMessageHandler(CWnd* target, UINT msg, std::function<LRESULT(WPARAM, LPARAM)> handler);

template <class Base>
class WithRegisteredMessages : public Base
{
public:
    using Base::Base;

protected:
    virtual LRESULT OnRegisteredMessage(UINT /*msg*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return 0; }

    bool event(QEvent* e) override
    {
        if (RegisteredMessageEvent* m = RegisteredMessageEvent::From(e)) {
            m->SetResult(OnRegisteredMessage(m->Message(), m->WParam(), m->LParam()));
            return true;
        }
        return Base::event(e);
    }
};
