#pragma once

#include "bravik_export.h"

#include "cwnd.h"

#include <ace/SString.h>

#include <set>

class PatientDetailRecord;
class PatientDlg;

namespace TavCreator {

// Creates (empty key) or edits a patient in the patient dialog. The creator
// keeps its dialog until it is destroyed, so what the Links page did stays
// readable after the dialog closed; one creator serves one patient.
//
//   TavCreator::PatientDlgCreator creator;
//   if (creator.DisplayPatientDlg(key, parent) == 1)
//       show(creator.GetpPatientData());     // the saved record (its new key on create)
class BRAVIK_EXPORT PatientDlgCreator
{
public:
    PatientDlgCreator() = default;
    ~PatientDlgCreator();
    // A copy takes its own copy of the result; the dialog stays with the original.
    PatientDlgCreator(const PatientDlgCreator& other);
    PatientDlgCreator& operator=(const PatientDlgCreator& other);

    // 1 saved, 2 cancelled or the patient could not be loaded.
    int DisplayPatientDlg(const char* patientKey, CWnd* parent);

    // The saved record after a run that returned 1 (owned by the creator).
    PatientDetailRecord* GetpPatientData() { return m_pPatientData; }
    bool GetHasRemovedLink() const;
    void GetLinkedPatientKeys(std::set<ACE_CString>& keys) const;

private:
    int Run(const char* patientKey, CWnd* parent);

    PatientDetailRecord* m_pPatientData = nullptr;
    PatientDlg* m_pDlg = nullptr;
};

} // namespace TavCreator
