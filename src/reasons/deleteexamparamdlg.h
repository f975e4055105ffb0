#pragma once

// DeleteExamParamDlg: asks why an exam is deleted (with "Delete Studies"
// when the product allows it) or cancelled. It calls no service.

#include "bravik_export.h"

#include "boundary/edlgcode.h"
#include "reasons/reasonparamdlg.h"

class BRAVIK_EXPORT DeleteExamParamDlg : public ReasonParamDlg
{
    Q_OBJECT
public:
    // accessionNumber is shown after "Accession #: "; studiesDeletable FALSE
    // shows "Delete Studies" disabled.
    DeleteExamParamDlg(const CString& headerText, const CString& accessionNumber, TavCreator::eDLGCODE mode,
                       bool studiesDeletable, CWnd* parent = nullptr);
    ~DeleteExamParamDlg() override;

    TavCreator::eDLGCODE GetMode() const { return m_eMode; }

    // The initial state of "Delete Studies" (before the run), and its state after.
    void SetDeleteStudiesFlg(int flag);
    int GetDeleteStudiesFlg() const;

    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    TavCreator::eDLGCODE m_eMode;
    bool m_bStudiesDeletable;
};
