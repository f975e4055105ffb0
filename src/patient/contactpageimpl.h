#pragma once

// ContactPageImpl: the contact information form: address, state or
// province, country, telephone numbers and e-mail. It copies the record's
// texts at construction and writes them back (trimmed) when the dialog
// validates its pages; it never refuses a save. In create mode the dialog
// asks it to take the country and state from the patient's organization.
//
// Built from IDD_PATIENT_CONTACT: construct it while the module's resources
// are current.

#include "bravik_export.h"

#include "cdialog.h"
#include "cstring.h"

#include <ace/SString.h>

#include <memory>
#include <vector>

class ComboBox;
class NormalEditValidator;
class PatientDetailRecord;

class BRAVIK_EXPORT ContactPageImpl : public CDialog
{
    Q_OBJECT
public:
    ContactPageImpl(PatientDetailRecord* record, bool editMode, CWnd* parent = nullptr);
    ~ContactPageImpl() override;

    BOOL OnInitDialog() override;
    // Saves the page into the record; TRUE (this page never refuses) unless
    // a text is longer than its field allows.
    BOOL ValidateData();
    // Create mode only: the organization's default country and state.
    void ApplyOrganizationDefaults(const ACE_CString& organizationKey);

    void OnSelchangeCountry();

protected:
    void DoDataExchange(CDataExchange* pDX) override;

private:
    ComboBox* Countries() const;
    ComboBox* States() const;
    ACE_CString SelectedCode(ComboBox* box) const;

    bool m_bEditMode;
    PatientDetailRecord* m_pRecord;
    std::vector<std::unique_ptr<NormalEditValidator>> m_validators;
    CString m_strAddress1;
    CString m_strAddress2;
    CString m_strCity;
    CString m_strPostalCode;
    CString m_strHomeNumber;
    CString m_strWorkNumber;
    CString m_strEmail;
};
