#pragma once

// PatientDlg: creates a new patient (no key) or edits an existing one. It
// owns the record being edited and shows it in a tabbed frame: a header that
// summarises the patient, the pages "Demographics", "Contact Info" and
// either "Links" (edit) or "Create Linked Patient" (create), and a footer
// with OK and Cancel. OK validates the pages in a fixed order (the first
// failure brings its page to the front) and then creates or modifies; a
// failed save leaves the dialog open with everything as typed.
//
// Run by TavCreator::PatientDlgCreator, which keeps the dialog after it
// closes so the Links page's results stay readable.

#include "bravik_export.h"

#include "controlparentmodaldlg.h"
#include "cstring.h"
#include "publisher.h"

#include "patientdetailrecord.h"

#include <ace/SString.h>

#include <set>
#include <vector>

class ContactInfoPage;
class CreateLinkedPatientsPage;
class HFTabbedDlg;
class LinkedRecordsPage;
class PatientDemographicsPage;

class BRAVIK_EXPORT PatientDlg : public ControlParentModalDlg, public Subscriber<long, long>
{
    Q_OBJECT
public:
    class Header;
    class Footer;

    static constexpr int DIALOG_WIDTH = 830;
    static constexpr int DIALOG_HEIGHT = 700;
    static constexpr int HEADER_HEIGHT = 64;
    static constexpr int FOOTER_HEIGHT = 50;

    // templateId is kept for the host (the frame always uses IDD_PATIENT_DLG);
    // an empty or null patientKey opens the dialog in create mode.
    PatientDlg(UINT templateId, const char* patientKey, CWnd* parent);
    ~PatientDlg() override;

    // Loads the patient (edit mode); false when the service cannot.
    bool Load();
    bool IsLoaded() const { return m_bLoaded; }
    bool IsCreateMode() const { return m_strPatientKey.IsEmpty(); }
    UINT GetTemplateId() const { return m_nTemplateId; }

    BOOL OnInitDialog() override;
    // Enter and the footer's OK: the unlink the Links page asked for, then
    // validate and save. Nothing happens while OK is disabled.
    void OnOK() override;
    // The save after validation: create or modify; true when it succeeded.
    bool Save();

    const PatientDetailRecord& GetPatientRecord() const { return m_record; }
    PatientDetailRecord& GetPatientRecord() { return m_record; }
    const CString& GetPatientKey() const { return m_strPatientKey; }
    // The copies made for the "Create Linked Patient" rows at the last create.
    const std::vector<PatientDetailRecord>& GetLinkedPatientRecords() const { return m_linkedRecords; }

    bool HasRemovedLink() const;
    void GetLinkedPatientKeys(std::set<ACE_CString>& keys) const;

    HFTabbedDlg* GetFrame() const { return m_pFrame; }
    Header* GetHeader() const { return m_pHeader; }
    Footer* GetFooter() const { return m_pFooter; }
    PatientDemographicsPage* GetDemographicsPage() const { return m_pDemographicsPage; }
    ContactInfoPage* GetContactPage() const { return m_pContactPage; }
    LinkedRecordsPage* GetLinksPage() const { return m_pLinksPage; }
    CreateLinkedPatientsPage* GetCreateLinkedPage() const { return m_pCreateLinkedPage; }

    // Change notices of the pages: header, OK and the first linked row follow.
    void OnPublish(Publisher<long, long>* source, long kind, long id, const char* text) override;
    void UpdateHeader();
    void UpdateOKButton();
    bool IsOKEnabled() const;

protected:
    void OnSize(UINT type, int cx, int cy) override;

private:
    void CreateFrame();
    void ApplyHeader();
    void ApplyFooter();
    void AddPages();
    void LayOutFrame();
    void UnlinkRemovedRecord();
    bool ValidatePages();
    bool CreatePatient();
    void CreateLinkedPatients();
    bool ModifyPatient();
    void ShowLinkRightMissing(const ACE_CString& organizationID);
    void ShowServiceError(UINT messageId, const char* reason);

    UINT m_nTemplateId;
    CString m_strPatientKey;
    HFTabbedDlg* m_pFrame;
    Header* m_pHeader;
    Footer* m_pFooter;
    PatientDemographicsPage* m_pDemographicsPage = nullptr;
    LinkedRecordsPage* m_pLinksPage = nullptr;
    ContactInfoPage* m_pContactPage = nullptr;
    PatientDetailRecord m_record;
    bool m_bLoaded = false;
    CreateLinkedPatientsPage* m_pCreateLinkedPage = nullptr;
    std::vector<PatientDetailRecord> m_linkedRecords;
};
