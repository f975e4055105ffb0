#include "edit.h"

#include "cdialog.h"

#include "normaleditvalidator.h"
#include "requiredmark.h"

#include "dialogtemplate.h"

const char* const Edit::ClassName = "ToolkitEdit";

namespace {
// Templates may name the class from the start, like a registered window class.
const bool g_registered = RegisterControlClass(Edit::ClassName, [](QWidget* parent, const DialogControl& c) -> QWidget* {
    auto* e = new Edit(parent);
    e->ApplyStyle(c.style);
    return e;
});
} // namespace

Edit::Edit(QWidget* parent) : CEdit(parent), m_mark(new RequiredMark(this))
{
    (void)g_registered;
}

Edit::~Edit() = default;

void Edit::SetValidator(NormalEditValidator* validator)
{
    m_validator = validator;
    if (!validator)
        return;
    validator->Attach(this);
    SetRequiredFlag(validator->IsRequired());
}

void Edit::SetRequiredFlag(bool required)
{
    m_required = required;
    if (m_validator)
        m_validator->SetRequired(required);
    m_mark->Show(required);
}

bool Edit::IsRequiredMarkShown() const { return m_mark->IsShown(); }

bool Edit::IsValid() const { return !m_validator || m_validator->IsValid(GetWindowText()); }

std::vector<std::unique_ptr<NormalEditValidator>> PlainValidators(const CDialog& dialog, std::span<const int> ids)
{
    std::vector<std::unique_ptr<NormalEditValidator>> validators;
    for (const int id : ids) {
        validators.push_back(std::make_unique<NormalEditValidator>(nullptr, false, true));
        if (auto* edit = dialog.GetDlgItemAs<Edit>(id))
            edit->SetValidator(validators.back().get());
    }
    return validators;
}
