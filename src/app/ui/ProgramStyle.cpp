#include "app/ui/ProgramStyle.h"

#include "app/ui/Icons.h"
#include "platform/ui/FocusRing.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QHeaderView>
#include <QStyleOptionButton>
#include <QTableView>
#include <QTreeView>

namespace {

constexpr int cellPadding = 4;
/// Views put this much more beside the text of a cell.
constexpr int cellExtra = 1;
constexpr int darkLightness = 128;
constexpr int outlineLightness = 0x94;
constexpr int highlightPercent = 160;

bool isList(const QWidget* widget)
{
    return qobject_cast<const QTableView*>(widget) || qobject_cast<const QTreeView*>(widget)
           || qobject_cast<const QHeaderView*>(widget);
}

/// Outlines are made darker than the window, or than the highlight, which does not show where all is dark.
template <class Option>
Option withSeenOutline(Option option)
{
    QPalette& palette = option.palette;
    if (palette.color(QPalette::Window).lightness() < darkLightness) {
        palette.setColor(QPalette::Window, QColor(outlineLightness, outlineLightness, outlineLightness));
        palette.setColor(QPalette::Highlight, palette.color(QPalette::Highlight).lighter(highlightPercent));
    }
    return option;
}

/// The sort mark on one line with the heading.
QStyleOptionHeader centred(QStyleOptionHeader mark, const QWidget& header)
{
    mark.rect.moveTop((header.height() - mark.rect.height()) / 2);
    return mark;
}

} // namespace

ProgramStyle& ProgramStyle::install()
{
    auto* style = new ProgramStyle;
    QApplication::setStyle(style);
    // Styles would mark the focus only where Tab led to it.
    connect(qApp, &QApplication::focusChanged, style, [](const QWidget*, QWidget* now) {
        if (now)
            now->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    });
    return *style;
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    const auto draw = [&](const QStyleOption& drawn) {
        QProxyStyle::drawPrimitive(element, &drawn, painter, widget);
    };
    const auto* box = qstyleoption_cast<const QStyleOptionButton*>(option);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const auto* mark = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (box && element == PE_IndicatorCheckBox)
        draw(withSeenOutline(*box));
    else if (frame && (element == PE_Frame || element == PE_FrameLineEdit))
        draw(withSeenOutline(*frame));
    else if (mark && widget && element == PE_IndicatorHeaderArrow)
        draw(centred(*mark, *widget));
    else
        draw(*option);
    const bool isFramedArea = element == PE_Frame && qobject_cast<const QAbstractScrollArea*>(widget);
    if (isFramedArea && option->state.testFlag(State_HasFocus))
        FocusRing::paint(*painter, option->rect, option->palette);
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const bool isDefault = button && button->features.testFlag(QStyleOptionButton::DefaultButton);
    if (element == CE_PushButton && isDefault && option->state.testFlag(State_HasFocus))
        FocusRing::paint(*painter, option->rect, option->palette);
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    const int native = QProxyStyle::pixelMetric(metric, option, widget);
    if (!isList(widget))
        return native;
    if (metric == PM_HeaderMargin)
        return native + cellPadding + cellExtra;
    return metric == PM_FocusFrameHMargin ? native + cellPadding : native;
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returned) const
{
    // Only some buttons would have one.
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
}

QIcon ProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const
{
    switch (icon) {
    case SP_LineEditClearButton:
        return Icons::symbol(QStringLiteral("clear"));
    case SP_ToolBarHorizontalExtensionButton:
        return Icons::symbol(QStringLiteral("more"));
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}
