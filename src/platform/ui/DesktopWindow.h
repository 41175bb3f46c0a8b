#pragma once

class QWidget;

/// What windows ask of the desktop.
namespace DesktopWindow {

/// Shows the window, also one that is minimised, above the others and gives it the focus.
void bringToFront(QWidget& window);

/// From now on the window is moved by its background: by whatever in it takes no clicks itself.
void moveByBackground(QWidget& window);

} // namespace DesktopWindow
