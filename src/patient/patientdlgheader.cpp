#include "patient/patientdlgheader.h"

#include "boundary/resource.h"
#include "boundary/tavhelper.h"

#include "bdate.h"
#include "localefunctions.h"
#include "options.h"
#include "viputil.h"

#include "colorschema.h"
#include "drawmaster.h"
#include "drawtext.h"
#include "qtconvert.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <QPainter>

namespace {
constexpr int kTextGap = 12;
} // namespace

PatientDlg::Header::Header()
{
    setObjectName(QStringLiteral("PatientDlgHeader"));
    m_clrBackground = ColorSchema::Instance().GetShortcutBarBkColor();
    m_clrText = 0x402715;
}

PatientDlg::Header::~Header() = default;

void PatientDlg::Header::SetSummary(const PatientDetailRecord& record)
{
    m_strPatientID = LoadString(IDS_MRN_PREFIX);
    m_strPatientID += record.GetPatientID().length() > 0 ? CString(record.GetPatientID().c_str())
                                                         : LoadString(IDS_PATIENT_NOT_AVAILABLE);
    std::vector<CString> parts;
    if (!record.IsNameNull())
        parts.emplace_back(record.GetPatientName().c_str());
    if (record.GetSexCode().length() > 0)
        parts.push_back(TavHelper().GetSexCodeDescription(record.GetSexCode()));
    if (record.GetDOB().IsValid())
        parts.push_back(Locale::FormatDate(record.GetDOB(), Locale::eShort));
    m_strDemographics.Empty();
    for (const CString& part : parts) {
        if (part.IsEmpty())
            continue;
        if (!m_strDemographics.IsEmpty())
            m_strDemographics += "    ";
        m_strDemographics += part;
    }
    m_strVIP.Empty();
    const ACE_CString& vip = record.GetVIPStatusCode();
    if (Options::IsOptionSet(Options::OPT_VIP_STATUS) && vip.length() > 0) {
        int code = 0;
        if (VIPUtil::StringToVIPStatusCode(vip.c_str(), code)) {
            m_strVIP.Format(LoadString(IDS_PATIENT_VIP_STATUS).GetString(), vip.c_str());
        } else {
            ACE_LOG_MSG->file(__FILE__);
            ACE_LOG_MSG->linenum(__LINE__);
            ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d Invalid VIP status code - %s\n"),
                       "VIPUtil::StringToVIPStatusCode", __LINE__, vip.c_str()));
        }
    }
    update();
}

void PatientDlg::Header::OnPaint(QPainter& dc)
{
    m_nTextLeft = GetIconPos().x + ICON_SIZE + kTextGap;
    const QFont& normal = DrawMaster::GetNormalFont();
    QFont bold = normal;
    bold.setBold(true);
    std::vector<std::pair<const CString*, const QFont*>> lines{{&m_strPatientID, &bold}};
    if (!m_strDemographics.IsEmpty())
        lines.push_back({&m_strDemographics, &normal});
    if (!m_strVIP.IsEmpty())
        lines.push_back({&m_strVIP, &normal});
    int total = 0;
    for (const auto& line : lines)
        total += QFontMetrics(*line.second).height() + m_nLineGap;
    int y = std::max(2, (height() - total) / 2);
    dc.setPen(toQColor(m_clrText));
    dc.setBackgroundMode(Qt::TransparentMode);
    for (const auto& line : lines) {
        dc.setFont(*line.second);
        const int h = QFontMetrics(*line.second).height();
        const QRect r(m_nTextLeft, y, width() - m_nTextLeft - kTextGap, h);
        dc.drawText(r, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                    QFontMetrics(*line.second).elidedText(toQString(*line.first), Qt::ElideRight, r.width()));
        y += h + m_nLineGap;
    }
}

PatientDlg::Footer::Footer(PatientDlg* owner) : DialogFooter(owner), m_pDlg(owner)
{
    setObjectName(QStringLiteral("PatientDlgFooter"));
}

PatientDlg::Footer::~Footer() = default;

void PatientDlg::Footer::OnOK()
{
    if (m_pDlg)
        m_pDlg->OnOK();
}

void PatientDlg::Footer::paintEvent(QPaintEvent*)
{
    QPainter dc(this);
    const ColorSchema& cs = ColorSchema::Instance();
    DrawMaster::FillSolidRect(dc, CRect(0, 0, width(), height()), cs.GetDialogBkColor());
    DrawMaster::DrawHLine(dc, 0, width(), 0, cs.GetSeparatorColor());
}
