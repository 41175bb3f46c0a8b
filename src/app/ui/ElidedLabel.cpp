#include "app/ui/ElidedLabel.h"

#include <QEvent>

namespace {

constexpr int longestToolTip = 1000;

} // namespace

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), mode_(mode)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setFullText(const QString& text)
{
    fullText_ = text.simplified();
    setAccessibleName(fullText_);
    elide();
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        elide();
}

void ElidedLabel::elide()
{
    const QString shown = fontMetrics().elidedText(fullText_, mode_, contentsRect().width());
    if (shown != text())
        setText(shown);
    // Tool tips take what looks like markup for markup.
    setToolTip(shown == fullText_ ? QString()
                                  : QStringLiteral("<p>%1</p>").arg(fullText_.left(longestToolTip).toHtmlEscaped()));
}
