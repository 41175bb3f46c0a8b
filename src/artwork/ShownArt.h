#pragma once

#include <QByteArray>
#include <QObject>

/// The cover art of the selection, as encoded bytes, and whether the well shows it.
class ShownArt : public QObject {
    Q_OBJECT

public:
    /// Empty when there is none.
    const QByteArray& bytes() const { return bytes_; }
    bool isThere() const { return !bytes_.isEmpty(); }
    /// Whether it is a picture that is shown and can be saved, copied and dragged out. What its header says counts
    /// until the well has decoded it.
    bool isShown() const { return isShown_; }

    /// Shows a picture; empty bytes clear the well.
    void show(const QByteArray& bytes);
    /// The same for a picture that a command has just written: it fades in.
    void put(const QByteArray& bytes);
    /// The well has decoded the art, or found that it can't be decoded.
    void setDecoded(bool decoded);

signals:
    /// There is other art, or it has turned out whether it can be shown.
    void changed();
    void fadeInWanted();

private:
    QByteArray bytes_;
    bool isShown_ = false;
};
