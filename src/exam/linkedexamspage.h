#pragma once

// The "Links" tab (edit mode only): the other exams of the exam's link
// group, and "Remove From Link", which takes this exam out of the group
// after the user confirms, then reloads the working exam so the dialog saves
// it as it now stands. It never blocks OK.

#include "bravik_export.h"

#include "exam/exampage.h"

#include <memory>
#include <vector>

class ListCtrlEx;

class BRAVIK_EXPORT LinkExamsImpl : public ExamPageImpl
{
    Q_OBJECT
public:
    explicit LinkExamsImpl(ExamDataSet* exam);
    ~LinkExamsImpl() override;

    BOOL OnInitDialog() override;

    ListCtrlEx* GetList() const { return m_pList; }
    const std::vector<std::unique_ptr<ExamDataSet>>& GetLinkedExams() const { return m_linkedExams; }

protected:
    void OnRemoveFromLink();
    void resizeEvent(QResizeEvent* event) override;

private:
    void AddColumns();
    void FillList();
    bool ConfirmUnlink();
    void EnableRemove(bool enable);

    ListCtrlEx* m_pList;
    std::vector<std::unique_ptr<ExamDataSet>> m_linkedExams;
};

class BRAVIK_EXPORT LinkedExamsPage : public ExamPage
{
    Q_OBJECT
public:
    explicit LinkedExamsPage(ExamDataSet* exam) : m_pExam(exam) {}

protected:
    ExamPageImpl* MakeImpl() override { return new LinkExamsImpl(m_pExam); }

private:
    ExamDataSet* m_pExam;
};
