#pragma once

#include <QByteArray>
#include <QImage>
#include <QWidget>

/// Shows the cover art of the selection, sharp at any scale factor, or a quiet placeholder.
class AlbumArtView : public QWidget {
    Q_OBJECT

public:
    explicit AlbumArtView(QWidget* parent = nullptr);

    /// Shows the encoded picture; nothing when the bytes are empty or no picture.
    void setArt(const QByteArray& bytes);
    bool showsArt() const { return !picture_.isNull(); }

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void decode();
    void paintArt(QPainter& painter) const;
    void paintPlaceholder(QPainter& painter) const;

    QByteArray bytes_;
    QImage picture_;
};
