#pragma once

#include "bravik_export.h"

#include "cwnd.h"

class ExamDataSet;
class PatientDetailRecord;

namespace TavCreator {

// Opens the dialog that creates a patient and the patient's first exam
// together, from copies of the records given. After a run that returned 1
// GetExamDataSet is the created exam (owned by the creator; its patient key
// names the new patient); otherwise it is what an earlier run left, or null.
class BRAVIK_EXPORT CreatePatientAndExamDlgCreator
{
public:
    CreatePatientAndExamDlgCreator() = default;
    ~CreatePatientAndExamDlgCreator();
    CreatePatientAndExamDlgCreator(const CreatePatientAndExamDlgCreator& other);
    CreatePatientAndExamDlgCreator& operator=(const CreatePatientAndExamDlgCreator& other);

    int DisplayDialog(PatientDetailRecord patient, ExamDataSet exam, CWnd* parent);
    ExamDataSet* GetExamDataSet() const { return m_pExam; }

private:
    ExamDataSet* m_pExam = nullptr;
};

} // namespace TavCreator
