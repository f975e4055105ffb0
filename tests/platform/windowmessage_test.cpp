#include "cdialog.h"
#include "testdialogs.h"
#include "windowmessage.h"

#include <gtest/gtest.h>

namespace {

const char* const kToggleMerge = "RWM_TOGGLEMERGE-{1525B374-D0D8-4dde-B1CB-68DF59DBCE7A}";

class ReceivingDlg : public CDialog
{
public:
    ReceivingDlg() : CDialog(ReasonPanelTemplate()) {}
    UINT m_msg = 0;
    WPARAM m_w = 0;
    LPARAM m_l = 0;
    int m_calls = 0;

protected:
    LRESULT OnRegisteredMessage(UINT msg, WPARAM w, LPARAM l) override
    {
        ++m_calls;
        m_msg = msg;
        m_w = w;
        m_l = l;
        return 42;
    }
};

class ReceivingWidget : public WithRegisteredMessages<QWidget>
{
public:
    LRESULT m_sum = 0;

protected:
    LRESULT OnRegisteredMessage(UINT, WPARAM w, LPARAM l) override
    {
        m_sum = static_cast<LRESULT>(w) + l;
        return m_sum;
    }
};

} // namespace

TEST(RegisteredMessage, SameNameSameIdOtherNameOtherId)
{
    const UINT a = RegisterWindowMessage(kToggleMerge);
    const UINT b = RegisterWindowMessage(kToggleMerge);
    const UINT c = RegisterWindowMessage("RWM_SOMETHING_ELSE");
    EXPECT_NE(0u, a);
    EXPECT_EQ(a, b);
    EXPECT_NE(a, c);
    EXPECT_TRUE(IsRegisteredWindowMessage(a));
    EXPECT_FALSE(IsRegisteredWindowMessage(12345));
    EXPECT_EQ(0u, RegisterWindowMessage(""));
}

TEST(RegisteredMessage, SendMessageDeliversSynchronouslyAndReturnsTheResult)
{
    const UINT msg = RegisterWindowMessage(kToggleMerge);
    ReceivingDlg dlg;
    EXPECT_EQ(42, SendMessage(&dlg, msg, 7, -3));
    EXPECT_EQ(1, dlg.m_calls);
    EXPECT_EQ(msg, dlg.m_msg);
    EXPECT_EQ(7u, dlg.m_w);
    EXPECT_EQ(-3, dlg.m_l);
}

TEST(RegisteredMessage, MixinAndHandlerReceiveOnOtherWidgets)
{
    const UINT msg = RegisterWindowMessage("RWM_SUM");
    ReceivingWidget w;
    EXPECT_EQ(12, SendMessage(&w, msg, 5, 7));
    EXPECT_EQ(12, w.m_sum);

    QWidget plain;
    WPARAM seen = 0;
    InstallMessageHandler(&plain, msg, [&](WPARAM wp, LPARAM) {
        seen = wp;
        return LRESULT{99};
    });
    EXPECT_EQ(99, SendMessage(&plain, msg, 3, 0));
    EXPECT_EQ(3u, seen);
    // Another message is not the handler's.
    EXPECT_EQ(0, SendMessage(&plain, RegisterWindowMessage("RWM_OTHER"), 1, 1));
}

TEST(RegisteredMessage, NobodyListeningGivesZero)
{
    QWidget plain;
    EXPECT_EQ(0, SendMessage(&plain, RegisterWindowMessage(kToggleMerge), 1, 2));
    EXPECT_EQ(0, SendMessage(nullptr, RegisterWindowMessage(kToggleMerge), 1, 2));
    EXPECT_EQ(0, SendMessage(&plain, 12345, 1, 2)); // not a registered message
}
