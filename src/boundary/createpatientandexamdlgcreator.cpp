#include "boundary/createpatientandexamdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "exam/createpatientandexamdlg.h"

#include "examdataset.h"
#include "patientdetailrecord.h"

#include <ace/Log_Msg.h>

#include <exception>
#include <new>

namespace TavCreator {

CreatePatientAndExamDlgCreator::~CreatePatientAndExamDlgCreator() { delete m_pExam; }

CreatePatientAndExamDlgCreator::CreatePatientAndExamDlgCreator(const CreatePatientAndExamDlgCreator& other)
    : m_pExam(other.m_pExam ? new ExamDataSet(*other.m_pExam) : nullptr)
{
}

CreatePatientAndExamDlgCreator& CreatePatientAndExamDlgCreator::operator=(const CreatePatientAndExamDlgCreator& other)
{
    if (this != &other) {
        ExamDataSet* copy = other.m_pExam ? new ExamDataSet(*other.m_pExam) : nullptr;
        delete m_pExam;
        m_pExam = copy;
    }
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
