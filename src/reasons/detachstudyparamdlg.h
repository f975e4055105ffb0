#pragma once

// DetachStudyParamDlg: asks why a study is detached from its exam, then for a
// confirmation. It detaches nothing itself.

#include "bravik_export.h"

#include "reasons/reasonparamdlg.h"

class BRAVIK_EXPORT DetachStudyParamDlg : public ReasonParamDlg
{
    Q_OBJECT
public:
    // accessionNumber is shown after "Accession #: ".
    DetachStudyParamDlg(const CString& headerText, const CString& accessionNumber, CWnd* parent = nullptr);
    ~DetachStudyParamDlg() override;

    BOOL OnInitDialog() override;
    void OnOK() override;
};
