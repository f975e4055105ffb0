#pragma once

// ExamPage / ExamPageImpl: what the exam dialog's four pages share. A page
// is a TavBasePage that makes its inner dialog (the Impl, built from the
// page's template) when the page itself is created, and hands OK's
// validate-and-save to it. The Impl works on the dialog's working exam,
// which it does not own.
//
// Pages must be created while the module's resources are current (the exam
// dialog creates them in its initialisation).

#include "bravik_export.h"

#include "boundary/tavbasepage.h"

#include "cdialog.h"

class ExamDataSet;

class BRAVIK_EXPORT ExamPageImpl : public CDialog
{
    Q_OBJECT
public:
    ExamPageImpl(UINT templateId, ExamDataSet* exam);
    ~ExamPageImpl() override;

    // Reads the controls, checks them and writes them into the exam; false
    // (having told the user and placed the focus) when something is refused.
    virtual bool ValidateAndSave() { return true; }

    ExamDataSet* GetExam() const { return m_pExam; }

protected:
    ExamDataSet* m_pExam;
};

class BRAVIK_EXPORT ExamPage : public TavBasePage
{
    Q_OBJECT
public:
    ~ExamPage() override;

    BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0) override;
    bool ValidateAndSave();

    // Null until the page is created.
    ExamPageImpl* GetImpl() const { return m_pImpl; }

protected:
    ExamPage() = default;
    // The page's inner dialog, not yet created.
    virtual ExamPageImpl* MakeImpl() = 0;

private:
    // A child of the page once created; Qt deletes it with the page.
    ExamPageImpl* m_pImpl = nullptr;
};
