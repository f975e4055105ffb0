#pragma once

#include <cstdint>
#include <string>

class ArchiveDb;

// Seeds an archive with patients and second registrations of some of them,
// written the way registration desks get them wrong. The errors are drawn
// from the usual kinds of data-entry error with fixed rates (see the .cpp),
// knowing nothing of the candidate rules. Every true pair is recorded in
// bench_duplicates(key_a, key_b, errors) with `errors` a mask of ErrorKind.
namespace RegistrationSeeder {

enum ErrorKind {
    KeyboardSubstitution, // a neighbouring key in a name
    OcrSubstitution,      // a letter read as a look-alike (rn/m, cl/d, ...)
    Insertion,            // a letter too many in a name
    Deletion,             // a letter missing from a name
    Transposition,        // two neighbouring letters of a name swapped
    PhoneticRespelling,   // the name written as it sounds (ph/f, y/ie, ...)
    IdentifierDigit,      // one identifier digit wrong or two neighbours swapped
    IdentifierMissing,    // no identifier taken on the second registration
    BirthDateDigit,       // one digit of the birth date wrong
    BirthDayMonth,        // day and month of the birth date confused
    BirthDateMissing,     // birth date missing or not a date
    SexMissing,           // sex not recorded
    NamesSwapped,         // first and last name in each other's fields
    OtherOrganization,    // registered at another hospital (not an error; a link pair)
    KindCount
};

const char* KindName(int kind);

void Seed(ArchiveDb& db, int patients, std::uint64_t seed);

} // namespace RegistrationSeeder
