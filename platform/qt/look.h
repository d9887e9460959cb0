// How the window looks: style, colours for light and dark desktops, font.
#pragma once

class QApplication;

namespace lorivan {

/// Light or dark, as the desktop is, now and whenever its settings service tells of a change.
void applyLook(QApplication& application);

/// The same with the choice made.
void applyLook(QApplication& application, bool dark);

/// The colours alone.
void applyColours(bool dark);

}  // namespace lorivan
