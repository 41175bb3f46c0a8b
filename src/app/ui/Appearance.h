#pragma once

#include <QPalette>

/// Light and dark: follows the desktop's preference where the widget style does not do so itself.
class Appearance {
public:
    enum class Mode { Light, Dark };

    /// Takes the palette that the desktop has set as the one to return to, with its weakest texts made readable.
    Appearance();

    /// Gives the application a palette of this mode; the desktop's own when that is of this mode already.
    void apply(Mode mode);
    /// Back to the desktop's own palette.
    void applyDesktop();

private:
    QPalette desktop_;
};
