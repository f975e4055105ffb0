#include "patient/clinkpatientimpl.h"

#include "patient/patientdemographicsimpl.h"

#include "boundary/resource.h"
#include "patient/patientservices.h"

#include "orgoperationscollection.h"
#include "patientdetailrecord.h"
#include "patientmanagementservice.h"
#include "serviceregistry.h"
#include "session.h"

#include "cedit.h"
#include "column.h"
#include "listctrlex.h"
#include "listctrlmodel.h"
#include "listtextsubitem.h"
#include "messagebox.h"
#include "stringtable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>

#include <exception>
#include <functional>

using PatientServices::Organizations;
using PatientServices::Patients;

namespace {

// The report list, telling the panel which cell was clicked.
class LinkedRecordsList : public ListCtrlEx
{
public:
    std::function<void(int row, int column)> onCellClick;

protected:
    void OnItemClick(int row, int column, const CPoint& clientPoint) override
    {
        ListCtrlEx::OnItemClick(row, column, clientPoint);
        if (onCellClick)
            onCellClick(row, column);
    }
};

} // namespace

CLinkPatientImpl::CLinkPatientImpl(PatientDetailRecord* patient, CWnd* parent)
    : CDialog(IDD_PATIENT_LINKS, parent),
      m_pPatient(patient),
      m_patientKey(patient->GetPatientKey()),
      m_organizationKey(patient->GetOrganizationKey()),
      m_font(QStringLiteral("Arial"))
{
    setObjectName(QStringLiteral("CLinkPatientImpl"));
    m_font.setPixelSize(16);
    m_font.setWeight(QFont::Normal);
    connect(this, &CDialog::command, this, [this](int id) {
        if (id == IDC_LINKS_REMOVE)
            OnRemoveFromLink();
    });
}

CLinkPatientImpl::~CLinkPatientImpl()
{
    for (PatientDetailRecord* r : m_linked)
        delete r;
}

BOOL CLinkPatientImpl::OnInitDialog()
{
    CDialog::OnInitDialog();
    CreateList();
    Fill();
    UpdateRemoveButton();
    return TRUE;
}

void CLinkPatientImpl::CreateList()
{
    auto* list = new LinkedRecordsList;
    list->onCellClick = [this](int row, int column) {
        if (column == COL_MRN)
            BeginEditMRN(row);
    };
    m_pList = list;
    ReplaceDlgItem(IDC_LINKS_LIST, m_pList);
    m_pList->setFont(m_font);
    m_pList->SetFullRowSelection(true);
    m_pList->horizontalHeader()->show();
    m_pList->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pList->SetItemHeight(QFontMetrics(m_font).height() + 6);
    // Four columns, a quarter of the width each.
    for (UINT title : {IDS_LINKS_COL_FIRST_NAME, IDS_LINKS_COL_LAST_NAME, IDS_LINKS_COL_MRN, IDS_LINKS_COL_ORGANIZATION})
        m_pList->AddColumn(Column(LoadString(title), 0.25));
}

void CLinkPatientImpl::Fill()
{
    PatientManagementService* patients = Patients();
    OrgOperationsCollection* orgs = Organizations();
    if (!patients || !orgs)
        return;
    try {
        patients->GetLinkedPatients(m_patientKey, m_organizationKey, m_linked);
        const ACE_CString federated = orgs->GetFederatedOrgID();
        for (PatientDetailRecord* r : m_linked) {
            const ACE_CString orgId = orgs->GetOrgIdFromKey(r->GetOrganizationKey());
            if (federated.length() > 0 && orgId == federated)
                continue;
            std::vector<ListSubItemPtr> cells;
            cells.push_back(std::make_unique<ListTextSubItem>(COL_FIRST_NAME, r->GetFirstName().c_str()));
            cells.push_back(std::make_unique<ListTextSubItem>(COL_LAST_NAME, r->GetLastName().c_str()));
            cells.push_back(std::make_unique<ListTextSubItem>(COL_MRN, r->GetPatientID().c_str()));
            cells.push_back(std::make_unique<ListTextSubItem>(COL_ORGANIZATION, orgId.c_str()));
            const int row = m_pList->InsertItem(std::move(cells), reinterpret_cast<DWORD_PTR>(r));
            if (IsPatientItself(r))
                m_pList->SetItemSelected(row, true);
        }
    } catch (const std::exception&) {
        // An empty list: there is nothing the user could remove or correct.
    }
}

bool CLinkPatientImpl::IsPatientItself(const PatientDetailRecord* record) const
{
    return record && record->GetPatientKey() == m_patientKey;
}

PatientDetailRecord* CLinkPatientImpl::RecordAt(int row) const
{
    return reinterpret_cast<PatientDetailRecord*>(m_pList ? m_pList->GetItemData(row) : 0);
}

