#pragma once

// PatientDemographicsPage: the "Demographics" tab. It wraps the form
// (PatientDemographicsImpl) and forwards the page contract to it:
//
//   auto* page = new PatientDemographicsPage(&record, editMode);
//   frame->AddPage(page, tabName);               // creates the form
//   page->GetPublisher().Subscribe(this);        // change notices
//   ... on save: if (!page->ValidateData()) { frame->ActivatePage(tabName); return; }

#include "bravik_export.h"

#include "boundary/tavbasepage.h"

#include "publisher.h"

class PatientDemographicsImpl;
class PatientDetailRecord;

class BRAVIK_EXPORT PatientDemographicsPage : public TavBasePage
{
    Q_OBJECT
public:
    PatientDemographicsPage(PatientDetailRecord* record, bool editMode);
    ~PatientDemographicsPage() override;

    BOOL Create(CWnd* parent, const CRect& rect = CRect(), UINT id = 0) override;
    BOOL ValidateData();

    PatientDemographicsImpl* GetImpl() const { return m_pImpl; }
    Publisher<long, long>& GetPublisher();

private:
    PatientDemographicsImpl* m_pImpl;
};
