#include "reasonfixture.h"

#include "dictionaryrecord.h"

#include "cedit.h"
#include "dialogtemplate.h"

ReasonDictionaries::~ReasonDictionaries() = default;

void ReasonDictionaries::fill(std::vector<DictionaryRecord*>& list, const std::vector<std::string>& descriptions,
                              const char* prefix)
{
    list.clear();
    int n = 0;
    for (const std::string& d : descriptions) {
        const std::string code = std::string(prefix) + std::to_string(++n);
        m_owned.push_back(std::make_unique<DictionaryRecord>(ACE_CString(code.c_str()), ACE_CString(d.c_str())));
        list.push_back(m_owned.back().get());
    }
}

void ReasonTest::SetUp()
{
    Preferences::Instance().Reset();
    SitePolicy::Reset();
    m_services = std::make_unique<ScopedServices>(nullptr, nullptr, &m_dictionaries);
}

void ReasonTest::TearDown()
{
    m_services.reset();
    Preferences::Instance().Reset();
    SitePolicy::Reset();
}

void ReasonTest::SetStudyDeletionEnabled(bool on)
{
    SitePolicySettings settings = SitePolicy::Get();
    settings.studyDeletionEnabled = on;
    SitePolicy::Set(settings);
}

namespace {

ReasonParamDlg* asReasonDialog(CDialog& dlg)
{
    auto* r = qobject_cast<ReasonParamDlg*>(&dlg);
    if (!r)
        throw std::logic_error(std::string("not a reason dialog: ") + dlg.metaObject()->className());
    return r;
}

} // namespace

ReasonForm::ReasonForm(CDialog& dlg) : m_dlg(asReasonDialog(dlg)), m_panel(*m_dlg->GetPanel()) {}

std::vector<CString> ReasonForm::ListItems() const
{
    std::vector<CString> items;
    if (auto* list = m_panel.ItemAs<CComboBox>(IDC_REASON_LIST))
        for (int i = 0; i < list->GetCount(); ++i)
            items.push_back(list->GetLBText(i));
    return items;
}

int ReasonForm::ListSelection() const
{
    auto* list = m_panel.ItemAs<CComboBox>(IDC_REASON_LIST);
    return list ? list->GetCurSel() : -2;
}

bool ReasonForm::AppendReason(const QString& text)
{
    auto* edit = m_panel.ItemAs<CEdit>(IDC_REASON_EDIT);
    if (!edit)
        return false;
    edit->editor()->setFocus();
    return PressKey(edit->editor(), Qt::Key_End, Qt::ControlModifier) && m_panel.Type(IDC_REASON_EDIT, text);
}

bool ReasonForm::IsChecked(int id) const
{
    auto* box = m_panel.ItemAs<CButton>(id);
    return box && box->GetCheck() == BST_CHECKED;
}

CRect PanelControlPixels(int x, int y, int cx, int cy)
{
    const DialogUnits units = DialogUnits::FromFont(QFont(QStringLiteral("Arial"), 10));
    DialogControl c;
    c.x = x;
    c.y = y;
    c.cx = cx;
    c.cy = cy;
    return units.MapControl(c);
}
