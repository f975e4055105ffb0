#pragma once

// The "History" tab: three free texts of the exam, each in a scrolling
// multi-line edit held to its limit: "Signs and Symptoms" 255 characters,
// "History" 1024, "Comments" 2048. It never blocks OK.

#include "bravik_export.h"

#include "exam/exampage.h"

#include "cstring.h"

class BRAVIK_EXPORT HistoryPageImpl : public ExamPageImpl
{
    Q_OBJECT
public:
    static constexpr UINT kSignsLimit = 255;
    static constexpr UINT kHistoryLimit = 1024;
    static constexpr UINT kCommentsLimit = 2048;

    explicit HistoryPageImpl(ExamDataSet* exam);
    ~HistoryPageImpl() override;

    BOOL OnInitDialog() override;
    // Takes the three texts from the controls into the exam; always true.
    bool ValidateAndSave() override;

protected:
    // The boxes follow the page's width; their heights are the template's.
    void resizeEvent(QResizeEvent* event) override;

private:
    CString m_strSigns;
    CString m_strHistory;
    CString m_strComments;
};

class BRAVIK_EXPORT HistoryPage : public ExamPage
{
    Q_OBJECT
public:
    explicit HistoryPage(ExamDataSet* exam) : m_pExam(exam) {}

protected:
    ExamPageImpl* MakeImpl() override;

private:
    ExamDataSet* m_pExam;
};
