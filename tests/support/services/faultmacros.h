#pragma once

// Shared by the decorators' definitions: record the call, then return the
// injected result (or let ServiceFaults throw) instead of forwarding.
#include "servicefaults.h"

#define BRAVIK_FAULT(op, failValue, ...)                                                                   \
    do {                                                                                                   \
        int code_ = 0;                                                                                     \
        if (m_faults.Enter(op, {__VA_ARGS__}, code_) == ServiceFaults::Action::Fail) {                     \
            (void)code_;                                                                                   \
            return failValue;                                                                              \
        }                                                                                                  \
    } while (0)

#define BRAVIK_FAULT_INT(op, ...)                                                                          \
    do {                                                                                                   \
        int code_ = 0;                                                                                     \
        if (m_faults.Enter(op, {__VA_ARGS__}, code_) == ServiceFaults::Action::Fail)                       \
            return code_;                                                                                  \
    } while (0)
