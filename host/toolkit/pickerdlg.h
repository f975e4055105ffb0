#pragma once

// PickerDlg: the modal chooser behind every picker. A search field that
// starts from the text typed into the picker, and below it the dictionary's
// entries that match, read again as the user types. The keyboard does it
// all: type to narrow, Up / Down / Page Up / Page Down move through the list
// without leaving the field, Enter takes the highlighted entry (or, where the
// source allows several, every selected one), Esc cancels. A double click
// takes a row too.
//
// What is searched and how rows read is the PickerSource's business; the
// dialog only shows its rows and reports which were chosen.

#include "bravik_toolkit_export.h"

#include "cdialog.h"
#include "column.h"
#include "cstring.h"

#include <vector>

class ListCtrlEx;

constexpr int IDC_PICKER_SEARCH_LABEL = 9100;
constexpr int IDC_PICKER_SEARCH = 9101;
constexpr int IDC_PICKER_LIST = 9102;
constexpr int IDC_PICKER_NOTE = 9103;

class BRAVIK_TOOLKIT_EXPORT PickerSource
{
public:
    virtual ~PickerSource();

    virtual CString Caption() const = 0;
    virtual std::vector<Column> Columns() const = 0;
    // Replaces the matches with those of the text. Returns a note for the
    // user when the matches are not the whole answer or could not be read;
    // empty otherwise.
    virtual CString Search(const CString& text) = 0;
    virtual int Count() const = 0;
    virtual std::vector<CString> RowTexts(int row) const = 0;
    virtual bool AllowsSeveral() const { return false; }
};

class BRAVIK_TOOLKIT_EXPORT PickerDlg : public CDialog
{
    Q_OBJECT
public:
    // Rows shown at most; more matches ask the user to type more.
    static constexpr int kMaxRows = 60;

    PickerDlg(PickerSource& source, const CString& searchText, CWnd* parent = nullptr);
    ~PickerDlg() override;

    BOOL OnInitDialog() override;
    void OnOK() override;

    // The source's rows the user took, ascending; meaningful after IDOK.
    const std::vector<int>& GetChosenRows() const { return m_chosen; }
    ListCtrlEx* GetList() const { return m_pList; }
    CString GetNote() const;
    // Puts text in the search field and shows its matches, as typing it would.
    void Search(const CString& text);

    static DialogTemplate MakeTemplate(const CString& caption);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void OnSearchChanged();
    void Fill(const CString& note);
    void MoveSelection(int delta);

    PickerSource& m_source;
    CString m_strSearch;
    ListCtrlEx* m_pList = nullptr;
    std::vector<int> m_chosen;
};
