#pragma once

#include "bravik_export.h"

#include "boundary/edlgcode.h"

#include "cstring.h"
#include "cwnd.h"

namespace TavCreator {

// Asks for the reason to delete or cancel an exam and, for a deletion,
// whether its studies go too. The getters are meaningful after a run that
// returned 1; otherwise they keep what an earlier confirmed run left.
class BRAVIK_EXPORT DeleteExamParamDlgCreator
{
public:
    DeleteExamParamDlgCreator() = default;

    // studiesDeletable: FALSE shows "Delete Studies" disabled;
    // deleteStudies: the box's initial state.
    int DisplayModal(const char* headerText, const char* accessionNumber, eDLGCODE mode, bool studiesDeletable,
                     bool deleteStudies, CWnd* parent);

    const char* GetReason() const { return m_strReason; }
    int GetDeleteStudiesFlg() const { return m_nDeleteStudies; }

private:
    // Only a confirmed run sets it.
    int m_nDeleteStudies = 0;
    CString m_strReason;
};

} // namespace TavCreator
