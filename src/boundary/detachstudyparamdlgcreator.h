#pragma once

#include "bravik_export.h"

#include "cstring.h"
#include "cwnd.h"

namespace TavCreator {

// Asks for the reason to detach a study. The host reads GetReason() after the
// run, whatever it returned.
class BRAVIK_EXPORT DetachStudyParamDlgCreator
{
public:
    DetachStudyParamDlgCreator() = default;

    // headerText: the sentence in the header; accessionNumber: shown after
    // "Accession #: ". Returns 1 when confirmed, 2 otherwise.
    int DisplayModal(const char* headerText, const char* accessionNumber, CWnd* parent);

    const char* GetReason() const { return m_strReason; }

private:
    CString m_strReason;
};

} // namespace TavCreator
