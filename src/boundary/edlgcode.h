#pragma once

namespace TavCreator {

// Mode of the exam reason dialog.
enum eDLGCODE
{
    DELETE_EXAM = 0,
    CANCEL_EXAM = 1
};

} // namespace TavCreator
