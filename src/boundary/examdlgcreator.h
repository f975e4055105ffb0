#pragma once

#include "bravik_export.h"

#include "cwnd.h"

#include <vector>

class ExamDataSet;

namespace TavCreator {

// Opens the exam dialog to create or edit an exam and keeps a copy of the
// saved exam (GetExamDataSet, owned by the creator) after a run that
// returned 1. A run that cannot load its exam or patient shows why and
// returns 2.
class BRAVIK_EXPORT ExamDlgCreator
{
public:
    ExamDlgCreator() = default;
    ~ExamDlgCreator();
    ExamDlgCreator(const ExamDlgCreator& other);
    ExamDlgCreator& operator=(const ExamDlgCreator& other);

    // exam is put over the dialog's working exam before it runs.
    int DisplayExamDlg(const char* patientKey, const ExamDataSet& exam, const char* examKey, CWnd* parent);
    int DisplayExamDlg(const char* patientKey, const char* examKey, CWnd* parent);
    int DisplayExamDlg(const char* examKey, CWnd* parent);
    // A new exam with neither patient nor exam given.
    int DisplayExamDlg(CWnd* parent);

    ExamDataSet* GetExamDataSet() const { return m_pExam; }

private:
    int Run(const char* patientKey, const char* examKey, const ExamDataSet* exam, CWnd* parent, bool releaseEarlier);

    ExamDataSet* m_pExam = nullptr;
    // Results the keyed forms replaced: a host may still hold them, so they
    // live as long as the creator.
    std::vector<ExamDataSet*> m_kept;
};

} // namespace TavCreator
