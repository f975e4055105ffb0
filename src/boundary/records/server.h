#pragma once

#include "bravik_records_export.h"

#include <exception>
#include <string>

namespace Framework {

// The framework's server exception: a service could not be reached or its
// store failed. what() is the description shown to users as the reason.
class BRAVIK_RECORDS_EXPORT Server : public std::exception
{
public:
    explicit Server(std::string description, int code = -1);
    ~Server() override;

    const char* what() const noexcept override;
    int GetCode() const noexcept { return m_code; }

private:
    std::string m_description;
    int m_code;
};

} // namespace Framework
