#include "normaleditvalidator.h"

NormalEditValidator::NormalEditValidator(CWnd* window, bool required, bool trimBlanks)
    : m_window(window), m_required(required), m_trimBlanks(trimBlanks)
{
}

NormalEditValidator::~NormalEditValidator() = default;

bool NormalEditValidator::IsValid(const CString& text) const
{
    if (!m_required)
        return true;
    CString t = text;
    if (m_trimBlanks)
        t.Trim();
    return !t.IsEmpty();
}

bool NormalEditValidator::Validate() const
{
    return !m_window || IsValid(GetWindowText(m_window));
}
