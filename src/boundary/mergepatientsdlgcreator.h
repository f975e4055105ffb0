#pragma once

#include "bravik_export.h"

#include "cstring.h"
#include "cwnd.h"

#include <ace/SString.h>

#include <vector>

class LinkedPatientInfo;
class PatientDetailRecord;

namespace TavCreator {

// Launches the merge dialog for two candidates after checking that the
// merge may go ahead: both patients' linked records load, the user holds the
// link and merge rights in every organization involved, and, where an
// organization takes no demographics update, the user agrees to go on.
// The merge itself is the caller's: it passes the getters' values to
// PatientManagementService::MergePatients.
class BRAVIK_EXPORT MergePatientsDlgCreator
{
public:
    MergePatientsDlgCreator();
    ~MergePatientsDlgCreator();
    MergePatientsDlgCreator(const MergePatientsDlgCreator&) = delete;
    MergePatientsDlgCreator& operator=(const MergePatientsDlgCreator&) = delete;

    // 1 when the user confirmed the merge, 2 otherwise (cancel, or a check
    // failed after its message).
    int DisplayDialog(const ACE_CString& targetPatientKey, const ACE_CString& sourcePatientKey, CWnd* parent);

    // The surviving record as composed in the dialog (after a confirmed run).
    PatientDetailRecord& GetTargetPatientRecord() const { return *m_pTargetPatient; }
    // The record merged away; either of the keys passed in.
    const CString& GetSourcePatientKey() const { return m_strSourcePatientKey; }
    const std::vector<LinkedPatientInfo*>& GetLinkedPatientSelection() const { return m_linkedPatientSelection; }
    // Organizations (IDs) met so far that take no demographics update.
    const std::vector<ACE_CString>& GetNonDemoUpdateOrgs() const { return m_nonDemoUpdateOrgs; }

    // "Error merging patients.  Reason: %s" with reason in place.
    CString GetReasonForMergerFailure(CString reason) const;

private:
    // Fills the organizations without demographics update and answers
    // whether the user may link and may merge everywhere involved.
    void InitNonDemoUpdateOrgsAndGetUserPermission(const std::vector<PatientDetailRecord*>& targetLinked,
                                                   const std::vector<PatientDetailRecord*>& sourceLinked,
                                                   bool& mayLink, bool& mayMerge);
    // Shows the refusal or the question; true when the dialog may open.
    bool CheckOrgsAndDisplayWarning(const std::vector<PatientDetailRecord*>& targetLinked,
                                    const std::vector<PatientDetailRecord*>& sourceLinked);
    int RunDialog(std::vector<PatientDetailRecord*>& first, std::vector<PatientDetailRecord*>& second,
                  CWnd* parent);
    void ClearSelection();

    PatientDetailRecord* m_pTargetPatient;
    CString m_strSourcePatientKey;
    std::vector<LinkedPatientInfo*> m_linkedPatientSelection;
    std::vector<ACE_CString> m_nonDemoUpdateOrgs;
};

} // namespace TavCreator
