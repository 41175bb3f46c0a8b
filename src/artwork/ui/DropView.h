#pragma once

#include <QWidget>

#include <optional>

class AlbumArtView;
class ArtworkDrops;
class ShownArt;

/// The art well: the cover art of the selection, images dropped in, the art dragged out. Without art, and while an
/// image hovers over it, it shows a dashed placeholder; in place of art that can't be shown it says so.
class DropView : public QWidget {
    Q_OBJECT

public:
    /// How far the pointer moves, in pixels along either axis, before a drag starts.
    static constexpr double dragThreshold = 3.0;

    DropView(ArtworkDrops& drops, ShownArt& art, QWidget* parent = nullptr);

    AlbumArtView& imageView() { return *imageView_; }
    /// True while an acceptable drag hovers over the well.
    bool canDrag() const { return canDrag_; }
    /// The placeholder's colour: at rest, and while an acceptable drag hovers over the well.
    QColor color() const { return canDrag_ ? highlightedColor() : disabledColor(); }
    QColor disabledColor() const;
    QColor highlightedColor() const;

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

signals:
    /// Another image is asked for: by Return or Space, or by assistive technology.
    void changeWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showArt();
    void describe();
    void setOffered(bool offered);
    void answerDrag(QDropEvent* event) const;
    void dragArt();
    void paintOverlay(QPainter& painter) const;
    void paintRefusal(QPainter& painter) const;

    ArtworkDrops& drops_;
    ShownArt& art_;
    AlbumArtView* imageView_;
    QWidget* overlay_;
    bool canDrag_ = false;
    /// Where the mouse was pressed to drag the art out.
    std::optional<QPoint> pressed_;
};
