#pragma once

#include "bravik_records_export.h"
#include "bdatetime.h"

#include <ace/SString.h>

// One image study attached to an exam (the workstation lists them to detach one).
class BRAVIK_RECORDS_EXPORT StudyRecord
{
public:
    StudyRecord() = default;

    const ACE_CString& GetStudyKey() const { return m_studyKey; }
    void SetStudyKey(const ACE_CString& v) { m_studyKey = v; }
    const ACE_CString& GetExamKey() const { return m_examKey; }
    void SetExamKey(const ACE_CString& v) { m_examKey = v; }
    const ACE_CString& GetStudyInstanceUID() const { return m_studyInstanceUID; }
    void SetStudyInstanceUID(const ACE_CString& v) { m_studyInstanceUID = v; }
    const ACE_CString& GetDescription() const { return m_description; }
    void SetDescription(const ACE_CString& v) { m_description = v; }
    const BDateTime& GetStudyDT() const { return m_studyDT; }
    void SetStudyDT(const BDateTime& v) { m_studyDT = v; }
    int GetImageCount() const { return m_imageCount; }
    void SetImageCount(int v) { m_imageCount = v; }

private:
    ACE_CString m_studyKey;
    ACE_CString m_examKey;
    ACE_CString m_studyInstanceUID;
    ACE_CString m_description;
    BDateTime m_studyDT;
    int m_imageCount = 0;
};
