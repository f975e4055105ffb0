#pragma once

// PatientDemographicsImpl: the demographics form. It works on the patient
// record the dialog owns: every change of a field goes into the record at
// once and is published (kind, control id, value text), so whoever listens
// (the patient dialog, the create-patient-and-exam dialog) sees the identity
// as it is typed. ValidateData checks the form in a fixed order before a save.
//
// Built from IDD_PATIENT_DEMOGRAPHICS: construct it while the module's
// resources are current.

#include "bravik_export.h"

#include "cdialog.h"
#include "cstring.h"
#include "publisher.h"

#include <QDate>

#include <memory>
#include <vector>

class ComboBox;
class DatePickerCtrl;
class DateTimeEditCtrl;
class Edit;
class NormalEditValidator;
class PatientDetailRecord;

class BRAVIK_EXPORT PatientDemographicsImpl : public CDialog
{
    Q_OBJECT
public:
    // Kinds of the published change notices.
    enum ePUBLISHKIND : long
    {
        PUBLISH_FIELD = 1,        // any field (the text is the new value)
        PUBLISH_ORGANIZATION = 2, // the organization (the text is its ID)
        PUBLISH_LINKED_MRN = 3    // the Links page changed the patient's own MRN
    };

    // The record stays the caller's and must outlive the form.
    PatientDemographicsImpl(PatientDetailRecord* record, bool editMode, CWnd* parent = nullptr);
    ~PatientDemographicsImpl() override;

    BOOL OnInitDialog() override;
    // TRUE when the record may be saved; otherwise the first problem was
    // shown (where it has a message) and the focus put on its field.
    BOOL ValidateData();

    Publisher<long, long>& GetPublisher() { return m_publisher; }
    PatientDetailRecord* GetRecord() const { return m_pRecord; }
    bool IsEditMode() const { return m_bEditMode; }
    bool IsGenderChosen() const { return m_bGenderChosen; }

    // The handlers, as the controls call them.
    void OnChangeText(int id);
    void OnSelchangeSex();
    void OnSelchangeGender();
    void OnSelchangeOrganization();
    void OnDateTimeChangeDOB();
    void OnDropDownDOB();
    void OnChangeDOD();
    void OnGenerate();

protected:
    void DoDataExchange(CDataExchange* pDX) override;

private:
    void InitLabels();
    void InitRequiredMarks();
    void InitOrganizations();
    void InitSexAndGender();
    void InitDates();
    void ConnectHandlers();
    void ReadFields();
    void StoreName();
    void Publish(long kind, int id, const CString& text);
    CString SelectedCode(ComboBox* box) const;
    CString SelectedOrganizationKey() const;
    BOOL Refuse(UINT messageId, CWnd* focus, UINT type = MB_OK);
    BOOL ValidateDates();

    ComboBox* Organizations() const;
    ComboBox* Sexes() const;
    ComboBox* Genders() const;
    DatePickerCtrl* BirthDate() const;
    DateTimeEditCtrl* DeathDate() const;

    PatientDetailRecord* m_pRecord;
    bool m_bEditMode;
    Publisher<long, long> m_publisher;
    std::vector<std::unique_ptr<NormalEditValidator>> m_validators;
    bool m_bGenderChosen = false;
    bool m_bInitialising = false;
    QDate m_dtDeath;
    DWORD m_nDeathState = 1;

    CString m_strMRN;
    CString m_strTitle;
    CString m_strFirst;
    CString m_strMiddle;
    CString m_strLast;
    CString m_strSuffix;
    CString m_strGID;
    CString m_strAliasFirst;
    CString m_strAliasMiddle;
    CString m_strAliasLast;
    CString m_strMaidenName;
};
