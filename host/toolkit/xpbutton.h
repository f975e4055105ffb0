#pragma once

// XPButton: the toolkit's flat push button, painted in the colour scheme's
// button colours. It carries a command id (its control id) and reports a
// click as command(id), so a band that owns several buttons routes them
// through one handler, as WM_COMMAND does.
//
// It may be held by value: Create() gives it its parent, text, id and size.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QPushButton>

class BRAVIK_TOOLKIT_EXPORT XPButton : public QPushButton, public WindowOps<XPButton>
{
    Q_OBJECT
public:
    // The size a button gets when Create is given an empty rectangle.
    static constexpr int DEFAULT_WIDTH = 80;
    static constexpr int DEFAULT_HEIGHT = 26;

    explicit XPButton(QWidget* parent = nullptr);
    ~XPButton() override;

    // Makes the button a child of parent with the command id and the text; an
    // empty rect gives the default size at (0, 0). Always TRUE.
    BOOL Create(const CString& text, CWnd* parent, UINT id, const CRect& rect = CRect());
    bool IsCreated() const { return m_created; }

    void SetWindowText(const CString& text);
    CString GetWindowText() const;
    void SetFont(const QFont& font) { setFont(font); }

    QSize sizeHint() const override;

signals:
    void command(int id);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_created = false;
};
