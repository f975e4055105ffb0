#pragma once

// The reason dialogs' header: the module icon, then two lines: the sentence
// the host passed (bold, wrapped when long) and the record it concerns
// ("Accession #: ..." or "MRN: ...").

#include "bravik_export.h"

#include "basetabheader.h"
#include "crect.h"
#include "cstring.h"

namespace ReasonDialogs {

class BRAVIK_EXPORT Header : public BaseTabHeader
{
    Q_OBJECT
public:
    Header(const CString& firstText, const CString& secondText);
    ~Header() override;

    const CString& GetFirstText() const { return m_strFirst; }
    const CString& GetSecondText() const { return m_strSecond; }
    void SetTexts(const CString& firstText, const CString& secondText);

    // Where each text was last drawn (empty before the first paint).
    const CRect& GetFirstTextRect() const { return m_rcFirst; }
    const CRect& GetSecondTextRect() const { return m_rcSecond; }

protected:
    void OnPaint(QPainter& dc) override;

private:
    CString m_strFirst;
    CString m_strSecond;
    CRect m_rcFirst;
    CRect m_rcSecond;
};

} // namespace ReasonDialogs
