#pragma once

// ContactInfoPage: the "Contact Info" tab, wrapping ContactPageImpl.

#include "bravik_export.h"

#include "boundary/tavbasepage.h"

#include <ace/SString.h>

class ContactPageImpl;
class PatientDetailRecord;

class BRAVIK_EXPORT ContactInfoPage : public TavBasePage
{
    Q_OBJECT
public:
    ContactInfoPage(PatientDetailRecord* record, bool editMode);
    ~ContactInfoPage() override;

    BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0) override;
    BOOL ValidateData();
    void ApplyOrganizationDefaults(const ACE_CString& organizationKey);

    ContactPageImpl* GetImpl() const { return m_pImpl; }

private:
    ContactPageImpl* m_pImpl;
};
