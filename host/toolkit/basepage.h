#pragma once

// BasePage: one page of a tabbed frame. It paints the page background and
// turns every resize into OnSize(type, cx, cy), which derived pages extend to
// lay out what they hold. OnSetActive / OnKillActive tell a page it is about
// to be shown or left; OnKillActive may refuse (FALSE keeps the page).

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QWidget>

constexpr UINT SIZE_RESTORED = 0;

class BRAVIK_TOOLKIT_EXPORT BasePage : public QWidget, public WindowOps<BasePage>
{
    Q_OBJECT
public:
    BasePage();
    ~BasePage() override;

    // A child of parent, placed at rect (left as it is when rect is empty).
    virtual BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0);
    bool IsCreated() const { return m_created; }

    void SetTitle(const CString& title) { m_title = title; }
    const CString& GetTitle() const { return m_title; }

    virtual BOOL OnSetActive();
    virtual BOOL OnKillActive();

    // The page was shown (show TRUE) or hidden; status is 0 when the page
    // itself was shown or hidden rather than its window.
    virtual void OnShowWindow(BOOL show, UINT status);

    // The size the last OnSize reported.
    CSize GetLastSize() const { return m_lastSize; }

protected:
    virtual void OnSize(UINT type, int cx, int cy);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool m_created = false;
    CString m_title;
    CSize m_lastSize;
};
