#pragma once

// ContactInfo: a read-only panel with a person's address (several lines) and
// work phone, as the provider page shows the referring physician's.

#include "bravik_toolkit_export.h"

#include "crect.h"
#include "cstring.h"
#include "cwnd.h"
#include "windefs.h"

#include <QWidget>

class CStatic;

constexpr int IDC_CONTACT_ADDRESS = 9200;
constexpr int IDC_CONTACT_WPHONE = 9201;

class BRAVIK_TOOLKIT_EXPORT ContactInfo : public QWidget, public WindowOps<ContactInfo>
{
    Q_OBJECT
public:
    explicit ContactInfo(QWidget* parent = nullptr);
    ~ContactInfo() override;

    // A child of parent at rect.
    BOOL Create(CWnd* parent, const CRect& rect);
    void SetBkColor(COLORREF color);

    void SetAddress(const CString& address);
    void SetWPhone(const CString& phone);
    CString GetAddress() const;
    CString GetWPhone() const;

private:
    CStatic* m_pAddress;
    CStatic* m_pWPhone;
};
