#pragma once

// Dialog templates: what a resource script says about a dialog, as data.
// A CDialog is built from one: caption, client size and control rectangles
// in dialog units, the font those units derive from, and the controls in
// tab order.
//
// Example:
//   const DialogTemplate kReasonPanel{
//       "", 238, 110, "Arial", 10,
//       {
//           {IDC_LABEL, "IDC_LABEL", ControlKind::Static, "Predefined Reason(s):", 7, 8, 79, 14},
//           {IDC_REASONS, "IDC_REASONS", ControlKind::ComboDropDownList, "", 88, 8, 143, 95,
//            CBS_SORT | WS_VSCROLL | WS_TABSTOP},
//           {IDC_REASON_EDIT, "IDC_REASON_EDIT", ControlKind::MultiLineEdit, "", 7, 35, 224, 65,
//            WS_VSCROLL | WS_BORDER | ES_WANTRETURN | WS_TABSTOP},
//       }};

#include "bravik_platform_export.h"
#include "crect.h"
#include "cstring.h"
#include "controlstyles.h"
#include "windefs.h"

#include <QFont>
#include <QString>

#include <functional>
#include <string>
#include <vector>

// What kind of window a template control becomes (see cdialog.h for the class
// each kind is built as).
enum class ControlKind : int {
    Static,            // CStatic (QLabel): top-left aligned, word-wrapped
    Edit,              // CEdit, single line (QLineEdit inside)
    MultiLineEdit,     // CEdit, multi-line (QPlainTextEdit inside)
    PushButton,        // CButton (QPushButton inside)
    DefPushButton,     // CButton, the dialog's default button (Enter)
    CheckBox,          // CButton (QCheckBox inside), auto check box
    RadioButton,       // CButton (QRadioButton inside); consecutive radios form a group
    ComboDropDownList, // CComboBox, not editable
    ComboDropDown,     // CComboBox, editable
    GroupBox,          // QGroupBox frame with the text as title; it does not own the controls inside it
    ListBox,           // CListBox (QListWidget)
    Custom,            // a placeholder QWidget, or a registered control class (DialogControl::className)
};

BRAVIK_PLATFORM_EXPORT const char* ControlKindName(ControlKind kind);

// One control of a template. Rectangle in dialog units.
struct DialogControl
{
    int id = 0;
    const char* symbol = "";    // the id's symbolic name, e.g. "IDC_REASON_EDIT"; becomes the objectName
    ControlKind kind = ControlKind::Static;
    CString text;
    int x = 0;
    int y = 0;
    int cx = 0;
    int cy = 0;
    DWORD style = 0;
    const char* className = nullptr; // Custom kind only: a class registered with RegisterControlClass
};

// Template-level style bits (DialogTemplate::style).
constexpr DWORD DS_HIDDEN = 1u << 0; // Create() leaves a child dialog hidden (default: shown)

struct DialogTemplate
{
    CString caption;
    int cx = 0;                 // client size in dialog units
    int cy = 0;
    CString fontFace = "Arial";
    int fontPointSize = 8;
    std::vector<DialogControl> controls;
    DWORD style = 0;

    const DialogControl* Find(int id) const
    {
        for (const DialogControl& c : controls)
            if (c.id == id)
                return &c;
        return nullptr;
    }
    DialogControl* Find(int id) { return const_cast<DialogControl*>(static_cast<const DialogTemplate*>(this)->Find(id)); }

    // A frame that holds no controls of its own (its pages or panel fill
    // it): only its size in dialog units of an Arial of `points`.
    static DialogTemplate EmptyFrame(int width, int height, int points)
    {
        DialogTemplate tpl;
        tpl.cx = width;
        tpl.cy = height;
        tpl.fontPointSize = points;
        return tpl;
    }

    // The template font: face and point size, nothing else inherited.
    QFont Font() const
    {
        QFont f(QString::fromUtf8(fontFace.GetString()), fontPointSize > 0 ? fontPointSize : 8);
        f.setStyleStrategy(QFont::PreferDefault);
        return f;
    }
};

// Dialog base units of a font: the average character width and the
// character height in pixels. x dialog units are x * baseX / 4 pixels,
// y units y * baseY / 8 pixels, rounded to nearest like Windows' MulDiv.
struct BRAVIK_PLATFORM_EXPORT DialogUnits
{
    int baseX = 0;
    int baseY = 0;

    static DialogUnits FromFont(const QFont& font);
    static DialogUnits FromTemplate(const DialogTemplate& tpl) { return FromFont(tpl.Font()); }

    int ToPixelsX(int dluX) const { return MulDiv(dluX, baseX, 4); }
    int ToPixelsY(int dluY) const { return MulDiv(dluY, baseY, 8); }
    // Maps each edge (MapDialogRect): width = px(right) - px(left).
    CRect MapRect(const CRect& dlu) const;
    // How the dialog manager places a template control: x, y, cx, cy each mapped.
    CRect MapControl(const DialogControl& c) const;
};

// The process-wide template pre-processor: runs on a copy of every template
// before a dialog is built from it (the module rescales template fonts on
// dense screens with it). Returns the previous hook; an empty function
// removes it.
using DialogTemplatePreprocessor = std::function<void(DialogTemplate&)>;
BRAVIK_PLATFORM_EXPORT DialogTemplatePreprocessor SetDialogTemplatePreprocessor(DialogTemplatePreprocessor hook);
BRAVIK_PLATFORM_EXPORT void PreprocessDialogTemplate(DialogTemplate& tpl);

// Registered control classes for ControlKind::Custom controls that name a
// className (like a window class a host registers). The factory creates the
// widget as a child of the dialog; the dialog then names, places and styles it.
using ControlFactory = std::function<QWidget*(QWidget* parent, const DialogControl& control)>;
BRAVIK_PLATFORM_EXPORT bool RegisterControlClass(const char* className, ControlFactory factory);
BRAVIK_PLATFORM_EXPORT bool UnregisterControlClass(const char* className);
BRAVIK_PLATFORM_EXPORT bool IsControlClassRegistered(const char* className);
