#pragma once

// LinkedRecordsPage: the "Links" tab of the patient dialog in edit mode,
// wrapping CLinkPatientImpl.

#include "bravik_export.h"

#include "boundary/tavbasepage.h"

class CLinkPatientImpl;
class PatientDetailRecord;

class BRAVIK_EXPORT LinkedRecordsPage : public TavBasePage
{
    Q_OBJECT
public:
    explicit LinkedRecordsPage(PatientDetailRecord* patient);
    ~LinkedRecordsPage() override;

    BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0) override;
    BOOL ValidateData();

    CLinkPatientImpl* GetImpl() const { return m_pImpl; }

private:
    CLinkPatientImpl* m_pImpl;
};
