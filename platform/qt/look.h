// How the window looks: style, colours for light and dark desktops, font.
#pragma once

class QApplication;

namespace lorivan {

/// Light or dark, and of high contrast, as the desktop is, now and whenever its settings service tells of a
/// change.
void applyLook(QApplication& application);

/// The same with the choice made.
void applyLook(QApplication& application, bool dark, bool contrast = false);

/// The colours alone.
void applyColours(bool dark, bool contrast = false);

}  // namespace lorivan
