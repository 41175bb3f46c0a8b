#pragma once

#include <QColor>
#include <QPalette>

/// How well texts can be told from what they stand on.
namespace Contrast {

/// What text needs to be readable for most people.
constexpr double enough = 4.5;

/// From 1, the same, to 21, black and white. @param text is laid over the background where it is transparent.
double ratio(const QColor& text, const QColor& background);

/// The palette with enough contrast in every active and inactive text. What has it already stays as it is; hints and
/// links move towards the colour of other text, a selection away from that of its own.
QPalette ensured(QPalette palette);

} // namespace Contrast
