#include "app/ui/ProgramStyle.h"

#include "app/ui/Icons.h"

#include <QApplication>
#include <QHeaderView>
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
    return *style;
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
