#include "exam/historypage.h"

#include "boundary/resource.h"

#include "examdataset.h"

#include "scrolledit.h"

#include <QResizeEvent>

namespace {

struct Field
{
    int id;
    UINT limit;
};
const Field kFields[] = {{IDC_HISTORY_SIGNS, HistoryPageImpl::kSignsLimit},
                         {IDC_HISTORY_HISTORY, HistoryPageImpl::kHistoryLimit},
                         {IDC_HISTORY_COMMENTS, HistoryPageImpl::kCommentsLimit}};

} // namespace

HistoryPageImpl::HistoryPageImpl(ExamDataSet* exam) : ExamPageImpl(IDD_EXAMHISTORY, exam) {}

HistoryPageImpl::~HistoryPageImpl() = default;

BOOL HistoryPageImpl::OnInitDialog()
{
    ExamPageImpl::OnInitDialog();
    m_strSigns = m_pExam->GetSignsAndSymptoms().c_str();
    m_strHistory = m_pExam->GetHistory().c_str();
    m_strComments = m_pExam->GetComments().c_str();
    const CString* texts[] = {&m_strSigns, &m_strHistory, &m_strComments};
    for (int i = 0; i < 3; ++i) {
        if (auto* edit = GetDlgItemAs<ScrollEdit>(kFields[i].id)) {
            edit->SetTextLimit(kFields[i].limit);
            edit->SetText(*texts[i]);
        }
    }
    return TRUE;
}

void HistoryPageImpl::resizeEvent(QResizeEvent* event)
{
    ExamPageImpl::resizeEvent(event);
    const int margin = Units().ToPixelsX(7);
    const int inset = Units().ToPixelsX(7);
    const int width = event->size().width() - 2 * margin;
    for (int i = 0; i < 3; ++i) {
        if (CWnd* group = GetDlgItem(IDC_HISTORY_GROUP_FIRST + i))
            group->setGeometry(margin, group->y(), width, group->height());
        if (CWnd* edit = GetDlgItem(kFields[i].id))
            edit->setGeometry(margin + inset, edit->y(), width - 2 * inset, edit->height());
    }
}

bool HistoryPageImpl::ValidateAndSave()
{
    CString* texts[] = {&m_strSigns, &m_strHistory, &m_strComments};
    for (int i = 0; i < 3; ++i)
        if (auto* edit = GetDlgItemAs<ScrollEdit>(kFields[i].id))
            *texts[i] = edit->GetWindowText();
    m_pExam->SetSignsAndSymptoms(m_strSigns.GetString());
    m_pExam->SetHistory(m_strHistory.GetString());
    m_pExam->SetComments(m_strComments.GetString());
    return true;
}

ExamPageImpl* HistoryPage::MakeImpl()
{
    // The template names the scrolling edit's class.
    ScrollEdit::Register();
    return new HistoryPageImpl(m_pExam);
}
