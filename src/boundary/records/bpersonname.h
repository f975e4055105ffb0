#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

// A person's name by components. The DICOM Person Name form is
// "Last^First^Middle^Prefix^Suffix" with trailing empty components dropped.
class BRAVIK_RECORDS_EXPORT BPersonName
{
public:
    BPersonName() = default;
    BPersonName(const ACE_CString& last, const ACE_CString& first, const ACE_CString& middle = ACE_CString(),
                const ACE_CString& prefix = ACE_CString(), const ACE_CString& suffix = ACE_CString());
    // From the DICOM form; components beyond the fifth are ignored.
    static BPersonName FromDICOMName(const char* dicomName);

    const ACE_CString& GetLastName() const { return m_last; }
    const ACE_CString& GetFirstName() const { return m_first; }
    const ACE_CString& GetMiddleName() const { return m_middle; }
    // The title ("Dr", "Mrs").
    const ACE_CString& GetPrefix() const { return m_prefix; }
    const ACE_CString& GetSuffix() const { return m_suffix; }

    void SetLastName(const ACE_CString& v) { m_last = v; }
    void SetFirstName(const ACE_CString& v) { m_first = v; }
    void SetMiddleName(const ACE_CString& v) { m_middle = v; }
    void SetPrefix(const ACE_CString& v) { m_prefix = v; }
    void SetSuffix(const ACE_CString& v) { m_suffix = v; }

    bool IsEmpty() const;
    ACE_CString ToDICOMName() const;
    // The single-string form shown to users: "Last, First Middle" (missing
    // parts and their separators left out).
    ACE_CString GetDisplayName() const;

    friend bool operator==(const BPersonName& a, const BPersonName& b)
    {
        return a.m_last == b.m_last && a.m_first == b.m_first && a.m_middle == b.m_middle
            && a.m_prefix == b.m_prefix && a.m_suffix == b.m_suffix;
    }

private:
    ACE_CString m_last;
    ACE_CString m_first;
    ACE_CString m_middle;
    ACE_CString m_prefix;
    ACE_CString m_suffix;
};
