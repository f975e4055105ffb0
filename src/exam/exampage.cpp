#include "exam/exampage.h"

#include "colorschema.h"

ExamPageImpl::ExamPageImpl(UINT templateId, ExamDataSet* exam) : CDialog(templateId), m_pExam(exam)
{
    QPalette pal = palette();
    pal.setColor(QPalette::Window, toQColor(ColorSchema::Instance().GetPageBkColor()));
    pal.setColor(QPalette::WindowText, toQColor(ColorSchema::Instance().GetTextColorNormal()));
    setPalette(pal);
    setAutoFillBackground(true);
}

ExamPageImpl::~ExamPageImpl() = default;

ExamPage::~ExamPage() = default;

BOOL ExamPage::Create(CWnd* parent, const CRect& rect, UINT id)
{
    if (!TavBasePage::Create(parent, rect, id))
        return FALSE;
    m_pImpl = MakeImpl();
    m_pImpl->Create(this);
    m_pInnerDlg = m_pImpl;
    LayoutInnerDialog(CRect(0, 0, width(), height()));
    return TRUE;
}

bool ExamPage::ValidateAndSave() { return m_pImpl ? m_pImpl->ValidateAndSave() : true; }