void CLinkPatientImpl::UpdateRemoveButton()
{
    // A link exists only while another record is listed.
    if (CWnd* button = GetDlgItem(IDC_LINKS_REMOVE))
        ::EnableWindow(button, !m_bRemoved && m_pList && m_pList->GetItemCount() > 1 ? TRUE : FALSE);
}

void CLinkPatientImpl::OnRemoveFromLink()
{
    const int row = m_pList ? m_pList->GetFirstSelectedItem() : -1;
    PatientDetailRecord* record = row < 0 ? nullptr : RecordAt(row);
    if (!record)
        return;
    EndEditMRN();
    CString text = LoadString(IDS_UNLINK_PATIENT_CONFIRM);
    text += " ";
    text += record->GetLastName().c_str();
    text += ",";
    text += record->GetFirstName().c_str();
    if (AfxMessageBox(text.GetString(), MB_YESNO) != IDYES)
        return;
    // With two records the link group dissolves: neither stays linked.
    if (m_pList->GetItemCount() == 2)
        m_pList->DeleteAllItems();
    else
        m_pList->DeleteItem(row);
    m_pRemoved = record;
    m_pList->viewport()->update();
    m_bRemoved = true;
    UpdateRemoveButton();
}

void CLinkPatientImpl::BeginEditMRN(int row)
{
    EndEditMRN();
    if (!RecordAt(row))
        return;
    m_nEditRow = row;
    m_strEditOriginal = m_pList->GetSubItemAt(row, COL_MRN)->GetText();
    m_bIdentityChangedBefore = m_bIdentityChanged;
    m_pEditor = new CEdit(m_pList->viewport());
    m_pEditor->setObjectName(QStringLiteral("IDC_LINKS_MRN_EDIT"));
    SetDlgCtrlID(m_pEditor, IDC_LINKS_MRN_EDIT);
    m_pEditor->SetBorder(true);
    m_pEditor->setFont(m_font);
    m_pEditor->setGeometry(m_pList->visualRect(m_pList->Model()->index(row, COL_MRN)));
    m_pEditor->SetWindowText(m_pList->GetSubItemAt(row, COL_MRN)->GetText());
    m_pEditor->SetLimitText(64);
    m_pEditor->editor()->installEventFilter(this);
    connect(m_pEditor, &CEdit::edited, this, &CLinkPatientImpl::OnChangeMRN);
    connect(m_pEditor, &CEdit::lostFocus, this, [this] { EndEditMRN(); });
    m_pEditor->show();
    m_pEditor->setFocus(Qt::MouseFocusReason);
    m_pEditor->SetSel(0, -1);
}

void CLinkPatientImpl::OnChangeMRN()
{
    PatientDetailRecord* record = m_pEditor ? RecordAt(m_nEditRow) : nullptr;
    if (!IsPatientItself(record))
        return;
    const CString text = m_pEditor->GetWindowText();
    m_bIdentityChanged = true;
    m_pPatient->SetPatientID(text.GetString());
    m_publisher.Publish(PatientDemographicsImpl::PUBLISH_LINKED_MRN, IDC_LINKS_MRN_EDIT, text.GetString());
}

void CLinkPatientImpl::EndEditMRN(bool keep)
{
    if (!m_pEditor)
        return;
    CEdit* editor = m_pEditor;
    m_pEditor = nullptr; // focus changes below must not end the edit twice
    const int row = m_nEditRow;
    m_nEditRow = -1;
    PatientDetailRecord* record = RecordAt(row);
    if (keep && record) {
        const CString text = editor->GetWindowText();
        static_cast<ListTextSubItem*>(m_pList->GetSubItemAt(row, COL_MRN))->SetText(text);
        record->SetPatientID(text.GetString());
        m_pList->UpdateItem(row);
    } else if (IsPatientItself(record)) {
        // Escape: the patient's own MRN, which followed each key, goes back.
        m_bIdentityChanged = m_bIdentityChangedBefore;
        m_pPatient->SetPatientID(m_strEditOriginal.GetString());
        m_publisher.Publish(PatientDemographicsImpl::PUBLISH_LINKED_MRN, IDC_LINKS_MRN_EDIT, m_strEditOriginal.GetString());
    }
    editor->hide();
    editor->deleteLater();
}

bool CLinkPatientImpl::eventFilter(QObject* watched, QEvent* event)
{
    if (m_pEditor && watched == m_pEditor->editor() && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        // Enter and Escape end the edit here rather than the dialog.
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            EndEditMRN(key != Qt::Key_Escape);
            m_pList->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return CDialog::eventFilter(watched, event);
}

BOOL CLinkPatientImpl::ValidateData()
{
    EndEditMRN();
    for (PatientDetailRecord* r : m_linked) {
        CString mrn(r->GetPatientID().c_str());
        mrn.Trim();
        if (mrn.IsEmpty()) {
            AfxMessageBox(IDS_PATIENT_ERR_MRN_EMPTY, MB_OK);
            return FALSE;
        }
        r->SetPatientID(mrn.GetString());
    }
    return TRUE;
}
