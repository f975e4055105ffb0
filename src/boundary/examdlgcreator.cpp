#include "boundary/examdlgcreator.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"
#include "exam/examdlg.h"

#include "examdataset.h"

#include "messagebox.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <exception>
#include <new>

namespace TavCreator {

ExamDlgCreator::~ExamDlgCreator()
{
    delete m_pExam;
    for (ExamDataSet* kept : m_kept)
        delete kept;
}

ExamDlgCreator::ExamDlgCreator(const ExamDlgCreator& other)
    : m_pExam(other.m_pExam ? new ExamDataSet(*other.m_pExam) : nullptr)
{
}

ExamDlgCreator& ExamDlgCreator::operator=(const ExamDlgCreator& other)
{
    if (this != &other) {
        ExamDataSet* copy = other.m_pExam ? new ExamDataSet(*other.m_pExam) : nullptr;
        delete m_pExam;
        m_pExam = copy;
    }
    return *this;
}

int ExamDlgCreator::DisplayExamDlg(const char* patientKey, const ExamDataSet& exam, const char* examKey,
                                   CWnd* parent)
{
    return Run(patientKey, examKey, &exam, parent, false);
}

int ExamDlgCreator::DisplayExamDlg(const char* patientKey, const char* examKey, CWnd* parent)
{
    return Run(patientKey, examKey, nullptr, parent, false);
}

int ExamDlgCreator::DisplayExamDlg(const char* examKey, CWnd* parent)
{
    return Run(nullptr, examKey, nullptr, parent, false);
}

int ExamDlgCreator::DisplayExamDlg(CWnd* parent) { return Run(nullptr, nullptr, nullptr, parent, true); }

int ExamDlgCreator::Run(const char* patientKey, const char* examKey, const ExamDataSet* exam, CWnd* parent,
                        bool releaseEarlier)
{
    BRAVIK_MANAGE_STATE();
    try {
        ExamDlg dlg(CString(patientKey ? patientKey : ""), CString(examKey ? examKey : ""), parent);
        if (examKey && *examKey) {
            // A loaded exam brings its own patient: the given patient key is not read.
            if (!dlg.LoadExam()) {
                AfxMessageBox(IDS_ERR_EXAM_ACCESS);
                return IDCANCEL;
            }
        } else if (patientKey && *patientKey && !dlg.LoadPatient()) {
            AfxMessageBox(IDS_ERR_PATIENT_ACCESS);
            return IDCANCEL;
        }
        if (exam)
            dlg.GetExamDataSet() = *exam;
        const int result = dlg.DoModal();
        if (result == IDOK) {
            // Only the keyless form releases the earlier result; the keyed
            // forms overwrite the pointer, as they always have.
            if (releaseEarlier)
                delete m_pExam;
            else if (m_pExam)
                m_kept.push_back(m_pExam);
            m_pExam = new (std::nothrow) ExamDataSet(dlg.GetExamDataSet());
        }
        return result;
    } catch (const std::exception& e) {
        ACE_LOG_MSG->file(__FILE__);
        ACE_LOG_MSG->linenum(__LINE__);
        ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the dialog could not run: %s\n"),
                   "ExamDlgCreator::DisplayExamDlg", __LINE__, e.what()));
        return IDCANCEL;
    }
}

} // namespace TavCreator
