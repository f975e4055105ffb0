#pragma once

// CreateLinkedPatientsRowDlg: one row of the create-linked-patients page: a
// check box that marks the row for removal, the organization in which a
// linked copy of the patient is to be created, and its MRN there. The row
// keeps the organization key and ID of its choice and the MRN text.
//
// Built from IDD_PATIENT_CREATE_LINKED_ROW: construct it while the module's
// resources are current.

#include "bravik_export.h"

#include "cdialog.h"
#include "cstring.h"

#include <memory>

class NormalEditValidator;

class BRAVIK_EXPORT CreateLinkedPatientsRowDlg : public CDialog
{
    Q_OBJECT
public:
    explicit CreateLinkedPatientsRowDlg(CWnd* parent = nullptr);
    ~CreateLinkedPatientsRowDlg() override;

    // Fills the organization list with those in which the user may create
    // patients and takes the first as the row's choice.
    BOOL OnInitDialog() override;

    CComboBox* GetOrganizationBox() const;
    CEdit* GetMRNEdit() const;
    bool IsMarked() const;

    const CString& GetOrganizationKey() const { return m_strOrganizationKey; }
    const CString& GetOrganizationID() const { return m_strOrganizationID; }
    const CString& GetMRN() const { return m_strMRN; }
    void SetMRN(const CString& mrn);
    // Takes the box's current selection as the row's organization.
    void TakeSelection();
    // Exchanges the MRN and trims it; FALSE when it is empty (or too long).
    BOOL SaveMRN();
    // The item datum of the row's choice (the collection's key characters).
    const char* GetOrganizationKeyData() const { return m_pKeyData; }

    // Removes / adds one organization in the row's list.
    void RemoveOrganization(const CString& id);
    void AddOrganization(const CString& id, const char* key);

signals:
    void organizationChosen(CreateLinkedPatientsRowDlg* row, const CString& previousId);

protected:
    void DoDataExchange(CDataExchange* pDX) override;

private:
    void OnSelchangeOrganization();

    std::unique_ptr<NormalEditValidator> m_validator;
    CString m_strOrganizationKey;
    CString m_strOrganizationID;
    CString m_strMRN;
    const char* m_pKeyData = nullptr;
};
