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

    /// Shows the encoded picture as soon as it is decoded; nothing when the bytes are empty or no picture. Until then
    /// the picture before it stays.
    void setArt(const QByteArray& bytes);
    /// What is shown, no larger than the view; null for nothing.
    const QImage& image() const { return image_; }

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
    QString description() const;

    QByteArray bytes_;
    QImage image_;
    PictureDecoder decoder_;
    /// The scale factor that the image was decoded for: a window may move to another screen.
    qreal decodedRatio_ = 0;
    qreal alphaValue_ = 1;
    QPropertyAnimation fade_{this, "alphaValue"};
};
