#pragma once

// ReasonParamDlg: what the three reason dialogs share. Each is a modal
// dialog holding a header-footer frame with the reason dialogs' Header, the
// reason panel and a DialogFooter, all made in the constructor and deleted in
// the destructor; each dialog's OnInitDialog assembles them in its own order
// with the steps below. Data exchange goes to the panel, and validates the
// reason once the validation switch is on (the end of initialisation).

#include "bravik_export.h"

#include "controlparentmodaldlg.h"
#include "cstring.h"

#include <vector>

class DialogFooter;
class DictionaryRecord;
class DictionaryService;
class ExamDeleteParamDlgImpl;
class HFDlg;

namespace ReasonDialogs {
class Header;
}

class BRAVIK_EXPORT ReasonParamDlg : public ControlParentModalDlg
{
    Q_OBJECT
public:
    using Header = ReasonDialogs::Header;

    // secondText is shown as given (the dialog adds its prefix).
    ReasonParamDlg(const CString& firstText, const CString& secondText, CWnd* parent);
    ~ReasonParamDlg() override;

    // The panel's reason, as the last data exchange or choice left it.
    const CString& GetReason() const;

    HFDlg* GetFrame() const { return m_pFrame; }
    Header* GetHeader() const { return m_pHeader; }
    ExamDeleteParamDlgImpl* GetPanel() const { return m_pImpl; }
    DialogFooter* GetFooter() const { return m_pFooter; }
    bool IsValidationOn() const { return m_bValidate; }

protected:
    // The session's dictionary service; null when the host installed none.
    static DictionaryService* Dictionaries();
    static const std::vector<DictionaryRecord*>& NoReasons();

    void CreateFrame();
    void ApplyHeader();
    void CreatePanel(const std::vector<DictionaryRecord*>& reasons);
    void ApplyFooter();
    void ShowFrame();
    void LayOutFrame();
    // The user answered No: the dialog ends as cancelled instead of going back.
    void CloseAsCancelled() { EndDialog(IDCANCEL); }

    void DoDataExchange(CDataExchange* pDX) override;
    void OnSize(UINT type, int cx, int cy) override;

    HFDlg* m_pFrame;
    Header* m_pHeader;
    ExamDeleteParamDlgImpl* m_pImpl;
    DialogFooter* m_pFooter;
    bool m_bValidate = false;
};
