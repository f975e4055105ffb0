#pragma once

// PatientDeleteParamDlg: asks why a patient is deleted, for a confirmation
// and, where the host allows it, whether the deletion is permanent.

#include "bravik_export.h"

#include "reasons/reasonparamdlg.h"

class BRAVIK_EXPORT PatientDeleteParamDlg : public ReasonParamDlg
{
    Q_OBJECT
public:
    // mrn is shown after "MRN: ".
    PatientDeleteParamDlg(const CString& headerText, const CString& mrn, bool permanentDeleteAllowed,
                          CWnd* parent = nullptr);
    ~PatientDeleteParamDlg() override;

    int GetPermanentDelete() const;

    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    bool m_bPermanentDeleteAllowed;
};
