#pragma once

// MergePatientsDlg: the modal dialog in which the user reviews two patient
// records side by side, chooses field by field what the surviving record
// keeps, and confirms the merge. The dialog owns the header, the footer and
// the panel the creator built for it; the merge itself is the caller's.
// Its "Merge Patients" button follows the panel's complete flag, which the
// panel reports through the registered message RWM_TOGGLEMERGE.

#include "bravik_export.h"

#include "ostreldlg.h"

#include <vector>

class DialogFooter;
class DialogHeader;
class LinkedPatientInfo;
class MergePatientsDlgImpl;
class PatientDetailRecord;

class XPButton;

// Widens a footer button to its text (the longer affirmative labels).
BRAVIK_EXPORT void FitFooterButton(XPButton& button);

class BRAVIK_EXPORT MergePatientsDlg : public OstrelDlg
{
    Q_OBJECT
public:
    // Takes ownership of header, footer and panel.
    MergePatientsDlg(DialogHeader* header, DialogFooter* footer, MergePatientsDlgImpl* panel,
                     CWnd* parent = nullptr);
    ~MergePatientsDlg() override;

    BOOL OnInitDialog() override;
    // Asks for a confirmation; Yes ends the dialog with IDOK.
    void OnOK() override;
    // Every end (OK or Cancel) closes the panel, which assembles its results.
    void done(int result) override;

    DialogHeader* GetHeader() const { return m_pHeader; }
    DialogFooter* GetFooter() const { return m_pFooter; }
    MergePatientsDlgImpl* GetPanel() const { return m_pImpl; }

    // The panel's results, valid once the dialog has ended.
    const PatientDetailRecord& GetTargetPatient() const;
    const CString& GetSourcePatientKey() const;
    const std::vector<LinkedPatientInfo*>& GetLinkedPatientSelection() const;

    static DialogTemplate MakeTemplate();

protected:
    LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;
    // Enables the merge button when the panel is complete; 1 when handled.
    LRESULT OnToggleMerge(WPARAM wParam, LPARAM lParam);

private:
    void AuditPatients();

    DialogHeader* m_pHeader;
    DialogFooter* m_pFooter;
    MergePatientsDlgImpl* m_pImpl;
};
