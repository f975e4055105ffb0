#pragma once

// With BRAVIK_SCREENSHOTS=DIR set, writes what the widget shows to
// DIR/<name>.png (the folder is created); does nothing otherwise. Returns true
// when a file was written.

class QWidget;

bool SaveScreenshot(QWidget* widget, const char* name);
