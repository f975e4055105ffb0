#pragma once

// LinkedMergeListCtrl: one row per organization in which either patient has a
// linked record. A click on an organization label opens four read-only
// detail rows under it (name, sex and birth date, two address lines) and a
// second click takes exactly those rows away again. Hovering a text cell
// shows its whole text, so clipped MRNs and addresses stay readable.

#include "bravik_export.h"

#include "mergelink/comparisonlistctrl.h"
#include "listimagesubitem.h"

#include <ace/SString.h>

#include <vector>

class PatientDetailRecord;

// The organization label of a linked row: an image cell whose text is shown,
// right-aligned in a box as wide as the widest label of the list, so that all
// labels and their expand marks line up.
class BRAVIK_EXPORT LinkedOrganizationSubItem : public ListImageSubItem
{
public:
    LinkedOrganizationSubItem(int column, const CString& text);

    void SetLabelWidth(int width) { m_labelWidth = width; }
    int GetLabelWidth() const { return m_labelWidth; }

protected:
    void DrawContent(QPainter& painter, const CRect& rect) const override;

private:
    int m_labelWidth = 0;
};

class BRAVIK_EXPORT LinkedMergeListCtrl : public ComparisonListCtrl
{
    Q_OBJECT
public:
    // Rows added under an expanded organization label.
    static constexpr int DETAIL_ROWS = 4;
    static constexpr int TOOLTIP_MAX_WIDTH = 400;

    LinkedMergeListCtrl(const std::vector<PatientDetailRecord*>& linkedRecords1,
                        const std::vector<PatientDetailRecord*>& linkedRecords2);
    ~LinkedMergeListCtrl() override;

    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) override;

    // Expand / collapse on a label in column 0; true when the click was
    // handled here. Clicks in the value columns go to the toolkit (radios).
    bool OnItemClick(int item, int subItem);
    void OnItemClick(int row, int column, const CPoint& clientPoint) override;

    // The base layout, then every label box takes the widest label's width.
    void RecalcLayout();

    // The tooltip as the user sees it: the text of the hovered cell and
    // whether the tip is showing.
    const CString& GetToolTipText() const { return m_toolTipText; }
    bool IsToolTipActive() const { return m_toolTipActive; }
    int GetToolTipMaxWidth() const { return m_toolTipMaxWidth; }
    // Mouse move at a point of the list's client area (the hover handling).
    void OnMouseMove(const CPoint& clientPoint);

    // The organization ID inside a linked row's label "! MRN(ID):".
    static ACE_CString OrganizationIdFromLabel(const CString& label);
    // The first record of a list in that organization (from element 0 on), or null.
    static PatientDetailRecord* FindInOrganization(const std::vector<PatientDetailRecord*>& records,
                                                   const ACE_CString& organizationID);
    // The four detail texts of a record (all empty for a missing record).
    static std::vector<CString> DetailTexts(const PatientDetailRecord* record);

protected:
    void mouseMoveEvent(QMouseEvent* e) override;
    // The list shows its column titles (the toolkit keeps that band only
    // for a search header).
    void updateGeometries() override;
    void leaveEvent(QEvent* e) override;

private:
    void Expand(int row, ListSubItem* label);
    void Collapse(int row, ListSubItem* label);
    void HideToolTip();

    const std::vector<PatientDetailRecord*>& m_linkedRecords1;
    const std::vector<PatientDetailRecord*>& m_linkedRecords2;
    int m_hoverRow = -1;
    int m_hoverColumn = -1;
    CString m_toolTipText;
    bool m_toolTipActive = false;
    int m_toolTipMaxWidth = 0;
};
