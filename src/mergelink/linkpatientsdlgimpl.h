#pragma once

// LinkPatientsDlgImpl: the link dialog's panel, a read-only comparison of the
// two patient records (first patient in column 1, second in column 2) in
// three lists: the column titles, nineteen field rows and the address. It
// also holds the four keys the caller links with.

#include "bravik_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "patientdetailrecord.h"

#include <QWidget>

class ComparisonListCtrl;

class BRAVIK_EXPORT LinkPatientsDlgImpl : public QWidget
{
    Q_OBJECT
public:
    static constexpr int COMPARE_ROW_COUNT = 19;

    // The records are the creator's; they must outlive the panel.
    LinkPatientsDlgImpl(const PatientDetailRecord* firstPatient, const PatientDetailRecord* secondPatient);
    ~LinkPatientsDlgImpl() override;

    // Creates the window inside parent and fills the lists; FALSE when a
    // list could not be made (the lists made so far stay).
    BOOL Create(const CRect& rect, CWnd* parent);

    const CString& GetTargetPatientKey() const { return m_strTargetPatientKey; }
    const CString& GetLinkPatientKey() const { return m_strLinkPatientKey; }
    const CString& GetTargetPatientOrgKey() const { return m_strTargetPatientOrgKey; }
    const CString& GetLinkPatientOrgKey() const { return m_strLinkPatientOrgKey; }

    ComparisonListCtrl* GetHeaderList() const { return m_pHeaderList; }
    ComparisonListCtrl* GetCompareList() const { return m_pCompareList; }
    ComparisonListCtrl* GetAddressList() const { return m_pAddressList; }
    int GetGap() const { return m_nGap; }

    void RecalcLayout(int cx, int cy);

protected:
    void resizeEvent(QResizeEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    bool CreateHeaderList();
    bool CreateCompareList();
    bool CreateAddressList();

    ComparisonListCtrl* m_pHeaderList = nullptr;
    ComparisonListCtrl* m_pCompareList = nullptr;
    ComparisonListCtrl* m_pAddressList = nullptr;
    const PatientDetailRecord* m_pFirstPatient;
    const PatientDetailRecord* m_pSecondPatient;
    PatientDetailRecord* m_pPatient;
    CString m_strTargetPatientKey;
    CString m_strLinkPatientKey;
    CString m_strTargetPatientOrgKey;
    CString m_strLinkPatientOrgKey;
    int m_nFlag;
    int m_nGap = 2;
};
