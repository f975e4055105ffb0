#include "mergelink/linkpatientsdlgimpl.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"

#include "addressrecord.h"
#include "colorschema.h"
#include "drawmaster.h"
#include "mergelink/comparisonlistctrl.h"
#include "mergelink/patientcomparison.h"

#include "listctrlex.h"
#include "listtextsubitem.h"
#include "localefunctions.h"
#include "orgoperationscollection.h"
#include "patientgidformatter.h"
#include "serviceregistry.h"
#include "session.h"
#include "stringtable.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QPainter>

namespace {

constexpr UINT kLabelFormat = 2;
constexpr UINT kValueFormat = 0;

CString S(const ACE_CString& s) { return CString(s.c_str()); }

using PatientComparison::AddressText;
using PatientComparison::FieldText;
using PatientComparison::TextCell;

void setUpList(ListCtrlEx& list)
{
    // Report style, owner drawn, no column header and no scroll bars.
    list.setFont(DrawMaster::GetNormalFont());
    list.horizontalHeader()->hide();
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setSelectionMode(QAbstractItemView::NoSelection);
    list.setFocusPolicy(Qt::NoFocus);
    list.setFrameShape(QFrame::NoFrame);
    list.InsertColumn(0, Column("Col0", 0.28));
    list.InsertColumn(1, Column("Col1", 0.35));
    list.InsertColumn(2, Column("Col2", 0.37));
}

CString organizationIDs(const ACE_CString& key)
{
    ServiceRegistry* registry = Session::ServiceInstance();
    OrgOperationsCollection* orgs = registry ? registry->GetOrgOperationsCollection() : nullptr;
    return orgs ? S(orgs->OrganizationKeysToIDs(key)) : CString();
}

CString compareValue(const PatientDetailRecord& r, int row)
{
    // The first row names the organization; the rest are the merge dialog's fields.
    return row == 0 ? organizationIDs(r.GetOrganizationKey()) : FieldText(r, row - 1);
}

CString compareLabel(int row)
{
    static const UINT ids[LinkPatientsDlgImpl::COMPARE_ROW_COUNT] = {
        IDS_ML_ORGANIZATION, IDS_MRN_PREFIX,     IDS_ML_LAST_NAME,   IDS_ML_FIRST_NAME,  IDS_ML_MIDDLE_NAME,
        IDS_ML_SEX,          IDS_ML_GENDER,      IDS_ML_DOB,         IDS_ML_DOD,         0,
        IDS_ML_MAIDEN_NAME,  IDS_ML_WORK_PHONE,  IDS_ML_HOME_PHONE,  IDS_ML_EMAIL,       IDS_ML_TITLE,
        IDS_ML_SUFFIX,       IDS_ML_ALIAS_FIRST, IDS_ML_ALIAS_MIDDLE, IDS_ML_ALIAS_LAST,
    };
    // The global identifier's row takes the site's own title, as it stands.
    return ids[row] ? LoadString(ids[row]) : PatientGIDFormatter::GetPatientIDColumnName();
}

} // namespace

LinkPatientsDlgImpl::LinkPatientsDlgImpl(const PatientDetailRecord* firstPatient,
                                         const PatientDetailRecord* secondPatient)
    : m_pFirstPatient(firstPatient),
      m_pSecondPatient(secondPatient),
      m_pPatient(new PatientDetailRecord()),
      m_strTargetPatientKey(firstPatient ? S(firstPatient->GetPatientKey()) : CString()),
      m_strLinkPatientKey(secondPatient ? S(secondPatient->GetPatientKey()) : CString()),
      m_strTargetPatientOrgKey(firstPatient ? S(firstPatient->GetOrganizationKey()) : CString()),
      m_strLinkPatientOrgKey(secondPatient ? S(secondPatient->GetOrganizationKey()) : CString()),
      m_nFlag(1)
{
    setObjectName(QStringLiteral("LinkPatientsDlgImpl"));
    hide();
}

LinkPatientsDlgImpl::~LinkPatientsDlgImpl()
{
    delete m_pPatient;
}

BOOL LinkPatientsDlgImpl::Create(const CRect& rect, CWnd* parent)
{
    BRAVIK_MANAGE_STATE();
    setParent(parent);
    ::SetDlgCtrlID(this, IDC_LINK_PANEL);
    setGeometry(rect.toQRect());
    show();
    if (!CreateHeaderList() || !CreateCompareList() || !CreateAddressList())
        return FALSE;
    RecalcLayout(width(), height());
    return TRUE;
}

