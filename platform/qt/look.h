// How the window looks: style, colours for light and dark desktops, font.
#pragma once

class QApplication;

namespace lorivan {

/// Light or dark, as the desktop is.
void applyLook(QApplication& application);

/// The same with the choice made.
void applyLook(QApplication& application, bool dark);

}  // namespace lorivan
