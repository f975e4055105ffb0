#include "patient/createlinkedpatientsimpl.h"

#include "patient/createlinkedpatientsrowdlg.h"

#include "boundary/resource.h"

#include "messagebox.h"

#include <algorithm>

namespace {
std::vector<CreateLinkedPatientsRowDlg*> g_rows;
} // namespace

const std::vector<CreateLinkedPatientsRowDlg*>& CreateLinkedPatientsImpl::GetRows() { return g_rows; }

CreateLinkedPatientsImpl::CreateLinkedPatientsImpl(CWnd* parent) : CDialog(IDD_PATIENT_CREATE_LINKED, parent)
{
    setObjectName(QStringLiteral("CreateLinkedPatientsImpl"));
    connect(this, &CDialog::command, this, [this](int id) {
        if (id == IDC_CL_ADD)
            OnAdd();
        else if (id == IDC_CL_REMOVE)
            OnRemove();
    });
}

CreateLinkedPatientsImpl::~CreateLinkedPatientsImpl()
{
    for (CreateLinkedPatientsRowDlg* row : g_rows)
        if (row->parentWidget() == this)
            delete row;
    g_rows.clear();
}

CreateLinkedPatientsRowDlg* CreateLinkedPatientsImpl::MakeRow(int index)
{
    auto* row = new CreateLinkedPatientsRowDlg(this);
    row->Create(this);
    ::MoveWindow(row, ROW_LEFT, ROW_TOP + ROW_HEIGHT * index, ROW_WIDTH, ROW_HEIGHT);
    row->show();
    connect(row, &CreateLinkedPatientsRowDlg::organizationChosen, this, &CreateLinkedPatientsImpl::OnOrganizationChosen);
    return row;
}

BOOL CreateLinkedPatientsImpl::OnInitDialog()
{
    CDialog::OnInitDialog();
    CreateLinkedPatientsRowDlg* first = MakeRow(0);
    // The patient itself: it mirrors the demographics and is not edited here.
    for (int id : {IDC_CL_ROW_CHECK, IDC_CL_ROW_ORGANIZATION, IDC_CL_ROW_MRN})
        if (CWnd* w = first->GetDlgItem(id))
            ::EnableWindow(w, FALSE);
    m_nOrganizations = first->GetOrganizationBox() ? first->GetOrganizationBox()->GetCount() : 0;
    g_rows.push_back(first);
    UpdateButtons();
    return TRUE;
}

void CreateLinkedPatientsImpl::UpdateButtons()
{
    const int rows = static_cast<int>(g_rows.size());
    if (CWnd* add = GetDlgItem(IDC_CL_ADD))
        ::EnableWindow(add, rows < m_nOrganizations && m_nOrganizations >= 2 ? TRUE : FALSE);
    if (CWnd* remove = GetDlgItem(IDC_CL_REMOVE))
        ::EnableWindow(remove, rows > 1 ? TRUE : FALSE);
}

void CreateLinkedPatientsImpl::FollowPatient(const CString& organizationID, const CString& mrn)
{
    if (g_rows.empty())
        return;
    CreateLinkedPatientsRowDlg* first = g_rows.front();
    if (CComboBox* box = first->GetOrganizationBox()) {
        const int at = box->FindStringExact(-1, organizationID);
        box->SetCurSel(at);
        first->TakeSelection();
    }
    first->SetMRN(mrn);
}

void CreateLinkedPatientsImpl::OnAdd()
{
    if (static_cast<int>(g_rows.size()) >= m_nOrganizations)
        return;
    CreateLinkedPatientsRowDlg* row = MakeRow(static_cast<int>(g_rows.size()));
    for (CreateLinkedPatientsRowDlg* other : g_rows)
        row->RemoveOrganization(other->GetOrganizationID());
    if (CComboBox* box = row->GetOrganizationBox()) {
        box->SetCurSel(box->GetCount() > 0 ? 0 : -1);
        row->TakeSelection();
    }
    // What the new row holds is no longer free for the rows after the first.
    for (size_t i = 1; i < g_rows.size(); ++i)
        g_rows[i]->RemoveOrganization(row->GetOrganizationID());
    g_rows.push_back(row);
    UpdateButtons();
    if (CEdit* mrn = row->GetMRNEdit())
        mrn->setFocus(Qt::OtherFocusReason);
}

void CreateLinkedPatientsImpl::OnOrganizationChosen(CreateLinkedPatientsRowDlg* row, const CString& previousId)
{
    for (size_t i = 1; i < g_rows.size(); ++i) {
        if (g_rows[i] == row)
            continue;
        g_rows[i]->RemoveOrganization(row->GetOrganizationID());
    }
    // The organization given up is free again for the other rows.
    if (previousId.IsEmpty() || previousId == row->GetOrganizationID())
        return;
    const char* key = nullptr;
    for (CreateLinkedPatientsRowDlg* other : g_rows)
        if (CComboBox* box = other->GetOrganizationBox()) {
            const int at = box->FindStringExact(-1, previousId);
            if (at != CB_ERR)
                key = static_cast<const char*>(box->GetItemDataPtr(at));
        }
    for (size_t i = 1; i < g_rows.size(); ++i)
        if (g_rows[i] != row && key)
            g_rows[i]->AddOrganization(previousId, key);
}

void CreateLinkedPatientsImpl::OnRemove()
{
    // Each removal gives its organization back; the scan starts again from
    // the second row.
    for (size_t i = 1; i < g_rows.size();) {
        CreateLinkedPatientsRowDlg* row = g_rows[i];
        if (!row->IsMarked()) {
            ++i;
            continue;
        }
        for (size_t j = 0; j < g_rows.size(); ++j)
            if (g_rows[j] != row && row->GetOrganizationKeyData())
                g_rows[j]->AddOrganization(row->GetOrganizationID(), row->GetOrganizationKeyData());
        g_rows.erase(g_rows.begin() + static_cast<std::ptrdiff_t>(i));
        delete row;
        i = 1;
    }
    PlaceRows();
    UpdateButtons();
}

void CreateLinkedPatientsImpl::PlaceRows()
{
    for (size_t i = 0; i < g_rows.size(); ++i)
        ::MoveWindow(g_rows[i], ROW_LEFT, ROW_TOP + ROW_HEIGHT * static_cast<int>(i), ROW_WIDTH, ROW_HEIGHT);
}

BOOL CreateLinkedPatientsImpl::ValidateData()
{
    for (CreateLinkedPatientsRowDlg* row : g_rows) {
        if (!row->SaveMRN()) {
            if (row->GetMRN().IsEmpty()) {
                AfxMessageBox(IDS_PATIENT_ERR_MRN_EMPTY, MB_OK);
                if (CEdit* mrn = row->GetMRNEdit())
                    mrn->setFocus(Qt::OtherFocusReason);
            }
            return FALSE;
        }
    }
    return UpdateData(TRUE);
}
