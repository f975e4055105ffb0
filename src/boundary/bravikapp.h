#pragma once

// The module's application object: prepares the module when the host starts
// it (the toolkit's resources, the dialog manager on dense screens) and
// answers the look-and-feel questions the toolkit asks its application.
//
// The module holds one (BravikApp()); it registers itself with the platform
// when the module is loaded and the host starts it with AfxStartModules()
// once its QApplication exists.

#include "bravik_export.h"

#include "cstring.h"
#include "uiwinapp.h"

class CDlgOccManager;

class BRAVIK_EXPORT CBravikApp : public UIWinApp
{
public:
    CBravikApp();
    ~CBravikApp() override;

    // Always 1: module start never fails. On screens above 96 pixels per inch
    // it installs the dialog manager that rescales dialog fonts.
    BOOL InitInstance() override;
    int ExitInstance() override;

    // The question the host asks before its own unlink command.
    static CString GetUnlinkPatientConfirmationMsg();

    // The dialog manager InitInstance installed; null on standard screens.
    CDlgOccManager* GetDlgOccManager() const { return m_pDlgOccManager; }

    UINT GetToolTipDisplayTime() const override;
    DWORD UseFlatButtons() const override;
    DWORD UseGradientHeaders() const override;
    DWORD UseStripedLists() const override;
    DWORD UseHotTracking() const override;
    DWORD UseKeyboardCues() const override;
    DWORD UseHeaderIcons() const override;

private:
    CDlgOccManager* m_pDlgOccManager = nullptr;
};

// The module's own application object.
BRAVIK_EXPORT CBravikApp& BravikApp();
