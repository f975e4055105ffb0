#pragma once

// MergePatientsDlgImpl: the merge dialog's panel. Four stacked comparison
// lists show the two patient records side by side (column 1 is patient
// record 1, column 2 patient record 2): the header list with "Select All:",
// one row per demographic field, one row for the whole address, and one row
// per organization where either patient has a linked record. The user picks
// a value per row; when every choice is made the panel tells the dialog
// (RWM_TOGGLEMERGE), which then enables its merge button. When the panel
// closes it assembles the surviving record, the key of the record merged
// away, and the pairing of the linked records.

#include "bravik_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "patientdetailrecord.h"
#include "windowmessage.h"

#include <ace/SString.h>

#include <QWidget>

#include <vector>

class ComparisonListCtrl;
class LinkedMergeListCtrl;
class LinkedPatientInfo;
class ListCtrlEx;
class QPainter;

class BRAVIK_EXPORT MergePatientsDlgImpl : public WithRegisteredMessages<QWidget>
{
    Q_OBJECT
public:
    // The field list's rows.
    enum eFIELDROW
    {
        ROW_MRN = 0,
        ROW_LAST_NAME,
        ROW_FIRST_NAME,
        ROW_MIDDLE_NAME,
        ROW_SEX,
        ROW_GENDER,
        ROW_DOB,
        ROW_DOD,
        ROW_GID,
        ROW_MAIDEN_NAME,
        ROW_WORK_PHONE,
        ROW_HOME_PHONE,
        ROW_EMAIL,
        ROW_TITLE,
        ROW_SUFFIX,
        ROW_ALIAS_FIRST,
        ROW_ALIAS_MIDDLE,
        ROW_ALIAS_LAST,
        FIELD_ROW_COUNT
    };
    // The header list's "Select All:" row.
    static constexpr int SELECT_ALL_ROW = 1;

    // The message the panel sends its dialog after every choice.
    static const char* const TOGGLE_MERGE_MESSAGE_NAME;
    static UINT ToggleMergeMessage();

    // linkedRecords1/2: each patient's link group, the patient first (the
    // caller's vectors, which must outlive the panel); blockedOrganizations:
    // IDs of organizations that take no demographics update (the caller's).
    MergePatientsDlgImpl(const std::vector<PatientDetailRecord*>& linkedRecords1,
                         const std::vector<PatientDetailRecord*>& linkedRecords2,
                         const std::vector<ACE_CString>* blockedOrganizations, int parentValue = 0);
    ~MergePatientsDlgImpl() override;

    // Creates the window and its lists, fills them and applies the default
    // choices. FALSE when a list could not be made (the panel stays empty).
    BOOL Create(const CRect& rect, CWnd* parent);
    bool IsCreated() const { return m_bCreated; }

    // Every row that needs a choice has one (recomputed after each click).
    bool IsComplete() const { return m_bComplete; }

    // The closing step: assembles the target, the source key and the linked
    // choices. Runs once, when the panel's window goes (the dialog ends).
    void OnDestroy();

    const PatientDetailRecord& GetTargetPatient() const { return m_target; }
    const CString& GetSourcePatientKey() const { return m_strSourcePatientKey; }
    const std::vector<LinkedPatientInfo*>& GetLinkedPatientSelection() const { return m_linkedSelection; }

    const PatientDetailRecord* GetRecord1() const { return m_pRecord1; }
    const PatientDetailRecord* GetRecord2() const { return m_pRecord2; }
    ComparisonListCtrl* GetHeaderList() const { return m_pHeaderList; }
    ComparisonListCtrl* GetFieldList() const { return m_pFieldList; }
    ComparisonListCtrl* GetAddressList() const { return m_pAddressList; }
    LinkedMergeListCtrl* GetLinkedList() const { return m_pLinkedList; }
    const std::vector<ACE_CString>& GetLinkedOrganizations() const { return m_linkedOrganizations; }
    int GetParentValue() const { return m_nParentValue; }

    // The texts the note area under the lists paints, in order: the red
    // "Note:", the note, and for blocked organizations the red "!" and its line.
    std::vector<CString> GetNoteTexts() const;
    // The note area in the panel's client coordinates (empty before layout).
    const CRect& GetNoteRect() const { return m_rcNote; }

    // Lays the lists out for a panel width (on every resize).
    void RecalcLayout(int cx, int cy);

protected:
    LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void resizeEvent(QResizeEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    bool CreateLists();
    void InitHeaderList();
    void InitFieldList();
    void InitAddressList();
    void CollectLinkedOrganizations();
    void InitLinkedList();
    void ApplyDefaultChoices();

    void OnSelectAll(int column);
    void UpdateCompleteness();
    void NotifyDialog();

    void AssembleTarget();
    void AssembleLinkedChoices();
    void PairFederatedRecords();

    bool IsBlocked(const ACE_CString& organizationID) const;
    void EraseBackground(QPainter& dc);

    ComparisonListCtrl* m_pHeaderList = nullptr;
    ComparisonListCtrl* m_pFieldList = nullptr;
    ComparisonListCtrl* m_pAddressList = nullptr;
    LinkedMergeListCtrl* m_pLinkedList = nullptr;
    PatientDetailRecord* m_pRecord1;
    PatientDetailRecord* m_pRecord2;
    PatientDetailRecord m_target;
    CString m_strSourcePatientKey;
    const std::vector<PatientDetailRecord*>* m_pLinkedRecords1;
    const std::vector<PatientDetailRecord*>* m_pLinkedRecords2;
    std::vector<LinkedPatientInfo*> m_linkedSelection;
    const std::vector<ACE_CString>* m_pBlockedOrganizations;
    std::vector<ACE_CString> m_linkedOrganizations;
    bool m_bComplete = false;
    int m_nGap = 2;
    int m_nParentValue;
    bool m_bCreated = false;
    bool m_bClosed = false;
    CRect m_rcNote;
};
