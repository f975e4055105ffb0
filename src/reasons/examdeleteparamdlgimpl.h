#pragma once

// ExamDeleteParamDlgImpl: the reason panel the detach, delete/cancel exam
// and delete patient dialogs share. A list of predefined reasons (in the
// dictionary's order), a free-text reason that choosing a predefined one
// replaces, and two check boxes the dialogs show as they need: "Delete
// Studies" and "Permanent Delete".
//
// It is built from the module's template IDD_EXAMDELETEPARAM, so it must be
// constructed while the module's resources are current.

#include "bravik_export.h"

#include "cdialog.h"
#include "cstring.h"

#include <vector>

class DictionaryRecord;

class BRAVIK_EXPORT ExamDeleteParamDlgImpl : public CDialog
{
    Q_OBJECT
public:
    explicit ExamDeleteParamDlgImpl(CWnd* parent = nullptr);
    ~ExamDeleteParamDlgImpl() override;

    // The template, as the module registers it.
    static DialogTemplate MakeTemplate(const class StringTable& strings);

    // A copy of the list; the records stay the dictionary service's.
    void SetReasons(const std::vector<DictionaryRecord*>& reasons) { m_reasons = reasons; }
    const std::vector<DictionaryRecord*>& GetReasons() const { return m_reasons; }

    BOOL OnInitDialog() override;

    // Moves the controls to the fields (save) or back; with validate, a
    // blank reason is refused with "Reason cannot be empty.". FALSE when refused.
    BOOL ExchangeData(BOOL save, bool validate);

    const CString& GetReason() const { return m_strReason; }
    int GetDeleteStudiesFlg() const { return m_nDeleteStudies; }
    // Before the panel is created: the initial state of "Delete Studies".
    void SetDeleteStudiesFlg(int flag) { m_nDeleteStudies = flag; }
    int GetPermanentDelete() const { return m_nPermanentDelete; }

    void ShowDeleteStudies(bool show);
    void EnableDeleteStudies(bool enable);
    void ShowPermanentDelete(bool show);
    void SetNoteText(const CString& text);

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void resizeEvent(QResizeEvent* event) override;

    void OnSize(int cx, int cy);
    void OnSelchangeReasons(int index);

private:
    int m_nDeleteStudies = 0;
    int m_nPermanentDelete = 0;
    CString m_strReason;
    std::vector<DictionaryRecord*> m_reasons;
    bool m_bValidate = false;

    // From the template's geometry: the reason box's left margin, repeated
    // on its right and below it, and "Delete Studies"' distance from the right.
    int m_nEditMargin = 0;
    int m_nDeleteStudiesRightMargin = 0;
};
