#pragma once

#include "bravik_archive_export.h"

#include <cstdint>
#include <string>
#include <vector>

// The blocking rules that make two patients merge/link candidates. Each rule
// turns a patient into block keys; two patients of one block are a pair when
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
// Rules for the ordinary errors of registration desks. Those with the names
// as written share one block (the names, case ignored), those on the birth
// date share another.
constexpr int kNearIdentifierBirth = 8; // identifiers one typing error apart + date of birth
constexpr int kNearIdentifierName = 9;  // identifiers one typing error apart + last + first name as written
constexpr int kFirstNameBirthNoSex = 10; // first name + date of birth, sex unknown on either
constexpr int kNameBirthMissing = 11;  // last + first name as written, a birth date missing or no date
constexpr int kNameBirthDigit = 12;    // last + first name as written, birth dates one digit apart
constexpr int kSimilarNameBirth = 13;  // last and first name within two typing errors each + date of birth
// A birth date near (one digit, day and month swapped, or no date on one)
// and one name mistyped: the other name as written, the mistyped one's
// first or last letter and the birth year or month and day make the blocks.
constexpr int kLastNameNearBirth = 14;  // last name as written, first name within two typing errors
constexpr int kFirstNameNearBirth = 15; // first name as written, last name within two typing errors
// The same blocks read either way round, for names recorded in each other's
// fields: either name as written with the other's first letter.
constexpr int kSwappedNearBirth = 16;   // first and last name swapped, each within two typing errors
// No birth date to block on: either name as written (in either field) with
// the other name's first letter makes the block.
constexpr int kSimilarNameNoBirth = 17; // one name as written, the other within two typing errors, a birth date missing
// Two errors in the birth date: one digit off after day and month are put
// back (blocks of the names as written).
constexpr int kNameBirthTwoApart = 18;  // last + first name as written, birth dates one digit apart once day and month swap
// Both names mistyped and the birth date near: the initials of the two names
// (in either order) with the birth year and month, the birth year and day,
// the birth month and day, or the birth year and the month and day either
// way round make the blocks.
constexpr int kSimilarNameNearBirth = 19; // last and first name within two typing errors each, birth dates near
constexpr int kCount = 19;

// A block larger than this yields no pairs for its rule (site setting).
constexpr int kDefaultBlockCap = 50;
constexpr const char* kBlockCapSetting = "CandidateBlockCap";

struct Person
{
    std::string key, orgKey, group, mrn, last, first, middle, sex, dob, gid;
    // Derived once: normalised and case-folded names, the phonetic key, the
    // characters present in each normalised name (a bit per character code
    // modulo 32), whether the birth date is a real day.
    std::string normLast, normFirst, phonetic, foldLast, foldFirst;
    std::uint32_t lastBits = 0, firstBits = 0;
    bool dobValid = false;
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

// Two identifiers of one length that differ by one character or by two
// neighbouring characters swapped.
BRAVIK_ARCHIVE_EXPORT bool OneTypingErrorApart(const std::string& x, const std::string& y);
// Whether the optimal string alignment distance (edits and neighbour swaps)
// of two texts is at most `most`.
BRAVIK_ARCHIVE_EXPORT bool WithinEdits(const std::string& x, const std::string& y, int most);
// A YYYYMMDD text that names a real day.
BRAVIK_ARCHIVE_EXPORT bool ValidBirthDate(const std::string& dob);
// The initials of the two names, the lower first (ASCII letters upper-cased).
BRAVIK_ARCHIVE_EXPORT std::string Initials(const std::string& last, const std::string& first);
// Equal, one digit apart, day and month swapped, or either no date.
BRAVIK_ARCHIVE_EXPORT bool BirthDatesNear(const std::string& x, const std::string& y);
// The first and the last character (UTF-8) of a text, ASCII letters upper-cased.
BRAVIK_ARCHIVE_EXPORT std::string Initial(const std::string& text);
BRAVIK_ARCHIVE_EXPORT std::string Final(const std::string& text);
// No sex recorded, or the code for unknown.
BRAVIK_ARCHIVE_EXPORT bool SexUnknown(const std::string& sex);

// Rules whose block keys are the same: the lowest of them (or the rule itself).
BRAVIK_ARCHIVE_EXPORT int SameBlockAs(int rule);
// The patient's blocks of a rule: none when the rule does not apply, one for
// most rules, two for the near-birth-date rules. Two patients are a pair of
// the rule when they share a block no larger than the cap and PairHolds.
BRAVIK_ARCHIVE_EXPORT std::vector<std::string> BlockKeys(int rule, const Person& p);
// For two patients sharing a block of `rule`.
BRAVIK_ARCHIVE_EXPORT bool PairHolds(int rule, const Person& x, const Person& y);

// The link/merge reason dictionary code of a rule, and the text used when the
// site's dictionary lacks it.
BRAVIK_ARCHIVE_EXPORT const char* ReasonCode(int rule);
BRAVIK_ARCHIVE_EXPORT const char* DefaultReasonText(int rule);

} // namespace CandidateRules
