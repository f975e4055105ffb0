// The three reason creators: each runs its dialog with the module's
// resources current and keeps what the host reads back.

#include "boundary/deleteexamparamdlgcreator.h"
#include "boundary/detachstudyparamdlgcreator.h"
#include "boundary/patientdeleteparamdlgcreator.h"

#include "boundary/bravikmodulestate.h"

#include "reasons/deleteexamparamdlg.h"
#include "reasons/detachstudyparamdlg.h"
#include "reasons/patientdeleteparamdlg.h"

#include "windefs.h"

#include <ace/Log_Msg.h>

#include <exception>

namespace {

// Nothing may escape to the host: a dialog that could not run is a cancel.
int reportFailure(const char* function, int line, const std::exception& e)
{
    ACE_LOG_MSG->file(__FILE__);
    ACE_LOG_MSG->linenum(line);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the dialog could not run: %s\n"), function, line,
               e.what()));
    return IDCANCEL;
}

CString text(const char* s) { return CString(s ? s : ""); }

} // namespace

namespace TavCreator {

int DetachStudyParamDlgCreator::DisplayModal(const char* headerText, const char* accessionNumber, CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    try {
        DetachStudyParamDlg dlg(text(headerText), text(accessionNumber), parent);
        const int result = dlg.DoModal();
        // Whatever the result: the host may log the reason of a refusal too.
        m_strReason = dlg.GetReason();
        return result;
    } catch (const std::exception& e) {
        return reportFailure("DetachStudyParamDlgCreator::DisplayModal", __LINE__, e);
    }
}

int DeleteExamParamDlgCreator::DisplayModal(const char* headerText, const char* accessionNumber, eDLGCODE mode,
                                            bool studiesDeletable, bool deleteStudies, CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    try {
        DeleteExamParamDlg dlg(text(headerText), text(accessionNumber), mode, studiesDeletable, parent);
        dlg.SetDeleteStudiesFlg(deleteStudies ? 1 : 0);
        const int result = dlg.DoModal();
        if (result == IDOK) {
            m_nDeleteStudies = dlg.GetDeleteStudiesFlg();
            m_strReason = dlg.GetReason();
        }
        return result;
    } catch (const std::exception& e) {
        return reportFailure("DeleteExamParamDlgCreator::DisplayModal", __LINE__, e);
    }
}

int PatientDeleteParamDlgCreator::DisplayModal(const char* headerText, const char* mrn, bool permanentDeleteAllowed,
                                               CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    try {
        PatientDeleteParamDlg dlg(text(headerText), text(mrn), permanentDeleteAllowed, parent);
        const int result = dlg.DoModal();
        m_strReason = dlg.GetReason();
        m_nPermanentDelete = result == IDOK ? dlg.GetPermanentDelete() : 0;
        return result;
    } catch (const std::exception& e) {
        return reportFailure("PatientDeleteParamDlgCreator::DisplayModal", __LINE__, e);
    }
}

} // namespace TavCreator
