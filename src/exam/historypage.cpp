#include "exam/historypage.h"

#include "boundary/resource.h"

#include "examdataset.h"

#include "scrolledit.h"

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
