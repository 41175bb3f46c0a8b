#include "app/ui/LinkLabel.h"

#include "platform/ui/FocusRing.h"

#include <QPainter>

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setTextInteractionFlags(Qt::TextBrowserInteraction);
    setOpenExternalLinks(true);
}

void LinkLabel::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    FocusRing::paint(painter, rect(), palette());
}
