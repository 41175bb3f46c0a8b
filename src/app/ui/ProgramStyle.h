#pragma once

#include <QProxyStyle>

/// The desktop's own style with three touches: the cells and headings of lists have some air to their sides, and the
/// few symbols inside bars and fields are the program's own, since looking them up in the icon theme would cost a
/// fifth of the time to the first painted window. The keyboard focus always shows, on framed lists and texts
/// and on a window's default button too.
class ProgramStyle : public QProxyStyle {
    Q_OBJECT

public:
    /// Makes it the application's style, which owns it. To be called before any widget is made.
    static ProgramStyle& install();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
};
