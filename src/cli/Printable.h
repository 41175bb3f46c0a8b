#pragma once

#include <QString>

/// Texts out of files, which may hold anything, on a terminal, which obeys control characters.
namespace Printable {

/// The text on one line: control characters as their visible pictures (U+2400 to U+2421), what else can't be shown,
/// or would turn the text around it, as U+FFFD.
QString line(const QString& text);

} // namespace Printable
