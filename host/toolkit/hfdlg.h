#pragma once

// HFDlg: the header-footer frame. A window that stacks a header band, a body
// and a footer band, and keeps them so on every resize: the header takes its
// height at the top, the footer its height at the bottom, the body the rest.
// The frame does not own the header, footer or body it is given (the dialog
// that made them does); it only parents and places them.
//
//   m_pFrame->Create(this, clientRect);
//   m_pFrame->SetHeader(m_pHeader);   // creates the header's window if needed
//   m_pImpl->Create(m_pFrame);        // the body is any child window
//   m_pFrame->SetBody(m_pImpl);
//   m_pFrame->SetFooter(m_pFooter);
//   m_pFrame->ShowWindow(SW_SHOW);
//   m_pFrame->RecalcLayout();

#include "bravik_toolkit_export.h"

#include "basetabfooter.h"
#include "basetabheader.h"
#include "crect.h"
#include "cwnd.h"
#include "windefs.h"

#include <QPointer>
#include <QWidget>

class BRAVIK_TOOLKIT_EXPORT HFDlg : public QWidget, public WindowOps<HFDlg>
{
    Q_OBJECT
public:
    HFDlg();
    ~HFDlg() override;

    // A child of parent covering rect. Hidden until shown.
    virtual BOOL Create(CWnd* parent, const CRect& rect, UINT id = 0);
    bool IsCreated() const { return m_created; }

    // Each creates the piece's window inside the frame when it has none yet.
    void SetHeader(BaseTabHeader* header);
    void SetFooter(BaseTabFooter* footer);
    void SetBody(QWidget* body);
    BaseTabHeader* GetHeader() const { return m_header; }
    BaseTabFooter* GetFooter() const { return m_footer; }
    QWidget* GetBody() const { return m_body; }

    // Heights of the bands as laid out (0 for a missing band).
    int GetHeaderHeight() const;
    int GetFooterHeight() const;
    // The body's rectangle in the frame's client coordinates.
    virtual CRect GetBodyRect() const;

    virtual void RecalcLayout();

    // Moves w to r and, when w is not on screen yet, lets it lay itself out
    // at once: a hidden window learns its new size now, as it would from the
    // window system, not only when it is first shown.
    static void PlaceWindow(QWidget* w, const QRect& r);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool m_created = false;
    QPointer<BaseTabHeader> m_header;
    QPointer<BaseTabFooter> m_footer;
    QPointer<QWidget> m_body;
};
