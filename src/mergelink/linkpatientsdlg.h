#pragma once

// LinkPatientsDlg: shows two patient records side by side, read-only, so the
// user can confirm they belong to the same person before the caller links
// them. It links nothing itself; the creator reads the four keys back.

#include "bravik_export.h"

#include "controlparentmodaldlg.h"
#include "cstring.h"

class DialogFooter;
class DialogHeader;
class HFDlg;
class LinkPatientsDlgImpl;
class PatientDetailRecord;

class BRAVIK_EXPORT LinkPatientsDlg : public ControlParentModalDlg
{
    Q_OBJECT
public:
    // The records are the caller's and must outlive the dialog.
    LinkPatientsDlg(const CString& headerText, const PatientDetailRecord* firstPatient,
                    const PatientDetailRecord* secondPatient, CWnd* parent = nullptr);
    ~LinkPatientsDlg() override;

    BOOL OnInitDialog() override;

    const CString& GetTargetPatientKey() const;
    const CString& GetTargetPatientOrgKey() const;
    const CString& GetLinkPatientKey() const;
    const CString& GetLinkPatientOrgKey() const;

    DialogHeader* GetHeader() const { return m_pHeader; }
    DialogFooter* GetFooter() const { return m_pFooter; }
    HFDlg* GetFrame() const { return m_pFrame; }
    LinkPatientsDlgImpl* GetPanel() const { return m_pImpl; }

    static DialogTemplate MakeTemplate();

protected:
    void OnSize(UINT type, int cx, int cy) override;

private:
    void AuditPatients();

    DialogHeader* m_pHeader;
    DialogFooter* m_pFooter;
    HFDlg* m_pFrame;
    LinkPatientsDlgImpl* m_pImpl;
};
