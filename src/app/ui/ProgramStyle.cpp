#include "app/ui/ProgramStyle.h"

#include "app/ui/Icons.h"
#include "platform/ui/FocusRing.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QHeaderView>
#include <QStyleOptionButton>
#include <QTableView>

namespace {

constexpr int cellPadding = 4;

bool isList(const QWidget* widget)
{
    return qobject_cast<const QTableView*>(widget) || qobject_cast<const QHeaderView*>(widget);
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
    QProxyStyle::drawPrimitive(element, option, painter, widget);
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
    const bool isSide = metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin;
    return isSide && isList(widget) ? native + cellPadding : native;
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
