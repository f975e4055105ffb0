#pragma once

// CLinkPatientImpl: the linked records panel. It lists the records linked to
// the edited patient (the federated organization's left out), lets the user
// correct a record's MRN in place (a click on the MRN cell) and remove a
// link. It only records the user's intent: the patient dialog unlinks and
// saves.
//
// Built from IDD_PATIENT_LINKS: construct it while the module's resources
// are current.

#include "bravik_export.h"

#include "cdialog.h"
#include "cstring.h"
#include "publisher.h"

#include <ace/SString.h>

#include <vector>

class CEdit;
class ListCtrlEx;
class PatientDetailRecord;

class BRAVIK_EXPORT CLinkPatientImpl : public CDialog
{
    Q_OBJECT
public:
    enum eCOLUMN
    {
        COL_FIRST_NAME,
        COL_LAST_NAME,
        COL_MRN,
        COL_ORGANIZATION
    };

    // patient: the dialog's record of the edited patient (its key and
    // organization key say whose links are shown; its MRN follows an edit of
    // its own row). Not owned.
    explicit CLinkPatientImpl(PatientDetailRecord* patient, CWnd* parent = nullptr);
    ~CLinkPatientImpl() override;

    BOOL OnInitDialog() override;
    // Trims every linked record's MRN; FALSE with "MRN cannot be empty." on
    // the first empty one.
    BOOL ValidateData();

    bool HasRemovedLink() const { return m_bRemoved; }
    // The record whose link the user removed; null when none.
    PatientDetailRecord* GetRemovedRecord() const { return m_pRemoved; }
    bool HasIdentityChanged() const { return m_bIdentityChanged; }
    // Every record GetLinkedPatients returned (shown or not), the panel's own.
    const std::vector<PatientDetailRecord*>& GetLinkedRecords() const { return m_linked; }

    ListCtrlEx* GetList() const { return m_pList; }
    CEdit* GetMRNEditor() const { return m_pEditor; }
    Publisher<long, long>& GetPublisher() { return m_publisher; }

    void OnRemoveFromLink();
    // Opens the in-place editor over a row's MRN cell.
    void BeginEditMRN(int row);
    void OnChangeMRN();
    // keep false: the edit is dropped and the cell keeps its text.
    void EndEditMRN(bool keep = true);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void CreateList();
    void Fill();
    void UpdateRemoveButton();
    bool IsPatientItself(const PatientDetailRecord* record) const;
    PatientDetailRecord* RecordAt(int row) const;

    PatientDetailRecord* m_pPatient;
    ACE_CString m_patientKey;
    ACE_CString m_organizationKey;
    std::vector<PatientDetailRecord*> m_linked;
    PatientDetailRecord* m_pRemoved = nullptr;
    bool m_bRemoved = false;
    bool m_bIdentityChanged = false;
    // The MRN cell as it was when its edit began, and whether the identity had changed.
    CString m_strEditOriginal;
    bool m_bIdentityChangedBefore = false;
    ListCtrlEx* m_pList = nullptr;
    CEdit* m_pEditor = nullptr;
    int m_nEditRow = -1;
    QFont m_font;
    Publisher<long, long> m_publisher;
};
