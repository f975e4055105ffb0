#pragma once

// CreateLinkedPatientsPage: the "Create Linked Patient" tab of the patient
// dialog in create mode, wrapping CreateLinkedPatientsImpl.

#include "bravik_export.h"

#include "boundary/tavbasepage.h"

class CreateLinkedPatientsImpl;

class BRAVIK_EXPORT CreateLinkedPatientsPage : public TavBasePage
{
    Q_OBJECT
public:
    CreateLinkedPatientsPage();
    ~CreateLinkedPatientsPage() override;

    BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0) override;
    BOOL ValidateData();

    CreateLinkedPatientsImpl* GetImpl() const { return m_pImpl; }

private:
    CreateLinkedPatientsImpl* m_pImpl;
};
