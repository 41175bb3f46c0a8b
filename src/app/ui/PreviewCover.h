#pragma once

#include "artwork/ui/AlbumArtView.h"

/// The cover in the preview; a note in a pale square for a file that has none.
class PreviewCover : public AlbumArtView {
    Q_OBJECT

public:
    explicit PreviewCover(QWidget* parent = nullptr);

    /// Shows another file's cover; nothing of the one before stays until it is decoded.
    void setCover(const QByteArray& bytes);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool decoded_ = false;
};
