#pragma once

// PatientDlg::Header: the patient dialog's header band. Beside the module
// icon it shows the patient's summary in up to three lines: "MRN: ..." (or
// "N/A"), the name with sex and date of birth, and the VIP status line when
// the site shows VIP status.

#include "patient/patientdlg.h"

#include "basetabheader.h"

class BRAVIK_EXPORT PatientDlg::Header : public BaseTabHeader
{
    Q_OBJECT
public:
    Header();
    ~Header() override;

    // Recomputes the three lines from the record.
    void SetSummary(const PatientDetailRecord& record);
    const CString& GetPatientIDText() const { return m_strPatientID; }
    const CString& GetDemographicsText() const { return m_strDemographics; }
    const CString& GetVIPText() const { return m_strVIP; }

protected:
    void OnPaint(QPainter& dc) override;

private:
    int m_nTextLeft = 0;
    int m_nLineGap = 2;
    CString m_strPatientID;
    CString m_strDemographics;
    CString m_strVIP;
};

// PatientDlg::Footer: OK and Cancel. OK runs the dialog's OnOK; Cancel ends
// the dialog at once.
#include "boundary/dialogfooter.h"

class BRAVIK_EXPORT PatientDlg::Footer : public DialogFooter
{
    Q_OBJECT
public:
    explicit Footer(PatientDlg* owner);
    ~Footer() override;

protected:
    void OnOK() override;
    // The band in the dialog's own colour, so the footer reads as part of it.
    void paintEvent(QPaintEvent* event) override;

private:
    PatientDlg* m_pDlg;
};
