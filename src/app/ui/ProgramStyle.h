#pragma once

#include <QProxyStyle>

/// The desktop's own style with two touches: the cells and headings of lists have some air to their sides, and the
/// few symbols inside bars and fields are the program's own, since looking them up in the icon theme would cost a
/// fifth of the time to the first painted window.
class ProgramStyle : public QProxyStyle {
    Q_OBJECT

public:
    /// Makes it the application's style, which owns it. To be called before any widget is made.
    static ProgramStyle& install();

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
};
