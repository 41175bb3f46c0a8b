#include "artwork/ui/DropView.h"

#include "artwork/ArtworkDrops.h"
#include "artwork/ShownArt.h"
#include "artwork/ui/AlbumArtView.h"
#include "artwork/ui/ArtPlaceholder.h"
#include "artwork/ui/DropViewAccessible.h"
#include "platform/ui/FocusRing.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace {

/// The well's greatest height.
constexpr int largestSide = 240;
constexpr int smallestSide = 120;
/// Of the focus: what Delete and Paste then do concerns every selected file.
constexpr int focusWidth = 4;
constexpr int refusalInset = 8;
constexpr int refusalRadius = 4;

/// Lies over the art, which may still be fading.
class Overlay : public QWidget {
public:
    Overlay(QWidget& well, std::function<void(QPainter&)> paint) : QWidget(&well), paint_(std::move(paint))
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paint_(painter);
    }

private:
    std::function<void(QPainter&)> paint_;
};

} // namespace

DropView::DropView(ArtworkDrops& drops, ShownArt& art, QWidget* parent)
    : QWidget(parent), drops_(drops), art_(art), imageView_(new AlbumArtView(this)),
      overlay_(new Overlay(*this, [this](QPainter& painter) { paintOverlay(painter); }))
{
    DropViewAccessible::install();
    setMinimumSize(smallestSide, smallestSide);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Cover art"));
    connect(&art, &ShownArt::changed, this, &DropView::showArt);
    connect(&art, &ShownArt::fadeInWanted, imageView_, &AlbumArtView::fadeInArt);
    connect(imageView_, &AlbumArtView::imageChanged, this, &DropView::describe);
    showArt();
}

QColor DropView::disabledColor() const
{
    return palette().color(QPalette::Disabled, QPalette::WindowText);
}

QColor DropView::highlightedColor() const
{
    return palette().color(QPalette::Active, QPalette::PlaceholderText);
}

QSize DropView::sizeHint() const
{
    return {largestSide, largestSide};
}

int DropView::heightForWidth(int width) const
{
    return std::clamp(width, smallestSide, largestSide);
}

void DropView::showArt()
{
    if (imageView_->art() != art_.bytes())
        imageView_->setArt(art_.bytes());
    update();
}

void DropView::describe()
{
    art_.setDecoded(!imageView_->image().isNull());
    const QString description = imageView_->description();
    setToolTip(description);
    setAccessibleDescription(description.isEmpty() ? tr("No Artwork") : description);
    update();
}

void DropView::dragEnterEvent(QDragEnterEvent* event)
{
    const bool canCopy = event->possibleActions() & Qt::CopyAction;
    setOffered(canCopy && !event->source() && drops_.accepts(*event->mimeData()));
    if (canDrag_)
        imageView_->fadeOutArt();
    answerDrag(event);
}

void DropView::dragMoveEvent(QDragMoveEvent* event)
{
    answerDrag(event);
}

void DropView::dragLeaveEvent(QDragLeaveEvent*)
{
    setOffered(false);
    imageView_->fadeInArt();
}

void DropView::dropEvent(QDropEvent* event)
{
    answerDrag(event);
    setOffered(false);
    if (event->isAccepted() && !drops_.performDragOperation(*event->mimeData()))
        event->ignore();
    // The old art comes back where no new one can be set.
    imageView_->fadeInArt();
}

void DropView::answerDrag(QDropEvent* event) const
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(canDrag_);
}

void DropView::setOffered(bool offered)
{
    canDrag_ = offered;
    update();
}

void DropView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !imageView_->image().isNull())
        pressed_ = event->position().toPoint();
}

void DropView::mouseMoveEvent(QMouseEvent* event)
{
    if (!pressed_)
        return;
    const QPointF moved = event->position() - *pressed_;
    if (std::max(std::abs(moved.x()), std::abs(moved.y())) > dragThreshold)
        dragArt();
}

void DropView::mouseReleaseEvent(QMouseEvent*)
{
    pressed_.reset();
}

void DropView::dragArt()
{
    const QPoint start = *std::exchange(pressed_, std::nullopt);
    auto promise = drops_.pasteboardWriterForDropView();
    if (!promise)
        return;
    const QRect place = imageView_->drawnImageRect();
    QPixmap pixmap(place.size() * devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect(QPoint(), place.size()), imageView_->image());
    painter.end();
    // The receiver may ask for the data after exec has returned; Qt deletes the drag when nobody will ask any more.
    auto* drag = new QDrag(this);
    drag->setMimeData(promise.release());
    drag->setPixmap(pixmap);
    drag->setHotSpot(start - place.topLeft());
    drag->exec(Qt::CopyAction);
}

void DropView::keyPressEvent(QKeyEvent* event)
{
    const auto key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        emit changeWanted();
    else
        QWidget::keyPressEvent(event);
}

void DropView::paintOverlay(QPainter& painter) const
{
    if (hasFocus())
        FocusRing::paint(painter, rect(), palette(), focusWidth);
    const bool hasSelection = drops_.hasSelection();
    if (hasSelection && imageView_->isRefused() && !canDrag_)
        paintRefusal(painter);
    else if (!hasSelection || imageView_->image().isNull() || canDrag_)
        ArtPlaceholder::paint(painter, size(), color());
}

void DropView::paintRefusal(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(color());
    painter.drawRoundedRect(QRectF(rect()).adjusted(refusalInset, refusalInset, -refusalInset, -refusalInset),
                            refusalRadius, refusalRadius);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(2 * refusalInset, 0, -2 * refusalInset, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     imageView_->description());
}

void DropView::resizeEvent(QResizeEvent*)
{
    imageView_->setGeometry(rect());
    overlay_->setGeometry(rect());
}