bool LinkPatientsDlgImpl::CreateHeaderList()
{
    const ColorSchema& cs = ColorSchema::Instance();
    m_pHeaderList = new ComparisonListCtrl();
    m_pHeaderList->setObjectName(QStringLiteral("IDC_LINK_HEADER_LIST"));
    if (!m_pHeaderList->Create(0, CRect(), this, IDC_LINK_HEADER_LIST))
        return false;
    setUpList(*m_pHeaderList);
    m_pHeaderList->SetRowColors(cs.GetListViewDarkRowBkColor(), cs.GetListViewDarkRowBkColor());
    std::vector<ListSubItemPtr> cells;
    cells.push_back(TextCell(0, CString(), kValueFormat));
    cells.push_back(TextCell(1, LoadString(IDS_ML_PATIENT_RECORD_1), kValueFormat));
    cells.push_back(TextCell(2, LoadString(IDS_ML_PATIENT_RECORD_2), kValueFormat));
    m_pHeaderList->InsertItem(std::move(cells));
    return true;
}

bool LinkPatientsDlgImpl::CreateCompareList()
{
    const ColorSchema& cs = ColorSchema::Instance();
    m_pCompareList = new ComparisonListCtrl();
    m_pCompareList->setObjectName(QStringLiteral("IDC_LINK_COMPARE_LIST"));
    if (!m_pCompareList->Create(0, CRect(), this, IDC_LINK_COMPARE_LIST))
        return false;
    setUpList(*m_pCompareList);
    m_pCompareList->SetRowColors(cs.GetListViewDarkRowBkColor(), cs.GetListCtrlBkColor());
    const PatientDetailRecord empty;
    const PatientDetailRecord& first = m_pFirstPatient ? *m_pFirstPatient : empty;
    const PatientDetailRecord& second = m_pSecondPatient ? *m_pSecondPatient : empty;
    for (int row = 0; row < COMPARE_ROW_COUNT; ++row) {
        std::vector<ListSubItemPtr> cells;
        cells.push_back(TextCell(0, compareLabel(row), kLabelFormat));
        cells.push_back(TextCell(1, compareValue(first, row), kValueFormat));
        cells.push_back(TextCell(2, compareValue(second, row), kValueFormat));
        m_pCompareList->InsertItem(std::move(cells));
    }
    return true;
}

bool LinkPatientsDlgImpl::CreateAddressList()
{
    const ColorSchema& cs = ColorSchema::Instance();
    m_pAddressList = new ComparisonListCtrl();
    m_pAddressList->setObjectName(QStringLiteral("IDC_LINK_ADDRESS_LIST"));
    if (!m_pAddressList->Create(0, CRect(), this, IDC_LINK_ADDRESS_LIST))
        return false;
    setUpList(*m_pAddressList);
    m_pAddressList->SetRowColors(cs.GetListCtrlBkColor(), cs.GetListCtrlBkColor());
    // Four address lines fit in the one row.
    const int lineHeight = QFontMetrics(m_pAddressList->font()).boundingRect(QStringLiteral("Wy")).height();
    m_pAddressList->SetItemHeight(m_pAddressList->GetItemHeight() + 4 * lineHeight);
    std::vector<ListSubItemPtr> cells;
    cells.push_back(TextCell(0, LoadString(IDS_ML_ADDRESS), kLabelFormat));
    cells.push_back(TextCell(1, AddressText(m_pFirstPatient), kValueFormat));
    cells.push_back(TextCell(2, AddressText(m_pSecondPatient), kValueFormat));
    m_pAddressList->InsertItem(std::move(cells));
    return true;
}

void LinkPatientsDlgImpl::RecalcLayout(int cx, int)
{
    if (!m_pCompareList || !m_pAddressList)
        return;
    const int h = QFontMetrics(font()).boundingRect(QStringLiteral("Wy")).height();
    if (m_pHeaderList)
        m_pHeaderList->setGeometry(0, 0, cx, 2 * h);
    const int compareTop = m_nGap + 2 * h;
    // Tall enough for every row: the list never scrolls.
    const int compareHeight = m_pCompareList->GetItemHeight() * m_pCompareList->GetItemCount();
    m_pCompareList->setGeometry(0, compareTop, cx, compareHeight);
    m_pAddressList->setGeometry(0, compareTop + compareHeight, cx, m_pAddressList->GetItemHeight());
    for (ListCtrlEx* list : {m_pHeaderList, m_pCompareList, m_pAddressList})
        if (list)
            list->RecalcLayout();
    update();
}

void LinkPatientsDlgImpl::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    RecalcLayout(width(), height());
}

void LinkPatientsDlgImpl::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), ColorSchema::Instance().GetDialogBkColor());
}
