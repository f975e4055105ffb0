#pragma once

// CDuplicatePatientList: the merge/link candidates of the duplicate patient
// worklist, one candidate pair per row. Every cell shows the first patient's
// value on its first line and the second patient's on its second line. The
// search header above the columns takes the criteria; MLCDataSetBuilder
// turns them into the candidate query.
//
// The list owns the candidate records the service returns; each row's item
// data is its record.

#include "bravik_export.h"

#include "duplicates/duplicatepatientlistsorthelper.h"

#include "cstring.h"
#include "listctrlex.h"

#include <ace/SString.h>

#include <map>
#include <vector>

class BDateTime;
class DuplicatePatientRecord;
class DupPatientListHeaderCtrl;
class MergeLinkCandidatesQueryDataSet;

class BRAVIK_EXPORT CDuplicatePatientList : public ListCtrlEx
{
    Q_OBJECT
public:
    enum eCOLINDEX
    {
        ePATIENT_NAME = 0,
        ePATIENT_ID = 1,
        eMRN = 2,
        eORGANIZATION = 3,
        eTYPE = 4,
        eREASON = 5,
        eDOB = 6,
        eSEX = 7
    };

    // Column titles by index, and the two "Type" texts (0 "Merge", 1 "Link");
    // filled by LoadNames from the module's string table.
    static std::map<short, CString> COLNAMES;
    static std::map<short, CString> DUPTYPENAMES;
    // The minimum width of every column.
    static const int MIN_DEFAULT_WIDTH;

    static void LoadNames();
    static CString GetColumnName(eCOLINDEX index);

    // Turns the search header's criteria into one candidate query.
    class BRAVIK_EXPORT MLCDataSetBuilder
    {
    public:
        explicit MLCDataSetBuilder(int rowCount);
        // Fills query; true when it may be sent. The first refused criterion
        // (in the map's order) ends the build and is logged.
        bool BuildFromParams(const std::map<CString, CString>& params, MergeLinkCandidatesQueryDataSet& query);

    private:
        void ProcessPatientNameParam(const CString& value, ACE_CString& first, ACE_CString& last);
        bool ProcessTypeParam(const CString& value, bool& merge, bool& link);
        bool ProcessReasonParam(const CString& value, ACE_CString& reason);
        bool ProcessSexParam(const CString& value, ACE_CString& sex);
        bool ProcessDOBParam(const CString& value, BDateTime& begin, BDateTime& end);

        int m_rowCount;
    };

    explicit CDuplicatePatientList(QWidget* parent = nullptr);
    ~CDuplicatePatientList() override;

    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) override;

    // Builds the query and, when it builds, fetches the candidates and shows
    // them. A refused criterion sets total to 0 and keeps the old rows.
    void DisplayItems(int rowCount, int& total);
    bool BuildMLCDataSet(int rowCount, MergeLinkCandidatesQueryDataSet& query);
    void RetrieveDuplicatePatients(MergeLinkCandidatesQueryDataSet& query, int& total);
    void PopulateResultsInUI();
    // (sic) Removes the rows when clearRows, then deletes every record.
    void DestoryAllItems(bool clearRows);

    // "Merge" when both patients are of one organization, else "Link".
    CString GetDupTypeStr(DuplicatePatientRecord& record);

    void SetItemTextAndBkgndColor(QPainter& dc, const CRect& rect, DWORD state, UINT row) override;

    void Sort();
    DuplicatePatientListSortHelper& GetSortHelper() { return m_sortHelper; }

    DupPatientListHeaderCtrl* GetSearchHeader() const { return m_searchHeader; }
    const std::vector<DuplicatePatientRecord*>& GetRecords() const { return m_records; }
    // The record shown in row; null when none.
    DuplicatePatientRecord* GetRecord(int row) const;

protected:
    LRESULT OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnQueryButtonClicked(WPARAM wParam, LPARAM lParam);
    LRESULT OnColumnHeaderClicked(WPARAM wParam, LPARAM lParam);

private:
    void AddColumns();

    DupPatientListHeaderCtrl* m_searchHeader = nullptr;
    DuplicatePatientListSortHelper m_sortHelper;
    std::vector<DuplicatePatientRecord*> m_records;
};
