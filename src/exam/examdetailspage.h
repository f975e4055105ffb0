#pragma once

// The "Info" tab: the exam's own data (organization, accession number with
// Generate, priority, status, scheduled and performed date/time) and what
// the exam code brings (modality, description, body part), with pickers for
// the exam code, its modifiers, the performing resource and the ordering
// location.
//
// For whoever shows it: the page works on the dialog's working exam and
// writes each accepted change into it. It publishes event (1, 0) after the
// accession number or the exam code changed, so the dialog recomputes its
// header and OK button from the exam; subscribe to GetPublisher() right
// after adding the page. ValidateAndSave() runs OK's checks in their fixed
// order and writes the fields. IsExamCodeRequired() tells the dialog's OK
// rule whether the exam code counts. GetAccessionEdit() is the accession
// field, for a dialog that refuses the number after the page accepted it.

#include "bravik_export.h"

#include "exam/exampage.h"

#include "cstring.h"
#include "publisher.h"

#include <ace/SString.h>

class DateTimeEditCtrl;
class Edit;
class ExamCodeRecord;
class Picker;
class TimeEditCtrl;

// The page's only event: the accession number or the exam code changed.
constexpr long EXAM_DETAILS_CHANGED = 1;

class BRAVIK_EXPORT ExamDetailsImplDlg : public ExamPageImpl, public Publisher<long, long>
{
    Q_OBJECT
public:
    static constexpr UINT kAccessionLimit = 20;

    explicit ExamDetailsImplDlg(ExamDataSet* exam);
    ~ExamDetailsImplDlg() override;

    BOOL OnInitDialog() override;
    bool ValidateAndSave() override;

    bool IsExamCodeRequired() const { return m_bExamCodeRequired; }
    Edit* GetAccessionEdit() const;
    Picker* GetPickerCtrl(int id) const;

    // Puts the record's code, modality, body part and description into the
    // controls and the exam (an empty record clears them).
    void ApplyExamCode(const ExamCodeRecord& record);

protected:
    void OnGenerate();
    void OnAccessionChanged();
    void OnExamCodeTextChanged();
    void OnPickExamCode();
    void OnPickModifier();
    void OnPickResource();
    void OnPickLocation();
    // Typed text checked against the dictionary; false when it names nothing.
    bool ResolveExamCode();
    bool ResolveModifier();
    bool ResolveResource();
    bool ResolveLocation();

private:
    void ConnectPickers();
    void ShowOrganization();
    void ShowStatus();
    void SelectPriority();
    void ShowResource();
    void ShowLocation();
    void ShowScheduled();
    void ShowPerformed();
    void UpdateControls();
    bool ResolveFocusedPicker();
    bool SavePriority();
    bool SavePerformed();
    void SaveScheduled();
    void Refuse(UINT message, int focusId);

    CString m_strOrganizationId;
    CString m_strAccession;
    CString m_strModality;
    CString m_strBodyPart;
    CString m_strPriorityCode;
    CString m_strExamCode;
    CString m_strModifier;
    CString m_strLocation;
    CString m_strDescription;
    CString m_strResource;
    bool m_bExamCodeRequired = true;
};

class BRAVIK_EXPORT ExamDetailsPage : public ExamPage
{
    Q_OBJECT
public:
    explicit ExamDetailsPage(ExamDataSet* exam) : m_pExam(exam) {}

    // Null until the page is created.
    ExamDetailsImplDlg* GetDetails() const { return static_cast<ExamDetailsImplDlg*>(GetImpl()); }
    Publisher<long, long>* GetPublisher() const { return GetDetails(); }

protected:
    ExamPageImpl* MakeImpl() override { return new ExamDetailsImplDlg(m_pExam); }

private:
    ExamDataSet* m_pExam;
};
