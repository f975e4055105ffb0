#pragma once

// CreateLinkedPatientsImpl: the panel that lists the organizations, each
// with its MRN, in which copies of the new patient are to be created and
// linked to it. The first row is the patient being created: it follows the
// demographics and cannot be edited here. "+" adds a row (never more rows
// than organizations offered), "-" removes the rows whose box is ticked; no
// organization can be chosen in two rows.
//
// The rows live in one list shared by the whole module, so only one such
// panel can be open at a time.

#include "bravik_export.h"

#include "cdialog.h"
#include "cstring.h"

#include <vector>

class CreateLinkedPatientsRowDlg;

class BRAVIK_EXPORT CreateLinkedPatientsImpl : public CDialog
{
    Q_OBJECT
public:
    static constexpr int ROW_LEFT = 30;
    static constexpr int ROW_TOP = 50;
    static constexpr int ROW_WIDTH = 450;
    static constexpr int ROW_HEIGHT = 45;

    explicit CreateLinkedPatientsImpl(CWnd* parent = nullptr);
    ~CreateLinkedPatientsImpl() override;

    BOOL OnInitDialog() override;
    // Trims every row's MRN; "MRN cannot be empty." with the focus on the
    // first empty one.
    BOOL ValidateData();

    // The shared rows, in display order; the first is the patient itself.
    static const std::vector<CreateLinkedPatientsRowDlg*>& GetRows();
    int GetOrganizationLimit() const { return m_nOrganizations; }

    // The first row follows the patient's organization and MRN.
    void FollowPatient(const CString& organizationID, const CString& mrn);

    void OnAdd();
    void OnRemove();

private:
    CreateLinkedPatientsRowDlg* MakeRow(int index);
    void OnOrganizationChosen(CreateLinkedPatientsRowDlg* row, const CString& previousId);
    void PlaceRows();
    void UpdateButtons();

    int m_nOrganizations = 0;
};
