#pragma once

// Edit: the toolkit's single-line edit. A CEdit that can carry a
// NormalEditValidator (not owned) and show the required mark
// (SetRequiredFlag). Templates name it as a Custom control of class
// Edit::ClassName; its ES_ style bits apply as for a plain edit.

#include "bravik_toolkit_export.h"

#include "cedit.h"

#include <memory>
#include <span>
#include <vector>

class CDialog;
class NormalEditValidator;
class RequiredMark;

class BRAVIK_TOOLKIT_EXPORT Edit : public CEdit
{
    Q_OBJECT
public:
    static const char* const ClassName;

    explicit Edit(QWidget* parent = nullptr);
    ~Edit() override;

    // Attaches the validator to this edit; the required mark follows it.
    void SetValidator(NormalEditValidator* validator);
    NormalEditValidator* GetValidator() const { return m_validator; }

    // Shows or hides the required mark (and tells the validator, if any).
    void SetRequiredFlag(bool required);
    bool GetRequiredFlag() const { return m_required; }
    bool IsRequiredMarkShown() const;

    // The validator's verdict on the current text; true without one.
    bool IsValid() const;

private:
    NormalEditValidator* m_validator = nullptr;
    RequiredMark* m_mark;
    bool m_required = false;
};

// Gives each Edit of `dialog` named in `ids` a plain validator (not required,
// blanks trimmed). The dialog keeps what this returns for as long as it lives.
BRAVIK_TOOLKIT_EXPORT std::vector<std::unique_ptr<NormalEditValidator>> PlainValidators(const CDialog& dialog,
                                                                                      std::span<const int> ids);
