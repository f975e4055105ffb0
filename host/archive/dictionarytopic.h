#pragma once

// The topics of the dictionary table. The values that the records' topic
// enumeration defines are stored under the same number, so a topic asked for
// by the module reads its rows directly; topics only reached through their
// own getters (priorities, reasons) live from 100 up.
namespace DictionaryTopic {
constexpr int MaritalStatus = 0;
constexpr int Language = 1;
constexpr int Country = 2;
constexpr int State = 3;
constexpr int Sex = 4;
constexpr int Race = 5;
constexpr int ExamStatus = 6;
constexpr int Priority = 7;
constexpr int VipStatus = 8;
constexpr int Gender = 9;
constexpr int LinkMergeReason = 101;
constexpr int DeleteExamReason = 102;
constexpr int CancelExamReason = 103;
constexpr int DeletePatientReason = 104;
constexpr int DetachStudyReason = 105;
constexpr int DiagnosticImageStatus = 106;
}

// Codes of the two link/merge reasons a candidate search reports; their
// descriptions are the texts shown.
namespace CandidateReasonCode {
constexpr const char* SharedIdentifier = "GID";
constexpr const char* NameAndBirthDate = "NAMEDOB";
}
