#include "boundary/createpatientandexamdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/ownedcopy.h"
#include "exam/createpatientandexamdlg.h"

#include "examdataset.h"
#include "patientdetailrecord.h"

#include <ace/Log_Msg.h>

#include <exception>
#include <new>

namespace TavCreator {

CreatePatientAndExamDlgCreator::~CreatePatientAndExamDlgCreator() { delete m_pExam; }

CreatePatientAndExamDlgCreator::CreatePatientAndExamDlgCreator(const CreatePatientAndExamDlgCreator& other) : m_pExam(CopyOf(other.m_pExam)) {}

CreatePatientAndExamDlgCreator& CreatePatientAndExamDlgCreator::operator=(const CreatePatientAndExamDlgCreator& other)
{
    AssignCopy(m_pExam, other.m_pExam);
    return *this;
}

int CreatePatientAndExamDlgCreator::DisplayDialog(PatientDetailRecord patient, ExamDataSet exam, CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    try {
        CreatePatientAndExamDlg dlg(patient, exam, parent);
        const int result = dlg.DoModal();
        if (result == IDOK) {
            delete m_pExam;
            m_pExam = new (std::nothrow) ExamDataSet(dlg.GetExamDataSet());
        }
        return result;
    } catch (const std::exception& e) {
        ACE_LOG_MSG->file(__FILE__);
        ACE_LOG_MSG->linenum(__LINE__);
        ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the dialog could not run: %s\n"),
                   "CreatePatientAndExamDlgCreator::DisplayDialog", __LINE__, e.what()));
        return IDCANCEL;
    }
}

} // namespace TavCreator
