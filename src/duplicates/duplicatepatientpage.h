#pragma once

// CDuplicatePatientPage: the duplicate patient worklist. A "search" button,
// a strip with the result count and the page's message line, and the list of
// merge/link candidates below. The context menu of the list offers Merge,
// Link and Ignore on one selected pair; every action that changes the
// archive is followed by a fresh search, so a pair that was just merged,
// linked or ignored never stays on show.

#include "bravik_export.h"

#include "basepage.h"
#include "cmenu.h"
#include "crect.h"
#include "cstring.h"

#include <ace/SString.h>

#include <vector>

class Button;
class CDuplicatePatientList;
class LinkedPatientInfo;
class PatientDetailRecord;
class QPainter;

class BRAVIK_EXPORT CDuplicatePatientPage : public BasePage
{
    Q_OBJECT
public:
    // The page always asks for at most this many pairs.
    static const int ROW_LIMIT;

    CDuplicatePatientPage();
    ~CDuplicatePatientPage() override;

    BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0) override;

    // The search: criteria to query, query to rows, result count and message.
    void DisplayItems();

    CDuplicatePatientList* GetList() const { return m_list; }
    Button* GetSearchButton() const { return m_searchButton; }
    const CString& GetResultsText() const { return m_resultsText; }
    // The page's message line (an empty text clears it).
    void SetMessageLine(const CString& text);
    const CString& GetMessageLine() const { return m_message; }
    const CMenu& GetMenu() const { return m_menu; }
    const CRect& GetResultsRect() const { return m_resultsRect; }

    void OnShowWindow(BOOL show, UINT status) override;

signals:
    // A merge, link or ignore started here failed: the module's error text
    // with the reason in place. The page shows no message box for it; the
    // host decides where the user reads it.
    void actionFailed(const QString& message);

protected:
    int OnCreate();
    void OnSize(UINT type, int cx, int cy) override;
    void OnBtnSearch();
    LRESULT OnHeaderLastTabItem(WPARAM wParam, LPARAM lParam);
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL OnCommand(UINT id);
    void HandleEraseBkgnd(QPainter& dc);
    void DrawTotalResultsMsg(QPainter& dc);
    bool PrepareMenu();
    void UpdateTotalNumberOfResults(int shown, int total);
    void CreateDuplicatePatientMenu();

    void OnMergeMenuClick();
    void OnLinkMenuClick();
    void OnIgnoreMenuClick();
    // Tells the host what failed: the text `formatId` with the reason in place.
    void ReportActionFailure(UINT formatId, const CString& reason);
    void ReportActionFailure(UINT formatId, int result);

    // The merge and link dialogs, through their creators. Each returns the
    // dialog's end code (1: the user confirmed) and what the dialog chose;
    // the linked-record pairings come back as copies the caller frees.
    virtual int DisplayMergeDialog(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey,
                                   ACE_CString& sourcePatientKey, PatientDetailRecord& target,
                                   std::vector<LinkedPatientInfo*>& linkedPatients);
    virtual int DisplayLinkDialog(const ACE_CString& firstPatientKey, const ACE_CString& secondPatientKey,
                                  ACE_CString& targetPatientKey, ACE_CString& targetOrganizationKey,
                                  ACE_CString& linkPatientKey, ACE_CString& linkOrganizationKey);

    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    Button* m_searchButton = nullptr;
    CDuplicatePatientList* m_list = nullptr;
    CRect m_resultsRect;
    CString m_resultsText;
    CString m_message;
    CMenu m_menu;
    int m_rightClickedRow = -1;
};
