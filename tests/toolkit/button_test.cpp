#include "notifyrecorder.h"

#include "button.h"

#include <gtest/gtest.h>

#include <QTest>

namespace {

TEST(ButtonTest, AClickSendsTheCommandToTheParent)
{
    NotifyRecorder parent;
    auto* b = new Button();
    b->Create("search", 0, CRect(2, 2, 80, 26), &parent, 4711);
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    EXPECT_EQ(CString("search"), b->GetWindowText());
    QTest::mouseClick(b, Qt::LeftButton);
    EXPECT_EQ((std::vector<UINT>{4711u}), parent.commands);
    const CSize ideal = b->GetIdealSize();
    EXPECT_GT(ideal.cx, 0);
    EXPECT_GT(ideal.cy, 0);
}

TEST(ButtonTest, KeysAreReportedAndTabIsTheParentsWhenItAnswers)
{
    NotifyRecorder parent;
    auto* b = new Button();
    b->Create("search", 0, CRect(2, 2, 80, 26), &parent, 12);
    auto* other = new Button();
    other->Create("other", 0, CRect(100, 2, 180, 26), &parent, 13);
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    parent.activateWindow();
    b->setFocus();
    QTest::keyClick(b, Qt::Key_Tab);
    ASSERT_EQ(1u, parent.NotifiesOf(Button::BNM_KEYDOWN).size());
    EXPECT_EQ(9u, parent.NotifiesOf(Button::BNM_KEYDOWN)[0].key);
    EXPECT_EQ(12u, parent.NotifiesOf(Button::BNM_KEYDOWN)[0].idFrom);
    // Nobody took it: the focus moved on as usual.
    EXPECT_EQ(other, QApplication::focusWidget());
    parent.notifyAnswer = 1;
    b->setFocus();
    QTest::keyClick(b, Qt::Key_Tab);
    EXPECT_EQ(b, QApplication::focusWidget());
    EXPECT_EQ(2u, parent.NotifiesOf(Button::BNM_KEYDOWN).size());
}

} // namespace
