#include "exam/linkedexamspage.h"

#include "boundary/resource.h"

#include "examdataset.h"
#include "examqueryrecord.h"
#include "examservice.h"
#include "localefunctions.h"
#include "serviceregistry.h"
#include "session.h"
#include "worklistutils.h"

#include "cbutton.h"
#include "column.h"
#include "listctrlex.h"
#include "listtextsubitem.h"
#include "messagebox.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <QResizeEvent>

#include <exception>

namespace {

ExamService* Exams()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetExamService() : nullptr;
}

CString Text(const ACE_CString& s) { return CString(s.c_str()); }

CString Format(UINT id, const char* first, const char* second = nullptr)
{
    CString text;
    if (second)
        text.Format(LoadString(id), first, second);
    else
        text.Format(LoadString(id), first);
    return text;
}

} // namespace

LinkExamsImpl::LinkExamsImpl(ExamDataSet* exam) : ExamPageImpl(IDD_EXAMLINKS, exam), m_pList(new ListCtrlEx(this))
{
    m_pList->Create(WS_TABSTOP, CRect(), this, IDC_LINKED_EXAMS_LIST);
    m_pList->setObjectName(QStringLiteral("IDC_LINKED_EXAMS_LIST"));
    if (auto* button = GetDlgItemAs<CButton>(IDC_REMOVE_FROM_LINK))
        connect(button, &CButton::clicked, this, &LinkExamsImpl::OnRemoveFromLink);
}

LinkExamsImpl::~LinkExamsImpl() = default;

BOOL LinkExamsImpl::OnInitDialog()
{
    ExamPageImpl::OnInitDialog();
    if (CWnd* area = GetDlgItem(IDC_LINKED_EXAMS_AREA)) {
        m_pList->setGeometry(area->geometry());
        area->hide();
    }
    m_pList->SetFullRowSelection(true);
    m_pList->SetItemHeight(m_pList->fontMetrics().height() + 8);
    AddColumns();
    // Only the exact text "true" marks a linked exam.
    if (m_pExam->GetLinkedFlag() == "true")
        FillList();
    else
        EnableRemove(false);
    return TRUE;
}

void LinkExamsImpl::AddColumns()
{
    // Five equal columns, a fifth of the list's width each. The first title
    // keeps the trailing colon and blank of the shared text.
    for (UINT title : {IDS_ACCESSION_PREFIX, IDS_COL_EXAM_CODE, IDS_COL_EXAM_DESCRIPTION, IDS_COL_MODALITY,
                       IDS_COL_BODY_PART})
        m_pList->AddColumn(Column(LoadString(title), 0.2));
}

void LinkExamsImpl::FillList()
{
    ExamService* exams = Exams();
    std::vector<ExamDataSet*> found;
    try {
        if (exams)
            exams->GetLinkedExams(m_pExam->GetKey(), m_pExam->GetOrganizationKey(), found);
    } catch (const std::exception& e) {
        for (ExamDataSet* partial : found)
            delete partial;
        AfxMessageBox(Format(IDS_ERR_GET_LINKED_EXAMS, e.what()));
        EnableRemove(false);
        return;
    }
    for (ExamDataSet* exam : found) {
        m_linkedExams.emplace_back(exam);
        std::vector<ListSubItemPtr> cells;
        int column = 0;
        for (const ACE_CString* value : {&exam->GetAccessionNumber(), &exam->GetExamCode(), &exam->GetDescription(),
                                         &exam->GetModality(), &exam->GetBodyPart()})
            cells.push_back(std::make_unique<ListTextSubItem>(column++, Text(*value)));
        m_pList->InsertItem(std::move(cells));
    }
}

void LinkExamsImpl::EnableRemove(bool enable)
{
    if (CWnd* button = GetDlgItem(IDC_REMOVE_FROM_LINK))
        button->setEnabled(enable);
}

bool LinkExamsImpl::ConfirmUnlink()
{
    const CString question = LoadString(IDS_UNLINK_EXAM_CONFIRM) + " " + Text(m_pExam->GetAccessionNumber());
    if (AfxMessageBox(question, MB_YESNO) != IDYES)
        return false;
    ExamQueryRecord record;
    record.SetOrganizationKey(m_pExam->GetOrganizationKey());
    record.SetExamKey(m_pExam->GetKey());
    record.SetStatusCode(m_pExam->GetStatusCode());
    record.SetMarkedRead(m_pExam->IsMarkedRead());
    record.SetLinkedFlag(m_pExam->GetLinkedFlag());
    if (WorkListUtils::IsLinkUnlinkWarnable(record, false))
        return AfxMessageBox(Locale::LoadMessage(Locale::MSG_LINK_UNLINK_WARNING), MB_YESNO) == IDYES;
    return true;
}

void LinkExamsImpl::OnRemoveFromLink()
{
    if (!ConfirmUnlink())
        return;
    ExamService* exams = Exams();
    if (!exams)
        return;
    const ACE_CString key = m_pExam->GetKey();
    try {
        exams->UnLinkExam(key, m_pExam->GetOrganizationKey());
    } catch (const std::exception& e) {
        AfxMessageBox(Format(IDS_ERR_UNLINK_EXAM, m_pExam->GetAccessionNumber().c_str(), e.what()));
        return;
    }
    m_pList->DeleteAllItems();
    m_linkedExams.clear();
    EnableRemove(false);
    try {
        exams->GetExamDataSet(key, m_pExam);
    } catch (const std::exception& e) {
        AfxMessageBox(Format(IDS_ERR_UPDATE_EXAM, m_pExam->GetAccessionNumber().c_str(), e.what()));
    }
}

void LinkExamsImpl::resizeEvent(QResizeEvent* event)
{
    ExamPageImpl::resizeEvent(event);
    // The list keeps its margins and leaves the button's row below it.
    const int margin = Units().ToPixelsX(7);
    const int buttonRow = Units().ToPixelsY(15 + 14);
    m_pList->setGeometry(margin, margin, event->size().width() - 2 * margin,
                         event->size().height() - margin - buttonRow);
    if (CWnd* button = GetDlgItem(IDC_REMOVE_FROM_LINK))
        button->move(event->size().width() - margin - button->width(),
                     event->size().height() - Units().ToPixelsY(8) - button->height());
}
