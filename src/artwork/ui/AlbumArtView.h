#pragma once

#include "artwork/PictureDecoder.h"

#include <QByteArray>
#include <QImage>
#include <QPropertyAnimation>
#include <QWidget>

/// Shows cover art as large as it fits, sharp at any scale factor. Lets the mouse through.
class AlbumArtView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(qreal alphaValue READ alphaValue WRITE setAlphaValue)

public:
    static constexpr int fadeInTime = 1000;
    static constexpr int fadeOutTime = 500;

    explicit AlbumArtView(QWidget* parent = nullptr);

    /// Shows the encoded picture as soon as it is decoded; nothing when the bytes are empty or no picture that can be
    /// decoded. Until then the picture before it stays.
    void setArt(const QByteArray& bytes);
    const QByteArray& art() const { return bytes_; }
    /// What is shown, no larger than the view; null for nothing.
    const QImage& image() const { return image_; }
    /// Whether there is art that has turned out not to be a picture that can be shown.
    bool isRefused() const { return isRefused_; }
    /// Size, format and length of the art, and that it can't be shown where that is so; empty without art, and until it
    /// is decoded.
    QString description() const;

    /// The view's width, and the height that gives the image its proportions; (0, 0) without an image.
    QSize intrinsicContentSize() const;
    QSize sizeHint() const override { return intrinsicContentSize(); }
    /// Where the image is drawn, in the view's coordinates; empty without an image.
    QRect drawnImageRect() const;

    /// From 0, transparent, to 1.
    qreal alphaValue() const { return alphaValue_; }
    void setAlphaValue(qreal alpha);
    void fadeInArt();
    void fadeOutArt();

signals:
    /// Another picture is shown, or none.
    void imageChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void decode();
    void setImage(const QImage& image);
    void fade(qreal alpha, int milliseconds);

    QByteArray bytes_;
    QImage image_;
    bool isRefused_ = false;
    PictureDecoder decoder_;
    /// The scale factor that the image was decoded for: a window may move to another screen.
    qreal decodedRatio_ = 0;
    qreal alphaValue_ = 1;
    QPropertyAnimation fade_{this, "alphaValue"};
};
