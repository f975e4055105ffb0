#include "servicefaults.h"

#include "server.h"

std::string ServiceCall::ToString() const
{
    std::string out = operation + "(";
    for (size_t i = 0; i < args.size(); ++i) {
        if (i)
            out += ",";
        out += args[i];
    }
    return out + ")";
}

void ServiceFaults::FailOn(const std::string& operation, int code, int nth)
{
    m_faults.push_back(Fault{operation, nth, false, code, std::string(), 0});
}

void ServiceFaults::ThrowOn(const std::string& operation, const std::string& text, int nth)
{
    m_faults.push_back(Fault{operation, nth, true, 0, text, 0});
}

void ServiceFaults::ClearFaults()
{
    m_faults.clear();
}

std::vector<std::string> ServiceFaults::CallStrings() const
{
    std::vector<std::string> out;
    for (const auto& c : m_calls)
        out.push_back(c.ToString());
    return out;
}

std::vector<std::string> ServiceFaults::Operations() const
{
    std::vector<std::string> out;
    for (const auto& c : m_calls)
        out.push_back(c.operation);
    return out;
}

int ServiceFaults::Count(const std::string& operation) const
{
    int n = 0;
    for (const auto& c : m_calls)
        n += c.operation == operation;
    return n;
}

ServiceFaults::Action ServiceFaults::Enter(const std::string& operation, std::vector<std::string> args, int& code)
{
    m_calls.push_back(ServiceCall{operation, std::move(args)});
    const Fault* hit = nullptr;
    // Every matching fault counts the call, so each keeps its own numbering.
    for (auto& f : m_faults) {
        if (f.operation != operation)
            continue;
        ++f.seen;
        if (!hit && (f.nth == 0 || f.nth == f.seen))
            hit = &f;
    }
    if (!hit)
        return Action::Forward;
    if (hit->throws)
        throw Framework::Server(hit->text);
    code = hit->code;
    return Action::Fail;
}
