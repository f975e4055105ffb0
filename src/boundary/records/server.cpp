#include "server.h"

#include <utility>

namespace Framework {

Server::Server(std::string description, int code) : m_description(std::move(description)), m_code(code)
{
}

Server::~Server() = default;

const char* Server::what() const noexcept
{
    return m_description.c_str();
}

} // namespace Framework
