#pragma once

#include <ace/SString.h>

#include <string>
#include <vector>

// What the fault decorators share: the calls made through them, in order,
// and the faults to inject. Operations are named by their bare member name
// ("GetPatient", "CreateExam", "GetOrgFromKey").
struct ServiceCall
{
    std::string operation;
    std::vector<std::string> args; // the key arguments, as text

    // "GetPatient(PK1,ORG1)".
    std::string ToString() const;
};

class ServiceFaults
{
public:
    // The chosen call returns code instead of being forwarded. nth counts the
    // calls of that operation from the moment the fault is set, from 1; 0
    // means every call. Operations without an int result give their empty
    // answer instead (false, empty text, null, empty list, total 0).
    void FailOn(const std::string& operation, int code, int nth = 0);
    // The chosen call throws Framework::Server(text) instead of being forwarded.
    void ThrowOn(const std::string& operation, const std::string& text, int nth = 0);
    // Removes every fault (the recorded calls stay).
    void ClearFaults();

    const std::vector<ServiceCall>& Calls() const { return m_calls; }
    // Every call as ServiceCall::ToString(), in order.
    std::vector<std::string> CallStrings() const;
    // The operation names only, in order.
    std::vector<std::string> Operations() const;
    int Count(const std::string& operation) const;
    void ClearCalls() { m_calls.clear(); }

    // Used by the decorators: records the call, then says what to do.
    enum class Action
    {
        Forward,
        Fail
    };
    // Throws Framework::Server for a throw fault.
    Action Enter(const std::string& operation, std::vector<std::string> args, int& code);

private:
    struct Fault
    {
        std::string operation;
        int nth;
        bool throws;
        int code;
        std::string text;
        int seen;
    };
    std::vector<Fault> m_faults;
    std::vector<ServiceCall> m_calls;
};

// Text of an ACE string for call records.
inline std::string Str(const ACE_CString& s)
{
    return std::string(s.c_str(), s.length());
}
