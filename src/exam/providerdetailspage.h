#pragma once

// The "Providers" tab: the exam's referring physician (the first provider
// of type 4), picked from the site's physicians, with the physician's ID and
// contact panel (address, work phone). It never blocks OK; on OK a typed
// name is looked up and, when it names the physician shown, kept.

#include "bravik_export.h"

#include "exam/exampage.h"

#include "bpersonname.h"
#include "cstring.h"

class ContactInfo;
class PatientDetailRecord;
class Picker;
class ProviderRecord;

class BRAVIK_EXPORT ProviderDetailsImplDlg : public ExamPageImpl
{
    Q_OBJECT
public:
    ProviderDetailsImplDlg(ExamDataSet* exam, PatientDetailRecord* patient);
    ~ProviderDetailsImplDlg() override;

    BOOL OnInitDialog() override;
    bool ValidateAndSave() override;

    // Splitting a trailing word off a typed name (off as the dialog builds the page).
    void SetSplitTrailingWord(bool on) { m_bSplitName = on; }
    ContactInfo* GetContactInfo() const { return m_pContact; }
    Picker* GetPicker() const;

    // The name a pick request searches for: the text before the first ",",
    // trimmed (and, with split, without its last word).
    static CString PickName(const CString& typed, bool split);
    // The typed text as a name: "Last, First, Middle ..." or a whole last name;
    // the DICOM form "Last^First^..." as the picker shows a chosen physician.
    static BPersonName ParseName(const CString& typed, bool split);

protected:
    void OnPick();

private:
    // Fetches the provider's full record and shows it; false when it cannot be read.
    bool ShowProvider(const ProviderRecord& provider);
    void ShowCurrentReferring();
    // Makes provider the exam's referring physician.
    void SetReferring(const ProviderRecord& provider);
    const ACE_CString& OrgKey() const;

    PatientDetailRecord* m_pPatient;
    ContactInfo* m_pContact;
    bool m_bSplitName = false;
};

class BRAVIK_EXPORT ProviderDetailsPage : public ExamPage
{
    Q_OBJECT
public:
    ProviderDetailsPage(ExamDataSet* exam, PatientDetailRecord* patient) : m_pExam(exam), m_pPatient(patient) {}

protected:
    ExamPageImpl* MakeImpl() override { return new ProviderDetailsImplDlg(m_pExam, m_pPatient); }

private:
    ExamDataSet* m_pExam;
    PatientDetailRecord* m_pPatient;
};
