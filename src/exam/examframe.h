#pragma once

// The frame the exam dialogs share: the tabbed area over the whole dialog,
// a header band 64 pixels high on white with the module icon, a footer band
// 50 pixels high on grey with OK and Cancel.

class BaseTabHeader;
class CDialog;
class DialogFooter;
class HFTabbedDlg;

namespace ExamFrame {

// Sizes the dialog to width by height, keeping its top-left corner, and
// creates the tabbed area over its client area, shown and enabled.
void Create(CDialog& dlg, HFTabbedDlg& frame, int width, int height);
// Gives the tabbed area its header and footer (whose buttons act on owner)
// and lays it out over the owner's client area.
void ApplyBands(CDialog& owner, HFTabbedDlg& frame, BaseTabHeader& header, DialogFooter& footer);

} // namespace ExamFrame
