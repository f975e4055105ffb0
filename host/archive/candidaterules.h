#pragma once

#include "bravik_archive_export.h"

#include <string>

// The blocking rules that make two patients merge/link candidates. Each rule
// turns a patient into a block key; two patients of one block are a pair when
// the rule's own pair test also holds. Numbered in the order a pair's reason
// is chosen: the lowest rule that holds names it.
namespace CandidateRules {

constexpr int kSharedIdentifier = 1;   // the same SSN / global identifier
constexpr int kNameAndBirthDate = 2;   // normalised last + first name + date of birth
constexpr int kSoundAndBirthDate = 3;  // phonetic key of the last name + date of birth
constexpr int kFirstNameBirthSex = 4;  // first name + date of birth + sex
constexpr int kDayMonthSwapped = 5;    // last + first name, birth day and month swapped
constexpr int kNamesSwapped = 6;       // first and last name swapped + date of birth
constexpr int kNameBirthMonth = 7;     // last + first name as written (case ignored) + birth year and month
constexpr int kCount = 7;

// A block larger than this yields no pairs for its rule (site setting).
constexpr int kDefaultBlockCap = 50;
constexpr const char* kBlockCapSetting = "CandidateBlockCap";

struct Person
{
    std::string key, orgKey, group, mrn, last, first, middle, sex, dob, gid;
    // Derived once: normalised names and the phonetic key.
    std::string normLast, normFirst, phonetic;
    void Derive();
};

// Upper-case ASCII letters and digits; blanks, hyphens, apostrophes and other
// ASCII punctuation dropped; other bytes (UTF-8) kept.
BRAVIK_ARCHIVE_EXPORT std::string Normalize(const std::string& text);
// A four-character sound code of a name (first letter and three digits), empty
// for a name without letters.
BRAVIK_ARCHIVE_EXPORT std::string Phonetic(const std::string& text);
// YYYYDDMM for a YYYYMMDD date whose day could be a month and differs from it;
// empty otherwise.
BRAVIK_ARCHIVE_EXPORT std::string SwapDayMonth(const std::string& dob);

// ASCII letters upper-cased, everything else kept: two names are equal
// folded exactly when the archive's case-blind comparison finds them equal.
BRAVIK_ARCHIVE_EXPORT std::string FoldCase(const std::string& text);
// The YYYYMM start of a birth date, empty for a date too short to have one.
BRAVIK_ARCHIVE_EXPORT std::string BirthMonth(const std::string& dob);

// Empty when the rule does not apply to the patient.
BRAVIK_ARCHIVE_EXPORT std::string BlockKey(int rule, const Person& p);
// For two patients with the same block key of `rule`.
BRAVIK_ARCHIVE_EXPORT bool PairHolds(int rule, const Person& x, const Person& y);

// The link/merge reason dictionary code of a rule, and the text used when the
// site's dictionary lacks it.
BRAVIK_ARCHIVE_EXPORT const char* ReasonCode(int rule);
BRAVIK_ARCHIVE_EXPORT const char* DefaultReasonText(int rule);

} // namespace CandidateRules
