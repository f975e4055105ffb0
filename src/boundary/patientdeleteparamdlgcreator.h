#pragma once

#include "bravik_export.h"

#include "cstring.h"
#include "cwnd.h"

namespace TavCreator {

// Asks for the reason to delete a patient, a confirmation and, when allowed,
// whether the deletion is permanent. GetReason() holds the reason after any
// run; GetPermanentDelete() is the choice after a confirmed run and 0 after
// any other.
class BRAVIK_EXPORT PatientDeleteParamDlgCreator
{
public:
    PatientDeleteParamDlgCreator() = default;

    // headerText: the sentence in the header; mrn: shown after "MRN: ";
    // permanentDeleteAllowed: offer "Permanent Delete".
    int DisplayModal(const char* headerText, const char* mrn, bool permanentDeleteAllowed, CWnd* parent);

    const char* GetReason() const { return m_strReason; }
    int GetPermanentDelete() const { return m_nPermanentDelete; }

private:
    CString m_strReason;
    int m_nPermanentDelete = 0;
};

} // namespace TavCreator
