#include "naming/ui/TokenButton.h"

#include "naming/FileNameFormat.h"
#include "naming/ui/TokenChip.h"
#include "naming/ui/TokenField.h"

#include <QApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QPainter>

TokenButton::TokenButton(const QString& token, QWidget* parent) : QAbstractButton(parent), token_(token)
{
    setText(FileNameFormat::shownTitle(token));
    setAccessibleDescription(tr("Adds the field to the format"));
    setToolTip(tr("Drag it into the format, or double-click it"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TokenButton::sizeHint() const
{
    return TokenChip::size(text(), font()).toSize() + QSize(1, 0);
}

void TokenButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    TokenChip::paint(painter, rect(), text(), font(), palette(), hasFocus());
}

void TokenButton::mousePressEvent(QMouseEvent* event)
{
    pressed_ = event->position().toPoint();
}

void TokenButton::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint moved = event->position().toPoint() - pressed_;
    if (event->buttons() & Qt::LeftButton && moved.manhattanLength() >= QApplication::startDragDistance())
        dragToken();
}

void TokenButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        click();
}

void TokenButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void TokenButton::dragToken()
{
    auto* drag = new QDrag(this);
    drag->setMimeData(TokenField::mimeDataFor(token_));
    QPixmap pixmap(size() * devicePixelRatioF());
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    TokenChip::paint(painter, rect(), text(), font(), palette(), true);
    painter.end();
    drag->setPixmap(pixmap);
    drag->setHotSpot(pressed_);
    drag->exec(Qt::CopyAction);
}
