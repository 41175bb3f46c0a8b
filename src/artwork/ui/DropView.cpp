#include "artwork/ui/DropView.h"

#include "artwork/ArtworkDrops.h"
#include "artwork/ShownArt.h"
#include "artwork/ui/AlbumArtView.h"
#include "artwork/ui/DropViewAccessible.h"
#include "platform/ui/FocusRing.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace {

/// The side of the well for which the placeholder is drawn, and the well's greatest height.
constexpr int designSide = 240;
constexpr int smallestSide = 120;
constexpr qreal lineWidth = 5.0;
constexpr qreal dashLength = 20.0;
constexpr qreal dashPhase = 10.0;

/// The placeholder's shapes are measured upward from the lower left corner.
QPainterPath dashedSquare()
{
    // From the middle of a side, since a dash that begins at a corner does not join the last one.
    QPainterPath path(QPointF(120.42, 40.0));
    for (const auto& corner : {QPointF(200.42, 40.0), QPointF(200.42, 200.0), QPointF(40.42, 200.0),
                               QPointF(40.42, 40.0), QPointF(120.42, 40.0)})
        path.lineTo(corner);
    return path;
}

/// A framed picture of a sun above mountains, which are holes in the frame.
QPainterPath pictureSymbol()
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.moveTo(94.67, 138.0);
    path.cubicTo(91.22, 138.0, 88.42, 135.2, 88.42, 131.75);
    path.cubicTo(88.42, 129.53, 89.58, 127.58, 91.32, 126.47);
    path.cubicTo(92.29, 125.86, 93.44, 125.5, 94.67, 125.5);
    path.cubicTo(98.12, 125.5, 100.92, 128.3, 100.92, 131.75);
    path.cubicTo(100.92, 135.2, 98.12, 138.0, 94.67, 138.0);
    path.closeSubpath();

    path.moveTo(122.17, 132.25);
    for (const auto& point : {QPointF(106.67, 111.25), QPointF(96.17, 117.25), QPointF(88.67, 100.75),
                              QPointF(154.17, 100.75), QPointF(138.67, 128.25), QPointF(131.67, 117.25)})
        path.lineTo(point);
    path.closeSubpath();

    path.moveTo(157.92, 141.5);
    path.lineTo(157.92, 98.5);
    path.cubicTo(157.92, 97.4, 157.03, 96.5, 155.92, 96.5);
    path.lineTo(84.92, 96.5);
    path.cubicTo(83.82, 96.5, 82.92, 97.4, 82.92, 98.5);
    path.cubicTo(82.92, 98.5, 82.92, 104.39, 82.92, 111.82);
    path.cubicTo(82.92, 124.45, 82.92, 141.5, 82.92, 141.5);
    path.cubicTo(82.92, 142.6, 83.82, 143.5, 84.92, 143.5);
    path.lineTo(155.92, 143.5);
    path.cubicTo(157.03, 143.5, 157.92, 142.6, 157.92, 141.5);
    path.closeSubpath();
    return path;
}

/// Lies over the art, which may still be fading.
class Placeholder : public QWidget {
public:
    Placeholder(QWidget& well, std::function<void(QPainter&)> paint) : QWidget(&well), paint_(std::move(paint))
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
      placeholder_(new Placeholder(*this, [this](QPainter& painter) { paintOverlay(painter); }))
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
    return {designSide, designSide};
}

int DropView::heightForWidth(int width) const
{
    return std::clamp(width, smallestSide, designSide);
}

void DropView::showArt()
{
    imageView_->setArt(art_.bytes());
    update();
}

void DropView::describe()
{
    const QString description = imageView_->toolTip();
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
        FocusRing::paint(painter, rect(), palette());
    paintPlaceholder(painter);
}

void DropView::paintPlaceholder(QPainter& painter) const
{
    if (drops_.hasSelection() && !imageView_->image().isNull() && !canDrag_)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal scale = qreal(std::min(width(), height())) / designSide;
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale, -scale);
    painter.translate(-designSide / 2.0, -designSide / 2.0);

    QPen pen(color(), lineWidth, Qt::CustomDashLine, Qt::FlatCap, Qt::RoundJoin);
    pen.setDashPattern({dashLength / lineWidth, dashLength / lineWidth});
    pen.setDashOffset(dashPhase / lineWidth);
    painter.strokePath(dashedSquare(), pen);
    painter.fillPath(pictureSymbol(), color());
}

void DropView::resizeEvent(QResizeEvent*)
{
    imageView_->setGeometry(rect());
    placeholder_->setGeometry(rect());
}
