#include "boundary/createpatientandexamdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/creatorsupport.h"
#include "exam/createpatientandexamdlg.h"

#include "examdataset.h"
#include "patientdetailrecord.h"

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
        LogDialogCouldNotRun("CreatePatientAndExamDlgCreator::DisplayDialog", __FILE__, __LINE__, e.what());
        return IDCANCEL;
    }
}

} // namespace TavCreator
