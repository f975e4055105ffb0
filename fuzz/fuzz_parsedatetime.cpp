// Fuzzes parsing of user-typed dates. The first byte chooses the date pattern.
#include "fuzzcheck.h"

#include "bdate.h"
#include "coledatetime.h"
#include "localefunctions.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    static const char* const patterns[] = {"MM/dd/yyyy", "dd.MM.yyyy", "yyyy-MM-dd", "d/M/yyyy", "yyyyMMdd"};
    Locale::SetDatePattern(patterns[data[0] % 5]);
    std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    text = text.substr(0, text.find('\0'));

    COleDateTime value;
    const bool ok = Locale::ParseDateTime(value, CString(text.c_str()));
    if (ok) {
        FUZZ_CHECK(value.GetStatus() == COleDateTime::valid);
        const BDate date(static_cast<unsigned>(value.GetYear()), static_cast<unsigned>(value.GetMonth()),
                         static_cast<unsigned>(value.GetDay()));
        FUZZ_CHECK(date.IsValid());
        // What the locale formats, it parses back to the same date.
        COleDateTime again;
        FUZZ_CHECK(Locale::ParseDateTime(again, Locale::FormatDate(date, Locale::eShort)));
        FUZZ_CHECK(again.GetYear() == value.GetYear() && again.GetMonth() == value.GetMonth()
                   && again.GetDay() == value.GetDay());
    } else {
        FUZZ_CHECK(value.GetStatus() != COleDateTime::valid);
    }
    Locale::Reset();
    return 0;
}
