#include "artwork/ui/AlbumArtView.h"

#include "artwork/DrawnImageRect.h"
#include "model/Picture.h"
#include "platform/ui/AccessibleRole.h"

#include <QLocale>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr qreal cornerRadius = 4.0;

} // namespace

AlbumArtView::AlbumArtView(QWidget* parent) : QWidget(parent)
{
    AccessibleRole::set(*this, QAccessible::Graphic);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&decoder_, &PictureDecoder::decoded, this, &AlbumArtView::setImage);
}

void AlbumArtView::setArt(const QByteArray& bytes)
{
    bytes_ = bytes;
    isRefused_ = false;
    decode();
}

QSize AlbumArtView::intrinsicContentSize() const
{
    return image_.isNull() ? QSize(0, 0) : QSize(width(), width() * image_.height() / image_.width());
}

QRect AlbumArtView::drawnImageRect() const
{
    return DrawnImageRect::drawnImageRect(image_.size(), rect());
}

void AlbumArtView::setAlphaValue(qreal alpha)
{
    alphaValue_ = alpha;
    update();
}

void AlbumArtView::fadeInArt()
{
    fade(1, fadeInTime);
}

void AlbumArtView::fadeOutArt()
{
    fade(0, fadeOutTime);
}

void AlbumArtView::fade(qreal alpha, int milliseconds)
{
    fade_.stop();
    fade_.setDuration(milliseconds);
    fade_.setEndValue(alpha);
    fade_.start();
}

void AlbumArtView::paintEvent(QPaintEvent*)
{
    if (decodedRatio_ != devicePixelRatioF())
        decode();
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setOpacity(alphaValue_);
    const QRect place = drawnImageRect();
    QPainterPath outline;
    outline.addRoundedRect(place, cornerRadius, cornerRadius);
    painter.setClipPath(outline);
    painter.drawImage(place, image_);
}

void AlbumArtView::resizeEvent(QResizeEvent*)
{
    decode();
}

void AlbumArtView::decode()
{
    decodedRatio_ = devicePixelRatioF();
    const QSize wanted = size() * decodedRatio_;
    if (!Picture::size(bytes_).isEmpty()) {
        if (!wanted.isEmpty())
            decoder_.decode(bytes_, wanted);
        return;
    }
    decoder_.cancel();
    setImage({});
}

void AlbumArtView::setImage(const QImage& image)
{
    image_ = image;
    isRefused_ = image.isNull() && !bytes_.isEmpty();
    setToolTip(description());
    updateGeometry();
    update();
    emit imageChanged();
}

QString AlbumArtView::description() const
{
    if (image_.isNull() && !isRefused_)
        return {};
    const QSize size = Picture::size(bytes_);
    const QLocale locale;
    QString text = locale.formattedDataSize(bytes_.size());
    if (!size.isEmpty())
        text = tr("%1 × %2 pixels, %3, %4")
                   .arg(locale.toString(size.width()), locale.toString(size.height()),
                        QString::fromLatin1(Picture::format(bytes_)).toUpper(), text);
    return isRefused_ ? tr("Can't be shown\n%1", "%1 tells the size and the format").arg(text) : text;
}
