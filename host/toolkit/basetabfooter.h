#pragma once

// BaseTabFooter: the band across the bottom of a framed dialog, holding its
// command buttons. Create() makes the window and then the buttons
// (CreateButtons, which a derived footer extends); every resize lays them out
// again (RecalcLayout with the client rectangle). A click on any of its
// buttons arrives at OnCommand(id); the base reports it as command(id).

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"
#include "xpbutton.h"

#include <QWidget>

class BRAVIK_TOOLKIT_EXPORT BaseTabFooter : public QWidget, public WindowOps<BaseTabFooter>
{
    Q_OBJECT
public:
    static constexpr int DEFAULT_HEIGHT = 44;
    // Space between the buttons and from the right edge.
    static constexpr int BUTTON_MARGIN = 7;

    BaseTabFooter();
    ~BaseTabFooter() override;

    // Makes the footer a child of parent (hidden until the frame shows it),
    // then its buttons. FALSE when the buttons could not be made.
    virtual BOOL Create(CWnd* parent, UINT id = 0);
    bool IsCreated() const { return m_created; }

    void SetHeight(int height) { m_height = height; }
    int GetHeight() const { return m_height; }

    // The standard button (command IDOK), made by CreateButtons.
    XPButton& GetOKButton() { return m_btnOK; }
    const XPButton& GetOKButton() const { return m_btnOK; }

    // Places the buttons inside the client rectangle. The base puts the OK
    // button at the right, BUTTON_MARGIN from the edge, centred vertically.
    virtual void RecalcLayout(const CRect& client);

signals:
    void command(int id);

protected:
    // Makes the standard OK button with the text "OK"; derived footers call it
    // first, then add their own.
    virtual BOOL CreateButtons();
    // Connects a button's clicks to OnCommand.
    void RouteCommands(XPButton& button);
    virtual void OnCommand(UINT id);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    XPButton m_btnOK;

private:
    void onButtonCommand(int id) { OnCommand(static_cast<UINT>(id)); }

    bool m_created = false;
    int m_height = DEFAULT_HEIGHT;
};
