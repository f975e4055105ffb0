#pragma once

// TabButton: one tab of a tabbed frame. It is painted with a selected and an
// unselected background and text colour, which its owner sets (a header
// that uses a disabled tab as a caption gives both states the same colours).
// A disabled tab keeps its text colour: it reads as a caption, not as a
// greyed-out control. Its size follows its text; GetSize() reports it.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QAbstractButton>

class BRAVIK_TOOLKIT_EXPORT TabButton : public QAbstractButton, public WindowOps<TabButton>
{
    Q_OBJECT
public:
    explicit TabButton(QWidget* parent = nullptr);
    ~TabButton() override;

    // A child of parent with the text and command id, sized to its text.
    BOOL Create(const CString& text, CWnd* parent, UINT id = 0);
    bool IsCreated() const { return m_created; }

    void SetWindowText(const CString& text);
    CString GetWindowText() const;

    void SetBkColors(COLORREF selected, COLORREF unselected);
    void SetTextColors(COLORREF selected, COLORREF unselected);
    COLORREF GetSelectedBkColor() const { return m_bkSelected; }
    COLORREF GetUnselectedBkColor() const { return m_bkUnselected; }
    COLORREF GetSelectedTextColor() const { return m_textSelected; }
    COLORREF GetUnselectedTextColor() const { return m_textUnselected; }

    void SetSelected(bool selected);
    bool IsSelected() const { return m_selected; }

    // Re-sizes the tab to its text and repaints it (after colours or text changed).
    void Refresh();
    // The tab's own size, as it lays itself out.
    CSize GetSize() const;

    QSize sizeHint() const override;

signals:
    void command(int id);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_created = false;
    bool m_selected = false;
    COLORREF m_bkSelected;
    COLORREF m_bkUnselected;
    COLORREF m_textSelected;
    COLORREF m_textUnselected;
};
