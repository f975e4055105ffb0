#pragma once

namespace TavCreator {

// Mode of the exam reason dialog. The dialog copes with values the host
// should not pass, so every int is a valid value (fixed underlying type).
enum eDLGCODE : int
{
    DELETE_EXAM = 0,
    CANCEL_EXAM = 1
};

} // namespace TavCreator
