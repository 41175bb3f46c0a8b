#include "app/ui/Appearance.h"

#include "app/ui/Contrast.h"

#include <QApplication>

namespace {

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xf6, 0xf5, 0xf4), QColor(0xfa, 0xf9, 0xf8));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x1c, 0x71, 0xd8));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x91, 0x91, 0x91));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x6a, 0x68, 0x66));
    return palette;
}

QPalette darkPalette()
{
    const QColor text(0xf2, 0xf2, 0xf2);
    const QColor faint(0x8c, 0x8c, 0x8c);
    QPalette palette(QColor(0x45, 0x45, 0x45), QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x29, 0x29, 0x29));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3a, 0x3a));
    palette.setColor(QPalette::PlaceholderText, QColor(0xa6, 0xa6, 0xa6));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xc4));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x55, 0x55, 0x55));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x78, 0xae, 0xed));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

} // namespace

Appearance::Appearance() : desktop_(Contrast::ensured(QApplication::palette()))
{
    if (desktop_ != QApplication::palette())
        applyDesktop();
}

void Appearance::apply(Mode mode)
{
    const bool wantDark = mode == Mode::Dark;
    if (isDark(desktop_) == wantDark)
        applyDesktop();
    else
        QApplication::setPalette(Contrast::ensured(wantDark ? darkPalette() : lightPalette()));
}

void Appearance::applyDesktop()
{
    QApplication::setPalette(desktop_);
}
